#include "tests/recording/builders.h"

#include "recording/columns.h"
#include "utils/timeutils.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>

namespace recording_test {

using recording::Event;
using recording::RecordedDay;
using recording::Stream;

TempFolder::TempFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "recording-test-XXXXXX").string();
    if (!mkdtemp(name.data()))
        throw std::runtime_error("no temporary folder: " + name);
    m_path = name;
}

TempFolder::~TempFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::filesystem::path TempFolder::write(const std::string& name, std::string_view bytes) const
{
    std::filesystem::create_directories((m_path / name).parent_path());
    std::ofstream out(m_path / name, std::ios::binary);
    out << bytes;
    if (!out.flush())
        throw std::runtime_error("cannot write " + name);
    return m_path / name;
}

std::string fileBytes(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + file.string());
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

std::string listing(const std::filesystem::path& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    std::string out;
    for (const std::string& name : names)
        out.append(out.empty() ? "" : " ").append(name);
    return out;
}

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    if (at == text.npos)
        throw std::runtime_error("not there: " + from);
    return text.replace(at, from.size(), to);
}

DayBuilder::DayBuilder()
{
    m_day.instrument.market = "SZ";
    m_day.instrument.code = "000001";
    m_day.tradingDay = 20240102;
}

DayBuilder& DayBuilder::market(const std::string& market)
{
    m_day.instrument.market = market;
    return *this;
}

DayBuilder& DayBuilder::related(const std::string& market, const std::string& code)
{
    m_day.related.emplace_back();
    m_day.related.back().market = market;
    m_day.related.back().code = code;
    return *this;
}

DayBuilder& DayBuilder::lists(Stream stream)
{
    for (const Stream other : m_day.streams) {
        if (other == stream)
            return *this;
    }
    m_day.streams.push_back(stream);
    std::sort(m_day.streams.begin(), m_day.streams.end());
    return *this;
}

DayBuilder& DayBuilder::order(__int64 ms, double price, __int64 volume, __int64 seq)
{
    auto order = std::make_shared<quoter::OrderData>();
    order->timetag = kMorning + ms;
    order->price = price;
    order->volume = volume;
    order->seq = seq;
    order->orderKind = 1;
    order->bsFlag = 1;
    return add(Stream::Orders, order);
}

DayBuilder& DayBuilder::trade(__int64 ms, double price, __int64 volume, int buySeq, int sellSeq)
{
    auto trade = std::make_shared<quoter::TransactionData>();
    trade->timetag = kMorning + ms;
    trade->price = price;
    trade->volume = volume;
    trade->buySeq = buySeq;
    trade->sellSeq = sellSeq;
    return add(Stream::Trades, trade);
}

DayBuilder& DayBuilder::cancel(__int64 ms, __int64 volume, int buySeq)
{
    trade(ms, 0, volume, buySeq, 0);
    static_cast<quoter::TransactionData&>(*m_day.events.back().record).transKind = quoter::kTransKindCancel;
    return *this;
}

DayBuilder& DayBuilder::snapshot(__int64 ms, double lastPrice, __int64 volume)
{
    auto snapshot = std::make_shared<quoter::QuoterDepthData>();
    snapshot->timetag = kMorning + ms;
    snapshot->lastPrice = lastPrice;
    snapshot->volume = volume;
    return add(Stream::Snapshots, snapshot);
}

DayBuilder& DayBuilder::aux(__int64 ms, __int64 totalBidVolume)
{
    auto aux = std::make_shared<quoter::QuoteAux>();
    aux->timetag = kMorning + ms;
    aux->totalBidVolume = totalBidVolume;
    lists(Stream::Aux);
    m_day.events.push_back({Stream::Aux, nullptr, aux});
    return *this;
}

DayBuilder& DayBuilder::add(Stream stream, std::shared_ptr<quoter::QuoterBase> record)
{
    lists(stream);
    m_day.events.push_back({stream, std::move(record), nullptr});
    return *this;
}

std::shared_ptr<const RecordedDay> DayBuilder::share() const
{
    return std::make_shared<const RecordedDay>(m_day);
}

