#pragma once

#include <functional>

namespace tests {

// Whether members stand in memory in the order in which they are given. Their order is part of the contract.
template <class First, class Second, class... Rest>
bool standInOrder(const First& first, const Second& second, const Rest&... rest)
{
    const void* const a = &first;
    const void* const b = &second;
    const bool inOrder = std::less<const void*>()(a, b);
    if constexpr (sizeof...(Rest) == 0)
        return inOrder;
    else
        return inOrder && standInOrder(second, rest...);
}

} // namespace tests
