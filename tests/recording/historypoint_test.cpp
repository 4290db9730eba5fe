#include "recording/datalayer.h"
#include "tests/recording/builders.h"

#include <gtest/gtest.h>

using namespace recording;
using namespace recording_test;

TEST(HistoryPoint, shouldGiveAPositionWithinTheDayWhenSetByArrivalOrTime)
{
    const RecordedDay day =
        DayBuilder().order(1000, 10, 1, 1).order(1010, 10, 1, 2).aux(1010, 5).order(1020, 10, 1, 3).build();
    EXPECT_EQ(HistoryPoint::wholeDay().positionIn(day), 4u);
    EXPECT_EQ(HistoryPoint::nothing().positionIn(day), 0u);
    EXPECT_EQ(HistoryPoint::arrival(2).positionIn(day), 2u);
    EXPECT_EQ(HistoryPoint::arrival(9).positionIn(day), 4u);
    EXPECT_EQ(HistoryPoint::arrival(std::numeric_limits<std::size_t>::max()).positionIn(day), 4u);
    EXPECT_EQ(HistoryPoint::time(kMorning + 999).positionIn(day), 0u);
    EXPECT_EQ(HistoryPoint::time(kMorning + 1010).positionIn(day), 1u);
    EXPECT_EQ(HistoryPoint::time(kMorning + 1011).positionIn(day), 3u);
    EXPECT_EQ(HistoryPoint::time(kMorning + 2000).positionIn(day), 4u);
}
