#include "recording/importparts.h"

#include "quoter/quoteralldata.h"
#include "quoter/transactiondata.h"
#include "recording/errors.h"
#include "utils/timeutils.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace recording {

namespace {

constexpr int kStockType = 100003;

// Shares of the ChiNext board have moved by 20% since its reform, those of the STAR market always; all others
// by 10%. Shares under special treatment and new listings have limits of their own, which the files do not tell.
int limitPercent(const std::string& market, const std::string& code, int tradingDay)
{
    constexpr int kChiNextReform = 20200824;
    const bool isStar = market == "SH" && code.starts_with("688");
    const bool isChiNext = market == "SZ" && (code.starts_with("300") || code.starts_with("301"));
    return isStar || (isChiNext && tradingDay >= kChiNextReform) ? 20 : 10;
}

standin::InstrumentDescription describe(const ImportParts& parts)
{
    constexpr int kTicksPerUnit = 100;
    constexpr int kFineTicksPerUnit = 1000;
    standin::InstrumentDescription stock;
    stock.market = parts.market;
    stock.code = parts.code;
    stock.name = parts.code;
    stock.lastClose = parts.lastClose;
    stock.types = {kStockType};

    const int ticksPerUnit = parts.hasFineTick ? kFineTicksPerUnit : kTicksPerUnit;
    stock.priceTick = 1.0 / ticksPerUnit;
    if (!(parts.lastClose > 0))
        return stock; // without a last close no limits are known
    // Half a tick rounds up, in whole numbers: 1.1 times a price is no double.
    const __int64 closeTicks = std::llround(parts.lastClose * ticksPerUnit);
    const int percent = limitPercent(parts.market, parts.code, parts.tradingDay);
    const auto limit = [&](int share) {
        const __int64 ticks = (closeTicks * share + 50) / 100;
        return static_cast<double>(ticks) / ticksPerUnit;
    };
    stock.upStopPrice = limit(100 + percent);
    stock.downStopPrice = limit(100 - percent);
    return stock;
}

std::shared_ptr<quoter::QuoterAllData> levelOneOf(const quoter::QuoterDepthData& snapshot)
{
    auto quote = std::make_shared<quoter::QuoterAllData>();
    quote->timetag = snapshot.timetag;
    quote->lastPrice = snapshot.lastPrice;
    quote->open = snapshot.open;
    quote->high = snapshot.high;
    quote->low = snapshot.low;
    quote->lastClose = snapshot.lastClose;
    quote->amount = snapshot.amount;
    quote->volume = snapshot.volume;
    quote->rawVolume = snapshot.volume;
    quote->tradeStatus = snapshot.tradeStatus;
    quote->iopv = snapshot.iopv;
    std::copy_n(snapshot.askPrice, 5, quote->askPrice);
    std::copy_n(snapshot.bidPrice, 5, quote->bidPrice);
    std::copy_n(snapshot.askVolume, 5, quote->askVolume);
    std::copy_n(snapshot.bidVolume, 5, quote->bidVolume);
    return quote;
}

// Both come from the exchange and agree to the share on a plain day: a difference may show that the trade file was
// cut, or that the day had trades which this file does not hold, as those after hours.
void noteTradedVolume(ImportParts& parts)
{
    const auto isSnapshot = [](const Event& image) { return image.stream == Stream::Snapshots; };
    const auto last = std::find_if(parts.images.rbegin(), parts.images.rend(), isSnapshot);
    if (parts.tradeFile.empty() || last == parts.images.rend())
        return;
    __int64 traded = 0;
    for (const Event& tick : parts.ticks) {
        if (tick.stream != Stream::Trades)
            continue;
        const auto& trade = static_cast<const quoter::TransactionData&>(*tick.record);
        if (trade.transKind != quoter::kTransKindCancel)
            traded += trade.volume;
    }
    const __int64 shown = static_cast<const quoter::QuoterDepthData&>(*last->record).volume;
    if (traded != shown) {
        parts.notes.push_back(parts.tradeFile.string() + ": the trades add up to " + std::to_string(traded) +
                              " shares where the last snapshot has a day volume of " + std::to_string(shown));
    }
}

} // namespace

void sortTicks(std::vector<SourceTick>& ticks)
{
    std::stable_sort(ticks.begin(), ticks.end(),
                     [](const SourceTick& a, const SourceTick& b) { return a.sequence < b.sequence; });
    const auto twice = std::adjacent_find(
        ticks.begin(), ticks.end(), [](const SourceTick& a, const SourceTick& b) { return a.sequence == b.sequence; });
    if (twice != ticks.end()) {
        const SourceTick& first = *twice;
        const SourceTick& second = *(twice + 1);
        throw ReadError({second.table->file(), second.line},
                        "sequence " + std::to_string(second.sequence) + " stands in " +
                            first.table->file().filename().string() + ":" + std::to_string(first.line) + " too");
    }
}

void addSnapshot(ImportParts& parts, const std::shared_ptr<quoter::QuoterDepthData>& snapshot,
                 const std::shared_ptr<quoter::QuoteAux>& aux)
{
    parts.images.push_back({Stream::Quotes, levelOneOf(*snapshot), nullptr});
    parts.images.push_back({Stream::Snapshots, snapshot, nullptr});
    parts.images.push_back({Stream::Aux, nullptr, aux});
    if (snapshot->lastClose > 0)
        parts.lastClose = snapshot->lastClose;
}

RecordedDay assemble(ImportParts&& parts, std::vector<std::string>* notes)
{
    std::vector<Event>& ticks = parts.ticks;
    std::vector<Event>& images = parts.images;
    std::stable_sort(images.begin(), images.end(),
                     [](const Event& a, const Event& b) { return timetagOf(a) < timetagOf(b); });
    noteTradedVolume(parts);
    if (notes)
        *notes = parts.notes;

    // The earliest stamp from each tick on: an image waits for the last tick that is not later than itself.
    std::vector<__int64> earliest(ticks.size());
    __int64 soFar = std::numeric_limits<__int64>::max();
    for (std::size_t i = ticks.size(); i-- > 0;)
        earliest[i] = soFar = std::min(soFar, timetagOf(ticks[i]));

    RecordedDay day;
    day.instrument = describe(parts);
    day.tradingDay = parts.tradingDay;
    std::sort(parts.streams.begin(), parts.streams.end());
    day.streams = parts.streams;
    day.events.reserve(ticks.size() + images.size());
    std::size_t tick = 0;
    for (Event& image : images) {
        for (; tick < ticks.size() && earliest[tick] <= timetagOf(image); ++tick)
            day.events.push_back(std::move(ticks[tick]));
        day.events.push_back(std::move(image));
    }
    for (; tick < ticks.size(); ++tick)
        day.events.push_back(std::move(ticks[tick]));
    return day;
}

__int64 stampFrom(const SourceTable& table, std::size_t column, __int64 clock, int tradingDay)
{
    const auto part = [clock](int divisor, int modulus) { return static_cast<int>(clock / divisor % modulus); };
    const int hour = part(10'000'000, 100);
    const int minute = part(100'000, 100);
    const int second = part(1000, 100);
    if (clock < 0 || clock > 235'959'999 || minute > 59 || second > 59)
        table.fail(column, "not a time of day: " + inQuotes(table.text(column)));
    return utils::timeToMilliseconds(tradingDay / 10000, tradingDay / 100 % 100, tradingDay % 100, hour, minute,
                                     second) +
           part(1, 1000);
}

int clockOf(__int64 timetag)
{
    return static_cast<int>(utils::millisecondsToTime(timetag) % 1'000'000);
}

} // namespace recording
