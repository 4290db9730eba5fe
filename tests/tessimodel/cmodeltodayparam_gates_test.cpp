#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/tessimodel/paramstreams.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <utility>

// Which snapshots are shown, which of them count as a trade, and which is kept for the after-hours phase.
namespace {

using namespace tests;
using TC::RP_SETTLE;
using ::testing::HasSubstr;

constexpr int kNoPrevious = 0; // in place of a phase
constexpr int kTradesBefore = 7;

// What became of a snapshot, in one letter.
//     .  turned away: only the rows ahead of the gate are written, everything else stays as it was
//     s  shown                            c  shown and counted
//     k  shown and kept as the last one of continuous trading      C  the same, and counted
//
// Eight letters a case, for the switches that may let a snapshot through: those of a live one, then those of the last
// of a first batch, each as none, call auction, broker's quotes, both.
struct GateCase {
    int previousStatus;
    int status;
    __int64 previousVolume;
    __int64 volume;
    const char* outcome;
};

const GateCase kUnmarked[] = {
    {kNoPrevious, 13, 0, 500, "cccc cccc"},
    {kNoPrevious, 13, 0, 0, "ssss ssss"},
    {kNoPrevious, 13, 0, -5, "ssss ssss"},
    {13, 13, 500, 501, "cccc cccc"},
    {13, 13, 500, 500, ".sss ssss"},
    {13, 13, 500, 499, ".sss ssss"},
    {13, 13, 0, 0, ".sss ssss"},
    {13, 13, -5, -1, "ssss ssss"}, // it rose, but there is no volume to count
    {13, 13, -5, 0, "ssss ssss"},
    // For others the after-hours phase is a phase like any.
    {kNoPrevious, 22, 0, 500, "cccc cccc"},
    {13, 22, 500, 501, "cccc cccc"},
    {13, 22, 500, 500, ".sss ssss"},
    {13, 22, 500, 30, ".sss ssss"},
    {22, 22, 500, 501, "cccc cccc"},
    {22, 23, 500, 500, ".sss ssss"},
    {22, 13, 500, 499, ".sss ssss"},
};

const GateCase kMarked[] = {
    {kNoPrevious, 13, 0, 500, "CCCC CCCC"},
    {kNoPrevious, 13, 0, 0, "kkkk kkkk"}, // kept ahead of the count, so also without a trade
    {kNoPrevious, 13, 0, -5, "kkkk kkkk"},
    {13, 13, 500, 501, "CCCC CCCC"},
    {13, 13, 500, 500, ".sss ssss"},
    {13, 13, 500, 499, ".sss ssss"},
    {13, 13, -5, 0, "kkkk kkkk"},
    {13, 21, 500, 501, "CCCC CCCC"},
    {13, 21, 500, 500, ".sss ssss"},
    {22, 21, 500, 501, "CCCC CCCC"},
    {22, 21, 500, 500, ".sss ssss"},
    {22, 13, 30, 20, ".sss ssss"},
    // From 22 on neither call auction nor broker opens the gate, and nothing counts.
    {kNoPrevious, 22, 0, 500, "ssss ssss"},
    {kNoPrevious, 22, 0, 0, "ssss ssss"},
    {21, 22, 500, 501, "ssss ssss"},
    {21, 22, 500, 500, "ssss ssss"},
    {21, 22, 500, 30, "ssss ssss"},
    {21, 22, 500, 0, "ssss ssss"},
    {15, 23, 500, 500, "ssss ssss"},
    {22, 22, 500, 501, "ssss ssss"},
    {22, 22, 500, 500, ".... ssss"},
    {22, 22, 500, 499, ".... ssss"},
    {22, 22, 0, 0, ".... ssss"},
    {22, 23, 500, 500, ".... ssss"},
    {23, 22, 500, 500, ".... ssss"},
    {30, 100, 500, 499, ".... ssss"},
};

class ParamGateTest : public ParamStreamTest {
protected:
    struct Switches {
        bool isInit;
        bool auction;
        bool broker;
    };

