#include "tests/tessimodel/thousandmodel.h"

namespace {

using namespace tests;

// Rows corrected by a snapshot that is newer than every tick. The ticks are of 09:30:00.
class ThousandCorrectionTest : public ThousandTest {
protected:
    ThousandCorrectionTest()
    {
        feed.begin({order(1).buy(9.97).shares(100), order(2).buy(9.98).shares(500), order(3).buy(9.99).shares(200),
                    order(4).buy(10.00).shares(300), order(5).buy(10.01).shares(400), order(6).sell(10.02).shares(400),
                    order(7).sell(10.03).shares(300), order(8).sell(10.04).shares(200),
                    order(9).sell(10.05).shares(500), order(10).sell(10.06).shares(100)});
        readBook(model);
    }

    std::string bids()
    {
        model.m_updateFlags = 4;
        return bookText(readBook(model).bids, {});
    }
    std::string asks()
    {
        model.m_updateFlags = 4;
        return bookText({}, readBook(model).asks);
    }
};

TEST_F(ThousandCorrectionTest, shouldFollowTheSnapshotWithinItsRangeWhenItIsNewer)
{
    feed.snapshots(live, {level2("09:30:03").bids({{10.00, 7}, {9.98, 5}}).asks({{10.03, 1}, {10.05, 5}})});
    EXPECT_EQ(bookText(model), "bid 9.97 1h x1 (+1)\n"  // below the snapshot: stays
                               "bid 9.98 5h x1 (+5)\n"  // the same volume: stays with its change
                               "bid 10.00 7h x2 (0)\n"  // 300 shares and an implied order
                               "ask 10.03 1h x1 (0)\n"  // what is left of the one order
                               "ask 10.05 5h x1 (+5)\n" // and above the snapshot:
                               "ask 10.06 1h x1 (+1)\n");
    EXPECT_EQ(levelsText(model.m_book), "bid 997 1:100\nbid 998 2:500\nbid 999 3:200\nbid 1000 4:300\nbid 1001 5:400\n"
                                        "ask 1002 6:400\nask 1003 7:300\nask 1004 8:200\nask 1005 9:500\n"
                                        "ask 1006 10:100\n");
}

TEST_F(ThousandCorrectionTest, shouldLeaveTheRowsAloneWhenATickIsAsNew)
{
    feed.orders(live, {order(11).buy(9.90).time("09:30:03")});
    const std::string before = bids();
    feed.snapshots(live, {level2("09:30:03").bid(10.00, 7)});
    EXPECT_EQ(bids(), before);
}

TEST_F(ThousandCorrectionTest, shouldImplyOrdersWhenTheBookLacksALevel)
{
    feed.snapshots(live, {level2("09:30:03").bids({{10.07, 2500}, {10.01, 4}}).asks({{10.02, 4}, {11.00, 0}})});
    EXPECT_EQ(bids(), "bid 9.97 1h x1 (+1)\nbid 9.98 5h x1 (+5)\nbid 9.99 2h x1 (+2)\nbid 10.00 3h x1 (+3)\n"
                      "bid 10.01 4h x1 (+4)\nbid 10.07 2500h x3 (0)\n");
    EXPECT_EQ(asks(), "ask 10.02 4h x1 (+4)\nask 11.00 0h x1 (0)\n") << "nothing at all counts as one order";
}

TEST_F(ThousandCorrectionTest, shouldNotKnowTheNumberWhenARowHasNoLevelBehindIt)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.07, 2500)});
    bids();
    feed.snapshots(live, {level2("09:30:06").bid(10.07, 900)});
    EXPECT_EQ(bids(), "bid 9.97 1h x1 (+1)\nbid 9.98 5h x1 (+5)\nbid 9.99 2h x1 (+2)\nbid 10.00 3h x1 (+3)\n"
                      "bid 10.01 4h x1 (+4)\nbid 10.07 900h x? (0)\n");
}

TEST_F(ThousandCorrectionTest, shouldGiveACopyOfTheSnapshotsRowWhenTheBookLacksALevel)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.07, 2500)});
    bids();
    EXPECT_EQ(rowText(*model.m_snapshotBids.at(1007)), "10.07 2500h x? (0)");
    EXPECT_NE(model.m_bidRows.at(1007), model.m_snapshotBids.at(1007));
}

// The rows are the book's own: a correction shows there too, until a tick at that level writes it anew.
TEST_F(ThousandCorrectionTest, shouldShowInTheBooksRowWhenNoTickCameAtThatLevelSince)
{
    feed.snapshots(live, {level2("09:30:03").bids({{10.01, 9}, {10.00, 7}})});
    bids();
    EXPECT_EQ(rowText(*model.m_book.m_bidRows.at(1001)), "10.01 9h x2 (0)");
    EXPECT_EQ(queueText(model.m_book.getLevel(true, 10.01)), "5:400");

    feed.orders(live, {order(11).buy(10.00).time("09:30:04")});
    EXPECT_EQ(bids(), "bid 9.97 1h x1 (0)\nbid 9.98 5h x1 (0)\nbid 9.99 2h x1 (0)\nbid 10.00 4h x2 (+1)\n"
                      "bid 10.01 9h x2 (0)\n");
    feed.orders(live, {order(12).buy(10.01).time("09:30:04")});
    EXPECT_EQ(rowText(*model.m_book.m_bidRows.at(1001)), "10.01 5h x2 (+1)");
}

