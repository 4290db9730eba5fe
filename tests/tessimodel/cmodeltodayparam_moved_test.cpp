#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/tessimodel/paramstreams.h"

// When a price counts as moved: by a tenth of a tick from the snapshot before.
namespace {

using namespace tests;
using TC::RP_LAST;

const char* const kRowsThatStay = "RP_LAST_SETTLE RP_OPEN RP_HIGH RP_LOW RP_TRADE_COUNT RP_VOLUME_PER_TRADE "
                                  "RP_TOTAL_VOLUME RP_CURRENT_VOLUME RP_TOTAL_AMOUNT RP_OPEN_INTEREST RP_SETTLE "
                                  "RP_TURNOVER";
const char* const kRowsThatMove = "RP_LAST RP_CHANGE RP_CHANGE_SETTLE RP_RISE RP_RISE_SETTLE RP_AMPLITUDE "
                                  "RP_LAST_SETTLE RP_OPEN RP_HIGH RP_LOW RP_TRADE_COUNT RP_VOLUME_PER_TRADE "
                                  "RP_TOTAL_VOLUME RP_CURRENT_VOLUME RP_TOTAL_AMOUNT RP_OPEN_INTEREST RP_SETTLE "
                                  "RP_TOTAL_MARKET_VALUE RP_FLOAT_MARKET_VALUE RP_TURNOVER RP_DIRTY_SETTLE";

class ParamMovedTest : public ParamStreamTest {
protected:
    void followWithTick(double tick)
    {
        follow(plainStock());
        model.m_priceTick = tick;
    }

    static Snapshot<quoter::QuoterAllData> snapshotAt(double last, __int64 volume)
    {
        return level1().last(last).open(10).high(10).low(10).lastSettlement(10).settlement(10).volume(volume);
    }

    std::string namesWritten(double last, __int64 volume, bool isInit = false)
    {
        const auto record = of(snapshotAt(last, volume));
        return namesWrittenBy(model, [&] { model.calc(record, isInit); });
    }

    // Whether the last price is written anew after a snapshot with another.
    bool moves(double before, double now, bool isInit = false)
    {
        model.clearQuoterData();
        calc(snapshotAt(before, 100));
        const std::string names = namesWritten(now, 200, isInit);
        EXPECT_TRUE(names == kRowsThatMove || names == kRowsThatStay) << names;
        return names == kRowsThatMove;
    }
};

TEST_P(ParamMovedTest, shouldMoveTheseRowsWhenPriceMovedByATick)
{
    followWithTick(0.01);
    calc(snapshotAt(10, 100));
    EXPECT_EQ(namesWritten(10.01, 200), kRowsThatMove);
    EXPECT_EQ(namesWritten(10, 300), kRowsThatMove);
}

TEST_P(ParamMovedTest, shouldKeepTheRowsOfThePriceWhenItStayed)
{
    followWithTick(0.01);
    calc(snapshotAt(10, 100));
    EXPECT_EQ(namesWritten(10, 200), kRowsThatStay);
    EXPECT_EQ(namesWritten(10.0009, 300), kRowsThatStay);
    EXPECT_EQ(textOf(model, RP_LAST), "10.00");
}

TEST_P(ParamMovedTest, shouldMoveWhenThereIsNoPreviousSnapshot)
{
    followWithTick(0.01);
    EXPECT_EQ(namesWritten(10, 100), kRowsThatMove);
}

struct MoveCase {
    double tick;
    double before;
    double now;
    bool moves;
};

// Ticks whose tenth a double holds exactly, so that the bound itself can be met.
TEST_P(ParamMovedTest, shouldMoveWhenPriceDiffersByATenthOfATick)
{
    const MoveCase cases[] = {
        {0.625, 10, 10.0625, true}, // exactly a tenth
        {0.625, 10.0625, 10, true},
        {0.625, 10, 10.0624, false},
        {0.625, 10.0624, 10, false},
        {0.625, 10, 10.062, false},
        {0.625, 10, 10.0626, true},
        {10, 100, 101, true},
        {10, 100, 100.999995, false}, // no tolerance of prices here
        {0.01, 10, 10.0011, true},
        {0.01, 10, 9.9989, true},
        {0.01, 10, 10.0009, false},
        {0.01, 10, 9.9991, false},
        {0.001, 10, 10.0001001, true},
        {0.001, 10, 10.0000999, false},
        {0, 10, 10, true}, // without a tick every snapshot moves
        {-0.01, 10, 10, true},
        {0.01, 10, kNaN, true},
        {0.01, kNaN, kNaN, true},
        {kNaN, 10, 10, true},
        {0.01, kNoPrice, kNoPrice, false},
        {0.01, -kNoPrice, kNoPrice, true},
    };
    for (const auto& [tick, before, now, isMove] : cases) {
        followWithTick(tick);
        EXPECT_EQ(moves(before, now), isMove) << before << " to " << now << " by a tick of " << tick;
        EXPECT_TRUE(moves(before, now, true)) << "the last of a first batch always does";
    }
}

// It is the snapshot before that counts, not the price on display: a price may creep away.
TEST_P(ParamMovedTest, shouldKeepTheOldPriceWhenItCreeps)
{
    followWithTick(0.01);
    calc(snapshotAt(10, 100));
    for (int step = 1; step <= 20; ++step)
        calc(snapshotAt(10 + 0.0009 * step, 100 + step));
    EXPECT_EQ(textOf(model, RP_LAST), "10.00");
    EXPECT_EQ(textOf(model, TC::RP_CHANGE), "0.00");
    calc(snapshotAt(10.03, 500));
    EXPECT_EQ(textOf(model, RP_LAST), "10.03");
}

// A snapshot that was turned away is not the one before.
TEST_P(ParamMovedTest, shouldCompareWithTheLastOneShownWhenASnapshotWasTurnedAway)
{
    followWithTick(0.01);
    calc(snapshotAt(10, 100));
    EXPECT_FALSE(calc(level1("10:00:00").last(10.50).volume(100)));
    EXPECT_EQ(namesWritten(10.50, 200), kRowsThatMove);
}

TEST_P(ParamMovedTest, shouldGoByTheAlternativePriceWhenInstrumentIsUnderTheNewLoanRules)
{
    terminal.answers.setNewBondsAuth(true);
    follow(newLoanBond());
    calc(level1().last(10).alternativeLast(99).volume(100));
    EXPECT_EQ(lineOf(written(level1().last(11).alternativeLast(99).volume(200)), RP_LAST), "");
    EXPECT_EQ(lineOf(written(level1().last(11).alternativeLast(98).volume(300)), RP_LAST), "RP_LAST 98.00 rise");
}

// High and low go with every snapshot, their amplitude with the price.
TEST_P(ParamMovedTest, shouldShowHighAndLowButNoNewAmplitudeWhenPriceStayed)
{
    followWithTick(0.01);
    calc(level1().last(10).high(10).low(10).volume(100));
    const std::string still = written(level1().last(10).high(10.50).low(9.50).volume(200));
    EXPECT_EQ(lineOf(still, TC::RP_HIGH), "RP_HIGH 10.50 rise");
    EXPECT_EQ(lineOf(still, TC::RP_LOW), "RP_LOW 9.50 fall");
    EXPECT_EQ(lineOf(still, TC::RP_AMPLITUDE), "");
    EXPECT_EQ(textOf(model, TC::RP_AMPLITUDE), "0.00%");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamMovedTest, ::testing::Values(1, 2), levelName);

} // namespace
