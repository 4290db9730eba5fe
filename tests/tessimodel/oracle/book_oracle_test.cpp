// The tick-built book by itself against the naive one, with every mix of ticks that fade the marks and ticks that do
// not.

#include "standin/terminal.h"
#include "tests/tessimodel/oracle/bookduel.h"
#include "tests/tessimodel/oracle/market.h"
#include "tests/tessimodel/oracle/naivestate.h"
#include "tests/tessimodel/oracle/realstate.h"
#include "tests/tessimodel/oracle/wrapping.h"

#include <fmt/format.h>

namespace {

using namespace tests::oracle;

constexpr int kStreams = 2000;
constexpr int kSteps = 200;

struct BookStep {
    enum class Action { Tick, Decay, ClearBook, ClearPending, ClearAll, Clean, Correct, Copy, NewUnits };

    Action action = Action::Tick;
    RecordPtr record;
    int stock = 0;
    bool refresh = false;
    bool isBid = false;
    double price = 0;
    int volume = 0;
};

std::string text(const BookStep& step)
{
    using enum BookStep::Action;
    switch (step.action) {
    case Tick:
        return fmt::format("{}{}{}", text(step.record.get()), step.refresh ? ", refresh" : "",
                           step.stock == 0 ? "" : ", of another instrument");
    case Decay:
        return "refreshDecay";
    case ClearBook:
        return "clearBook";
    case ClearPending:
        return "clearPending";
    case ClearAll:
        return "clearAll";
    case Clean:
        return "a model copies the rows";
    case Correct:
        return fmt::format("a read gives the {} row at {} the volume {}", step.isBid ? "bid" : "ask", step.price,
                           step.volume);
    case Copy:
        return fmt::format("a copy of the {} level at {} gets {} shares", step.isBid ? "bid" : "ask", step.price,
                           step.volume);
    case NewUnits:
        break;
    }
    return "another price tick and hand";
}

std::vector<BookStep> makeSteps(unsigned long long seed)
{
    using enum BookStep::Action;
    Dice dice(seed);
    Market market(dice);
    const int fadeShare = dice.pick({0, 10, 50, 90, 100});
    std::vector<BookStep> steps(kSteps);
    for (BookStep& step : steps) {
        const int what = dice.below(1000);
        step.action = what < 840   ? Tick
                      : what < 880 ? Decay
                      : what < 882 ? ClearBook
                      : what < 884 ? ClearPending
                      : what < 887 ? ClearAll
                      : what < 907 ? Clean
                      : what < 950 ? Correct
                      : what < 995 ? Copy
                                   : NewUnits;
        if (step.action == Tick)
            step.record = dice.percent(66) ? market.order() : market.trade();
        step.stock = dice.oneIn(100) ? 1 : 0;
        step.refresh = dice.percent(fadeShare);
        step.isBid = dice.oneIn(2);
        step.price = market.price();
        step.volume = dice.oneIn(10) ? dice.pick({0, -5, 2147483647, 250000}) : dice.between(0, 900);
        if (dice.oneIn(20))
            market.rest();
    }
    return steps;
}

class ThousandBookDuel : public BookDuel<BookStep, TC::ThousandBook, NaiveBook> {
public:
    explicit ThousandBookDuel(standin::Terminal& terminal)
        : m_terminal(terminal)
    {
        setUnits(0.01, 100);
    }

private:
    void setUnits(double tick, int unit)
    {
        m_real.m_priceTick = m_naive.priceTick = tick;
        m_real.m_volumeUnit = m_naive.volumeUnit = unit;
    }

    void apply(const BookStep& step) override
    {
        using enum BookStep::Action;
        switch (step.action) {
        case Tick:
            offer(step, step.refresh);
            break;
        case Decay:
            m_real.refreshDecay();
            m_naive.refreshDecay();
            break;
        case Correct:
            correctRow(step);
            break;
        case Copy:
            copyLevel(step);
            break;
        case NewUnits:
            setUnits(step.isBid ? 0.005 : 0.01, step.refresh ? 10 : 100);
            break;
        default:
            applyCommon(step);
            break;
        }
    }

    // Reads write into the rows that book and model share.
    void correctRow(const BookStep& step)
    {
        const int key = priceKeyOf(step.price, m_naive.priceTick);
        const auto& realRows = step.isBid ? m_real.m_bidRows : m_real.m_askRows;
        const auto& naiveRows = step.isBid ? m_naive.bids.rows : m_naive.asks.rows;
        const auto real = realRows.find(key);
        const auto naive = naiveRows.find(key);
        if (real == realRows.end() || naive == naiveRows.end())
            return;
        real->second->volume = naive->second->volume = step.volume;
        real->second->delta = naive->second->delta = 0;
    }

    void copyLevel(const BookStep& step)
    {
        const auto real = m_real.getLevel(step.isBid, step.price);
        const NaiveLevelPtr naive = m_naive.getLevel(step.isBid, step.price);
        m_realAnswer = real != nullptr;
        m_naiveAnswer = naive != nullptr;
        if (!real || !naive)
            return;
        m_heldReal = real;
        m_heldNaive = naive;
        m_realFlags = real->correctNumber(step.volume);
        m_naiveFlags = naive->correctNumber(step.volume);
        m_realCopy = std::make_shared<TC::SingleQueue>(*real);
        m_realCopy->correctQueue(step.volume);
        m_naiveCopy = naive->deepCopy();
        m_naiveCopy->correctQueue(step.volume);
    }

    std::string end() override
    {
        m_terminal.strands.drain("data_release");
        return "";
    }

    void write(Lines& expected, Lines& real) const override
    {
        expected.add(m_answer, {m_naiveAnswer, m_naiveFlags});
        real.add(m_answer, {m_realAnswer, m_realFlags});
        writeState(expected, m_naive);
        writeState(real, m_real, m_records);
        // A level that a panel holds lives on when the book has dropped it.
        if (m_heldNaive)
            writeState(expected, *m_heldNaive, m_heldNaive->isBid, 0);
        if (m_heldReal)
            writeState(real, *m_heldReal, m_heldReal->m_isBid, 0);
        // Copies stay as they were made, whatever the book goes through.
        if (m_naiveCopy)
            writeState(expected, *m_naiveCopy, m_naiveCopy->isBid, 0);
        if (m_realCopy)
            writeState(real, *m_realCopy, m_realCopy->m_isBid, 0);
    }

    const Section m_answer{"answer", nullptr, {"answer", "flags or number"}};
    standin::Terminal& m_terminal;
    std::shared_ptr<TC::SingleQueue> m_heldReal;
    NaiveLevelPtr m_heldNaive;
    std::shared_ptr<TC::SingleQueue> m_realCopy;
    NaiveLevelPtr m_naiveCopy;
};

TEST(BookOracle, shouldEqualTheNaiveBookWhenTicksFadeMarksOrLeaveThem)
{
    standin::Terminal terminal;
    terminal.strands.runByHand();
    checkDuels("levels, rows, marks, waiting trades", kStreams, &makeSteps,
               [&terminal] { return ThousandBookDuel(terminal); });
}

} // namespace
