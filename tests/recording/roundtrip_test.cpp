#include "quoter/levelthousanddata.h"
#include "recording/columns.h"
#include "recording/dayfolder.h"
#include "tests/recording/builders.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <set>

using namespace recording;
using namespace recording_test;

namespace {

// Any bits of a finite number.
void fill(double& value)
{
    value = *rc::gen::oneOf(rc::gen::map(rc::gen::arbitrary<std::uint64_t>(),
                                         [](std::uint64_t bits) {
                                             const double number = std::bit_cast<double>(bits);
                                             return std::isfinite(number) ? number : DBL_MAX;
                                         }),
                            rc::gen::map(rc::gen::inRange(0, 1'000'000), [](int cents) { return cents / 100.0; }),
                            rc::gen::element(DBL_MAX, 0.0, -0.0, -DBL_MAX));
}

void fill(__int64& value)
{
    value = *rc::gen::arbitrary<long long>();
}

void fill(int& value)
{
    value = *rc::gen::arbitrary<int>();
}

template <class Number>
void fill(std::vector<Number>& values)
{
    values.resize(*rc::gen::inRange<std::size_t>(0, 5));
    for (Number& value : values)
        fill(value);
}

template <class Number, std::size_t Size>
void fill(Number (&values)[Size])
{
    for (Number& value : values)
        fill(value);
}

// Volumes are not below 0. The complement of a negative number is none.
template <class Number>
void makeVolume(Number& value)
{
    if constexpr (std::is_integral_v<Number>) {
        value = value < 0 ? ~value : value;
    } else if constexpr (!std::is_floating_point_v<Number>) {
        for (auto& element : value)
            makeVolume(element);
    }
}

constexpr __int64 kEightHours = 8 * 60 * 60 * 1000;

Event anyEvent(Stream stream)
{
    return withRecordType(stream, [stream]<class Record>(std::type_identity<Record>) {
        auto record = std::make_shared<Record>();
        std::apply(
            [&](const auto&... column) {
                ((fill((*record).*column.member), column.isVolume ? makeVolume((*record).*column.member) : void()),
                 ...);
            },
            Columns<Record>::kAll);
        record->timetag = kMorning + *rc::gen::inRange(-kEightHours, 2 * kEightHours);
        if constexpr (std::is_same_v<Record, quoter::QuoteAux>)
            return Event{stream, nullptr, record};
        else
            return Event{stream, record, nullptr};
    });
}

} // namespace

TEST(RoundTrip, shouldReadBackTheSameDayWhenAnyDayIsWritten)
{
    const bool holds = rc::check("a day reads back as it was written", [] {
        RecordedDay day = DayBuilder().build();
        for (const int code : *rc::gen::container<std::set<int>>(rc::gen::inRange(0, 9))) {
            day.related.push_back(day.instrument);
            day.related.back().market = "LSE";
            day.related.back().code = std::to_string(code);
        }
        const auto streams = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 8));
        std::array<bool, kAllStreams.size()> listed{};
        for (const int index : streams) {
            const Stream stream = kAllStreams[static_cast<std::size_t>(index)];
            listed[static_cast<std::size_t>(index)] = true;
            day.events.push_back(anyEvent(stream));
        }
        for (const Stream stream : kAllStreams) {
            if (listed[static_cast<std::size_t>(stream)] || *rc::gen::arbitrary<bool>())
                day.streams.push_back(stream);
        }
        RC_PRE(!day.streams.empty());
        const TempFolder folder;
        writeDay(day, folder / "day", *rc::gen::element(Compression::None, Compression::Zstd));
        RC_ASSERT(sameDay(day, readDay(folder / "day")));
    });
    EXPECT_TRUE(holds);
}
