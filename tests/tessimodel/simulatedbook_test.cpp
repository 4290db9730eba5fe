// Whole simulated days: the book from ticks against what the exchange itself has.

#include "exchange/simulator.h"
#include "Formula/stockmanager.h"
#include "indexui/tessimodel/cmodeldepththousand.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"
#include "recording/datalayer.h"
#include "recording/recordedday.h"
#include "recording/terminalview.h"
#include "standin/terminal.h"
#include "tests/exchange/plainreplay.h"
#include "tests/support/instruments.h"
#include "tests/tessimodel/bookreading.h"
#include "tests/tessimodel/simulation.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using recording::Event;
using recording::Stream;

// "1001=300 1002=500 ", by price in ticks.
std::string text(const std::map<int, __int64>& shares)
{
    std::string line;
    for (const auto& [key, volume] : shares)
        line += std::to_string(key) + "=" + std::to_string(volume) + " ";
    return line;
}

// What the rows of a side stand for, in shares; a row without a level of its price, or with other hands, is marked.
std::string rowsText(const TC::EntrustRows& rows, const TC::ThousandBook::Levels& levels, int unit)
{
    std::string line;
    for (const auto& [key, row] : rows) {
        const auto level = levels.find(key);
        if (level == levels.end()) {
            line += std::to_string(key) + "=no level ";
            continue;
        }
        line += std::to_string(key) + "=" + std::to_string(level->second->m_volume) + " ";
        if (row->volume != TC::detail::handsFloor(level->second->m_volume, unit))
            line += "(shown as " + std::to_string(row->volume) + " hands) ";
    }
    return line;
}

class SimulatedBook : public ::testing::TestWithParam<int> {
protected:
    void SetUp() override
    {
        m_day = exchange::simulateDay(tests::simulationOf(GetParam()));
        m_terminal.strands.runByHand();
        m_stock = m_terminal.instruments.add(m_day.instrument);
    }

    standin::Terminal m_terminal;
    recording::RecordedDay m_day;
    std::shared_ptr<ztservice::CInstrumentDetail> m_stock;
};

// An order shows from its arrival on, with all that it has not traded: also while it is still trading, across the
// other side. So the two books are the same after each tick, and not only once an arrival has settled.
TEST_P(SimulatedBook, shouldShowTheExchangesLimitOrdersWhenEachTickIsApplied)
{
    TC::ThousandBook book;
    book.m_stock = m_stock;
    book.m_priceTick = 0.01;
    book.m_volumeUnit = 100;
    PlainReplay exchangeBook(m_day);
    for (std::size_t i = 0; i < m_day.events.size(); ++i) {
        const Event& event = m_day.events[i];
        int flags = 0;
        if (const auto order = std::dynamic_pointer_cast<quoter::OrderData>(event.record)) {
            exchangeBook.apply(*order);
            book.appendOrder(m_stock, order, flags, true);
        } else if (const auto trade = std::dynamic_pointer_cast<quoter::TransactionData>(event.record)) {
            exchangeBook.apply(*trade);
            book.appendTransaction(m_stock, trade, flags, true);
        } else {
            continue;
        }
        ASSERT_EQ(rowsText(book.m_bidRows, book.m_bidLevels, 100), text(exchangeBook.limitShares(true)))
            << "bids after event " << i;
        ASSERT_EQ(rowsText(book.m_askRows, book.m_askLevels, 100), text(exchangeBook.limitShares(false)))
            << "asks after event " << i;
    }
    EXPECT_TRUE(exchangeBook.faults.empty());
    EXPECT_EQ(book.parkedTrades(), 0u);
}

// "1001=3 1000=5 ": price in ticks and hands from the best level on; at most as many rows as the snapshot has levels,
// but at least one, since a side that the snapshot shows empty must be empty.
template <class Iterator>
std::string bestText(Iterator from, Iterator to, std::size_t levels)
{
    std::string line;
    for (std::size_t i = 0; from != to && i < std::max<std::size_t>(levels, 1); ++from, ++i)
        line +=
            std::to_string(TC::detail::priceKey((*from)->price, 0.01)) + "=" + std::to_string((*from)->volume) + " ";
    return line;
}

struct Side {
    std::string text;
    std::size_t levels = 0;
};

Side snapshotSide(const double (&prices)[10], const __int64 (&hands)[10])
{
    Side side;
    for (std::size_t i = 0; i < std::size(prices); ++i) {
        if (prices[i] > 0) {
            side.text += std::to_string(TC::detail::priceKey(prices[i], 0.01)) + "=" + std::to_string(hands[i]) + " ";
            ++side.levels;
        }
    }
    return side;
}

