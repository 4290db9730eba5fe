#include "exchange/simulator.h"

#include "exchange/arrivals.h"
#include "exchange/auction.h"
#include "exchange/cancelplan.h"
#include "exchange/channel.h"
#include "exchange/daycharacter.h"
#include "exchange/daystatistics.h"
#include "exchange/marketview.h"
#include "exchange/orderbook.h"
#include "exchange/orderflow.h"
#include "exchange/publisher.h"
#include "exchange/random.h"
#include "exchange/tradingday.h"
#include "recording/recordedday.h"

#include <algorithm>
#include <cmath>

namespace exchange {

namespace {

constexpr int kStockType = 100003;
constexpr int kTotalSharesField = 3015;
constexpr int kFloatSharesField = 3016;

PriceBand bandOf(const SimulationOptions& options)
{
    return PriceBand::around(static_cast<Ticks>(std::lround(options.lastClose * kTicksPerYuan)));
}

standin::InstrumentDescription describe(const SimulationOptions& options)
{
    const PriceBand band = bandOf(options);
    standin::InstrumentDescription instrument;
    instrument.market = "SZ";
    instrument.code = options.code;
    instrument.name = options.name;
    instrument.lastClose = yuan(band.lastClose);
    instrument.upStopPrice = yuan(band.high);
    instrument.downStopPrice = yuan(band.low);
    instrument.priceTick = yuan(1);
    instrument.types = {kStockType};
    instrument.doubleFields = {{kTotalSharesField, static_cast<double>(options.totalShares)},
                               {kFloatSharesField, static_cast<double>(options.floatShares)}};
    return instrument;
}

// A generator of its own for each who decides, so that a change to one leaves the others' draws alone.
Random randomFor(const SimulationOptions& options, std::uint64_t who)
{
    return Random(Random(options.seed).next() + who);
}

DayCharacter characterOf(const SimulationOptions& options)
{
    Random random = randomFor(options, 5);
    return DayCharacter::draw(options, random);
}

// One day in progress: carries each event from the flow through the book to the publisher.
class Simulation {
public:
    Simulation(const SimulationOptions& options, std::vector<recording::Event>& events);

    void run(const SimulationProgress& progress);

private:
    void playUntil(DayTime end);
    void turn(DayTime now);
    void playOrder(DayTime now);
    void playCancelVisit(DayTime now);
    void trade(DayTime now, const std::vector<Fill>& fills);
    void publishCancel(DayTime now, Side side, __int64 seq, Shares remainder);
    void publishSnapshot(DayTime now);
    void uncross(DayTime now);

    DayCharacter m_character;
    OrderBook m_book;
    OrderFlow m_flow;
    CancelPlan m_cancels;
    Channel m_channel;
    DayStatistics m_statistics;
    Publisher m_publisher;
    Phase m_phase = Phase::BeforeOpen;
    std::vector<DayTime> m_arrivals;
    std::size_t m_nextArrival = 0;
};

Simulation::Simulation(const SimulationOptions& options, std::vector<recording::Event>& events)
    : m_character(characterOf(options))
    , m_book(bandOf(options))
    , m_flow(options, m_character, m_book.band(), randomFor(options, 1))
    , m_cancels(randomFor(options, 2))
    , m_channel(randomFor(options, 3))
    , m_publisher(events, midnightOf(options.tradingDay), m_book.band().lastClose)
{
    Random random = randomFor(options, 4);
    m_arrivals = drawArrivals(m_character.orders, random);
}

void Simulation::run(const SimulationProgress& progress)
{
    publishSnapshot(kPreOpenSnapshot);
    for (DayTime now = kOpeningAuction; now <= kLastSnapshot; now += kSnapshotStep) {
        playUntil(now);
        turn(now);
        if (progress && (now % clockTime(0, 1) == 0 || now == kLastSnapshot))
            progress(now - kOpeningAuction, kLastSnapshot - kOpeningAuction);
    }
}

// All orders and cancels before `end`, in the order of time; at the same time the order first.
void Simulation::playUntil(DayTime end)
{
    while (true) {
        const DayTime arrival = m_nextArrival < m_arrivals.size() ? m_arrivals[m_nextArrival] : end;
        const DayTime visit = m_cancels.nextTime().value_or(end);
        if (std::min(arrival, visit) >= end)
            return;
        if (arrival <= visit)
            playOrder(arrival);
        else
            playCancelVisit(visit);
    }
}

// An auction that ends shows itself a last time before it trades; any other phase begins before its first snapshot.
void Simulation::turn(DayTime now)
{
    const Phase next = phaseAt(now);
    const bool auctionEnds = isCallAuction(m_phase) && next != m_phase;
    if (!auctionEnds)
        m_phase = next;
    publishSnapshot(now);
    if (auctionEnds)
        uncross(now);
    m_phase = next;
}

void Simulation::playOrder(DayTime now)
{
    ++m_nextArrival;
    Order order = m_flow.draw(m_book, m_phase);
    order.seq = m_channel.next(now);
    m_publisher.order(now, order);
    if (isCallAuction(m_phase)) {
        m_book.collect(order);
    } else {
        const Outcome outcome = m_book.enter(order);
        trade(now, outcome.fills);
        if (outcome.cancelled > 0)
            publishCancel(now, order.side, order.seq, outcome.cancelled);
    }
    if (const RestingOrder* resting = m_book.find(order.seq))
        m_cancels.add(*resting, m_book, now);
}

void Simulation::playCancelVisit(DayTime now)
{
    const std::optional<__int64> seq = m_cancels.take(m_book);
    if (!seq)
        return;
    if (const std::optional<RestingOrder> order = m_book.cancel(*seq))
        publishCancel(now, order->side, order->seq, order->left);
}

void Simulation::trade(DayTime now, const std::vector<Fill>& fills)
{
    for (std::size_t i = 0; i < fills.size(); ++i)
        m_channel.next(now);
    m_statistics.add(fills);
    m_publisher.trades(now, fills);
}

void Simulation::publishCancel(DayTime now, Side side, __int64 seq, Shares remainder)
{
    m_channel.next(now);
    m_publisher.cancel(now, side, seq, remainder);
}

void Simulation::publishSnapshot(DayTime now)
{
    m_publisher.snapshot(now, MarketView(m_book, m_phase, m_statistics));
}

void Simulation::uncross(DayTime now)
{
    const Ticks reference = m_statistics.reference(m_book.band().lastClose);
    if (const std::optional<Uncross> uncross = findUncross(m_book, reference))
        trade(now, m_book.uncross(uncross->price));
}

} // namespace

recording::RecordedDay simulateDay(const SimulationOptions& options, const SimulationProgress& progress)
{
    options.check();
    using recording::Stream;
    recording::RecordedDay day;
    day.instrument = describe(options);
    day.tradingDay = options.tradingDay;
    day.streams = {Stream::Orders, Stream::Trades,   Stream::Quotes, Stream::Snapshots,
                   Stream::Queues, Stream::Thousand, Stream::Counts, Stream::Aux};
    Simulation(options, day.events).run(progress);
    return day;
}

} // namespace exchange
