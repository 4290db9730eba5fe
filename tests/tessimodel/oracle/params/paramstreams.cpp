#include "tests/tessimodel/oracle/params/paramstreams.h"

#include "quoter/brovanquoteralldata.h"
#include "quoter/quoteaux.h"
#include "quoter/quoterdepthdata.h"

#include <fmt/format.h>

namespace tests::oracle::params {

namespace {

template <class Record>
std::string figuresText(const char* what, const Record& r)
{
    return fmt::format("{} time {} status {} volume {} amount {} last {} alt {} open {} high {} low {} close {} "
                       "last settlement {} settlement {} iopv {} bid {} ask {}",
                       what, r.timetag, r.tradeStatus, r.volume, r.amount, r.lastPrice, r.lastPriceAlt, r.open, r.high,
                       r.low, r.lastClose, r.lastSettlementPrice, r.settlementPrice, r.iopv, r.bidPrice[0],
                       r.askPrice[0]);
}

std::string text(const RecordPtr& record)
{
    if (!record)
        return "null record";
    if (const auto own = std::dynamic_pointer_cast<zolv::BrovanQuoterAllData>(record))
        return figuresText("broker's level 1", *own) +
               fmt::format(" limits {} {}", own->upStopPrice, own->downStopPrice);
    if (const auto all = std::dynamic_pointer_cast<quoter::QuoterAllData>(record))
        return figuresText("level 1", *all);
    if (const auto depth = std::dynamic_pointer_cast<quoter::QuoterDepthData>(record))
        return figuresText("level 2", *depth);
    return fmt::format("no snapshot, time {}", record->timetag);
}

std::string text(const AuxPtr& aux)
{
    if (!aux)
        return "null";
    return fmt::format("time {} bids {} at {} asks {} at {}", aux->timetag, aux->totalBidVolume, aux->bidAveragePrice,
                       aux->totalAskVolume, aux->askAveragePrice);
}

std::string recordsText(const std::vector<RecordPtr>& records)
{
    std::string out = fmt::format("{} records", records.size());
    for (const RecordPtr& record : records)
        out += "\n        " + text(record);
    return out;
}

// The steps that hand in something.
std::string inputText(const ParamStep& step)
{
    using enum ParamStep::Action;
    switch (step.action) {
    case Quotes:
        return fmt::format("quoterCallback({}) of kind {}, {}", step.ignored, step.kind, recordsText(step.records));
    case Aux:
        return "quoteAuxCallback: " + text(step.aux);
    case Dish:
        return fmt::format("setDishData({}, {})", step.inner, step.outer);
    case Average:
        return fmt::format("setAveragePrice({})", step.value);
    case AverageOfRecord:
        return "setAveragePrice of " + recordsText(step.records);
    case LastClose:
        return fmt::format("setLastClose({})", step.value);
    case PriceTick:
        return fmt::format("m_priceTick = {}", step.value);
    case Connect:
        return "connectTickData of " + recordsText(step.records);
    case WriteText:
        return fmt::format("setParam({}, \"{}\", \"{}\")", step.number, step.text, step.key);
    case WriteValue:
        return fmt::format("setParam({}, {:#x}, {}, {})", step.number, step.flag, step.value, step.base);
    case WriteRecord:
        return "setParam of " + recordsText(step.records);
    case LastPrice:
        return "getLastPrice of " + recordsText(step.records);
    default:
        return fmt::format("getPriceColor({}, {})", step.value, step.base);
    }
}

} // namespace

std::string text(const ParamStep& step)
{
    using enum ParamStep::Action;
    switch (step.action) {
    case Follow:
        return "setStock: " + paramNameOf(step.number);
    case Level2:
        return fmt::format("setLevel2({})", step.on);
    case Clear:
        return "clear";
    case InitParams:
        return "initParams";
    case Switch:
        return fmt::format("{}: {}", answerName(static_cast<Answer>(step.number)), step.on ? "yes" : "no");
    case Renew:
        return "new facts of " + paramNameOf(step.number);
    case DateSource:
        return step.on ? fmt::format("the date on display is {} days from the mainland's last trading day", step.number)
                       : "no date on display";
    case CopyConstruct:
    case CopyAssign:
    case Select:
    case Construct:
        return copyStepText(step);
    case Receipt:
        return fmt::format("m_gdrStock closes at {}, rate {}, {} of it for {}", step.receipt.close, step.receipt.rate,
                           step.receipt.shares, step.receipt.perShares);
    default:
        return inputText(step);
    }
}

} // namespace tests::oracle::params
