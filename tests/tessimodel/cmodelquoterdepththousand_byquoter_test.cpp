#include "tests/tessimodel/quoterthousand.h"

#include <cfloat>
#include <cmath>

namespace {

using namespace tests;

// The ten levels of the level-2 snapshot in place of the record's own.
class QuoterThousandByQuoterTest : public QuoterThousandTest {
protected:
    // A record without levels, so that there is something to read.
    void givenRecord() { feed.thousand(live, {thousand()}); }

    static Snapshot<quoter::QuoterDepthData> tenLevels()
    {
        return level2("09:30:03")
            .bids({{10.00, 11},
                   {9.99, 12},
                   {9.98, 13},
                   {9.97, 14},
                   {9.96, 15},
                   {9.95, 16},
                   {9.94, 17},
                   {9.93, 18},
                   {9.92, 19},
                   {9.91, 20}})
            .asks({{10.01, 21},
                   {10.02, 22},
                   {10.03, 23},
                   {10.04, 24},
                   {10.05, 25},
                   {10.06, 26},
                   {10.07, 27},
                   {10.08, 28},
                   {10.09, 29},
                   {10.10, 30}});
    }

    // The rows but for the levels without a price, of which it tells the number: "8 unset\nbid 9.99 ...".
    std::string rowsSet()
    {
        BookReading reading = readBook(model, byQuoter);
        const auto isUnset = [](const auto& row) {
            return row->price == 0 && row->volume == 0 && row->delta == 0 && row->number == -1;
        };
        const auto unset = std::erase_if(reading.bids, isUnset) + std::erase_if(reading.asks, isUnset);
        return fmt::format("{} unset\n{}", unset, bookText(reading.bids, reading.asks));
    }
};

TEST_F(QuoterThousandByQuoterTest, shouldShowTheTenLevelsByAscendingPriceWhenAskedFor)
{
    feed.thousand(live, {thousand().bids({{10.00, 5}, {9.00, 6}})});
    feed.snapshots(live, {tenLevels()});
    EXPECT_EQ(bookText(model, byQuoter),
              "bid 9.91 20h x? (0)\nbid 9.92 19h x? (0)\nbid 9.93 18h x? (0)\nbid 9.94 17h x? (0)\n"
              "bid 9.95 16h x? (0)\nbid 9.96 15h x? (0)\nbid 9.97 14h x? (0)\nbid 9.98 13h x? (0)\n"
              "bid 9.99 12h x? (0)\nbid 10.00 11h x? (0)\nask 10.01 21h x? (0)\nask 10.02 22h x? (0)\n"
              "ask 10.03 23h x? (0)\nask 10.04 24h x? (0)\nask 10.05 25h x? (0)\nask 10.06 26h x? (0)\n"
              "ask 10.07 27h x? (0)\nask 10.08 28h x? (0)\nask 10.09 29h x? (0)\nask 10.10 30h x? (0)\n");
    EXPECT_EQ(bookText(model, byRecord), "bid 9.00 6h x1 (0)\nbid 10.00 5h x1 (0)\n");
}

TEST_F(QuoterThousandByQuoterTest, shouldShowLevelsWithoutAPriceAsTheyStandWhenTheSnapshotHasSome)
{
    givenRecord();
    feed.snapshots(live, {level2().bids({{10.00, 5}, {0, 7}, {9.98, 6}}).asks({{10.02, 8}, {DBL_MAX, 9}})});
    BookReading reading = readBook(model, byQuoter);
    ASSERT_EQ(reading.bids.size(), 10u);
    ASSERT_EQ(reading.asks.size(), 10u);
    EXPECT_EQ(rowText(*reading.bids[6]), "0.00 0h x? (0)");
    EXPECT_EQ(rowText(*reading.bids[7]), "9.98 6h x? (0)");
    EXPECT_EQ(rowText(*reading.bids[8]), "0.00 7h x? (0)");
    EXPECT_EQ(rowText(*reading.bids[9]), "10.00 5h x? (0)");
    EXPECT_EQ(rowText(*reading.asks[0]), "10.02 8h x? (0)");
    EXPECT_EQ(reading.asks[1]->price, DBL_MAX);
    EXPECT_EQ(rowText(*reading.asks[2]), "0.00 0h x? (0)");
    EXPECT_EQ(reading.minPrice, 0) << "they count for the extremes, too";
    EXPECT_EQ(reading.maxPrice, DBL_MAX);
    EXPECT_TRUE(std::isinf(reading.maxAmount));
}

TEST_F(QuoterThousandByQuoterTest, shouldFindTheExtremesWhenAllLevelsAreSet)
{
    givenRecord();
    feed.snapshots(live, {tenLevels()});
    const BookReading reading = readBook(model, byQuoter);
    EXPECT_EQ(reading.minPrice, 9.91);
    EXPECT_EQ(reading.maxPrice, 10.10);
    EXPECT_EQ(reading.maxAmount, 30 * 10.10);
}

TEST_F(QuoterThousandByQuoterTest, shouldCutVolumesTo32BitsWhenTheyAreHuge)
{
    givenRecord();
    feed.snapshots(live, {level2().bid(10.00, (1LL << 32) + 5).ask(10.02, (1LL << 33) - 1)});
    EXPECT_EQ(rowsSet(), "18 unset\nbid 10.00 5h x? (0)\nask 10.02 -1h x? (0)\n");
}

// The change is of the record, also where the snapshot has another volume.
TEST_F(QuoterThousandByQuoterTest, shouldShowTheRecordsChangesWhenPricesAreTheSame)
{
    feed.snapshots(live, {level2().bids({{10.00, 5}, {9.99, 6}, {9.98, 7}}).asks({{10.02, 8}, {10.03, 9}})});
    feed.thousand(live, {thousand("09:30:00").bids({{10.00, 100}, {9.98, 4}}).ask(10.02, 30)});
    feed.thousand(live, {thousand("09:30:01").bids({{10.00, 150}, {9.98, 4}}).ask(10.02, 10)});
    EXPECT_EQ(rowsSet(), "15 unset\nbid 9.98 7h x? (0)\nbid 9.99 6h x? (0)\nbid 10.00 5h x? (-50)\n"
                         "ask 10.02 8h x? (+20)\nask 10.03 9h x? (0)\n");
    feed.thousand(live, {thousand("09:30:03.999")});
    EXPECT_EQ(rowsSet(), "15 unset\nbid 9.98 7h x? (0)\nbid 9.99 6h x? (0)\nbid 10.00 5h x? (-50)\n"
                         "ask 10.02 8h x? (+20)\nask 10.03 9h x? (0)\n");
    feed.thousand(live, {thousand("09:30:04")});
    EXPECT_EQ(rowsSet(), "15 unset\nbid 9.98 7h x? (0)\nbid 9.99 6h x? (0)\nbid 10.00 5h x? (0)\n"
                         "ask 10.02 8h x? (0)\nask 10.03 9h x? (0)\n");
}

// The levels are of the snapshot that is the base of the next volume step, which a standing day volume does not move.
TEST_F(QuoterThousandByQuoterTest, shouldKeepTheLevelsWhenTheDayVolumeStands)
{
    givenRecord();
    feed.snapshots(live, {level2("09:30:00").volume(70).bid(10.00, 5).ask(10.05)});
    feed.snapshots(live, {level2("09:30:03").volume(70).bid(10.01, 6).ask(10.05)});
    EXPECT_EQ(rowsSet(), "18 unset\nbid 10.00 5h x? (0)\nask 10.05 1h x? (0)\n");
    EXPECT_EQ(model.m_bidCeiling, 10.01);
    feed.snapshots(live, {level2("09:30:06").volume(71).bid(10.01, 6).ask(10.05)});
    EXPECT_EQ(rowsSet(), "18 unset\nbid 10.01 6h x? (0)\nask 10.05 1h x? (0)\n");
    feed.snapshots(history, {level2("09:30:09").volume(71).bid(10.02, 7).ask(10.05)});
    EXPECT_EQ(rowsSet(), "18 unset\nbid 10.02 7h x? (0)\nask 10.05 1h x? (0)\n") << "a history always moves it";
}

TEST_F(QuoterThousandByQuoterTest, shouldHaveNoRowsWhenThereIsNoSnapshot)
{
    feed.thousand(live, {thousand().bid(10.00).ask(10.02)});
    BookReading reading;
    reading.bids = {nullptr};
    reading.asks = {nullptr, nullptr};
    EXPECT_TRUE(reading.poll(model, byQuoter));
    EXPECT_TRUE(reading.bids.empty() && reading.asks.empty());
    EXPECT_EQ(reading.minPrice, DBL_MAX);
    EXPECT_EQ(reading.flags, 4);
}

// --- the trim -------------------------------------------------------------------------------------------------

TEST_F(QuoterThousandByQuoterTest, shouldTrimToTheNewestSnapshotWhenTheLevelsCross)
{
    givenRecord();
    feed.snapshots(live, {level2("09:30:00").volume(70).bids({{10.03, 5}, {10.00, 6}}).asks({{10.02, 7}, {10.05, 8}})});
    feed.snapshots(live, {level2("09:30:03").volume(70).bid(10.01).ask(10.04)});
    const BookReading reading = readBook(model, byQuoter);
    EXPECT_EQ(rowText(*reading.bids.back()), "10.00 6h x? (0)");
    EXPECT_EQ(reading.bids.size(), 9u);
    EXPECT_EQ(rowText(*reading.asks.front()), "10.05 8h x? (0)");
    EXPECT_EQ(reading.asks.size(), 9u);
    EXPECT_EQ(reading.flags, 2 | 4);
}

// Without asks the ten ask rows have price 0, below the best bid: that counts as crossed, and the limit takes them.
TEST_F(QuoterThousandByQuoterTest, shouldLoseTheUnsetAsksWhenTheSnapshotHasBidsOnly)
{
    givenRecord();
    feed.snapshots(live, {level2().bid(10.00, 5)});
    const BookReading reading = readBook(model, byQuoter);
    EXPECT_EQ(reading.bids.size(), 10u);
    EXPECT_TRUE(reading.asks.empty());
    EXPECT_EQ(reading.flags, 2 | 4);
}

TEST_F(QuoterThousandByQuoterTest, shouldKeepTheUnsetBidsWhenTheSnapshotHasAsksOnly)
{
    givenRecord();
    feed.snapshots(live, {level2().ask(10.02, 5)});
    const BookReading reading = readBook(model, byQuoter);
    EXPECT_EQ(reading.bids.size(), 10u);
    EXPECT_EQ(reading.asks.size(), 10u);
    EXPECT_EQ(reading.flags, 4);
}

// --- one side alone -------------------------------------------------------------------------------------------

struct OneSide {
    const char* name;
    void (QuoterThousand::*read)(TC::EntrustList&, double&, double&, double&);
    std::string rows;
};

TEST_F(QuoterThousandByQuoterTest, shouldLeaveTheRowsAloneWhenThereIsNoInstrumentOrNoRecord)
{
    const OneSide sides[] = {{"bids", &QuoterThousand::getBids, "10.00 5h x1 (0)"},
                             {"asks", &QuoterThousand::getAsks, "10.02 6h x1 (0)"},
                             {"bids by snapshot", &QuoterThousand::getBidsByQuoter, "10.00 7h x? (0)"},
                             {"asks by snapshot", &QuoterThousand::getAsksByQuoter, "10.02 8h x? (0)"}};
    const auto stock = model.m_stock;
    for (const OneSide& side : sides) {
        SCOPED_TRACE(side.name);
        model.clear();
        BookReading reading;
        reading.bids = {nullptr};
        const auto read = [&] {
            (model.*side.read)(reading.bids, reading.minPrice, reading.maxPrice, reading.maxAmount);
        };
        feed.snapshots(live, {level2().bid(10.00, 7).ask(10.02, 8)});
        read();
        EXPECT_EQ(reading.bids, TC::EntrustList{nullptr}) << "without a record";

        feed.thousand(live, {thousand().bid(10.00, 5).ask(10.02, 6)});
        model.m_stock.reset();
        read();
        EXPECT_EQ(reading.bids, TC::EntrustList{nullptr}) << "without an instrument";
        EXPECT_EQ(reading.maxPrice, -DBL_MAX);

        model.m_stock = stock;
        read();
        std::erase_if(reading.bids, [](const auto& row) { return row->price == 0; });
        ASSERT_EQ(reading.bids.size(), 1u);
        EXPECT_EQ(rowText(*reading.bids.front()), side.rows);
        EXPECT_GE(reading.maxPrice, 10.00);
    }
}

} // namespace
