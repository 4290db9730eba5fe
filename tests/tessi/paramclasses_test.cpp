// A simulated day of each class of instruments, replayed: the rows in the order of the list, and their texts against
// what the day's records say by themselves.

#include "apps/tessi/daydelivery.h"
#include "apps/tessi/followedparams.h"
#include "exchange/instrumentclass.h"
#include "exchange/simulationoptions.h"
#include "exchange/simulator.h"
#include "recording/datalayer.h"
#include "recording/dayspan.h"
#include "standin/terminal.h"
#include "tests/tessi/paramtexts.h"
#include "tests/tessi/plainparams.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace tests;
using recording::Stream;

struct ClassCase {
    const char* name;
    const char* list; // of a terminal with the whole book's rows
    ParamFacts facts;
    const char* volumeLabel = "总手";
};

void PrintTo(const ClassCase& instrument, std::ostream* out)
{
    *out << instrument.name;
}

// clang-format off
const ClassCase kClasses[] = {
    {"stock", "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 -1 26 27 1028 1029", {}},
    {"sh-stock", "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 -1 26 27 1028 1029", {}},
    {"after-hours-a", "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 "
                      "-1 1042 -1 40 39 -1 26 27 1028 1029 1036 1037 1038", {.isMarked = true}},
    {"after-hours-b", "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 "
                      "-1 1042 -1 -1 40 39 -1 26 27 1028 1029 1036 1037 1038 1047", {.isMarked = true}},
    {"registered-a", "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 "
                     "-1 26 27 1028 1029 1037 1038 1047", {}},
    {"registered-b", "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 "
                     "-1 26 27 1028 1029 1038 1037", {}},
    {"registered-c", "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 "
                     "-1 26 27 1028 1029 1038 1037", {}},
    {"gdr", "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 "
            "-1 26 27 1028 1029 -1 48 49 50 51", {}},
    {"hk-stock", "0 1 2 4 9 14 10 15 11 16 7 12 13", {.sharesPerHand = 1, .isHongKong = true}},
    {"fund", "0 1 2 30 4 9 14 10 15 11 23 16 7 21 22 12 13 -1 33 34 -1 31 32", {}},
    {"bond", "0 1 2 30 4 9 14 10 15 11 16 7 12 13 -1 1052 1053",
     {.sharesPerHand = 10, .readsAlternative = true, .isBond = true}, "总量"},
    {"company-bond", "0 1 2 30 4 9 14 10 15 11 16 7 12 13 -1 1052 1053",
     {.sharesPerHand = 10, .readsAlternative = true, .isBond = true}, "总量"},
    {"convertible", "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 1052 1053", {.sharesPerHand = 10, .isBond = true}},
    {"convertible-b", "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 1052 1053", {.sharesPerHand = 10, .isBond = true}},
    {"index", "0 1 2 7 4 9 14 10 16 11 6 12", {.stream = Stream::Quotes, .hasAverage = false}},
    {"cicc-index", "0 2 7 4 9 14 10 16 11 6 12", {.stream = Stream::Quotes, .hasAverage = false}},
    {"future", "0 1 3 2 5 4 6 9 15 10 14 11 16 12 21 22 -1 19 8 20 7", {.sharesPerHand = 1, .hasAverage = false}},
    {"commodity-future", "0 1 3 2 5 4 6 9 15 10 14 11 16 12 21 22 -1 19 8 20 7",
     {.sharesPerHand = 1, .hasAverage = false}},
    {"option", "0 1 3 2 5 4 6 9 15 10 14 11 16 12 21 22 -1 19 8 20 7", {.sharesPerHand = 1, .hasAverage = false}},
};
// clang-format on

class ParamClasses : public ::testing::TestWithParam<ClassCase> {
protected:
    ParamClasses()
    {
        auto options = exchange::SimulationOptions::of(GetParam().name);
        options.ordersPerDay = 400;
        m_day = exchange::simulateDay(options);
        tessi::introduce(m_terminal, m_day);
    }

