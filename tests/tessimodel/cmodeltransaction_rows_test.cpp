// What snapshots and batches of them make of the list.

#include "indexui/tessimodel/cmodeltransaction.h"

#include "quoter/brovanquoteralldata.h"
#include "quoter/levelorderdata.h"
#include "tests/support/records.h"
#include "tests/tessimodel/transactiontest.h"

#include <cfloat>
#include <limits>

namespace {

using namespace tests;

// --- rows ---------------------------------------------------------------------------------------------------------

TEST_F(TransactionTest, shouldTakeWholeVolumeAsABuyWhenRowIsTheFirst)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(9.00).volume(500).bid(9.00)});
    EXPECT_EQ(rowsText(model), "09:30:00 9 +500 of 500 B\n");
}

TEST_F(TransactionTest, shouldFillEveryFieldWhenSnapshotIsOfEitherLevel)
{
    follow("SZ", "000001");
    model.history({level1("09:30:01.999").last(10.02).volume(500).bid(10.01).ask(10.03).status(13),
                   level2("09:30:04.001").last(10.03).volume(700).bid(10.02).ask(10.04).status(18)});
    ASSERT_EQ(model.m_datas.size(), 2);
    const TC::TransData& first = model.m_datas[0];
    EXPECT_EQ(first.timetag, timeOf("09:30:01") / 1000);
    EXPECT_EQ(first.price, 10.02);
    EXPECT_EQ(first.bidPrice, 10.01);
    EXPECT_EQ(first.askPrice, 10.03);
    EXPECT_EQ(first.tradeStatus, 13);
    const TC::TransData& second = model.m_datas[1];
    EXPECT_EQ(second.timetag, timeOf("09:30:04") / 1000);
    EXPECT_EQ(second.price, 10.03);
    EXPECT_EQ(second.volume, 200);
    EXPECT_EQ(second.totalVolume, 700);
    EXPECT_EQ(second.bidPrice, 10.02);
    EXPECT_EQ(second.askPrice, 10.04);
    EXPECT_EQ(second.tradeStatus, 18);
}

TEST_F(TransactionTest, shouldTakeSnapshotWhenTheBrokerDelivers)
{
    const auto brokers = [](const char* clock, double price, int volume) {
        auto record = std::make_shared<zolv::BrovanQuoterAllData>();
        record->timetag = timeOf(clock);
        record->lastPrice = price;
        record->volume = volume;
        return record;
    };
    follow("SZ", "000001");
    model.history({brokers("09:30:00", 10, 5)});
    EXPECT_TRUE(model.live({brokers("09:30:03", 10.01, 7)}));
    EXPECT_EQ(rowsText(model), "09:30:00 10 +5 of 5 B\n"
                               "09:30:03 10.01 +2 of 7 B\n");
}

TEST_F(TransactionTest, shouldTruncateTowardZeroWhenTimeIsBeforeTheEpoch)
{
    const std::shared_ptr<quoter::QuoterAllData> record = level1().last(1).volume(1);
    record->timetag = -1999;
    TC::TransData row;
    model.convert(record, row);
    EXPECT_EQ(row.timetag, -1);
}

TEST_F(TransactionTest, shouldTakeLastPriceWhenBestPriceIsMissing)
{
    for (const double missing : {0.0, 1e-5, -1e-5, DBL_MAX}) {
        TC::TransData row;
        const std::shared_ptr<quoter::QuoterDepthData> depth = level2().last(10.02).volume(1).bid(missing).ask(missing);
        model.convert(depth, row);
        EXPECT_EQ(row.bidPrice, 10.02) << missing;
        EXPECT_EQ(row.askPrice, 10.02) << missing;
        const std::shared_ptr<quoter::QuoterAllData> all = level1().last(10.03).volume(1).bid(missing).ask(missing);
        model.convert(all, row);
        EXPECT_EQ(row.bidPrice, 10.03) << missing;
        EXPECT_EQ(row.askPrice, 10.03) << missing;
    }
    TC::TransData row;
    const std::shared_ptr<quoter::QuoterDepthData> cheap = level2().last(10.02).volume(1).bid(2e-5).ask(3e-5);
    model.convert(cheap, row);
    EXPECT_EQ(row.bidPrice, 2e-5);
    EXPECT_EQ(row.askPrice, 3e-5);
}

