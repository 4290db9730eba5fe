#include "exchange/simulator.h"

#include "exchange/afterhours.h"
#include "exchange/arrivals.h"
#include "exchange/auction.h"
#include "exchange/cancelplan.h"
#include "exchange/channel.h"
#include "exchange/daycharacter.h"
#include "exchange/daystatistics.h"
#include "exchange/instrument.h"
#include "exchange/instrumentclass.h"
#include "exchange/marketview.h"
#include "exchange/openinterest.h"
#include "exchange/orderbook.h"
#include "exchange/orderflow.h"
#include "exchange/publisher.h"
#include "exchange/random.h"
#include "exchange/tickfeed.h"
#include "exchange/tradingday.h"
#include "recording/recordedday.h"

#include <algorithm>
#include <memory>

namespace exchange {

namespace {

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

std::unique_ptr<TickFeed> tickFeedOf(const SimulationOptions& options, const InstrumentClass& row,
                                     std::vector<recording::Event>& events)
{
    const bool hasTicks =
        std::find(row.streams.begin(), row.streams.end(), recording::Stream::Orders) != row.streams.end();
    return hasTicks ? makeTickFeed(row.market, events, midnightOf(options.tradingDay), row.tick) : nullptr;
}

// One day in progress: carries each event from the flow through the book to the feeds.
class Simulation {
public:
    Simulation(const SimulationOptions& options, const InstrumentClass& row, std::vector<recording::Event>& events);

    void run(const SimulationProgress& progress);

private:
    void playUntil(DayTime end);
    void turn(DayTime now);
    void playOrder(DayTime now);
    void playCancelVisit(DayTime now);
    void count(DayTime now, const std::vector<Fill>& fills);
    void publishSnapshot(DayTime now);
    void uncross(DayTime now);
    ClassFigures figuresAt(DayTime now) const;

    const InstrumentClass& m_class;
    DayCharacter m_character;
    OrderBook m_book;
    OrderFlow m_flow;
    CancelPlan m_cancels;
    Channel m_channel;
    DayStatistics m_statistics;
    OpenInterest m_openInterest;
    AfterHours m_afterHours;
    std::unique_ptr<TickFeed> m_ticks; // null for a class whose ticks are not published
    Publisher m_publisher;
    Phase m_phase = Phase::BeforeOpen;
    std::vector<DayTime> m_arrivals;
    std::size_t m_nextArrival = 0;
};

Simulation::Simulation(const SimulationOptions& options, const InstrumentClass& row,
                       std::vector<recording::Event>& events)
    : m_class(row)
    , m_character(characterOf(options))
    , m_book(bandOf(options, row))
    , m_flow(options, row, m_character, m_book.band(), randomFor(options, 1))
    , m_cancels(randomFor(options, 2))
    , m_channel(randomFor(options, 3))
    , m_openInterest(randomFor(options, 6))
    , m_afterHours(options, row, randomFor(options, 7))
    , m_ticks(tickFeedOf(options, row, events))
    , m_publisher(events, midnightOf(options.tradingDay), m_class, m_book.band().lastClose,
                  m_class.settles ? previousSettlement(options, row) : 0)
{
    Random random = randomFor(options, 4);
    m_arrivals = drawArrivals(m_character.orders, random);
}

void Simulation::run(const SimulationProgress& progress)
{
    const DayTime end = lastSnapshotOf(m_class.afterClose);
    publishSnapshot(kPreOpenSnapshot);
    for (DayTime now = kOpeningAuction; now <= end; now += kSnapshotStep) {
        playUntil(now);
        turn(now);
        if (progress && (now % clockTime(0, 1) == 0 || now == end))
            progress(now - kOpeningAuction, end - kOpeningAuction);
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
    if (m_phase == Phase::AfterHours)
        m_afterHours.play(m_statistics.reference(m_book.band().lastClose));
    const Phase next = phaseAt(now, m_class.afterClose);
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
    if (isCallAuction(m_phase)) {
        m_book.collect(order);
        if (m_ticks)
            m_ticks->collected(now, order);
    } else {
        const Outcome outcome = m_book.enter(order);
        count(now, outcome.fills);
        if (outcome.cancelled > 0)
            m_channel.next(now);
        if (m_ticks)
            m_ticks->entered(now, order, outcome, m_book.find(order.seq));
    }
    if (const RestingOrder* resting = m_book.find(order.seq))
        m_cancels.add(*resting, m_book, now);
}

void Simulation::playCancelVisit(DayTime now)
{
    const std::optional<__int64> seq = m_cancels.take(m_book);
    if (!seq)
        return;
    const std::optional<RestingOrder> order = m_book.cancel(*seq);
    if (!order)
        return;
    m_channel.next(now);
    if (m_ticks)
        m_ticks->cancelled(now, *order);
}

void Simulation::count(DayTime now, const std::vector<Fill>& fills)
{
    for (std::size_t i = 0; i < fills.size(); ++i)
        m_channel.next(now);
    m_statistics.add(fills, m_class.tick);
    m_openInterest.add(fills);
}

void Simulation::publishSnapshot(DayTime now)
{
    const bool afterHours = m_phase == Phase::AfterHours || m_phase == Phase::AfterHoursClosed;
    MarketView view(m_book, m_phase, afterHours ? m_afterHours.shown(m_statistics) : m_statistics);
    if (!m_class.showsBook)
        view.bid = view.ask = {};
    view.figures = figuresAt(now);
    m_publisher.snapshot(now, view);
}

ClassFigures Simulation::figuresAt(DayTime now) const
{
    ClassFigures figures;
    if (m_class.settles) {
        figures.openInterest = m_openInterest.contracts();
        figures.settlement = now >= kSettlement ? m_statistics.averagePrice() : 0;
    }
    if (m_class.hasIopv)
        figures.iopv = m_flow.value(m_class.tick, ClassFigures::kIopvPerUnit);
    return figures;
}

void Simulation::uncross(DayTime now)
{
    const Ticks reference = m_statistics.reference(m_book.band().lastClose);
    const std::optional<Uncross> uncross = findUncross(m_book, reference);
    if (!uncross)
        return;
    const std::vector<Fill> fills = m_book.uncross(uncross->price);
    count(now, fills);
    if (m_ticks)
        m_ticks->uncrossed(now, fills);
}

} // namespace

recording::RecordedDay simulateDay(const SimulationOptions& options, const SimulationProgress& progress)
{
    options.check();
    const InstrumentClass& row = instrumentClass(options.instrumentClass);
    recording::RecordedDay day;
    day.instrument = describe(options, row);
    day.related = related(options, row);
    day.tradingDay = options.tradingDay;
    day.streams = row.streams;
    Simulation(options, row, day.events).run(progress);
    return day;
}

} // namespace exchange