TEST_F(ThousandCorrectionTest, shouldBringErasedRowsBackOnlyWhenThatSideChanges)
{
    feed.snapshots(live, {level2("09:30:02").bids({{9.99, 2}, {9.98, 5}}).ask(10.02, 4)});
    EXPECT_EQ(bids(), "bid 9.97 1h x1 (+1)\nbid 9.98 5h x1 (+5)\nbid 9.99 2h x1 (+2)\n");
    feed.orders(live, {order(11).sell(10.09).time("09:30:02.500")});
    EXPECT_EQ(bids(), "bid 9.97 1h x1 (+1)\nbid 9.98 5h x1 (+5)\nbid 9.99 2h x1 (+2)\n") << "an ask's tick";
    feed.orders(live, {order(12).buy(9.90).time("09:30:02.500")});
    EXPECT_EQ(bids(), "bid 9.90 1h x1 (+1)\nbid 9.97 1h x1 (+1)\nbid 9.98 5h x1 (+5)\nbid 9.99 2h x1 (+2)\n"
                      "bid 10.00 3h x1 (+3)\nbid 10.01 4h x1 (+4)\n");
}

// --- sides without a snapshot row, and keys beyond the starting values ----------------------------------------

TEST_F(ThousandCorrectionTest, shouldLoseAllAsksWhenTheSnapshotHasBidsOnly)
{
    feed.orders(live, {order(11).sell(15000000.00)});
    feed.snapshots(live, {level2("09:30:03").bid(10.01, 4)});
    EXPECT_EQ(asks(), "ask 15000000.00 1h x1 (+1)\n") << "a key above 1410065408, which counts as the lowest";
    EXPECT_EQ(model.m_book.m_askLevels.size(), 6u);
    EXPECT_EQ(bids(), "bid 9.97 1h x1 (+1)\nbid 9.98 5h x1 (+5)\nbid 9.99 2h x1 (+2)\nbid 10.00 3h x1 (+3)\n"
                      "bid 10.01 4h x1 (+4)\n");
}

TEST_F(ThousandCorrectionTest, shouldLoseAllBidsWhenTheSnapshotHasAsksOnly)
{
    feed.snapshots(live, {level2("09:30:03").ask(10.02, 4)});
    EXPECT_EQ(bids(), "");
    EXPECT_EQ(model.m_book.m_bidLevels.size(), 5u);
    EXPECT_EQ(asks(), "ask 10.02 4h x1 (+4)\nask 10.03 3h x1 (+3)\nask 10.04 2h x1 (+2)\nask 10.05 5h x1 (+5)\n"
                      "ask 10.06 1h x1 (+1)\n");
    feed.orders(live, {order(12).buy(9.00).time("09:30:04")});
    EXPECT_EQ(readBook(model).bids.size(), 6u) << "with the next change they are back";
}

TEST_F(ThousandCorrectionTest, shouldLoseABidAboveTheConstantTooWhenTheSnapshotHasAsksOnly)
{
    feed.orders(live, {order(11).buy(15000000.00)});
    feed.snapshots(live, {level2("09:30:03").ask(10.02, 4)});
    bids();
    EXPECT_EQ(bookText(model.m_bidRows, {}), "");
}

// The lowest key never counts as more than 1410065408: bids between that and the snapshot's own lowest go as well.
TEST_F(ThousandCorrectionTest, shouldEraseBidsAboveTheConstantWhenTheSnapshotIsHigherStill)
{
    feed.orders(live, {order(11).buy(14500000.00)});
    feed.orders(live, {order(12).buy(14100654.08)}); // the constant itself
    feed.orders(live, {order(13).buy(15000000.00)});
    feed.snapshots(live, {level2("09:30:03").bid(15000000.00, 1)});
    EXPECT_EQ(bids(), "bid 9.97 1h x1 (+1)\nbid 9.98 5h x1 (+5)\nbid 9.99 2h x1 (+2)\nbid 10.00 3h x1 (+3)\n"
                      "bid 10.01 4h x1 (+4)\nbid 14100654.08 1h x1 (+1)\nbid 15000000.00 1h x1 (+1)\n");
}

TEST_F(ThousandCorrectionTest, shouldMultiplyByTheUnitWhenTheNumberIsCorrected)
{
    terminal.instruments.add(stock("SZ", "000001", {100017}));
    model.setStock(keyOf("SZ", "000001"));
    ASSERT_EQ(model.m_volumeUnit, 10);
    feed.snapshots(live, {level2("09:30:03").bids({{10.07, 25000}, {10.01, 4}, {10.00, 30040}})});
    EXPECT_EQ(bids(), "bid 9.97 1h x1 (+1)\nbid 9.98 5h x1 (+5)\nbid 9.99 2h x1 (+2)\nbid 10.00 30040h x5 (0)\n"
                      "bid 10.01 4h x1 (+4)\nbid 10.07 25000h x3 (0)\n");
}

TEST_F(ThousandCorrectionTest, shouldGiveTheSameRowsWhenSingleSidesAreRead)
{
    feed.snapshots(live, {level2("09:30:03").bids({{10.00, 7}}).asks({{10.05, 5}})});
    TC::EntrustList rows;
    double minPrice = 9.98;
    double maxPrice = 9.99;
    double maxAmount = 60;
    model.getBids(rows, minPrice, maxPrice, maxAmount);
    EXPECT_EQ(bookText(rows, {}),
              "bid 9.97 1h x1 (+1)\nbid 9.98 5h x1 (+5)\nbid 9.99 2h x1 (+2)\nbid 10.00 7h x2 (0)\n");
    EXPECT_EQ(minPrice, 9.97);
    EXPECT_EQ(maxPrice, 10.00);
    EXPECT_EQ(maxAmount, 70.0);
    model.getAsks(rows, minPrice, maxPrice, maxAmount);
    EXPECT_EQ(bookText({}, rows), "ask 10.05 5h x1 (+5)\nask 10.06 1h x1 (+1)\n");
    EXPECT_EQ(minPrice, 9.97);
    EXPECT_EQ(maxPrice, 10.06);
}

} // namespace
