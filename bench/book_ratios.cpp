// The thousand-level book in processor time, as multiples of the reference book in the same run:
//
//     book_ratios
//
// Repetitions are interleaved, so that a slow spell of the machine falls on both, and the median counts. Exits with 1
// when a limit is exceeded.

#include "bench/book.h"
#include "bench/bookfeed.h"
#include "bench/ratios.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <thread>
#include <vector>

namespace {

using bench::median;
using bench::print;
using bench::report;
using bench::secondsOf;

constexpr int kRepetitions = 9;
constexpr double kHistoryLimit = 5.0;
constexpr double kLiveLimit = 6.5;
constexpr double kLevelsLimit = 1.6;

// Multiples of the reference, and the reference's own time for each event.
struct Rounds {
    std::vector<double> history;
    std::vector<double> live;
    std::vector<double> seconds;
};

void measureRound(const bench::BookFeed& feed, Rounds& rounds)
{
    const std::size_t half = feed.size() / 2;
    double firstHalf = 0;
    double secondHalf = 0;
    {
        const auto reference = feed.newReference();
        firstHalf = secondsOf([&] { feed.apply(*reference, 0, half); });
        secondHalf = secondsOf([&] { feed.apply(*reference, half, feed.size()); });
    }
    const double whole = firstHalf + secondHalf;
    {
        const auto book = feed.newBook();
        rounds.history.push_back(secondsOf([&] { feed.applyHistory(*book, 0, feed.size()); }) / whole);
    }
    const auto book = feed.newBook();
    feed.applyHistory(*book, 0, half);
    rounds.live.push_back(secondsOf([&] { feed.applyLive(*book, half, feed.size()); }) / secondHalf);
    rounds.seconds.push_back(whole / static_cast<double>(feed.size()));
}

Rounds measure(const bench::BookFeed& feed)
{
    Rounds rounds;
    for (int i = 0; i < kRepetitions; ++i)
        measureRound(feed, rounds);
    return rounds;
}

bool compareWithReference()
{
    const bench::BookFeed feed(bench::TickOptions{});
    feed.checkAgainstReference();
    const Rounds alone = measure(feed);
    std::printf("%zu events; the reference takes %.0f ns for each\n", feed.size(), median(alone.seconds) * 1e9);
    const bool historyIsFast = report("history, as a multiple of the reference", alone.history, kHistoryLimit);
    const bool liveIsFast = report("live with refresh, the same", alone.live, kLiveLimit);

    // With the first thread that a process starts, its locks and shared pointers come to cost what they do in a
    // terminal.
    std::thread([] {}).join();
    const Rounds amongThreads = measure(feed);
    print("history in a process of several threads", amongThreads.history);
    print("\nlive in a process of several threads", amongThreads.live);
    std::puts("");
    return historyIsFast && liveIsFast;
}

// What a live tick takes on a book that stands at so many levels on each side.
double secondsOfLiveTick(int levels)
{
    constexpr int kRounds = 3; // of which the first also warms up
    const bench::BookFeed feed(bench::streamOfLevels(levels, 200'000));
    const std::size_t start = feed.stream().opening;
    std::vector<double> seconds;
    for (int i = 0; i < kRounds; ++i) {
        const auto book = feed.newBook();
        feed.applyHistory(*book, 0, start);
        seconds.push_back(secondsOf([&] { feed.applyLive(*book, start, feed.size()); }));
    }
    return median(seconds) / static_cast<double>(feed.size() - start);
}

bool compareLevels()
{
    std::vector<double> middle, deep;
    for (int i = 0; i < kRepetitions; ++i) {
        const double shallow = secondsOfLiveTick(200);
        middle.push_back(secondsOfLiveTick(2000) / shallow);
        deep.push_back(secondsOfLiveTick(20000) / shallow);
    }
    const bool middleIsFlat = report("live tick at 2,000 levels against 200", middle, kLevelsLimit);
    const bool deepIsFlat = report("live tick at 20,000 levels against 200", deep, kLevelsLimit);
    return middleIsFlat && deepIsFlat;
}

} // namespace

int main()
{
    setenv("TZ", "Asia/Shanghai", 1);
    try {
        const bool isFlat = compareLevels();
        const bool isFast = compareWithReference();
        return isFast && isFlat ? 0 : 1;
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return 2;
    }
}
