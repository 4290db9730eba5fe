#include "tests/tessimodel/entruststatus.h"

#include <limits>

// Histories of an instrument with an after-hours phase.
namespace {

using namespace tests;

class EntrustPastCloseTest : public EntrustStreamTest {
protected:
    EntrustPastCloseTest() { followIn("SH"); }

    void followIn(const std::string& market) { follow(market, "688001", {277}); }

    quoter::QuoterBasePtr at(__int64 dayVolume, int status, __int64 bid = 0) const
    {
        return of(level1().last(10).volume(dayVolume).status(status).bid(10.01, bid));
    }

    // "shown 50, kept 30" after a history, which begins at -1 and -1.
    std::string ticksOf(const Records& records)
    {
        model.m_tickVolume = model.m_afterHoursVolume = -1;
        EXPECT_TRUE(model.more(records));
        return fmt::format("shown {}, kept {}", model.m_tickVolume, model.m_afterHoursVolume);
    }

    // What of the batch is kept of the close: "2 after 1"; "-" for what is not of the batch.
    std::string closeOf(const Records& records)
    {
        const quoter::QuoterBasePtr unknown = order(1);
        model.m_closingData = model.m_closingPrevData = unknown;
        EXPECT_TRUE(model.more(records));
        const auto place = [&](const quoter::QuoterBasePtr& record) {
            if (record == unknown)
                return std::string("-");
            if (!record)
                return std::string("null");
            for (std::size_t i = 0; i < records.size(); ++i) {
                if (records[i] == record)
                    return std::to_string(i);
            }
            return std::string("?");
        };
        return place(model.m_closingData) + " after " + place(model.m_closingPrevData);
    }
};

// --- the snapshots of the close -------------------------------------------------------------------------------

TEST_P(EntrustPastCloseTest, shouldKeepTheNewestSnapshotOfTradingAndTheRecordBeforeItWhenAHistoryComes)
{
    EXPECT_EQ(closeOf({at(100, 13), at(130, 13), at(160, 13)}), "2 after 1");
    EXPECT_EQ(closeOf({at(100, 13), at(130, 21), at(7, 22), at(9, 23)}), "1 after 0");
    EXPECT_EQ(closeOf({at(100, 22), at(130, 15), at(7, 24)}), "1 after 0") << "whatever the phase of that before";
    EXPECT_EQ(closeOf({at(100, 13), at(130, -1), at(7, 22)}), "1 after 0");
}

TEST_P(EntrustPastCloseTest, shouldKeepTheSnapshotBeforeAsItWasWhenTheCloseIsTheFirstOfTheBatch)
{
    EXPECT_EQ(closeOf({at(130, 13), at(7, 22), at(9, 22)}), "0 after -");
    EXPECT_EQ(closeOf({at(130, 13)}), "0 after -");
}

TEST_P(EntrustPastCloseTest, shouldKeepTheCloseAsItWasWhenTheBatchHasNone)
{
    EXPECT_EQ(closeOf({at(7, 22), at(9, 23), at(9, 24)}), "- after -");
    EXPECT_EQ(closeOf({nullptr, foreign(level1().volume(100)), order(2), at(9, 24)}), "- after -");
    EXPECT_EQ(ticksOf({at(7, 22), at(9, 22)}), "shown 2, kept -1");
}

// The one before is the record that stands there, of whatever type; the close itself is of the stream.
TEST_P(EntrustPastCloseTest, shouldKeepWhateverRecordStandsBeforeTheCloseWhenItIsNoSnapshot)
{
    EXPECT_EQ(closeOf({at(100, 13), nullptr, at(130, 13), at(7, 22)}), "2 after null");
    EXPECT_EQ(closeOf({at(100, 13), order(2), at(130, 13), at(7, 22)}), "2 after 1");
    EXPECT_EQ(closeOf({at(100, 13), foreign(level1().volume(120)), at(130, 13), at(7, 22)}), "2 after 1");
    EXPECT_EQ(closeOf({at(100, 13), at(130, 13), foreign(level1().volume(140)), nullptr, order(2), at(7, 22)}),
              "1 after 0");
}

TEST_P(EntrustPastCloseTest, shouldKeepNothingWhenTheInstrumentHasNoSuchPhase)
{
    follow("SH", "600000");
    EXPECT_EQ(closeOf({at(100, 13), at(130, 13), at(7, 22)}), "- after -");
    EXPECT_EQ(ticksOf({at(100, 13), at(130, 13)}), "shown 30, kept -1");
}

TEST_P(EntrustPastCloseTest, shouldKeepTheSameWhenThePhaseIsOfShenzhensType)
{
    follow("SZ", "300001", {10006});
    EXPECT_EQ(closeOf({at(100, 13), at(130, 21), at(7, 22), at(9, 23)}), "1 after 0");
    EXPECT_EQ(ticksOf({at(100, 13), at(130, 21), at(7, 22)}), "shown 7, kept 30");
}

// --- the tick of the close ------------------------------------------------------------------------------------

TEST_P(EntrustPastCloseTest, shouldKeepTheTickOfTheCloseWhenARecordBeforeHasLessVolume)
{
    EXPECT_EQ(ticksOf({at(100, 13), at(130, 21), at(7, 22)}), "shown 7, kept 30");
    EXPECT_EQ(ticksOf({at(100, 13), at(130, 13), at(130, 21), at(7, 22)}), "shown 7, kept 30");
    EXPECT_EQ(
        ticksOf({at(90, 13), at(140, 13), nullptr, order(2), foreign(level1().volume(120)), at(130, 21), at(7, 22)}),
        "shown 7, kept 40");
    EXPECT_EQ(ticksOf({at(100, 22), at(130, 13), at(7, 22)}), "shown 7, kept 30") << "of any phase";
}

TEST_P(EntrustPastCloseTest, shouldKeepTheTickAsItWasWhenTheCloseHasNone)
{
    EXPECT_EQ(ticksOf({at(130, 13), at(7, 22)}), "shown 7, kept -1");
    EXPECT_EQ(ticksOf({at(130, 13), at(130, 21), at(7, 22)}), "shown 7, kept -1");
    EXPECT_EQ(ticksOf({at(140, 13), at(130, 21), at(7, 22)}), "shown 7, kept -1");
    EXPECT_EQ(ticksOf({foreign(level1().volume(100)), at(130, 21), at(7, 22)}), "shown 7, kept -1");
}

TEST_P(EntrustPastCloseTest, shouldKeepLow32BitsOfTheTickWhenItIsLarger)
{
    EXPECT_EQ(ticksOf({at(100, 13), at((5LL << 32) + 130, 13)}), fmt::format("shown {}, kept 30", (5LL << 32) + 30));
    EXPECT_EQ(ticksOf({at(std::numeric_limits<__int64>::min(), 13), at(std::numeric_limits<__int64>::max(), 13)}),
              "shown -1, kept -1");
}

TEST_P(EntrustPastCloseTest, shouldKeepTheTickInTheNewLoanFormWhenItIsSet)
{
    terminal.answers.setNewLoanFactor(10);
    EXPECT_EQ(ticksOf({at(100, 13), at(130, 21), at(7, 22)}), "shown 7, kept 30");
    model.setNewLoan(true);
    EXPECT_EQ(ticksOf({at(100, 13), at(130, 21), at(7, 22)}), "shown 70, kept 300");
    terminal.answers.setNewLoanFactor(-1);
    EXPECT_EQ(ticksOf({at(140, 13), at(100, 13), at(130, 21), at(7, 22)}), "shown -7, kept 10");
}

// --- the tick of the last record ------------------------------------------------------------------------------

struct TickCase {
    const char* market;
    int before, last;
    const char* shown;
};

TEST_P(EntrustPastCloseTest, shouldShowTheTickByThePhasesOfBothRecordsWhenVolumeGrew)
{
    const TickCase cases[] = {
        {"SH", 13, 13, "60"},   {"SH", 21, 15, "60"},  {"SH", 13, 22, "160"}, {"SH", 21, 22, "160"},
        {"SH", 13, 24, "160"},  {"SH", 15, 30, "160"}, {"HK", 13, 22, "160"}, {"HK", 13, 24, "160"},
        {"SH", 22, 22, "60"},   {"SH", 24, 24, "60"},  {"SH", 22, 24, "-1"},  {"SH", 24, 22, "-1"},
        {"SH", 23, 24, "-1"},   {"SH", 23, 22, "60"},  {"HK", 22, 24, "60"},  {"HK", 24, 22, "60"},
        {"SH", 22, 13, "-1"},   {"SZ", 23, 21, "-1"},  {"BJ", 22, 13, "-1"},  {"SSE", 22, 13, "-1"},
        {"SZSE", 22, 13, "-1"}, {"HK", 22, 13, "60"},  {"SHO", 22, 13, "60"}, {"HGT", 23, 13, "60"},
        {"SH", 24, 13, "60"},   {"SH", 13, 21, "60"},
    };
    for (const TickCase& c : cases) {
        SCOPED_TRACE(fmt::format("{} {} to {}", c.market, c.before, c.last));
        followIn(c.market);
        const std::string ticks = ticksOf({at(100, c.before), at(160, c.last)});
        EXPECT_EQ(ticks.substr(0, ticks.find(',')), std::string("shown ") + c.shown);
    }
}

TEST_P(EntrustPastCloseTest, shouldShowTheWholeVolumeWhenTheLookBackMeetsTrading)
{
    EXPECT_EQ(ticksOf({at(1, 22), at(130, 13), at(7, 22)}), "shown 7, kept 129") << "it ends there";
    EXPECT_EQ(ticksOf({at(130, 13), at(7, 22), at(7, 22)}), "shown 7, kept -1") << "whose volume is not asked";
    EXPECT_EQ(ticksOf({at(130, 13), at(9, 22), nullptr, at(7, 22)}), "shown 7, kept -1");
    EXPECT_EQ(ticksOf({at(130, 13), at(3, 22), at(7, 22)}), "shown 4, kept -1") << "a step within the phase is nearer";
    EXPECT_EQ(ticksOf({foreign(level1().volume(100)), at(7, 22)}), "shown -1, kept -1");
}

TEST_P(EntrustPastCloseTest, shouldGoOnLookingBackWhenARecordIsPassedOver)
{
    EXPECT_EQ(ticksOf({at(100, 13), at(120, 22), at(140, 13)}), "shown 40, kept 20") << "the kept one is of any phase";
    followIn("HK");
    EXPECT_EQ(ticksOf({at(100, 13), at(120, 22), at(140, 13)}), "shown 20, kept 20");
    EXPECT_EQ(ticksOf({at(100, 13), at(150, 13), at(140, 13)}), "shown 40, kept 40");
}

// --- the phase is over ----------------------------------------------------------------------------------------

TEST_P(EntrustPastCloseTest, shouldShowTheBookAndTheTickOfTheCloseWhenAHistoryEndsWithThePhase)
{
    for (const int kind : {0, 3}) {
        model.clear();
        const auto end = of(level1().last(0).lastClose(9.7).volume(12).status(23).bid(10.01, 50));
        const Records records = {
            of(level1().last(10.01).volume(100).ask(10.02, 6).bid(10.01, 5)),
            of(level1().last(10.02).lastClose(9.9).volume(130).status(15).ask(10.02, 4).bid(10.01, 9)),
            of(level1().last(10.03).volume(7).status(22).bid(10.01, 1)), end};
        EXPECT_TRUE(model.quoterCallBack(0, kind, records));
        EXPECT_EQ(rowsText(model), "ask1 10.02 4 -2\nbid1 10.01 9 +4\n");
        EXPECT_EQ(figuresText(model), "tick 30, kept 30, last 10.02, close 9.9");
        EXPECT_EQ(latest(), end);
        EXPECT_EQ(end->lastPrice, 0);
    }
}

TEST_P(EntrustPastCloseTest, shouldShowTheLastRecordWhenThePhaseHasNotEnded)
{
    for (const int status : {21, 22, 24}) {
        model.history({at(130, 13, 9), at(7, 22, 2), at(8, status, 5)});
        EXPECT_EQ(rowsText(model), "bid1 10.01 5 +3\n") << status;
    }
}

// The book of an earlier batch, or of live records: a batch of the phase's end alone has none of its own.
TEST_P(EntrustPastCloseTest, shouldShowTheCloseOfBeforeWhenTheBatchHasNone)
{
    model.live({at(100, 13, 5)});
    model.live({at(130, 13, 9)});
    model.live({at(7, 22, 2)});
    model.history({at(9, 22, 1), at(12, 23, 3)});
    EXPECT_EQ(rowsText(model), "bid1 10.01 9 +4\n");
    EXPECT_EQ(model.m_tickVolume, 30);
    model.clear();
    model.live({at(7, 22, 2)});
    model.history({at(9, 22, 1), at(12, 23, 3)});
    EXPECT_EQ(rowsText(model), "bid1 10.01 2\n") << "nothing is shown when there was none";
    EXPECT_EQ(model.m_tickVolume, 0);
}

TEST_P(EntrustPastCloseTest, shouldCountChangesOfTheCloseFromTheRowsWhenTheRecordBeforeIsNoSnapshot)
{
    model.live({at(100, 13, 5)});
    model.history({nullptr, at(130, 13, 9), at(7, 23, 1)});
    EXPECT_EQ(rowsText(model), "bid1 10.01 9 +4\n");
}

TEST_P(EntrustPastCloseTest, shouldShowTheEndLikeAnyRecordWhenTheInstrumentHasNoSuchPhase)
{
    follow("SH", "600000");
    model.history({at(130, 13, 9), at(12, 23, 3)});
    EXPECT_EQ(rowsText(model), "bid1 10.01 3 -6\n");
    EXPECT_EQ(model.m_tickVolume, 0);
}

// Live records go on from what the history kept.
TEST_P(EntrustPastCloseTest, shouldGoOnLiveWhenAHistoryHasKeptTheClose)
{
    model.history({at(100, 13, 5), at(130, 13, 9)});
    model.live({at(7, 22, 2)});
    EXPECT_EQ(figuresText(model), "tick 7, kept 30, last 10, close 10");
    model.live({at(8, 23, 2)});
    EXPECT_EQ(rowsText(model), "bid1 10.01 9 +4\n");
    EXPECT_EQ(figuresText(model), "tick 30, kept 30, last 10, close 10");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, EntrustPastCloseTest, ::testing::Values(1, 2), levelName);

} // namespace
