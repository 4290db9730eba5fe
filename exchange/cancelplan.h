#pragma once

#include "exchange/order.h"
#include "exchange/random.h"
#include "exchange/tradingday.h"

#include <functional>
#include <optional>
#include <queue>
#include <utility>
#include <vector>

namespace exchange {

class OrderBook;
struct RestingOrder;

// Which resting orders their owners take back, and when.
//
// An owner of the patient kind never does. The others come back to their order after a log-normal time, sooner
// when it waits near the touch; an order that has meanwhile moved to the front is mostly left alone and looked at
// again later. Time spent in phases that refuse cancels does not count.
class CancelPlan {
public:
    explicit CancelPlan(const Random& random)
        : m_random(random)
    {}

    // An order came to rest at `now`.
    void add(const RestingOrder& order, const OrderBook& book, DayTime now);

    // When an owner next comes back to an order; none when no one does any more.
    std::optional<DayTime> nextTime() const;

    // The order that is to be cancelled at nextTime(), which must not be none and then moves on; none when the order
    // has been filled or stays.
    std::optional<__int64> take(const OrderBook& book);

private:
    void plan(__int64 seq, DayTime now, DayTime medianLife);

    using Visit = std::pair<DayTime, __int64>; // and the seq
    std::priority_queue<Visit, std::vector<Visit>, std::greater<>> m_visits;
    Random m_random;
};

} // namespace exchange
