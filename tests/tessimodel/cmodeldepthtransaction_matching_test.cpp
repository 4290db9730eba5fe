#include "tests/tessimodel/tradelist.h"

#include <limits>

namespace {

using namespace tests;

class TradeMatchingTest : public TradeListTest {
protected:
    // The pairs of rows and snapshots that are there at once.
    std::string pairsOf(const Records& rows, const Records& snapshots)
    {
        feed.snapshots(history, {});
        feed.trades(history, rows);
        feed.snapshots(history, snapshots);
        return pairsText(*model);
    }
};

Records operator+(Records all, const Records& more)
{
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

// --- the best row --------------------------------------------------------------------------------------------

TEST_F(TradeMatchingTest, shouldGiveEachSnapshotItsRowsWhenVolumesAddUp)
{
    EXPECT_EQ(pairsOf({dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.01, 2), dealt("09:30:04", 10.01, 3),
                       dealt("09:30:05", 10.00, 4), dealt("09:30:07", 10.00, 1)},
                      {snapshot("09:30:03", 10.01, 3), snapshot("09:30:06", 10.00, 10)}),
              "09:30:03 (0, 1)\n09:30:06 (2, 3)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 1);
    EXPECT_TRUE(tookChange());
}

// The volume decides, not the time: trades of a snapshot's second may belong to the next one.
TEST_F(TradeMatchingTest, shouldEndAtAFartherRowWhenTheSecondHasMore)
{
    EXPECT_EQ(pairsOf(dealtSingly("09:30:01", 10.00, 5), {snapshot("09:30:03", 10.00, 2)}), "09:30:03 (0, 1)\n");
    EXPECT_EQ(
        pairsOf(dealtSingly("09:30:01", 10.00, 5), {snapshot("09:30:03", 10.00, 2), snapshot("09:30:06", 10.00, 4)}),
        "09:30:03 (0, 1)\n09:30:06 (2, 3)\n");
}

TEST_F(TradeMatchingTest, shouldEndAtALaterSecondWhenTheVolumeIsNotReached)
{
    EXPECT_EQ(pairsOf(dealtSingly("09:30:03", 10.00, 2) + dealtSingly("09:30:04", 10.00, 3),
                      {snapshot("09:30:03", 10.00, 4)}),
              "09:30:03 (0, 1)\n");
}

TEST_F(TradeMatchingTest, shouldCompareWholeSecondsWhenARowIsLater)
{
    EXPECT_EQ(pairsOf(dealtSingly("09:30:03.900", 10.00, 2) + dealtSingly("09:30:04", 10.00, 1),
                      {snapshot("09:30:03.100", 10.00, 2)}),
              "09:30:03 (0, 1)\n");
}

TEST_F(TradeMatchingTest, shouldTakeTheLaterRowWhenTwoAreEquallyNear)
{
    EXPECT_EQ(pairsOf({dealt("09:30:01", 10.00, 1), dealt("09:30:01", 10.00, 2), dealt("09:30:01", 10.00, 1)},
                      {snapshot("09:30:03", 10.00, 2)}),
              "09:30:03 (0, 1)\n");
}

// The latest trade of a snapshot has its last price. Rows at other prices count, but are neither the best row nor too
// far off.
TEST_F(TradeMatchingTest, shouldCountRowsAtOtherPricesWithoutComparingThemWhenLookingForTheBest)
{
    const Records rows{dealt("09:30:01", 10.00, 1), dealt("09:30:01", 10.01, 1), dealt("09:30:01", 10.01, 5),
                       dealt("09:30:01", 10.00, 1), dealt("09:30:04", 10.00, 1)};
    EXPECT_EQ(pairsOf(rows, {snapshot("09:30:03", 10.00, 8)}), "09:30:03 (0, 3)\n");
    EXPECT_EQ(pairsOf(rows, {snapshot("09:30:03", 10.01, 8)}), "09:30:03 (0, 2)\n");
    EXPECT_EQ(pairsOf(rows, {snapshot("09:30:03", 10.00, 2)}), "09:30:03 (0, 0)\n");
    EXPECT_EQ(pairsOf(rows, {snapshot("09:30:03", 10.02, 8)}), "09:30:03 (0, 0)\n") << "no best row at all";
}

TEST_F(TradeMatchingTest, shouldIncludeTheToleranceWhenPricesAreCompared)
{
    const Records later = dealtSingly("09:30:04", 7.00, 1);
    EXPECT_EQ(
        pairsOf(Records{dealt("09:30:01", 0, 1), dealt("09:30:01", 1e-5, 1)} + later, {snapshot("09:30:03", 0, 2)}),
        "09:30:03 (0, 1)\n");
    EXPECT_EQ(
        pairsOf(Records{dealt("09:30:01", 0, 1), dealt("09:30:01", 2e-5, 1)} + later, {snapshot("09:30:03", 0, 2)}),
        "09:30:03 (0, 0)\n");
}

TEST_F(TradeMatchingTest, shouldCompareNothingWhenAPriceIsNoNumber)
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    const Records rows{dealt("09:30:01", 10.00, 1), dealt("09:30:01", none, 2), dealt("09:30:04", 10.00, 1)};
    EXPECT_EQ(pairsOf(rows, {snapshot("09:30:03", 10.00, 3)}), "09:30:03 (0, 0)\n");
    EXPECT_EQ(pairsOf(rows, {snapshot("09:30:03", none, 3)}), "09:30:03 (0, 0)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
}

// --- hands so far --------------------------------------------------------------------------------------------

TEST_F(TradeMatchingTest, shouldCutTheRunningSumToWholeHandsWhenSharesAreOdd)
{
    EXPECT_EQ(
        pairsOf({fill(1, 2).time("09:30:01").at(10.00).shares(150), fill(1, 2).time("09:30:01").at(10.00).shares(149),
                 fill(1, 2).time("09:30:01").at(10.00).shares(100)},
                {snapshot("09:30:03", 10.00, 2)}),
        "09:30:03 (0, 1)\n");
}

// A target of 0 still has a first row: a sum below one hand counts as one.
TEST_F(TradeMatchingTest, shouldTakeTheFirstRowWhenNothingWasTraded)
{
    EXPECT_EQ(pairsOf(dealtSingly("09:30:01", 10.00, 3), {snapshot("09:30:03", 10.00, 0)}), "09:30:03 (0, 0)\n");
    EXPECT_EQ(
        pairsOf({fill(1, 2).time("09:30:01").at(10.00).shares(50), fill(1, 2).time("09:30:01").at(10.00).shares(49),
                 fill(1, 2).time("09:30:01").at(10.00).shares(101)},
                {snapshot("09:30:03", 10.00, 0)}),
        "09:30:03 (0, 1)\n")
        << "99 shares are one hand too, 200 are two";
}

TEST_F(TradeMatchingTest, shouldAddVolumesBeyondAnIntWhenRowsAreHuge)
{
    const auto huge = [] { return fill(1, 2).time("09:30:01").at(10.00).shares(2000000000); };
    EXPECT_EQ(pairsOf({huge(), huge(), huge(), huge()}, {snapshot("09:30:03", 10.00, 60000000)}), "09:30:03 (0, 2)\n");
}

TEST_F(TradeMatchingTest, shouldAddTheRowsVolumeWhenTheTradeIsLargerThanAnInt)
{
    EXPECT_EQ(pairsOf({fill(1, 2).time("09:30:01").at(10.00).shares(4294967296 + 200), dealt("09:30:01", 10.00, 1),
                       dealt("09:30:01", 10.00, 1)},
                      {snapshot("09:30:03", 10.00, 3)}),
              "09:30:03 (0, 1)\n");
}

// A row farther from the target than any real volume closes the walk before there is a best row.
TEST_F(TradeMatchingTest, shouldHaveNoBestRowWhenEvenTheFirstIsTooFarOff)
{
    const Records rows = dealtSingly("09:30:01", 10.00, 2);
    EXPECT_EQ(pairsOf(rows, {snapshot("09:30:03", 10.00, 1410065410)}), "09:30:03 (0, 0)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
    EXPECT_EQ(pairsOf(rows, {snapshot("09:30:03", 10.00, 1410065409)}), "09:30:03 (0, 1)\n") << "open: both are nearer";
    EXPECT_EQ(model->m_lastMatchedQuote, -1);
}

TEST_F(TradeMatchingTest, shouldMeasureInSixtyFourBitsWhenTargetsExceedAnInt)
{
    const auto huge = [] { return fill(1, 2).time("09:30:01").at(10.00).shares(2000000000); };
    Records rows;
    for (int i = 0; i < 80; ++i)
        rows.push_back(huge());
    EXPECT_EQ(pairsOf(rows, {snapshot("09:30:03", 10.00, 1409000000)}), "09:30:03 (0, 69)\n")
        << "20,000,000 hands a row: the seventieth is 9,000,000 short, the next 11,000,000 beyond";
    EXPECT_EQ(pairsOf(rows, {snapshot("09:30:03", 10.00, 4294967296 + 1)}), "09:30:03 (0, 0)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0) << "closed by the first row: the target is not 1";
}

// --- the target ----------------------------------------------------------------------------------------------

struct TargetCase {
    std::set<int> types;
    int before, after; // the status of two snapshots, of 2 and of 6 hands a day
    bool isWhole;      // whether the second is of 6 hands, not of 4
};

// The types with an after-hours phase count the day's volume anew when a snapshot enters it.
TEST_F(TradeMatchingTest, shouldTakeTheWholeVolumeWhenAnAfterHoursPhaseBegins)
{
    const TargetCase cases[] = {
        {{}, 20, 22, false},     {{277}, 13, 20, false},   {{277}, 20, 21, false},   {{277}, 21, 22, true},
        {{277}, 20, 23, true},   {{277}, 22, 22, false},   {{277}, 22, 23, false},   {{277}, 23, 21, false},
        {{10006}, 20, 22, true}, {{10006}, 22, 22, false}, {{10006}, 13, 21, false}, {{277, 10006}, 0, 99, true},
    };
    int code = 300000;
    for (const TargetCase& c : cases) {
        SCOPED_TRACE(testing::Message() << "from " << c.before << " to " << c.after << " with " << c.types.size()
                                        << " types");
        follow(stock("SZ", std::to_string(++code), c.types));
        const Records snapshots{snapshot("09:30:03", 10.00, 2).status(c.before),
                                snapshot("09:30:06", 10.00, 6).status(c.after)};
        EXPECT_EQ(pairsOf(dealtSingly("09:30:01", 10.00, 12), snapshots),
                  c.isWhole ? "09:30:03 (0, 1)\n09:30:06 (2, 7)\n" : "09:30:03 (0, 1)\n09:30:06 (2, 5)\n");
    }
}

TEST_F(TradeMatchingTest, shouldTakeTheWholeVolumeWhenASnapshotIsTheFirst)
{
    follow(stock("SZ", "300001", {10006}));
    EXPECT_EQ(pairsOf(dealtSingly("15:05:00", 10.00, 5), {snapshot("15:05:01", 10.00, 3).status(23)}),
              "15:05:01 (0, 2)\n");
}

TEST_F(TradeMatchingTest, shouldSubtractTheLastKeptWhenASnapshotBetweenWasNot)
{
    EXPECT_EQ(
        pairsOf(dealtSingly("09:30:01", 10.00, 9), {snapshot("09:30:03", 10.00, 2), snapshot("09:30:04", 10.00, 2),
                                                    snapshot("09:30:05", 10.00, 1), snapshot("09:30:06", 10.00, 5)}),
        "09:30:03 (0, 1)\n09:30:06 (2, 4)\n");
}

TEST_F(TradeMatchingTest, shouldOverwriteThePairWhenTwoSnapshotsAreOfOneSecond)
{
    EXPECT_EQ(pairsOf(dealtSingly("09:30:01", 10.00, 9),
                      {snapshot("09:30:03.100", 10.00, 2), snapshot("09:30:03.700", 10.00, 5)}),
              "09:30:03 (2, 4)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 1);
}

// --- which rows ----------------------------------------------------------------------------------------------

TEST_F(TradeMatchingTest, shouldMatchTheRowsThatPassWhenAFilterIsSet)
{
    filter(atLeastHands(2));
    EXPECT_EQ(pairsOf({dealt("09:30:01", 10.00, 1), dealt("09:30:01", 10.00, 2), dealt("09:30:01", 10.00, 1),
                       dealt("09:30:01", 10.00, 3), dealt("09:30:04", 10.00, 2)},
                      {snapshot("09:30:03", 10.00, 5)}),
              "09:30:03 (0, 1)\n");
}

TEST_F(TradeMatchingTest, shouldCompareTimesInFullAndKeyByLowBitsWhenSecondsExceedAnInt)
{
    constexpr __int64 kTwoTo32 = 4294967296; // seconds: at 14:28:16 of a day, UTC+8
    const auto dealtAt = [](__int64 second) {
        std::shared_ptr<quoter::TransactionData> trade = dealt("09:30:00", 10.00, 1);
        trade->timetag = second * 1000;
        return trade;
    };
    const auto snapshotAt = [](__int64 second, __int64 volume) {
        std::shared_ptr<quoter::QuoterDepthData> record = snapshot("09:30:00", 10.00, volume);
        record->timetag = second * 1000;
        return record;
    };
    TC::SDepthFilterParam wholeDay;
    wholeDay.startTime = 0;
    wholeDay.endTime = 86400000;
    filter(wholeDay);
    pairsOf({dealtAt(50), dealtAt(kTwoTo32 + 10), dealtAt(kTwoTo32 + 40)},
            {snapshotAt(100, 5), snapshotAt(kTwoTo32 + 30, 7)});
    EXPECT_EQ(model->m_seqPairs, (std::map<int, TC::CModelDepthTransaction::SeqPair>{{30, {1, 1}}, {100, {0, 0}}}));
}

} // namespace
