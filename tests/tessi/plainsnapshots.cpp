#include "tests/tessi/plainsnapshots.h"

#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "recording/terminalview.h"

#include <cmath>
#include <cstdlib>
#include <iterator>

namespace tests {

namespace {

__int64 levelHandsOf(__int64 shares, int unit)
{
    return shares > 0 && shares < unit ? 1 : shares / unit;
}

std::string sideText(const char* side, const std::vector<PlainSnapshots::Level>& now,
                     const std::vector<PlainSnapshots::Level>& before)
{
    std::string text;
    int number = 0;
    for (const PlainSnapshots::Level& level : now) {
        __int64 change = 0;
        for (const PlainSnapshots::Level& other : before) {
            if (level.ticks != 0 && other.ticks == level.ticks) {
                change = level.hands - other.hands;
                break;
            }
        }
        text += levelText(side, ++number, level.ticks, level.hands, change);
    }
    return text;
}

} // namespace

std::string levelText(const char* side, int level, __int64 ticks, __int64 hands, __int64 change)
{
    std::string text =
        std::string(side) + " " + std::to_string(level) + ": " + std::to_string(ticks) + " x " + std::to_string(hands);
    if (change != 0)
        text += (change > 0 ? " +" : " ") + std::to_string(change);
    return text + "\n";
}

std::string figuresText(__int64 lastTicks, __int64 tickHands)
{
    return "last " + std::to_string(lastTicks) + ", tick " + std::to_string(tickHands) + "\n";
}

PlainSnapshots::PlainSnapshots(const recording::RecordedDay& day, recording::Stream stream, bool afterHours)
    : m_tick(day.instrument.priceTick)
    , m_lastClose(day.instrument.lastClose)
    , m_afterHours(afterHours)
    , m_isIndex(day.instrument.isIndex)
{
    const int unit = recording::sharesPerHand(day.instrument);
    for (const recording::Event& event : day.events) {
        if (event.stream == stream && stream == recording::Stream::Snapshots)
            read(dynamic_cast<const quoter::QuoterDepthData&>(*event.record), unit);
        else if (event.stream == stream)
            read(dynamic_cast<const quoter::QuoterAllData&>(*event.record), unit);
    }
}

__int64 PlainSnapshots::ticksOf(double price) const
{
    return std::llround(price / m_tick);
}

template <class Record>
void PlainSnapshots::read(const Record& record, int unit)
{
    Shot shot{record.timetag,
              record.volume,
              record.volume / unit,
              record.tradeStatus,
              record.lastPrice,
              record.lastClose,
              {},
              {}};
    for (std::size_t i = 0; i < std::size(record.askPrice); ++i) {
        shot.asks.push_back({ticksOf(record.askPrice[i]), levelHandsOf(record.askVolume[i], unit)});
        shot.bids.push_back({ticksOf(record.bidPrice[i]), levelHandsOf(record.bidVolume[i], unit)});
    }
    m_shots.push_back(shot);
}

std::string PlainSnapshots::statusText(__int64 time) const
{
    std::size_t shown = m_shots.size();
    for (std::size_t i = 0; i < m_shots.size(); ++i)
        shown = m_shots[i].time <= time ? i : shown;
    if (shown == m_shots.size())
        return "nothing\n";
    if (m_afterHours && m_shots[shown].status == kFixedPriceEnded) {
        while (shown > 0 && m_shots[shown].status >= kFixedPrice)
            --shown;
    }
    return textOf(shown);
}

std::string PlainSnapshots::textOf(std::size_t shot) const
{
    static const Shot nothing{};
    const Shot& now = m_shots[shot];
    const Shot& before = shot == 0 ? nothing : m_shots[shot - 1];
    const double last = now.last == 0 ? now.lastClose : now.last;
    return sideText("ask", now.asks, before.asks) + sideText("bid", now.bids, before.bids) +
           figuresText(ticksOf(last), latestGrowth(shot));
}

__int64 PlainSnapshots::latestGrowth(std::size_t shot) const
{
    for (; shot > 0; --shot) {
        const Shot& before = m_shots[shot - 1];
        if (counts(before) != counts(m_shots[shot]))
            return m_shots[shot].hands;
        if (m_shots[shot].hands > before.hands)
            return m_shots[shot].hands - before.hands;
    }
    return 0;
}

std::vector<PlainSnapshots::Tick> PlainSnapshots::ticks() const
{
    std::vector<Tick> ticks;
    const Shot* before = nullptr;
    for (const Shot& shot : m_shots) {
        if (!counts(shot) || (!m_isIndex && shot.hands == 0))
            continue;
        const __int64 hands = before ? std::abs(shot.hands - before->hands) : shot.hands;
        if (!m_isIndex && hands == 0)
            continue;
        const bool isBuy = before ? before->last <= shot.last : m_lastClose < shot.last;
        ticks.push_back({ticksOf(shot.last), hands, isBuy, before ? before->shares : 0, shot.shares});
        before = &shot;
    }
    return ticks;
}

std::map<__int64, PlainSnapshots::Row, std::greater<>> PlainSnapshots::distribution() const
{
    std::map<__int64, Row, std::greater<>> rows;
    for (const Tick& tick : ticks())
        (tick.isBuy ? rows[tick.ticks].buy : rows[tick.ticks].sell) += tick.hands;
    return rows;
}

__int64 PlainSnapshots::lastHands() const
{
    __int64 last = 0;
    for (const Shot& shot : m_shots)
        last = counts(shot) ? shot.hands : last;
    return last;
}

} // namespace tests