    void expectOutcomes(const GateCase& gate, bool isMarked)
    {
        std::string outcomes;
        for (const bool isInit : {false, true}) {
            outcomes += isInit ? " " : "";
            for (const auto& [auction, broker] :
                 {std::pair(false, false), std::pair(true, false), std::pair(false, true), std::pair(true, true)})
                outcomes += outcomeOf(gate, isMarked, {isInit, auction, broker});
        }
        EXPECT_EQ(outcomes, gate.outcome) << fmt::format("volume {} in phase {} after {} in phase {}", gate.volume,
                                                         gate.status, gate.previousVolume, gate.previousStatus);
    }

private:
    std::string outcomeOf(const GateCase& gate, bool isMarked, const Switches& switches)
    {
        const quoter::QuoterBasePtr before = startAfter(gate);
        const quoter::QuoterBasePtr kept = model.m_lastContinuous = of(level1("09:10:00").volume(3));
        const quoter::QuoterBasePtr record = of(level1(switches.auction ? "09:20:00" : "10:00:00")
                                                    .last(10)
                                                    .settlement(10.4)
                                                    .volume(gate.volume)
                                                    .status(gate.status));
        terminal.answers.setDataCenterBrovanQuoteMode(switches.broker);
        bool isShown = false;
        const std::string names = namesWrittenBy(model, [&] { isShown = model.calc(record, switches.isInit); });
        terminal.answers.setDataCenterBrovanQuoteMode(false);

        const int counted = model.m_tradeCount - kTradesBefore;
        const bool isKept = model.m_lastContinuous == record;
        EXPECT_TRUE(isKept || model.m_lastContinuous == kept);
        EXPECT_EQ(previous(), isShown ? record : before) << "previous snapshot";
        expectRows(names, isShown, gate, isMarked);
        if (!isShown)
            return counted == 0 && !isKept ? "." : fmt::format("[turned away, {} counted]", counted);
        if (counted != 0 && counted != 1)
            return fmt::format("[shown, {} counted]", counted);
        return counted == 1 ? (isKept ? "C" : "c") : (isKept ? "k" : "s");
    }

    quoter::QuoterBasePtr startAfter(const GateCase& gate)
    {
        model.clear();
        model.m_tradeCount = kTradesBefore;
        if (gate.previousStatus == kNoPrevious)
            return nullptr;
        setPrevious(level1("09:15:00").last(10).volume(gate.previousVolume).status(gate.previousStatus));
        return previous();
    }

