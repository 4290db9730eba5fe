// Whole simulated days: what the models make of ticks and of snapshots against the exchange's own snapshots of the same
// instant.

#include "exchange/simulator.h"
#include "indexui/tessimodel/cmodeldepthqueue.h"
#include "indexui/tessimodel/cmodeldepththousand.h"
#include "indexui/tessimodel/cmodelquoterdepththousand.h"
#include "quoter/levelorderdata.h"
#include "quoter/levelthousanddata.h"
#include "recording/recordedday.h"
#include "recording/terminalview.h"
#include "tests/exchange/plainreplay.h"
#include "tests/support/instruments.h"
#include "tests/tessimodel/bookfeed.h"
#include "tests/tessimodel/bookreading.h"
#include "tests/tessimodel/simulatedtexts.h"
#include "tests/tessimodel/simulation.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace tests;
using recording::Event;
using recording::Stream;

constexpr int kContinuous = 13;
constexpr std::size_t kQueuedOrders = 50;
constexpr __int64 kSharesPerHand = 100;

// A record in shares as rows of a book that has no row for orders of market kinds. Ticks show at least one hand.
std::string recordTextWithout(const std::map<int, PlainReplay::Resting>& marketOrders,
                              const quoter::LevelThousandData& record, bool isBid)
{
    std::string text;
    eachByAscendingPrice(sideOf(record, isBid), isBid, [&](int ticks, int shares, int orders) {
        const auto hidden = marketOrders.find(ticks);
        const PlainReplay::Resting less = hidden == marketOrders.end() ? PlainReplay::Resting() : hidden->second;
        if (orders > less.orders) {
            const __int64 hands = (shares - less.shares) / kSharesPerHand;
            text += levelText(ticks, std::max<__int64>(hands, 1), orders - less.orders);
        }
    });
    return text;
}

std::vector<int> firstSizes(const std::shared_ptr<TC::SingleQueue>& queue)
{
    std::vector<int> sizes;
    if (!queue)
        return sizes;
    for (const auto& [seq, quote] : queue->m_quotes) {
        if (sizes.size() < kQueuedOrders)
            sizes.push_back(static_cast<int>(quote->volume - quote->dealVolume));
    }
    return sizes;
}

// What checkUpdate gives; `before` when nothing is new.
template <class Model, class... Options>
Rows readRows(Model& model, const Rows& before, Options... options)
{
    const BookReading reading = readBook(model, options...);
    if (!reading.updated)
        return before;
    return {rowsText(reading.bids), rowsText(reading.asks), changesText(reading.bids) + changesText(reading.asks)};
}

class SimulatedSnapshots : public ::testing::TestWithParam<int> {
protected:
    void simulate(const exchange::SimulationOptions& options)
    {
        m_day = exchange::simulateDay(options);
        m_terminal.instruments.add(m_day.instrument);
        m_view = std::make_unique<recording::TerminalView>(m_day, static_cast<int>(kSharesPerHand));
    }

    // A model that is live from the day's first tick on.
    template <class Model>
    void begin(Model& model, BookFeed<Model>& feed)
    {
        model.setStock(keyOf(m_day.instrument.market, m_day.instrument.code));
        feed.begin();
    }

    template <class Model>
    BookFeed<Model> feedOf(Model& model)
    {
        return BookFeed<Model>(m_terminal, model, m_day.instrument.market, m_day.instrument.code);
    }

    template <class Model>
    static void push(BookFeed<Model>& feed, const Event& tick)
    {
        if (tick.stream == Stream::Orders)
            feed.orders(live, {tick.record});
        else
            feed.trades(live, {tick.record});
    }

    static bool isTick(const Event& event) { return event.stream == Stream::Orders || event.stream == Stream::Trades; }

    // Keeps the phase that the exchange's latest snapshot tells.
    bool isContinuous(const Event& event)
    {
        if (event.stream == Stream::Snapshots)
            m_status = static_cast<const quoter::QuoterDepthData&>(*event.record).tradeStatus;
        return m_status == kContinuous;
    }

    BookTerminal m_terminal;
    recording::RecordedDay m_day;
    std::unique_ptr<recording::TerminalView> m_view;
    int m_status = 0;
};

TEST_P(SimulatedSnapshots, shouldShowTheRecordWhenAThousandLevelSnapshotArrives)
{
    simulate(simulationOf(GetParam()));
    TC::CModelQuoterDepthThousand model;
    auto feed = feedOf(model);
    model.setStock(keyOf(m_day.instrument.market, m_day.instrument.code));
    std::shared_ptr<quoter::QuoterDepthData> base; // the latest of continuous trading with which the day volume grew
    std::map<int, int> handsBefore;
    int records = 0;
    int changed = 0;
    std::size_t longest = 0;
    for (std::size_t i = 0; i < m_day.events.size(); ++i) {
        const auto& record = m_view->event(i).record;
        if (m_day.events[i].stream == Stream::Snapshots) {
            feed.snapshots(live, {record});
            const auto snapshot = std::static_pointer_cast<quoter::QuoterDepthData>(record);
            if (model.isContinousStatus(snapshot) && (!base || base->volume < snapshot->volume))
                base = snapshot;
        }
        if (m_day.events[i].stream != Stream::Thousand)
            continue;
        feed.thousand(live, {record});
        const auto& thousand = static_cast<const quoter::LevelThousandData&>(*record);
        const Rows rows = readRows(model, {"unread", "unread", "unread"}, false);
        ASSERT_EQ(rows.bids, recordText(thousand, true)) << "bids at event " << i;
        ASSERT_EQ(rows.asks, recordText(thousand, false)) << "asks at event " << i;
        // Records are three seconds apart, so that each shows what changed since the one before, and nothing older.
        ASSERT_EQ(rows.changes, changesText(handsBefore, thousand, true) + changesText(handsBefore, thousand, false))
            << "event " << i;
        const Rows levels = readRows(model, {"unread", "unread", "unread"}, true);
        const Rows expected = base ? snapshotRows(*base) : Rows();
        ASSERT_EQ(levels.bids, expected.bids) << "bids of the snapshot at event " << i;
        ASSERT_EQ(levels.asks, expected.asks) << "asks of the snapshot at event " << i;
        handsBefore = handsByPrice(thousand);
        ++records;
        changed += rows.changes.empty() ? 0 : 1;
        longest = std::max(longest, thousand.bidPrices.size());
    }
    EXPECT_GT(records, 500);
    EXPECT_GT(changed, 100);
    EXPECT_GT(longest, 20u);
}

