#include "indexui/tessimodel/detail/bookrows.h"

#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/liveread.h"

#include <algorithm>

namespace TC::detail {

namespace {

double priceOf(const boost::shared_ptr<EntrustData>& row)
{
    return readLive(row->price);
}

} // namespace

void RowExtremes::widen(const EntrustData& row)
{
    const double price = readLive(row.price);
    if (isGreater(price, maxPrice))
        maxPrice = price;
    if (isLess(price, minPrice))
        minPrice = price;
    maxAmount = std::max(maxAmount, readLive(row.volume) * price);
}

bool trimCrossed(EntrustList& bids, EntrustList& asks, const SnapshotLimits& limits)
{
    if (bids.empty() || asks.empty())
        return false;
    const double bestBid = priceOf(bids.back());
    const double bestAsk = priceOf(asks.front());
    if (!isLess(bestAsk, bestBid) && !isEqual(bestAsk, bestBid))
        return false;

    while (!bids.empty() && isGreater(priceOf(bids.back()), limits.bidCeiling))
        bids.pop_back();
    const auto kept =
        std::find_if(asks.begin(), asks.end(), [&](const auto& row) { return !isLess(priceOf(row), limits.askFloor); });
    asks.erase(asks.begin(), kept);
    return true;
}

} // namespace TC::detail
