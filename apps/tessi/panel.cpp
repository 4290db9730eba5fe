#include "apps/tessi/panel.h"

#include "apps/tessi/tickpanel.h"

#include <map>

namespace tessi {

namespace {

using Maker = std::unique_ptr<Panel> (*)(const recording::RecordedDay&);

template <class AnyPanel>
std::unique_ptr<Panel> make(const recording::RecordedDay& day)
{
    return std::make_unique<AnyPanel>(day);
}

const std::map<std::string, Maker>& makers()
{
    static const std::map<std::string, Maker> all = {{"ticks", make<TickPanel>}};
    return all;
}

} // namespace

std::vector<std::string> panelNames()
{
    std::vector<std::string> names;
    for (const auto& [name, maker] : makers())
        names.push_back(name);
    return names;
}

std::unique_ptr<Panel> makePanel(const std::string& name, const recording::RecordedDay& day)
{
    const auto found = makers().find(name);
    return found == makers().end() ? nullptr : found->second(day);
}

} // namespace tessi