struct DirectionCase {
    const char* what;
    double lastPrice;
    double price;
    double bid;
    const char* direction;
};

TEST_F(TransactionTest, shouldTellDirectionWhenTickArrives)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const DirectionCase cases[] = {
        {"the price rose", 10.00, 10.01, 10.01, "B"},
        {"the price fell", 10.00, 9.99, 9.98, "S"},
        {"still, above the bid", 10.00, 10.00, 9.99, "B"},
        {"still, at the bid", 10.00, 10.00, 10.00, "S"},
        {"still, below the bid", 10.00, 10.00, 10.01, "S"},
        {"still, without a bid", 10.00, 10.00, 0, "S"},
        {"still, with a bid of no value", 10.00, 10.00, DBL_MAX, "S"},
        {"up by the tolerance itself, above the bid", 0.0, 1e-5, -1.0, "B"},
        {"up by the tolerance itself, at the bid", 0.0, 1e-5, 0, "S"},
        {"up by twice the tolerance, at the bid", 0.0, 2e-5, 0, "B"},
        {"down by the tolerance itself, above the bid", 1e-5, 0.0, -1.0, "B"},
        {"down by twice the tolerance, above the bid", 2e-5, 0.0, -1.0, "S"},
        {"the price is no number", 10.00, nan, 9.99, "B"},
    };
    follow("SZ", "000001");
    for (const DirectionCase& c : cases) {
        SCOPED_TRACE(c.what);
        model.history(
            {level1("09:30:00").last(c.lastPrice).volume(1), level1("09:30:03").last(c.price).volume(2).bid(c.bid)});
        ASSERT_EQ(model.m_datas.size(), 2);
        EXPECT_EQ(model.m_datas[1].isBuy ? "B" : "S", std::string(c.direction));
    }
}

TEST_F(TransactionTest, shouldNotLookAtTheAskWhenTellingDirection)
{
    follow("SZ", "000001");
    model.history({level1().last(10).volume(1), level1().last(10).volume(2).bid(10).ask(10)});
    EXPECT_FALSE(model.m_datas[1].isBuy);
    model.history({level1().last(10).volume(1), level1().last(10).volume(2).bid(9).ask(9)});
    EXPECT_TRUE(model.m_datas[1].isBuy);
}

TEST_F(TransactionTest, shouldDropSnapshotWhenNothingWasTradedYet)
{
    follow("SZ", "000001");
    EXPECT_FALSE(model.live({level1().last(10).volume(0)}));
    EXPECT_FALSE(model.m_updated);
    EXPECT_TRUE(model.m_datas.isEmpty());
}

TEST_F(TransactionTest, shouldReportAnUpdateWithoutARowWhenVolumeStoodStillOrFell)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(10).volume(500)});
    for (const int volume : {500, 499, -1}) {
        model.m_updated = false;
        EXPECT_TRUE(model.live({level1("09:30:03").last(11).volume(volume)})) << volume;
        EXPECT_TRUE(model.m_updated) << volume;
    }
    EXPECT_EQ(rowsText(model), "09:30:00 10 +500 of 500 B\n");
}

// Counts beyond 32 bits compare on the wrapped figures.
TEST_F(TransactionTest, shouldCompareWrappedFiguresWhenVolumeExceeds32Bits)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(10).volume(2147483600)});
    EXPECT_TRUE(model.live({level1("09:30:03").last(10).volume(2147483700)})); // wraps to a negative figure
    EXPECT_EQ(model.m_datas.size(), 1);

    model.history({level1("09:30:00").last(10).volume(4294967296 + 10)});
    EXPECT_EQ(rowsText(model), "09:30:00 10 +10 of 10 B\n");

    // Whole 64 bits are tested for "nothing traded": a multiple of 2^32 has traded, and shows 0.
    model.history({level1("09:30:00").last(10).volume(4294967296)});
    EXPECT_EQ(rowsText(model), "09:30:00 10 +0 of 0 B\n");

    // The step from one end of the range to the other wraps too.
    model.history({level1("09:30:00").last(10).volume(2147483648), level1("09:30:03").last(10).volume(2147483647)});
    EXPECT_EQ(rowsText(model), "09:30:00 10 +-2147483648 of -2147483648 B\n"
                               "09:30:03 10 +-1 of 2147483647 S\n");
}

