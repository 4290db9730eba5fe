#include "tests/tessimodel/quoterthousand.h"

#include <cfloat>
#include <string>
#include <vector>

namespace {

using namespace tests;

// When a poll is true, what its flags tell, and the figures of the level-2 snapshot.
class QuoterThousandPollingTest : public QuoterThousandTest {
protected:
    int flags(bool source = byRecord) { return readBook(model, source).flags; }

    static TC::EntrustList rowsOf(const std::vector<double>& prices)
    {
        TC::EntrustList rows;
        for (const double price : prices)
            rows.push_back(boost::make_shared<TC::EntrustData>(TC::EntrustData{price, 1, 0, 1}));
        return rows;
    }

    std::string last()
    {
        const BookReading reading = readBook(model, byRecord);
        return fmt::format("{:.2f} {}h", reading.lastPrice, reading.lastVolume);
    }
};

// --- true or false --------------------------------------------------------------------------------------------

TEST_F(QuoterThousandPollingTest, shouldTouchNothingWhenNoRecordHasCome)
{
    feed.snapshots(live, {level2().last(10.01).volume(70).bid(10.00).ask(10.02)});
    model.m_updateFlags = 7;
    for (const bool source : {byRecord, byQuoter}) {
        BookReading reading;
        reading.flags = 77;
        reading.bids = {nullptr};
        reading.asks = {nullptr, nullptr};
        EXPECT_FALSE(reading.poll(model, source));
        EXPECT_EQ(reading.flags, 77);
        EXPECT_EQ(reading.bids.size(), 1u);
        EXPECT_EQ(reading.asks.size(), 2u);
        EXPECT_EQ(reading.lastPrice, -1);
        EXPECT_EQ(reading.lastVolume, -1);
        EXPECT_EQ(reading.minPrice, DBL_MAX);
        EXPECT_EQ(reading.maxAmount, 0);
    }
    EXPECT_EQ(model.m_updateFlags, 7) << "kept for the first poll that is true";
}

TEST_F(QuoterThousandPollingTest, shouldBeTrueAtEveryPollWhenARecordIsHeld)
{
    bidAt("09:30:00", 5);
    EXPECT_EQ(flags(), 4);
    for (const bool source : {byRecord, byQuoter, byRecord}) {
        const BookReading reading = readBook(model, source);
        EXPECT_TRUE(reading.updated);
        EXPECT_EQ(reading.flags, 0) << "nothing is added to what was raised";
    }
    EXPECT_EQ(bookText(model), "bid 10.00 5h x1 (0)\n");
    bidAt("09:30:01", 6);
    EXPECT_EQ(flags(byQuoter), 4);
}

TEST_F(QuoterThousandPollingTest, shouldGiveTheFlagsAsTheyWereRaisedWhenPolled)
{
    bidAt("09:30:00", 5);
    for (const int raised : {1, 2, 3, 4, 5, 7, 16, 0}) {
        model.m_updateFlags = raised;
        EXPECT_EQ(flags(), raised);
        EXPECT_EQ(model.m_updateFlags, 0);
    }
}

TEST_F(QuoterThousandPollingTest, shouldLeaveTheListsAndGiveFiguresWhenTheInstrumentIsGone)
{
    bidAt("09:30:00", 5);
    feed.snapshots(live, {level2().last(10.01).bid(10.00)});
    model.setStock("nobody knows this");
    for (const bool source : {byRecord, byQuoter}) {
        BookReading reading;
        reading.bids = {nullptr};
        EXPECT_TRUE(reading.poll(model, source));
        EXPECT_EQ(reading.bids.size(), 1u);
        EXPECT_EQ(reading.lastPrice, 10.01);
    }
}

// The trim goes by what the panel has in its lists, not by where that came from.
TEST_F(QuoterThousandPollingTest, shouldTrimTheListsAsTheyWereWhenTheInstrumentIsGone)
{
    feed.snapshots(live, {level2().bid(10.01).ask(10.03)});
    bidAt("09:30:00", 5);
    model.setStock("nobody knows this");
    for (const bool source : {byRecord, byQuoter}) {
        const BookReading before = {.bids = rowsOf({10.00, 10.03}), .asks = rowsOf({10.02, 10.04})};
        BookReading reading = before;
        EXPECT_TRUE(reading.poll(model, source));
        EXPECT_EQ(reading.bids, TC::EntrustList{before.bids[0]});
        EXPECT_EQ(reading.asks, TC::EntrustList{before.asks[1]});
        EXPECT_EQ(reading.flags & TC::kUpdateLevels, TC::kUpdateLevels);
        EXPECT_EQ(reading.minPrice, DBL_MAX) << "rows that are not read widen nothing";
        EXPECT_EQ(reading.maxAmount, 0);

        const TC::EntrustList uncrossed = rowsOf({9.00, 10.02});
        reading.bids = uncrossed;
        EXPECT_TRUE(reading.poll(model, source));
        EXPECT_EQ(reading.bids, uncrossed) << "beyond the limit, but below the asks";
        EXPECT_EQ(reading.flags, 0);
    }
}

// --- flags of the trim ----------------------------------------------------------------------------------------

TEST_F(QuoterThousandPollingTest, shouldAddTheLevelsFlagWhenRowsCross)
{
    feed.snapshots(live, {level2().bid(10.01).ask(10.03)});
    feed.thousand(live, {thousand().bids({{10.03}, {10.00}}).asks({{10.02}, {10.04}})});
    EXPECT_EQ(flags(), 4 | 2);
    EXPECT_EQ(flags(), 2) << "at every poll, since the rows are made anew";
    EXPECT_EQ(model.m_updateFlags, 0);
}

TEST_F(QuoterThousandPollingTest, shouldAddTheLevelsFlagWhenRowsCrossButNoneGoes)
{
    feed.snapshots(live, {level2().bid(10.05).ask(10.01)});
    feed.thousand(live, {thousand().bid(10.03, 5).ask(10.03, 6)});
    EXPECT_EQ(flags(), 4 | 2);
    EXPECT_EQ(bookText(model), "bid 10.03 5h x1 (0)\nask 10.03 6h x1 (0)\n");
}

TEST_F(QuoterThousandPollingTest, shouldAddNoFlagWhenRowsCrossInAnAuction)
{
    feed.snapshots(live, {level2("09:25:00").bid(10.01).ask(10.01)});
    feed.thousand(live, {thousand().bid(10.03).ask(10.02)});
    EXPECT_EQ(flags(), 4);
    EXPECT_EQ(flags(), 0);
}

// --- last figures ---------------------------------------------------------------------------------------------

TEST_F(QuoterThousandPollingTest, shouldGiveNoPriceWhenNoSnapshotHasCome)
{
    bidAt("09:30:00", 5);
    const BookReading reading = readBook(model, byRecord);
    EXPECT_EQ(reading.lastPrice, DBL_MAX);
    EXPECT_EQ(reading.lastVolume, 0);
}

TEST_F(QuoterThousandPollingTest, shouldAlwaysGiveTheSnapshotsFiguresWhenPolled)
{
    bidAt("09:40:00", 5);
    model.m_tickLastPrice = 77;
    model.m_tickLastVolume = 77;
    feed.snapshots(live, {level2("09:30:00").last(10.01).volume(70).bid(10.00)});
    EXPECT_EQ(last(), "10.01 0h");
    feed.snapshots(live, {level2("09:30:03").last(10.02).volume(90).bid(10.00)});
    EXPECT_EQ(last(), "10.02 20h") << "also when records are newer";
    model.m_book.m_lastTimetag = timeOf("09:50:00");
    EXPECT_EQ(last(), "10.02 20h") << "there is no choice between sources";
}

TEST_F(QuoterThousandPollingTest, shouldTakePriceAndDayVolumeInTheNewLoanFormWhenSet)
{
    bidAt("09:30:00", 5);
    feed.snapshots(live, {level2("09:30:00").last(10.01).alternativeLast(20.01).volume(70).bid(10.00)});
    model.setNewLoan(true);
    EXPECT_EQ(last(), "10.01 0h") << "from the next snapshot on";
    feed.snapshots(live, {level2("09:30:03").last(10.02).alternativeLast(20.02).volume(70).bid(10.00)});
    EXPECT_EQ(last(), "20.02 0h");
    model.setNewLoan(false);
    feed.snapshots(live, {level2("09:30:06").last(10.03).alternativeLast(20.03).volume(70).bid(10.00)});
    EXPECT_EQ(last(), "10.03 0h");
}

// --- level-2 snapshots ----------------------------------------------------------------------------------------

TEST_F(QuoterThousandPollingTest, shouldTellOfNoSnapshotWhenOneComes)
{
    bidAt("09:30:00", 5);
    EXPECT_EQ(flags(), 4);
    feed.snapshots(live, {level2("09:30:03").last(10.01).bid(10.00)});
    feed.snapshots(history, {level2("09:30:06").last(10.02).bid(10.00)});
    EXPECT_EQ(flags(), 0);
    EXPECT_EQ(last(), "10.02 0h");

    QuoterThousand quiet(true);
    quiet.setStock(keyOf("SZ", "000001"));
    BookFeed(terminal, quiet).snapshots(live, {level2("09:30:03").bid(10.00)});
    EXPECT_EQ(quiet.m_updateFlags, 0);
    EXPECT_EQ(quiet.m_quoterTimetag, timeOf("09:30:03"));
}

} // namespace
