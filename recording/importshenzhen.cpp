#include "recording/importparts.h"

#include "quoter/levelorderdata.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "recording/errors.h"
#include "recording/instrumentfile.h"

#include <array>
#include <cstdint>
#include <string>
#include <unordered_set>

namespace recording {

namespace {

constexpr double kPriceScale = 10000.0;
constexpr __int64 kRawCent = 100;
constexpr int kLimitOrder = 1;

// The columns that stand in all four files: they must name one instrument and day throughout.
class Header {
public:
    Header(const SourceTable& table, const char* clock)
        : m_instrument(table.column("万得代码"))
        , m_date(table.column("自然日"))
        , m_clock(table.column(clock))
    {}

    __int64 timetag(const SourceTable& table, ImportParts& parts) const
    {
        checkInstrument(table, parts);
        const __int64 date = table.integer(m_date);
        if (parts.tradingDay == 0 && date > 0 && date <= 2038'01'18 && isTradingDay(static_cast<int>(date)))
            parts.tradingDay = static_cast<int>(date);
        if (date != parts.tradingDay)
            table.fail(m_date,
                       "not the trading day " + std::to_string(parts.tradingDay) + ": " + inQuotes(table.text(m_date)));
        return stampFrom(table, m_clock, table.integer(m_clock), parts.tradingDay);
    }

private:
    // "000001.SZ"
    void checkInstrument(const SourceTable& table, ImportParts& parts) const
    {
        const std::string_view text = table.text(m_instrument);
        const std::size_t dot = text.find('.');
        if (dot == 0 || dot == text.npos || text.substr(dot + 1) != "SZ")
            table.fail(m_instrument, "not an instrument of Shenzhen: " + inQuotes(text));
        if (parts.code.empty())
            parts.code = text.substr(0, dot);
        if (parts.code != text.substr(0, dot))
            table.fail(m_instrument, "another instrument than " + parts.code + ": " + inQuotes(text));
    }

