#include "tests/tessimodel/oracle/player.h"

namespace tests::oracle {

namespace {

constexpr std::size_t kQueuesHeld = 3;

} // namespace

Player::Player(standin::Terminal& terminal, const Stream& stream, Counters& counters)
    : ThousandLevelDuel(terminal)
    , m_stream(stream)
{
    m_real.emplace(stream.suppressTickFlags, 7);
    m_naive.emplace(stream.suppressTickFlags, m_naiveManager, counters);
}

std::string Player::play()
{
    const std::string found = differenceWhen("in a new model");
    follow(m_stream.instrument);
    const std::string later = StepDuel::play(m_stream.steps);
    return found.empty() ? later : found;
}

void Player::apply(const Step& step)
{
    using enum Step::Action;
    switch (step.action) {
    case Orders:
        deliver(step, &TickModel::entrustCallback, m_records.of(step.batch));
        break;
    case Trades:
        deliver(step, &TickModel::transactionCallback, m_records.of(step.batch));
        break;
    case Snapshots:
        deliver(step, &TickModel::quoterCallback, m_records.of(step.batch));
        break;
    case Read:
        if (step.flag)
            startExtremesAnew();
        read();
        break;
    case ReadSide:
        readSide(step.flag, step.flag ? &TickModel::getBids : &TickModel::getAsks);
        m_naive->getSide(step.flag, m_naivePanel);
        break;
    case Queue:
        askQueue(step.flag, step.price);
        break;
    case TradeDataChanged:
        forgetSavedRows();
        break;
    default:
        applyCommon(step);
        break;
    }
}

void Player::askQueue(bool isBid, double price)
{
    HeldQueue held{m_real->getQueue(isBid, price), m_naive->getQueue(isBid, price), {}, {}, false, false};
    if (held.real) {
        held.real->getQuotes(held.realQuotes);
        held.realIsBooks = held.real == m_real->m_book.getLevel(isBid, price);
    }
    if (held.naive) {
        held.naiveQuotes = held.naive->quotes;
        held.naiveIsBooks = held.naive == m_naive->book.getLevel(isBid, price);
    }
    m_held.push_back(held);
    if (m_held.size() > kQueuesHeld)
        m_held.pop_front();
}

void Player::writeHeld(Lines& expected, Lines& real) const
{
    for (const HeldQueue& held : m_held) {
        expected.add(sections::kHeldQueue, {held.naive != nullptr, held.naiveIsBooks});
        if (held.naive)
            writeState(expected, *held.naive, held.naive->isBid, 0);
        for (const auto& [seq, quote] : held.naiveQuotes)
            expected.add(sections::kHeldQuote,
                         {seq, quote->seq, quote->timetag, quote->volume, quote->dealVolume, quote->status});
        real.add(sections::kHeldQueue, {held.real != nullptr, held.realIsBooks});
        if (held.real)
            writeState(real, *held.real, held.real->m_isBid, 0);
        for (const auto& [seq, quote] : held.realQuotes)
            real.add(sections::kHeldQuote,
                     {seq, quote->seq, quote->timetag, quote->volume, quote->dealVolume, quote->status});
    }
}

void Player::write(Lines& expected, Lines& real) const
{
    writeSurroundings(expected, real);
    if (m_real) {
        writeState(expected, *m_naive);
        writeState(real, *m_real, m_records);
    }
    writeHeld(expected, real);
}

} // namespace tests::oracle
