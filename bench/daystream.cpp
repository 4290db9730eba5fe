#include "bench/daystream.h"

#include "exchange/random.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

#include <algorithm>
#include <utility>

namespace bench {

namespace {

constexpr __int64 kSecond = 1000;
constexpr __int64 kStep = 3 * kSecond;
constexpr __int64 kOpening = 1709256600000; // 2024-03-01 09:30:00
constexpr __int64 kHalfHour = 1800 * kSecond;
constexpr __int64 kSessionLength = 4 * kHalfHour;
constexpr __int64 kSessions[] = {kOpening, kOpening + 7 * kHalfHour};
constexpr int kSharesPerHand = 100;
constexpr int kEarliest = 300; // ms by which a snapshot comes ahead of its own time, as the trades' time counts
constexpr int kLatest = 900;
constexpr TickOptions kTicks{.cancelPerMille = 60, .perDay = 1'310'000};

using Trades = std::vector<std::shared_ptr<quoter::TransactionData>>;

// Walks the trades from snapshot to snapshot.
class SnapshotMaker {
public:
    explicit SnapshotMaker(const Trades& trades)
        : m_trades(trades)
    {}

    bool hasTradesLeft() const { return m_contained < m_trades.size(); }

    SnapshotPush take(__int64 time)
    {
        while (hasTradesLeft() && m_trades[m_contained]->timetag <= time) {
            m_shares += m_trades[m_contained]->volume;
            m_lastPrice = m_trades[m_contained]->price;
            ++m_contained;
        }
        auto record = std::make_shared<quoter::QuoterDepthData>();
        record->timetag = time;
        record->lastPrice = m_lastPrice;
        record->volume = m_shares / kSharesPerHand;
        record->tradeStatus = 13;
        return {std::move(record), countUpTo(time - kEarliest + m_chance.below(kEarliest + kLatest))};
    }

private:
    std::size_t countUpTo(__int64 time) const
    {
        const auto isLater = [](__int64 moment, const auto& trade) { return moment < trade->timetag; };
        return static_cast<std::size_t>(std::upper_bound(m_trades.begin(), m_trades.end(), time, isLater) -
                                        m_trades.begin());
    }

    const Trades& m_trades;
    exchange::Random m_chance{1};
    std::size_t m_contained = 0;
    __int64 m_shares = 0;
    double m_lastPrice = 0;
};

std::vector<SnapshotPush> makeSnapshots(const Trades& trades, bool toTheClose)
{
    std::vector<SnapshotPush> snapshots;
    SnapshotMaker maker(trades);
    for (const __int64 start : kSessions) {
        for (__int64 time = start + kStep; time <= start + kSessionLength; time += kStep) {
            if (!toTheClose && !maker.hasTradesLeft())
                return snapshots;
            snapshots.push_back(maker.take(time));
        }
    }
    return snapshots;
}

} // namespace

DayStream makeDay(int trades)
{
    TickOptions options = kTicks;
    options.fills = trades;
    const TickStream ticks = makeTicks(options);
    DayStream day;
    day.lowestKey = ticks.lowestKey;
    day.highestKey = ticks.highestKey;
    for (const Tick& tick : ticks.ticks) {
        if (day.trades.size() == static_cast<std::size_t>(trades))
            break;
        if (tick.order) {
            day.orders.push_back(tick.order);
            continue;
        }
        day.reports.push_back(tick.trade);
        if (tick.trade->transKind != quoter::kTransKindCancel)
            day.trades.push_back(tick.trade);
    }
    day.snapshots = makeSnapshots(day.trades, trades >= kTradesOfADay);
    return day;
}

} // namespace bench