    void deliver(tessi::FollowedParams& params, recording::HistoryPoint history)
    {
        recording::DeliveryOptions options;
        options.history = history;
        options.pieceSize = 100;
        tessi::deliver(m_terminal, m_day, options, [&](recording::DataLayer& data) { params.subscribe(data); });
    }

    standin::Terminal m_terminal;
    recording::RecordedDay m_day;
};

TEST_P(ParamClasses, shouldHaveTheClassesRowsWhenDayIsReplayed)
{
    tessi::FollowedParams params(m_day, true);
    deliver(params, recording::HistoryPoint::wholeDay());
    EXPECT_EQ(listOf(params.model), GetParam().list);
    EXPECT_EQ(params.model.m_params.at(TC::RP_TOTAL_VOLUME).label.toStdString(), GetParam().volumeLabel);
    const bool lacksAverage = !GetParam().facts.hasAverage && params.model.m_paramList->contains(TC::RP_AVERAGE);
    EXPECT_EQ(emptyRows(params.model), lacksAverage ? "1 " : "") << "every other row has a text";
}

TEST_P(ParamClasses, shouldShowWhatTheRecordsSayWhenDayIsReplayed)
{
    const PlainParams plain(m_day, GetParam().facts);
    tessi::FollowedParams live(m_day, true);
    deliver(live, recording::HistoryPoint::nothing());
    EXPECT_EQ(listedTexts(live.model), listedTexts(live.model, plain.afterLive()));

    tessi::FollowedParams history(m_day, true);
    deliver(history, recording::HistoryPoint::wholeDay());
    EXPECT_EQ(listedTexts(history.model), listedTexts(history.model, plain.afterHistory()));
}

TEST_P(ParamClasses, shouldShowWhatTheRecordsSayWhenAMomentIsLookedAt)
{
    const PlainParams plain(m_day, GetParam().facts);
    tessi::FollowedParams params(m_day, true);
    deliver(params, recording::HistoryPoint::wholeDay());
    PlainParams::Texts texts = plain.afterHistory();
    for (const char* clock : {"15:00:30", "09:31:00", "10:30:00", "15:20:00", "14:20:00", "15:00:30"}) {
        const __int64 time = clockOn(m_day, clock);
        ASSERT_TRUE(params.showAt(time)) << clock;
        texts = plain.at(time, texts);
        EXPECT_EQ(listedTexts(params.model), listedTexts(params.model, texts)) << clock;
    }
}

// Counted in whole hands, a day's volume lacks its odd lots: an average price over it lies above the highest.
TEST_P(ParamClasses, shouldShowNoAverageOutsideTheRangeWhenAnySnapshotIsLookedAt)
{
    m_terminal.answers.setNewLoanFactor(10); // of volume and amount alike
    tessi::FollowedParams params(m_day, true);
    deliver(params, recording::HistoryPoint::wholeDay());
    const auto shown = [&params](int id) { return std::stod(shownText(params.model, id)); };
    const auto moments = params.model.m_history;
    for (const auto& [time, moment] : moments) {
        ASSERT_EQ(params.showAt(time), time);
        if (!GetParam().facts.hasAverage)
            continue;
        EXPECT_GE(shown(TC::RP_AVERAGE), shown(TC::RP_LOW)) << time;
        EXPECT_LE(shown(TC::RP_AVERAGE), shown(TC::RP_HIGH)) << time;
    }
}

std::string caseName(const ::testing::TestParamInfo<ClassCase>& info)
{
    std::string name = info.param.name;
    name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
    return name;
}

INSTANTIATE_TEST_SUITE_P(Classes, ParamClasses, ::testing::ValuesIn(kClasses), caseName);

// A class that is added must be listed above.
TEST(ParamClassesTable, shouldListEveryClassWhenDaysAreReplayed)
{
    std::vector<std::string> simulated, listed;
    for (const exchange::InstrumentClass& instrument : exchange::instrumentClasses())
        simulated.push_back(instrument.name);
    for (const ClassCase& instrument : kClasses)
        listed.emplace_back(instrument.name);
    std::sort(simulated.begin(), simulated.end());
    std::sort(listed.begin(), listed.end());
    EXPECT_EQ(listed, simulated);
}

} // namespace
