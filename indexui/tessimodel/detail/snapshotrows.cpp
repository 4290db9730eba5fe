#include "indexui/tessimodel/detail/snapshotrows.h"

#include "indexui/tessimodel/detail/numbers.h"
#include "quoter/quoterdepthdata.h"

#include <boost/make_shared.hpp>

#include <iterator>

namespace TC::detail {

namespace {

template <class NoteBest>
void takeLevels(const double (&prices)[10], const __int64 (&volumes)[10], double priceTick, EntrustRows& rows,
                const NoteBest& noteBest)
{
    rows.clear();
    for (std::size_t i = 0; i < std::size(prices); ++i) {
        if (!isUsable(prices[i]))
            continue;
        noteBest(prices[i]);
        rows[priceKey(prices[i], priceTick)] =
            boost::make_shared<EntrustData>(EntrustData{prices[i], low32(volumes[i]), 0, kUnknownNumber});
    }
}

} // namespace

bool isContinuousTrading(const quoter::QuoterDepthData& record)
{
    const double bid = record.bidPrice[0];
    const double ask = record.askPrice[0];
    return !(isZero(bid) && isZero(ask)) && (isLess(bid, ask) || isGreater(bid, ask));
}

double takeAsks(const quoter::QuoterDepthData& record, double priceTick, EntrustRows& rows)
{
    double floor = kNoAskFloor;
    takeLevels(record.askPrice, record.askVolume, priceTick, rows, [&](double price) {
        if (isLess(price, floor))
            floor = price;
    });
    return floor;
}

double takeBids(const quoter::QuoterDepthData& record, double priceTick, EntrustRows& rows)
{
    double ceiling = 0;
    takeLevels(record.bidPrice, record.bidVolume, priceTick, rows, [&](double price) {
        if (isGreater(price, ceiling))
            ceiling = price;
    });
    return ceiling;
}

} // namespace TC::detail