// A model that gets a live day from which ticks are missing.
class LossyFeed {
public:
    LossyFeed(standin::Terminal& terminal, const recording::RecordedDay& day, unsigned lostPerMille)
        : m_terminal(terminal)
        , m_day(day)
        , m_view(day, 100)
        , m_lostPerMille(lostPerMille)
        , m_random(static_cast<unsigned>(day.events.size()))
    {
        m_request.market = QString::fromStdString(day.instrument.market);
        m_request.stockCode = QString::fromStdString(day.instrument.code);
        m_model.setStock(tests::keyOf(day.instrument.market, day.instrument.code));
        push(Stream::Orders, 0, {});
        push(Stream::Trades, 0, {});
    }

    void run()
    {
        for (std::size_t i = 0; i < m_day.events.size(); ++i) {
            const Stream stream = m_day.events[i].stream;
            const bool isTick = stream == Stream::Orders || stream == Stream::Trades;
            if (isTick && m_random() % 1000 < m_lostPerMille) {
                ++lost;
                continue;
            }
            if (isTick)
                push(stream, 1, {m_view.event(i).record});
            if (stream == Stream::Snapshots)
                checkSnapshot(i);
        }
    }

    int lost = 0;
    int read = 0;     // reads behind a snapshot that is newer than the ticks
    int putRight = 0; // of these, how many the ticks alone would have shown otherwise

private:
    void push(Stream stream, int batchKind, const recording::RecordBatch& records)
    {
        const auto batch = recording::wrapBatch(m_request, records);
        if (stream == Stream::Orders)
            m_model.entrustCallback(0, batchKind, batch);
        else if (stream == Stream::Trades)
            m_model.transactionCallback(0, batchKind, batch);
        else
            m_model.quoterCallback(0, batchKind, batch);
        m_terminal.strands.drain("modulegroup");
    }

    void checkSnapshot(std::size_t arrival)
    {
        const auto& record = m_view.event(arrival).record;
        const auto& snapshot = dynamic_cast<const quoter::QuoterDepthData&>(*record);
        const Side bids = snapshotSide(snapshot.bidPrice, snapshot.bidVolume);
        const Side asks = snapshotSide(snapshot.askPrice, snapshot.askVolume);
        const bool wasRight = ticksText(bids.levels, asks.levels) == bids.text + "/ " + asks.text;
        push(Stream::Snapshots, 1, {record});
        if (m_model.m_quoterTimetag != snapshot.timetag || m_model.m_book.m_lastTimetag >= snapshot.timetag)
            return;
        ++read;
        putRight += wasRight ? 0 : 1;

        const tests::BookReading reading = tests::readBook(m_model);
        ASSERT_TRUE(reading.updated);
        ASSERT_EQ(bestText(reading.bids.rbegin(), reading.bids.rend(), bids.levels), bids.text)
            << "bids at event " << arrival;
        ASSERT_EQ(bestText(reading.asks.begin(), reading.asks.end(), asks.levels), asks.text)
            << "asks at event " << arrival;
    }

    std::string ticksText(std::size_t bidLevels, std::size_t askLevels)
    {
        TC::EntrustList bids;
        TC::EntrustList asks;
        for (const auto& [key, row] : m_model.m_book.m_bidRows)
            bids.push_back(row);
        for (const auto& [key, row] : m_model.m_book.m_askRows)
            asks.push_back(row);
        return bestText(bids.rbegin(), bids.rend(), bidLevels) + "/ " + bestText(asks.begin(), asks.end(), askLevels);
    }

    standin::Terminal& m_terminal;
    const recording::RecordedDay& m_day;
    recording::TerminalView m_view;
    unsigned m_lostPerMille;
    std::mt19937 m_random;
    TC::CFormulaParam m_request;
    TC::CModelDepthThousand m_model;
};

TEST_P(SimulatedBook, shouldShowEverySnapshotsLevelsWhenTicksAreLost)
{
    LossyFeed feed(m_terminal, m_day, 10);
    feed.run();
    EXPECT_GT(feed.lost, 10);
    EXPECT_GT(feed.read, 500);
    EXPECT_GT(feed.putRight, 50) << "the loss must be seen, or nothing was put right";
}

INSTANTIATE_TEST_SUITE_P(Seeds, SimulatedBook, ::testing::Range(1, 11));

} // namespace
