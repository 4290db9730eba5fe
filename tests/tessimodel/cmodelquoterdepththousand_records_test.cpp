#include "tests/tessimodel/quoterthousand.h"

#include <limits>
#include <utility>
#include <vector>

namespace {

using namespace tests;

// Which records a model takes, and which one it compares them with.
class QuoterThousandRecordsTest : public QuoterThousandTest {
protected:
    int takeFlags() { return model.m_updateFlags.exchange(0); }

    // "held 09:30:01, base 09:30:00"
    std::string times() const
    {
        return "held " + timeText(model.m_thousand) + ", base " + timeText(model.m_prevThousand);
    }

    // Delivers empty records that many milliseconds from an arbitrary start, and tells when the base was taken.
    __int64 baseAfter(const std::vector<__int64>& milliseconds)
    {
        for (const __int64 time : milliseconds)
            feed.thousand(live, {thousandAt(kStart + time)});
        return model.m_prevThousand ? model.m_prevThousand->timetag - kStart : kNoBase;
    }

    static constexpr __int64 kStart = 1'709'256'600'000;
    static constexpr __int64 kNoBase = -1;

private:
    static std::string timeText(const std::shared_ptr<quoter::LevelThousandData>& record)
    {
        return record ? clockOf(record->timetag / 1000) : "none";
    }
};

// --- which records count --------------------------------------------------------------------------------------

TEST_F(QuoterThousandRecordsTest, shouldTakeTheLastRecordAndTellWhenABatchComes)
{
    for (const int kind : {history, moreHistory, live, 2, -1}) {
        SCOPED_TRACE(kind);
        model.clear();
        takeFlags();
        feed.thousand(kind, {thousand("09:30:09").bid(9.00), nullptr, thousand("09:30:01").bid(10.00, 5)});
        EXPECT_EQ(bookText(model), "bid 10.00 5h x1 (0)\n");
        EXPECT_EQ(times(), "held 09:30:01, base none");
    }
}

TEST_F(QuoterThousandRecordsTest, shouldRaiseChangedInPlaceWhenARecordComes)
{
    for (const int kind : {history, moreHistory, live}) {
        feed.thousand(kind, {thousand()});
        EXPECT_EQ(takeFlags(), 4) << "also when nothing is in it, or nothing new";
    }
    model.m_updateFlags = 3;
    feed.thousand(live, {thousand()});
    EXPECT_EQ(takeFlags(), 7) << "beside what is there";

    QuoterThousand quiet(true);
    quiet.setStock(keyOf("SZ", "000001"));
    BookFeed(terminal, quiet).thousand(live, {thousand()});
    EXPECT_EQ(quiet.m_updateFlags, 4) << "no tick, so that it is not suppressed";
}

TEST_F(QuoterThousandRecordsTest, shouldTakeTheLatestDeliveredWhenItIsNotTheNewest)
{
    bidAt("09:30:05", 100);
    bidAt("09:30:03", 150);
    EXPECT_EQ(times(), "held 09:30:03, base 09:30:05");
    EXPECT_EQ(bookText(model), "bid 10.00 150h x1 (-50)\n");
    bidAt("09:30:03", 160);
    EXPECT_EQ(bookText(model), "bid 10.00 160h x1 (-60)\n") << "and when it is of the same time";
}

TEST_F(QuoterThousandRecordsTest, shouldStartOverWithNothingWhenAHistoryComes)
{
    bidAt("09:30:00", 100);
    feed.thousand(history, {thousand("09:30:01").bid(10.00, 150)});
    EXPECT_EQ(bookText(model), "bid 10.00 150h x1 (-50)\n") << "a history is a record like any other";
}

TEST_F(QuoterThousandRecordsTest, shouldDropABatchWhenItsLastRecordIsNone)
{
    const Records none[] = {{},
                            {nullptr},
                            {thousand().bid(9.00), nullptr},
                            {thousand().bid(9.00), level2().bid(9.00)},
                            {thousand().bid(9.00), order(1).buy(9.00)}};
    bidAt("09:30:00", 100);
    takeFlags();
    for (const Records& records : none) {
        for (const int kind : {history, moreHistory, live})
            feed.thousand(kind, records);
    }
    model.ThousandDataCallback(0, live, nullptr);
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(takeFlags(), 0);
    EXPECT_EQ(bookText(model), "bid 10.00 100h x1 (0)\n");
    EXPECT_EQ(times(), "held 09:30:00, base none");
}

TEST_F(QuoterThousandRecordsTest, shouldDropABatchWhenItIsOfAnotherInstrument)
{
    for (const auto& [market, code] : {std::pair("SZ", "000002"), {"SH", "000001"}, {"SZ", "0000010"}, {"", ""}}) {
        feed.request(market, code);
        for (const int kind : {history, moreHistory, live}) {
            feed.thousand(kind, {thousand().bid(10.00)});
            feed.snapshots(kind, {level2().bid(10.00)});
        }
    }
    EXPECT_EQ(takeFlags(), 0);
    EXPECT_EQ(model.m_thousand, nullptr);
    EXPECT_EQ(model.m_quoterTimetag, 0);
}

TEST_F(QuoterThousandRecordsTest, shouldDropABatchWhenTheModelMovedOnWhileItWaited)
{
    feed.holdBack();
    bidAt("09:30:00", 100);
    feed.snapshots(live, {level2().bid(10.00)});
    model.setStock(keyOf("SZ", "000002"));
    feed.run();
    EXPECT_EQ(model.m_thousand, nullptr);
    EXPECT_EQ(model.m_quoterTimetag, 0);
}

TEST_F(QuoterThousandRecordsTest, shouldTakeNothingWhenThereIsNoInstrument)
{
    model.setStock("nobody knows this");
    for (const auto& [market, code] : {std::pair("SZ", "000001"), {"", ""}}) {
        feed.request(market, code);
        bidAt("09:30:00", 100);
        feed.snapshots(live, {level2().bid(10.00)});
    }
    EXPECT_EQ(takeFlags(), 0);
    EXPECT_EQ(model.m_thousand, nullptr);
    EXPECT_EQ(model.m_quoterTimetag, 0);
}

// A snapshot that the other stream carries by mistake is no thousand-level record, and the reverse.
TEST_F(QuoterThousandRecordsTest, shouldDropARecordWhenItIsOfTheOtherStream)
{
    feed.snapshots(live, {thousand().bid(10.00)});
    EXPECT_EQ(model.m_quoterTimetag, 0);
    EXPECT_EQ(model.m_thousand, nullptr);
}

// --- the base of comparison -----------------------------------------------------------------------------------

TEST_F(QuoterThousandRecordsTest, shouldHaveNoBaseBeforeTheSecondRecordWhenNew)
{
    EXPECT_EQ(baseAfter({0}), kNoBase);
    EXPECT_EQ(baseAfter({1}), 0) << "the first record, however close";
}

TEST_F(QuoterThousandRecordsTest, shouldKeepTheBaseWhenARecordComesLessThanASecondAfterIt)
{
    EXPECT_EQ(baseAfter({0, 400, 800, 999}), 0);
}

// The base becomes the record held so far, which may be of just now.
TEST_F(QuoterThousandRecordsTest, shouldMoveTheBaseToTheRecordHeldWhenASecondHasPassed)
{
    EXPECT_EQ(baseAfter({0, 400, 1000}), 400);
    EXPECT_EQ(baseAfter({1399}), 400);
    EXPECT_EQ(baseAfter({1400}), 1399);
}

TEST_F(QuoterThousandRecordsTest, shouldKeepTheBaseWhenRecordsGoBackInTime)
{
    EXPECT_EQ(baseAfter({5000, 5100}), 5000);
    EXPECT_EQ(baseAfter({0, 3000, 5999}), 5000);
    EXPECT_EQ(baseAfter({6000}), 5999);
}

TEST_F(QuoterThousandRecordsTest, shouldMoveTheBaseToTheRecordHeldWhenThatIsOlder)
{
    EXPECT_EQ(baseAfter({5000, 2000, 6000}), 2000);
    EXPECT_EQ(baseAfter({3000}), 6000);
}

TEST_F(QuoterThousandRecordsTest, shouldMeasureAcrossTheWrapWhenTimesAreAtTheEnds)
{
    constexpr __int64 kMax = std::numeric_limits<__int64>::max();
    constexpr __int64 kMin = std::numeric_limits<__int64>::min();
    feed.thousand(live, {thousandAt(kMax)});
    feed.thousand(live, {thousandAt(kMax)});
    const auto base = model.m_prevThousand;
    feed.thousand(live, {thousandAt(kMin + 998)});
    EXPECT_EQ(model.m_prevThousand, base);
    feed.thousand(live, {thousandAt(kMin + 999)});
    EXPECT_EQ(model.m_prevThousand->timetag, kMin + 998) << "1000 ms on";
}

} // namespace
