#pragma once

#include "recording/recordedday.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace quoter {
struct OrderData;
struct TransactionData;
} // namespace quoter

// A day's book, counted anew from its order and trade records and nothing else: no code of the simulator takes part.
// Every rule that a tick breaks becomes a line in `faults`. Prices in ticks, times in milliseconds of the day.
class PlainReplay {
public:
    explicit PlainReplay(const recording::RecordedDay& day);

    void apply(const quoter::OrderData& order);
    void apply(const quoter::TransactionData& trade);

    // To be called with the stamp of each snapshot: what has arrived can trade no more, and what is left of it rests.
    void settle(__int64 timetag);

    // What the snapshot streams must say when they are stamped with the newest time, in the form of the
    // texts of snapshottext.h.
    std::string quoteText(int levels) const;
    std::string queueText() const;
    std::string thousandText() const;
    std::string countsText() const;
    std::string auxText() const;

    // The shares of the limit orders at each price of a side, also of an order that has just arrived and may still
    // trade: a book of price levels shows these, and none of the market orders that rest.
    std::map<int, __int64> limitShares(bool buy) const;

    // The resting orders of market kinds, at the prices that the exchange gave them.
    struct Resting {
        __int64 shares = 0;
        int orders = 0;
    };
    std::map<int, Resting> marketOrders(bool buy) const;

    // The tradeStatus of a snapshot with the newest time. A call auction still shows itself at the moment it ends.
    int status() const;

    // Whatever is left to check when the day is over: also the auctions that no record came after.
    void finish();

    struct Order {
        bool buy = false;
        int kind = 0;
        int price = 0; // 0 while a market order has none
        __int64 entered = 0;
        __int64 traded = 0;
        __int64 cancelled = 0;
        int time = 0;
        __int64 left() const { return entered - traded - cancelled; }
    };

    const int perUnit; // ticks of one unit of the currency
    __int64 volume = 0;
    std::vector<std::string> faults;

private:
    struct Level {
        __int64 volume = 0;
        std::set<__int64> orders; // oldest first
    };
    // An auction, by brute force over all ticks and orders; price 0 when nothing matches.
    struct Match {
        int price = 0;
        __int64 volume = 0;
        __int64 buyLeft = 0;
        __int64 sellLeft = 0;
    };
    using Levels = std::map<int, Level>; // bids by minus the price, so that the best comes first
    struct Active {
        bool buy = false;
        __int64 volume = 0;
        __int64 ticks = 0;
    };

    void fault(const std::string& what);
    void checkClock(__int64 timetag);
    void checkUncross();
    void checkNotCrossed();
    void checkNothingPending(bool sameOrderGoesOn);
    void applyCancel(const quoter::TransactionData& trade);
    void checkAuctionFill(int price, __int64 shares);
    void checkContinuousFill(const quoter::TransactionData& trade, __int64 aggressor, __int64 passive, int price);
    Match auction() const;
    bool inAuction() const;
    Order* take(__int64 seq, bool buy);
    int bestPrice(bool buy) const;
    bool crosses(const Order& order) const;
    const Levels& levels(bool buy) const { return buy ? m_bids : m_asks; }
    Level& levelOf(const Order& order);
    void leave(__int64 seq);
    void count(__int64 seq, int price, __int64 shares);

    int ticks(double price) const;

    int m_lot; // shares in a hand; a bond's has 10
    __int64 m_midnight;
    int m_lastClose;
    int m_low;
    int m_high;
    int m_now = 0;
    __int64 m_lastSeq = 0;
    __int64 m_recordsSinceSeq = 0;
    __int64 m_pending = 0; // the order that may still trade on its arrival
    Match m_due;           // what the newest auction still has to trade
    std::map<__int64, Order> m_done;
    std::map<__int64, Order> m_resting; // also the pending one
    Levels m_bids, m_asks;              // without the pending one
    std::map<__int64, Active> m_active; // by the aggressor's seq
    int m_open = 0, m_dayHigh = 0, m_dayLow = 0, m_last = 0;
    __int64 m_amount = 0;
};
