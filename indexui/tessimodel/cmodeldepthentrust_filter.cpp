#include "indexui/tessimodel/cmodeldepthentrust.h"

#include "indexui/tessimodel/detail/listfilter.h"
#include "indexui/tessimodel/detail/listrows.h"
#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/orderkind.h"
#include "quoter/orderdata.h"

#include <boost/thread/lock_guard.hpp>

namespace TC {

using namespace detail;

namespace {

enum class Symbol { None, Buy, Sell, OtherBuy, OtherSell, FundUnits };

Symbol symbolOf(const DepthOrderData& order)
{
    if (order.bsFlag == quoter::kSideCancelBuy)
        return Symbol::Buy;
    if (order.bsFlag == quoter::kSideCancelSell)
        return Symbol::Sell;
    if (order.bsFlag != quoter::kSideBuy && order.bsFlag != quoter::kSideSell)
        return Symbol::None;

    const bool isBuy = order.bsFlag == quoter::kSideBuy;
    switch (order.orderKind) {
    case kNoKind:
        return Symbol::None;
    case kLimitOrder:
        return isBuy ? Symbol::Buy : Symbol::Sell;
    case kFundUnits:
        return Symbol::FundUnits;
    default:
        return isBuy ? Symbol::OtherBuy : Symbol::OtherSell;
    }
}

bool isShown(const DepthOrderData& order, bool buys, bool sells)
{
    if (buys && sells)
        return true;
    const Symbol symbol = symbolOf(order);
    return (buys || symbol != Symbol::Buy) && (sells || symbol != Symbol::Sell);
}

double amountOf(const DepthOrderData& order)
{
    return static_cast<double>(order.volume) * order.price;
}

bool passes(const SDepthFilterParam& filter, DayClock& clock, const DepthOrderData& order)
{
    return isInTimeOfDay(filter, order.time, clock) && isShown(order, filter.showBuyOrder, filter.showSellOrder) &&
           isInSizeRange(filter, order.hands, amountOf(order));
}

// A cancel shows with its own time, and with the side and the size of its order.
bool passes(const SDepthFilterParam& filter, DayClock& clock, const DepthCancelData& cancel,
            const DepthOrderData& order)
{
    return isInTimeOfDay(filter, cancel.time, clock) && isShown(order, filter.showBuyCancel, filter.showSellCancel) &&
           isInSizeRange(filter, order.hands, amountOf(order));
}

} // namespace

QString getOrderSymbol(const boost::shared_ptr<DepthOrderData>& order)
{
    switch (order ? symbolOf(*order) : Symbol::None) {
    case Symbol::Buy:
        return QStringLiteral("B");
    case Symbol::Sell:
        return QStringLiteral("S");
    case Symbol::OtherBuy:
        return QStringLiteral("UB");
    case Symbol::OtherSell:
        return QStringLiteral("US");
    case Symbol::FundUnits:
        return QStringLiteral("F");
    case Symbol::None:
        break;
    }
    return QStringLiteral("N");
}

void CModelDepthEntrust::setFilterParam(SDepthFilterParam& param)
{
    {
        const boost::lock_guard<RecursiveLock> lock(m_filterMutex);
        m_filter = param;
    }
    datasFilter();
}

SDepthFilterParam CModelDepthEntrust::filter() const
{
    const boost::lock_guard<RecursiveLock> lock(m_filterMutex);
    return m_filter;
}

bool CModelDepthEntrust::passFilter(const OrderRow& order) const
{
    const boost::lock_guard<RecursiveLock> lock(m_filterMutex);
    return passes(m_filter, m_clock, *order);
}

bool CModelDepthEntrust::passFilter(const CancelRow& cancel) const
{
    const ModelLock lock(m_mutex);
    const OrderRow* const order = orderOf(cancel->seq);
    if (!order)
        return false;
    const boost::lock_guard<RecursiveLock> filterLock(m_filterMutex);
    return passes(m_filter, m_clock, *cancel, **order);
}

bool CModelDepthEntrust::beInTheRange(int hands, double amount) const
{
    return isInSizeRange(filter(), hands, amount);
}

void CModelDepthEntrust::datasFilter()
{
    const ModelLock lock(m_mutex);
    const SDepthFilterParam current = filter();
    DayClock clock;
    m_filteredOrderCount =
        filterRows(m_orders, m_filteredOrders, [&](const OrderRow& order) { return passes(current, clock, *order); });
    m_filteredCancelCount = filterRows(m_cancels, m_filteredCancels, [&](const CancelRow& cancel) {
        const OrderRow* const order = orderOf(cancel->seq);
        return order && passes(current, clock, *cancel, **order);
    });
}

} // namespace TC
