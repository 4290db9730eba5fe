#include "tests/tessimodel/oracle/queues/naivequeuebook.h"

#include "tests/tessimodel/oracle/wrapping.h"

#include <algorithm>

namespace tests::oracle::queues {

bool NaiveQueueBook::isOurs(int forStock, int& flags) const
{
    if (stock >= 0 && stock == forStock)
        return true;
    flags = 16;
    return false;
}

int NaiveQueueBook::keyOf(const Record& order) const
{
    switch (order.orderKind) {
    case 2:
    case 4:
    case 5:
    case 6:
    case 7:
        return -order.orderKind;
    default:
        return priceKeyOf(order.price, priceTick);
    }
}

bool NaiveQueueBook::appendOrder(int forStock, const RecordPtr& order, int& flags)
{
    if (order->bsFlag == 3 || order->orderKind == 0 || order->orderKind == 3 || !isOurs(forStock, flags))
        return false;
    Side& side = order->bsFlag == 1 ? bids : asks;
    if (order->bsFlag == 1 || order->bsFlag == 2) {
        if (order->seq <= side.lastSeq) {
            ++counters->lateOrders;
            return false;
        }
        side.lastSeq = order->seq;
    }
    lastTimetag = std::max(lastTimetag, order->timetag);
    const int key = keyOf(*order);
    orderPriceKeys[order->seq] = key;
    const bool isNew = !side.levels.contains(key);
    if (isNew) {
        side.levels[key] = std::make_shared<NaiveOrderQueue>();
        side.levels[key]->price = order->price;
        side.levels[key]->isBid = order->bsFlag == 1;
    }
    const NaiveOrderQueuePtr level = side.levels[key];
    if (!level->appendQuote(*order)) {
        ++counters->lateOrders;
        return false;
    }
    offerWaiting(side, *level, order->seq);
    if (!level->valid)
        side.levels.erase(key);
    side.dirty = true;
    flags |= isNew || !level->valid ? 2 : 4;
    return true;
}

void NaiveQueueBook::offerWaiting(Side& side, NaiveOrderQueue& level, __int64 seq)
{
    if (!side.pending.contains(seq))
        return;
    std::vector<RecordPtr>& waiting = side.pending[seq];
    for (std::size_t i = 0; i < waiting.size();) {
        if (level.dealQuote(*waiting[i], *counters)) {
            waiting.erase(waiting.begin() + static_cast<std::ptrdiff_t>(i));
            ++counters->parkedTaken;
        } else {
            ++i;
        }
    }
    if (waiting.empty())
        side.pending.erase(seq);
}

bool NaiveQueueBook::appendTransaction(int forStock, const RecordPtr& trade, int& flags)
{
    if (!isOurs(forStock, flags))
        return false;
    const unsigned long long high = static_cast<unsigned long long>(static_cast<__int64>(trade->buySeq)) << 32U;
    const __int64 key = plus(static_cast<__int64>(high), trade->sellSeq);
    if (seenTrades.contains(key)) {
        ++counters->seenTrades;
        return false;
    }
    seenTrades.insert(key);
    lastTimetag = std::max(lastTimetag, trade->timetag);
    const bool isBought = this->trade(bids, trade, trade->buySeq, flags);
    const bool isSold = this->trade(asks, trade, trade->sellSeq, flags);
    return isBought || isSold;
}

bool NaiveQueueBook::trade(Side& side, const RecordPtr& trade, __int64 seq, int& flags)
{
    const int key = orderPriceKeys.contains(seq) ? orderPriceKeys[seq] : 0;
    if (key != 0 && side.levels.contains(key)) {
        const NaiveOrderQueuePtr level = side.levels[key];
        if (level->dealQuote(*trade, *counters)) {
            if (!level->valid)
                side.levels.erase(key);
            flags |= level->valid ? 4 : 2;
            side.dirty = true;
            return true;
        }
    }
    if (seq > side.lastSeq) {
        side.pending[seq].push_back(trade);
        ++counters->parked;
    } else if (seq != 0) {
        ++counters->lost;
    }
    return false;
}

void NaiveQueueBook::clearBook()
{
    orderPriceKeys.clear();
    bids.levels.clear();
    asks.levels.clear();
    bids.lastSeq = asks.lastSeq = 0;
    lastTimetag = 0;
    bids.dirty = asks.dirty = true;
}

void NaiveQueueBook::clearPending()
{
    seenTrades.clear();
    bids.pending.clear();
    asks.pending.clear();
}

void NaiveQueueBook::clearAll()
{
    stock = -1;
    clearBook();
    clearPending();
}

NaiveOrderQueuePtr NaiveQueueBook::getLevel(bool isBid, double price) const
{
    const auto& levels = isBid ? bids.levels : asks.levels;
    const auto found = levels.find(priceKeyOf(price, priceTick));
    if (found == levels.end())
        return nullptr;
    ++counters->levelsFound;
    return found->second;
}

} // namespace tests::oracle::queues
