#include "apps/tessi/queueexplanation.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace {

// "6 9": the seqs of the orders that explain the sizes; the book's are those of odd numbers.
std::string explained(const std::vector<std::pair<int, int>>& orders, const std::vector<__int64>& sizes)
{
    std::vector<tessi::QueuedOrder> book;
    std::vector<tessi::RestingOrder> others;
    for (const auto& [seq, shares] : orders) {
        if (seq % 2 == 1)
            book.push_back({seq, shares});
        else
            others.push_back({seq, 7, true, 0, shares});
    }
    std::string text;
    for (const tessi::RestingOrder& order : tessi::QueueCandidates(book, others).explain(sizes))
        text += fmt::format("{}{}", text.empty() ? "" : " ", order.seq);
    return text;
}

TEST(QueueExplanation, shouldTakeTheOrdersThatMakeUpTheSizesWhenTheBooksAreAllThere)
{
    struct Row {
        const char* what;
        std::vector<std::pair<int, int>> orders; // seq and shares
        std::vector<__int64> sizes;
        const char* seqs;
    };
    const Row rows[] = {
        {"nothing recorded", {{1, 300}, {2, 500}}, {}, ""},
        {"one among the book's", {{1, 300}, {2, 500}, {3, 200}}, {300, 500, 200}, "2"},
        {"not where its number puts it", {{1, 300}, {2, 500}, {3, 200}}, {300, 200, 500}, ""},
        {"no difference", {{1, 300}, {2, 500}}, {300}, ""},
        {"one of the book's is not recorded", {{1, 300}, {2, 500}, {3, 200}}, {300, 500}, ""},
        {"none of the book's is recorded", {{1, 300}, {2, 500}}, {500}, ""},
        {"the first that fits leaves nothing for the book's",
         {{2, 100}, {3, 100}, {5, 200}, {6, 300}},
         {100, 200, 300},
         "6"},
        {"the first that fits is needed", {{2, 100}, {3, 100}, {5, 200}}, {100, 100, 200}, "2"},
        {"either of two", {{2, 100}, {3, 200}, {4, 100}, {6, 100}}, {200, 100}, "6"},
        {"two of three", {{2, 100}, {4, 100}, {6, 100}}, {100, 100}, "4 6"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(explained(row.orders, row.sizes), row.seqs) << row.what;
}

} // namespace
