// The trade list in processor time, at the end of a day of 1,000,000 trades as a multiple of its first minutes:
//
//     list_ratios
//
// Here the caches count, which instructions leave out. Exits with 1 when the limit of `find` is exceeded; a live trade
// has its limit in instructions, since what it looks up in the evening is in no cache. It is compared with a trade
// after 200,000 others too, whose places are beyond a core's own caches as well.

#include "bench/listfeed.h"
#include "bench/ratios.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <vector>

namespace {

using bench::median;
using bench::secondsOf;

constexpr int kRepetitions = 15;
constexpr int kTrades = 2000; // for each repetition
constexpr int kLookups = 2000;
constexpr std::size_t kMorning = 10'000; // about two minutes
constexpr std::size_t kNoon = 200'000;   // its tables are beyond a core's own caches
constexpr double kLimit = 1.5;

// A list at one time of the day.
class Hour {
public:
    Hour(bench::ListFeed& feed, std::size_t start)
        : m_live(feed, start, (kRepetitions + 1) * static_cast<std::size_t>(kTrades))
    {}

    double secondsOfTrades()
    {
        return secondsOf([this] { m_live.push(kTrades); });
    }

    // Of seconds from all over the last 9,000 rows.
    double secondsOfFind()
    {
        const bench::TradeList& list = m_live.list();
        std::vector<int> seconds;
        seconds.reserve(kLookups);
        for (int i = 0; i < kLookups; ++i)
            seconds.push_back(static_cast<int>(list.getData(list.m_rowCount - 1 - i * 97 % 9000)->time));
        return secondsOf([&] {
            for (const int second : seconds)
                m_found += list.find(second, true);
        });
    }

private:
    bench::LiveTrades m_live;
    long long m_found = 0;
};

// Seconds of the same work at two times of the day.
struct Rounds {
    std::vector<double> earlier;
    std::vector<double> later;
    std::vector<double> ratios;

    void add(double earlierSeconds, double laterSeconds)
    {
        earlier.push_back(earlierSeconds);
        later.push_back(laterSeconds);
        ratios.push_back(laterSeconds / earlierSeconds);
    }
};

double nanoseconds(const std::vector<double>& seconds, int times)
{
    return median(seconds) * 1e9 / times;
}

bool compare()
{
    bench::ListFeed feed;
    Hour morning(feed, kMorning);
    Hour noon(feed, kNoon);
    Hour evening(feed, feed.day().trades.size() - (kRepetitions + 1) * static_cast<std::size_t>(kTrades));
    for (Hour* const hour : {&morning, &noon, &evening})
        hour->secondsOfTrades();
    Rounds sinceMorning;
    Rounds sinceNoon;
    Rounds find;
    for (int i = 0; i < kRepetitions; ++i) {
        const double inTheEvening = evening.secondsOfTrades();
        sinceMorning.add(morning.secondsOfTrades(), inTheEvening);
        sinceNoon.add(noon.secondsOfTrades(), inTheEvening);
        find.add(morning.secondsOfFind(), evening.secondsOfFind());
    }
    std::printf("a live trade with its matching takes %.0f ns in the morning, %.0f ns after 200,000, "
                "%.0f ns in the evening\n",
                nanoseconds(sinceMorning.earlier, kTrades), nanoseconds(sinceNoon.earlier, kTrades),
                nanoseconds(sinceNoon.later, kTrades));
    bench::print("evening against morning", sinceMorning.ratios);
    std::puts("");
    bench::print("evening against 200,000", sinceNoon.ratios);
    std::puts("");
    std::printf("find takes %.0f ns in the morning, %.0f ns in the evening\n", nanoseconds(find.earlier, kLookups),
                nanoseconds(find.later, kLookups));
    return bench::report("evening against morning", find.ratios, kLimit);
}

} // namespace

int main()
{
    setenv("TZ", "Asia/Shanghai", 1);
    try {
        return compare() ? 0 : 1;
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return 2;
    }
}
