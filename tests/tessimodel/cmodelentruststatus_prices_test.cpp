#include "tests/tessimodel/entruststatus.h"
#include "tests/tessimodel/transactionrows.h"

#include <cmath>

// Last price and last close, and the last close that is written into a snapshot.
namespace {

using namespace tests;

class EntrustPricesTest : public EntrustStreamTest {
protected:
    // Both last prices of a snapshot once a model has shown it: "10 / 20".
    std::string pricesAfter(const Written& written, bool newLoan = false) const
    {
        const quoter::QuoterBasePtr record = of(written);
        EntrustStatus fresh;
        fresh.setNewLoan(newLoan);
        fresh.show(record);
        return valueText(record->lastPrice) + " / " + valueText(alternativeLastOf(record));
    }

    // The model's last price after another snapshot of 10.50.
    double lastAfter(const Written& written, bool newLoan = false) const
    {
        EntrustStatus fresh;
        fresh.show(of(level1().last(10.50)));
        fresh.setNewLoan(newLoan);
        fresh.show(of(written));
        return fresh.m_lastPrice;
    }

    // The model's last close after another snapshot of 9.50.
    double closeAfter(double lastClose, double priceTick = 0.01) const
    {
        EntrustStatus fresh;
        fresh.m_priceTick = priceTick;
        fresh.m_lastClose = 9.5;
        fresh.show(of(level1().last(10.50).lastClose(lastClose)));
        return fresh.m_lastClose;
    }
};

// --- the write into the record --------------------------------------------------------------------------------

TEST_P(EntrustPricesTest, shouldWriteTheLastCloseIntoTheRecordWhenItHasNoLastPrice)
{
    EXPECT_EQ(pricesAfter(level1().last(0).alternativeLast(20).lastClose(9.9)), "9.9 / 20");
    EXPECT_EQ(pricesAfter(level1().last(0).alternativeLast(0).lastClose(9.9)), "9.9 / 0");
    EXPECT_EQ(lastAfter(level1().last(0).alternativeLast(20).lastClose(9.9)), 9.9);
}

TEST_P(EntrustPricesTest, shouldWriteTheLastCloseIntoTheAlternativePriceWhenNewLoanIsSet)
{
    EXPECT_EQ(pricesAfter(level1().last(0).alternativeLast(0).lastClose(9.9), true), "0 / 9.9");
    EXPECT_EQ(pricesAfter(level1().last(10).alternativeLast(0).lastClose(9.9), true), "10 / 9.9");
    EXPECT_EQ(pricesAfter(level1().last(0).alternativeLast(20).lastClose(9.9), true), "0 / 20");
    EXPECT_EQ(lastAfter(level1().last(10).alternativeLast(0).lastClose(9.9), true), 9.9);
    EXPECT_EQ(lastAfter(level1().last(10).alternativeLast(20).lastClose(9.9), true), 20);
}

TEST_P(EntrustPricesTest, shouldLeaveTheRecordAloneWhenItHasALastPrice)
{
    for (const bool newLoan : {false, true})
        EXPECT_EQ(pricesAfter(level1().last(10).alternativeLast(20).lastClose(9.9), newLoan), "10 / 20");
    for (const double some : {1.1e-5, -1.1e-5, -10.0, kNoPrice, kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(pricesAfter(level1().last(some).lastClose(9.9)), valueText(some) + " / 0");
        EXPECT_EQ(pricesAfter(level1().alternativeLast(some).lastClose(9.9), true), "0 / " + valueText(some));
    }
}

TEST_P(EntrustPricesTest, shouldTakeAPriceForMissingWhenItIsWithinToleranceOfZero)
{
    for (const double none : {1e-5, -1e-5, 1e-9, -0.0}) {
        EXPECT_EQ(pricesAfter(level1().last(none).lastClose(9.9)), "9.9 / 0");
        EXPECT_EQ(pricesAfter(level1().alternativeLast(none).lastClose(9.9), true), "0 / 9.9");
    }
}

// It is written whatever it is. What is then read again is the last price if it is finite.
TEST_P(EntrustPricesTest, shouldWriteTheLastCloseWhenItIsUnusable)
{
    EXPECT_EQ(pricesAfter(level1().last(1e-6).lastClose(0)), "0 / 0");
    EXPECT_EQ(lastAfter(level1().last(1e-6).lastClose(0)), 0);
    EXPECT_EQ(pricesAfter(level1().lastClose(kNoPrice)), "DBL_MAX / 0");
    EXPECT_EQ(lastAfter(level1().lastClose(kNoPrice)), kNoPrice);
    EXPECT_EQ(pricesAfter(level1().lastClose(kNaN)), "nan / 0");
    EXPECT_EQ(lastAfter(level1().lastClose(kNaN)), 10.50);
    EXPECT_EQ(pricesAfter(level1().lastClose(-kInfinity)), "-inf / 0");
    EXPECT_EQ(lastAfter(level1().lastClose(-kInfinity)), 10.50);
    EXPECT_EQ(pricesAfter(level1().lastClose(kNaN), true), "0 / nan");
}

// The record's last close, not the model's own.
TEST_P(EntrustPricesTest, shouldWriteTheRecordsLastCloseWhenTheModelHasAnother)
{
    follow();
    ASSERT_EQ(model.m_lastClose, 10);
    const auto record = of(level1().lastClose(0.001));
    model.live({record});
    EXPECT_EQ(record->lastPrice, 0.001);
    EXPECT_EQ(model.m_lastPrice, 0.001);
    EXPECT_EQ(model.m_lastClose, 10) << "too small to be one";
}

TEST_P(EntrustPricesTest, shouldBeSeenByEveryLaterReaderWhenTheLastCloseIsWritten)
{
    follow();
    const auto record = of(level1().volume(5).lastClose(9.9));
    model.live({record});
    EXPECT_EQ(model.m_lastPrice, 9.9);
    Transactions ticks;
    ticks.setStock(keyOf("SZ", "000001"));
    ticks.live({record});
    EXPECT_EQ(ticks.m_datas.first().price, 9.9);
    EntrustStatus another;
    another.show(record);
    EXPECT_EQ(another.m_lastPrice, 9.9);
}

// Each record is its own: that of before, and the ones passed over, stay as they came.
TEST_P(EntrustPricesTest, shouldWriteIntoNoOtherRecordWhenOneIsShown)
{
    follow();
    const auto before = of(level1().volume(1).lastClose(9.9));
    const auto shown = of(level1().volume(2).lastClose(9.9));
    const auto beforeAll = of(level1().volume(0).lastClose(9.9));
    model.history({beforeAll, before, shown});
    EXPECT_EQ(beforeAll->lastPrice, 0);
    EXPECT_EQ(before->lastPrice, 0);
    EXPECT_EQ(shown->lastPrice, 9.9);
    const auto dropped = of(level1().volume(3).lastClose(9.9));
    model.live({dropped, of(level1().volume(4).last(10))});
    EXPECT_EQ(dropped->lastPrice, 0);
}

TEST_P(EntrustPricesTest, shouldReadAgainWhatIsWrittenWhenTheSameRecordIsShownTwice)
{
    const auto record = of(level1().lastClose(9.9));
    model.show(record);
    model.setNewLoan(true);
    model.show(record);
    EXPECT_EQ(record->lastPrice, 9.9);
    EXPECT_EQ(alternativeLastOf(record), 9.9);
}

// --- last price -----------------------------------------------------------------------------------------------

TEST_P(EntrustPricesTest, shouldTakeTheLastPriceWhenItIsFinite)
{
    for (const double price : {10.0, 1.1e-5, -3.0, kNoPrice, -kNoPrice}) {
        EXPECT_EQ(lastAfter(level1().last(price).lastClose(9.9)), price);
        EXPECT_EQ(lastAfter(level1().last(7).alternativeLast(price).lastClose(9.9), true), price);
    }
    for (const double none : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(lastAfter(level1().last(none).lastClose(9.9)), 10.50);
        EXPECT_EQ(lastAfter(level1().last(7).alternativeLast(none).lastClose(9.9), true), 10.50);
    }
}

// --- last close -----------------------------------------------------------------------------------------------

TEST_P(EntrustPricesTest, shouldTakeTheLastCloseWhenItIsGreaterThanTheStep)
{
    EXPECT_EQ(closeAfter(9.9), 9.9);
    EXPECT_EQ(closeAfter(-9.9), -9.9) << "by its size";
    EXPECT_EQ(closeAfter(0), 9.5);
    EXPECT_EQ(closeAfter(0.25, 0.25), 9.5) << "the step itself is none";
    EXPECT_EQ(closeAfter(-0.25, 0.25), 9.5);
    EXPECT_EQ(closeAfter(std::nextafter(0.25, 1), 0.25), std::nextafter(0.25, 1)) << "no tolerance";
    EXPECT_EQ(closeAfter(std::nextafter(-0.25, -1), 0.25), std::nextafter(-0.25, -1));
    EXPECT_EQ(closeAfter(0.2, 0.25), 9.5);
    EXPECT_EQ(closeAfter(kNoPrice), kNoPrice) << "DBL_MAX is a number like any";
    EXPECT_EQ(closeAfter(-kNoPrice), -kNoPrice);
    for (const double none : {kNaN, kInfinity, -kInfinity})
        EXPECT_EQ(closeAfter(none), 9.5);
    EXPECT_EQ(closeAfter(9.9, kNaN), 9.5);
    EXPECT_EQ(closeAfter(9.9, 0), 9.9);
    EXPECT_EQ(closeAfter(0, 0), 9.5);
}

// Not a tenth of the step, as for the prices of the rows.
TEST_P(EntrustPricesTest, shouldMeasureTheLastCloseByTheDefaultStepWhenThereIsNoInstrument)
{
    model.show(of(level1().last(10).lastClose(0.001)));
    EXPECT_EQ(model.m_lastClose, kNoPrice);
    model.show(of(level1().last(10).lastClose(0.0011)));
    EXPECT_EQ(model.m_lastClose, 0.0011);
}

TEST_P(EntrustPricesTest, shouldReplaceTheInstrumentsLastCloseWhenASnapshotBringsOne)
{
    follow();
    model.live({of(level1().last(10).lastClose(9.9))});
    EXPECT_EQ(model.m_lastClose, 9.9);
    EXPECT_EQ(model.getLastClosePrice(), 9.9);
    model.live({of(level1().last(10))});
    EXPECT_EQ(model.m_lastClose, 9.9);
}

// The last price has no part in it, nor has the form in which it is read.
TEST_P(EntrustPricesTest, shouldTakeTheLastCloseWhenThereIsNoLastPrice)
{
    for (const bool newLoan : {false, true}) {
        model.clear();
        model.setNewLoan(newLoan);
        model.show(of(level1().last(kNaN).alternativeLast(kNaN).lastClose(9.9)));
        EXPECT_EQ(figuresText(model), "tick 0, kept 0, last DBL_MAX, close 9.9");
    }
}

INSTANTIATE_TEST_SUITE_P(BothStreams, EntrustPricesTest, ::testing::Values(1, 2), levelName);

} // namespace
