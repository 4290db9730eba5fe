#include "tests/tessimodel/entruststatus.h"

// Which row shows which level.
namespace {

using namespace tests;

class EntrustRowsTest : public EntrustStreamTest {
protected:
    // The rows of one snapshot on a new model.
    std::string shown(const Written& record) const
    {
        EntrustStatus fresh;
        fresh.show(of(record));
        return rowsText(fresh);
    }
};

TEST_P(EntrustRowsTest, shouldShowTheBestAskOnTheLastRowAndTheBestBidOnTheFirstWhenASnapshotComes)
{
    model.show(of(level1()
                      .asks({{10.02, 1}, {10.03, 2}, {10.04, 3}, {10.05, 4}, {10.06, 5}})
                      .bids({{10.01, 6}, {10.00, 7}, {9.99, 8}, {9.98, 9}, {9.97, 10}})));
    EXPECT_EQ(rowsText(model), "ask5 10.06 5\nask4 10.05 4\nask3 10.04 3\nask2 10.03 2\nask1 10.02 1\n"
                               "bid1 10.01 6\nbid2 10 7\nbid3 9.99 8\nbid4 9.98 9\nbid5 9.97 10\n");
    EXPECT_EQ(model.m_askRows[9].price, 10.02);
    EXPECT_EQ(model.m_askRows[5].price, 10.06);
    EXPECT_EQ(model.m_bidRows[0].price, 10.01);
    EXPECT_EQ(model.m_bidRows[4].price, 9.97);
}

TEST_P(EntrustRowsTest, shouldMarkEveryRowOfTheStreamWhenTheSnapshotIsEmpty)
{
    model.show(of(level1()));
    EXPECT_EQ(rowsText(model), "");
    EXPECT_EQ(usedText(model), isLevel1() ? ".....xxxxx xxxxx....." : "xxxxxxxxxx xxxxxxxxxx");
    EXPECT_EQ(model.m_askRows.size(), 10);
    EXPECT_EQ(model.m_bidRows.size(), 10);
}

TEST_P(EntrustRowsTest, shouldEmptyRowsWhenTheirLevelsAreGone)
{
    model.show(of(level1().asks({{10.02, 1}, {10.03, 2}}).bids({{10.01, 6}, {10.00, 7}})));
    model.show(of(level1().asks({{10.02, 1}}).bids({{10.01, 6}})));
    EXPECT_EQ(rowsText(model), "ask1 10.02 1\nbid1 10.01 6\n");
    EXPECT_TRUE(model.m_askRows[8].used);
    EXPECT_TRUE(model.m_bidRows[1].used);
}

TEST_P(EntrustRowsTest, shouldCutVolumesTo32BitsWhenTheyAreLarger)
{
    EXPECT_EQ(shown(level1().ask(10.02, (1LL << 32) + 5).bid(10.01, 1LL << 31)),
              "ask1 10.02 5\nbid1 10.01 -2147483648\n");
    EXPECT_EQ(shown(level1().ask(10.02, -1).bid(10.01, (1LL << 40) + 7)), "ask1 10.02 -1\nbid1 10.01 7\n");
}

// Prices are shown as they come, usable or not; a volume may stand without a price.
TEST_P(EntrustRowsTest, shouldShowLevelsAsTheyAreWhenTheyMakeNoSense)
{
    EXPECT_EQ(shown(level1().asks({{0, 5}, {-1, 6}}).bids({{kNoPrice, 7}, {11, 0}})),
              "ask2 -1 6\nask1 0 5\nbid1 DBL_MAX 7\nbid2 11 0\n");
    EXPECT_EQ(shown(level1().bid(kNaN, 3)), "bid1 nan 3\n");
}

// A panel without an instrument, or one that is shown a chart, gets its book as well.
TEST_P(EntrustRowsTest, shouldShowTheSameWhenThereIsAnInstrument)
{
    const auto record = level1().ask(10.02, 1).bid(10.01, 2);
    const std::string without = shown(record);
    follow();
    model.show(of(record));
    EXPECT_EQ(rowsText(model), without);
}

INSTANTIATE_TEST_SUITE_P(BothStreams, EntrustRowsTest, ::testing::Values(1, 2), levelName);

using EntrustDepthTest = EntrustStatusTest;

// Ten levels, a cent apart: asks from 10.01 upwards with 1 to 10, bids from 10.00 downwards with 11 to 20.
Snapshot<quoter::QuoterDepthData> tenLevels()
{
    auto written = level2();
    const std::shared_ptr<quoter::QuoterDepthData> record = written;
    for (int i = 0; i < 10; ++i) {
        record->askPrice[i] = (1001 + i) / 100.0;
        record->askVolume[i] = 1 + i;
        record->bidPrice[i] = (1000 - i) / 100.0;
        record->bidVolume[i] = 11 + i;
    }
    return written;
}

constexpr const char* kTenLevels = "ask10 10.1 10\nask9 10.09 9\nask8 10.08 8\nask7 10.07 7\nask6 10.06 6\n"
                                   "ask5 10.05 5\nask4 10.04 4\nask3 10.03 3\nask2 10.02 2\nask1 10.01 1\n"
                                   "bid1 10 11\nbid2 9.99 12\nbid3 9.98 13\nbid4 9.97 14\nbid5 9.96 15\n"
                                   "bid6 9.95 16\nbid7 9.94 17\nbid8 9.93 18\nbid9 9.92 19\nbid10 9.91 20\n";

TEST_F(EntrustDepthTest, shouldShowTenLevelsWhenTheSnapshotIsOfLevel2)
{
    model.show(tenLevels());
    EXPECT_EQ(rowsText(model), kTenLevels);
}

TEST_F(EntrustDepthTest, shouldCountChangesOnAllTenLevelsWhenTheyGrow)
{
    const auto more = tenLevels();
    const std::shared_ptr<quoter::QuoterDepthData> record = more;
    for (int i = 0; i < 10; ++i) {
        record->askVolume[i] += 100 + i;
        record->bidVolume[i] += 200 + i;
    }
    model.show(more, tenLevels());
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(model.m_askRows[9 - i].delta, 100 + i);
        EXPECT_EQ(model.m_bidRows[i].delta, 200 + i);
    }
}

