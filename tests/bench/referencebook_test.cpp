#include "bench/bookfeed.h"
#include "bench/referencebook.h"
#include "indexui/tessimodel/cmodeldepthqueue.h"
#include "indexui/tessimodel/cmodeldepththousand.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

using namespace bench;
using tests::cancelOfBuy;
using tests::fill;
using tests::order;

namespace {

Tick tick(const tests::Order& record)
{
    return {record, nullptr};
}

Tick tick(const tests::Trade& record)
{
    return {nullptr, record};
}

std::string textOf(const ReferenceBook& book)
{
    std::string text;
    for (const LevelTotal& total : book.totals()) {
        text += (total.isBid ? "bid " : "ask ") + std::to_string(total.key) + " " + std::to_string(total.volume) +
                " x" + std::to_string(total.number) + "\n";
    }
    return text;
}

} // namespace

TEST(ReferenceBook, shouldTakeBothSidesWhenOrdersTrade)
{
    ReferenceBook book(900, 1100, 10);
    book.apply(tick(order(1).buy(10.00).shares(300)));
    book.apply(tick(order(2).buy(10.00).shares(200)));
    book.apply(tick(order(3).sell(10.00).shares(400)));
    book.apply(tick(fill(1, 3).at(10.00).shares(300)));
    EXPECT_EQ(textOf(book), "bid 1000 200 x1\nask 1000 100 x1\n");
    book.apply(tick(fill(2, 3).at(10.00).shares(100)));
    EXPECT_EQ(textOf(book), "bid 1000 100 x1\n");
}

TEST(ReferenceBook, shouldDropWholeOrderWhenCancelled)
{
    ReferenceBook book(900, 1100, 10);
    for (const int seq : {1, 2, 3})
        book.apply(tick(order(seq).buy(9.99).shares(100)));
    book.apply(tick(cancelOfBuy(2).shares(100)));
    EXPECT_EQ(textOf(book), "bid 999 200 x2\n");
    book.apply(tick(order(4).sell(10.01).shares(500)));
    book.apply(tick(cancelOfBuy(1)));
    book.apply(tick(cancelOfBuy(3)));
    EXPECT_EQ(textOf(book), "ask 1001 500 x1\n");
}

// What is measured is the same work: books and models come to the same levels by the same ticks.
class MeasuredBooks : public testing::TestWithParam<std::uint64_t> {
protected:
    BookFeed feed{{.events = 60'000, .levels = 500, .resting = 5000, .seed = GetParam()}};

    std::vector<LevelTotal> expected() const
    {
        const auto reference = feed.newReference();
        feed.apply(*reference, 0, feed.size());
        return reference->totals();
    }
};

INSTANTIATE_TEST_SUITE_P(Seeds, MeasuredBooks, testing::Values(1U, 2U, 3U));

TEST_P(MeasuredBooks, shouldComeToTheSameLevelsWhenBookTakesHistory)
{
    EXPECT_GT(expected().size(), 200U);
    const auto book = feed.newBook();
    feed.applyHistory(*book, 0, feed.size());
    EXPECT_EQ(totalsOf(*book), expected());
    const auto queues = feed.newBook<TC::QueueBook>();
    feed.applyHistory(*queues, 0, feed.size());
    EXPECT_EQ(totalsOf(*queues), expected());
}

TEST_P(MeasuredBooks, shouldComeToTheSameLevelsWhenBookTakesLiveTicks)
{
    const auto book = feed.newBook();
    feed.applyHistory(*book, 0, feed.size() / 2);
    feed.applyLive(*book, feed.size() / 2, feed.size());
    EXPECT_EQ(totalsOf(*book), expected());
}

// The same for both models of tick-built books.
template <class Model>
void checkHistories(BookFeed& feed, FirstHistory first, const std::vector<LevelTotal>& expected)
{
    Model model;
    feed.follow(model);
    feed.deliverHistory(model, feed.historyOfOrders(feed.size()), feed.historyOfTrades(feed.size()), first);
    EXPECT_EQ(totalsOf(model.m_book), expected);
}

template <class Model>
void checkLivePushes(BookFeed& feed, const std::vector<LevelTotal>& expected)
{
    Model model;
    feed.follow(model);
    const std::size_t half = feed.size() / 2;
    feed.deliverHistory(model, feed.historyOfOrders(half), feed.historyOfTrades(half));
    for (std::size_t i = half; i < feed.size(); ++i)
        feed.deliverLive(model, i, feed.liveBatch(i));
    EXPECT_EQ(totalsOf(model.m_book), expected);
}

TEST_P(MeasuredBooks, shouldComeToTheSameLevelsWhenModelTakesHistories)
{
    for (const FirstHistory first : {FirstHistory::Orders, FirstHistory::Trades}) {
        SCOPED_TRACE(first == FirstHistory::Orders ? "orders first" : "trades first");
        checkHistories<TC::CModelDepthThousand>(feed, first, expected());
        checkHistories<TC::CModelDepthQueue>(feed, first, expected());
    }
}

TEST_P(MeasuredBooks, shouldComeToTheSameLevelsWhenModelTakesLivePushes)
{
    checkLivePushes<TC::CModelDepthThousand>(feed, expected());
    checkLivePushes<TC::CModelDepthQueue>(feed, expected());
}
