// The book summary and the distribution of real and simulated days, against what the snapshots say by themselves.

#include "apps/tessi/dayrequest.h"
#include "apps/tessi/followeddistribution.h"
#include "apps/tessi/followedstatus.h"
#include "apps/tessi/session.h"
#include "exchange/simulationoptions.h"
#include "exchange/simulator.h"
#include "quoter/transactiondata.h"
#include "recording/datalayer.h"
#include "tests/tessi/importedday.h"
#include "tests/tessi/paramtexts.h"
#include "tests/tessi/plainsnapshots.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

namespace {

using namespace tests;
using recording::HistoryPoint;
using recording::Stream;

// Opening auction, its break, continuous trading, lunch, closing auction, close, fixed-price trading and its end.
const char* const kMoments[] = {"09:20:00", "09:26:00", "09:30:10", "10:30:00", "11:29:59", "12:15:00", "13:00:20",
                                "14:58:30", "15:01:00", "15:10:00", "15:29:59", "15:30:00", "15:40:00"};

// Live, as one history, in pieces of history, and from history on to live.
struct Way {
    const char* name;
    HistoryPoint history;
    std::size_t pieceSize;
};

std::vector<Way> waysThrough(const recording::RecordedDay& day)
{
    return {{"live", HistoryPoint::nothing(), 5000},
            {"one history", HistoryPoint::wholeDay(), 1'000'000},
            {"pieces", HistoryPoint::wholeDay(), 300},
            {"half", HistoryPoint::time(clockOn(day, "10:30:00")), 1000}};
}

std::string rowsText(const TC::CModelEntrustStatus& model, const PlainSnapshots& plain)
{
    std::string text;
    const auto add = [&](const char* side, int level, const TC::EntrustStatusRow& row) {
        if (row.used)
            text += levelText(side, level, plain.ticksOf(row.price), row.volume, row.delta);
    };
    for (int i = TC::CModelEntrustStatus::kRows; i-- > 0;)
        add("ask", TC::CModelEntrustStatus::kRows - i, model.m_askRows[i]);
    for (int i = 0; i < TC::CModelEntrustStatus::kRows; ++i)
        add("bid", i + 1, model.m_bidRows[i]);
    return text;
}

std::string statusText(const TC::CModelEntrustStatus& model, const PlainSnapshots& plain)
{
    return rowsText(model, plain) + figuresText(plain.ticksOf(model.m_lastPrice), model.m_tickVolume);
}

// "1002: 10 bought, 0 sold, 10" for each price, highest first.
std::string rowText(__int64 ticks, __int64 buy, __int64 sell, __int64 total)
{
    return std::to_string(ticks) + ": " + std::to_string(buy) + " bought, " + std::to_string(sell) + " sold, " +
           std::to_string(total) + "\n";
}

std::string pricesText(const TC::CModelTransDistribution& model, const PlainSnapshots& plain)
{
    std::string text;
    for (const TC::TransDistributionPrice& row : model.m_prices)
        text += rowText(plain.ticksOf(row.price), row.buyVolume, row.sellVolume, row.totalVolume);
    return text;
}

std::string pricesText(const PlainSnapshots& plain)
{
    std::string text;
    for (const auto& [ticks, row] : plain.distribution())
        text += rowText(ticks, row.buy, row.sell, row.buy + row.sell);
    return text;
}

bool tradesAfterHours(const recording::RecordedDay& day)
{
    return day.instrument.types.count(277) > 0 || day.instrument.types.count(10006) > 0;
}

void checkStatus(standin::Terminal& terminal, const recording::RecordedDay& day, Stream stream)
{
    const PlainSnapshots plain(day, stream, tradesAfterHours(day));
    for (const Way& way : waysThrough(day)) {
        SCOPED_TRACE(std::string(way.name) + " of " + recording::streamName(stream));
        tessi::FollowedStatus status(day, stream);
        recording::DeliveryOptions options;
        options.history = way.history;
        options.pieceSize = way.pieceSize;
        tessi::deliver(terminal, day, options, [&](recording::DataLayer& data) { status.subscribe(data); });

        const std::string end = plain.statusText(clockOn(day, "23:59:59"));
        // A piece does not know by how much its first snapshot grew.
        if (way.pieceSize == 300)
            EXPECT_EQ(rowsText(status.model, plain), end.substr(0, end.find("last")));
        else
            EXPECT_EQ(statusText(status.model, plain), end);
        for (const char* clock : kMoments) {
            const std::string expected = plain.statusText(clockOn(day, clock));
            ASSERT_EQ(status.showAt(clockOn(day, clock)).has_value(), expected != "nothing\n");
            // In pieces, the tick of the close is not known for sure.
            if (way.pieceSize == 300)
                EXPECT_EQ(rowsText(status.model, plain), expected.substr(0, expected.find("last"))) << clock;
            else
                EXPECT_EQ(statusText(status.model, plain), expected) << clock;
        }
    }
}

void checkDistribution(standin::Terminal& terminal, const recording::RecordedDay& day)
{
    const PlainSnapshots plain(day, tessi::snapshotStream(day), tradesAfterHours(day));
    const std::string expected = pricesText(plain);
    for (const Way& way : waysThrough(day)) {
        SCOPED_TRACE(way.name);
        tessi::FollowedDistribution distribution(day);
        recording::DeliveryOptions options;
        options.history = way.history;
        options.pieceSize = way.pieceSize;
        tessi::deliver(terminal, day, options, [&](recording::DataLayer& data) { distribution.subscribe(data); });

        const TC::CModelTransDistribution& model = distribution.model();
        EXPECT_EQ(pricesText(model, plain), expected);
        __int64 sum = 0;
        int largest = 0;
        for (const TC::TransDistributionPrice& row : model.m_prices) {
            sum += row.totalVolume;
            largest = std::max(largest, row.totalVolume);
        }
        EXPECT_EQ(sum, plain.lastHands());
        EXPECT_EQ(model.m_totalVolume, plain.lastHands());
        EXPECT_EQ(model.m_maxVolume, largest);
        EXPECT_GT(model.m_prices.size(), 3);
    }
}

// Shares of trades by side: as the feed marks them, and by which of the two orders is the later one.
struct Sides {
    __int64 buy = 0;
    __int64 sell = 0;
    __int64 none = 0;
    void add(int side, __int64 shares) { (side == 1 ? buy : side == 2 ? sell : none) += shares; }
    double buyShare() const { return 100.0 * static_cast<double>(buy) / static_cast<double>(buy + sell); }
};

class RecordedStatistics : public ImportedDay {
protected:
    void SetUp() override
    {
        ImportedDay::SetUp();
        m_hasClosingAuction = tessi::hasClosingAuction(m_day);
    }

