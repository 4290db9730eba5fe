#pragma once

#include "bench/bookfeed.h"
#include "bench/operations.h"

#include <cstddef>
#include <memory>
#include <vector>

// What the models of tick-built books are measured with, one as the other.
namespace bench {

// A model, and the two histories up to a tick.
template <class Model>
struct FollowedModel {
    explicit FollowedModel(const TickOptions& options, bool onlyHalf = false)
        : feed(options)
        , start(onlyHalf ? feed.size() / 2 : feed.size())
        , orders(feed.historyOfOrders(start))
        , trades(feed.historyOfTrades(start))
    {
        feed.follow(model);
    }

    void empty()
    {
        model.clear();
        feed.freeReleased();
    }

    void build(FirstHistory first = FirstHistory::Orders) { feed.deliverHistory(model, orders, trades, first); }

    BookFeed feed;
    std::size_t start;
    BookFeed::Batch orders;
    BookFeed::Batch trades;
    Model model;
};

// For each event of both histories.
template <class Model>
Body prepareModelHistory(const TickOptions& options, FirstHistory first)
{
    auto followed = std::make_shared<FollowedModel<Model>>(options);
    return {[followed, first](int) {
                followed->build(first);
                return static_cast<int>(followed->feed.size());
            },
            [followed] { followed->empty(); }};
}

// For each event of the second half of the stream, from the callback through the strand.
template <class Model>
Body prepareModelLive(const TickOptions& options)
{
    auto followed = std::make_shared<FollowedModel<Model>>(options, true);
    auto pushes = std::make_shared<std::vector<BookFeed::Batch>>();
    for (std::size_t i = followed->start; i < followed->feed.size(); ++i)
        pushes->push_back(followed->feed.liveBatch(i));
    return {[followed, pushes](int) {
                for (std::size_t i = 0; i < pushes->size(); ++i)
                    followed->feed.deliverLive(followed->model, followed->start + i, (*pushes)[i]);
                return static_cast<int>(pushes->size());
            },
            [followed] {
                followed->empty();
                followed->build();
            }};
}

} // namespace bench
