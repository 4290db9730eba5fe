#include "tests/tessimodel/bookmodels.h"
#include "tests/tessimodel/encounter.h"

#include <boost/thread/locks.hpp>

#include <atomic>
#include <chrono>
#include <thread>
#include <tuple>

namespace {

using namespace tests;

// A snapshot that comes while a panel reads.
template <class Model>
class BookModelSnapshotConcurrent : public BookModelTest<Model> {
protected:
    // Rows that cross, newer than any snapshot here.
    void giveCrossed()
    {
        if constexpr (std::is_same_v<Model, Thousand>)
            this->feed.begin({order(1).buy(10.03).time("09:31:00"), order(2).sell(10.02).time("09:31:00")});
        else
            this->feed.thousand(live, {thousand("09:31:00").bid(10.03).ask(10.02)});
    }

    // The rows of a poll that something is new for.
    std::string rows()
    {
        this->model.m_updateFlags |= TC::kUpdateInPlace;
        std::string text;
        const BookReading reading = readAll();
        for (const auto* side : {&reading.bids, &reading.asks}) {
            for (const auto& row : *side)
                text += fmt::format("{:.2f} ", row->price);
        }
        return text;
    }

    auto readAll()
    {
        if constexpr (std::is_same_v<Model, Thousand>)
            return readBook(this->model);
        else
            return readBook(this->model, byRecord);
    }

    // All words that a snapshot sets, as whoever holds the lock finds them.
    auto words() const
    {
        const Model& m = this->model;
        return std::tuple(m.m_continuous.load(), m.m_quoterTimetag.load(), m.m_quoterLastPrice, m.m_bidCeiling);
    }

    // Snapshots by number, which is the best bid and the last price, too. Every other one is of an auction.
    void deliver(int number)
    {
        const std::shared_ptr<quoter::QuoterDepthData> record = level2().last(number).bid(number);
        record->timetag = number;
        record->askPrice[0] = number % 2 == 0 ? number : 0;
        this->model.doQuoter(0, live, batchFor("SZ", "000001", {record}));
    }
};

TYPED_TEST_SUITE(BookModelSnapshotConcurrent, BookModels, BookModelNames);

TYPED_TEST(BookModelSnapshotConcurrent, shouldShowNothingOfASnapshotUntilItHasTheLockWhenAPanelReads)
{
    this->giveCrossed();
    boost::unique_lock<boost::recursive_mutex> reading(this->model.m_mutex);
    auto taken = start([&] {
        this->model.doQuoter(0, live, batchFor("SZ", "000001", {level2("09:30:30").last(10.01).bid(10.01).ask(10.03)}));
    });
    EXPECT_EQ(taken.wait_for(kShort), std::future_status::timeout);
    EXPECT_FALSE(this->model.m_continuous);
    EXPECT_EQ(this->model.m_quoterTimetag, 0);
    EXPECT_EQ(this->rows(), "10.03 10.02 ") << "no verdict without the limits that belong to it";
    reading.unlock();
    taken.wait();
    EXPECT_TRUE(this->model.m_continuous);
    EXPECT_EQ(this->rows(), "") << "both rows are beyond the limits";
}

// It is not enough that a snapshot begins when nobody reads: a panel may come in its middle.
TYPED_TEST(BookModelSnapshotConcurrent, shouldChangeAllAtOnceWhenPanelsReadMeanwhile)
{
    std::atomic<bool> stop{false};
    std::thread strand([&] {
        for (int number = 1; !stop; ++number)
            this->deliver(number);
    });
    int seen = 0;
    const auto end = std::chrono::steady_clock::now() + kShort * 6;
    while (std::chrono::steady_clock::now() < end && !this->HasFailure()) {
        const boost::unique_lock<boost::recursive_mutex> reading(this->model.m_mutex);
        const auto before = this->words();
        std::this_thread::yield();
        EXPECT_EQ(this->words(), before) << "nothing changes while the lock is held";
        const auto& [isContinuous, timetag, lastPrice, bidCeiling] = before;
        if (timetag == 0)
            continue;
        ++seen;
        EXPECT_EQ(lastPrice, static_cast<double>(timetag));
        EXPECT_EQ(bidCeiling, static_cast<double>(timetag));
    }
    stop = true;
    strand.join();
    EXPECT_GT(seen, 0);
}

} // namespace
