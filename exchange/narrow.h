#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace exchange {

// Sequence numbers of trades and the numbers of queues and thousand-level snapshots have 32 bits. Throws
// std::overflow_error for a number that does not fit.
template <class Number>
int narrow(Number number)
{
    if (!std::in_range<int>(number))
        throw std::overflow_error(std::to_string(number) + " does not fit a record's field of 32 bits");
    return static_cast<int>(number);
}

} // namespace exchange