TEST_P(SimulatedSnapshots, shouldShowTheLevelsOfTheSameInstantWhenTheBookIsBuiltFromTicks)
{
    simulate(simulationOf(GetParam()));
    TC::CModelDepthThousand model;
    auto feed = feedOf(model);
    begin(model, feed);
    PlainReplay exchangeBook(m_day);
    Rows rows;
    int compared = 0;
    for (std::size_t i = 0; i < m_day.events.size(); ++i) {
        const Event& event = m_day.events[i];
        const bool continuous = isContinuous(event);
        if (isTick(event)) {
            push(feed, event);
            if (event.stream == Stream::Orders)
                exchangeBook.apply(static_cast<const quoter::OrderData&>(*event.record));
            else
                exchangeBook.apply(static_cast<const quoter::TransactionData&>(*event.record));
        }
        if (event.stream != Stream::Thousand || !continuous)
            continue;
        exchangeBook.settle(event.record->timetag);
        rows = readRows(model, rows);
        const auto& thousand = static_cast<const quoter::LevelThousandData&>(*event.record);
        ASSERT_EQ(rows.bids, recordTextWithout(exchangeBook.marketOrders(true), thousand, true)) << "event " << i;
        ASSERT_EQ(rows.asks, recordTextWithout(exchangeBook.marketOrders(false), thousand, false)) << "event " << i;
        ++compared;
    }
    EXPECT_GT(compared, 500);
}

TEST_P(SimulatedSnapshots, shouldHaveTheQueuesOfTheSameInstantWhenTheBookIsBuiltFromTicks)
{
    exchange::SimulationOptions options = simulationOf(GetParam());
    options.marketOrdersPerMille = 0; // those that rest stand in the exchange's queues and in no level
    simulate(options);
    TC::CModelDepthThousand model;
    auto feed = feedOf(model);
    begin(model, feed);
    int compared = 0;
    for (std::size_t i = 0; i < m_day.events.size(); ++i) {
        const Event& event = m_day.events[i];
        const bool continuous = isContinuous(event);
        if (isTick(event))
            push(feed, event);
        if (event.stream != Stream::Queues || !continuous)
            continue;
        const auto& queues = static_cast<const quoter::LevelOrderData&>(*event.record);
        ASSERT_EQ(firstSizes(model.getQueue(true, queues.bidPrice)), queues.bidQueue) << "bids at event " << i;
        ASSERT_EQ(firstSizes(model.getQueue(false, queues.askPrice)), queues.askQueue) << "asks at event " << i;
        compared += queues.bidQueue.size() > 1 && queues.askQueue.size() > 1 ? 1 : 0;
    }
    EXPECT_GT(compared, 100) << "queues of several orders";
}

TEST_P(SimulatedSnapshots, shouldHaveTheSameOrdersInBothBooksWhenTheyTakeTheSameTicks)
{
    simulate(simulationOf(GetParam()));
    TC::CModelDepthThousand thousand;
    TC::CModelDepthQueue queues;
    auto thousandFeed = feedOf(thousand);
    auto queueFeed = feedOf(queues);
    begin(thousand, thousandFeed);
    begin(queues, queueFeed);
    std::size_t orders = 0;
    std::size_t ordersOfMarketKinds = 0;
    for (std::size_t i = 0; i < m_day.events.size(); ++i) {
        const Event& event = m_day.events[i];
        if (isTick(event)) {
            push(thousandFeed, event);
            push(queueFeed, event);
        }
        if (event.stream != Stream::Queues)
            continue;
        const TC::ThousandBook& one = thousand.m_book;
        TC::QueueBook& other = queues.m_book;
        ASSERT_EQ(sideText(other.m_bidLevels), sideText(one.m_bidLevels)) << "event " << i;
        ASSERT_EQ(sideText(other.m_askLevels), sideText(one.m_askLevels)) << "event " << i;
        for (const bool isBid : {true, false}) {
            for (const auto& [key, level] : isBid ? other.m_bidLevels : other.m_askLevels) {
                // A level that is out goes on by its own lock and is not used again: let there be both kinds.
                if (key > 0 && key % 3 == 0) {
                    ASSERT_EQ(other.getLevel(isBid, key / 100.0), level);
                }
                orders += level->m_quotes.size();
                ordersOfMarketKinds += key < 0 ? level->m_quotes.size() : 0;
            }
        }
    }
    EXPECT_GT(orders, 1000u);
    if (simulationOf(GetParam()).marketOrdersPerMille > 100) {
        EXPECT_GT(ordersOfMarketKinds, 300u);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SimulatedSnapshots, ::testing::Range(1, 9));

} // namespace
