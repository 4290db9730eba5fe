#include "indexui/tessimodel/cmodeldepthqueue_book.h"

#include "indexui/tessimodel/detail/bookside.h"
#include "indexui/tessimodel/detail/queuesteps.h"
#include "indexui/tessimodel/detail/release.h"
#include "indexui/tessimodel/detail/tickbook.h"

#include <boost/thread/lock_guard.hpp>

namespace TC {

using namespace detail;

namespace {

using Lock = boost::lock_guard<RecursiveLock>;

} // namespace

// One side of the book as the common steps see it: levels without rows.
template <bool IsBid>
class QueueBook::Side : public BookSide<Side<IsBid>, QueueBook, IsBid> {
public:
    using BookSide<Side, QueueBook, IsBid>::BookSide;

    bool add(Place* place, const OrderPtr& order, OrderPlace& own)
    {
        const LentLock lock = this->lockOf(place);
        return addOrder(*place->queue, *order, this->keeper(own));
    }

    bool deal(Place* place, const TradePtr& trade, OrderPlace& own)
    {
        const LentLock lock = this->lockOf(place);
        return takeTrade(*place->queue, *trade, this->keeper(own));
    }

    bool isDead(Place* place) const { return !place->queue->m_valid; }

    static void changed(Place*) {}
    static void forget() {}

    static Place opened(Levels::iterator level) { return placeAt(level); }
    static Place placeAt(Levels::iterator level) { return {level->second.get(), level}; }
    static void closing(Place&) {}
};

QueueBook::QueueBook()
    : m_priceTick(kDefaultPriceTick)
{}

QueueBook::~QueueBook() = default;

// Flattened, as in ThousandBook.
[[gnu::flatten]] bool QueueBook::appendOrder(const Stock& stock, const Order& order, int& flags)
{
    if (!isBookOrder(*order))
        return false;
    const Lock lock(m_mutex);
    if (!admitOrder(*this, stock, *order, flags))
        return false;
    advanceTime(*this, order->timetag);
    return order->bsFlag == quoter::kSideBuy ? placeOrder(Side<true>(*this), order, flags)
                                             : placeOrder(Side<false>(*this), order, flags);
}

[[gnu::flatten]] bool QueueBook::appendTransaction(const Stock& stock, const Trade& trade, int& flags)
{
    const Lock lock(m_mutex);
    if (!admitTrade(*this, stock, *trade, flags))
        return false;
    advanceTime(*this, trade->timetag);
    Side<true> bids(*this);
    Side<false> asks(*this);
    const bool bidTook = dealOrPark(bids, bids.placeOfOrder(trade->buySeq), trade->buySeq, trade, flags);
    const bool askTook = dealOrPark(asks, asks.placeOfOrder(trade->sellSeq), trade->sellSeq, trade, flags);
    return bidTook || askTook;
}

void QueueBook::clearBook()
{
    const Lock lock(m_mutex);
    const auto freed = takenOut(m_orderPriceKeys, m_bidLevels, m_askLevels, m_bidPlaces, m_askPlaces,
                                m_quoteStore.spare, m_spareLevels);
    m_hasSeqZero = false;
    m_lastBuySeq = 0;
    m_lastSellSeq = 0;
    m_lastTimetag = 0;
    m_bidsDirty = true;
    m_asksDirty = true;
}

void QueueBook::clearPending()
{
    const Lock lock(m_mutex);
    const auto freed = takenOut(m_seenTrades, m_pendingBuy, m_pendingSell);
}

void QueueBook::clearAll()
{
    const Lock lock(m_mutex);
    m_stock.reset();
    clearBook();
    clearPending();
}

std::shared_ptr<OrderQueue> QueueBook::getLevel(bool isBid, double price)
{
    const Lock lock(m_mutex);
    const int key = priceKey(price, m_priceTick);
    return isBid ? Side<true>(*this).lend(key) : Side<false>(*this).lend(key);
}

void QueueBook::reserve(std::size_t orders, std::size_t trades)
{
    const Lock lock(m_mutex);
    m_orderPriceKeys.reserve(orders);
    m_seenTrades.reserve(trades);
}

} // namespace TC
