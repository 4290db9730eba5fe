// One price level against the naive one.

#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "tests/tessimodel/oracle/levelrecords.h"
#include "tests/tessimodel/oracle/naivestate.h"
#include "tests/tessimodel/oracle/realstate.h"
#include "tests/tessimodel/oracle/stepduel.h"

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

std::vector<QueueStep> makeSteps(unsigned long long seed)
{
    using enum QueueStep::Action;
    Dice dice(seed);
    const int unit = dice.pick({1, 10, 100});
    LevelRecords records(dice, 12);
    std::vector<QueueStep> steps(kSteps);
    for (QueueStep& step : steps) {
        step.action =
            dice.pick({Order, Order, Order, Order, Deal, Deal, Deal, CorrectNumber, ImpliedOrders, CopyAndCorrect});
        step.record = records.next(step.action == Deal ? Record::Type::Trade : Record::Type::Order);
        step.withRow = !dice.oneIn(4);
        step.unit = dice.oneIn(10) ? dice.pick({1, 10, 100}) : unit;
        step.from = dice.oneIn(2) ? 0 : anyVolume(dice);
        step.volume = anyVolume(dice);
    }
    return steps;
}

class QueueDuel : public StepDuel<QueueStep> {
public:
    explicit QueueDuel(bool isBid)
        : m_real(10.01, isBid)
    {
        m_naive.price = 10.01;
        m_naive.isBid = isBid;
    }

private:
    void apply(const QueueStep& step) override
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

    void write(Lines& expected, Lines& real) const override
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
    checkDuels("orders, totals, rows and copies", kStreams, &makeSteps,
               [] { return QueueDuel(*rc::gen::arbitrary<bool>()); });
}

} // namespace
