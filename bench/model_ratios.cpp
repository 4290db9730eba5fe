// The models of the order queues and of the thousand-level snapshots in processor time, each as a multiple of what it
// is measured against:
//
//     model_ratios
//
// Repetitions are interleaved, so that a slow spell of the machine falls on both, and the median counts. Exits with 1
// when a limit is exceeded.

#include "bench/levelrounds.h"
#include "bench/modelfeed.h"
#include "bench/ratios.h"
#include "indexui/tessimodel/cmodeldepthqueue.h"
#include "indexui/tessimodel/cmodeldepththousand.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <thread>
#include <vector>

namespace {

using bench::FirstHistory;
using bench::report;
using bench::secondsOf;

constexpr int kRepetitions = 9;
constexpr double kHistoryLimit = 1.1;
constexpr double kRowsLimit = 2.0;
constexpr double kRecordLimit = 0.5;

// What a new model takes for both histories of the feed.
class Histories {
public:
    explicit Histories(bench::BookFeed& feed)
        : m_feed(feed)
        , m_orders(feed.historyOfOrders(feed.size()))
        , m_trades(feed.historyOfTrades(feed.size()))
    {}

    template <class Model>
    double secondsOfBuild(FirstHistory first)
    {
        const auto model = std::make_unique<Model>();
        m_feed.follow(*model);
        const double seconds = secondsOf([&] { m_feed.deliverHistory(*model, m_orders, m_trades, first); });
        model->clear();
        m_feed.freeReleased();
        return seconds;
    }

    void compare(const char* what, FirstHistory first)
    {
        std::vector<double> ratios;
        for (int i = 0; i < kRepetitions; ++i) {
            const double yardstick = secondsOfBuild<TC::CModelDepthThousand>(first);
            ratios.push_back(secondsOfBuild<TC::CModelDepthQueue>(first) / yardstick);
        }
        bench::print(what, ratios);
        std::puts("");
    }

private:
    bench::BookFeed& m_feed;
    bench::BookFeed::Batch m_orders;
    bench::BookFeed::Batch m_trades;
};

template <class Book>
double secondsOfBook(const bench::BookFeed& feed)
{
    const auto book = feed.newBook<Book>();
    return secondsOf([&] { feed.applyHistory(*book, 0, feed.size()); });
}

bool compareBooks(const bench::BookFeed& feed)
{
    std::vector<double> ratios;
    for (int i = 0; i < kRepetitions; ++i) {
        const double yardstick = secondsOfBook<TC::ThousandBook>(feed);
        ratios.push_back(secondsOfBook<TC::QueueBook>(feed) / yardstick);
    }
    return report("a history in QueueBook against ThousandBook", ratios, kHistoryLimit);
}

// Through the models the posting of a bare list and its release come on top, which is the feed's side of the work.
bool compareHistories()
{
    bench::BookFeed feed(bench::TickOptions{});
    const bool booksAreFast = compareBooks(feed);
    Histories histories(feed);
    histories.compare("through the models, orders first", FirstHistory::Orders);
    histories.compare("through the models, trades first", FirstHistory::Trades);
    return booksAreFast;
}

bool compareRows()
{
    constexpr int kReads = 1000;
    bench::LevelRounds rounds;
    std::vector<double> ratios;
    for (int i = 0; i < kRepetitions; ++i) {
        const auto repeat = [&rounds](void (bench::LevelRounds::*make)()) {
            return secondsOf([&] {
                for (int read = 0; read < kReads; ++read)
                    (rounds.*make)();
            });
        };
        const double yardstick = repeat(&bench::LevelRounds::makeRows);
        ratios.push_back(repeat(&bench::LevelRounds::read) / yardstick);
    }
    return report("checkUpdate of 2,000 rows against bare rows", ratios, kRowsLimit);
}

std::vector<double> ratiosOfRecords(bool isOrdered)
{
    bench::LevelRounds rounds({.records = 1000, .isOrdered = isOrdered});
    std::vector<double> ratios;
    for (int i = 0; i < kRepetitions; ++i) {
        rounds.begin();
        const double yardstick = secondsOf([&] { rounds.takeRecordsByReference(); });
        ratios.push_back(secondsOf([&] { rounds.takeRecords(); }) / yardstick);
    }
    return ratios;
}

bool compareRecords()
{
    const bool isFast = report("a record of 2,000 levels against the trees", ratiosOfRecords(true), kRecordLimit);
    bench::print("the same, its prices in no order", ratiosOfRecords(false));
    std::puts("");
    return isFast;
}

} // namespace

int main()
{
    setenv("TZ", "Asia/Shanghai", 1);
    try {
        // With the first thread that a process starts, its locks and shared pointers come to cost what they do in a
        // terminal.
        std::thread([] {}).join();
        const bool recordsAreFast = compareRecords();
        const bool rowsAreFast = compareRows();
        const bool historiesAreFast = compareHistories();
        return recordsAreFast && rowsAreFast && historiesAreFast ? 0 : 1;
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return 2;
    }
}
