#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/tessimodel/paramstreams.h"

// The price that stands in for a trade price, and the four rows of change and rise that are worked out from either.
namespace {

using namespace tests;

class ParamSubstituteTest : public ParamStreamTest {
protected:
    void followWith(const std::string& market, double threshold = 0, double lastClose = 10)
    {
        standin::InstrumentDescription description = ordinary(market, "600000");
        description.zeroPriceThreshold = threshold;
        description.lastClose = lastClose;
        follow(description);
    }

    double substitute(const Written& record) { return model.getLastPrice(of(record)); }

    static Snapshot<quoter::QuoterAllData> withBook(int status)
    {
        return level1().bid(9.98).ask(10.02).lastClose(9.90).status(status);
    }
};

TEST_P(ParamSubstituteTest, shouldGiveAPriceOnlyInCallAuctionsWhenMarketIsAStockExchange)
{
    for (const char* market : {"SH", "SZ", "BJ", "SSE", "SZSE"}) {
        followWith(market);
        for (int status = -1; status <= 30; ++status) {
            const bool isAuction = status == 12 || status == 18 || status == 19;
            EXPECT_EQ(substitute(withBook(status)), isAuction ? 9.98 : 0) << market << ' ' << status;
        }
    }
}

// The market counts as a whole; a future has its open interest in the place of the phase.
TEST_P(ParamSubstituteTest, shouldGiveAPriceInAnyPhaseWhenMarketIsAnother)
{
    for (const char* market : {"HK", "IF", "SHO", "SZO", "SHFE", "S", "sh"}) {
        followWith(market);
        for (const int status : {0, 12, 13, 22, 118022})
            EXPECT_EQ(substitute(withBook(status)), 9.98) << market << ' ' << status;
    }
}

TEST_P(ParamSubstituteTest, shouldGiveNoneWhenThereIsATradePrice)
{
    for (const char* market : {"SH", "HK"}) {
        followWith(market);
        EXPECT_EQ(substitute(withBook(12).last(10)), 0) << market;
        EXPECT_EQ(substitute(withBook(12).last(1e-7)), 0) << "no tolerance, " << market;
        EXPECT_EQ(substitute(withBook(12).last(-10)), 0) << "by its size, " << market;
        EXPECT_EQ(substitute(withBook(12).last(kNoPrice)), 0) << market;
        EXPECT_EQ(substitute(withBook(12).last(0)), 9.98) << market;
        EXPECT_EQ(substitute(withBook(12).last(-0.0)), 9.98) << market;
    }
}

TEST_P(ParamSubstituteTest, shouldGiveASubstituteWhenTradePriceIsNotAboveTheThreshold)
{
    for (const char* market : {"SH", "HK"}) {
        followWith(market, 0.25);
        EXPECT_EQ(substitute(withBook(12).last(0.25)), 9.98) << "the threshold itself is no price, " << market;
        EXPECT_EQ(substitute(withBook(12).last(-0.25)), 9.98) << market;
        EXPECT_EQ(substitute(withBook(12).last(0.250001)), 0) << market;
        EXPECT_EQ(substitute(withBook(12).last(-0.250001)), 0) << market;
    }
    followWith("SH", -1);
    EXPECT_EQ(substitute(withBook(12).last(0)), 0) << "every price is above it";
}

TEST_P(ParamSubstituteTest, shouldGiveTheFirstOfBidAskAndCloseWhenSomeAreMissing)
{
    for (const char* market : {"SH", "HK"}) {
        followWith(market);
        EXPECT_EQ(substitute(level1().bid(9.98).ask(10.02).lastClose(9.90).status(12)), 9.98) << market;
        EXPECT_EQ(substitute(level1().ask(10.02).lastClose(9.90).status(12)), 10.02) << market;
        EXPECT_EQ(substitute(level1().lastClose(9.90).status(12)), 9.90) << "the record's, " << market;
        EXPECT_EQ(substitute(level1().status(12)), 0) << market;
        EXPECT_EQ(substitute(level1().bid(1e-5).ask(-1e-5).lastClose(1.1e-5).status(12)), 1.1e-5) << market;
        EXPECT_EQ(substitute(level1().bid(-9.98).ask(10.02).status(12)), -9.98) << market;
        EXPECT_EQ(substitute(level1().bid(kNoPrice).ask(10.02).status(12)), kNoPrice) << market;
    }
}

// Only the other markets ask for something above the threshold; what is then given need not be it.
TEST_P(ParamSubstituteTest, shouldAskForAPriceAboveTheThresholdWhenMarketIsAnotherOne)
{
    followWith("HK", 0.25, 0);
    EXPECT_EQ(substitute(level1().bid(0.25).ask(0.25)), 0);
    EXPECT_EQ(substitute(level1().bid(-0.25).ask(-0.25)), 0);
    EXPECT_EQ(substitute(level1().bid(0.250001).ask(0.25)), 0.250001);
    EXPECT_EQ(substitute(level1().bid(-0.250001).ask(0.25)), -0.250001);
    EXPECT_EQ(substitute(level1().bid(0.25).ask(0.250001)), 0.25);
    EXPECT_EQ(substitute(level1().bid(0.2).ask(-0.3)), 0.2);

    followWith("SH", 0.25, 0);
    EXPECT_EQ(substitute(level1().bid(0.2).ask(0.2).status(12)), 0.2);
    EXPECT_EQ(substitute(level1().lastClose(0.2).status(12)), 0.2);
}

// The close of the question is the instrument's for level 1 and the record's for level 2; the answer is the record's.
TEST_P(ParamSubstituteTest, shouldAskTheInstrumentsCloseInLevel1AndTheRecordsInLevel2WhenTheyDiffer)
{
    const bool isLevel1 = GetParam() == 1;
    followWith("HK", 0.25, 10);
    EXPECT_EQ(substitute(level1().lastClose(0.2)), isLevel1 ? 0.2 : 0);
    EXPECT_EQ(substitute(level1().bid(0.2).lastClose(0)), isLevel1 ? 0.2 : 0);
    EXPECT_EQ(substitute(level1().lastClose(9.90)), 9.90);
    followWith("HK", 0.25, 0.25);
    EXPECT_EQ(substitute(level1().lastClose(9.90)), isLevel1 ? 0 : 9.90);
    EXPECT_EQ(substitute(level1().lastClose(-9.90)), isLevel1 ? 0 : -9.90);
    followWith("HK", 0.25, -10);
    EXPECT_EQ(substitute(level1().lastClose(0.2)), isLevel1 ? 0.2 : 0);
    EXPECT_EQ(substitute(level1().lastClose(0)), 0);
}

// The last close that the table goes by is another one.
TEST_P(ParamSubstituteTest, shouldNotAskForTheLastCloseOfTheTableWhenItIsAnotherOne)
{
    followWith("HK", 0.25, 0.25);
    model.setLastClose(10);
    EXPECT_EQ(substitute(level1().bid(0.2)), 0);
}

TEST_P(ParamSubstituteTest, shouldReadTheAlternativePriceWhenInstrumentIsUnderTheNewLoanRules)
{
    followWith("SH");
    model.m_isNewLoan = true;
    EXPECT_EQ(substitute(withBook(12).last(10).alternativeLast(0)), 9.98);
    EXPECT_EQ(substitute(withBook(12).last(0).alternativeLast(10)), 0);
}

TEST_P(ParamSubstituteTest, shouldGiveNoneWhenThereIsNoInstrumentOrNoSnapshot)
{
    EXPECT_EQ(substitute(withBook(12)), 0);
    followWith("HK");
    EXPECT_EQ(model.getLastPrice(nullptr), 0);
    EXPECT_EQ(model.getLastPrice(order(1).buy(10)), 0);
    EXPECT_EQ(model.getLastPrice(order(1).buy(0)), 0);
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamSubstituteTest, ::testing::Values(1, 2), levelName);

class ParamChangesTest : public ParamStreamTest {
protected:
    // The rows of change and rise, through setParam alone.
    std::string changes(const Written& record)
    {
        const quoter::QuoterBasePtr snapshot = of(record);
        return writtenBy(model, [&] { model.setParam(snapshot); });
    }
};

TEST_P(ParamChangesTest, shouldShowChangesOfTheTradePriceWhenThereIsOne)
{
    follow(plainStock());
    EXPECT_EQ(changes(level1().last(10.50).lastSettlement(10.40)), "RP_CHANGE 0.50 rise\n"
                                                                   "RP_CHANGE_SETTLE 0.10 rise\n"
                                                                   "RP_RISE 5.00% rise\n"
                                                                   "RP_RISE_SETTLE 0.96% rise\n");
    EXPECT_EQ(changes(level1().last(10).lastSettlement(10.40)), "RP_CHANGE 0.00 equal\n"
                                                                "RP_CHANGE_SETTLE -0.40 fall\n"
                                                                "RP_RISE 0.00% equal\n"
                                                                "RP_RISE_SETTLE -3.85% fall\n");
    // Without a settlement the change is the whole price, and there is no rise.
    EXPECT_EQ(changes(level1().last(9)), "RP_CHANGE -1.00 fall\n"
                                         "RP_CHANGE_SETTLE 9.00 rise\n"
                                         "RP_RISE -10.00% fall\n");
    EXPECT_EQ(changes(level1().last(-9)), "RP_CHANGE -19.00 fall\n"
                                          "RP_CHANGE_SETTLE -9.00 fall\n"
                                          "RP_RISE -190.00% fall\n");
    EXPECT_EQ(changes(level1().last(kNoPrice).lastSettlement(10)), "RP_CHANGE -- rise\n"
                                                                   "RP_CHANGE_SETTLE -- rise\n"
                                                                   "RP_RISE 非法值 rise\n"
                                                                   "RP_RISE_SETTLE 非法值 rise\n");
}

TEST_P(ParamChangesTest, shouldShowChangesOfTheSubstituteWhenThereIsNoTradePrice)
{
    follow(plainStock());
    EXPECT_EQ(changes(level1().bid(10.50).lastSettlement(10.40).status(12)), "RP_CHANGE 0.50 rise\n"
                                                                             "RP_CHANGE_SETTLE 0.10 rise\n"
                                                                             "RP_RISE 5.00% rise\n"
                                                                             "RP_RISE_SETTLE 0.96% rise\n");
    EXPECT_EQ(changes(level1().ask(9.50).status(18)), "RP_CHANGE -0.50 fall\n"
                                                      "RP_CHANGE_SETTLE 9.50 rise\n"
                                                      "RP_RISE -5.00% fall\n");
}

TEST_P(ParamChangesTest, shouldShowNoChangeWhenThereIsNoSubstituteEither)
{
    follow(plainStock());
    EXPECT_EQ(changes(level1().bid(10.50).lastSettlement(10.40).status(13)), "RP_CHANGE 0.00 equal\n"
                                                                             "RP_CHANGE_SETTLE 0.00 equal\n"
                                                                             "RP_RISE 0.00% equal\n"
                                                                             "RP_RISE_SETTLE 0.00% equal\n");
    EXPECT_EQ(changes(level1().status(12)), "RP_CHANGE 0.00 equal\n"
                                            "RP_CHANGE_SETTLE 0.00 equal\n"
                                            "RP_RISE 0.00% equal\n");
}

// A price within the tolerance of zero is no trade price here, and too much of one to be given a substitute.
TEST_P(ParamChangesTest, shouldShowNoChangeWhenTradePriceIsWithinToleranceOfZero)
{
    follow(plainStock());
    for (const double last : {1e-5, -1e-5})
        EXPECT_EQ(lineOf(changes(level1().last(last).bid(10.50).status(12)), TC::RP_CHANGE), "RP_CHANGE 0.00 equal");
    EXPECT_EQ(lineOf(changes(level1().last(1.1e-5).bid(10.50).status(12)), TC::RP_CHANGE), "RP_CHANGE -10.00 fall");
}

TEST_P(ParamChangesTest, shouldLeaveOutRisesWhenTheirBaseIsZero)
{
    follow(plainStock());
    for (const double none : {0.0, 1e-5, -1e-5}) {
        model.setLastClose(none);
        for (const double last : {10.50, 0.0}) {
            const auto record = of(level1().last(last).bid(10.50).lastSettlement(none).status(12));
            EXPECT_EQ(namesWrittenBy(model, [&] { model.setParam(record); }), "RP_CHANGE RP_CHANGE_SETTLE");
        }
    }
    model.setLastClose(1.1e-5);
    const std::string rows = changes(level1().last(2.2e-5).lastSettlement(-1.1e-5));
    EXPECT_EQ(lineOf(rows, TC::RP_RISE), "RP_RISE 100.00% rise");
    EXPECT_EQ(lineOf(rows, TC::RP_RISE_SETTLE), "RP_RISE_SETTLE -300.00% rise");
}

// Against a last close that is not known the price fell by all of it.
TEST_P(ParamChangesTest, shouldShowAFallWhenLastCloseIsMissing)
{
    follow(plainStock());
    model.setLastClose(kNoPrice);
    EXPECT_EQ(changes(level1().last(10.50)), "RP_CHANGE -- fall\n"
                                             "RP_CHANGE_SETTLE 10.50 rise\n"
                                             "RP_RISE -100.00% fall\n");
    EXPECT_EQ(lineOf(changes(level1().last(10.50).lastSettlement(kNoPrice)), TC::RP_RISE_SETTLE),
              "RP_RISE_SETTLE -100.00% fall");
    EXPECT_EQ(changes(level1().bid(10.50).status(12)), "RP_CHANGE -- fall\n"
                                                       "RP_CHANGE_SETTLE 10.50 rise\n"
                                                       "RP_RISE -100.00% fall\n");
}

TEST_P(ParamChangesTest, shouldTakeAPriceOfZeroAtItsWordWhenThereIsNoInstrument)
{
    model.setLastClose(10);
    EXPECT_EQ(changes(level1().last(0).bid(10.50).lastSettlement(8).status(12)), "RP_CHANGE -10.000 fall\n"
                                                                                 "RP_CHANGE_SETTLE -8.000 fall\n"
                                                                                 "RP_RISE -100.00% fall\n"
                                                                                 "RP_RISE_SETTLE -100.00% fall\n");
}

TEST_P(ParamChangesTest, shouldShowTheRiseOfTheSubstituteWhenASnapshotHasOnlyABid)
{
    follow(plainStock());
    const std::string rows = written(level1("09:20:00").bid(10.50).status(12));
    EXPECT_EQ(lineOf(rows, TC::RP_RISE), "RP_RISE 5.00% rise");
    EXPECT_EQ(lineOf(rows, TC::RP_LAST), "RP_LAST 0.00 fall") << "the price itself is not substituted";
    EXPECT_EQ(lineOf(writtenByRefresh(level1("09:20:00").bid(10.50).status(12).volume(1)), TC::RP_RISE),
              "RP_RISE 5.00% rise");
}

TEST_P(ParamChangesTest, shouldWriteNothingWhenRecordIsNoSnapshot)
{
    follow(plainStock());
    EXPECT_EQ(writtenBy(model, [this] { model.setParam(order(1).buy(10)); }), "");
    EXPECT_EQ(writtenBy(model, [this] { model.setParam(nullptr); }), "");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamChangesTest, ::testing::Values(1, 2), levelName);

} // namespace
