#include "exchange/marketview.h"

#include "exchange/auction.h"
#include "exchange/orderbook.h"

#include <algorithm>

namespace exchange {

namespace {

SideView viewOf(const Levels& levels)
{
    SideView view;
    view.all.reserve(std::min(levels.size(), kThousandLevels));
    __int64 amountInTicks = 0;
    for (const auto& [key, level] : levels) {
        if (view.all.size() < kShownLevels)
            view.shown[view.all.size()] = {level.price, level.volume};
        if (view.all.size() < kThousandLevels)
            view.all.push_back({level.price, level.volume, level.orders.size()});
        view.total += level.volume;
        amountInTicks += level.price * level.volume;
    }
    if (levels.empty())
        return view;

    view.averagePrice = averageOf(amountInTicks, view.total);
    const Level& best = levels.begin()->second;
    view.queuePrice = best.price;
    for (const RestingOrder& order : best.orders) {
        if (view.queue.size() == kQueuedOrders)
            break;
        view.queue.push_back(order.left);
    }
    return view;
}

SideView indicative(const Uncross& uncross, Shares left)
{
    SideView view;
    view.shown[0] = {uncross.price, uncross.volume};
    view.shown[1] = {0, left};
    view.queuePrice = uncross.price;
    return view;
}

} // namespace

MarketView::MarketView(const OrderBook& book, Phase shownPhase, const DayStatistics& dayStatistics)
    : phase(shownPhase)
    , statistics(dayStatistics)
{
    if (!isCallAuction(phase)) {
        bid = viewOf(book.levels(Side::Buy));
        ask = viewOf(book.levels(Side::Sell));
    } else if (const auto uncross = findUncross(book, statistics.reference(book.band().lastClose))) {
        bid = indicative(*uncross, uncross->buyLeft);
        ask = indicative(*uncross, uncross->sellLeft);
    }
}

} // namespace exchange
