#include "indexui/tessimodel/cmodelquoterdepththousand.h"

#include "indexui/tessimodel/detail/bookrows.h"
#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/quotekeeper.h"
#include "indexui/tessimodel/updateflags.h"
#include "quoter/levelthousanddata.h"
#include "quoter/quoterdepthdata.h"

#include <boost/smart_ptr/make_shared_array.hpp>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace TC {

using namespace detail;

namespace {

using Deltas = QMap<double, CModelQuoterDepthThousand::PriceDelta>;

// The changes that still show at a time, to be asked for price by price: quickly when prices ascend.
class FreshDeltas {
public:
    FreshDeltas(const Deltas& deltas, __int64 now)
        : m_deltas(deltas)
        , m_now(now)
        , m_next(deltas.constBegin())
    {}

    // 0 for a price without one.
    int at(double price)
    {
        moveTo(price);
        const bool isThere = m_next != m_deltas.constEnd() && isSamePrice(m_next.key(), price);
        return isThere && difference64(m_now, m_next.value().second) < kShownMs ? m_next.value().first : 0;
    }

private:
    static constexpr __int64 kShownMs = 3000;
    static constexpr int kNear = 8; // entries that are stepped over rather than searched

    // To the first entry that is not below the price.
    void moveTo(double price)
    {
        bool isFar = m_next != m_deltas.constBegin() && !((m_next - 1).key() < price);
        for (int steps = 0; !isFar && m_next != m_deltas.constEnd() && m_next.key() < price; ++m_next)
            isFar = ++steps > kNear;
        if (isFar)
            m_next = m_deltas.lowerBound(price);
    }

    const Deltas& m_deltas;
    const __int64 m_now;
    Deltas::const_iterator m_next;
};

// Fills `rows` with new rows of the levels. They share one block of memory, since a panel takes and drops them
// together.
template <class Levels>
void fillRows(EntrustList& rows, const Levels& levels, FreshDeltas deltas, RowExtremes extremes)
{
    rows.clear();
    rows.reserve(levels.count);
    const auto block = boost::make_shared<EntrustData[]>(levels.count);
    for (std::size_t i = 0; i < levels.count; ++i) {
        EntrustData& row = block[static_cast<std::ptrdiff_t>(i)];
        row = levels.at(i);
        row.delta = deltas.at(row.price);
        extremes.widen(row);
        rows.emplace_back(block, &row);
    }
}

// The levels of one side of a record, best first.
template <class LevelAt>
struct Levels {
    std::size_t count;
    LevelAt at;
};

// Lists of unequal length end with the shortest.
auto levelsOf(const std::vector<double>& prices, const std::vector<int>& volumes, const std::vector<int>& numbers)
{
    const auto at = [&](std::size_t level) { return EntrustData{prices[level], volumes[level], 0, numbers[level]}; };
    return Levels<decltype(at)>{std::min({prices.size(), volumes.size(), numbers.size()}), at};
}

template <std::size_t Count>
auto levelsOf(const double (&prices)[Count], const __int64 (&volumes)[Count])
{
    const auto at = [&](std::size_t level) {
        return EntrustData{prices[level], low32(volumes[level]), 0, kUnknownNumber};
    };
    return Levels<decltype(at)>{Count, at};
}

// Bids have their best level last.
template <class LevelAt>
auto bestLast(const Levels<LevelAt>& levels)
{
    const auto at = [=](std::size_t row) { return levels.at(levels.count - 1 - row); };
    return Levels<decltype(at)>{levels.count, at};
}

} // namespace

void CModelQuoterDepthThousand::getBids(EntrustList& rows, double& minPrice, double& maxPrice, double& maxAmount)
{
    const ModelLock lock(m_mutex);
    if (!m_stock || !m_thousand)
        return;
    fillRows(rows, bestLast(levelsOf(m_thousand->bidPrices, m_thousand->bidVolumes, m_thousand->bidNumbers)),
             {m_priceDeltas, m_thousand->timetag}, {minPrice, maxPrice, maxAmount});
}

void CModelQuoterDepthThousand::getAsks(EntrustList& rows, double& minPrice, double& maxPrice, double& maxAmount)
{
    const ModelLock lock(m_mutex);
    if (!m_stock || !m_thousand)
        return;
    fillRows(rows, levelsOf(m_thousand->askPrices, m_thousand->askVolumes, m_thousand->askNumbers),
             {m_priceDeltas, m_thousand->timetag}, {minPrice, maxPrice, maxAmount});
}

void CModelQuoterDepthThousand::getBidsByQuoter(EntrustList& rows, double& minPrice, double& maxPrice,
                                                double& maxAmount)
{
    const ModelLock lock(m_mutex);
    if (!m_stock || !m_thousand)
        return;
    rows.clear();
    if (m_quoter)
        fillRows(rows, bestLast(levelsOf(m_quoter->bidPrice, m_quoter->bidVolume)),
                 {m_priceDeltas, m_thousand->timetag}, {minPrice, maxPrice, maxAmount});
}

void CModelQuoterDepthThousand::getAsksByQuoter(EntrustList& rows, double& minPrice, double& maxPrice,
                                                double& maxAmount)
{
    const ModelLock lock(m_mutex);
    if (!m_stock || !m_thousand)
        return;
    rows.clear();
    if (m_quoter)
        fillRows(rows, levelsOf(m_quoter->askPrice, m_quoter->askVolume), {m_priceDeltas, m_thousand->timetag},
                 {minPrice, maxPrice, maxAmount});
}

bool CModelQuoterDepthThousand::checkUpdate(int& flags, EntrustList& bids, EntrustList& asks, double& lastPrice,
                                            int& lastVolume, double& minPrice, double& maxPrice, double& maxAmount,
                                            bool byQuoter)
{
    const ModelLock lock(m_mutex);
    if (!m_thousand)
        return false;
    const int taken = m_updateFlags.exchange(0);
    if (byQuoter) {
        getBidsByQuoter(bids, minPrice, maxPrice, maxAmount);
        getAsksByQuoter(asks, minPrice, maxPrice, maxAmount);
    } else {
        getBids(bids, minPrice, maxPrice, maxAmount);
        getAsks(asks, minPrice, maxPrice, maxAmount);
    }
    const bool isCrossed = m_continuous && trimCrossed(bids, asks, {m_bidCeiling, m_askFloor});
    lastPrice = m_quoterLastPrice;
    lastVolume = m_quoterLastVolume;
    flags = isCrossed ? taken | kUpdateLevels : taken;
    return true;
}

bool CModelQuoterDepthThousand::compareNewerQuote() const
{
    constexpr int kAheadMs = 10000;
    const ModelLock lock(m_mutex);
    const __int64 snapshotTime = m_quoterVolumeTime;
    const __int64 recordTime = m_reserved;
    if (snapshotTime == 0 || recordTime == 0)
        return false;
    return distance32(low32(snapshotTime), low32(recordTime)) > kAheadMs && snapshotTime > recordTime;
}

std::shared_ptr<SingleQueue> CModelQuoterDepthThousand::getQueue(bool isBid, double price,
                                                                 const std::vector<__int64>& volumes) const
{
    auto queue = std::make_shared<SingleQueue>(price, isBid);
    queue->m_timetag = m_quoterTimetag;
    queue->m_number = low32(static_cast<__int64>(volumes.size()));
    __int64 seq = 0;
    for (const __int64 volume : volumes) {
        PlainKeeper::insert(queue->m_quotes, 0, seq, volume);
        queue->m_volume = sum64(queue->m_volume, volume);
        ++seq;
    }
    return queue;
}

} // namespace TC
