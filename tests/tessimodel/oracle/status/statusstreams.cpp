#include "tests/tessimodel/oracle/status/statusstreams.h"

#include "tests/tessimodel/oracle/snapshots/snapshotinstruments.h"

#include <fmt/format.h>

namespace tests::oracle::status {

namespace {

// The steps that hand in something.
std::string inputText(const StatusStep& step)
{
    using enum StatusStep::Action;
    if (step.action == Batch)
        return fmt::format("quoterCallBack({}) of kind {}, {}", step.ignored, step.kind,
                           snapshots::textOf(step.records));
    if (step.action == Connect)
        return fmt::format("connectTickData of volume {} and {}", step.volume, snapshots::textOf(step.records));
    return fmt::format("calc({}) of {}", step.kind, snapshots::textOf(step.records));
}

} // namespace

std::string text(const StatusStep& step)
{
    using enum StatusStep::Action;
    switch (step.action) {
    case Follow:
        return "setStock: " + snapshots::snapshotNameOf(step.number);
    case Clear:
        return "clear";
    case NewLoan:
        return fmt::format("setNewLoan({})", step.on);
    case PriceTick:
        return fmt::format("m_priceTick = {}", step.value);
    case LastClose:
        return fmt::format("m_lastClose = {}", step.value);
    case Factor:
        return fmt::format("new-loan volumes are the record's times {}", step.number);
    case Renew:
        return fmt::format("facts {} of {}", step.facts, snapshots::snapshotNameOf(step.number));
    case CopyConstruct:
    case CopyAssign:
    case Select:
    case Construct:
        return copyStepText(step);
    default:
        return inputText(step);
    }
}

} // namespace tests::oracle::status
