#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/tessimodel/limittexts.h"
#include "tests/tessimodel/paramstreams.h"

#include <limits>

// What quoterCallback does with a batch as a whole: the limits, the kinds of batch, which record counts.
namespace {

using namespace tests;
using TC::RP_DOWN_LIMIT;
using TC::RP_UP_LIMIT;

constexpr int kFirst = 0;
constexpr int kMore = 3;
const int kKindsBehindTheFirst[] = {3, 1, 2, 4, 100, -1};

class ParamLimitsTest : public TodayParamTest {
protected:
    // The limits that a batch writes, "" when it does not.
    std::string limitsOf(int kind, const Records& records)
    {
        const std::string all = writtenBy(model, [&] { model.quoterCallback(0, kind, records); });
        return lineOf(all, RP_UP_LIMIT) + ", " + lineOf(all, RP_DOWN_LIMIT);
    }
};

TEST_F(ParamLimitsTest, shouldWriteLimitsWhenBatchOfAnyKindComes)
{
    follow(plainStock());
    const std::string limits = "RP_UP_LIMIT 11.00, RP_DOWN_LIMIT 9.00";
    for (const int kind : {0, 3, 1, -1}) {
        EXPECT_EQ(limitsOf(kind, {}), limits) << "empty, kind " << kind;
        EXPECT_EQ(limitsOf(kind, {nullptr}), limits) << "null, kind " << kind;
        EXPECT_EQ(limitsOf(kind, {order(1).buy(10)}), limits) << "no snapshot, kind " << kind;
        EXPECT_EQ(limitsOf(kind, {level1().last(10).volume(500)}), limits) << "kind " << kind;
        EXPECT_EQ(limitsOf(kind, {level2().last(10).volume(500)}), limits) << "kind " << kind;
    }
}

TEST_F(ParamLimitsTest, shouldWriteNothingElseWhenBatchIsEmptyOrHoldsNoSnapshot)
{
    follow(afterHoursStockA());
    for (const Records& records : {Records{}, Records{nullptr}, Records{order(1).buy(10)}}) {
        for (const int kind : {0, 3, 1}) {
            EXPECT_EQ(writtenBy(model, [&] { model.quoterCallback(0, kind, records); }),
                      "RP_UP_LIMIT 11.00\nRP_DOWN_LIMIT 9.00\n");
        }
    }
}

TEST_F(ParamLimitsTest, shouldWriteLimitsWhenSnapshotIsTurnedAway)
{
    follow(plainStock());
    model.live({level1("10:00:00").last(10).volume(500)});
    EXPECT_EQ(writtenBy(model, [&] { model.live({level1("10:00:03").last(10).volume(500)}); }),
              "RP_UP_LIMIT 11.00\nRP_DOWN_LIMIT 9.00\n");
}

TEST_F(ParamLimitsTest, shouldShowDashWhenThereIsNoLimit)
{
    const auto limitsAt = [this](double up, double down) {
        standin::InstrumentDescription description = plainStock();
        description.upStopPrice = up;
        description.downStopPrice = down;
        follow(description);
        return limitsOf(1, {});
    };
    for (const auto& [limit, text] : kLimitTexts) {
        EXPECT_EQ(limitsAt(limit, 7), std::string("RP_UP_LIMIT ") + text + ", RP_DOWN_LIMIT 7.00") << limit;
        EXPECT_EQ(limitsAt(9, limit), std::string("RP_UP_LIMIT 9.00, RP_DOWN_LIMIT ") + text) << limit;
    }
}

TEST_F(ParamLimitsTest, shouldTakeLimitsOfTheRecordWhenUserChoseTheBrokersQuotes)
{
    follow(plainStock());
    const Records broker = {brokerLevel1().last(10).volume(500).limits(10.5, 9.5)};
    EXPECT_EQ(limitsOf(1, broker), "RP_UP_LIMIT 11.00, RP_DOWN_LIMIT 9.00");
    terminal.answers.setDataCenterBrovanQuoteMode(true);
    EXPECT_EQ(limitsOf(1, broker), "RP_UP_LIMIT 11.00, RP_DOWN_LIMIT 9.00") << "the data centre is not asked";
    terminal.answers.setDataCenterBrovanQuoteMode(false);

    terminal.answers.setUserBrovanQuoteMode(true);
    for (const int kind : {0, 3, 1})
        EXPECT_EQ(limitsOf(kind, broker), "RP_UP_LIMIT 10.50, RP_DOWN_LIMIT 9.50") << kind;
    EXPECT_EQ(limitsOf(1, {brokerLevel1().limits(0, 100000)}), "RP_UP_LIMIT -, RP_DOWN_LIMIT -");

    terminal.answers.setSignedIn(false);
    EXPECT_EQ(limitsOf(1, broker), "RP_UP_LIMIT 11.00, RP_DOWN_LIMIT 9.00");
}

TEST_F(ParamLimitsTest, shouldTakeLimitsOfTheInstrumentWhenTheLastRecordIsNotTheBrokers)
{
    follow(plainStock());
    terminal.answers.setUserBrovanQuoteMode(true);
    const auto broker = brokerLevel1().last(10).volume(500).limits(10.5, 9.5);
    const std::string ofInstrument = "RP_UP_LIMIT 11.00, RP_DOWN_LIMIT 9.00";
    EXPECT_EQ(limitsOf(0, {broker, level1("10:00:00").last(10).volume(600)}), ofInstrument);
    EXPECT_EQ(limitsOf(1, {broker, level2("10:00:00").last(10).volume(600)}), ofInstrument);
    EXPECT_EQ(limitsOf(1, {broker, nullptr}), ofInstrument);
    EXPECT_EQ(limitsOf(1, {}), ofInstrument);
    EXPECT_EQ(limitsOf(1, {level1("10:00:03"), broker}), "RP_UP_LIMIT 10.50, RP_DOWN_LIMIT 9.50");
}

TEST_F(ParamLimitsTest, shouldShowLimitsByTheNewTickWhenInstrumentChanges)
{
    follow(plainStock());
    EXPECT_EQ(limitsOf(1, {}), "RP_UP_LIMIT 11.00, RP_DOWN_LIMIT 9.00");
    follow(iopvFund());
    EXPECT_EQ(limitsOf(1, {}), "RP_UP_LIMIT 11.000, RP_DOWN_LIMIT 9.000");
    model.setStock("SH:000000");
    follow(plainStock());
    EXPECT_EQ(limitsOf(1, {}), "RP_UP_LIMIT 11.00, RP_DOWN_LIMIT 9.00");
}

class ParamBatchTest : public ParamStreamTest {
protected:
    bool batch(int kind, const std::vector<Written>& records, int firstNumber = 0)
    {
        return model.quoterCallback(firstNumber, kind, of(records));
    }
};

TEST_P(ParamBatchTest, shouldDoNothingWhenThereIsNoInstrument)
{
    model.setStock("SH:000000");
    const std::string table = tableText(model);
    for (const int kind : {0, 3, 1}) {
        EXPECT_FALSE(batch(kind, {}));
        EXPECT_FALSE(batch(kind, {level1("10:00:00").last(10).volume(500), level1("10:00:03").last(10).volume(600)}));
    }
    EXPECT_EQ(tableText(model), table);
    EXPECT_FALSE(model.isDataValid());
    EXPECT_EQ(model.m_tradeCount, 0);
}

TEST_P(ParamBatchTest, shouldForgetTheDayWhenFirstBatchIsEmpty)
{
    follow(afterHoursStockA());
    batch(kFirst, {level1("10:00:00").last(10).volume(500), level1("10:00:03").last(10.50).volume(600)});
    model.quoteAuxCallback(summary("10:00:01"));
    const std::string table = tableText(model);
    EXPECT_TRUE(batch(kFirst, {}));
    EXPECT_EQ(tableText(model), table) << "texts stay";
    EXPECT_FALSE(model.isDataValid());
    EXPECT_EQ(model.m_tradeCount, 0);
    EXPECT_EQ(model.m_lastContinuous, nullptr);
    EXPECT_TRUE(model.m_history.empty());
    EXPECT_TRUE(model.m_pendingAux.empty());
}

TEST_P(ParamBatchTest, shouldKeepTheDayWhenAnyOtherBatchIsEmpty)
{
    follow(plainStock());
    batch(kFirst, {level1("10:00:00").last(10).volume(500)});
    for (const int kind : kKindsBehindTheFirst)
        EXPECT_TRUE(batch(kind, {})) << kind;
    EXPECT_TRUE(model.isDataValid());
    EXPECT_EQ(model.m_tradeCount, 1);
    EXPECT_EQ(historyText(model), "10:00:00 +500 #1 0..0\n");
}

TEST_P(ParamBatchTest, shouldTakeTheSameRecordsWhenTheFirstNumberIsAny)
{
    for (const int number : {0, 7, -1, std::numeric_limits<int>::min()}) {
        model.clear();
        follow(plainStock());
        EXPECT_TRUE(
            batch(kFirst, {level1("10:00:00").last(10).volume(100), level1("10:00:03").last(10).volume(300)}, number));
        EXPECT_TRUE(batch(1, {level1("10:00:06").last(10).volume(350)}, number));
        EXPECT_FALSE(batch(1, {level1("10:00:09").last(10).volume(350)}, number));
        EXPECT_EQ(historyText(model), "10:00:00 +100 #1 0..0\n"
                                      "10:00:03 +200 #2 0..0\n"
                                      "10:00:06 +50 #3 0..0\n")
            << number;
        EXPECT_TRUE(batch(kFirst, {}, number));
        EXPECT_FALSE(model.isDataValid()) << number;
    }
}

// Further batches of history are no exception: their last record goes through the gates like a live one.
TEST_P(ParamBatchTest, shouldTakeOnlyTheLastRecordWhenBatchIsNotTheFirst)
{
    follow(plainStock());
    int second = 10;
    for (const int kind : kKindsBehindTheFirst) {
        model.clearQuoterData();
        const std::string clock = "10:00:" + std::to_string(second++);
        EXPECT_TRUE(batch(kind, {level1("10:00:00").last(9).volume(100), level1("10:00:01").last(9).volume(200),
                                 level1(clock).last(10).volume(500)}));
        EXPECT_EQ(historyText(model), clock + " +500 #1 0..0\n") << kind;
        EXPECT_FALSE(batch(kind, {level1("10:01:00").last(10).volume(900), level1("10:01:03").last(10).volume(500)}));
        EXPECT_EQ(textOf(model, TC::RP_TOTAL_VOLUME), "500") << kind;
        EXPECT_EQ(model.m_tradeCount, 1) << kind;
    }
}

TEST_P(ParamBatchTest, shouldCountTheLastRecordOnceMoreWhenItsVolumeRoseInAFirstBatch)
{
    follow(plainStock());
    EXPECT_TRUE(batch(kFirst, {level1("10:00:00").last(10).volume(100), level1("10:00:03").last(10).volume(300),
                               level1("10:00:06").last(10).volume(600)}));
    EXPECT_EQ(historyText(model), "10:00:00 +100 #1 0..0\n"
                                  "10:00:03 +200 #2 0..0\n"
                                  "10:00:06 +300 #3 0..0\n");
    EXPECT_EQ(textOf(model, TC::RP_TRADE_COUNT), "3");
    EXPECT_EQ(textOf(model, TC::RP_CURRENT_VOLUME), "300");
}

TEST_P(ParamBatchTest, shouldShowTheLastRecordUncountedWhenItsVolumeStayedInAFirstBatch)
{
    follow(plainStock());
    EXPECT_TRUE(batch(kFirst, {level1("10:00:00").last(10).volume(100), level1("10:00:03").last(10).volume(300),
                               level1("10:00:06").last(10.50).volume(300)}));
    EXPECT_EQ(historyText(model), "10:00:00 +100 #1 0..0\n"
                                  "10:00:03 +200 #2 0..0\n");
    EXPECT_EQ(textOf(model, TC::RP_TRADE_COUNT), "2");
    EXPECT_EQ(textOf(model, TC::RP_CURRENT_VOLUME), "200") << "what the pass found last";
    EXPECT_EQ(textOf(model, TC::RP_LAST), "10.50");
    EXPECT_EQ(previous()->timetag, timeOf("10:00:06"));
}

// The same first batch again, as after a reconnection, gives the same table.
TEST_P(ParamBatchTest, shouldGiveTheSameTableWhenFirstBatchComesAgain)
{
    follow(afterHoursStockB());
    const std::vector<Written> day = {
        level1("10:00:00").last(10).volume(100), level1("10:00:03").last(10.20).volume(300),
        level1("15:05:00").last(10.20).volume(50).status(22), level1("15:05:03").last(10.20).volume(80).status(22)};
    batch(kFirst, day);
    const std::string table = tableText(model);
    const std::string history = historyText(model);
    batch(kFirst, day);
    EXPECT_EQ(tableText(model), table);
    EXPECT_EQ(historyText(model), history);
}

TEST_P(ParamBatchTest, shouldKeepCountersAndPreviousSnapshotsWhenFirstBatchHasOneRecord)
{
    follow(plainStock());
    batch(kFirst, {level1("10:00:00").last(10).volume(100), level1("10:00:03").last(10).volume(300)});
    EXPECT_TRUE(batch(kFirst, {level1("10:00:06").last(10.50).volume(350)}));
    EXPECT_EQ(model.m_tradeCount, 3);
    EXPECT_EQ(textOf(model, TC::RP_CURRENT_VOLUME), "50") << "against the snapshot of the batch before";

    EXPECT_TRUE(batch(kFirst, {level1("10:00:09").last(10.60).volume(20)}));
    EXPECT_EQ(model.m_tradeCount, 3);
    EXPECT_EQ(textOf(model, TC::RP_TOTAL_VOLUME), "20");
    EXPECT_EQ(textOf(model, TC::RP_CURRENT_VOLUME), "50");
    EXPECT_EQ(textOf(model, TC::RP_LAST), "10.60");
}

TEST_P(ParamBatchTest, shouldShowTheRecordWhenFirstBatchOfAllHasOneRecord)
{
    follow(plainStock());
    EXPECT_TRUE(batch(kFirst, {level1("10:00:00").last(10.50).high(10.60).low(9.90).volume(100)}));
    EXPECT_EQ(historyText(model), "10:00:00 +100 #1 9.9..10.6\n");
    EXPECT_EQ(textOf(model, TC::RP_LAST), "10.50");
    EXPECT_TRUE(model.isDataValid());
}

// A past day's changes are against the close that its own snapshots carry.
TEST_P(ParamBatchTest, shouldTakeThePastDaysLastCloseBeforeItShowsTheRecordWhenFirstBatchIsOfAPastDay)
{
    follow(plainStock());
    model.m_historyDateSource = [] { return 0; };
    const auto record = level1("10:00:00").last(10.50).lastClose(10.40).volume(100);
    batch(1, {record});
    EXPECT_EQ(textOf(model, TC::RP_CHANGE), "0.50");
    batch(kFirst, {record});
    EXPECT_EQ(textOf(model, TC::RP_CHANGE), "0.10");
    batch(kFirst, {level1("10:00:00").lastClose(9), level1("10:00:03").last(10.50).lastClose(10.30).volume(100)});
    EXPECT_EQ(textOf(model, TC::RP_CHANGE), "0.20");
    batch(kMore, {level1("10:00:06").last(10.60).lastClose(9).volume(300)});
    EXPECT_EQ(textOf(model, TC::RP_CHANGE), "0.30");
}

// A new first batch adds to what is known: the entries of the past, book summaries that wait, the last of trading.
TEST_P(ParamBatchTest, shouldKeepHistoryAndWaitingSummariesWhenFirstBatchComesAgain)
{
    follow(afterHoursStockA());
    batch(kFirst, {level1("10:00:00").last(10).volume(100), level1("10:00:03").last(10).volume(300)});
    model.quoteAuxCallback(summary("10:00:01"));
    const auto lastOfTrading = model.m_lastContinuous;

    batch(kFirst,
          {level1("15:05:00").last(10).volume(20).status(22), level1("15:05:03").last(10).volume(50).status(22)});
    EXPECT_EQ(historyText(model), "10:00:00 +100 #1 0..0\n"
                                  "10:00:03 +200 #2 0..0\n"
                                  "15:05:00 +20 #0 0..0\n"
                                  "15:05:03 +30 #0 0..0\n");
    EXPECT_EQ(model.m_pendingAux.size(), 1U);
    EXPECT_EQ(model.m_lastContinuous, lastOfTrading);
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamBatchTest, ::testing::Values(1, 2), levelName);

} // namespace
