#include "recording/importparts.h"

#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "recording/errors.h"

#include <array>
#include <cmath>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace recording {

namespace {

// Prices are given as 1801.00999999999999: the exchange's finest step is a thousandth, and the nearest double of
// that many decimals is what was meant. A stock's own step of 0.01 is among them.
constexpr double kFinestStep = 1000.0;

double cleaned(double value)
{
    constexpr double kExact = 9007199254740992.0; // 2^53: nothing is left to clean above
    return std::abs(value) * kFinestStep < kExact ? std::round(value * kFinestStep) / kFinestStep : value;
}

double price(const SourceTable& table, std::size_t column)
{
    constexpr double kNoise = 1e-6;
    const double raw = table.number(column);
    const double price = cleaned(raw);
    if (std::abs(price - raw) > kNoise)
        table.fail(column, "finer than a thousandth: " + inQuotes(table.text(column)));
    return price;
}

double positivePrice(const SourceTable& table, std::size_t column)
{
    const double value = price(table, column);
    if (!(value > 0))
        table.fail(column, "not above 0: " + inQuotes(table.text(column)));
    return value;
}

double notNegativePrice(const SourceTable& table, std::size_t column)
{
    table.notNegativeNumber(column);
    return price(table, column);
}

bool isFine(double price)
{
    return std::llround(price * kFinestStep) % 10 != 0;
}

__int64 timetag(const SourceTable& table, std::size_t column, int tradingDay)
{
    // "09:15:00.020"; the milliseconds may be left out.
    const std::string_view text = table.text(column);
    constexpr std::string_view kShape = "00:00:00.000";
    constexpr std::size_t kWithoutMs = 8;
    bool fits = text.size() == kShape.size() || text.size() == kWithoutMs;
    __int64 clock = 0;
    for (std::size_t i = 0; fits && i < kShape.size(); ++i) {
        const char c = i < text.size() ? text[i] : kShape[i];
        if (kShape[i] != '0')
            fits = c == kShape[i];
        else if (c >= '0' && c <= '9')
            clock = clock * 10 + (c - '0');
        else
            fits = false;
    }
    if (!fits)
        table.fail(column, "not a time of day: " + inQuotes(text));
    return stampFrom(table, column, clock, tradingDay);
}

void checkInstrument(const SourceTable& table, std::size_t column, ImportParts& parts)
{
    if (table.isBlank(column))
        table.fail(column, "empty field");
    if (parts.code.empty())
        parts.code = table.text(column);
    if (parts.code != table.text(column))
        table.fail(column, "another instrument than " + parts.code + ": " + inQuotes(table.text(column)));
}

// One of the letters, which stand for 0, 1, 2, ...
int letterOf(const SourceTable& table, std::size_t column, std::string_view letters)
{
    const std::string_view text = table.text(column);
    const std::size_t index = text.size() == 1 ? letters.find(text) : letters.npos;
    if (index == letters.npos)
        table.fail(column, "not one of " + std::string(letters) + ": " + inQuotes(text));
    return static_cast<int>(index);
}

void readOrders(SourceTable& table, ImportParts& parts, std::vector<SourceTick>& ticks)
{
    const std::size_t code = table.column("SecurityID");
    const std::size_t clock = table.column("OrderTime");
    const std::size_t type = table.column("OrderType");
    const std::size_t seq = table.column("OrderNO");
    const std::size_t priceColumn = table.column("OrderPrice");
    const std::size_t balance = table.column("Balance");
    const std::size_t side = table.column("OrderBSFlag");
    const std::size_t index = table.column("BizIndex");
    while (table.next()) {
        checkInstrument(table, code, parts);
        auto order = std::make_shared<quoter::OrderData>();
        const bool deletes = letterOf(table, type, "AD") == 1;
        order->timetag = timetag(table, clock, parts.tradingDay);
        order->price = deletes ? notNegativePrice(table, priceColumn) : positivePrice(table, priceColumn);
        order->volume = table.positive(balance);
        order->seq = table.positive32(seq); // trades refer to it in 32 bits
        order->bsFlag = letterOf(table, side, "BS") + (deletes ? quoter::kSideCancelBuy : quoter::kSideBuy);
        // A delete has no kind of its own: 0 is one that the books refuse, for they take it from the trade stream.
        order->orderKind = deletes ? 0 : 1;
        parts.hasFineTick |= isFine(order->price);
        ticks.push_back({table.integer(index), {Stream::Orders, order, nullptr}, &table, table.line()});
    }
}

void readTrades(SourceTable& table, ImportParts& parts, std::vector<SourceTick>& ticks)
{
    const std::size_t code = table.column("SecurityID");
    const std::size_t clock = table.column("TradTime");
    const std::size_t priceColumn = table.column("TradPrice");
    const std::size_t volume = table.column("TradVolume");
    const std::size_t buy = table.column("TradeBuyNo");
    const std::size_t sell = table.column("TradeSellNo");
    const std::size_t aggressor = table.column("TradeBSFlag");
    const std::size_t index = table.column("BizIndex");
    while (table.next()) {
        checkInstrument(table, code, parts);
        auto trade = std::make_shared<quoter::TransactionData>();
        trade->timetag = timetag(table, clock, parts.tradingDay);
        trade->price = positivePrice(table, priceColumn);
        trade->volume = table.positive(volume);
        trade->buySeq = table.positive32(buy);
        trade->sellSeq = table.positive32(sell);
        trade->tradeFlag = letterOf(table, aggressor, "NBS");
        ticks.push_back({table.integer(index), {Stream::Trades, trade, nullptr}, &table, table.line()});
    }
}

int phaseOf(const SourceTable& table, std::size_t column, __int64 stamp)
{
    const std::string_view status = table.text(column);
    if (status == "TRADE") {
        // The feed calls it trade from the end of the opening auction on, and through lunch.
        const int clock = clockOf(stamp);
        return clock < 93000 || (clock >= 113000 && clock < 130000) ? kBreak : kContinuous;
    }
    if (status == "START")
        return kBeforeOpen;
    if (status == "OCALL")
        return kOpeningAuction;
    if (status == "CCALL")
        return kClosingAuction;
    if (status == "CLOSE" || status == "ENDTR")
        return kClosed;
    if (status == "SUSP")
        return kHalted;
    if (status == "VOLA")
        return kVolatilityBreak;
    if (status == "ICALL")
        return kIntradayAuction;
    table.fail(column, "not a trading phase: " + inQuotes(status));
}

struct LevelColumns {
    LevelColumns(const SourceTable& table, const std::string& side)
    {
        for (std::size_t i = 0; i < prices.size(); ++i) {
            prices[i] = table.column(side + "Price" + std::to_string(i + 1));
            volumes[i] = table.column(side + "Volume" + std::to_string(i + 1));
        }
    }