TEST_F(TransactionTest, shouldDropRecordWhenItIsOfAnotherType)
{
    follow("SZ", "000001");
    EXPECT_FALSE(model.live({std::make_shared<quoter::LevelOrderData>()}));
    EXPECT_FALSE(model.live({order(1).buy(10).shares(100)}));
    EXPECT_FALSE(model.live({nullptr}));
    EXPECT_FALSE(model.m_updated);
    model.history({nullptr, order(1).buy(10), level2("09:30:00").last(10).volume(5), fill(1, 2).at(10)});
    EXPECT_EQ(rowsText(model), "09:30:00 10 +5 of 5 B\n");
}

// --- batches ------------------------------------------------------------------------------------------------------

TEST_F(TransactionTest, shouldTakeNothingWhenWithoutInstrument)
{
    for (const int kind : {0, 1, 3}) {
        EXPECT_FALSE(model.quoterCallBack(0, kind, {level1().last(10).volume(5)}));
        EXPECT_FALSE(model.quoterCallBack(0, kind, {}));
    }
    EXPECT_TRUE(model.m_datas.isEmpty());
    EXPECT_FALSE(model.m_updated);
}

TEST_F(TransactionTest, shouldStartAnewWhenHistoryBegins)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(10).volume(5), level1("09:30:03").last(10.01).volume(7)});
    EXPECT_TRUE(model.history({level1("09:31:00").last(11).volume(50)}));
    EXPECT_EQ(rowsText(model), "09:31:00 11 +50 of 50 B\n");
}

TEST_F(TransactionTest, shouldAddToTheListWhenHistoryGoesOn)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(10).volume(5)});
    EXPECT_TRUE(model.more({level1("09:30:03").last(10.01).volume(7), level1("09:30:06").last(10.00).volume(9)}));
    EXPECT_EQ(rowsText(model), "09:30:00 10 +5 of 5 B\n"
                               "09:30:03 10.01 +2 of 7 B\n"
                               "09:30:06 10 +2 of 9 S\n");
}

TEST_F(TransactionTest, shouldTakeOnlyTheLastRecordWhenPushBundlesSeveral)
{
    follow("SZ", "000001");
    for (const int liveKind : {1, 2, 4, -1, 1000}) {
        model.history({level1("09:30:00").last(10).volume(5)});
        EXPECT_TRUE(model.quoterCallBack(
            9, liveKind, {level1("09:30:03").last(10.01).volume(7), level1("09:30:06").last(10.02).volume(9)}));
        EXPECT_EQ(rowsText(model), "09:30:00 10 +5 of 5 B\n"
                                   "09:30:06 10.02 +4 of 9 B\n");
    }
}

TEST_F(TransactionTest, shouldFailWhenLastRecordOfAPushDoesNotCount)
{
    follow("SZ", "000001");
    EXPECT_FALSE(model.live({level1().last(10).volume(5), order(1).buy(10)}));
    EXPECT_TRUE(model.m_datas.isEmpty());
}

TEST_F(TransactionTest, shouldOnlyEmptyWhenHistoryIsEmpty)
{
    follow("SZ", "000001");
    model.history({level1().last(10).volume(5)});
    model.m_updated = false;
    EXPECT_TRUE(model.history({}));
    EXPECT_TRUE(model.m_datas.isEmpty());
    EXPECT_FALSE(model.m_updated);
}

TEST_F(TransactionTest, shouldChangeNothingWhenOtherBatchIsEmpty)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(10).volume(5)});
    model.m_updated = false;
    for (const int kind : {3, 1, 2, -5}) {
        EXPECT_TRUE(model.quoterCallBack(0, kind, {}));
        EXPECT_EQ(rowsText(model), "09:30:00 10 +5 of 5 B\n");
        EXPECT_FALSE(model.m_updated);
    }
}

TEST_F(TransactionTest, shouldReportAnUpdateWhenHistoryGivesNoRow)
{
    follow("SZ", "000001");
    EXPECT_TRUE(model.history({level1().last(10).volume(0), order(1).buy(10)}));
    EXPECT_TRUE(model.m_datas.isEmpty());
    EXPECT_TRUE(model.m_updated);

    model.m_updated = false;
    EXPECT_TRUE(model.more({level1().last(10).volume(0)}));
    EXPECT_TRUE(model.m_updated);
}

} // namespace
