#include "tests/tessimodel/quoterthousand.h"

#include <memory>

namespace {

using namespace tests;

class QuoterThousandClearTest : public QuoterThousandTest {
protected:
    void givenBusyModel()
    {
        feed.thousand(live, {thousand("09:30:00").bid(10.00, 100).ask(10.02, 7)});
        feed.thousand(live, {thousand("09:30:01").bid(10.00, 150).ask(10.02, 7)});
        feed.snapshots(live, {level2("09:30:03").last(10.01).bid(10.00)});
    }
};

TEST_F(QuoterThousandClearTest, shouldDropRecordsAndChangesWhenCleared)
{
    givenBusyModel();
    model.clear();
    EXPECT_EQ(model.m_thousand, nullptr);
    EXPECT_EQ(model.m_prevThousand, nullptr);
    EXPECT_TRUE(model.m_priceDeltas.isEmpty());
    EXPECT_EQ(bookText(model), "no update");
}

TEST_F(QuoterThousandClearTest, shouldTellOfTheClearWithTheNextRecordWhenCleared)
{
    givenBusyModel();
    readBook(model, byRecord);
    model.clear();
    EXPECT_EQ(model.m_updateFlags, 1);
    EXPECT_FALSE(readBook(model, byRecord).updated);
    bidAt("09:31:00", 200);
    EXPECT_EQ(readBook(model, byRecord).flags, 1 | 4);
}

TEST_F(QuoterThousandClearTest, shouldCompareWithNothingOfBeforeWhenCleared)
{
    givenBusyModel();
    model.clear();
    bidAt("09:30:02", 200);
    EXPECT_EQ(bookText(model), "bid 10.00 200h x1 (0)\n");
    EXPECT_EQ(model.m_prevThousand, nullptr);
    bidAt("09:30:02.400", 210);
    EXPECT_EQ(deltasText(model), "10.00 -10");
}

// Its rows are the panels' own: there are none to leave for the next view.
TEST_F(QuoterThousandClearTest, shouldLeaveNothingWithTheManagerWhenRowsWereRead)
{
    givenBusyModel();
    readBook(model, byRecord);
    readBook(model, byQuoter);
    EXPECT_TRUE(model.m_bidRows.empty() && model.m_askRows.empty());
    model.clear();
    EXPECT_TRUE(bookManager()->m_bidsData.empty());
}

TEST_F(QuoterThousandClearTest, shouldLetGoOfTheRecordsWhenCleared)
{
    givenBusyModel();
    const std::weak_ptr<quoter::LevelThousandData> record = model.m_thousand;
    const std::weak_ptr<quoter::LevelThousandData> base = model.m_prevThousand;
    const std::weak_ptr<quoter::QuoterDepthData> snapshot = model.m_quoter;
    EXPECT_FALSE(record.expired() || base.expired() || snapshot.expired());
    model.clear();
    terminal.strands.drain("data_release");
    EXPECT_TRUE(record.expired());
    EXPECT_TRUE(base.expired());
    EXPECT_TRUE(snapshot.expired());
}

TEST_F(QuoterThousandClearTest, shouldKeepRowsForAPanelThatHoldsThemWhenCleared)
{
    givenBusyModel();
    const BookReading reading = readBook(model, byRecord);
    model.clear();
    terminal.strands.drain("data_release");
    EXPECT_EQ(bookText(reading.bids, reading.asks), "bid 10.00 150h x1 (-50)\nask 10.02 7h x1 (0)\n");
}

} // namespace
