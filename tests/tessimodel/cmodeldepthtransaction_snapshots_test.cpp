#include "tests/tessimodel/tradelist.h"

namespace {

using namespace tests;

class TradeSnapshotsTest : public TradeListTest {
protected:
    // The days' volumes of the snapshots that are kept.
    std::string kept() const
    {
        std::string text;
        for (const auto& quote : model->m_quotes)
            text += (text.empty() ? "" : " ") + std::to_string(quote->volume);
        return text;
    }
};

TEST_F(TradeSnapshotsTest, shouldKeepASnapshotWhenTheVolumeGrewSinceTheLastKept)
{
    feed.snapshots(history,
                   {snapshot("09:30:00", 10.00, 5), snapshot("09:30:03", 10.00, 5), snapshot("09:30:06", 10.00, 3),
                    snapshot("09:30:09", 10.00, 4), snapshot("09:30:12", 10.00, 6), snapshot("09:30:12", 10.00, 7)});
    EXPECT_EQ(kept(), "5 6 7");
}

TEST_F(TradeSnapshotsTest, shouldKeepTheFirstWhateverItsVolume)
{
    for (const __int64 volume : {0, -5, 7}) {
        feed.snapshots(history, {snapshot("09:30:00", 10.00, volume)});
        EXPECT_EQ(kept(), std::to_string(volume));
    }
}

TEST_F(TradeSnapshotsTest, shouldCompareWholeVolumesWhenTheyExceedAnInt)
{
    feed.snapshots(history, {snapshot("09:30:00", 10.00, 100), snapshot("09:30:03", 10.00, 4294967296)});
    EXPECT_EQ(kept(), "100 4294967296");
}

TEST_F(TradeSnapshotsTest, shouldAnswerTakenWhenASnapshotIsNotKept)
{
    EXPECT_EQ(model->append(model->m_stock, snapshot("09:30:00", 10.00, 5)), 2);
    EXPECT_EQ(model->append(model->m_stock, snapshot("09:30:03", 10.00, 5)), 2);
    EXPECT_EQ(model->append(model->m_stock, snapshot("09:30:03", 10.00, 4)), 2);
    EXPECT_EQ(kept(), "5");
}

TEST_F(TradeSnapshotsTest, shouldMatchAndRaiseTheFlagWhenALiveSnapshotIsNotKept)
{
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 1)});
    model->append(model->m_stock, dealt("09:30:01", 10.00, 1));
    model->append(model->m_stock, dealt("09:30:04", 10.00, 1));
    tookChange();
    feed.snapshots(live, {snapshot("09:30:06", 10.00, 1)});
    EXPECT_EQ(kept(), "1");
    EXPECT_TRUE(tookChange());
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n");
}

TEST_F(TradeSnapshotsTest, shouldNotKeepWhenAnAfterHoursVolumeBeginsAnew)
{
    follow(stock("SZ", "300001", {10006, 277}));
    feed.snapshots(history, {snapshot("15:00:03", 10.00, 50).status(20), snapshot("15:05:00", 10.00, 5).status(22)});
    EXPECT_EQ(kept(), "50");
}

TEST_F(TradeSnapshotsTest, shouldTakeLevelTwoSnapshotsOnlyWhenABatchHoldsMore)
{
    feed.snapshots(history, {level1("09:30:00").volume(1), snapshot("09:30:00", 10.00, 2), nullptr, order(1),
                             snapshot("09:30:03", 10.00, 3)});
    EXPECT_EQ(kept(), "2 3");
    tookChange();
    feed.snapshots(live, {snapshot("09:30:06", 10.00, 9), level1("09:30:06").volume(9)});
    feed.snapshots(live, {snapshot("09:30:06", 10.00, 9), nullptr});
    EXPECT_EQ(kept(), "2 3");
    EXPECT_FALSE(tookChange());
}

TEST_F(TradeSnapshotsTest, shouldTakeOnlyTheLastWhenPushedLive)
{
    feed.snapshots(live, {snapshot("09:30:00", 10.00, 1), snapshot("09:30:03", 10.00, 2)});
    EXPECT_EQ(kept(), "2");
    EXPECT_TRUE(tookChange());
}

TEST_F(TradeSnapshotsTest, shouldBeginAnewWhenAHistoryComesAndGoOnWhenMoreComes)
{
    feed.snapshots(history, {snapshot("09:30:00", 10.00, 50)});
    feed.snapshots(moreHistory, {snapshot("09:30:03", 10.00, 49), snapshot("09:30:03", 10.00, 51)});
    EXPECT_EQ(kept(), "50 51");
    feed.snapshots(history, {snapshot("09:30:06", 10.00, 3)});
    EXPECT_EQ(kept(), "3");
}

TEST_F(TradeSnapshotsTest, shouldOnlyEmptyWhenAnEmptyHistoryComes)
{
    feed.trades(history, {dealt("09:30:00", 10.00, 1), dealt("09:30:01", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:00", 10.00, 1)});
    EXPECT_EQ(pairsText(*model), "09:30:00 (0, 0)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
    tookChange();

    feed.snapshots(moreHistory, {});
    feed.snapshots(live, {});
    EXPECT_EQ(kept(), "1");
    EXPECT_FALSE(tookChange());

    feed.snapshots(history, {});
    EXPECT_EQ(kept(), "");
    EXPECT_EQ(pairsText(*model), "");
    EXPECT_EQ(model->m_lastMatchedQuote, -1);
    EXPECT_EQ(model->m_rowCount, 2);
    EXPECT_TRUE(tookChange());
}

} // namespace
