#include "apps/tessi/queuestates.h"

#include "apps/tessi/orderledger.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace tessi {

namespace {

constexpr auto kOpenEnd = std::numeric_limits<std::size_t>::max();

} // namespace

std::vector<QueuedOrder> firstOrders(TC::CModelDepthThousand& model, bool isBid, double price)
{
    const std::shared_ptr<TC::SingleQueue> level = model.getQueue(isBid, price);
    return level ? firstOrdersOf(*level, kQueuedOrders) : std::vector<QueuedOrder>();
}

std::vector<__int64> sizesOf(const std::vector<QueuedOrder>& orders)
{
    std::vector<__int64> sizes;
    sizes.reserve(orders.size());
    std::transform(orders.begin(), orders.end(), std::back_inserter(sizes),
                   [](const QueuedOrder& order) { return order.shares; });
    return sizes;
}

QueuePlace ChangedPlaces::at(bool isBid, double price) const
{
    return {isBid, TC::detail::priceKey(price, m_priceTick)};
}

std::vector<QueuePlace> ChangedPlaces::by(const recording::Event& tick)
{
    if (tick.stream == recording::Stream::Orders) {
        const auto& order = static_cast<const quoter::OrderData&>(*tick.record);
        QueuePlace place = at(order.bsFlag == quoter::kSideBuy, order.price);
        if (isMarketKind(order.orderKind))
            place.key.reset();
        m_places.emplace(order.seq, place);
        return {place};
    }
    std::vector<QueuePlace> places;
    const auto& trade = static_cast<const quoter::TransactionData&>(*tick.record);
    for (const __int64 seq : {trade.buySeq, trade.sellSeq}) {
        // Of an order that is still to come the book takes the trade with the order.
        if (const auto place = m_places.find(seq); place != m_places.end())
            places.push_back(place->second);
    }
    return places;
}

QueueStates::QueueStates(WatchedModel& model, double priceTick, const std::vector<QueueRow>& rows)
    : m_model(model)
    , m_rows(rows)
    , m_changes(priceTick)
{
    for (const QueueRow& row : rows) {
        Watched& watched = m_watched[m_changes.at(row.isBid, row.price)];
        watched.price = row.price;
        watched.states.try_emplace(row.sizes);
    }
}

void QueueStates::apply(const recording::Event& tick)
{
    m_model.push(tick);
    ++m_state;
    for (const QueuePlace& place : m_changes.by(tick))
        read(place);
}

void QueueStates::read(const QueuePlace& place)
{
    const auto found = m_watched.find(place);
    if (found == m_watched.end())
        return;
    Watched& watched = found->second;
    const auto wanted = watched.states.find(sizesOf(firstOrders(m_model.model(), place.isBid, watched.price)));
    States* const now = wanted == watched.states.end() ? nullptr : &wanted->second;
    if (now == watched.current)
        return;
    if (watched.current != nullptr)
        watched.current->back().to = m_state;
    if (now != nullptr)
        now->push_back({m_state, kOpenEnd});
    watched.current = now;
}

std::vector<States> QueueStates::statesOfRows() const
{
    std::vector<States> states;
    states.reserve(m_rows.size());
    for (const QueueRow& row : m_rows) {
        states.push_back(m_watched.at(m_changes.at(row.isBid, row.price)).states.at(row.sizes));
        if (!states.back().empty() && states.back().back().to == kOpenEnd)
            states.back().back().to = m_state + 1;
    }
    return states;
}

} // namespace tessi
