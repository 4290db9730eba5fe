// The tick-built book by itself against the naive one, with every mix of ticks that fade the marks and ticks that do
// not.

#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/tessimodel/oracle/market.h"
#include "tests/tessimodel/oracle/naivestate.h"
#include "tests/tessimodel/oracle/oracleruns.h"
#include "tests/tessimodel/oracle/realstate.h"
#include "tests/tessimodel/oracle/shrinkingsteps.h"
#include "tests/tessimodel/oracle/wrapping.h"
#include "ztservice/instrumentdetail.h"

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

class BookDuel {
public:
    BookDuel()
    {
        for (std::size_t i = 0; i < m_stocks.size(); ++i) {
            m_stocks[i] = std::make_shared<ztservice::CInstrumentDetail>();
            m_stocks[i]->market = instruments()[i].market;
            m_stocks[i]->code = instruments()[i].code;
        }
        m_naive.counters = &m_counters;
        m_real.m_stock = m_stocks[0];
        m_naive.stock = 0;
        setUnits(0.01, 100);
    }

    std::string play(const std::vector<BookStep>& steps)
    {
        for (std::size_t i = 0; i < steps.size(); ++i) {
            apply(steps[i]);
            const std::string found = difference();
            if (!found.empty())
                return fmt::format("after step {}, {}:\n{}", i + 1, text(steps[i]), found);
        }
        return "";
    }

private:
    void setUnits(double tick, int unit)
    {
        m_real.m_priceTick = m_naive.priceTick = tick;
        m_real.m_volumeUnit = m_naive.volumeUnit = unit;
    }

    void apply(const BookStep& step)
    {
        using enum BookStep::Action;
        switch (step.action) {
        case Tick:
            offer(step);
            break;
        case Decay:
            m_real.refreshDecay();
            m_naive.refreshDecay();
            break;
        case ClearBook:
            m_real.clearBook();
            m_naive.clearBook();
            break;
        case ClearPending:
            m_real.clearPending();
            m_naive.clearPending();
            break;
        case ClearAll:
            m_real.clearAll();
            m_naive.clearAll();
            break;
        case Clean:
            m_real.m_bidsDirty = m_real.m_asksDirty = m_naive.bids.dirty = m_naive.asks.dirty = false;
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
        }
    }

    void offer(const BookStep& step)
    {
        const auto real = m_records.of(step.record);
        const auto& stock = m_stocks[static_cast<std::size_t>(step.stock)];
        if (step.record->type == Record::Type::Order) {
            m_realAnswer = m_real.appendOrder(stock, std::dynamic_pointer_cast<quoter::OrderData>(real), m_realFlags,
                                              step.refresh);
            m_naiveAnswer = m_naive.appendOrder(step.stock, step.record, m_naiveFlags, step.refresh);
        } else {
            m_realAnswer = m_real.appendTransaction(stock, std::dynamic_pointer_cast<quoter::TransactionData>(real),
                                                    m_realFlags, step.refresh);
            m_naiveAnswer = m_naive.appendTransaction(step.stock, step.record, m_naiveFlags, step.refresh);
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

    void write(Lines& expected, Lines& real)
    {
        expected.clear();
        real.clear();
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

    std::string difference()
    {
        write(m_expectedLines, m_realLines);
        if (m_expectedLines == m_realLines)
            return "";
        Lines expected(true);
        Lines real(true);
        write(expected, real);
        return firstDifferences(expected, real);
    }

    const Section m_answer{"answer", nullptr, {"answer", "flags or number"}};
    std::array<std::shared_ptr<ztservice::CInstrumentDetail>, 2> m_stocks;
    RealRecords m_records;
    Counters m_counters;
    TC::ThousandBook m_real;
    NaiveBook m_naive;
    bool m_realAnswer = false;
    bool m_naiveAnswer = false;
    int m_realFlags = 0;
    int m_naiveFlags = 0;
    std::shared_ptr<TC::SingleQueue> m_heldReal;
    NaiveLevelPtr m_heldNaive;
    std::shared_ptr<TC::SingleQueue> m_realCopy;
    NaiveLevelPtr m_naiveCopy;
    Lines m_expectedLines;
    Lines m_realLines;
};

TEST(BookOracle, shouldEqualTheNaiveBookWhenTicksFadeMarksOrLeaveThem)
{
    standin::Terminal terminal;
    terminal.strands.runByHand();
    checkStreams("levels, rows, marks, waiting trades", kStreams, [&terminal] {
        const auto steps = *shrinkingSteps(&makeSteps);
        const std::string difference = BookDuel().play(steps.all);
        terminal.strands.drain("data_release");
        if (!difference.empty())
            RC_FAIL(difference);
    });
}

} // namespace
