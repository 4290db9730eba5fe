#include "exchange/tickfeed.h"

#include "exchange/narrow.h"
#include "exchange/orderbook.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"

#include <utility>

namespace exchange {

using recording::Stream;

namespace {

constexpr int kTrade = 0;
constexpr int kNoAggressor = 0;

// Kind 0 is none that books take: they have the cancel from the trades.
constexpr int kDelete = 0;

class ShenzhenTicks : public TickFeed {
public:
    using TickFeed::TickFeed;

    void collected(DayTime time, const Order& order) override
    {
        Order priced = order;
        priced.price = order.kind == OrderKind::Limit ? order.price : 0;
        appendOrder(time, priced, static_cast<int>(order.side), static_cast<int>(order.kind));
    }

    void entered(DayTime time, const Order& order, const Outcome& outcome, const RestingOrder*) override
    {
        collected(time, order);
        uncrossed(time, outcome.fills);
        if (outcome.cancelled > 0)
            appendCancel(time, order.side, order.seq, outcome.cancelled);
    }

    void uncrossed(DayTime time, const std::vector<Fill>& fills) override
    {
        for (const Fill& fill : fills)
            appendTrade(time, fill, static_cast<int>(fill.aggressor()));
    }

    void cancelled(DayTime time, const RestingOrder& order) override
    {
        appendCancel(time, order.side, order.seq, order.left);
    }
};

class ShanghaiTicks : public TickFeed {
public:
    using TickFeed::TickFeed;

    void collected(DayTime time, const Order& order) override { appendLimit(time, order); }

    void entered(DayTime time, const Order& order, const Outcome& outcome, const RestingOrder* resting) override
    {
        for (const Fill& fill : outcome.fills)
            appendTrade(time, fill, static_cast<int>(fill.aggressor()));
        if (!resting)
            return;
        Order added = order;
        added.price = resting->price;
        appendLimit(time, added);
    }

    void uncrossed(DayTime time, const std::vector<Fill>& fills) override
    {
        for (const Fill& fill : fills)
            appendTrade(time, fill, kNoAggressor);
    }

    void cancelled(DayTime time, const RestingOrder& order) override
    {
        const int bsFlag = order.side == Side::Buy ? quoter::kSideCancelBuy : quoter::kSideCancelSell;
        appendOrder(time, {order.seq, order.side, OrderKind::Limit, order.price, order.left}, bsFlag, kDelete);
        appendCancel(time, order.side, order.seq, order.left);
    }

private:
    void appendLimit(DayTime time, const Order& order)
    {
        appendOrder(time, order, static_cast<int>(order.side), static_cast<int>(OrderKind::Limit));
    }
};

} // namespace

TickFeed::TickFeed(std::vector<recording::Event>& events, __int64 midnight, TickSize tick)
    : m_events(events)
    , m_midnight(midnight)
    , m_tick(tick)
{}

TickFeed::~TickFeed() = default;

void TickFeed::appendOrder(DayTime time, const Order& order, int bsFlag, int orderKind)
{
    auto record = std::make_shared<quoter::OrderData>();
    record->timetag = m_midnight + time;
    record->price = m_tick.price(order.price);
    record->volume = order.volume;
    record->seq = narrow(order.seq);
    record->orderKind = orderKind;
    record->bsFlag = bsFlag;
    m_events.push_back({Stream::Orders, std::move(record), nullptr});
}

void TickFeed::appendTrade(DayTime time, const Fill& fill, int tradeFlag)
{
    auto record = std::make_shared<quoter::TransactionData>();
    record->timetag = m_midnight + time;
    record->price = m_tick.price(fill.price);
    record->volume = fill.volume;
    record->buySeq = narrow(fill.buySeq);
    record->sellSeq = narrow(fill.sellSeq);
    record->tradeFlag = tradeFlag;
    record->transKind = kTrade;
    m_events.push_back({Stream::Trades, std::move(record), nullptr});
}

void TickFeed::appendCancel(DayTime time, Side side, __int64 seq, Shares remainder)
{
    auto record = std::make_shared<quoter::TransactionData>();
    record->timetag = m_midnight + time;
    record->volume = remainder;
    (side == Side::Buy ? record->buySeq : record->sellSeq) = narrow(seq);
    record->transKind = quoter::kTransKindCancel;
    m_events.push_back({Stream::Trades, std::move(record), nullptr});
}

std::unique_ptr<TickFeed> makeTickFeed(const std::string& market, std::vector<recording::Event>& events,
                                       __int64 midnight, TickSize tick)
{
    if (market == "SZ")
        return std::make_unique<ShenzhenTicks>(events, midnight, tick);
    if (market == "SH")
        return std::make_unique<ShanghaiTicks>(events, midnight, tick);
    return nullptr;
}

} // namespace exchange
