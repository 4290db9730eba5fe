#include "indexui/tessimodel/cmodeldepththousand.h"

#include "indexui/tessimodel/detail/bookrows.h"
#include "indexui/tessimodel/detail/livewrite.h"
#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/liveread.h"
#include "utils/stockkey.h"

#include <boost/make_shared.hpp>

#include <algorithm>

namespace TC {

using namespace detail;

namespace {

// The keys between which a snapshot speaks. Without rows on a side nothing of that side is left.
struct KeyRange {
    int low = 1410065408; // ten thousand million, cut to 32 bits; kept as that number
    int high = -1;
};

KeyRange rangeOf(const EntrustRows& snapshot)
{
    KeyRange range;
    for (const auto& [key, row] : snapshot) {
        range.low = std::min(range.low, key);
        range.high = std::max(range.high, key);
    }
    return range;
}

// The bids above the snapshot's best, and those between its levels. Below them the snapshot says nothing.
bool eraseBids(EntrustRows& rows, const EntrustRows& snapshot, const KeyRange& range)
{
    const std::size_t before = rows.size();
    for (auto row = rows.end(); row != rows.begin();) {
        --row;
        const int key = row->first;
        if (key > range.high || (key > range.low && !snapshot.contains(key)))
            row = rows.erase(row);
        else if (key <= range.low)
            break;
    }
    return rows.size() != before;
}

// The asks below the snapshot's best, and those between its levels.
bool eraseAsks(EntrustRows& rows, const EntrustRows& snapshot, const KeyRange& range)
{
    const std::size_t before = rows.size();
    for (auto row = rows.begin(); row != rows.end();) {
        const int key = row->first;
        if (key >= range.low && key >= range.high)
            break;
        if (key < range.low || !snapshot.contains(key))
            row = rows.erase(row);
        else
            ++row;
    }
    return rows.size() != before;
}

} // namespace

// One side of the model as reading sees it.
struct CModelDepthThousand::ReadSide {
    bool isBid;
    EntrustRows& rows;
    const EntrustRows& snapshot;
    bool& rowsAreBooks;
    bool (CDepthThousandModelManager::*savedRows)(const std::string&, EntrustRows&);
    bool (*erase)(EntrustRows&, const EntrustRows&, const KeyRange&);
};

CModelDepthThousand::ReadSide CModelDepthThousand::bidSide()
{
    return {true, m_bidRows, m_snapshotBids, m_bidRowsAreBooks, &CDepthThousandModelManager::getBids, eraseBids};
}

CModelDepthThousand::ReadSide CModelDepthThousand::askSide()
{
    return {false, m_askRows, m_snapshotAsks, m_askRowsAreBooks, &CDepthThousandModelManager::getAsks, eraseAsks};
}

bool CModelDepthThousand::checkUpdate(int& flags, EntrustList& bids, EntrustList& asks, double& lastPrice,
                                      int& lastVolume, double& minPrice, double& maxPrice, double& maxAmount)
{
    ModelLock lock(m_mutex, boost::defer_lock);
    const int taken = takeFlags(*this, lock);
    if (taken == 0)
        return false;

    const RowExtremes extremes{minPrice, maxPrice, maxAmount};
    readRows(bidSide(), bids, extremes);
    readRows(askSide(), asks, extremes);
    if (m_continuous)
        trimCrossed(bids, asks, {m_bidCeiling, m_askFloor});

    // The snapshot's figures count until a tick newer than its latest volume step has come.
    const bool snapshotIsNewer = m_quoterVolumeTime == 0 || m_book.m_lastTimetag < m_quoterVolumeTime;
    lastPrice = snapshotIsNewer ? m_quoterLastPrice : m_tickLastPrice.load();
    lastVolume = snapshotIsNewer ? m_quoterLastVolume : m_tickLastVolume.load();
    flags = taken | kUpdateLevels; // with it, whatever reading and trimming took away is told
    return true;
}

void CModelDepthThousand::getBids(EntrustList& rows, double& minPrice, double& maxPrice, double& maxAmount)
{
    const ModelLock lock(m_mutex);
    if (readRows(bidSide(), rows, {minPrice, maxPrice, maxAmount}))
        m_updateFlags |= kUpdateLevels;
}

void CModelDepthThousand::getAsks(EntrustList& rows, double& minPrice, double& maxPrice, double& maxAmount)
{
    const ModelLock lock(m_mutex);
    if (readRows(askSide(), rows, {minPrice, maxPrice, maxAmount}))
        m_updateFlags |= kUpdateLevels;
}

// Fills `rows` with a side's rows. True when a snapshot made some of them appear or go.
bool CModelDepthThousand::readRows(ReadSide side, EntrustList& rows, RowExtremes extremes)
{
    if (!m_stock)
        return false;
    bool levelsChanged = false;
    if (m_loadedHistory != kBothLoaded) {
        // The book cannot speak yet: the rows that an earlier view of the instrument left.
        const auto manager = utils::CSingletonT<CDepthThousandModelManager>::instance();
        if ((*manager.*side.savedRows)(utils::zlStockKey(m_stock->market, m_stock->code), side.rows))
            side.rowsAreBooks = false;
    } else {
        side.rowsAreBooks = m_book.copyRows(side.isBid, side.rows, side.rowsAreBooks);
        if (m_book.m_lastTimetag < m_quoterTimetag)
            levelsChanged = correctRows(side);
    }

    rows.resize(side.rows.size());
    auto shown = rows.begin();
    for (const auto& [key, row] : side.rows) {
        extremes.widen(*row);
        if (*shown != row)
            *shown = row;
        ++shown;
    }
    return levelsChanged;
}

// Brings the rows within the snapshot's range to what it shows. The row objects are the book's too: the next tick at a
// level writes the book's own numbers again.
bool CModelDepthThousand::correctRows(ReadSide side)
{
    bool levelsChanged = false;
    for (const auto& [key, shown] : side.snapshot) {
        const int shares = product32(shown->volume, m_volumeUnit);
        const auto found = side.rows.find(key);
        if (found == side.rows.end()) {
            auto row = boost::make_shared<EntrustData>(*shown);
            row->number = SingleQueue::correctNumber(0, shares); // nothing is known of its orders
            side.rows.emplace(key, row);
            levelsChanged = true;
            continue;
        }
        EntrustData& row = *found->second;
        if (readLive(row.volume) == shown->volume)
            continue;
        writeLive(row.number, m_book.correctNumber(side.isBid, readLive(row.price), shares, shown->number));
        writeLive(row.volume, shown->volume);
        writeLive(row.delta, shown->delta);
    }
    if (side.erase(side.rows, side.snapshot, rangeOf(side.snapshot)))
        levelsChanged = true;
    if (levelsChanged)
        side.rowsAreBooks = false;
    return levelsChanged;
}

std::shared_ptr<SingleQueue> CModelDepthThousand::getQueue(bool isBid, double price)
{
    auto level = m_book.getLevel(isBid, price);
    if (!level || readLive(level->m_timetag) >= m_quoterTimetag)
        return level;

    const ModelLock lock(m_mutex);
    const EntrustRows& snapshot = isBid ? m_snapshotBids : m_snapshotAsks;
    const auto shown = snapshot.find(priceKey(price, m_priceTick));
    if (shown == snapshot.end())
        return level;
    const int shares = low32(readLive(level->m_volume));
    const int hands = shares == 0 ? 0 : handsFloor(shares, m_volumeUnit);
    if (hands == shown->second->volume)
        return level;
    auto corrected = std::make_shared<SingleQueue>(*level);
    corrected->correctQueue(product32(m_volumeUnit, shown->second->volume));
    return corrected;
}

} // namespace TC
