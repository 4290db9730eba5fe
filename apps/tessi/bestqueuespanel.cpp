#include "apps/tessi/bestqueuespanel.h"

#include "apps/tessi/missingstreams.h"
#include "apps/tessi/queuedorders.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"
#include "indexui/tessimodel/liveread.h"

#include <fmt/format.h>

#include <algorithm>
#include <mutex>
#include <vector>

namespace tessi {

namespace {

using recording::Stream;

constexpr std::size_t kDefaultDepth = TC::OrderQueueRows::kSlots;
constexpr std::size_t kShownOrders = 10;

// "300 200 500": what is left of the first orders, oldest first; "..." stands for more.
std::string firstSizes(TC::OrderQueue& queue)
{
    std::string text;
    for (std::size_t shown = 0; const QueuedOrder& order : firstOrdersOf(queue, kShownOrders + 1)) {
        if (shown++ == kShownOrders)
            return text + " ...";
        text += fmt::format("{}{}", text.empty() ? "" : " ", order.shares);
    }
    return text;
}

std::size_t ordersIn(TC::OrderQueue& queue)
{
    const std::lock_guard lock(queue.m_mutex);
    return queue.m_quotes.size();
}

// `from` to `to` runs from the best level to the worst. Orders of the kinds without a price rest below all keys.
template <class Iterator>
std::vector<double> prices(Iterator from, Iterator to, std::size_t depth)
{
    std::vector<double> best;
    for (; from != to && best.size() < depth; ++from) {
        if (from->first > 0 && TC::readLive(from->second->m_valid))
            best.push_back(TC::readLive(from->second->m_price));
    }
    return best;
}

} // namespace

BestQueuesPanel::BestQueuesPanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_queues(day)
    , m_depth(options.depth.value_or(kDefaultDepth))
{
    // In any other market the model takes nothing, and no stream would help.
    if (day.instrument.market == "SZ")
        m_note = missingStreamsText(day, {Stream::Queues, Stream::Snapshots, Stream::Orders, Stream::Trades});
    else
        m_whyEmpty = "the model follows instruments of Shenzhen only";
}

Table BestQueuesPanel::rows()
{
    Table table({{"what"},
                 {"side"},
                 {"level", true},
                 {"state"},
                 {"price", true},
                 {"volume", true},
                 {"orders", true},
                 {"first orders"}});
    addLevels(table, false);
    addLevels(table, true);
    if (table.isEmpty() && m_queues.model.m_rawTimetag == 0)
        return table;
    addSlots(table, false);
    addSlots(table, true);
    m_foot = readText();
    return table;
}

void BestQueuesPanel::addLevels(Table& table, bool isBid)
{
    TC::QueueBook& book = m_queues.model.m_book;
    std::vector<double> best;
    {
        const std::lock_guard lock(book.m_mutex);
        best = isBid ? prices(book.m_bidLevels.rbegin(), book.m_bidLevels.rend(), m_depth)
                     : prices(book.m_askLevels.begin(), book.m_askLevels.end(), m_depth);
    }
    for (std::size_t i = 0; i < best.size(); ++i) {
        // Asks from the worst to the best, as a ladder has them.
        const std::size_t level = isBid ? i : best.size() - 1 - i;
        const auto queue = book.getLevel(isBid, best[level]);
        if (!queue)
            continue;
        table.add({"book", sideName(isBid), std::to_string(level + 1), "",
                   priceText(best[level], m_queues.model.m_priceTick), std::to_string(TC::readLive(queue->m_volume)),
                   std::to_string(ordersIn(*queue)), firstSizes(*queue)},
                  isBid ? Table::Tint::Rise : Table::Tint::Fall);
    }
}

void BestQueuesPanel::addSlots(Table& table, bool isBid) const
{
    const TC::CModelDepthQueue& model = m_queues.model;
    const std::lock_guard lock(model.m_mutex);
    const TC::OrderQueueRows& side = isBid ? model.m_bids : model.m_asks;
    for (std::size_t i = 0; i < TC::OrderQueueRows::kSlots; ++i) {
        const std::size_t slot = isBid ? i : TC::OrderQueueRows::kSlots - 1 - i;
        const TC::OrderQueueRows::Row& row = side[slot];
        const std::string level = std::to_string(slot + 1);
        if (!row)
            table.add({"slot", sideName(isBid), level, "empty", "", "", "", ""});
        else if (!row->m_valid)
            table.add({"slot", sideName(isBid), level, "bare", "", "", "", ""});
        else
            table.add({"slot", sideName(isBid), level, "valid", priceText(row->m_price, model.m_priceTick),
                       std::to_string(row->m_volume), std::to_string(row->m_count), firstSizes(*row)});
    }
}

std::string BestQueuesPanel::readText()
{
    int flags = 0;
    TC::OrderQueueList bids;
    TC::OrderQueueList asks;
    const bool isNew = m_queues.model.checkUpdate(flags, bids, asks);
    const __int64 paired = m_queues.model.m_rawTimetag;
    const std::string pair = paired > 0 ? "slots of " + clockTextMs(paired) : "no pair of snapshots yet";
    if (!isNew)
        return pair + "; checkUpdate: nothing new";
    return fmt::format("{}; checkUpdate: flags {}, {} bids, {} asks", pair, flags, bids.size(), asks.size());
}

} // namespace tessi
