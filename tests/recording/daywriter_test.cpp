#include "quoter/brovanquoteralldata.h"
#include "recording/dayfolder.h"
#include "recording/errors.h"
#include "recording/textfile.h"
#include "tests/recording/builders.h"

#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <limits>
#include <sys/resource.h>

using namespace recording;
using namespace recording_test;

namespace {

std::string errorOf(const RecordedDay& day, const std::filesystem::path& target)
{
    try {
        writeDay(day, target, Compression::None);
    } catch (const WriteError& error) {
        return error.what();
    }
    return "nothing was thrown";
}

RecordedDay smallDay()
{
    return DayBuilder().order(1000, 10.01, 300, 5).trade(1010, 10.01, 100, 5, 3).build();
}

// No file of the process may grow beyond `bytes`: what a full disk does, without one.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    void (*m_handler)(int);
    rlimit m_before{};
};

} // namespace

TEST(DayWriter, shouldLeaveNothingBehindWhenAFileCannotBeWritten)
{
    const TempFolder folder;
    std::string message;
    {
        const FileSizeLimit limit(60);
        message = errorOf(smallDay(), folder / "day");
    }
    EXPECT_EQ(message, (folder / "day/orders.csv").string() + ": File too large");
    EXPECT_EQ(listing(folder.path()), "");
}

TEST(DayWriter, shouldNameTheFileWhenTheDiskIsFull)
{
    try {
        writeFile("/dev/full", "a line\n", "day/orders.csv");
        FAIL() << "nothing was thrown";
    } catch (const WriteError& error) {
        EXPECT_EQ(error.file, "day/orders.csv");
        EXPECT_STREQ(error.what(), "day/orders.csv: No space left on device");
    }
}

TEST(DayWriter, shouldRefuseTheTargetWhenItExists)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / "day");
    EXPECT_EQ(errorOf(smallDay(), folder / "day"), (folder / "day").string() + ": File exists");
    folder.write("file", "text");
    EXPECT_EQ(errorOf(smallDay(), folder / "file"), (folder / "file").string() + ": File exists");
    EXPECT_EQ(listing(folder.path()), "day file");
    EXPECT_EQ(listing(folder / "day"), "");
}

TEST(DayWriter, shouldSayWhyWhenTheFolderCannotBeMade)
{
    const TempFolder folder;
    EXPECT_NE(errorOf(smallDay(), folder / "nowhere/day").find("No such file or directory"), std::string::npos);
    folder.write("file", "text");
    EXPECT_NE(errorOf(smallDay(), folder / "file/day").find("Not a directory"), std::string::npos);
    EXPECT_NE(errorOf(smallDay(), "/proc/day"), "nothing was thrown"); // not even root may write there
}

TEST(DayWriter, shouldWriteTheDayWhenItsNameEndsWithASlash)
{
    const TempFolder folder;
    writeDay(smallDay(), (folder / "day").string() + "/", Compression::None);
    EXPECT_EQ(listing(folder.path()), "day");
    EXPECT_EQ(readDay(folder / "day").events.size(), 2u);
}

TEST(DayWriter, shouldRefuseTheDayWhenTheFormatCannotHoldIt)
{
    const TempFolder folder;
    RecordedDay unlisted = smallDay();
    unlisted.streams = {Stream::Orders};
    EXPECT_NE(errorOf(unlisted, folder / "day").find("event 1 is of stream trades, which the day does not list"),
              std::string::npos);

    RecordedDay empty = smallDay();
    empty.events[1].record = nullptr;
    EXPECT_NE(errorOf(empty, folder / "day").find("trades.csv: event 1 has no record of the type of stream trades"),
              std::string::npos);

    // A broker's quote has two fields more than the stream has columns.
    const RecordedDay derived = DayBuilder().add(Stream::Quotes, std::make_shared<zolv::BrovanQuoterAllData>()).build();
    EXPECT_NE(errorOf(derived, folder / "day").find("event 0 has no record"), std::string::npos);

    EXPECT_NE(errorOf(DayBuilder().build(), folder / "day").find("the day has no stream"), std::string::npos);
    RecordedDay late = smallDay();
    late.events[1].record->timetag = 7;
    EXPECT_NE(errorOf(late, folder / "day").find("event 1 has a time stamp, 7, that is no time of the trading day"),
              std::string::npos);
    late.tradingDay = 20380119;
    EXPECT_NE(errorOf(late, folder / "day").find("the trading day is no date of a recorded day: 20380119"),
              std::string::npos);

    for (const double price : {NAN, INFINITY, -INFINITY}) {
        const RecordedDay priceless = DayBuilder().order(0, 1, 1, 1).order(1, price, 1, 1).build();
        EXPECT_NE(errorOf(priceless, folder / "day").find("day/orders.csv: event 1: price is not finite"),
                  std::string::npos);
    }
    EXPECT_NE(errorOf(DayBuilder().aux(0, -1).build(), folder / "day")
                  .find("day/aux.csv: event 0: totalBidVolume is a volume below 0"),
              std::string::npos);

    RecordedDay infinite = smallDay();
    infinite.instrument.lastClose = std::numeric_limits<double>::infinity();
    EXPECT_NE(errorOf(infinite, folder / "day").find("instrument.json: "), std::string::npos);
    EXPECT_NE(errorOf(infinite, folder / "day").find("lastClose"), std::string::npos);

    RecordedDay related = DayBuilder().order(0, 1, 1, 1).related("LSE", "A").related("LSE", "B").build();
    related.related[1].doubleFields[3002] = NAN;
    EXPECT_NE(errorOf(related, folder / "day")
                  .find("instrument.json: field \"related\": instrument 2: field \"doubleFields.3002\" is not finite"),
              std::string::npos);
    EXPECT_NE(errorOf(DayBuilder().order(0, 1, 1, 1).related("SZ", "000001").build(), folder / "day")
                  .find("field \"related\": instrument 1: SZ 000001 stands twice"),
              std::string::npos);

    EXPECT_EQ(listing(folder.path()), "");
}
