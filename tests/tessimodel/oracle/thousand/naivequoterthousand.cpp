#include "tests/tessimodel/oracle/thousand/naivequoterthousand.h"

#include "tests/tessimodel/oracle/naiveinstruments.h"
#include "tests/tessimodel/oracle/wrapping.h"

#include <algorithm>
#include <cmath>

namespace tests::oracle::thousand {

namespace {

std::size_t shortest(const AllLevels& levels)
{
    return std::min({levels.prices.size(), levels.volumes.size(), levels.numbers.size()});
}

} // namespace

void NaiveQuoterThousand::callback(const ThousandStep& step)
{
    post(step.batch, [this, action = step.action, kind = step.kind, batch = step.batch] {
        if (action == ThousandStep::Action::Thousand)
            doThousandData(batch->records);
        else
            doQuoter(kind, batch->records);
    });
}

void NaiveQuoterThousand::doThousandData(const Records& batch)
{
    if (batch.empty() || !isOfType(batch.back(), Record::Type::Thousand))
        return;
    const RecordPtr record = batch.back();
    ++m_counted.records;
    updateFlags |= 4;
    if (!prevThousand || minus(record->timetag, prevThousand->timetag) >= 1000) {
        prevThousand = thousand;
        ++m_counted.newBases;
    } else {
        ++m_counted.keptBases;
    }
    thousand = record;
    updatePriceVolDelta();
}

std::map<double, int> NaiveQuoterThousand::volumesOf(const Record& record) const
{
    std::map<double, int> volumes;
    for (const AllLevels* side : {&record.allBids, &record.allAsks}) {
        const std::size_t pairs = std::min(side->prices.size(), side->volumes.size());
        m_counted.unequalLists += side->prices.size() == side->volumes.size() ? 0 : 1;
        for (std::size_t i = 0; i < pairs; ++i) {
            const double price = side->prices[i];
            if (std::isnan(price))
                continue;
            m_counted.pricesTwice += volumes.contains(price) ? 1 : 0;
            volumes.insert({price, side->volumes[i]});
        }
    }
    return volumes;
}

void NaiveQuoterThousand::updatePriceVolDelta()
{
    if (!prevThousand || !thousand)
        return;
    const std::map<double, int> before = volumesOf(*prevThousand);
    for (const auto& [price, volume] : volumesOf(*thousand)) {
        const auto was = before.find(price);
        if (was == before.end() || was->second == volume)
            continue;
        priceDeltas[price] = {narrow(static_cast<__int64>(was->second) - volume), thousand->timetag};
        ++m_counted.deltas;
    }
}

void NaiveQuoterThousand::noteStep(int kind, const Records& batch)
{
    const RecordPtr last = batch.back();
    m_counted.flagsOfSnapshots += loadedHistory == 3 ? 1 : 0;
    if (!quoter) {
        quoter = baseBeforeLast(batch);
        m_counted.basesFound += quoter ? 1 : 0;
        m_counted.firstBases += quoter ? 0 : 1;
    }
    takeStep(kind, batch);
    if (!quoter || quoter->volume < last->volume) {
        quoterVolumeTime = narrow(last->timetag);
        quoter = last;
    }
}

int NaiveQuoterThousand::deltaAt(double price) const
{
    if (std::isnan(price))
        return 0;
    const auto found = priceDeltas.find(price);
    if (found == priceDeltas.end())
        return 0;
    const auto& [delta, time] = found->second;
    const bool isRecent = minus(thousand->timetag, time) < 3000;
    m_counted.rowsOfOldDelta += isRecent ? 0 : 1;
    return isRecent ? delta : 0;
}

void NaiveQuoterThousand::getAll(bool isBid, std::vector<NaiveRowPtr>& rows, NaivePanel& panel)
{
    if (stock < 0 || !thousand) {
        m_counted.readsWithoutStock += stock < 0 ? 1 : 0;
        return;
    }
    rows.clear();
    const AllLevels& levels = isBid ? thousand->allBids : thousand->allAsks;
    const std::size_t count = shortest(levels);
    for (std::size_t place = 0; place < count; ++place) {
        const std::size_t i = isBid ? count - 1 - place : place;
        const double price = levels.prices[i];
        rows.push_back(
            std::make_shared<NaiveRow>(NaiveRow{price, levels.volumes[i], deltaAt(price), levels.numbers[i]}));
        widen(panel, *rows.back());
        m_counted.rowsWithDelta += rows.back()->delta == 0 ? 0 : 1;
    }
}

void NaiveQuoterThousand::getByQuoter(bool isBid, std::vector<NaiveRowPtr>& rows, NaivePanel& panel)
{
    if (stock < 0 || !thousand)
        return;
    rows.clear();
    if (!quoter) {
        ++m_counted.readsWithoutSnapshot;
        return;
    }
    const TenLevels& levels = isBid ? quoter->bids : quoter->asks;
    for (std::size_t place = 0; place < 10; ++place) {
        const std::size_t i = isBid ? 9 - place : place;
        const double price = levels.prices[i];
        rows.push_back(std::make_shared<NaiveRow>(NaiveRow{price, narrow(levels.volumes[i]), deltaAt(price), -1}));
        widen(panel, *rows.back());
        m_counted.quoterRowsWithDelta += rows.back()->delta == 0 ? 0 : 1;
    }
}

void NaiveQuoterThousand::getSide(bool isBid, bool byQuoter, NaivePanel& panel)
{
    std::vector<NaiveRowPtr>& rows = isBid ? panel.bids : panel.asks;
    if (byQuoter)
        getByQuoter(isBid, rows, panel);
    else
        getAll(isBid, rows, panel);
}

bool NaiveQuoterThousand::checkUpdate(NaivePanel& panel, bool byQuoter)
{
    if (!thousand) {
        ++m_counted.readsWithoutRecord;
        return false;
    }
    getSide(true, byQuoter, panel);
    getSide(false, byQuoter, panel);
    if (trim(panel)) {
        m_counted.raisedByTrim += (updateFlags & 2) == 0 ? 1 : 0;
        updateFlags |= 2;
    }
    panel.lastPrice = quoterLastPrice;
    panel.lastVolume = quoterLastVolume;
    panel.flags = updateFlags;
    updateFlags = 0;
    m_counted.emptyFlags += panel.flags == 0 ? 1 : 0;
    return true;
}

bool NaiveQuoterThousand::compareNewerQuote() const
{
    const __int64 shown = narrow(quoterVolumeTime);
    if (shown == 0 || reserved == 0)
        return false;
    const int difference = narrow(minus(shown, reserved));
    const int distance = difference < 0 ? narrow(-static_cast<__int64>(difference)) : difference;
    if (distance <= 10000) {
        ++m_counted.nearQuotes;
        m_counted.quotesAtLimit += difference == 10000 ? 1 : 0;
        return false;
    }
    m_counted.newerQuotes += shown > reserved ? 1 : 0;
    return shown > reserved;
}

// What a test puts into `reserved`.
__int64 NaiveQuoterThousand::reservedTime(const ThousandStep& step) const
{
    return step.flag ? plus(narrow(quoterVolumeTime), step.time) : step.time;
}

NaiveLevelPtr NaiveQuoterThousand::getQueue(bool isBid, double price, const std::vector<__int64>& volumes) const
{
    auto queue = std::make_shared<NaiveLevel>();
    queue->price = price;
    queue->isBid = isBid;
    queue->timetag = quoterTimetag;
    for (const __int64 volume : volumes) {
        const __int64 seq = queue->number++;
        queue->quotes[seq] = std::make_shared<NaiveQuote>(NaiveQuote{0, seq, volume, 0, 1});
        queue->volume = plus(queue->volume, volume);
    }
    return queue;
}

void NaiveQuoterThousand::clear()
{
    m_counted.handedRows += stock >= 0 && !(askRows.empty() && bidRows.empty()) ? 1 : 0;
    clearShared();
    thousand = nullptr;
    prevThousand = nullptr;
    reserved = 0;
    priceDeltas.clear();
}

} // namespace tests::oracle::thousand