// What lies beyond the five levels keeps what it held, changes included, until ten come again.
TEST_F(EntrustDepthTest, shouldKeepTheOuterRowsWhenFiveLevelsFollowTen)
{
    model.show(tenLevels());
    const auto changed = tenLevels();
    const std::shared_ptr<quoter::QuoterDepthData> record = changed;
    record->askVolume[9] = 15;
    record->bidVolume[5] = 10;
    model.show(changed);
    model.show(level1().ask(11, 1).bid(9, 2));
    EXPECT_EQ(rowsText(model), "ask10 10.1 15 +5\nask9 10.09 9\nask8 10.08 8\nask7 10.07 7\nask6 10.06 6\n"
                               "ask1 11 1\nbid1 9 2\n"
                               "bid6 9.95 10 -6\nbid7 9.94 17\nbid8 9.93 18\nbid9 9.92 19\nbid10 9.91 20\n");
    EXPECT_EQ(usedText(model), "xxxxxxxxxx xxxxxxxxxx");
}

// Without a snapshot before, the state before is all ten rows, also those that five levels do not write.
TEST_F(EntrustDepthTest, shouldFindAPriceBeyondTheFiveLevelsWhenChangesRunAgainstTheRows)
{
    model.show(tenLevels());
    model.show(level1().ask(10.1, 110).bid(9.91, 25));
    EXPECT_EQ(model.m_askRows[9].delta, 100) << "the tenth ask has become the first";
    EXPECT_EQ(model.m_bidRows[0].delta, 5);
}

TEST_F(EntrustDepthTest, shouldNotFindAPriceBeyondTheFiveLevelsWhenThereIsASnapshotBefore)
{
    model.show(tenLevels());
    model.show(level1().ask(10.1, 110).bid(9.91, 25), level1());
    EXPECT_EQ(model.m_askRows[9].delta, 0);
    EXPECT_EQ(model.m_bidRows[0].delta, 0);
}

} // namespace
