#include "apps/tessi/bar.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace tessi {

namespace {

int cellsOf(int volume, int largest)
{
    return static_cast<int>(std::lround(static_cast<double>(volume) / largest * kBarCells));
}

Table::Span cells(int count, const char* glyph, Table::Tint tint)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += glyph;
    return {text, tint};
}

} // namespace

std::vector<Table::Span> barOf(int bought, int total, int largest)
{
    if (total <= 0 || largest <= 0)
        return {};
    const int all = std::clamp(cellsOf(total, largest), 1, kBarCells);
    int buys = std::clamp(cellsOf(bought, largest), 0, all);
    // A bar of one cell shows the larger side.
    if (all == 1)
        buys = 2LL * bought >= total ? 1 : 0;
    return {cells(buys, kBuyGlyph, Table::Tint::Rise), cells(all - buys, kSellGlyph, Table::Tint::Fall)};
}

} // namespace tessi
