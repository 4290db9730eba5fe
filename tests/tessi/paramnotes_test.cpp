// What the parameter table tells of a day that lacks something of its rows.

#include "recording/dayfolder.h"
#include "tests/tessi/command.h"
#include "tests/tessi/handmadeday.h"

#include <gtest/gtest.h>

namespace {

using namespace tests;

class ParamNotesTest : public ::testing::Test {
protected:
    void write(const recording::RecordedDay& day, const char* name) const
    {
        recording::writeDay(day, m_scratch.path(name), recording::Compression::None);
    }

    // What stderr says of a day in that folder, with the options behind.
    std::string notes(const std::string& day) const { return m_scratch.tessi("replay " + day + " --panel params").err; }

    Scratch m_scratch;
};

TEST_F(ParamNotesTest, shouldSayWhatIsMissingWhenTheDayLacksAStream)
{
    recording::RecordedDay bare = HandmadeDay().recorded();
    write(bare, "bare");
    EXPECT_EQ(notes("bare"), "");
    EXPECT_EQ(notes("bare --level2"), "tessi: note: the day has no stream aux\n");
    bare.streams = {recording::Stream::Snapshots};
    write(bare, "barer");
    EXPECT_EQ(notes("barer"), "tessi: note: the day has no stream trades\n");
    bare.streams = {recording::Stream::Orders};
    write(bare, "barest");
    EXPECT_EQ(notes("barest --level2"), "tessi: note: the day has no stream quotes, and none trades, and none aux\n");
}

// The list of an instrument without a class has neither the rows of the whole book nor inner and outer volume.
TEST_F(ParamNotesTest, shouldTellThatNothingIsAddedWhenTheListHasNoRowsOfTheBook)
{
    recording::RecordedDay day = HandmadeDay().recorded();
    day.instrument.types = {};
    day.streams = {recording::Stream::Snapshots};
    write(day, "day");
    EXPECT_EQ(notes("day"), "");
    EXPECT_EQ(notes("day --level2"),
              "tessi: note: --level2 adds nothing: the instrument's list has no rows of the whole book\n");
}

TEST_F(ParamNotesTest, shouldTellOfTheReceiptWhenTheDayDoesNotDescribeIt)
{
    recording::RecordedDay day = HandmadeDay().recorded();
    day.instrument.gdrCode = "RCPT";
    day.related = {stock("HK", "RCPT"), stock("LSE", "OTHER")};
    write(day, "without");
    EXPECT_EQ(notes("without"), "tessi: note: the day has no instrument LSE RCPT, the depositary receipt\n");
    day.related = {stock("LSE", "RCPT")};
    write(day, "with");
    EXPECT_EQ(notes("with"), "");
}

} // namespace
