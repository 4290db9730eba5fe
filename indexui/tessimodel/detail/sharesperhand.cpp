#include "indexui/tessimodel/detail/sharesperhand.h"

#include "ztservice/stocktypecenter.h"

namespace TC::detail {

namespace {

constexpr int kTypeTenShares = 100016;
constexpr int kTypeTenSharesByCode = 100017;
constexpr int kTypeTenSharesShanghai = 126;

} // namespace

int sharesPerHandByType(const ztservice::CInstrumentDetail& stock)
{
    const auto types = utils::CSingletonT<ztservice::StockTypeCenter>::instance();
    // The second market is the literal: a code is looked up as Shenzhen's wherever the instrument is traded.
    const bool isTenShares = types->isTypedStock(kTypeTenShares, stock.market, stock.code) ||
                             types->isTypedStock(kTypeTenSharesByCode, "SZ", stock.code);
    return isTenShares ? 10 : 100;
}

int sharesPerHand(const ztservice::CInstrumentDetail& stock)
{
    if (stock.market != "SH")
        return sharesPerHandByType(stock);
    const auto types = utils::CSingletonT<ztservice::StockTypeCenter>::instance();
    const bool isTenShares = types->isTypedStock(kTypeTenSharesShanghai, stock.market, stock.code) ||
                             types->isTypedStock(kTypeTenSharesByCode, stock.market, stock.code);
    return isTenShares ? 10 : sharesPerHandByType(stock);
}

} // namespace TC::detail
