#include "apps/tessi/placement.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using States = std::vector<std::vector<tessi::StateRange>>;

// "3 - 7": the states of things with one, a dash for one without.
std::string placed(const States& states)
{
    std::string text;
    for (const auto& state : tessi::placeInOrder(states))
        text += fmt::format("{}{}", text.empty() ? "" : " ", state ? std::to_string(*state) : "-");
    return text;
}

TEST(Placement, shouldPlaceAsManyAsPossibleWhenNoneMayGoBack)
{
    struct Row {
        const char* what;
        States states;
        const char* placed;
    };
    const Row rows[] = {
        {"nothing", {}, ""},
        {"the first state that will do", {{{2, 5}}, {{4, 9}}}, "2 4"},
        {"several at one state", {{{2, 5}}, {{0, 3}}, {{2, 3}}}, "2 2 2"},
        {"one that fits nowhere", {{{2, 5}}, {}, {{4, 9}}}, "2 - 4"},
        {"one that has passed", {{{5, 6}}, {{0, 2}}, {{6, 9}}}, "- 0 6"},
        {"one that by chance fits late only", {{{1, 2}}, {{90, 99}}, {{3, 4}}, {{5, 6}}}, "1 - 3 5"},
        {"a later range", {{{5, 6}}, {{1, 2}, {7, 9}}, {{8, 9}}}, "5 7 8"},
        {"a thing once", {{{1, 2}, {5, 6}}, {{5, 6}}}, "1 5"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(placed(row.states), row.placed) << row.what;
}

// "2-5 7-9"
std::string text(const tessi::States& states)
{
    std::string text;
    for (const tessi::StateRange& range : states)
        text += fmt::format("{}{}-{}", text.empty() ? "" : " ", range.from, range.to);
    return text;
}

TEST(Placement, shouldGiveTheStatesOfBothOrEitherWhenTwoAlternate)
{
    struct Row {
        tessi::States a, b;
        const char* common;
        const char* joined;
    };
    const Row rows[] = {
        {{}, {}, "", ""},
        {{{1, 3}}, {}, "", "1-3"},
        {{{1, 3}, {7, 9}}, {{3, 5}, {9, 12}}, "", "1-3 3-5 7-9 9-12"},
        {{{1, 3}, {7, 9}}, {{2, 8}}, "2-3 7-8", nullptr},
        {{{1, 9}}, {{2, 3}, {4, 5}, {8, 12}}, "2-3 4-5 8-9", nullptr},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(text(tessi::common(row.a, row.b)), row.common);
        EXPECT_EQ(text(tessi::common(row.b, row.a)), row.common);
        if (row.joined != nullptr) {
            EXPECT_EQ(text(tessi::joined(row.a, row.b)), row.joined);
            EXPECT_EQ(text(tessi::joined(row.b, row.a)), row.joined);
        }
    }
}

// The most that can be placed, by trying every choice; no chance steers this one.
std::size_t most(const States& states, std::size_t thing = 0, std::size_t from = 0)
{
    if (thing == states.size())
        return 0;
    std::size_t best = most(states, thing + 1, from);
    for (const tessi::StateRange& range : states[thing]) {
        if (range.to > from)
            best = std::max(best, 1 + most(states, thing + 1, std::max(from, range.from)));
    }
    return best;
}

TEST(Placement, shouldPlaceAsManyAsEveryChoiceTriedOutWhenStatesAreRandom)
{
    for (unsigned seed = 0; seed < 500; ++seed) {
        std::mt19937 random(seed);
        States states(1 + random() % 9);
        for (auto& ranges : states) {
            for (std::size_t from = random() % 6; from < 20; from += 1 + random() % 12) {
                const std::size_t to = from + 1 + random() % 6;
                ranges.push_back({from, to});
                from = to;
            }
        }
        const auto result = tessi::placeInOrder(states);
        std::size_t count = 0;
        std::size_t before = 0;
        for (std::size_t i = 0; i < states.size(); ++i) {
            if (!result[i])
                continue;
            ++count;
            EXPECT_GE(*result[i], before) << "seed " << seed;
            before = *result[i];
            EXPECT_TRUE(std::any_of(
                states[i].begin(), states[i].end(),
                [&](const tessi::StateRange& range) { return range.from <= *result[i] && *result[i] < range.to; }))
                << "seed " << seed;
        }
        EXPECT_EQ(count, most(states)) << "seed " << seed;
    }
}

} // namespace