namespace {

bool sameValue(double a, double b)
{
    if (std::isnan(a) && std::isnan(b))
        return std::signbit(a) == std::signbit(b);
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool sameValue(__int64 a, __int64 b)
{
    return a == b;
}

bool sameValue(int a, int b)
{
    return a == b;
}

template <class List>
bool sameValue(const List& a, const List& b)
{
    if (std::size(a) != std::size(b))
        return false;
    for (std::size_t i = 0; i < std::size(a); ++i) {
        if (!sameValue(a[i], b[i]))
            return false;
    }
    return true;
}

template <class Record>
bool sameRecord(const Record& a, const Record& b)
{
    return std::apply([&](const auto&... column) { return (sameValue(a.*column.member, b.*column.member) && ...); },
                      recording::Columns<Record>::kAll);
}

bool sameEvent(const Event& a, const Event& b)
{
    if (a.stream != b.stream)
        return false;
    if (a.stream == Stream::Aux)
        return sameRecord(*a.aux, *b.aux);
    return recording::withRecordType(a.stream, [&]<class Record>(std::type_identity<Record>) {
        if constexpr (!std::is_same_v<Record, quoter::QuoteAux>)
            return sameRecord(dynamic_cast<const Record&>(*a.record), dynamic_cast<const Record&>(*b.record));
        return false;
    });
}

std::string number(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.10g", value);
    return text;
}

std::string listText(const std::vector<int>& values)
{
    std::string out = "[";
    for (const int value : values)
        out.append(out.size() > 1 ? "," : "").append(std::to_string(value));
    return out + "]";
}

std::string sideText(int bsFlag)
{
    switch (bsFlag) {
    case 1:
        return "buy";
    case 2:
        return "sell";
    case 3:
        return "cancel-buy";
    case 4:
        return "cancel-sell";
    default:
        return "side of no meaning";
    }
}

template <class Snapshot>
std::string snapshotText(const char* name, const Snapshot& s)
{
    return std::string(name) + " " + std::to_string(s.tradeStatus) + " last " + number(s.lastPrice) + " volume " +
           std::to_string(s.volume) + " bid " + number(s.bidPrice[0]) + " x " + std::to_string(s.bidVolume[0]) +
           " ask " + number(s.askPrice[0]) + " x " + std::to_string(s.askVolume[0]);
}

} // namespace

bool sameDay(const RecordedDay& a, const RecordedDay& b)
{
    if (!(a.instrument == b.instrument) || a.tradingDay != b.tradingDay || a.streams != b.streams ||
        a.related != b.related || a.events.size() != b.events.size())
        return false;
    for (std::size_t i = 0; i < a.events.size(); ++i) {
        if (!sameEvent(a.events[i], b.events[i]))
            return false;
    }
    return true;
}

std::string clockText(__int64 timetag)
{
    const __int64 clock = utils::millisecondsToTime(timetag) % 1'000'000;
    char text[40];
    std::snprintf(text, sizeof text, "%02lld:%02lld:%02lld.%03lld", clock / 10000, clock / 100 % 100, clock % 100,
                  timetag % 1000);
    return text;
}

std::string eventText(const Event& event)
{
    if (event.aux) {
        return clockText(event.aux->timetag) + " aux bid " + number(event.aux->bidAveragePrice) + " x " +
               std::to_string(event.aux->totalBidVolume) + " ask " + number(event.aux->askAveragePrice) + " x " +
               std::to_string(event.aux->totalAskVolume);
    }
    const std::string time = clockText(event.record->timetag) + " ";
    const quoter::QuoterBase* record = event.record.get();
    if (const auto* o = dynamic_cast<const quoter::OrderData*>(record)) {
        return time + "order " + std::to_string(o->seq) + " " + sideText(o->bsFlag) + " kind " +
               std::to_string(o->orderKind) + " " + number(o->price) + " x " + std::to_string(o->volume);
    }
    if (const auto* t = dynamic_cast<const quoter::TransactionData*>(record)) {
        const std::string orders = " buy " + std::to_string(t->buySeq) + " sell " + std::to_string(t->sellSeq);
        if (t->transKind == 3 && t->price == 0)
            return time + "cancel" + orders + " x " + std::to_string(t->volume);
        return time + "trade" + orders + " flag " + std::to_string(t->tradeFlag) + " " + number(t->price) + " x " +
               std::to_string(t->volume);
    }
    if (const auto* s = dynamic_cast<const quoter::QuoterDepthData*>(record))
        return time + snapshotText("snapshot", *s);
    if (const auto* q = dynamic_cast<const quoter::QuoterAllData*>(record))
        return time + snapshotText("quote", *q);
    if (const auto* q = dynamic_cast<const quoter::LevelOrderData*>(record)) {
        return time + "queue bid " + number(q->bidPrice) + " " + listText(q->bidQueue) + " ask " + number(q->askPrice) +
               " " + listText(q->askQueue);
    }
    return time + recording::streamName(event.stream);
}

std::string eventsText(const RecordedDay& day)
{
    std::string out;
    for (const Event& event : day.events)
        out += eventText(event) + "\n";
    return out;
}

std::string eventsText(const RecordedDay& day, Stream stream)
{
    std::string out;
    for (const Event& event : day.events) {
        if (event.stream == stream)
            out += eventText(event) + "\n";
    }
    return out;
}

} // namespace recording_test
