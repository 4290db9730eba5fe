#include "apps/tessi/ordertrace.h"

#include "apps/tessi/daydelivery.h"
#include "apps/tessi/followedlists.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"
#include "standin/terminal.h"

#include <algorithm>

namespace tessi {

namespace {

using Model = TC::CModelDepthEntrust;

// The records of an order, in ms. They come from the streams from which the list takes them.
struct RecordTimes {
    RecordTimes(const recording::RecordedDay& day, int seq)
    {
        const bool deletesAreOrders = day.instrument.market == "SH";
        for (const recording::Event& event : day.events) {
            if (event.stream == recording::Stream::Orders)
                add(static_cast<const quoter::OrderData&>(*event.record), seq);
            else if (event.stream == recording::Stream::Trades && !deletesAreOrders)
                add(static_cast<const quoter::TransactionData&>(*event.record), seq);
        }
    }

    void add(const quoter::OrderData& order, int seq)
    {
        const bool isDelete = order.bsFlag == quoter::kSideCancelBuy || order.bsFlag == quoter::kSideCancelSell;
        if (order.seq == seq)
            (isDelete ? cancelled : ordered).push_back(order.timetag);
    }

    void add(const quoter::TransactionData& trade, int seq)
    {
        if (trade.transKind == quoter::kTransKindCancel && (trade.buySeq == seq || trade.sellSeq == seq))
            cancelled.push_back(trade.timetag);
    }

    std::vector<__int64> ordered;
    std::vector<__int64> cancelled;
};

// The first of the times that is in the second, which is not given again.
__int64 takeFrom(std::vector<__int64>& times, __int64 second)
{
    const auto found = std::find_if(times.begin(), times.end(),
                                    [second](__int64 time) { return TC::detail::toSeconds(time) == second; });
    if (found == times.end())
        return second * 1000;
    const __int64 time = *found;
    times.erase(found);
    return time;
}

void addTimes(OrderTrace& trace, const recording::RecordedDay& day)
{
    RecordTimes times(day, trace.seq);
    if (trace.order)
        trace.orderedAt = takeFrom(times.ordered, trace.order->time);
    for (const auto& cancel : trace.fate.cancels)
        trace.cancelledAt.push_back(takeFrom(times.cancelled, cancel->time));
}

// Hands the list of the whole day to `look`.
template <class Look>
std::optional<OrderTrace> afterTheDay(const recording::RecordedDay& day, const Look& look)
{
    standin::Terminal terminal;
    introduce(terminal, day);
    FollowedOrders orders(day);
    deliverAsHistory(terminal, day, [&orders](recording::DataLayer& data) { orders.subscribe(data); });
    std::optional<OrderTrace> trace = look(*orders.model);
    if (trace)
        addTimes(*trace, day);
    return trace;
}

int rowOf(const Model& model, const Model::OrderRow& order)
{
    int row = 0;
    while (model.getOrderData(row, true) != order)
        ++row;
    return row;
}

} // namespace

std::optional<__int64> OrderTrace::left() const
{
    if (!order)
        return std::nullopt;
    return order->volume - fate.traded - fate.cancelled;
}

int OrderTrace::counterpartOf(const quoter::TransactionData& trade) const
{
    return trade.buySeq == seq ? trade.sellSeq : trade.buySeq;
}

std::optional<OrderTrace> traceOrder(const recording::RecordedDay& day, int seq)
{
    return afterTheDay(day, [seq](const Model& model) -> std::optional<OrderTrace> {
        OrderTrace trace{seq, -1, nullptr, OrderFates(model).of(seq), 0, {}};
        if (model.getOrderData(seq, trace.order))
            trace.row = rowOf(model, trace.order);
        else if (trace.fate.trades.empty() && trace.fate.cancels.empty())
            return std::nullopt;
        return trace;
    });
}

std::optional<OrderTrace> traceRow(const recording::RecordedDay& day, int row)
{
    return afterTheDay(day, [row](const Model& model) -> std::optional<OrderTrace> {
        const Model::OrderRow order = model.getOrderData(row, true);
        if (!order)
            return std::nullopt;
        return OrderTrace{order->seq, row, order, OrderFates(model).of(order->seq), 0, {}};
    });
}

} // namespace tessi
