#pragma once

#include "utils/int64.h"

#include <map>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

namespace quoter {
struct OrderData;
struct TransactionData;
} // namespace quoter

namespace recording {
struct Event;
}

namespace tessi {

// The kinds of which a book of price levels shows no row.
constexpr bool isMarketKind(int orderKind)
{
    return orderKind == 2 || (orderKind >= 4 && orderKind <= 7);
}

// An order that rests at the exchange, as far as its own records tell.
struct RestingOrder {
    __int64 seq = 0;
    int kind = 0; // orderKind
    bool isBid = false;
    double price = 0; // its limit; of a market kind the price of its latest trade, and 0 before it has traded
    __int64 shares = 0;

    bool isMarketKind() const { return tessi::isMarketKind(kind); }
};

// Some, and all of market kinds.
bool areMarketOrders(const std::vector<RestingOrder>& orders);

// What is left of every order of a day, each by itself: no queue and no rule of priority takes part, so that it can
// tell what a book has got wrong. A trade may come before its order. One thread.
class OrderLedger {
public:
    explicit OrderLedger(double priceTick)
        : m_priceTick(priceTick)
    {}

    void apply(const recording::Event& tick); // an order or trade
    void apply(const quoter::OrderData& order);
    void apply(const quoter::TransactionData& trade);

    // The orders of market kinds that may rest at a price key of a side, oldest first: one that has traded rests at the
    // price of that trade, any other may rest anywhere. And the limit orders there.
    std::vector<RestingOrder> marketKindsAt(bool isBid, int key) const;
    std::vector<RestingOrder> limitsAt(bool isBid, int key) const;

private:
    using Seqs = std::set<__int64>;

    void take(__int64 seq, const quoter::TransactionData& trade);
    int keyOf(double price) const;
    Seqs& placeOf(const RestingOrder& order);
    std::vector<RestingOrder> all(const Seqs& seqs) const;

    double m_priceTick;
    std::unordered_map<__int64, RestingOrder> m_resting;
    std::unordered_map<__int64, __int64> m_early; // shares traded before the order came
    std::map<bool, Seqs> m_marketKinds;           // by side
    std::map<std::pair<bool, int>, Seqs> m_limits;
};

} // namespace tessi
