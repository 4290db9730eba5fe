#include "apps/tessi/panel.h"

#include "apps/tessi/bestqueuespanel.h"
#include "apps/tessi/bookpanel.h"
#include "apps/tessi/cancelspanel.h"
#include "apps/tessi/distributionpanel.h"
#include "apps/tessi/indexpanel.h"
#include "apps/tessi/orderspanel.h"
#include "apps/tessi/panelfilter.h"
#include "apps/tessi/parampanel.h"
#include "apps/tessi/platepanel.h"
#include "apps/tessi/queuepanel.h"
#include "apps/tessi/statuspanel.h"
#include "apps/tessi/thousandpanel.h"
#include "apps/tessi/tickpanel.h"
#include "apps/tessi/tradespanel.h"
#include "apps/tessi/viewpanel.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace tessi {

namespace {

// Options that a panel takes.
enum Takes : unsigned {
    kDepth = 1,
    kSide = 2,
    kPrice = 4,
    kSizes = 8,
    kTimes = 16,
    kByQuoter = 32,
    kAt = 64,
    kToday = 128,
    kLevel2 = 256,
    kLevel1 = 512,
    kPng = 1024,
    kPicture = 2048
};

struct PanelKind {
    std::unique_ptr<Panel> (*make)(const recording::RecordedDay&, const PanelOptions&);
    unsigned takes = 0;
    unsigned needs = 0;
    std::vector<std::string> sides;
};

template <class AnyPanel>
std::unique_ptr<Panel> make(const recording::RecordedDay& day, const PanelOptions& options)
{
    return std::make_unique<AnyPanel>(day, options);
}

const std::map<std::string, PanelKind>& kinds()
{
    static const std::map<std::string, PanelKind> all = {
        {"book", {make<BookPanel>, kDepth, 0, {}}},
        {"cancels", {make<CancelsPanel>, kSide | kSizes | kTimes, 0, {"buy", "sell"}}},
        {"distribution", {make<DistributionPanel>, 0, 0, {}}},
        {"index", {make<IndexPanel>, 0, 0, {}}},
        {"orders", {make<OrdersPanel>, kSide | kSizes | kTimes, 0, {"buy", "sell"}}},
        {"params", {make<ParamPanel>, kAt | kToday | kLevel2, 0, {}}},
        {"plate", {make<PlatePanel>, kTimes | kPng | kPicture, 0, {}}},
        {"queue10", {make<BestQueuesPanel>, kDepth, 0, {}}},
        {"queue", {make<QueuePanel>, kSide | kPrice, kSide | kPrice, {"bid", "ask"}}},
        {"status", {make<StatusPanel>, kAt | kLevel1, 0, {}}},
        {"thousand", {make<ThousandPanel>, kDepth | kByQuoter, 0, {}}},
        {"ticks", {make<TickPanel>, 0, 0, {}}},
        {"trades", {make<TradesPanel>, kSizes | kTimes, 0, {}}},
        {"view", {make<ViewPanel>, kTimes, 0, {}}}};
    return all;
}

unsigned givenIn(const PanelOptions& options)
{
    unsigned given = 0;
    given |= options.depth ? kDepth : 0U;
    given |= options.side ? kSide : 0U;
    given |= options.price ? kPrice : 0U;
    given |= options.minHands || options.minAmount || options.connective ? kSizes : 0U;
    given |= options.from || options.to ? kTimes : 0U;
    given |= options.byQuoter ? kByQuoter : 0U;
    given |= options.at ? kAt : 0U;
    given |= options.today ? kToday : 0U;
    given |= options.level2 ? kLevel2 : 0U;
    given |= options.level1 ? kLevel1 : 0U;
    given |= options.png ? kPng : 0U;
    given |= options.size || options.theme || options.scale ? kPicture : 0U;
    return given;
}

// The options of the lowest bit.
const char* firstName(unsigned options)
{
    static constexpr std::pair<Takes, const char*> names[] = {{kDepth, "--depth"},
                                                              {kSide, "--side"},
                                                              {kPrice, "--price"},
                                                              {kSizes, "--min-hands, --min-amount and --connective"},
                                                              {kTimes, "--from and --to"},
                                                              {kByQuoter, "--by-quoter"},
                                                              {kAt, "--at"},
                                                              {kToday, "--today"},
                                                              {kLevel2, "--level2"},
                                                              {kLevel1, "--level1"},
                                                              {kPng, "--png"},
                                                              {kPicture, "--size, --theme and --scale"}};
    const auto* const found = std::find_if(std::begin(names), std::end(names),
                                           [options](const auto& name) { return (options & name.first) != 0; });
    return found == std::end(names) ? "" : found->second;
}

} // namespace

std::vector<std::string> panelNames()
{
    std::vector<std::string> names;
    for (const auto& [name, kind] : kinds())
        names.push_back(name);
    return names;
}

std::string optionFault(const std::string& name, const PanelOptions& options)
{
    const auto found = kinds().find(name);
    const PanelKind kind = found == kinds().end() ? PanelKind() : found->second;
    const unsigned given = givenIn(options);
    const std::string panel = name.empty() ? "a summary" : "--panel " + name;
    if (const unsigned strange = given & ~kind.takes; strange != 0)
        return fmt::format("{} takes no {}", panel, firstName(strange));
    if (const unsigned missing = kind.needs & ~given; missing != 0)
        return fmt::format("{} needs {}", panel, firstName(missing));
    if (options.side && std::find(kind.sides.begin(), kind.sides.end(), *options.side) == kind.sides.end())
        return fmt::format("--side of {} is {}", panel, fmt::join(kind.sides, " or "));
    if ((given & kPicture) != 0 && !options.png)
        return fmt::format("{} need --png", firstName(kPicture));
    return filterFault(options);
}

std::unique_ptr<Panel> makePanel(const std::string& name, const recording::RecordedDay& day,
                                 const PanelOptions& options)
{
    const auto found = kinds().find(name);
    return found == kinds().end() ? nullptr : found->second.make(day, options);
}

} // namespace tessi
