#include "tests/tessimodel/tradelist.h"

#include <rapidcheck.h>

#include <algorithm>
#include <cmath>

namespace {

using namespace tests;

// A list of trades with its feed, of which there are two.
struct FedList {
    explicit FedList(standin::Terminal& terminal)
        : feed(terminal, *model)
    {
        model->setStock(keyOf("SZ", "000001"));
    }

    boost::shared_ptr<TradeList> model = boost::make_shared<TradeList>();
    BookFeed<TradeList> feed;
};

// Trades and snapshots as time goes by, the snapshots now early and now late.
class Market {
public:
    std::shared_ptr<quoter::QuoterBase> trade()
    {
        m_milliseconds += *rc::gen::inRange(0, 1500);
        std::shared_ptr<quoter::TransactionData> record =
            fill(*rc::gen::inRange(0, 4), *rc::gen::inRange(0, 4)).at(price()).shares(*rc::gen::inRange(0, 450));
        record->timetag = timeOf("09:30:00") + m_milliseconds;
        return record;
    }

    std::shared_ptr<quoter::QuoterBase> snapshot()
    {
        m_volume += *rc::gen::inRange(0, 9);
        m_snapshotMilliseconds += *rc::gen::inRange(1000, 4000);
        std::shared_ptr<quoter::QuoterDepthData> record = level2().last(price()).volume(m_volume);
        record->timetag = timeOf("09:30:00") + m_snapshotMilliseconds;
        return record;
    }

private:
    static double price() { return *rc::gen::element(10.00, 10.01); }

    __int64 m_milliseconds = 0;
    __int64 m_snapshotMilliseconds = 0;
    __int64 m_volume = 0;
};

struct Side {
    int TC::DepthTransData::*seq;
    int TC::DepthTransData::*prev;
    int TC::DepthTransData::*next;
    TradeList::Chains TC::CModelDepthTransaction::*chains;
};

// While every row passes, the chains of a side hold every row just once, and links lead along them.
void checkChains(const TradeList& model, const Side& side)
{
    int chained = 0;
    for (const auto& [seq, numbers] : model.*side.chains) {
        chained += static_cast<int>(numbers.size());
        RC_ASSERT(std::is_sorted(numbers.begin(), numbers.end()));
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const TC::DepthTransData& row = *model.m_rows.at(numbers[i]);
            RC_ASSERT((row.*side.seq) == seq);
            RC_ASSERT((row.*side.prev) == (i == 0 ? -1 : numbers[i - 1]));
            RC_ASSERT((row.*side.next) == (i + 1 == numbers.size() ? -1 : numbers[i + 1]));
        }
    }
    RC_ASSERT(chained == model.m_rows.size());
}

// Pairs of matched snapshots follow each other without a gap. They overlap only where one stands for no row of its own.
void checkPairs(const TradeList& model)
{
    int lastBefore = -1;
    bool wasOneRow = true;
    for (int i = 0; i <= model.m_lastMatchedQuote; ++i) {
        const quoter::QuoterDepthData& quote = *model.m_quotes.at(i);
        const auto& [first, last] = model.m_seqPairs.at(static_cast<int>(quote.timetag / 1000));
        const bool isOneRow = first == last;
        RC_ASSERT(0 <= first && first <= last && last < model.m_rowCount);
        RC_ASSERT(first <= lastBefore + 1);
        RC_ASSERT(first >= lastBefore + (isOneRow || wasOneRow ? 0 : 1));
        if (!isOneRow) {
            const TC::DepthTransData& row = *model.m_rows.at(last);
            RC_ASSERT(std::abs(row.price - quote.lastPrice) <= 1e-5);
            RC_ASSERT(row.time <= quote.timetag / 1000);
        }
        lastBefore = last;
        wasOneRow = isOneRow;
    }
    if (static_cast<int>(model.m_seqPairs.size()) > model.m_lastMatchedQuote + 1) {
        const auto& [first, last] = model.m_seqPairs.rbegin()->second;
        RC_ASSERT(first == lastBefore + 1);
        RC_ASSERT(last == model.m_rowCount - 1);
    }
}

// The row of a second as the minutes' numbers and a plain walk over the rows give it.
int walkTo(const TradeList& model, int second, bool forward)
{
    const int count = model.m_filteredRows.size();
    int start = 0;
    for (const auto& [minute, number] : model.m_minuteIndex) {
        if (minute <= second)
            start = std::max(number, 0);
    }
    for (int i = start; i < count; ++i) {
        const __int64 time = model.m_filteredRows.at(i)->time;
        if (forward && time > second)
            return std::max(i - 1, 0);
        if (!forward && time >= second)
            return i;
    }
    return count > 0 && model.m_filteredRows.back()->time == second ? count - 1 : -1;
}

