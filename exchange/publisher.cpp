#include "exchange/publisher.h"

#include "quoter/levelorderdata.h"
#include "quoter/levelthousanddata.h"
#include "quoter/orderdata.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactioncount.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"

#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

namespace exchange {

using recording::Stream;

namespace {

constexpr int kTrade = 0;

// Sequence numbers of trades and the numbers of queues and thousand-level snapshots have 32 bits.
template <class Number>
int narrow(Number number)
{
    if (!std::in_range<int>(number))
        throw std::overflow_error(std::to_string(number) + " does not fit a record's field of 32 bits");
    return static_cast<int>(number);
}

void copyLevels(const SideView& side, std::vector<double>& prices, std::vector<int>& volumes, std::vector<int>& numbers)
{
    prices.reserve(side.all.size());
    volumes.reserve(side.all.size());
    numbers.reserve(side.all.size());
    for (const SideView::FullLevel& level : side.all) {
        prices.push_back(yuan(level.price));
        volumes.push_back(narrow(level.volume));
        numbers.push_back(narrow(level.orders));
    }
}

} // namespace

Publisher::Publisher(std::vector<recording::Event>& events, __int64 midnight, Ticks lastClose)
    : m_events(events)
    , m_midnight(midnight)
    , m_lastClose(lastClose)
{}

template <class Record>
Record& Publisher::append(Stream stream, DayTime time)
{
    auto record = std::make_shared<Record>();
    Record& result = *record;
    result.timetag = m_midnight + time;
    m_events.push_back({stream, std::move(record), nullptr});
    return result;
}

void Publisher::order(DayTime time, const Order& order)
{
    auto& record = append<quoter::OrderData>(Stream::Orders, time);
    record.price = order.kind == OrderKind::Limit ? yuan(order.price) : 0;
    record.volume = order.volume;
    record.seq = narrow(order.seq);
    record.orderKind = static_cast<int>(order.kind);
    record.bsFlag = static_cast<int>(order.side);
}

void Publisher::trades(DayTime time, const std::vector<Fill>& fills)
{
    for (const Fill& fill : fills) {
        auto& record = append<quoter::TransactionData>(Stream::Trades, time);
        record.price = yuan(fill.price);
        record.volume = fill.volume;
        record.buySeq = narrow(fill.buySeq);
        record.sellSeq = narrow(fill.sellSeq);
        record.tradeFlag = static_cast<int>(fill.aggressor());
        record.transKind = kTrade;
    }
}

void Publisher::cancel(DayTime time, Side side, __int64 seq, Shares remainder)
{
    auto& record = append<quoter::TransactionData>(Stream::Trades, time);
    record.volume = remainder;
    (side == Side::Buy ? record.buySeq : record.sellSeq) = narrow(seq);
    record.transKind = quoter::kTransKindCancel;
}

void Publisher::snapshot(DayTime time, const MarketView& view)
{
    if (m_lastView == view)
        return;
    appendQuote<quoter::QuoterAllData>(Stream::Quotes, time, view);
    appendQuote<quoter::QuoterDepthData>(Stream::Snapshots, time, view);
    appendQueues(time, view);
    appendThousand(time, view);
    appendCounts(time, view.statistics);
    appendAux(time, view);
    m_lastView = view;
}

template <class Snapshot>
void Publisher::appendQuote(Stream stream, DayTime time, const MarketView& view)
{
    auto& record = append<Snapshot>(stream, time);
    const DayStatistics& statistics = view.statistics;
    record.lastPrice = yuan(statistics.last);
    record.open = yuan(statistics.open);
    record.high = yuan(statistics.high);
    record.low = yuan(statistics.low);
    record.lastClose = yuan(m_lastClose);
    record.volume = statistics.volume;
    record.amount = static_cast<double>(statistics.amountInTicks) / kTicksPerYuan;
    record.tradeStatus = static_cast<int>(view.phase);
    if constexpr (requires { record.rawVolume; })
        record.rawVolume = statistics.volume;
    for (std::size_t i = 0; i < std::size(record.askPrice); ++i) {
        record.askPrice[i] = yuan(view.ask.shown[i].price);
        record.askVolume[i] = view.ask.shown[i].volume;
        record.bidPrice[i] = yuan(view.bid.shown[i].price);
        record.bidVolume[i] = view.bid.shown[i].volume;
    }
}

void Publisher::appendQueues(DayTime time, const MarketView& view)
{
    auto& record = append<quoter::LevelOrderData>(Stream::Queues, time);
    record.bidPrice = yuan(view.bid.queuePrice);
    record.askPrice = yuan(view.ask.queuePrice);
    for (const Shares volume : view.bid.queue)
        record.bidQueue.push_back(narrow(volume));
    for (const Shares volume : view.ask.queue)
        record.askQueue.push_back(narrow(volume));
}

void Publisher::appendThousand(DayTime time, const MarketView& view)
{
    auto& record = append<quoter::LevelThousandData>(Stream::Thousand, time);
    copyLevels(view.bid, record.bidPrices, record.bidVolumes, record.bidNumbers);
    copyLevels(view.ask, record.askPrices, record.askVolumes, record.askNumbers);
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
    aux->bidAveragePrice = yuan(view.bid.averagePrice);
    aux->totalBidVolume = view.bid.total;
    aux->askAveragePrice = yuan(view.ask.averagePrice);
    aux->totalAskVolume = view.ask.total;
    m_events.push_back({Stream::Aux, nullptr, std::move(aux)});
}

} // namespace exchange
