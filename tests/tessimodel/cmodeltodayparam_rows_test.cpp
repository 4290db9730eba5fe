#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/tessimodel/paramstreams.h"

// All rows that one snapshot writes, for each class of instrument.
namespace {

using namespace tests;
using TC::RP_GDR_PREMIUM;
using TC::RP_IOPV;

class ParamRowsTest : public ParamStreamTest {};

TEST_P(ParamRowsTest, shouldWriteTheseRowsWhenFirstSnapshotComes)
{
    follow(plainStock());
    EXPECT_EQ(written(ordinarySnapshot("10:00:00")), kOrdinaryPrices + "RP_HIGH 10.60 rise\n"
                                                                       "RP_LOW 9.90 fall\n"
                                                                       "RP_TRADE_COUNT 1\n"
                                                                       "RP_VOLUME_PER_TRADE 5000.00\n"
                                                                       "RP_TOTAL_VOLUME 5000\n"
                                                                       "RP_CURRENT_VOLUME 5000\n"
                                                                       "RP_TOTAL_AMOUNT 525.00万\n"
                                                                       "RP_OPEN_INTEREST 13\n"
                                                                       "RP_SETTLE 10.40\n"
                                                                       "RP_TOTAL_MARKET_VALUE 21亿\n"
                                                                       "RP_FLOAT_MARKET_VALUE 5250万\n"
                                                                       "RP_TURNOVER 10.00%\n"
                                                                       "RP_DIRTY_SETTLE 10.50\n");
}

TEST_P(ParamRowsTest, shouldWriteTheseRowsWhenNextSnapshotComes)
{
    follow(plainStock());
    calc(ordinarySnapshot("10:00:00"));
    EXPECT_EQ(written(level1("10:00:03")
                          .last(9.50)
                          .open(10)
                          .high(10.60)
                          .low(9.50)
                          .lastSettlement(10.20)
                          .amount(5.37e6)
                          .volume(5125)
                          .status(16)),
              "RP_LAST 9.50 fall\n"
              "RP_CHANGE -0.50 fall\n"
              "RP_CHANGE_SETTLE -0.70 fall\n"
              "RP_RISE -5.00% fall\n"
              "RP_RISE_SETTLE -6.86% fall\n"
              "RP_AMPLITUDE 11.00%\n"
              "RP_LAST_SETTLE 10.20\n"
              "RP_OPEN 10.00 equal\n"
              "RP_HIGH 10.60 rise\n"
              "RP_LOW 9.50 fall\n"
              "RP_TRADE_COUNT 2\n"
              "RP_VOLUME_PER_TRADE 2562.50\n"
              "RP_TOTAL_VOLUME 5125\n"
              "RP_CURRENT_VOLUME 125\n"
              "RP_TOTAL_AMOUNT 537.00万\n"
              "RP_OPEN_INTEREST 16\n"
              "RP_TOTAL_MARKET_VALUE 19亿\n"
              "RP_FLOAT_MARKET_VALUE 4750万\n"
              "RP_TURNOVER 10.25%\n"
              "RP_DIRTY_SETTLE 9.50\n");
}

TEST_P(ParamRowsTest, shouldWriteCleanPricesAndInterestWhenInstrumentIsABond)
{
    follow(bond());
    EXPECT_EQ(written(level1().last(101.6).open(100).high(102).low(99).volume(40000).amount(4.06e7)),
              "RP_LAST 101.600 rise\n"
              "RP_CHANGE 1.600 rise\n"
              "RP_CHANGE_SETTLE 101.600 rise\n"
              "RP_RISE 1.60% rise\n"
              "RP_AMPLITUDE 3.00%\n"
              "RP_LAST_SETTLE 0.000\n"
              "RP_OPEN 100.000 equal\n"
              "RP_HIGH 102.000 rise\n"
              "RP_LOW 99.000 fall\n"
              "RP_TRADE_COUNT 1\n"
              "RP_VOLUME_PER_TRADE 40000.00\n"
              "RP_TOTAL_VOLUME 4.00万\n"
              "RP_CURRENT_VOLUME 40000\n"
              "RP_TOTAL_AMOUNT 4060.00万\n"
              "RP_OPEN_INTEREST 13\n"
              "RP_TOTAL_MARKET_VALUE 2亿\n"
              "RP_FLOAT_MARKET_VALUE 508万\n"
              "RP_TURNOVER 80.00%\n"
              "RP_DIRTY_SETTLE 102.850\n");
}

TEST_P(ParamRowsTest, shouldWriteOpenInterestAndSettlementsWhenInstrumentIsAFuture)
{
    follow(future());
    EXPECT_EQ(written(level1()
                          .last(3510.4)
                          .open(3490)
                          .high(3520)
                          .low(3485)
                          .lastSettlement(3480)
                          .settlement(3505.6)
                          .status(118022)
                          .volume(60000)
                          .amount(6.3e10)),
              "RP_LAST 3510.4 rise\n"
              "RP_CHANGE 10.4 rise\n"
              "RP_CHANGE_SETTLE 30.4 rise\n"
              "RP_RISE 0.30% rise\n"
              "RP_RISE_SETTLE 0.87% rise\n"
              "RP_AMPLITUDE 1.00%\n"
              "RP_LAST_SETTLE 3480.0\n"
              "RP_OPEN 3490.0 fall\n"
              "RP_HIGH 3520.0 rise\n"
              "RP_LOW 3485.0 fall\n"
              "RP_TRADE_COUNT 1\n"
              "RP_VOLUME_PER_TRADE 60000.00\n"
              "RP_TOTAL_VOLUME 6.00万\n"
              "RP_CURRENT_VOLUME 60000\n"
              "RP_TOTAL_AMOUNT 630.00亿\n"
              "RP_OPEN_INTEREST 118022\n"
              "RP_SETTLE 3505.6\n"
              "RP_TOTAL_MARKET_VALUE 0\n"
              "RP_FLOAT_MARKET_VALUE 0\n"
              "RP_DIRTY_SETTLE 3510.4\n");
}

TEST_P(ParamRowsTest, shouldShowNetValueByItsOwnTickWhenInstrumentIsAFundWithOne)
{
    standin::InstrumentDescription fund = iopvFund();
    fund.lastClose = 1.2;
    fund.priceTick = 0.01;
    follow(fund);
    const auto line = [this](double iopv) {
        return lineOf(written(level1().last(1.2).volume(5).iopv(iopv), true), RP_IOPV);
    };
    EXPECT_EQ(line(1.23456), "RP_IOPV 1.2346 rise");
    EXPECT_EQ(line(1.2), "RP_IOPV 1.2000 equal");
    EXPECT_EQ(line(1.1), "RP_IOPV 1.1000 fall");
    EXPECT_EQ(line(1.1e-5), "RP_IOPV 0.0000 fall");
    EXPECT_EQ(line(-1.1), "RP_IOPV -1.1000 fall");
    EXPECT_EQ(line(0), "");
    EXPECT_EQ(line(1e-5), "");
    EXPECT_EQ(line(kNoPrice), "");
    EXPECT_EQ(line(kInfinity), "RP_IOPV -- rise");
    EXPECT_EQ(line(kNaN), "RP_IOPV -- equal");

    follow(plainStock());
    EXPECT_EQ(line(1.23456), "") << "others have none";
}

TEST_P(ParamRowsTest, shouldWriteOnlyTheNetValueBesidesWhenInstrumentIsAFund)
{
    follow(iopvFund());
    EXPECT_EQ(namesWrittenBy(model, [&] { model.calc(of(ordinarySnapshot("10:00:00")), false); }),
              "RP_LAST RP_CHANGE RP_CHANGE_SETTLE RP_RISE RP_RISE_SETTLE RP_AMPLITUDE RP_LAST_SETTLE RP_OPEN RP_HIGH "
              "RP_LOW RP_TRADE_COUNT RP_VOLUME_PER_TRADE RP_TOTAL_VOLUME RP_CURRENT_VOLUME RP_TOTAL_AMOUNT "
              "RP_OPEN_INTEREST RP_SETTLE RP_IOPV RP_TOTAL_MARKET_VALUE RP_FLOAT_MARKET_VALUE RP_TURNOVER "
              "RP_DIRTY_SETTLE");
}

class ParamReceiptTest : public ParamStreamTest {
protected:
    void followWith(const standin::InstrumentDescription& receiptDescription)
    {
        terminal.instruments.add(receiptDescription);
        follow(receiptStock());
    }