// How many rows up to this one are of its second, with none of another between.
int runTo(const TradeList& model, int index)
{
    int run = 1;
    while (index - run >= 0 && model.m_filteredRows.at(index - run)->time == model.m_filteredRows.at(index)->time)
        ++run;
    return run;
}

// Rows by time or with some that go back, as those do that waited for the history, and a filter from the start or since
// the rows came.
TEST(TradeListProperty, shouldFindWhatAWalkFindsWhateverTheTimesAndTheFilter)
{
    BookTerminal terminal;
    const bool holds = rc::check("rows by second", [&] {
        FedList list(terminal);
        const bool goesBack = *rc::gen::arbitrary<bool>();
        const bool filtersFirst = *rc::gen::arbitrary<bool>();
        TC::SDepthFilterParam filter = atLeastHands(*rc::gen::inRange(0, 4));
        if (filtersFirst)
            list.model->setFilterParam(filter);
        Records records;
        __int64 seconds = 60;
        for (int count = *rc::gen::inRange(0, 25); count > 0; --count) {
            seconds += *rc::gen::inRange(goesBack ? -20 : 0, 40);
            const std::shared_ptr<quoter::TransactionData> record = dealt("09:30:00", 10.00, *rc::gen::inRange(1, 5));
            record->timetag += seconds * 1000;
            records.push_back(record);
        }
        list.feed.trades(history, records);
        if (!filtersFirst)
            list.model->setFilterParam(filter);
        for (int second = secondOf("09:30:00"); second < secondOf("09:50:00"); second += 3) {
            RC_ASSERT(list.model->find(second, true) == walkTo(*list.model, second, true));
            RC_ASSERT(list.model->find(second, false) == walkTo(*list.model, second, false));
        }
        for (int i = 0; i < list.model->m_rowCount; ++i)
            RC_ASSERT(list.model->tracebackSeq(i) == runTo(*list.model, i));
        terminal.strands.drain("data_release");
    });
    EXPECT_TRUE(holds);
}

// A filter that is set again lets the very same rows pass, and makes the list look at all of them anew: what is matched
// must not depend on how far an earlier look has come.
TEST(TradeListProperty, shouldChainAndMatchTheSameWhenItLooksAtAllRowsAnew)
{
    BookTerminal terminal;
    const bool holds = rc::check("chains, pairs, and two ways to the same", [&] {
        FedList steady(terminal);
        FedList anew(terminal);
        Market market;
        const auto deliver = [&](void (BookFeed<TradeList>::*stream)(int, Records), int kind, const Records& records) {
            TC::SDepthFilterParam all;
            anew.model->setFilterParam(all);
            (steady.feed.*stream)(kind, records);
            (anew.feed.*stream)(kind, records);
            RC_ASSERT(pairsText(*steady.model) == pairsText(*anew.model));
            RC_ASSERT(steady.model->m_lastMatchedQuote == anew.model->m_lastMatchedQuote);
        };
        deliver(&BookFeed<TradeList>::trades, history, {});
        const int deliveries = *rc::gen::inRange(1, 60);
        for (int i = 0; i < deliveries; ++i) {
            const int kind = *rc::gen::element(live, live, live, moreHistory);
            const int count = kind == live ? 1 : *rc::gen::inRange(0, 8);
            const bool areTrades = *rc::gen::inRange(0, 4) != 0;
            Records records;
            for (int k = 0; k < count; ++k)
                records.push_back(areTrades ? market.trade() : market.snapshot());
            deliver(areTrades ? &BookFeed<TradeList>::trades : &BookFeed<TradeList>::snapshots, kind, records);
            checkPairs(*steady.model);
        }
        using Row = TC::DepthTransData;
        checkChains(*steady.model,
                    {&Row::buySeq, &Row::prevBuyIndex, &Row::nextBuyIndex, &TC::CModelDepthTransaction::m_buyChains});
        checkChains(*steady.model, {&Row::sellSeq, &Row::prevSellIndex, &Row::nextSellIndex,
                                    &TC::CModelDepthTransaction::m_sellChains});
        RC_CLASSIFY(steady.model->m_lastMatchedQuote >= 3, "four snapshots and more are matched");
        terminal.strands.drain("data_release");
    });
    EXPECT_TRUE(holds);
}

} // namespace
