// The table of the day in processor time, each as a multiple of what it is measured against:
//
//     today_ratios
//
// Repetitions are interleaved, so that a slow spell of the machine falls on both, and the median counts. Exits with 1
// when a limit is exceeded.

#include "bench/ratios.h"
#include "bench/todayfeed.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <thread>
#include <vector>

namespace {

using bench::secondsOf;
using bench::TodayFeed;

constexpr int kRepetitions = 9;
constexpr double kLiveLimit = 1.3;
constexpr double kTurnedAwayLimit = 0.05;
constexpr double kHistoryLimit = 100; // shown snapshots

double secondsOfShow(TodayFeed& feed)
{
    feed.begin();
    return secondsOf([&feed] { feed.show(); });
}

bool compareLive(const char* what, TodayFeed::Price price)
{
    TodayFeed feed(price);
    std::vector<double> ratios;
    for (int i = 0; i < kRepetitions; ++i) {
        const double yardstick = secondsOf([&feed] { feed.format(); });
        ratios.push_back(secondsOfShow(feed) / yardstick);
    }
    return bench::report(what, ratios, kLiveLimit);
}

bool compareTurnedAway()
{
    TodayFeed feed(TodayFeed::Price::Moves);
    std::vector<double> ratios;
    for (int i = 0; i < kRepetitions; ++i) {
        const double yardstick = secondsOf([&feed] { feed.format(); });
        feed.begin();
        ratios.push_back(secondsOf([&feed] { feed.turnAway(); }) / yardstick);
    }
    bench::print("a snapshot that is turned away, the same", ratios);
    const bool isKept = bench::median(ratios) <= kTurnedAwayLimit;
    std::printf(", at most %.2f%s\n", kTurnedAwayLimit, isKept ? "" : ": exceeded");
    return isKept;
}

bool compareHistory()
{
    TodayFeed feed(TodayFeed::Price::Moves);
    std::vector<double> ratios;
    for (int i = 0; i < kRepetitions; ++i) {
        const double yardstick = secondsOfShow(feed) / TodayFeed::kSnapshotsOfADay;
        feed.begin();
        ratios.push_back(secondsOf([&feed] { feed.takeHistory(); }) / yardstick);
    }
    return bench::report("a history of 4,800 snapshots, in shown ones", ratios, kHistoryLimit);
}

} // namespace

int main()
{
    setenv("TZ", "Asia/Shanghai", 1);
    try {
        // With the first thread that a process starts, its shared pointers come to cost what they do in a terminal.
        std::thread([] {}).join();
        const bool moving = compareLive("a shown snapshot against its number formats", TodayFeed::Price::Moves);
        const bool still = compareLive("the same, of a price that stands still", TodayFeed::Price::StandsStill);
        const bool turnedAway = compareTurnedAway();
        const bool history = compareHistory();
        return moving && still && turnedAway && history ? 0 : 1;
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return 2;
    }
}
