#include "bench/book.h"

#include "bench/bookfeed.h"

#include <string>

namespace bench {

namespace {

// A busy stock's day.
constexpr TickOptions kStream{.events = 1'000'000};

// What a round needs: a stream, from where on it counts, and a fresh book, since a stream can be applied only once.
template <class Book>
struct Round {
    explicit Round(const TickOptions& options)
        : feed(options)
    {}

    int size() const { return static_cast<int>(feed.size() - start); }

    BookFeed feed;
    std::size_t start = 0;
    std::unique_ptr<Book> book; // goes before the feed
};

template <class Book>
Body prepareHistory()
{
    auto round = std::make_shared<Round<Book>>(kStream);
    round->feed.checkAgainstReference();
    return {[round](int) {
                round->feed.applyHistory(*round->book, 0, round->feed.size());
                return round->size();
            },
            [round] { round->book = round->feed.template newBook<Book>(); }};
}

Body liveFrom(const std::shared_ptr<Round<TC::ThousandBook>>& round)
{
    return {[round](int) {
                round->feed.applyLive(*round->book, round->start, round->feed.size());
                return round->size();
            },
            [round] {
                round->book = round->feed.newBook();
                round->feed.applyHistory(*round->book, 0, round->start);
            }};
}

Body prepareLive()
{
    auto round = std::make_shared<Round<TC::ThousandBook>>(kStream);
    round->start = round->feed.size() / 2;
    return liveFrom(round);
}

Body prepareLevels(int levels)
{
    auto round = std::make_shared<Round<TC::ThousandBook>>(streamOfLevels(levels, 50'000));
    round->start = round->feed.stream().opening;
    return liveFrom(round);
}

Body prepareReference(bool isLive)
{
    auto round = std::make_shared<Round<ReferenceBook>>(kStream);
    round->start = isLive ? round->feed.size() / 2 : 0;
    return {[round](int) {
                round->feed.apply(*round->book, round->start, round->feed.size());
                return round->size();
            },
            [round] {
                round->book = round->feed.newReference();
                round->feed.apply(*round->book, 0, round->start);
            }};
}

std::vector<Operation> levelOperations()
{
    std::vector<Operation> operations;
    for (const int levels : {200, 2000, 20000}) {
        operations.push_back(
            {"book_live_" + std::to_string(levels) + "_levels", [levels] { return prepareLevels(levels); }});
    }
    return operations;
}

} // namespace

TickOptions streamOfLevels(int levels, int liveEvents)
{
    // The same crowd about the touch each time, and one order at every level of the depth.
    const int resting = 2 * levels + 10'000;
    return {.events = resting + liveEvents, .levels = levels, .resting = resting};
}

std::vector<Operation> bookOperations()
{
    std::vector<Operation> operations = {
        {"reference_history", [] { return prepareReference(false); }},
        {"reference_live", [] { return prepareReference(true); }},
        {"book_history", prepareHistory<TC::ThousandBook>},
        {"book_live", prepareLive},
        {"queue_book_history", prepareHistory<TC::QueueBook>},
    };
    for (Operation& operation : levelOperations())
        operations.push_back(std::move(operation));
    return operations;
}

} // namespace bench
