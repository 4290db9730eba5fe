#include "tests/tessimodel/oracle/queues/queuestreams.h"

#include "tests/tessimodel/oracle/commonsteps.h"

#include <fmt/format.h>

namespace tests::oracle::queues {

std::string text(const ModelStep& step)
{
    using enum ModelStep::Action;
    const auto batch = [&step](const char* what) {
        return fmt::format("{} of kind {}, {} records{}", what, step.kind, step.batch->records.size(),
                           step.works ? "" : ", left queued") +
               recordsText(step.batch->records);
    };
    switch (step.action) {
    case Orders:
        return batch("orders");
    case Trades:
        return batch("trades");
    case Queues:
        return batch("queues");
    case Snapshots:
        return batch("snapshots");
    case Read:
        return step.flag ? "checkUpdate over rows of the panel's" : "checkUpdate";
    case ReadBids:
        return step.flag ? "getBids over rows of the panel's" : "getBids";
    case Level:
        return fmt::format("getLevel({}, {})", step.flag ? "bid" : "ask", step.price);
    case Clean:
        return "the dirty marks are taken note of";
    case BookOf:
        return "the book gets " + nameOf(step.instrument);
    case NewTick:
        return fmt::format("price tick {}", step.price);
    default:
        return commonText(step);
    }
}

} // namespace tests::oracle::queues
