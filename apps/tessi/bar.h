#pragma once

#include "apps/tessi/table.h"

#include <vector>

namespace tessi {

inline constexpr int kBarCells = 40; // of the longest bar
inline constexpr char kBuyGlyph[] = "█";
inline constexpr char kSellGlyph[] = "░";

// A bar of text for a volume out of `largest`, its bought part first. A volume above 0 has a cell at least, which is
// the larger side's when there is just one.
std::vector<Table::Span> barOf(int bought, int total, int largest);

} // namespace tessi