    static void expectRows(const std::string& names, bool isShown, const GateCase& gate, bool isMarked)
    {
        const bool afterHours = isMarked && gate.status >= 22;
        const char* ahead = afterHours ? "RP_TRADE_STATUS" : isMarked ? "RP_SETTLE RP_TRADE_STATUS" : "RP_SETTLE";
        if (!isShown) {
            EXPECT_EQ(names, ahead);
            return;
        }
        EXPECT_THAT(names, HasSubstr("RP_TRADE_COUNT"));
        EXPECT_EQ(names.find("RP_SETTLE") != std::string::npos, !afterHours) << names;
        EXPECT_EQ(names.find("RP_TRADE_STATUS") != std::string::npos, isMarked) << names;
    }
};

TEST_P(ParamGateTest, shouldGoByVolumeWhenInstrumentHasNoAfterHoursPhase)
{
    follow(plainStock());
    for (const GateCase& gate : kUnmarked)
        expectOutcomes(gate, false);
}

TEST_P(ParamGateTest, shouldTellPhasesApartWhenInstrumentHasTheAfterHoursPhaseOfOneType)
{
    follow(afterHoursStockA());
    for (const GateCase& gate : kMarked)
        expectOutcomes(gate, true);
}

TEST_P(ParamGateTest, shouldTellPhasesApartWhenInstrumentHasTheAfterHoursPhaseOfTheOtherType)
{
    follow(afterHoursStockB());
    for (const GateCase& gate : kMarked)
        expectOutcomes(gate, true);
}

TEST_P(ParamGateTest, shouldWriteNothingButSettlementWhenVolumeStaysOutsideAnAuction)
{
    follow(plainStock());
    calc(level1("10:00:00").last(10).volume(500));
    bool isShown = true;
    const auto still = of(level1("10:00:03").last(10.50).volume(500).settlement(10.40));
    EXPECT_EQ(writtenBy(model, [&] { isShown = model.calc(still, false); }), "RP_SETTLE 10.40\n");
    EXPECT_FALSE(isShown);
}

TEST_P(ParamGateTest, shouldShowAndNotCountWhenVolumeStaysInAnAuction)
{
    follow(plainStock());
    calc(level1("09:15:03").last(10).volume(500));
    EXPECT_EQ(lineOf(written(level1("09:15:06").last(10.50).volume(500)), TC::RP_LAST), "RP_LAST 10.50 rise");
    EXPECT_EQ(model.m_tradeCount, 1);
}

TEST_P(ParamGateTest, shouldAskForTheAuctionsOfItsMarketWhenVolumeStays)
{
    const auto isShownAt = [this](const char* clock) {
        model.clearQuoterData();
        calc(level1("08:00:00").last(10).volume(500));
        return calc(level1(clock).last(10).volume(500));
    };
    follow(plainStock());
    for (const char* clock : {"09:15:00", "09:24:59.999", "14:57:00", "14:59:59"})
        EXPECT_TRUE(isShownAt(clock)) << clock;
    for (const char* clock : {"09:14:59", "09:25:00", "14:56:59.999", "15:00:00", "16:05:00"})
        EXPECT_FALSE(isShownAt(clock)) << clock;

    follow(hkStock());
    EXPECT_TRUE(isShownAt("16:05:00"));
    EXPECT_FALSE(isShownAt("09:24:00"));

    follow(future());
    EXPECT_FALSE(isShownAt("09:24:00"));
}

// The data centre's answer opens the gate; the user's of the same name does not.
TEST_P(ParamGateTest, shouldTurnAwayWhenOnlyTheUserChoseTheBrokersQuotes)
{
    follow(plainStock());
    terminal.answers.setUserBrovanQuoteMode(true);
    calc(level1("10:00:00").last(10).volume(500));
    EXPECT_FALSE(calc(level1("10:00:03").last(10).volume(500)));
}

struct SettlementCase {
    double settlement;
    int status;
    const char* written;
};

TEST_P(ParamGateTest, shouldShowSettlementWhenItAndTheStatusAreAboveZero)
{
    follow(plainStock());
    const SettlementCase cases[] = {
        {10.40, 13, "RP_SETTLE 10.40"},
        {10.40, 1, "RP_SETTLE 10.40"},
        {10.40, 0, ""},
        {10.40, -1, ""},
        {0, 13, ""},
        {1e-5, 13, ""}, // still as good as none
        {1.1e-5, 13, "RP_SETTLE 0.00"},
        {-10.40, 13, ""},
        {kNoPrice, 13, "RP_SETTLE --"}, // it is above zero
        {kNaN, 13, ""},
    };
    for (const auto& [settlement, status, line] : cases) {
        const auto snapshot = level1().last(10).volume(5).settlement(settlement).status(status);
        EXPECT_EQ(lineOf(written(snapshot, true), RP_SETTLE), line) << settlement << " in " << status;
    }
}

TEST_P(ParamGateTest, shouldShowNoSettlementWhenFutureHasNoOpenInterest)
{
    follow(future());
    EXPECT_EQ(lineOf(written(level1().last(3500).volume(5).settlement(3490.2).status(0)), RP_SETTLE), "");
    EXPECT_EQ(lineOf(written(level1().last(3500).volume(6).settlement(3490.2).status(1)), RP_SETTLE),
              "RP_SETTLE 3490.2");
}

TEST_P(ParamGateTest, shouldShowSettlementByTheNewTickWhenInstrumentChanges)
{
    const auto snapshot = level1().last(10).volume(5).settlement(10.40);
    follow(plainStock());
    EXPECT_EQ(lineOf(written(snapshot, true), RP_SETTLE), "RP_SETTLE 10.40");
    EXPECT_EQ(lineOf(written(snapshot, true), RP_SETTLE), "RP_SETTLE 10.40");
    follow(iopvFund());
    EXPECT_EQ(lineOf(written(snapshot, true), RP_SETTLE), "RP_SETTLE 10.400");
}

TEST_P(ParamGateTest, shouldShowNoSettlementWhenAfterHoursPhaseHasBegun)
{
    follow(afterHoursStockA());
    EXPECT_EQ(lineOf(written(level1().last(10).volume(5).settlement(10.40).status(21)), RP_SETTLE), "RP_SETTLE 10.40");
    EXPECT_EQ(lineOf(written(level1().last(10).volume(9).settlement(10.40).status(22)), RP_SETTLE), "");
}

// The phase is told even of a snapshot that is turned away.
TEST_P(ParamGateTest, shouldShowPhaseWhenSnapshotIsTurnedAway)
{
    follow(afterHoursStockB());
    calc(level1("14:56:00").last(10).volume(500));
    EXPECT_EQ(written(level1("14:56:03").last(10).volume(500).status(16)), "RP_TRADE_STATUS 波动性中断\n");
    calc(level1("15:05:00").last(10).volume(30).status(22));
    EXPECT_EQ(written(level1("15:30:00").last(10).volume(30).status(23)), "RP_TRADE_STATUS 收盘\n");
}

// An instrument may be of both types; it is marked once.
TEST_P(ParamGateTest, shouldCountOnceWhenInstrumentIsOfBothTypes)
{
    follow(ordinary("SH", "688001", {277, 10006}));
    EXPECT_TRUE(calc(level1("10:00:00").last(10).volume(500)));
    EXPECT_TRUE(calc(level1("10:00:03").last(10).volume(501)));
    EXPECT_EQ(model.m_tradeCount, 2);
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamGateTest, ::testing::Values(1, 2), levelName);

} // namespace
