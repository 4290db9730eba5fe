#include "apps/tessi/bookpanel.h"

#include "apps/tessi/bookreading.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"
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
        total += row.volume;
        levels.push_back({row, total});
    }
    return levels;
}

void addRow(Table& table, bool isBid, const Depth& level, double priceTick)
{
    const TC::EntrustData& row = level.row;
    // An order number below 0 says that it is not known; a change of 0 that there is none.
    table.add({isBid ? "bid" : "ask", priceText(row.price, priceTick), std::to_string(row.volume),
               row.delta == 0 ? "" : std::to_string(row.delta), row.number < 0 ? "" : std::to_string(row.number),
               std::to_string(level.total)},
              isBid ? Table::Tint::Rise : Table::Tint::Fall);
}

} // namespace

BookPanel::BookPanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_book(day)
    , m_depth(options.depth.value_or(std::numeric_limits<std::size_t>::max()))
{}

Table BookPanel::rows()
{
    Table table(
        {{"side"}, {"price", true}, {"hands", true}, {"change", true, true}, {"orders", true}, {"total", true}});
    const BookReading book(m_book.model);
    const double tick = m_book.model.m_priceTick;
    const std::vector<Depth> asks = summedUp(book.asks.begin(), book.asks.end(), m_depth);
    for (auto level = asks.rbegin(); level != asks.rend(); ++level)
        addRow(table, false, *level, tick);
    // Before the first trade a snapshot's last price is 0.
    const std::string last = book.lastPrice > 0 ? priceText(book.lastPrice, tick) : "";
    if (!last.empty())
        table.add({"last", last, std::to_string(book.lastVolume), "", "", ""});
    for (const Depth& level : summedUp(book.bids.rbegin(), book.bids.rend(), m_depth))
        addRow(table, true, level, tick);
    return table;
}

} // namespace tessi
