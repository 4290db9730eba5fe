#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace tessi {

// States of a walk, `from` to before `to`.
struct StateRange {
    std::size_t from = 0;
    std::size_t to = 0;
};

// Ranges, ascending and apart.
using States = std::vector<StateRange>;

bool isIn(const StateRange& range, std::size_t state);
bool isIn(const States& states, std::size_t state);

// The states that are in both.
States common(const States& a, const States& b);

// The states of either; none may be in both.
States joined(const States& a, const States& b);

// Gives things that come in an order a state each, such that none has a state before that of an earlier one, and as
// many of them as possible have one. `states` holds for each thing the states that would do.
//
// Taking the first state that will do, thing after thing, is not enough: one that by chance fits much later only would
// leave no room for all those behind it.
std::vector<std::optional<std::size_t>> placeInOrder(const std::vector<States>& states);

} // namespace tessi
