#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/tessimodel/paramstreams.h"

// Snapshots that a table without an instrument is handed past its callback: prices by the tick of 0.001 against no last
// close at all, and nothing that takes shares, interest or the hours of a market.
namespace {

using namespace tests;

using ParamNoInstrumentTest = ParamStreamTest;

const std::string kPriceRows = "RP_LAST 10.500 fall\n"
                               "RP_CHANGE -- fall\n"
                               "RP_CHANGE_SETTLE 0.300 rise\n"
                               "RP_RISE -100.00% fall\n"
                               "RP_RISE_SETTLE 2.94% rise\n"
                               "RP_AMPLITUDE 0.00%\n"
                               "RP_LAST_SETTLE 10.200\n"
                               "RP_OPEN 10.100 fall\n"
                               "RP_HIGH 10.600 fall\n"
                               "RP_LOW 9.900 fall\n";

TEST_P(ParamNoInstrumentTest, shouldWriteRowsOfTheRecordAloneWhenThereIsNoInstrument)
{
    EXPECT_EQ(writtenByRefresh(ordinarySnapshot("09:20:00")), kPriceRows + "RP_TOTAL_VOLUME 5000\n"
                                                                           "RP_TOTAL_AMOUNT 525.00万\n"
                                                                           "RP_OPEN_INTEREST 13\n");
    EXPECT_EQ(written(ordinarySnapshot("09:20:00")), kPriceRows + "RP_TRADE_COUNT 1\n"
                                                                  "RP_VOLUME_PER_TRADE 5000.00\n"
                                                                  "RP_TOTAL_VOLUME 5000\n"
                                                                  "RP_CURRENT_VOLUME 5000\n"
                                                                  "RP_TOTAL_AMOUNT 525.00万\n"
                                                                  "RP_OPEN_INTEREST 13\n"
                                                                  "RP_SETTLE 10.400\n");
    EXPECT_EQ(written(ordinarySnapshot("09:20:03")), "RP_SETTLE 10.400\n") << "no market, no call auction";
}

// Nothing stands for the price that is missing, so the price is 0 and falls.
TEST_P(ParamNoInstrumentTest, shouldShowChangesOfZeroWhenThereIsNoInstrumentAndNoPrice)
{
    const auto record = level1().last(0).bid(10.50).lastClose(10.30).lastSettlement(10.20).volume(5).status(12);
    for (const std::string& rows : {written(record), writtenByRefresh(record)}) {
        EXPECT_EQ(lineOf(rows, TC::RP_LAST), "RP_LAST 0.000 fall");
        EXPECT_EQ(lineOf(rows, TC::RP_CHANGE), "RP_CHANGE -- fall");
        EXPECT_EQ(lineOf(rows, TC::RP_CHANGE_SETTLE), "RP_CHANGE_SETTLE -10.200 fall");
        EXPECT_EQ(lineOf(rows, TC::RP_RISE), "RP_RISE -100.00% fall");
        EXPECT_EQ(lineOf(rows, TC::RP_RISE_SETTLE), "RP_RISE_SETTLE -100.00% fall");
    }
    EXPECT_EQ(model.getLastPrice(of(record)), 0);
}

TEST_P(ParamNoInstrumentTest, shouldRememberTheDayWhenThereIsNoInstrument)
{
    EXPECT_EQ(writtenByPass({level1("14:59:57").high(10.60).low(9.90).volume(500),
                             level1("15:05:00").volume(530).status(22), level1("15:05:03").volume(999)}),
              "RP_CURRENT_VOLUME 30\n");
    EXPECT_EQ(historyText(model), "14:59:57 +500 #1 9.9..10.6\n"
                                  "15:05:00 +30 #2 0..0\n");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamNoInstrumentTest, ::testing::Values(1, 2), levelName);

} // namespace
