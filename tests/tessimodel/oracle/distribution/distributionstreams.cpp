#include "tests/tessimodel/oracle/distribution/distributionstreams.h"

#include "tests/tessimodel/oracle/snapshots/snapshotinstruments.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tests::oracle::distribution {

namespace {

std::string ticksText(const std::vector<Tick>& ticks)
{
    std::string out;
    for (const Tick& tick : ticks)
        out += fmt::format(" [{} total {} volume {} {}]", tick.price, tick.totalVolume, tick.volume,
                           tick.isBuy ? "buy" : "sell");
    return out;
}

std::string togetherText(const DistributionStep& step)
{
    std::string out =
        fmt::format("{}: of kind {}, {}", step.on ? "all started before one works" : "one after the other", step.kind,
                    snapshots::textOf(step.records));
    for (const Records& piece : step.pieces)
        out += "\n      of kind 3, " + snapshots::textOf(piece);
    for (const Records& push : step.pushes)
        out += "\n      of kind 1, " + snapshots::textOf(push);
    for (const int instrument : step.instruments)
        out += "\n      setStock: " + snapshots::snapshotNameOf(instrument);
    return out;
}

// The steps that hand in something.
std::string inputText(const DistributionStep& step)
{
    using enum DistributionStep::Action;
    if (step.action == Batch)
        return fmt::format("quoterCallBack({}) of kind {}, {}", step.ignored, step.kind,
                           snapshots::textOf(step.records));
    if (step.action == Together)
        return togetherText(step);
    if (step.action == Pending)
        return "m_pending =" + ticksText(step.ticks);
    if (step.action == OneTick)
        return "processData of" + ticksText(step.ticks);
    if (step.action == Series)
        return fmt::format("calc of {} rows, prices {}, volumes {}", step.series.rowCount,
                           fmt::join(step.series.prices, " "), fmt::join(step.series.volumes, " "));
    return (step.action == Thread ? "quoterCallBackThread of " : "processData of ") + snapshots::textOf(step.records);
}

} // namespace

std::string text(const DistributionStep& step)
{
    using enum DistributionStep::Action;
    switch (step.action) {
    case Follow:
        return "setStock: " + snapshots::snapshotNameOf(step.number);
    case Clear:
        return "clear";
    case Dates:
        return step.on ? fmt::format("the date is number {}", step.number) : "no date";
    case Renew:
        return fmt::format("facts {} of {}", step.facts, snapshots::snapshotNameOf(step.number));
    case Construct:
        return "a new model";
    default:
        return inputText(step);
    }
}

} // namespace tests::oracle::distribution
