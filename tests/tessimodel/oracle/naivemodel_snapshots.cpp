#include "tests/tessimodel/oracle/naivemodel.h"
#include "tests/tessimodel/oracle/wrapping.h"

#include <cmath>
#include <set>
#include <string>

namespace tests::oracle {

namespace {

bool isSnapshot(const RecordPtr& record)
{
    return record && record->type == Record::Type::Snapshot;
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

void NaiveModel::doQuoter(int kind, const BatchPtr& batch)
{
    if (batch->records.empty() || !isSnapshot(batch->records.back()))
        return;
    const Record& last = *batch->records.back();
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
    if (kind == 0)
        quoterLastVolume = 0;
    if (kind == 0 || kind == 3)
        historyStep(batch->records);
    else
        liveStep(last);
    settleQuoter(batch->records);
    takeTenLevels(last);
}

void NaiveModel::historyStep(const std::vector<RecordPtr>& batch)
{
    quoter = batch.back();
    if (hasAfterHours)
        saveAfterHoursStep(batch);
    findStep(batch);
    if (hasAfterHours && quoter->tradeStatus == 23)
        quoterLastVolume = afterHoursVolume;
}

void NaiveModel::saveAfterHoursStep(const std::vector<RecordPtr>& batch)
{
    for (std::size_t i = batch.size(); i-- > 0;) {
        if (!isSnapshot(batch[i]) || batch[i]->tradeStatus >= 22)
            continue;
        if (const RecordPtr base = lowerBefore(batch, i, batch[i]->volume))
            afterHoursVolume = narrow(minus(batch[i]->volume, base->volume));
        return;
    }
}

void NaiveModel::findStep(const std::vector<RecordPtr>& batch)
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

void NaiveModel::liveStep(const Record& last)
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

void NaiveModel::settleQuoter(const std::vector<RecordPtr>& batch)
{
    const RecordPtr last = batch.back();
    if (!quoter)
        quoter = lowerBefore(batch, batch.size() - 1, last->volume);
    if (!quoter || quoter->volume < last->volume) {
        quoterVolumeTime = last->timetag;
        quoter = last;
    }
}

void NaiveModel::takeTenLevels(const Record& last)
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

} // namespace tests::oracle
