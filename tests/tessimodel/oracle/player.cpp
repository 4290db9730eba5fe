#include "tests/tessimodel/oracle/player.h"

#include "tests/tessimodel/oracle/sections.h"

#include <fmt/format.h>

namespace tests::oracle {

namespace {

constexpr std::size_t kQueuesHeld = 3;

QString expectedKeyOf(int instrument)
{
    return instrument < 0 ? QString() : stockKeyOf(instrument);
}

} // namespace

Player::Player(standin::Terminal& terminal, const Stream& stream, Counters& counters)
    : m_terminal(terminal)
    , m_stream(stream)
    , m_realManager(utils::CSingletonT<TC::CDepthThousandModelManager>::instance())
{
    m_realManager->clearDatas();
    m_real.emplace(stream.suppressTickFlags, 7);
    m_naive.emplace(stream.suppressTickFlags, m_naiveManager, counters);
}

std::string Player::play()
{
    std::string found = difference("in a new model");
    if (!found.empty())
        return found;
    m_real->setStock(stockKeyOf(m_stream.instrument));
    m_naive->setStock(m_stream.instrument);
    int number = 0;
    for (const Step& step : m_stream.steps) {
        ++number;
        apply(step);
        found = difference("");
        if (!found.empty())
            return fmt::format("after step {}, {}:\n{}", number, text(step), found);
    }
    return endOfModel();
}

void Player::apply(const Step& step)
{
    using enum Step::Action;
    switch (step.action) {
    case Orders:
    case Trades:
    case Snapshots:
        deliver(step);
        break;
    case Work:
        work();
        break;
    case Release:
        m_terminal.strands.drain("data_release");
        break;
    case Clear:
        m_real->clear();
        m_naive->clear();
        break;
    case Follow:
        m_real->setStock(stockKeyOf(step.instrument));
        m_naive->setStock(step.instrument);
        break;
    case NewLoan:
        m_real->setNewLoan(step.flag);
        m_naive->setNewLoan(step.flag);
        break;
    case Read:
        read(step.flag);
        break;
    case ReadSide:
        readSide(step.flag);
        break;
    case Queue:
        askQueue(step.flag, step.price);
        break;
    case TradeDataChanged:
        m_terminal.changeTradeData("another day");
        m_naiveManager.saved.clear();
        break;
    }
}

void Player::deliver(const Step& step)
{
    const auto batch = m_records.of(step.batch);
    if (step.action == Step::Action::Orders)
        m_real->entrustCallback(0, step.kind, batch);
    else if (step.action == Step::Action::Trades)
        m_real->transactionCallback(0, step.kind, batch);
    else
        m_real->quoterCallback(0, step.kind, batch);
    m_naive->callback(step);
    if (step.works)
        work();
}

void Player::work()
{
    m_terminal.strands.drain("modulegroup");
    m_naive->work();
}

void Player::read(bool startsAnew)
{
    if (startsAnew) {
        RealPanel& real = m_realPanel;
        NaivePanel& naive = m_naivePanel;
        real.minPrice = naive.minPrice = DBL_MAX;
        real.maxPrice = naive.maxPrice = -DBL_MAX;
        real.maxAmount = naive.maxAmount = 0;
    }
    RealPanel& panel = m_realPanel;
    m_realAnswer = m_real->checkUpdate(panel.flags, panel.bids, panel.asks, panel.lastPrice, panel.lastVolume,
                                       panel.minPrice, panel.maxPrice, panel.maxAmount);
    m_naiveAnswer = m_naive->checkUpdate(m_naivePanel);
}

void Player::readSide(bool isBid)
{
    RealPanel& panel = m_realPanel;
    if (isBid)
        m_real->getBids(panel.bids, panel.minPrice, panel.maxPrice, panel.maxAmount);
    else
        m_real->getAsks(panel.asks, panel.minPrice, panel.maxPrice, panel.maxAmount);
    m_naive->getSide(isBid, m_naivePanel);
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

void Player::writeAll(Lines& expected, Lines& real)
{
    expected.clear();
    real.clear();
    expected.add(sections::kAnswer, {m_naiveAnswer});
    real.add(sections::kAnswer, {m_realAnswer});
    if (m_real) {
        writeState(expected, *m_naive);
        writeState(real, *m_real, m_records);
    }
    writeState(expected, m_naivePanel);
    writeState(real, m_realPanel);
    writeState(expected, m_naiveManager);
    writeState(real, *m_realManager);
    writeHeld(expected, real);
}

std::string Player::difference(const std::string& after)
{
    writeAll(m_expectedLines, m_realLines);
    const bool sameKey = !m_real || m_real->getStockKey() == expectedKeyOf(m_naive->stock);
    if (m_expectedLines == m_realLines && sameKey)
        return "";
    Lines expected(true);
    Lines real(true);
    writeAll(expected, real);
    return after + "\n" + firstDifferences(expected, real) + (sameKey ? "" : "    getStockKey differs\n");
}

// A model that goes leaves its rows with the manager, as a cleared one does.
std::string Player::endOfModel()
{
    work();
    std::string found = difference("when the last work was done");
    if (!found.empty())
        return found;
    m_real.reset();
    m_naive->clear();
    found = difference("when the model went");
    m_terminal.strands.drain("data_release");
    return found;
}

} // namespace tests::oracle