    // A level that does not exist has blank fields.
    void read(const SourceTable& table, double (&levelPrices)[10], __int64 (&levelVolumes)[10]) const
    {
        for (std::size_t i = 0; i < prices.size(); ++i) {
            levelPrices[i] = table.isBlank(prices[i]) ? 0 : notNegativePrice(table, prices[i]);
            levelVolumes[i] = table.isBlank(volumes[i]) ? 0 : table.notNegative(volumes[i]);
        }
    }

    std::array<std::size_t, 10> prices{};
    std::array<std::size_t, 10> volumes{};
};

void readSnapshots(SourceTable& table, ImportParts& parts)
{
    const std::size_t code = table.column("SecurityID");
    const std::size_t clock = table.column("UpdateTime");
    const std::size_t status = table.column("InstruStatus");
    const LevelColumns asks(table, "Ask");
    const LevelColumns bids(table, "Bid");
    const auto cleanedOf = [&table](const char* name) { return cleaned(table.notNegativeNumber(table.column(name))); };
    while (table.next()) {
        checkInstrument(table, code, parts);
        auto snapshot = std::make_shared<quoter::QuoterDepthData>();
        snapshot->timetag = timetag(table, clock, parts.tradingDay);
        snapshot->lastPrice = notNegativePrice(table, table.column("LastPrice"));
        snapshot->open = notNegativePrice(table, table.column("OpenPrice"));
        snapshot->high = notNegativePrice(table, table.column("HighPrice"));
        snapshot->low = notNegativePrice(table, table.column("LowPrice"));
        snapshot->lastClose = notNegativePrice(table, table.column("PreCloPrice"));
        snapshot->iopv = cleanedOf("IOPV");
        snapshot->volume = table.notNegative(table.column("TradVolume"));
        snapshot->amount = cleanedOf("Turnover");
        snapshot->tradeStatus = phaseOf(table, status, snapshot->timetag);
        asks.read(table, snapshot->askPrice, snapshot->askVolume);
        bids.read(table, snapshot->bidPrice, snapshot->bidVolume);

        auto aux = std::make_shared<quoter::QuoteAux>();
        aux->timetag = snapshot->timetag;
        aux->bidAveragePrice = cleanedOf("WAvgBidPri");
        aux->totalBidVolume = table.notNegative(table.column("TotalBidVol"));
        aux->askAveragePrice = cleanedOf("WAvgAskPri");
        aux->totalAskVolume = table.notNegative(table.column("TotalAskVol"));
        addSnapshot(parts, snapshot, aux);
    }
}

// The book's copy of a delete: it names the order and carries no price, as Shenzhen's cancels do.
std::shared_ptr<quoter::TransactionData> cancelOf(const quoter::OrderData& deleted)
{
    auto cancel = std::make_shared<quoter::TransactionData>();
    cancel->timetag = deleted.timetag;
    cancel->volume = deleted.volume;
    (deleted.bsFlag == quoter::kSideCancelBuy ? cancel->buySeq : cancel->sellSeq) = static_cast<int>(deleted.seq);
    cancel->transKind = quoter::kTransKindCancel;
    return cancel;
}

// Walks the ticks in the order of events. The quantity of an added order is what immediate matching left of it, and
// those trades come first: what the order traded until it appears belongs to its size.
std::vector<Event> restore(std::vector<SourceTick>&& ticks, ImportParts& parts)
{
    int unknown = 0;
    std::string first;
    std::unordered_map<__int64, __int64> traded; // by seq
    std::unordered_set<__int64> added;
    std::vector<Event> events;
    events.reserve(ticks.size());
    for (SourceTick& tick : ticks) {
        if (tick.event.stream == Stream::Trades) {
            const auto& trade = static_cast<const quoter::TransactionData&>(*tick.event.record);
            traded[trade.buySeq] += trade.volume;
            traded[trade.sellSeq] += trade.volume;
            events.push_back(std::move(tick.event));
            continue;
        }
        auto& order = static_cast<quoter::OrderData&>(*tick.event.record);
        events.push_back(tick.event);
        if (order.bsFlag > quoter::kSideSell) {
            if (added.count(order.seq) == 0 && unknown++ == 0)
                first = tick.table->file().string() + ":" + std::to_string(tick.line) + ": deletes order " +
                        std::to_string(order.seq);
            events.push_back({Stream::Trades, cancelOf(order), nullptr});
            continue;
        }
        added.insert(order.seq);
        if (const auto before = traded.find(order.seq); before != traded.end())
            order.volume += before->second;
    }
    if (unknown > 0)
        parts.notes.push_back(first + ", which was not added before; " + std::to_string(unknown) + " such in all");
    return events;
}

} // namespace

