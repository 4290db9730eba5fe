#include "apps/tessi/ladder.h"

#include "apps/tessi/bookreading.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/liveread.h"

#include <limits>
#include <string>
#include <vector>

namespace tessi {

namespace {

// A row of the ladder, and the hands from the best price to here.
struct Depth {
    TC::EntrustData row;
    __int64 total = 0;
};

// `from` to `to` runs from the best row to the worst.
template <class Iterator>
std::vector<Depth> summedUp(Iterator from, Iterator to, std::size_t depth)
{
    std::vector<Depth> levels;
    __int64 total = 0;
    for (; from != to && levels.size() < depth; ++from) {
        const TC::EntrustData row = TC::readLive(**from);
        if (!TC::detail::isUsable(row.price))
            continue;
        total += row.volume;
        levels.push_back({row, total});
    }
    return levels;
}

void addRow(Table& table, bool isBid, const Depth& level, double priceTick)
{
    const TC::EntrustData& row = level.row;
    // An order number below 0 says that it is not known; a change of 0 that there is none.
    table.add({sideName(isBid), priceText(row.price, priceTick), std::to_string(row.volume),
               row.delta == 0 ? "" : std::to_string(row.delta), row.number < 0 ? "" : std::to_string(row.number),
               std::to_string(level.total)},
              isBid ? Table::Tint::Rise : Table::Tint::Fall);
}

} // namespace

Table ladderOf(const BookReading& book, double priceTick, std::optional<std::size_t> depth)
{
    Table table(
        {{"side"}, {"price", true}, {"hands", true}, {"change", true, true}, {"orders", true}, {"total", true}});
    const std::size_t most = depth.value_or(std::numeric_limits<std::size_t>::max());
    const std::vector<Depth> asks = summedUp(book.asks.begin(), book.asks.end(), most);
    for (auto level = asks.rbegin(); level != asks.rend(); ++level)
        addRow(table, false, *level, priceTick);
    // Before the first trade a snapshot's last price is 0.
    const std::string last = book.lastPrice > 0 ? priceText(book.lastPrice, priceTick) : "";
    if (!last.empty())
        table.add({"last", last, std::to_string(book.lastVolume), "", "", ""});
    for (const Depth& level : summedUp(book.bids.rbegin(), book.bids.rend(), most))
        addRow(table, true, level, priceTick);
    return table;
}

} // namespace tessi
