// The book of the order queues by itself against the naive one.

#include "tests/tessimodel/oracle/bookduel.h"
#include "tests/tessimodel/oracle/market.h"
#include "tests/tessimodel/oracle/queues/queuestate.h"

#include <fmt/format.h>

namespace {

using namespace tests::oracle;
using namespace tests::oracle::queues;

constexpr int kStreams = 400;
constexpr int kBookSteps = 200;

struct BookStep {
    enum class Action { Tick, ClearBook, ClearPending, ClearAll, Clean, NewTick, Level, DropLevel };

    Action action = Action::Tick;
    RecordPtr record;
    int stock = 0;
    bool isBid = false;
    double price = 0;
};

std::string text(const BookStep& step)
{
    using enum BookStep::Action;
    switch (step.action) {
    case Tick:
        return text(step.record.get()) + (step.stock == 0 ? "" : ", of " + nameOf(step.stock));
    case ClearBook:
        return "clearBook";
    case ClearPending:
        return "clearPending";
    case ClearAll:
        return "clearAll, and the book gets its instrument back";
    case Clean:
        return "the dirty marks are taken note of";
    case NewTick:
        return fmt::format("price tick {}", step.price);
    case Level:
        return fmt::format("getLevel({}, {})", step.isBid ? "bid" : "ask", step.price);
    case DropLevel:
        break;
    }
    return "the panel lets go of its level";
}

std::vector<BookStep> makeSteps(unsigned long long seed)
{
    using enum BookStep::Action;
    Dice dice(seed);
    Market market(dice);
    std::vector<BookStep> steps(kBookSteps);
    for (BookStep& step : steps) {
        const int what = dice.below(1000);
        step.action = what < 900   ? Tick
                      : what < 960 ? Level
                      : what < 970 ? DropLevel
                      : what < 990 ? Clean
                                   : dice.pick({ClearBook, ClearPending, ClearAll, NewTick});
        if (step.action == Tick)
            step.record = dice.percent(66) ? market.order() : market.trade();
        step.stock = dice.oneIn(100) ? dice.between(-1, 1) : 0;
        step.isBid = dice.oneIn(2);
        step.price = step.action == NewTick ? dice.pick({0.01, 0.005, 0.0, -0.01}) : market.queuePrice();
    }
    return steps;
}

class QueueBookDuel : public BookDuel<BookStep, TC::QueueBook, NaiveQueueBook> {
public:
    QueueBookDuel() { m_real.m_priceTick = m_naive.priceTick = 0.01; }

private:
    void apply(const BookStep& step) override
    {
        using enum BookStep::Action;
        switch (step.action) {
        case Tick:
            offerAndAddFlags(step);
            break;
        case NewTick:
            m_real.m_priceTick = m_naive.priceTick = step.price;
            break;
        case Level:
            m_heldReal = m_real.getLevel(step.isBid, step.price);
            m_heldNaive = m_naive.getLevel(step.isBid, step.price);
            break;
        case DropLevel:
            m_heldReal.reset();
            m_heldNaive.reset();
            break;
        default:
            applyCommon(step);
            break;
        }
        if (step.action == ClearAll) {
            m_isWithout = m_real.m_stock == nullptr;
            takeInstrument();
        }
    }

    // The flags of one call after the other add up, as a caller with one word for a batch has them.
    void offerAndAddFlags(const BookStep& step)
    {
        offer(step);
        m_shownReal = m_realFlags;
        m_shownNaive = m_naiveFlags;
        if (step.record->id % 4 == 0)
            m_realFlags = m_naiveFlags = 0;
    }

    void write(Lines& expected, Lines& real) const override
    {
        expected.add(m_answer, {m_naiveAnswer, m_shownNaive, true});
        real.add(m_answer, {m_realAnswer, m_shownReal, m_isWithout});
        writeState(expected, m_naive);
        writeState(real, m_real, m_records);
        writeState(expected, m_heldNaive.get(), {});
        writeState(real, m_heldReal.get(), {});
    }

    const Section m_answer{"answer", nullptr, {"answer", "flags", "without instrument after clearAll"}};
    bool m_isWithout = true;
    int m_shownReal = 0;
    int m_shownNaive = 0;
    std::shared_ptr<TC::OrderQueue> m_heldReal;
    NaiveOrderQueuePtr m_heldNaive;
};

TEST(QueueBookOracle, shouldEqualTheNaiveBookWhenTicksAreAnything)
{
    checkDuels("levels, waiting trades, flags", kStreams, &makeSteps, [] { return QueueBookDuel(); });
}

} // namespace
