#include "apps/tessi/summary.h"

#include "apps/tessi/session.h"
#include "apps/tessi/text.h"
#include "indexui/tessimodel/detail/markets.h"
#include "quoter/orderdata.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tessi {

namespace {

// What the day's snapshots say at its end, those of level 1 when there are no others.
struct LastSnapshot {
    double open = 0;
    double high = 0;
    double low = 0;
    double last = 0;
    __int64 volume = 0;                      // of the day until its close
    std::optional<__int64> afterHoursVolume; // trading after hours is counted anew

    template <class Snapshot>
    void take(const Snapshot& snapshot, bool isAfterHours)
    {
        open = snapshot.open;
        high = snapshot.high;
        low = snapshot.low;
        last = snapshot.lastPrice;
        if (isAfterHours)
            afterHoursVolume = snapshot.volume;
        else
            volume = snapshot.volume;
    }
};

struct Totals {
    std::map<recording::Stream, std::size_t> records;
    __int64 firstTime = 0;
    __int64 lastTime = 0;
    __int64 ordered = 0;
    std::size_t trades = 0;
    __int64 traded = 0;
    double amount = 0;
    std::size_t cancels = 0;
    __int64 cancelled = 0;
    std::optional<LastSnapshot> lastSnapshot;
};

void addTrade(Totals& totals, const quoter::TransactionData& trade)
{
    if (trade.transKind == quoter::kTransKindCancel) {
        ++totals.cancels;
        totals.cancelled += trade.volume;
        return;
    }
    ++totals.trades;
    totals.traded += trade.volume;
    totals.amount += trade.price * static_cast<double>(trade.volume);
}

// The tradeStatus of a contract is its open interest, of all others the phase of the day.
bool hasPhases(const standin::InstrumentDescription& instrument)
{
    return !TC::detail::isFutureMarket(instrument.market) && !TC::detail::isOptionMarket(instrument.market);
}

Totals totalsOf(const recording::RecordedDay& day)
{
    Totals totals;
    for (const recording::Stream stream : day.streams)
        totals.records[stream] = 0;
    const bool hasLevelTwo = totals.records.count(recording::Stream::Snapshots) > 0;
    const auto take = [&totals, hasPhases = hasPhases(day.instrument)](const auto& snapshot) {
        if (!totals.lastSnapshot)
            totals.lastSnapshot.emplace();
        totals.lastSnapshot->take(snapshot, hasPhases && snapshot.tradeStatus >= kAfterHoursStatus);
    };
    for (const recording::Event& event : day.events) {
        ++totals.records[event.stream];
        const __int64 time = recording::timetagOf(event);
        totals.firstTime = totals.firstTime == 0 ? time : totals.firstTime;
        totals.lastTime = time;
        if (const auto order = std::dynamic_pointer_cast<quoter::OrderData>(event.record))
            totals.ordered += order->volume;
        else if (const auto trade = std::dynamic_pointer_cast<quoter::TransactionData>(event.record))
            addTrade(totals, *trade);
        else if (const auto snapshot = std::dynamic_pointer_cast<quoter::QuoterDepthData>(event.record))
            take(*snapshot);
        else if (const auto quote = std::dynamic_pointer_cast<quoter::QuoterAllData>(event.record);
                 quote && !hasLevelTwo)
            take(*quote);
    }
    return totals;
}

struct Item {
    std::string name;
    std::string value;
    bool numeric = false;
};

std::vector<Item> itemsOf(const recording::RecordedDay& day)
{
    const Totals totals = totalsOf(day);
    const standin::InstrumentDescription& instrument = day.instrument;
    const auto price = [&](double value) { return priceText(value, instrument.priceTick); };

    std::vector<Item> items = {{"market", instrument.market},
                               {"code", instrument.code},
                               {"name", instrument.name},
                               {"trading day", std::to_string(day.tradingDay), true},
                               {"first record", day.events.empty() ? "" : clockText(totals.firstTime / 1000)},
                               {"last record", day.events.empty() ? "" : clockText(totals.lastTime / 1000)},
                               {"last close", price(instrument.lastClose), true}};
    if (const auto& last = totals.lastSnapshot) {
        items.push_back({"open", price(last->open), true});
        items.push_back({"high", price(last->high), true});
        items.push_back({"low", price(last->low), true});
        items.push_back({"last", price(last->last), true});
        items.push_back({"day volume", std::to_string(last->volume), true});
        if (last->afterHoursVolume)
            items.push_back({"volume after hours", std::to_string(*last->afterHoursVolume), true});
    }
    items.push_back({"ordered shares", std::to_string(totals.ordered), true});
    items.push_back({"traded shares", std::to_string(totals.traded), true});
    items.push_back({"traded amount", fmt::format("{:.2f}", totals.amount), true});
    items.push_back({"cancelled shares", std::to_string(totals.cancelled), true});
    for (const auto& [stream, count] : totals.records)
        items.push_back({fmt::format("records in {}", recording::streamName(stream)), std::to_string(count), true});
    items.push_back({"trades", std::to_string(totals.trades), true});
    items.push_back({"cancels", std::to_string(totals.cancels), true});
    return items;
}

void printObject(std::ostream& out, const std::vector<Item>& items)
{
    const char* separator = "{\n";
    for (const Item& item : items) {
        const std::string number = item.value.empty() ? "null" : item.value;
        out << separator << "  \"" << jsonKey(item.name)
            << "\": " << (item.numeric ? number : nlohmann::json(item.value).dump());
        separator = ",\n";
    }
    out << "\n}\n";
}

} // namespace

void printSummary(std::ostream& out, const recording::RecordedDay& day, Format format)
{
    const std::vector<Item> items = itemsOf(day);
    if (format == Format::Json)
        return printObject(out, items);
    Table table({{"item"}, {"value"}});
    for (const Item& item : items)
        table.add({item.name, item.value});
    table.print(out, format, false);
}

} // namespace tessi
