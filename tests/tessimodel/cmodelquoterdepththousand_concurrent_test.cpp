#include "tests/tessimodel/encounter.h"
#include "tests/tessimodel/modelstress.h"
#include "tests/tessimodel/quoterthousand.h"

#include <boost/thread/locks.hpp>

#include <cmath>
#include <mutex>

namespace {

using namespace tests;

// Records and snapshots by number: all volumes of one are its number, so that a reader sees what belongs together.
class NumberedDay {
public:
    ThousandRecord record(int number) const
    {
        return ThousandRecord(m_start + number * 7LL)
            .bids(levels(9.99, -0.01, 1 + number % 7, number))
            .asks(levels(10.00, 0.01, 1 + number % 5, number));
    }

    // The day volume is the number, too, so that each newer snapshot is the base of the next step.
    std::shared_ptr<quoter::QuoterDepthData> snapshot(int number) const
    {
        const std::shared_ptr<quoter::QuoterDepthData> record = level2().last(number).alternativeLast(number);
        record->timetag = m_start + number * 7LL;
        record->volume = number;
        for (int i = 0; i < 10; ++i) {
            record->bidPrice[i] = 9.99 - 0.01 * i;
            record->askPrice[i] = 10.00 + 0.01 * i;
            record->bidVolume[i] = record->askVolume[i] = number;
        }
        return record;
    }

private:
    static std::vector<ThousandLevel> levels(double best, double step, int count, int number)
    {
        std::vector<ThousandLevel> levels;
        for (int i = 0; i < count; ++i)
            levels.push_back({best + step * i, number, number});
        return levels;
    }

    __int64 m_start = timeOf("09:30:00");
};

// The number that all rows of a read have, 0 without rows.
int numberOf(const BookReading& reading)
{
    int number = reading.bids.empty() ? 0 : reading.bids.front()->volume;
    for (const auto* rows : {&reading.bids, &reading.asks}) {
        for (const auto& row : *rows)
            EXPECT_EQ(row->volume, number);
    }
    return number;
}

class QuoterThousandConcurrent : public ModelStress<QuoterThousand> {
protected:
    // The next `count` records and snapshots. The strand gets them in the order of their numbers, whoever delivers.
    void deliver(int kind, int count)
    {
        const std::lock_guard<std::mutex> inOrder(m_delivering);
        Records records;
        Records snapshots;
        for (int i = 0; i < count; ++i) {
            records.push_back(day.record(++number));
            snapshots.push_back(day.snapshot(number));
        }
        model->ThousandDataCallback(0, kind, batchFor("SZ", "000001", records));
        model->quoterCallback(0, kind, batchFor("SZ", "000001", snapshots));
    }

    void deliverLive()
    {
        while (!stop) {
            for (int i = 0; i < 100; ++i)
                deliver(live, 1);
            terminal.strands.waitIdle();
        }
    }

    void deliverHistories(int round)
    {
        model->setNewLoan(round % 3 == 0);
        deliver(round % 4 == 1 ? moreHistory : history, 20);
        if (round % 2 == 0)
            terminal.strands.waitIdle();
    }

    void pollRecords()
    {
        while (!stop && !HasFailure()) {
            const BookReading reading = readBook(*model, byRecord);
            if (!reading.updated)
                continue;
            ++updates;
            if (const int shown = numberOf(reading); shown != 0) {
                EXPECT_EQ(reading.bids.size(), 1u + static_cast<unsigned>(shown % 7));
                EXPECT_EQ(reading.asks.size(), 1u + static_cast<unsigned>(shown % 5));
                EXPECT_EQ(reading.bids.back()->number, shown);
                EXPECT_EQ(reading.maxAmount, shown * reading.maxPrice);
            }
        }
    }

    // Rows and figures are of one snapshot, or of none.
    void pollSnapshots()
    {
        while (!stop && !HasFailure()) {
            const BookReading reading = readBook(*model, byQuoter);
            if (!reading.updated)
                continue;
            if (const int shown = numberOf(reading); shown != 0) {
                EXPECT_EQ(reading.bids.size(), 10u);
                EXPECT_EQ(reading.asks.size(), 10u);
                EXPECT_EQ(reading.lastPrice, shown);
                EXPECT_LT(reading.lastVolume, shown);
            }
        }
    }

    void askForTheRest()
    {
        while (!stop && !HasFailure()) {
            EXPECT_EQ(queueText(model->getQueue(true, 10.00, {300, 200})), "0:300 1:200");
            EXPECT_FALSE(model->compareNewerQuote());
            model->getStockKey();
            model->isContinousStatus(day.snapshot(1));
            EXPECT_EQ(model->m_book.getLevel(true, 9.99), nullptr);
            readCopyOfChanges();
        }
    }

