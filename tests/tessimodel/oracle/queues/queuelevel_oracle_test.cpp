// One price level of the order queues against the naive one.

#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "tests/tessimodel/oracle/levelrecords.h"
#include "tests/tessimodel/oracle/queues/queuestate.h"
#include "tests/tessimodel/oracle/stepduel.h"

#include <fmt/ranges.h>

#include <climits>

namespace {

using namespace tests::oracle;
using namespace tests::oracle::queues;

constexpr int kStreams = 3000;
constexpr int kLevelSteps = 60;

struct LevelStep {
    enum class Action { Order, Deal, Assign, Hold };

    Action action = Action::Order;
    Record record;
    std::vector<int> volumes;
};

std::string text(const LevelStep& step)
{
    using enum LevelStep::Action;
    if (step.action == Assign)
        return fmt::format("assignQueue({})", fmt::join(step.volumes, ", "));
    return step.action == Hold ? "a panel takes the orders" : text(&step.record);
}

std::vector<LevelStep> makeSteps(unsigned long long seed)
{
    using enum LevelStep::Action;
    Dice dice(seed);
    LevelRecords records(dice, 6);
    std::vector<LevelStep> steps(kLevelSteps);
    for (LevelStep& step : steps) {
        step.action = dice.oneIn(20) ? Assign : dice.pick({Order, Order, Order, Order, Deal, Deal, Deal, Hold});
        step.record = records.next(step.action == Deal ? Record::Type::Trade : Record::Type::Order);
        for (int count = dice.below(6); count > 0; --count)
            step.volumes.push_back(dice.oneIn(20) ? dice.pick({INT_MAX, INT_MIN, -1, 0}) : dice.between(1, 900));
    }
    return steps;
}

class LevelDuel : public StepDuel<LevelStep> {
public:
    explicit LevelDuel(bool isBid)
        : m_real(10.01, isBid)
    {
        m_naive.price = 10.01;
        m_naive.isBid = isBid;
    }

private:
    void apply(const LevelStep& step) override
    {
        using enum LevelStep::Action;
        const auto record = m_records.of(std::make_shared<const Record>(step.record));
        switch (step.action) {
        case Order:
            m_realAnswer = m_real.appendQuote(std::dynamic_pointer_cast<quoter::OrderData>(record));
            m_naiveAnswer = m_naive.appendQuote(step.record);
            break;
        case Deal:
            m_realAnswer = m_real.dealQuote(std::dynamic_pointer_cast<quoter::TransactionData>(record));
            m_naiveAnswer = m_naive.dealQuote(step.record, m_counters);
            break;
        case Assign:
            m_real.assignQueue(step.volumes);
            m_naive.assignQueue(step.volumes);
            break;
        case Hold:
            m_realHeld = m_real.m_quotes;
            m_naiveHeld = m_naive.quotes;
            break;
        }
    }

    void write(Lines& expected, Lines& real) const override
    {
        expected.add(m_answer, {m_naiveAnswer});
        real.add(m_answer, {m_realAnswer});
        writeState(expected, &m_naive, {});
        writeState(real, &m_real, {});
        writeQuotes(expected, m_naiveHeld);
        writeQuotes(real, m_realHeld);
    }

    const Section m_answer{"answer", nullptr, {"answer"}};
    RealRecords m_records;
    Counters m_counters;
    TC::OrderQueue m_real;
    NaiveOrderQueue m_naive;
    bool m_realAnswer = false;
    bool m_naiveAnswer = false;
    TC::OrderQueue::Quotes m_realHeld;
    std::map<__int64, std::shared_ptr<NaiveQuote>> m_naiveHeld;
};

TEST(QueueLevelOracle, shouldEqualTheNaiveLevelWhenOrdersTradesAndQueuesAreAnything)
{
    checkDuels("orders, totals, assigned queues", kStreams, &makeSteps,
               [] { return LevelDuel(*rc::gen::arbitrary<bool>()); });
}

TEST(QueueLevelOracle, shouldEqualTheNaiveRowWhenItIsNew)
{
    Lines expected(true);
    Lines real(true);
    const TC::OrderQueue row;
    const NaiveOrderQueue naive;
    writeState(expected, &naive, {});
    writeState(real, &row, {});
    EXPECT_EQ(firstDifferences(expected, real), "    the same lines in another order or number\n");
    EXPECT_TRUE(expected == real);
}

} // namespace