ImportParts importShanghai(SourceFiles& files, int tradingDay)
{
    ImportParts parts;
    parts.market = "SH";
    parts.tradingDay = tradingDay;
    const auto orders = files.find(SourceKind::ShanghaiOrders);
    const auto trades = files.find(SourceKind::ShanghaiTrades);
    const auto snapshots = files.find(SourceKind::ShanghaiSnapshots);

    std::vector<SourceTick> ticks;
    if (orders != files.end()) {
        if (trades == files.end()) {
            throw ReadError({orders->second.file()},
                            "the trades are missing, without which the full size of an order is not known");
        }
        parts.streams.push_back(Stream::Orders);
        readOrders(orders->second, parts, ticks);
    }
    if (trades != files.end()) {
        parts.streams.push_back(Stream::Trades);
        parts.tradeFile = trades->second.file();
        readTrades(trades->second, parts, ticks);
    }
    if (snapshots != files.end()) {
        parts.streams.insert(parts.streams.end(), {Stream::Quotes, Stream::Snapshots, Stream::Aux});
        readSnapshots(snapshots->second, parts);
    }
    if (parts.code.empty())
        throw ReadError({files.begin()->second.file()}, "no row names the instrument");
    sortTicks(ticks);
    parts.ticks = restore(std::move(ticks), parts);
    return parts;
}

} // namespace recording
