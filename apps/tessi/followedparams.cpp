#include "apps/tessi/followedparams.h"

#include "apps/tessi/anysnapshot.h"
#include "apps/tessi/dayrequest.h"
#include "quoter/transactiondata.h"
#include "recording/dayspan.h"
#include "recording/terminalview.h"
#include "utils/stockkey.h"

#include <algorithm>

namespace tessi {

namespace {

using recording::Stream;

constexpr int kBuyersTrade = 1; // TransactionData::tradeFlag
constexpr int kSellersTrade = 2;

} // namespace

FollowedParams::FollowedParams(const recording::RecordedDay& day, bool level2)
    : m_stream(snapshotStream(day))
    , m_sharesPerHand(recording::sharesPerHand(day.instrument))
    , m_volumes(volumesOf(day, m_stream))
    , m_panelThread(utils::CSingletonT<net::RPCEngine>::instance()->getStrand("panel"))
{
    // setLevel2 would drop the listing rows that setStock adds.
    model.setLevel2(level2);
    model.setStock(QString::fromStdString(utils::zlStockKey(day.instrument.market, day.instrument.code)));
    const auto dayInSeconds = static_cast<int>(recording::DaySpan(day.tradingDay).begin() / 1000);
    model.m_historyDateSource = [dayInSeconds] { return dayInSeconds; };
    m_request = requestOf(day);
}

std::vector<FollowedParams::DayVolume> FollowedParams::volumesOf(const recording::RecordedDay& day, Stream stream)
{
    std::vector<DayVolume> volumes;
    for (const recording::Event& event : day.events) {
        if (event.stream != stream)
            continue;
        withSnapshot(event.record, [&volumes](const auto& snapshot) {
            volumes.push_back({snapshot->timetag, snapshot->volume});
        });
    }
    return volumes;
}

// The model asks for the terminal's last trading day, open ended.
TC::CFormulaParam FollowedParams::requestOf(const recording::RecordedDay& day) const
{
    TC::CFormulaParam request;
    model.getParams(request);
    const recording::DaySpan span(day.tradingDay);
    if (request.beginTime.time > span.begin()) {
        request.beginTime.time = span.begin();
        request.endTime = {span.last(), 0};
    }
    return request;
}

void FollowedParams::subscribe(recording::DataLayer& data)
{
    data.subscribeWhole(m_request, m_stream, [this](int batchKind, const recording::RecordBatch& records) {
        m_panelThread->post([this, batchKind, records] { take(batchKind, records); });
    });
    data.subscribeAux(m_request, [this](int, const recording::AuxBatch& records) {
        m_panelThread->post([this, records] {
            for (const auto& record : records)
                model.quoteAuxCallback(record);
        });
    });
    data.subscribe(m_request, Stream::Trades, [this](int batchKind, const recording::RecordBatch& records) {
        m_panelThread->post([this, batchKind, records] { takeTrades(batchKind, records); });
    });
}

// Shares of the next snapshot with that time stamp. Snapshots outside the request's times do not come: they are passed
// over.
__int64 FollowedParams::nextSharesAt(__int64 timetag)
{
    while (m_nextVolume < m_volumes.size()) {
        const DayVolume& volume = m_volumes[m_nextVolume++];
        if (volume.timetag == timetag)
            return volume.shares;
    }
    return 0;
}

void FollowedParams::take(int batchKind, const recording::RecordBatch& snapshots)
{
    if (batchKind == 0) {
        m_snapshots.clear();
        m_nextVolume = 0;
    }
    for (const Snapshot& snapshot : snapshots)
        m_snapshots.push_back({snapshot, nextSharesAt(snapshot->timetag)});
    if (model.quoterCallback(0, batchKind, snapshots) && !snapshots.empty())
        showAverage(m_snapshots.back());
}

void FollowedParams::takeTrades(int batchKind, const recording::RecordBatch& trades)
{
    if (batchKind == 0) {
        m_trades.clear();
        m_isMarked = false;
        m_sides = {};
    }
    for (const auto& record : trades) {
        const auto trade = std::dynamic_pointer_cast<quoter::TransactionData>(record);
        if (!trade || trade->transKind == quoter::kTransKindCancel)
            continue;
        m_trades.push_back(trade);
        m_isMarked = m_isMarked || trade->tradeFlag != 0;
        m_sides.add(*trade);
    }
    show(m_sides);
}

void FollowedParams::Sides::add(const quoter::TransactionData& trade)
{
    inner += trade.tradeFlag == kSellersTrade ? trade.volume : 0;
    outer += trade.tradeFlag == kBuyersTrade ? trade.volume : 0;
}

std::optional<__int64> FollowedParams::showAt(__int64 timetag)
{
    const auto isShown = [&](const Seen& seen) {
        return seen.snapshot->timetag <= timetag && model.m_history.count(seen.snapshot->timetag) > 0;
    };
    const auto found = std::find_if(m_snapshots.rbegin(), m_snapshots.rend(), isShown);
    if (found == m_snapshots.rend())
        return std::nullopt;
    model.connectTickData(found->snapshot);
    showAverage(*found);
    const Seen* const day = dayOf(*found);
    show(day ? sidesWithin(day->shares) : Sides());
    return found->snapshot->timetag;
}

// The snapshot that has the day's volume and amount: where they count anew after hours, the last one before.
const FollowedParams::Seen* FollowedParams::dayOf(const Seen& seen) const
{
    const bool countsAnew = model.m_isAfterHoursA || model.m_isAfterHoursB;
    if (!countsAnew || !isAfterHours(seen.snapshot))
        return &seen;
    const auto isLastContinuous = [this](const Seen& each) { return each.snapshot == model.m_lastContinuous; };
    const auto found = std::find_if(m_snapshots.rbegin(), m_snapshots.rend(), isLastContinuous);
    return found == m_snapshots.rend() ? nullptr : &*found;
}

FollowedParams::Sides FollowedParams::sidesWithin(__int64 shares) const
{
    Sides sides;
    for (const auto& trade : m_trades) {
        shares -= trade->volume;
        if (shares < 0)
            break;
        sides.add(*trade);
    }
    return sides;
}

bool FollowedParams::hasAverage() const
{
    const auto without = {&model.m_indexParams, &model.m_ciccIndexParams, &model.m_futureParams, &model.m_optionParams};
    return std::find(without.begin(), without.end(), model.m_paramList) == without.end();
}

void FollowedParams::showAverage(const Seen& seen)
{
    const Seen* const day = hasAverage() ? dayOf(seen) : nullptr;
    if (day && day->shares > 0)
        model.setAveragePrice(amountOf(day->snapshot) / static_cast<double>(day->shares));
}

void FollowedParams::show(const Sides& sides)
{
    if (m_isMarked)
        model.setDishData(sides.inner / m_sharesPerHand, sides.outer / m_sharesPerHand);
}

} // namespace tessi