    std::string premiumAt(double last) { return lineOf(written(level1().last(last).volume(5), true), RP_GDR_PREMIUM); }
};

// The sign of a discount comes with the number; that of a premium is written by hand.
TEST_P(ParamReceiptTest, shouldShowPremiumOverTheLastPriceWhenThereIsAReceipt)
{
    followWith(receipt());
    EXPECT_EQ(premiumAt(10), "RP_GDR_PREMIUM +5.00% rise");
    EXPECT_EQ(premiumAt(12), "RP_GDR_PREMIUM -12.50% fall");
    EXPECT_EQ(premiumAt(10.50), "RP_GDR_PREMIUM 0.00% equal");
    EXPECT_EQ(premiumAt(10.5001), "RP_GDR_PREMIUM 0.00% equal") << "within the tolerance";
    EXPECT_EQ(premiumAt(10.4999), "RP_GDR_PREMIUM 0.00% equal");
    EXPECT_EQ(premiumAt(10.4998), "RP_GDR_PREMIUM +0.00% rise");
}

TEST_P(ParamReceiptTest, shouldShowNoPremiumWhenThereIsNoPriceOrNoRatio)
{
    followWith(receipt());
    EXPECT_EQ(premiumAt(0), "RP_GDR_PREMIUM 0.00% equal");
    EXPECT_EQ(premiumAt(1e-5), "RP_GDR_PREMIUM 0.00% equal");
    EXPECT_EQ(premiumAt(-10), "RP_GDR_PREMIUM 0.00% equal");
    for (const int half : {0, -2}) {
        standin::InstrumentDescription without = receipt();
        without.intFields[2009] = half;
        followWith(without);
        EXPECT_EQ(premiumAt(10), "RP_GDR_PREMIUM 0.00% equal") << half;
    }
}

TEST_P(ParamReceiptTest, shouldWriteNoPremiumWhenTheReceiptHasNoClose)
{
    for (const double close : {0.0, 1e-5, -1e-5}) {
        standin::InstrumentDescription without = receipt();
        without.doubleFields[3002] = close;
        followWith(without);
        EXPECT_EQ(premiumAt(10), "") << close;
    }
    follow(receiptStock());
    model.m_gdrStock = nullptr;
    EXPECT_EQ(premiumAt(10), "");
}

// A receipt that an instrument before left behind is not looked at.
TEST_P(ParamReceiptTest, shouldWriteNoPremiumWhenInstrumentHasNoReceipt)
{
    followWith(receipt());
    follow(plainStock());
    ASSERT_NE(model.m_gdrStock, nullptr);
    EXPECT_EQ(premiumAt(10), "");
}

// The premium goes with every snapshot, also one whose price stayed.
TEST_P(ParamReceiptTest, shouldWritePremiumWhenPriceStayed)
{
    followWith(receipt());
    calc(level1().last(10).volume(5));
    EXPECT_EQ(lineOf(written(level1().last(10).volume(6)), RP_GDR_PREMIUM), "RP_GDR_PREMIUM +5.00% rise");
}

TEST_P(ParamRowsTest, shouldReadTheAlternativePriceWhenInstrumentIsUnderTheNewLoanRules)
{
    terminal.answers.setNewBondsAuth(true);
    follow(newLoanBond());
    const std::string rows = written(level1().last(10.90).alternativeLast(10.50).high(10.6).low(9.9).volume(5));
    EXPECT_EQ(lineOf(rows, TC::RP_LAST), "RP_LAST 10.50 rise");
    EXPECT_EQ(lineOf(rows, TC::RP_CHANGE), "RP_CHANGE 0.50 rise");
    EXPECT_EQ(lineOf(rows, TC::RP_RISE), "RP_RISE 5.00% rise");
    EXPECT_EQ(lineOf(rows, TC::RP_CHANGE_SETTLE), "RP_CHANGE_SETTLE 10.50 rise");
    EXPECT_EQ(lineOf(rows, TC::RP_DIRTY_SETTLE), "RP_DIRTY_SETTLE 10.50");
    EXPECT_EQ(lineOf(rows, TC::RP_TOTAL_MARKET_VALUE), "RP_TOTAL_MARKET_VALUE 21亿");
}

TEST_P(ParamRowsTest, shouldShowThePhaseAsOpenInterestWhenInstrumentIsASecurity)
{
    follow(plainStock());
    EXPECT_EQ(lineOf(written(level1().last(10).volume(5).status(18)), TC::RP_OPEN_INTEREST), "RP_OPEN_INTEREST 18");
    EXPECT_EQ(lineOf(written(level1().last(10).volume(6).status(-3)), TC::RP_OPEN_INTEREST), "RP_OPEN_INTEREST -3");
}

TEST_P(ParamRowsTest, shouldShowPreviousSettlementAnewWhenPriceOrTickChanges)
{
    const auto line = [this](double lastSettlement) {
        return lineOf(written(level1().volume(5).lastSettlement(lastSettlement), true), TC::RP_LAST_SETTLE);
    };
    follow(plainStock());
    EXPECT_EQ(line(10.40), "RP_LAST_SETTLE 10.40");
    EXPECT_EQ(line(10.40), "RP_LAST_SETTLE 10.40") << "again, though it has not changed";
    EXPECT_EQ(line(10.50), "RP_LAST_SETTLE 10.50");
    EXPECT_EQ(line(0), "RP_LAST_SETTLE 0.00");
    EXPECT_EQ(line(kNoPrice), "RP_LAST_SETTLE --");
    follow(iopvFund());
    EXPECT_EQ(line(kNoPrice), "RP_LAST_SETTLE --");
    EXPECT_EQ(line(10.50), "RP_LAST_SETTLE 10.500");
    follow(plainStock());
    EXPECT_EQ(line(10.50), "RP_LAST_SETTLE 10.50");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamRowsTest, ::testing::Values(1, 2), levelName);
INSTANTIATE_TEST_SUITE_P(BothStreams, ParamReceiptTest, ::testing::Values(1, 2), levelName);

} // namespace
