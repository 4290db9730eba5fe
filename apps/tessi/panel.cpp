#include "apps/tessi/panel.h"

#include "apps/tessi/bookpanel.h"
#include "apps/tessi/queuepanel.h"
#include "apps/tessi/tickpanel.h"

#include <map>

namespace tessi {

namespace {

struct PanelKind {
    std::unique_ptr<Panel> (*make)(const recording::RecordedDay&, const PanelOptions&);
    bool takesDepth = false;
    bool needsPlace = false; // side and price
};

template <class AnyPanel>
std::unique_ptr<Panel> make(const recording::RecordedDay& day, const PanelOptions& options)
{
    return std::make_unique<AnyPanel>(day, options);
}

const std::map<std::string, PanelKind>& kinds()
{
    static const std::map<std::string, PanelKind> all = {{"book", {make<BookPanel>, true, false}},
                                                         {"queue", {make<QueuePanel>, false, true}},
                                                         {"ticks", {make<TickPanel>}}};
    return all;
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
    if (options.depth && !kind.takesDepth)
        return "--depth is for --panel book";
    if ((options.side || options.price) && !kind.needsPlace)
        return "--side and --price are for --panel queue";
    if (kind.needsPlace && !(options.side && options.price))
        return "--panel " + name + " needs --side and --price";
    return {};
}

std::unique_ptr<Panel> makePanel(const std::string& name, const recording::RecordedDay& day,
                                 const PanelOptions& options)
{
    const auto found = kinds().find(name);
    return found == kinds().end() ? nullptr : found->second.make(day, options);
}

} // namespace tessi
