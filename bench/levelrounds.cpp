#include "bench/levelrounds.h"

#include "quoter/levelthousanddata.h"
#include "quoter/quoterdepthdata.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace bench {

namespace {

constexpr std::size_t kFirstRecords = 2; // the first one, and one that is compared with it

// The ten best levels of an ordered record, in continuous trading.
std::shared_ptr<quoter::QuoterDepthData> snapshotOf(const quoter::LevelThousandData& record)
{
    auto snapshot = std::make_shared<quoter::QuoterDepthData>();
    snapshot->timetag = record.timetag;
    snapshot->tradeStatus = 13;
    for (std::size_t i = 0; i < std::min<std::size_t>(10, record.bidPrices.size()); ++i) {
        snapshot->bidPrice[i] = record.bidPrices[i];
        snapshot->bidVolume[i] = record.bidVolumes[i];
        snapshot->askPrice[i] = record.askPrices[i];
        snapshot->askVolume[i] = record.askVolumes[i];
    }
    return snapshot;
}

std::ptrdiff_t changesIn(const TC::EntrustList& rows)
{
    return std::count_if(rows.begin(), rows.end(), [](const auto& row) { return row->delta != 0; });
}

} // namespace

LevelRounds::LevelRounds(const LevelOptions& options)
    : m_feed(options)
{
    m_feed.follow(m_model);
    begin();
    takeRecords();
    takeRecordsByReference();
    read();
    check();
}

void LevelRounds::begin()
{
    m_model.clear();
    m_feed.freeReleased();
    StockFeed::push(m_model, &Model::quoterCallback, 1, m_feed.batchOf(snapshotOf(*m_feed.records().front())));
    m_feed.drain();
    m_reference = {};
    for (std::size_t i = 0; i < kFirstRecords; ++i) {
        m_model.doThousandData(0, 1, m_feed.pushes()[i]);
        m_reference.take(m_feed.records()[i]);
    }
}

int LevelRounds::takeRecords()
{
    const auto& pushes = m_feed.pushes();
    for (std::size_t i = kFirstRecords; i < pushes.size(); ++i)
        m_model.doThousandData(0, 1, pushes[i]);
    return static_cast<int>(pushes.size() - kFirstRecords);
}

int LevelRounds::takeRecordsByReference()
{
    const auto& records = m_feed.records();
    for (std::size_t i = kFirstRecords; i < records.size(); ++i)
        m_reference.take(records[i]);
    return static_cast<int>(records.size() - kFirstRecords);
}

void LevelRounds::read()
{
    int flags = 0;
    int lastVolume = 0;
    double lastPrice = 0;
    double minPrice = std::numeric_limits<double>::max();
    double maxPrice = 0;
    double maxAmount = 0;
    if (!m_model.checkUpdate(flags, m_bids, m_asks, lastPrice, lastVolume, minPrice, maxPrice, maxAmount, false))
        throw std::logic_error("there is a record, and yet there was no update");
}

void LevelRounds::makeRows()
{
    for (TC::EntrustList* const rows : {&m_bareBids, &m_bareAsks}) {
        rows->clear();
        for (int i = 0; i < m_feed.options().levels; ++i)
            rows->push_back(boost::make_shared<TC::EntrustData>());
    }
}

void LevelRounds::check() const
{
    const auto levels = static_cast<std::size_t>(m_feed.options().levels);
    const int changed = m_feed.options().changed;
    if (m_model.m_priceDeltas != m_reference.deltas() || m_model.m_priceDeltas.size() != changed)
        throw std::runtime_error("model and reference do not come to the same changes: there is nothing to compare");
    if (m_bids.size() != levels || m_asks.size() != levels || changesIn(m_bids) + changesIn(m_asks) != changed)
        throw std::runtime_error("the rows are not those of the last record with its changes");
}

} // namespace bench
