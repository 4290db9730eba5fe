#include "tests/tessimodel/oracle/naivesnapshotmodel.h"

#include "tests/tessimodel/oracle/naiveinstruments.h"
#include "tests/tessimodel/oracle/wrapping.h"

#include <cmath>
#include <set>
#include <string>

namespace tests::oracle {

namespace {

constexpr int kRebuilt = 1;

bool isSnapshot(const RecordPtr& record)
{
    return isOfType(record, Record::Type::Snapshot);
}

bool isFixedPricePhase(const Record& record)
{
    return record.tradeStatus == 22 || record.tradeStatus == 23;
}

bool isContinuous(const Record& record)
{
    const double bid = record.bids.prices[0];
    const double ask = record.asks.prices[0];
    if (std::fabs(bid) <= 1e-5 && std::fabs(ask) <= 1e-5)
        return false;
    return std::fabs(bid - ask) > 1e-5;
}

// The nearest snapshot before `end` whose day volume is below `volume`.
RecordPtr lowerBefore(const std::vector<RecordPtr>& batch, std::size_t end, __int64 volume)
{
    for (std::size_t i = end; i-- > 0;) {
        if (isSnapshot(batch[i]) && batch[i]->volume < volume)
            return batch[i];
    }
    return nullptr;
}

bool hasLevel(double price)
{
    return !(std::fabs(price) <= 1e-5) && !(std::fabs(price - DBL_MAX) <= 1e-5);
}

} // namespace

NaiveSnapshotModel::NaiveSnapshotModel(bool suppresses, NaiveManager& keptRows, Counters& counted)
    : suppressTickFlags(suppresses)
    , m_manager(keptRows)
    , m_counters(counted)
{
    book.counters = &counted;
}

void NaiveSnapshotModel::setStock(int instrument)
{
    stock = instrument;
    initStockParams();
    if (m_manager.saved.contains(instrument))
        updateFlags = kRebuilt;
}

void NaiveSnapshotModel::initStockParams()
{
    priceTick = 0.001;
    volumeUnit = 1;
    hasAfterHours = false;
    lastClose = DBL_MAX;
    if (stock >= 0) {
        const Instrument& followed = instrumentAt(stock);
        priceTick = followed.priceTick;
        volumeUnit = sharesPerHand(followed);
        hasAfterHours = followed.types.contains(277) || followed.types.contains(10006);
        lastClose = followed.lastClose;
    }
    book.stock = stock;
    book.priceTick = priceTick;
    book.volumeUnit = volumeUnit;
}

void NaiveSnapshotModel::post(const BatchPtr& batch, std::function<void()> task)
{
    if (!batch)
        return;
    m_tasks.emplace_back([this, batch, task = std::move(task)] {
        if (stock >= 0 && batch->instrument == stock)
            task();
        else
            ++m_counters.foreignBatches;
    });
}

void NaiveSnapshotModel::work()
{
    while (!m_tasks.empty()) {
        const auto task = m_tasks.front();
        m_tasks.pop_front();
        task();
    }
}

void NaiveSnapshotModel::doQuoter(int kind, const Records& batch)
{
    if (batch.empty() || !isSnapshot(batch.back()))
        return;
    const Record& last = *batch.back();
    if (last.timetag <= quoterTimetag)
        return;
    continuous = isContinuous(last);
    if (!continuous) {
        ++m_counters.auctions;
        return;
    }
    quoterTimetag = last.timetag;
    if ((suppressTickFlags || last.timetag > book.lastTimetag) && loadedHistory == 3) {
        updateFlags |= book.lastTimetag == 0 ? 1 : suppressTickFlags ? 2 : 4;
        m_counters.snapshotsBeforeTicks += book.lastTimetag == 0 ? 1 : 0;
    }
    quoterLastPrice = isNewLoan ? last.lastPriceAlt : last.price;
    noteStep(kind, batch);
    takeTenLevels(last);
}

void NaiveSnapshotModel::takeStep(int kind, const Records& batch)
{
    if (kind == 0)
        quoterLastVolume = 0;
    if (kind == 0 || kind == 3)
        historyStep(batch);
    else
        liveStep(*batch.back());
}

void NaiveSnapshotModel::historyStep(const Records& batch)
{
    quoter = batch.back();
    if (hasAfterHours)
        saveAfterHoursStep(batch);
    findStep(batch);
    if (hasAfterHours && quoter->tradeStatus == 23)
        quoterLastVolume = afterHoursVolume;
}

void NaiveSnapshotModel::saveAfterHoursStep(const Records& batch)
{
    for (std::size_t i = batch.size(); i-- > 0;) {
        if (!isSnapshot(batch[i]) || batch[i]->tradeStatus >= 22)
            continue;
        if (const RecordPtr base = lowerBefore(batch, i, batch[i]->volume))
            afterHoursVolume = narrow(minus(batch[i]->volume, base->volume));
        return;
    }
}

void NaiveSnapshotModel::findStep(const Records& batch)
{
    static const std::set<std::string> kKnownMarkets = {"SH", "SZ", "BJ", "SSE", "SZSE"};
    const bool knownMarket = kKnownMarkets.contains(instruments().at(static_cast<std::size_t>(stock)).market);
    const Record& last = *batch.back();
    for (std::size_t i = batch.size() - 1; i-- > 0;) {
        if (!isSnapshot(batch[i]))
            continue;
        const Record& prev = *batch[i];
        if (hasAfterHours && last.tradeStatus >= 22 && prev.tradeStatus < 22) {
            ++m_counters.afterHoursSteps;
            quoterLastVolume = narrow(last.volume);
            return;
        }
        if (!hasAfterHours && isFixedPricePhase(prev))
            continue;
        if (prev.volume >= last.volume)
            continue;
        if (knownMarket && isFixedPricePhase(prev) != isFixedPricePhase(last))
            continue;
        quoterLastVolume = narrow(minus(last.volume, prev.volume));
        return;
    }
}

void NaiveSnapshotModel::liveStep(const Record& last)
{
    if (quoter && quoter->volume < last.volume)
        quoterLastVolume = narrow(minus(last.volume, quoter->volume));
    if (!hasAfterHours)
        return;
    if (last.tradeStatus == 23) {
        quoterLastVolume = afterHoursVolume;
    } else if (last.tradeStatus >= 22 && quoter && quoter->tradeStatus <= 21) {
        ++m_counters.afterHoursSteps;
        afterHoursVolume = quoterLastVolume;
        quoterLastVolume = narrow(last.volume);
    }
}

RecordPtr NaiveSnapshotModel::baseBeforeLast(const Records& batch)
{
    return lowerBefore(batch, batch.size() - 1, batch.back()->volume);
}

void NaiveSnapshotModel::takeTenLevels(const Record& last)
{
    askFloor = 10000000000.0;
    snapshotAsks.clear();
    bidCeiling = 0;
    snapshotBids.clear();
    for (std::size_t i = 0; i < 10; ++i) {
        const double ask = last.asks.prices[i];
        if (hasLevel(ask)) {
            if (ask - askFloor < -1e-5)
                askFloor = ask;
            snapshotAsks[priceKeyOf(ask, priceTick)] =
                std::make_shared<NaiveRow>(NaiveRow{ask, narrow(last.asks.volumes[i]), 0, -1});
        }
        const double bid = last.bids.prices[i];
        if (hasLevel(bid)) {
            if (bid - bidCeiling > 1e-5)
                bidCeiling = bid;
            snapshotBids[priceKeyOf(bid, priceTick)] =
                std::make_shared<NaiveRow>(NaiveRow{bid, narrow(last.bids.volumes[i]), 0, -1});
        }
    }
}

bool NaiveSnapshotModel::trim(NaivePanel& panel)
{
    auto& [flags, bids, asks, lastPrice, lastVolume, minPrice, maxPrice, maxAmount] = panel;
    if (!continuous || bids.empty() || asks.empty() || !(asks.front()->price - bids.back()->price <= 1e-5))
        return false;
    const std::size_t before = bids.size() + asks.size();
    while (!bids.empty() && bids.back()->price - bidCeiling > 1e-5)
        bids.pop_back();
    while (!asks.empty() && asks.front()->price - askFloor < -1e-5)
        asks.erase(asks.begin());
    if (bids.size() + asks.size() < before)
        ++m_counters.trims;
    return true;
}

void NaiveSnapshotModel::widen(NaivePanel& panel, const NaiveRow& row)
{
    if (row.price - panel.maxPrice > 1e-5)
        panel.maxPrice = row.price;
    if (row.price - panel.minPrice < -1e-5)
        panel.minPrice = row.price;
    const double amount = row.volume * row.price;
    if (amount > panel.maxAmount)
        panel.maxAmount = amount;
}

void NaiveSnapshotModel::clearShared()
{
    if (stock >= 0 && (!askRows.empty() || !bidRows.empty()))
        m_manager.saved[stock] = {askRows, bidRows};
    priceTick = 0.001;
    tickLastPrice = quoterLastPrice = DBL_MAX;
    tickLastVolume = quoterLastVolume = afterHoursVolume = 0;
    quoterVolumeTime = 0;
    quoter = nullptr;
    snapshotAsks.clear();
    snapshotBids.clear();
    askRows.clear();
    bidRows.clear();
    askFloor = 10000000000.0;
    bidCeiling = 0;
    quoterTimetag = 0;
    continuous = false;
    loadedHistory = 0;
    dataReady = 0;
    updateFlags = 1;
    book.clearAll();
    initStockParams();
}

} // namespace tests::oracle
