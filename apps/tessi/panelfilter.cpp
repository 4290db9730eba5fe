#include "apps/tessi/panelfilter.h"

#include "apps/tessi/checks.h"
#include "apps/tessi/followedlists.h"

namespace tessi {

std::string filterFault(const PanelOptions& options)
{
    if (options.connective && !(options.minHands && options.minAmount))
        return "--connective needs --min-hands and --min-amount";
    if (options.from && options.to && secondsOf(*options.from) > secondsOf(*options.to))
        return "--from is later than --to";
    return {};
}

TC::SDepthFilterParam filterOf(const PanelOptions& options)
{
    constexpr int kEitherIsEnough = 0;
    constexpr int kBothAreNeeded = 1;
    TC::SDepthFilterParam filter = wholeDayFilter();
    filter.hands = options.minHands.value_or(0);
    filter.amount = options.minAmount.value_or(0);
    // A threshold that was not given passes every row: either being enough would make the other one pointless.
    filter.connective = options.connective == "or" ? kEitherIsEnough : kBothAreNeeded;
    if (options.from)
        filter.startTime = secondsOf(*options.from) * 1000;
    if (options.to)
        filter.endTime = secondsOf(*options.to) * 1000;
    filter.showBuyOrder = filter.showBuyCancel = options.side != "sell";
    filter.showSellOrder = filter.showSellCancel = options.side != "buy";
    return filter;
}

} // namespace tessi
