// One price level against the naive one.

#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "tests/tessimodel/oracle/dice.h"
#include "tests/tessimodel/oracle/naivestate.h"
#include "tests/tessimodel/oracle/oracleruns.h"
#include "tests/tessimodel/oracle/realstate.h"
#include "tests/tessimodel/oracle/shrinkingsteps.h"

#include <boost/make_shared.hpp>
#include <fmt/format.h>

#include <climits>

namespace {

using namespace tests::oracle;

constexpr int kStreams = 4000;
constexpr int kSteps = 60;

struct QueueStep {
    enum class Action { Order, Deal, CorrectNumber, ImpliedOrders, CopyAndCorrect };

    Action action = Action::Order;
    Record record;
    bool withRow = true;
    int unit = 100;
    int from = 0;
    int volume = 0;
};

std::string text(const QueueStep& step)
{
    using enum QueueStep::Action;
    const std::string row = step.withRow ? ", row" : ", no row";
    switch (step.action) {
    case Order:
    case Deal:
        return fmt::format("{}{}, unit {}", text(&step.record), row, step.unit);
    case CorrectNumber:
        return fmt::format("correctNumber({})", step.volume);
    case ImpliedOrders:
        return fmt::format("correctNumber({}, {})", step.from, step.volume);
    case CopyAndCorrect:
        break;
    }
    return fmt::format("copy, correctQueue({})", step.volume);
}

int anyVolume(Dice& dice)
{
    if (dice.oneIn(40))
        return dice.oneIn(5) ? dice.pick({INT_MAX, 2000000000}) : dice.pick({INT_MIN, -100});
    return dice.oneIn(3) ? dice.between(0, 400000) : dice.between(0, 30) * 50;
}

__int64 anyShares(Dice& dice)
{
    if (dice.oneIn(40))
        return dice.pick<__int64>({0, -1, -300, INT_MAX, 1LL << 32, (1LL << 32) + 100, LLONG_MAX, LLONG_MIN});
    return dice.between(1, 12) * dice.pick<__int64>({30, 50, 100});
}

std::vector<QueueStep> makeSteps(unsigned long long seed)
{
    using enum QueueStep::Action;
    Dice dice(seed);
    const int unit = dice.pick({1, 10, 100});
    __int64 seq = 0;
    std::vector<QueueStep> steps(kSteps);
    for (QueueStep& step : steps) {
        step.action =
            dice.pick({Order, Order, Order, Order, Deal, Deal, Deal, CorrectNumber, ImpliedOrders, CopyAndCorrect});
        Record& record = step.record;
        record.type = step.action == Deal ? Record::Type::Trade : Record::Type::Order;
        record.timetag = dice.oneIn(50) ? LLONG_MIN : dice.between(-10, 5000);
        record.volume = anyShares(dice);
        seq += dice.between(0, 2);
        record.seq = dice.oneIn(60) ? dice.pick<__int64>({LLONG_MAX, 0, -3, 1LL << 33}) : seq;
        record.buySeq = dice.oneIn(3) ? dice.between(-1, static_cast<int>(seq) + 2)
                                      : std::max(0, static_cast<int>(seq) - dice.below(8));
        record.sellSeq = dice.oneIn(4) ? 0 : record.buySeq + dice.between(-1, 1);
        record.transKind = dice.oneIn(3) ? 3 : dice.below(3);
        step.withRow = !dice.oneIn(4);
        step.unit = dice.oneIn(10) ? dice.pick({1, 10, 100}) : unit;
        step.from = dice.oneIn(2) ? 0 : anyVolume(dice);
        step.volume = anyVolume(dice);
    }
    return steps;
}

class QueueDuel {
public:
    explicit QueueDuel(bool isBid)
        : m_real(10.01, isBid)
    {
        m_naive.price = 10.01;
        m_naive.isBid = isBid;
    }

    std::string play(const std::vector<QueueStep>& steps)
    {
        for (std::size_t i = 0; i < steps.size(); ++i) {
            apply(steps[i]);
            Lines expected(true);
            Lines real(true);
            write(expected, real);
            if (!(expected == real))
                return fmt::format("after step {}, {}:\n{}", i + 1, text(steps[i]), firstDifferences(expected, real));
        }
        return "";
    }

private:
    void apply(const QueueStep& step)
    {
        using enum QueueStep::Action;
        const boost::shared_ptr<TC::EntrustData> realRow = step.withRow ? m_realRow : nullptr;
        NaiveRow* naiveRow = step.withRow ? &m_naiveRow : nullptr;
        const auto record = m_records.of(std::make_shared<const Record>(step.record));
        switch (step.action) {
        case Order:
            m_realAnswer = m_real.order(std::dynamic_pointer_cast<quoter::OrderData>(record), realRow, step.unit);
            m_naiveAnswer = m_naive.order(step.record, naiveRow, step.unit);
            break;
        case Deal:
            m_realAnswer = m_real.deal(std::dynamic_pointer_cast<quoter::TransactionData>(record), realRow, step.unit);
            m_naiveAnswer = m_naive.deal(step.record, naiveRow, step.unit);
            break;
        case CorrectNumber:
            m_realAnswer = m_real.correctNumber(step.volume);
            m_naiveAnswer = m_naive.correctNumber(step.volume);
            break;
        case ImpliedOrders:
            m_realAnswer = TC::SingleQueue::correctNumber(step.from, step.volume);
            m_naiveAnswer = NaiveLevel::correctNumber(step.from, step.volume);
            break;
        case CopyAndCorrect:
            m_realCopy = std::make_shared<TC::SingleQueue>(m_real);
            m_realCopy->correctQueue(step.volume);
            m_naiveCopy = m_naive.deepCopy();
            m_naiveCopy->correctQueue(step.volume);
            break;
        }
        m_real.getQuotes(m_real.m_quotes);
    }

    void write(Lines& expected, Lines& real)
    {
        expected.add(m_row, m_naiveRow.price, {m_naiveAnswer, m_naiveRow.volume, m_naiveRow.delta, m_naiveRow.number});
        real.add(m_row, m_realRow->price, {m_realAnswer, m_realRow->volume, m_realRow->delta, m_realRow->number});
        writeState(expected, m_naive, m_naive.isBid, 0);
        writeState(real, m_real, m_real.m_isBid, 0);
        if (m_realCopy) {
            writeState(expected, *m_naiveCopy, m_naiveCopy->isBid, 0);
            writeState(real, *m_realCopy, m_realCopy->m_isBid, 0);
        }
    }

    const Section m_row{"row", "price", {"answer", "volume", "delta", "number"}};
    RealRecords m_records;
    TC::SingleQueue m_real;
    NaiveLevel m_naive;
    boost::shared_ptr<TC::EntrustData> m_realRow = boost::make_shared<TC::EntrustData>();
    NaiveRow m_naiveRow;
    int m_realAnswer = 0;
    int m_naiveAnswer = 0;
    std::shared_ptr<TC::SingleQueue> m_realCopy;
    NaiveLevelPtr m_naiveCopy;
};

TEST(QueueOracle, shouldEqualTheNaiveLevelWhenOrdersTradesAndCorrectionsAreAnything)
{
    checkStreams("orders, totals, rows and copies", kStreams, [] {
        const bool isBid = *rc::gen::arbitrary<bool>();
        const auto steps = *shrinkingSteps(&makeSteps);
        const std::string difference = QueueDuel(isBid).play(steps.all);
        if (!difference.empty())
            RC_FAIL(difference);
    });
}

} // namespace