    std::vector<const quoter::TransactionData*> trades() const
    {
        std::vector<const quoter::TransactionData*> all;
        for (const recording::Event& event : m_day.events) {
            const auto* const trade = dynamic_cast<const quoter::TransactionData*>(event.record.get());
            if (trade && trade->transKind != quoter::kTransKindCancel)
                all.push_back(trade);
        }
        return all;
    }

    // 1 or 2; 0 in an auction, which has no active side.
    int laterSide(const quoter::TransactionData& trade) const
    {
        if (!tessi::isInSession(trade.timetag, m_day.instrument.market, m_hasClosingAuction))
            return 0;
        return trade.buySeq > trade.sellSeq ? 1 : 2;
    }

    bool m_hasClosingAuction = false;
};

TEST_P(RecordedStatistics, shouldShowTheSnapshotsLevelsAndChangesWhenTheDayIsReal)
{
    checkStatus(m_terminal, m_day, Stream::Snapshots);
    checkStatus(m_terminal, m_day, Stream::Quotes);
}

TEST_P(RecordedStatistics, shouldAddUpToTheDaysVolumeWhenTheDayIsReal)
{
    checkDistribution(m_terminal, m_day);
}

// The direction of a step of the volume is a guess from the price: what it says beside the trades' own sides.
TEST_P(RecordedStatistics, shouldAgreeWithTheTradesSidesMoreOftenThanNotWhenStepsAreGivenADirection)
{
    Sides marked;
    Sides later;
    __int64 differing = 0;
    for (const auto* trade : trades()) {
        marked.add(trade->tradeFlag, trade->volume);
        const int side = laterSide(*trade);
        later.add(side, trade->volume);
        differing += side != 0 && trade->tradeFlag != 0 && trade->tradeFlag != side ? trade->volume : 0;
    }

    const PlainSnapshots plain(m_day, Stream::Snapshots, false);
    Sides derived;
    Sides agreed; // steps with trades of an active side: buy stands for those that agree, sell for the others
    Sides agreedHands;
    const auto all = trades();
    std::size_t next = 0;
    __int64 passed = 0;
    for (const PlainSnapshots::Tick& tick : plain.ticks()) {
        derived.add(tick.isBuy ? 1 : 2, tick.hands);
        __int64 balance = 0;
        for (; next < all.size() && passed < tick.sharesAfter; ++next) {
            const int side = laterSide(*all[next]);
            balance += side == 0 ? 0 : side == 1 ? all[next]->volume : -all[next]->volume;
            passed += all[next]->volume;
        }
        const bool agrees = (balance > 0) == tick.isBuy;
        agreed.add(balance == 0 ? 0 : agrees ? 1 : 2, 1);
        agreedHands.add(balance == 0 ? 0 : agrees ? 1 : 2, tick.hands);
    }
    EXPECT_EQ(derived.buy + derived.sell, plain.lastHands());
    EXPECT_EQ(next, all.size()) << "each trade is in a step";
    EXPECT_GT(agreed.buyShare(), 50);
    EXPECT_EQ(differing, 0) << "the exchange's mark is the later order's side";

    std::cout << fmt::format(
        "[   SPLIT  ] {}: bought {:.2f}% by steps, {:.2f}% by the feed's marks ({} shares without), "
        "{:.2f}% by the later order ({} shares in auctions); marks and later order differ on {} "
        "shares; of {} steps {:.2f}% agree, with {:.2f}% of their hands; {} have no side\n",
        GetParam(), derived.buyShare(), marked.buyShare(), marked.none, later.buyShare(), later.none, differing,
        agreed.buy + agreed.sell, agreed.buyShare(), agreedHands.buyShare(), agreed.none);
}

INSTANTIATE_TEST_SUITE_P(Days, RecordedStatistics,
                         ::testing::Values("szse-20171229-300446", "szse-20170103-000001", "sse-20230201-600519"),
                         [](const auto& param) { return testName(param.param); });

class SimulatedStatistics : public ::testing::TestWithParam<const char*> {
protected:
    SimulatedStatistics()
    {
        auto options = exchange::SimulationOptions::of(GetParam());
        options.ordersPerDay = 2000;
        m_day = exchange::simulateDay(options);
        tessi::introduce(m_terminal, m_day);
    }

    standin::Terminal m_terminal;
    recording::RecordedDay m_day;
};

TEST_P(SimulatedStatistics, shouldShowTheSnapshotsLevelsAndChangesWhenTheDayIsSimulated)
{
    for (const Stream stream : {Stream::Snapshots, Stream::Quotes}) {
        if (std::count(m_day.streams.begin(), m_day.streams.end(), stream) > 0)
            checkStatus(m_terminal, m_day, stream);
    }
}

TEST_P(SimulatedStatistics, shouldAddUpToTheDaysVolumeWhenTheDayIsSimulated)
{
    checkDistribution(m_terminal, m_day);
}

INSTANTIATE_TEST_SUITE_P(Classes, SimulatedStatistics,
                         ::testing::Values("stock", "after-hours-a", "after-hours-b", "bond", "fund", "hk-stock",
                                           "index", "future", "option"),
                         [](const auto& param) { return testName(param.param); });

} // namespace
