#include "exchange/publisher.h"

#include "exchange/instrumentclass.h"
#include "exchange/narrow.h"
#include "quoter/levelorderdata.h"
#include "quoter/levelthousanddata.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactioncount.h"
#include "recording/recordedday.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace exchange {

using recording::Stream;

namespace {

void copyLevels(const SideView& side, TickSize tick, std::vector<double>& prices, std::vector<int>& volumes,
                std::vector<int>& numbers)
{
    prices.reserve(side.all.size());
    volumes.reserve(side.all.size());
    numbers.reserve(side.all.size());
    for (const SideView::FullLevel& level : side.all) {
        prices.push_back(tick.price(level.price));
        volumes.push_back(narrow(level.volume));
        numbers.push_back(narrow(level.orders));
    }
}

} // namespace

Publisher::Publisher(std::vector<recording::Event>& events, __int64 midnight, const InstrumentClass& instrument,
                     Ticks lastClose, Ticks previousSettlement)
    : m_events(events)
    , m_midnight(midnight)
    , m_class(instrument)
    , m_lastClose(lastClose)
    , m_previousSettlement(previousSettlement)
{}

bool Publisher::has(Stream stream) const
{
    return std::find(m_class.streams.begin(), m_class.streams.end(), stream) != m_class.streams.end();
}

double Publisher::price(Ticks ticks) const
{
    return m_class.tick.price(ticks);
}

template <class Record>
Record& Publisher::append(Stream stream, DayTime time)
{
    auto record = std::make_shared<Record>();
    Record& result = *record;
    result.timetag = m_midnight + time;
    m_events.push_back({stream, std::move(record), nullptr});
    return result;
}

void Publisher::snapshot(DayTime time, const MarketView& view)
{
    if (m_lastView == view)
        return;
    if (has(Stream::Quotes))
        appendQuote<quoter::QuoterAllData>(Stream::Quotes, time, view);
    if (has(Stream::Snapshots))
        appendQuote<quoter::QuoterDepthData>(Stream::Snapshots, time, view);
    if (has(Stream::Queues))
        appendQueues(time, view);
    if (has(Stream::Thousand))
        appendThousand(time, view);
    if (has(Stream::Counts))
        appendCounts(time, view.statistics);
    if (has(Stream::Aux))
        appendAux(time, view);
    m_lastView = view;
}

template <class Snapshot>
void Publisher::appendQuote(Stream stream, DayTime time, const MarketView& view)
{
    auto& record = append<Snapshot>(stream, time);
    const DayStatistics& statistics = view.statistics;
    record.lastPrice = price(statistics.last);
    record.open = price(statistics.open);
    record.high = price(statistics.high);
    record.low = price(statistics.low);
    record.lastClose = price(m_lastClose);
    record.volume = statistics.volume;
    record.amount = static_cast<double>(statistics.amountInTicks) * m_class.contractSize / m_class.tick.perUnit;
    record.tradeStatus = m_class.settles ? narrow(view.figures.openInterest) : static_cast<int>(view.phase);
    record.lastSettlementPrice = price(m_previousSettlement);
    record.settlementPrice = price(view.figures.settlement);
    record.iopv = static_cast<double>(view.figures.iopv) / ClassFigures::kIopvPerUnit;
    record.lastPriceAlt = m_class.hasAveragePrice ? price(statistics.averagePrice()) : 0;
    if constexpr (requires { record.rawVolume; })
        record.rawVolume = statistics.volume;
    for (std::size_t i = 0; i < std::size(record.askPrice); ++i) {
        record.askPrice[i] = price(view.ask.shown[i].price);
        record.askVolume[i] = view.ask.shown[i].volume;
        record.bidPrice[i] = price(view.bid.shown[i].price);
        record.bidVolume[i] = view.bid.shown[i].volume;
    }
}

void Publisher::appendQueues(DayTime time, const MarketView& view)
{
    auto& record = append<quoter::LevelOrderData>(Stream::Queues, time);
    record.bidPrice = price(view.bid.queuePrice);
    record.askPrice = price(view.ask.queuePrice);
    for (const Shares volume : view.bid.queue)
        record.bidQueue.push_back(narrow(volume));
    for (const Shares volume : view.ask.queue)
        record.askQueue.push_back(narrow(volume));
}

void Publisher::appendThousand(DayTime time, const MarketView& view)
{
    auto& record = append<quoter::LevelThousandData>(Stream::Thousand, time);
    copyLevels(view.bid, m_class.tick, record.bidPrices, record.bidVolumes, record.bidNumbers);
    copyLevels(view.ask, m_class.tick, record.askPrices, record.askVolumes, record.askNumbers);
}

void Publisher::appendCounts(DayTime time, const DayStatistics& statistics)
{
    auto& record = append<quoter::TransactionCount>(Stream::Counts, time);
    record.buyOrderCount = statistics.buys.orders;
    record.buyHuge = statistics.buys.huge;
    record.buyBig = statistics.buys.big;
    record.buyMiddle = statistics.buys.middle;
    record.buySmall = statistics.buys.small;
    record.sellOrderCount = statistics.sells.orders;
    record.sellHuge = statistics.sells.huge;
    record.sellBig = statistics.sells.big;
    record.sellMiddle = statistics.sells.middle;
    record.sellSmall = statistics.sells.small;
}

void Publisher::appendAux(DayTime time, const MarketView& view)
{
    auto aux = std::make_shared<quoter::QuoteAux>();
    aux->timetag = m_midnight + time;
    aux->bidAveragePrice = price(view.bid.averagePrice);
    aux->totalBidVolume = view.bid.total;
    aux->askAveragePrice = price(view.ask.averagePrice);
    aux->totalAskVolume = view.ask.total;
    m_events.push_back({Stream::Aux, nullptr, std::move(aux)});
}

} // namespace exchange