    std::size_t m_instrument;
    std::size_t m_date;
    std::size_t m_clock;
};

double price(__int64 raw)
{
    return static_cast<double>(raw) / kPriceScale;
}

// 1 buy, 2 sell; the auctions leave some marks out.
int sideOf(const SourceTable& table, std::size_t column)
{
    const std::string_view text = table.text(column);
    if (text == "B")
        return quoter::kSideBuy;
    if (text == "S")
        return quoter::kSideSell;
    table.fail(column, "not B or S: " + inQuotes(text));
}

int orderKindOf(const SourceTable& table, std::size_t column)
{
    const std::string_view text = table.text(column);
    if (text == "0" || text == "2")
        return kLimitOrder;
    if (text == "1")
        return 7; // market
    if (text == "U")
        return 6; // own side's best
    table.fail(column, "not an order type: " + inQuotes(text));
}

void readOrders(SourceTable& table, ImportParts& parts, std::vector<SourceTick>& ticks)
{
    const Header header(table, "时间");
    const std::size_t seq = table.column("交易所委托号");
    const std::size_t kind = table.column("委托类型");
    const std::size_t side = table.column("委托代码");
    const std::size_t priceColumn = table.column("委托价格");
    const std::size_t volume = table.column("委托数量");
    while (table.next()) {
        auto order = std::make_shared<quoter::OrderData>();
        order->timetag = header.timetag(table, parts);
        order->orderKind = orderKindOf(table, kind);
        const bool isLimit = order->orderKind == kLimitOrder;
        const __int64 raw = isLimit ? table.positive(priceColumn) : table.notNegative(priceColumn);
        order->price = price(raw);
        order->volume = table.positive(volume);
        order->seq = table.positive(seq);
        order->bsFlag = sideOf(table, side);
        parts.hasFineTick |= isLimit && raw % kRawCent != 0;
        ticks.push_back({order->seq, {Stream::Orders, order, nullptr}, &table, table.line()});
    }
}

void readTrades(SourceTable& table, ImportParts& parts, std::vector<SourceTick>& ticks)
{
    const Header header(table, "时间");
    const std::size_t number = table.column("成交编号");
    const std::size_t code = table.column("成交代码");
    const std::size_t side = table.column("BS标志");
    const std::size_t priceColumn = table.column("成交价格");
    const std::size_t volume = table.column("成交数量");
    const std::size_t sell = table.column("叫卖序号");
    const std::size_t buy = table.column("叫买序号");
    while (table.next()) {
        auto trade = std::make_shared<quoter::TransactionData>();
        trade->timetag = header.timetag(table, parts);
        trade->volume = table.positive(volume);
        trade->sellSeq = table.notNegative32(sell);
        trade->buySeq = table.notNegative32(buy);
        trade->tradeFlag = table.isBlank(side) ? 0 : sideOf(table, side);
        if (table.text(code) == "C") {
            trade->transKind = quoter::kTransKindCancel;
            if (table.integer(priceColumn) != 0)
                table.fail(priceColumn, "a cancel with a price: " + inQuotes(table.text(priceColumn)));
            if ((trade->sellSeq == 0) == (trade->buySeq == 0))
                table.fail(code, "a cancel must name one order");
        } else if (table.text(code) == "0") {
            trade->price = price(table.positive(priceColumn));
            table.positive(sell);
            table.positive(buy);
        } else {
            table.fail(code, "neither a trade nor a cancel: " + inQuotes(table.text(code)));
        }
        ticks.push_back({table.integer(number), {Stream::Trades, trade, nullptr}, &table, table.line()});
    }
}

int scheduledPhase(int clock)
{
    struct Step {
        int from; // HHMMSS
        Phase phase;
    };
    constexpr std::array<Step, 8> kSchedule{{{0, kBeforeOpen},
                                             {91500, kOpeningAuction},
                                             {92500, kBreak},
                                             {93000, kContinuous},
                                             {113000, kBreak},
                                             {130000, kContinuous},
                                             {145700, kClosingAuction},
                                             {150000, kClosed}}};
    int phase = kBeforeOpen;
    for (const Step& step : kSchedule) {
        if (clock >= step.from)
            phase = step.phase;
    }
    return phase;
}

// The file has no phase, so the time of day tells it. A snapshot stamped at the seam of two phases may still show
// the one before or already the next; only an auction shows the same price on both sides.
int phaseOf(const quoter::QuoterDepthData& snapshot, bool samePrices)
{
    const int clock = clockOf(snapshot.timetag);
    const int phase = scheduledPhase(clock);
    const bool isEmpty = snapshot.bidVolume[0] == 0 && snapshot.askVolume[0] == 0;
    const bool isMatching = !isEmpty && samePrices;
    if (phase == kOpeningAuction && !isEmpty && !isMatching)
        return kBreak;
    if (phase == kClosingAuction && !isEmpty && !isMatching)
        return kContinuous;
    if (phase == kBreak && isMatching && clock < 93000)
        return kOpeningAuction;
    if (phase == kClosed && isMatching)
        return kClosingAuction;
    return phase;
}

std::array<std::size_t, 10> levelColumns(const SourceTable& table, const std::string& name)
{
    std::array<std::size_t, 10> columns{};
    for (std::size_t i = 0; i < columns.size(); ++i)
        columns[i] = table.column(name + std::to_string(i + 1));
    return columns;
}

void readSnapshots(SourceTable& table, ImportParts& parts)
{
    const Header header(table, "时间");
    const auto askPrices = levelColumns(table, "申卖价");
    const auto askVolumes = levelColumns(table, "申卖量");
    const auto bidPrices = levelColumns(table, "申买价");
    const auto bidVolumes = levelColumns(table, "申买量");
    const auto priceOf = [&table](const char* name) { return price(table.notNegative(table.column(name))); };
    while (table.next()) {
        auto snapshot = std::make_shared<quoter::QuoterDepthData>();
        snapshot->timetag = header.timetag(table, parts);
        snapshot->lastPrice = priceOf("成交价");
        snapshot->open = priceOf("开盘价");
        snapshot->high = priceOf("最高价");
        snapshot->low = priceOf("最低价");
        snapshot->lastClose = priceOf("前收盘");
        snapshot->iopv = priceOf("IOPV");
        snapshot->volume = table.notNegative(table.column("当日累计成交量"));
        snapshot->amount = table.notNegativeNumber(table.column("当日成交额"));
        for (std::size_t i = 0; i < askPrices.size(); ++i) {
            snapshot->askPrice[i] = price(table.notNegative(askPrices[i]));
            snapshot->askVolume[i] = table.notNegative(askVolumes[i]);
            snapshot->bidPrice[i] = price(table.notNegative(bidPrices[i]));
            snapshot->bidVolume[i] = table.notNegative(bidVolumes[i]);
        }
        snapshot->tradeStatus = phaseOf(*snapshot, table.integer(bidPrices[0]) == table.integer(askPrices[0]));

        auto aux = std::make_shared<quoter::QuoteAux>();
        aux->timetag = snapshot->timetag;
        aux->bidAveragePrice = priceOf("加权平均叫买价");
        aux->totalBidVolume = table.notNegative(table.column("叫买总量"));
        aux->askAveragePrice = priceOf("加权平均叫卖价");
        aux->totalAskVolume = table.notNegative(table.column("叫卖总量"));
        addSnapshot(parts, snapshot, aux);
    }
}

// The sizes of the first orders at the best price, oldest first. Files have been delivered in which the other side's
// sizes stand before a row's own: of more than are announced, the last ones are the row's.
std::vector<int> queueOf(const SourceTable& table, std::size_t orders, std::size_t details, std::size_t first)
{
    constexpr __int64 kLongestQueue = 50;
    const std::vector<std::size_t> columns = table.columnsFrom(first);
    const __int64 announced = table.integer(details);
    const auto present = static_cast<__int64>(columns.size());
    if (announced < 0 || announced > kLongestQueue)
        table.fail(details, "not 0 to 50 sizes: " + inQuotes(table.text(details)));
    // Of a list with more sizes than its own, a cut leaves the wrong ones at the end.
    if (table.isOpen() && announced != present)
        table.failOpenLine();
    if (announced > present)
        table.fail(details, inQuotes(table.text(details)) + " announced, " + std::to_string(present) + " there");
    if (table.integer(orders) < announced)
        table.fail(orders, "fewer orders than sizes: " + inQuotes(table.text(orders)));
    std::vector<int> sizes;
    sizes.reserve(columns.size());
    for (const std::size_t column : columns)
        sizes.push_back(table.notNegative32(column));
    sizes.erase(sizes.begin(), sizes.end() - announced);
    return sizes;
}

// Two rows of one time, side 65 ("A") and 66 ("B"), make one record; a side without a row stays empty.
void readQueues(SourceTable& table, ImportParts& parts)
{
    table.allowLongRows();
    const Header header(table, "订单时间");
    const std::size_t side = table.column("买卖方向");
    const std::size_t priceColumn = table.column("成交价格");
    const std::size_t orders = table.column("订单数量");
    const std::size_t details = table.column("明细个数");
    const std::size_t sizes = table.column("订单明细");
    std::shared_ptr<quoter::LevelOrderData> record;
    bool hasAsk = false;
    bool hasBid = false;
    while (table.next()) {
        const __int64 timetag = header.timetag(table, parts);
        const bool isAsk = table.text(side) == "65" || table.text(side) == "A";
        if (!isAsk && table.text(side) != "66" && table.text(side) != "B")
            table.fail(side, "not 65 (A) or 66 (B): " + inQuotes(table.text(side)));
        if (!record || record->timetag != timetag || (isAsk ? hasAsk : hasBid)) {
            record = std::make_shared<quoter::LevelOrderData>();
            record->timetag = timetag;
            hasAsk = hasBid = false;
            parts.images.push_back({Stream::Queues, record, nullptr});
        }
        (isAsk ? hasAsk : hasBid) = true;
        (isAsk ? record->askPrice : record->bidPrice) = price(table.notNegative(priceColumn));
        (isAsk ? record->askQueue : record->bidQueue) = queueOf(table, orders, details, sizes);
    }
}

// No trade or cancel refers to an order that was not there, unless the order file was cut.
void noteUnknownOrders(const std::vector<SourceTick>& ticks, const SourceTable& orders, ImportParts& parts)
{
    std::unordered_set<__int64> known;
    int unknown = 0;
    std::string first;
    for (const SourceTick& tick : ticks) {
        if (tick.event.stream == Stream::Orders) {
            known.insert(tick.sequence);
            continue;
        }
        const auto& trade = static_cast<const quoter::TransactionData&>(*tick.event.record);
        for (const int seq : {trade.buySeq, trade.sellSeq}) {
            if (seq == 0 || known.count(seq) != 0)
                continue;
            if (unknown++ == 0)
                first = tick.table->file().string() + ":" + std::to_string(tick.line) + ": names order " +
                        std::to_string(seq);
        }
    }
    if (unknown > 0) {
        parts.notes.push_back(first + ", which does not stand before it in " + orders.file().filename().string() +
                              "; " + std::to_string(unknown) + " such in all");
    }
}

} // namespace

ImportParts importShenzhen(SourceFiles& files, int tradingDay)
{
    ImportParts parts;
    parts.market = "SZ";
    parts.tradingDay = tradingDay;
    std::vector<SourceTick> ticks;
    for (auto& [kind, table] : files) {
        switch (kind) {
        case SourceKind::ShenzhenOrders:
            parts.streams.push_back(Stream::Orders);
            readOrders(table, parts, ticks);
            break;
        case SourceKind::ShenzhenTrades:
            parts.streams.push_back(Stream::Trades);
            parts.tradeFile = table.file();
            readTrades(table, parts, ticks);
            break;
        case SourceKind::ShenzhenSnapshots:
            parts.streams.insert(parts.streams.end(), {Stream::Quotes, Stream::Snapshots, Stream::Aux});
            readSnapshots(table, parts);
            break;
        case SourceKind::ShenzhenQueues:
            parts.streams.push_back(Stream::Queues);
            readQueues(table, parts);
            break;
        default:
            break;
        }
    }
    if (parts.code.empty())
        throw ReadError({files.begin()->second.file()}, "no row names the instrument");
    // Orders and trades share one sequence, which is the order of events.
    sortTicks(ticks);
    if (files.count(SourceKind::ShenzhenOrders) > 0)
        noteUnknownOrders(ticks, files.at(SourceKind::ShenzhenOrders), parts);
    for (SourceTick& tick : ticks)
        parts.ticks.push_back(std::move(tick.event));
    return parts;
}

} // namespace recording
