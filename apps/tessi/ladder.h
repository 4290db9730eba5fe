#pragma once

#include <cstddef>
#include <optional>

namespace tessi {

struct BookReading;
class Table;

// A book as a ladder: asks above bids from the highest price down, volumes in hands, and between them the last price
// with the volume that was traded last. The best `depth` levels of each side; all without it. Rows without a price,
// which a level-2 snapshot has where there is no level, are left out.
Table ladderOf(const BookReading& book, double priceTick, std::optional<std::size_t> depth);

} // namespace tessi