    // A copy is the panel's own, though it shares its memory with the model's until one of them changes.
    void readCopyOfChanges() const
    {
        boost::unique_lock<boost::recursive_mutex> lock(model->m_mutex);
        const auto copy = model->m_priceDeltas;
        lock.unlock();
        for (auto entry = copy.begin(); entry != copy.end(); ++entry)
            EXPECT_LT(std::abs(entry.key() - 10.00), 0.2);
    }

    NumberedDay day;
    int number = 0; // of the latest

private:
    std::mutex m_delivering;
};

TEST_F(QuoterThousandConcurrent, shouldStayWholeWhenEverythingRunsAtOnce)
{
    meetUntilTheTimeIsOver({[this] { deliverLive(); }, [this] { pollRecords(); }, [this] { pollRecords(); },
                            [this] { pollSnapshots(); }, [this] { askForTheRest(); }},
                           [this](int round) {
                               deliverHistories(round);
                               disturb(round);
                           });
    EXPECT_GT(updates, 0);

    deliver(live, 1);
    terminal.strands.waitIdle();
    const BookReading reading = readBook(*model, byRecord);
    EXPECT_EQ(reading.flags & TC::kUpdateInPlace, TC::kUpdateInPlace);
    EXPECT_EQ(numberOf(reading), number);
    EXPECT_EQ(reading.lastPrice, number);
    EXPECT_EQ(numberOf(readBook(*model, byQuoter)), number);
}

// --- one step against another -----------------------------------------------------------------------------------

class QuoterThousandPolling : public QuoterThousandTest {
protected:
    using ReadSide = void (QuoterThousand::*)(TC::EntrustList&, double&, double&, double&);

    Records recordOf(int number) const { return {day.record(number)}; }

    std::function<void()> reading(ReadSide side)
    {
        return [this, side] {
            BookReading into;
            (model.*side)(into.bids, into.minPrice, into.maxPrice, into.maxAmount);
        };
    }

    NumberedDay day;
};

TEST_F(QuoterThousandPolling, shouldTellOfEveryRecordWhenPanelPollsMeanwhile)
{
    const auto work = [&](int round) { model.doThousandData(0, live, batchFor("SZ", "000001", recordOf(round))); };
    const auto poll = [&](int round) {
        const BookReading reading = readBook(model, byRecord);
        return reading.updated && (reading.flags & TC::kUpdateInPlace) != 0 && numberOf(reading) == round;
    };
    EXPECT_EQ(missedRounds(200, work, poll), 0) << "whoever takes the flag finds the record";
}

TEST_F(QuoterThousandPolling, shouldTellOfAClearOnceWhenPanelPollsMeanwhile)
{
    model.doThousandData(0, live, batchFor("SZ", "000001", recordOf(1)));
    const auto work = [&](int) {
        model.clear();
        model.doThousandData(0, live, batchFor("SZ", "000001", recordOf(1)));
    };
    int told = 0;
    const auto poll = [&](int) {
        const BookReading reading = readBook(model, byRecord);
        const bool isTold = reading.updated && (reading.flags & TC::kUpdateRebuilt) != 0;
        told += isTold ? 1 : 0;
        return isTold;
    };
    readBook(model, byRecord);
    constexpr int kClears = 100;
    EXPECT_EQ(missedRounds(kClears, work, poll), 0);
    EXPECT_EQ(told, kClears);
}

TEST_F(QuoterThousandPolling, shouldWaitForTheLockWhenReadOrChanged)
{
    model.doThousandData(0, live, batchFor("SZ", "000001", recordOf(1)));
    model.doQuoter(0, live, batchFor("SZ", "000001", {day.snapshot(1)}));
    const std::vector<std::function<void()>> operations{
        [&] { readBook(model, byRecord); },
        [&] { readBook(model, byQuoter); },
        reading(&QuoterThousand::getBids),
        reading(&QuoterThousand::getAsks),
        reading(&QuoterThousand::getBidsByQuoter),
        reading(&QuoterThousand::getAsksByQuoter),
        [&] { model.getStockKey(); },
        [&] { model.compareNewerQuote(); },
        [&] { model.setStock(keyOf("SZ", "000001")); },
        [&] { model.initStockParams(); },
        [&] { model.doThousandData(0, live, batchFor("SZ", "000001", recordOf(2))); },
        [&] { model.doQuoter(0, live, batchFor("SZ", "000001", {day.snapshot(2)})); },
        [&] { model.clear(); },
    };
    expectToWait(model.m_mutex, operations);
}

TEST_F(QuoterThousandPolling, shouldTakeAPushAtOnceWhenAPanelReads)
{
    boost::unique_lock<boost::recursive_mutex> reading(model.m_mutex);
    auto pushed = start([&] {
        model.ThousandDataCallback(0, live, batchFor("SZ", "000001", recordOf(1)));
        model.quoterCallback(0, live, batchFor("SZ", "000001", {day.snapshot(1)}));
    });
    EXPECT_EQ(pushed.wait_for(kLong), std::future_status::ready);
    reading.unlock();
}

} // namespace
