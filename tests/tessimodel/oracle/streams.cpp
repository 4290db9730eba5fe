#include "tests/tessimodel/oracle/streams.h"

#include "tests/tessimodel/oracle/commonsteps.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tests::oracle {

const std::vector<Instrument>& instruments()
{
    static const std::vector<Instrument> all = {
        {"SZ", "000001", 0.01, 10.0, {}},     {"SH", "688001", 0.01, 10.0, {277}},
        {"SZ", "300001", 0.01, 9.5, {10006}}, {"SZ", "128001", 0.001, 10.0, {100017}},
        {"HK", "128001", 0.01, 10.0, {277}}, // ten shares a hand, as the code is a bond's in "SZ"
        {"SH", "113001", 0.01, 10.0, {126}},  {"BJ", "430001", 0.01, 10.0, {126}},
        {"SSE", "600001", 0.05, 10.0, {}},    {"SZSE", "159001", 0.001, 10.0, {100016, 277}},
        {"HK", "00700", 0.2, 10.0, {}},       {"HK", "00701", 0.0, 10.0, {}}, // a tick that gives no key
    };
    return all;
}

int instrumentIndex(const std::string& market, const std::string& code)
{
    for (std::size_t i = 0; i < instruments().size(); ++i) {
        if (instruments()[i].market == market && instruments()[i].code == code)
            return static_cast<int>(i);
    }
    return -1;
}

std::string nameOf(int instrument)
{
    if (instrument < 0)
        return "an unknown instrument";
    const Instrument& found = instruments().at(static_cast<std::size_t>(instrument));
    return found.market + ':' + found.code;
}

namespace {

std::string levelsText(const TenLevels& levels)
{
    std::string out;
    for (std::size_t i = 0; i < levels.prices.size(); ++i) {
        if (levels.prices[i] != 0 || levels.volumes[i] != 0)
            out += fmt::format(" {}:{}x{}", i, levels.prices[i], levels.volumes[i]);
    }
    return out.empty() ? " none" : out;
}

std::string levelsText(const AllLevels& levels)
{
    return fmt::format(" prices {} volumes {} numbers {}", fmt::join(levels.prices, "|"),
                       fmt::join(levels.volumes, "|"), fmt::join(levels.numbers, "|"));
}

} // namespace

std::string recordsText(const std::vector<RecordPtr>& records)
{
    std::string out;
    for (const RecordPtr& record : records)
        out += "\n        " + text(record.get());
    return out;
}

std::string batchText(const char* what, int kind, const BatchPtr& batch, bool works)
{
    std::string out = fmt::format("{} of kind {}", what, kind);
    if (!batch)
        return out + ": null batch";
    return out +
           fmt::format(" for {}, {} records{}", nameOf(batch->instrument), batch->records.size(),
                       works ? "" : ", left queued") +
           recordsText(batch->records);
}

std::string text(const Record* record)
{
    if (!record)
        return "null record";
    const Record& r = *record;
    switch (r.type) {
    case Record::Type::Order:
        return fmt::format("#{} order seq {} bsFlag {} kind {} price {} volume {} time {}", r.id, r.seq, r.bsFlag,
                           r.orderKind, r.price, r.volume, r.timetag);
    case Record::Type::Trade:
        return fmt::format("#{} {} buy {} sell {} price {} volume {} transKind {} flag {} time {}", r.id,
                           r.transKind == 3 ? "cancel" : "trade", r.buySeq, r.sellSeq, r.price, r.volume, r.transKind,
                           r.tradeFlag, r.timetag);
    case Record::Type::Snapshot:
        return fmt::format("#{} snapshot time {} status {} day volume {} last {} alt {} bids{} asks{}", r.id, r.timetag,
                           r.tradeStatus, r.volume, r.price, r.lastPriceAlt, levelsText(r.bids), levelsText(r.asks));
    case Record::Type::Queue:
    case Record::Type::Thousand:
        return fmt::format("#{} {} record time {} bids{} asks{}", r.id,
                           r.type == Record::Type::Queue ? "queue" : "thousand-level", r.timetag, levelsText(r.allBids),
                           levelsText(r.allAsks));
    case Record::Type::LevelOne:
        break;
    }
    return fmt::format("#{} level-1 record time {}", r.id, r.timetag);
}

std::string text(const Step& step)
{
    using enum Step::Action;
    switch (step.action) {
    case Orders:
        return batchText("orders", step.kind, step.batch, step.works);
    case Trades:
        return batchText("trades", step.kind, step.batch, step.works);
    case Snapshots:
        return batchText("snapshots", step.kind, step.batch, step.works);
    case Read:
        return fmt::format("checkUpdate{}", step.flag ? ", extremes started anew" : "");
    case ReadSide:
        return step.flag ? "getBids" : "getAsks";
    case Queue:
        return fmt::format("getQueue({}, {})", step.flag ? "bid" : "ask", step.price);
    case TradeDataChanged:
        return "trading data changed";
    default:
        return commonText(step);
    }
}

std::ostream& operator<<(std::ostream& out, const Stream& stream)
{
    out << fmt::format("stream {} on {}, m_suppressTickFlags {}, {} steps\n", stream.seed, nameOf(stream.instrument),
                       stream.suppressTickFlags, stream.steps.size());
    for (std::size_t i = 0; i < stream.steps.size(); ++i)
        out << fmt::format("  {:3} {}\n", i + 1, text(stream.steps[i]));
    return out;
}

} // namespace tests::oracle
