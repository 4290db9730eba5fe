#pragma once

#include "quoter/levelorderdata.h"
#include "quoter/orderdata.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace recording_test {

// A folder of the test's own, gone with it.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }
    std::filesystem::path write(const std::string& name, std::string_view bytes) const;

private:
    std::filesystem::path m_path;
};

std::string fileBytes(const std::filesystem::path& file);

// Names of all that the folder holds, sorted, joined by blanks.
std::string listing(const std::filesystem::path& folder);

// Replaces the first `from`, which must be there.
std::string replaced(std::string text, const std::string& from, const std::string& to);

// 08:00 of the builder's day, 2024-01-02, in milliseconds since the epoch.
inline constexpr __int64 kMorning = 1704153600000;

// A day of SZ 000001 with the events in the order of the calls. Their times are in milliseconds after kMorning; a
// record that is added carries its own stamp.
class DayBuilder {
public:
    DayBuilder();
    DayBuilder& market(const std::string& market);
    DayBuilder& related(const std::string& market, const std::string& code);
    DayBuilder& lists(recording::Stream stream);
    DayBuilder& order(__int64 ms, double price, __int64 volume, __int64 seq);
    DayBuilder& trade(__int64 ms, double price, __int64 volume, int buySeq, int sellSeq);
    DayBuilder& cancel(__int64 ms, __int64 volume, int buySeq);
    DayBuilder& snapshot(__int64 ms, double lastPrice, __int64 volume);
    DayBuilder& aux(__int64 ms, __int64 totalBidVolume);
    DayBuilder& add(recording::Stream stream, std::shared_ptr<quoter::QuoterBase> record);

    recording::RecordedDay build() const { return m_day; }
    std::shared_ptr<const recording::RecordedDay> share() const;

private:
    recording::RecordedDay m_day;
};

// All fields of all events, by their bits: a NaN equals a NaN of the same sign, 0 is not -0.
bool sameDay(const recording::RecordedDay& a, const recording::RecordedDay& b);

// Wall clock of a time stamp with milliseconds: "09:15:00.010".
std::string clockText(__int64 timetag);

// One line per event that says what matters in it:
//
//     09:15:00.010 order 5 buy kind 1 10.01 x 300
//     09:15:00.020 trade buy 5 sell 3 flag 2 10.01 x 100
//     09:15:00.020 cancel buy 5 sell 0 x 200
//     09:15:03.000 snapshot 13 last 10.01 volume 100 bid 10.01 x 200 ask 10.02 x 100
//     09:15:03.000 queue bid 10.01 [200,100] ask 10.02 []
std::string eventText(const recording::Event& event);
std::string eventsText(const recording::RecordedDay& day);

// Lines of one stream only.
std::string eventsText(const recording::RecordedDay& day, recording::Stream stream);

} // namespace recording_test
