#include "tests/tessimodel/oracle/naivebook.h"

#include "tests/tessimodel/oracle/wrapping.h"

#include <algorithm>

namespace tests::oracle {

namespace {

constexpr int kForeign = 16;
constexpr int kLevels = 2;
constexpr int kInPlace = 4;
constexpr __int64 kMarkShowsMs = 3000;

NaiveRow* rowFor(NaiveRows& rows, int key)
{
    if (key <= 0)
        return nullptr;
    NaiveRowPtr& row = rows[key];
    if (!row)
        row = std::make_shared<NaiveRow>();
    return row.get();
}

} // namespace

bool NaiveBook::appendOrder(int forStock, const RecordPtr& order, int& flags, bool refresh)
{
    if (order->bsFlag == 3 || order->orderKind == 0 || order->orderKind == 3)
        return false;
    if (isForeign(forStock)) {
        flags = kForeign;
        return false;
    }
    if (order->bsFlag == 1 || order->bsFlag == 2) {
        __int64& lastSeq = order->bsFlag == 1 ? bids.lastSeq : asks.lastSeq;
        if (order->seq <= lastSeq) {
            ++counters->lateOrders;
            return false;
        }
        lastSeq = order->seq;
    }
    lastTimetag = std::max(lastTimetag, order->timetag);

    static const std::set<int> kWithoutPrice = {2, 4, 5, 6, 7};
    const int key = kWithoutPrice.contains(order->orderKind) ? -order->orderKind : priceKeyOf(order->price, priceTick);
    orderPriceKeys[order->seq] = key;
    if (!enter(*order, key, flags))
        return false;
    if (refresh)
        refreshDecay();
    return true;
}

bool NaiveBook::enter(const Record& order, int key, int& flags)
{
    Side& side = order.bsFlag == 1 ? bids : asks;
    const bool created = !side.levels.contains(key);
    if (created) {
        auto level = std::make_shared<NaiveLevel>();
        level->price = order.price;
        level->isBid = order.bsFlag == 1;
        side.levels[key] = level;
    }
    NaiveLevel& level = *side.levels.at(key);
    NaiveRow* row = rowFor(side.rows, key);
    if (!level.order(order, row, volumeUnit))
        return false;
    offerWaiting(side, level, row, order.seq);
    const bool gone = !level.active;
    if (gone) {
        side.levels.erase(key);
        side.rows.erase(key);
    }
    side.dirty = true;
    flags |= created || gone ? kLevels : kInPlace;
    return true;
}

void NaiveBook::offerWaiting(Side& side, NaiveLevel& level, NaiveRow* row, __int64 seq)
{
    const auto waiting = side.pending.find(seq);
    if (waiting == side.pending.end())
        return;
    std::vector<RecordPtr> stay;
    for (const RecordPtr& trade : waiting->second) {
        if (level.deal(*trade, row, volumeUnit)) {
            ++counters->parkedTaken;
            count(level, *trade);
        } else {
            stay.push_back(trade);
        }
    }
    if (stay.empty())
        side.pending.erase(waiting);
    else
        waiting->second = stay;
}

bool NaiveBook::appendTransaction(int forStock, const RecordPtr& trade, int& flags, bool refresh)
{
    if (isForeign(forStock)) {
        flags = kForeign;
        return false;
    }
    const auto high = static_cast<unsigned long long>(static_cast<__int64>(trade->buySeq)) << 32U;
    if (!seenTrades.insert(plus(static_cast<__int64>(high), trade->sellSeq)).second)
        return false;
    lastTimetag = std::max(lastTimetag, trade->timetag);
    const bool bought = this->trade(bids, trade, trade->buySeq, flags);
    const bool sold = this->trade(asks, trade, trade->sellSeq, flags);
    if (refresh)
        refreshDecay();
    return bought || sold;
}

bool NaiveBook::trade(Side& side, const RecordPtr& trade, __int64 seq, int& flags)
{
    const auto known = orderPriceKeys.find(seq);
    const int key = known == orderPriceKeys.end() ? 0 : known->second;
    if (key != 0 && side.levels.contains(key)) {
        NaiveLevel& level = *side.levels.at(key);
        if (level.deal(*trade, rowFor(side.rows, key), volumeUnit)) {
            count(level, *trade);
            flags |= level.active ? kInPlace : kLevels;
            side.dirty = true;
            if (!level.active) {
                side.levels.erase(key);
                side.rows.erase(key);
            }
            return true;
        }
    }
    if (seq > side.lastSeq)
        side.pending[seq].push_back(trade);
    else if (seq != 0)
        ++forgotten;
    return false;
}

void NaiveBook::count(const NaiveLevel& level, const Record& trade)
{
    if (trade.transKind == 3)
        ++counters->cancels;
    else if (level.quotes.contains(level.isBid ? trade.buySeq : trade.sellSeq))
        ++counters->partialFills;
    else
        ++counters->fills;
}

void NaiveBook::fade(Side& side)
{
    for (const auto& [key, level] : side.levels) {
        const auto row = side.rows.find(key);
        if (row == side.rows.end() || row->second->delta == 0)
            continue;
        if (minus(lastTimetag, level->timetag) > kMarkShowsMs) {
            row->second->delta = 0;
            ++counters->fadedMarks;
        }
    }
}

void NaiveBook::refreshDecay()
{
    fade(bids);
    fade(asks);
}

void NaiveBook::clearBook()
{
    orderPriceKeys.clear();
    for (Side* side : {&bids, &asks}) {
        side->levels.clear();
        side->rows.clear();
        side->lastSeq = 0;
        side->dirty = true;
    }
    lastTimetag = 0;
}

void NaiveBook::clearPending()
{
    seenTrades.clear();
    bids.pending.clear();
    asks.pending.clear();
    counters->forgotten += static_cast<int>(forgotten);
    forgotten = 0;
}

void NaiveBook::clearAll()
{
    clearBook();
    clearPending();
}

NaiveLevelPtr NaiveBook::getLevel(bool isBid, double price) const
{
    const auto& levels = isBid ? bids.levels : asks.levels;
    const auto found = levels.find(priceKeyOf(price, priceTick));
    return found == levels.end() ? nullptr : found->second;
}

} // namespace tests::oracle
