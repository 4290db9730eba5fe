#include "tests/tessimodel/oracle/thousand/thousandstreams.h"

#include "tests/tessimodel/oracle/commonsteps.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tests::oracle::thousand {

std::string text(const ThousandStep& step)
{
    using enum ThousandStep::Action;
    const char* source = step.byQuoter ? " by the level-2 snapshot" : "";
    switch (step.action) {
    case Thousand:
        return batchText("thousand-level records", step.kind, step.batch, step.works);
    case Snapshots:
        return batchText("snapshots", step.kind, step.batch, step.works);
    case Reserve:
        return fmt::format("m_reserved {}{}", step.flag ? "is the time of the volume step plus " : "", step.time);
    case Own:
        return fmt::format("rows, a history and a book of its own, at {}", step.price);
    case Save:
        return "rows saved of " + nameOf(step.instrument);
    case Forget:
        return "trading data changed";
    case Read:
        return fmt::format("checkUpdate{}{}", source, step.flag ? ", extremes started anew" : "");
    case ReadSide:
        return fmt::format("{}{}", step.flag ? "getBids" : "getAsks", source);
    case Queue:
        return fmt::format("getQueue({}, {}, {})", step.flag ? "bid" : "ask", step.price, fmt::join(step.volumes, "|"));
    default:
        return commonText(step);
    }
}

} // namespace tests::oracle::thousand
