#pragma once

#include "apps/tessi/panel.h"
#include "indexui/tessimodel/depthfilter.h"

#include <string>

namespace tessi {

// What is wrong with the options of a filter among themselves; empty when nothing is.
std::string filterFault(const PanelOptions& options);

// The filter that the options ask for: wholeDayFilter() but for what they say.
TC::SDepthFilterParam filterOf(const PanelOptions& options);

} // namespace tessi
