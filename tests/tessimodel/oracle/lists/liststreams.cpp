#include "tests/tessimodel/oracle/lists/liststreams.h"

#include "tests/tessimodel/oracle/commonsteps.h"

#include <fmt/format.h>

namespace tests::oracle::lists {

namespace {

std::string text(const Filter& f)
{
    return fmt::format("filter: hands mode {} {}, connective {}, amount mode {} {}, from {} to {} ms, buys {} sells {} "
                       "cancelled buys {} cancelled sells {}",
                       f.handsMode, f.hands, f.connective, f.amountMode, f.amount, f.startTime, f.endTime,
                       f.showBuyOrder, f.showSellOrder, f.showBuyCancel, f.showSellCancel);
}

std::string viewText(const ListStep& step)
{
    using enum ListStep::Action;
    switch (step.action) {
    case Find:
        return fmt::format("findSeq({}, {})", step.first, step.second);
    case Split:
        return fmt::format("tryMatch({}, {})", step.first, step.second);
    case View:
        return fmt::format("setViewTimeRange({}, {})", step.first, step.second);
    case Recalculate:
        return "recalcMaxMinSeqAndPrice";
    case RecalculatePrices:
        return "recalcMaxMinPrice";
    case Height:
        return fmt::format("setFullHeightHandle({})", step.first);
    default:
        return commonText(step);
    }
}

std::string callText(const ListStep& step)
{
    using enum ListStep::Action;
    switch (step.action) {
    case Orders:
        return batchText("orders", step.kind, step.batch, step.works);
    case Trades:
        return batchText("trades", step.kind, step.batch, step.works);
    case Snapshots:
        return batchText("snapshots", step.kind, step.batch, step.works);
    case ClearOrders:
        return "clearEntrusts";
    case ClearTrades:
        return "clearTransactions";
    case ClearQuotes:
        return "clearQuotes";
    case SetFilter:
        return text(step.filter);
    case FilterAnew:
        return "datasFilter";
    case Append:
        return fmt::format("append as of {}: {}", nameOf(step.instrument), oracle::text(step.record.get()));
    case Reprice:
        return fmt::format("last price {} into {}", step.price, oracle::text(step.record.get()));
    case Match:
        return "tryMatch as of " + nameOf(step.instrument);
    default:
        return viewText(step);
    }
}

} // namespace

std::string text(const ListStep& step)
{
    return (step.lowersFlags ? "flags lowered, " : "") + callText(step);
}

} // namespace tests::oracle::lists
