#pragma once

#include "utils/int64.h"

#include <cstddef>
#include <map>
#include <string>

namespace quoter {
struct OrderData;
struct QuoterDepthData;
struct TransactionData;
} // namespace quoter

// The book of a day by Shanghai's rules for ticks, counted from the records alone: an order appears with its full size
// behind the trades that it made on its arrival, and never when they used it up; a delete takes what is left.
class ShanghaiReplay {
public:
    void apply(const quoter::OrderData& order);
    void apply(const quoter::TransactionData& trade);

    // "bids 1230x500 1229x100 asks ... volume 600": ten levels, prices in ticks of 0.01, and the day volume.
    std::string text() const;
    static std::string textOf(const quoter::QuoterDepthData& snapshot);

    // "bid 900@1230 ask 600@1233": shares and average price of all that rests, half a tick up.
    std::string auxText() const;

    // Orders that traded and have not appeared.
    std::size_t neverAppeared() const { return m_arriving.size(); }

    std::string faults; // a line for each rule that a record breaks

private:
    struct Order {
        bool buy = false;
        int price = 0;
        __int64 left = 0;
    };
    void trade(__int64 seq, __int64 shares, bool mayArrive);

    std::map<__int64, Order> m_orders;
    std::map<__int64, __int64> m_arriving; // shares traded by orders that have not appeared
    std::map<__int64, __int64> m_deleted;  // awaits its cancel among the trades
    __int64 m_volume = 0;
};
