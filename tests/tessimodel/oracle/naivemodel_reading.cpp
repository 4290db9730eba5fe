#include "tests/tessimodel/oracle/naivemodel.h"
#include "tests/tessimodel/oracle/wrapping.h"

#include <algorithm>
#include <iterator>

namespace tests::oracle {

namespace {

constexpr int kStartLowKey = 1410065408;
constexpr int kStartHighKey = -1;

} // namespace

bool NaiveModel::checkUpdate(NaivePanel& panel)
{
    if (updateFlags == 0)
        return false;
    readRows(true, panel.bids, panel);
    readRows(false, panel.asks, panel);
    trim(panel);
    const bool fromSnapshot = quoterVolumeTime == 0 || book.lastTimetag < quoterVolumeTime;
    panel.lastPrice = fromSnapshot ? quoterLastPrice : tickLastPrice;
    panel.lastVolume = fromSnapshot ? quoterLastVolume : tickLastVolume;
    panel.flags = updateFlags | 2;
    updateFlags = 0;
    if (loadedHistory == 3 && panel.bids.size() >= 3 && panel.asks.size() >= 3)
        ++m_counters.readsOfBook;
    return true;
}

void NaiveModel::getSide(bool isBid, NaivePanel& panel)
{
    if (readRows(isBid, isBid ? panel.bids : panel.asks, panel))
        updateFlags |= 2;
}

// True when a snapshot made rows appear or go.
bool NaiveModel::readRows(bool isBid, std::vector<NaiveRowPtr>& rows, NaivePanel& panel)
{
    if (stock < 0)
        return false;
    bool changed = false;
    NaiveRows& ours = isBid ? bidRows : askRows;
    NaiveBook::Side& side = isBid ? book.bids : book.asks;
    if (loadedHistory != 3) {
        const auto saved = m_manager.saved.find(stock);
        if (saved != m_manager.saved.end()) {
            ours = isBid ? saved->second.bids : saved->second.asks;
            ++m_counters.savedRowsShown;
        }
    } else {
        if (side.dirty)
            ours = side.rows;
        side.dirty = false;
        if (book.lastTimetag < quoterTimetag)
            changed = correctRows(isBid);
    }
    rows.clear();
    for (const auto& [key, row] : ours) {
        widen(panel, *row);
        rows.push_back(row);
    }
    return changed;
}

bool NaiveModel::correctRows(bool isBid)
{
    bool changed = false;
    NaiveRows& rows = isBid ? bidRows : askRows;
    int lowKey = kStartLowKey;
    int highKey = kStartHighKey;
    for (const auto& [key, snapshot] : isBid ? snapshotBids : snapshotAsks) {
        lowKey = std::min(lowKey, key);
        highKey = std::max(highKey, key);
        if (rows.contains(key)) {
            correctRow(isBid, *rows.at(key), *snapshot);
            continue;
        }
        auto row = std::make_shared<NaiveRow>(*snapshot);
        row->number = NaiveLevel::correctNumber(0, times32(snapshot->volume, volumeUnit));
        rows[key] = row;
        changed = true;
        ++m_counters.insertedRows;
    }
    const std::size_t before = rows.size();
    if (isBid)
        eraseBidsOutside(lowKey, highKey);
    else
        eraseAsksOutside(lowKey, highKey);
    m_counters.erasedRows += static_cast<int>(before - rows.size());
    return changed || rows.size() != before;
}

void NaiveModel::correctRow(bool isBid, NaiveRow& row, const NaiveRow& snapshot)
{
    if (row.volume == snapshot.volume)
        return;
    const NaiveLevelPtr level = book.getLevel(isBid, row.price);
    row.number = level ? level->correctNumber(times32(snapshot.volume, volumeUnit)) : snapshot.number;
    row.volume = snapshot.volume;
    row.delta = snapshot.delta;
    ++m_counters.correctedRows;
}

void NaiveModel::eraseBidsOutside(int lowKey, int highKey)
{
    std::erase_if(bidRows, [&](const auto& row) {
        return row.first > highKey || (row.first > lowKey && !snapshotBids.contains(row.first));
    });
}

void NaiveModel::eraseAsksOutside(int lowKey, int highKey)
{
    for (auto row = askRows.begin(); row != askRows.end();) {
        const int key = row->first;
        if (key >= lowKey && key >= highKey)
            break;
        const bool goes = key < lowKey || !snapshotAsks.contains(key);
        row = goes ? askRows.erase(row) : std::next(row);
    }
}

NaiveLevelPtr NaiveModel::getQueue(bool isBid, double price)
{
    const NaiveLevelPtr level = book.getLevel(isBid, price);
    if (!level)
        return nullptr;
    ++m_counters.ownQueues;
    if (level->timetag >= quoterTimetag)
        return level;
    const NaiveRows& snapshot = isBid ? snapshotBids : snapshotAsks;
    const auto row = snapshot.find(priceKeyOf(price, priceTick));
    if (row == snapshot.end())
        return level;
    int hands = narrow(level->volume);
    if (hands != 0)
        hands = handFigure(hands, volumeUnit);
    if (hands == row->second->volume)
        return level;
    --m_counters.ownQueues;
    ++m_counters.queueCopies;
    const NaiveLevelPtr copy = level->deepCopy();
    copy->correctQueue(times32(volumeUnit, row->second->volume));
    return copy;
}

void NaiveModel::clear()
{
    orders.clear();
    transactions.clear();
    dealVolumes.clear();
    clearShared();
}

} // namespace tests::oracle
