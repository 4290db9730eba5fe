#include "apps/tessi/queueexplanation.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

namespace tessi {

// Finds which of the orders that may be in the queue are: order after order, in time, and back where it fails.
class QueueCandidates::Fit {
public:
    Fit(const std::vector<__int64>& recorded, const std::vector<Candidate>& candidates)
        : m_recorded(recorded)
        , m_candidates(candidates)
    {}

    bool fits() { return fits(0, 0); }

    std::vector<RestingOrder> taken() const { return {m_taken.rbegin(), m_taken.rend()}; }

private:
    // Whether the candidates from one on can be the recorded orders from one on.
    bool fits(std::size_t candidate, std::size_t size)
    {
        if (size == kQueuedOrders)
            return true; // what is behind is not recorded
        if (candidate == m_candidates.size())
            return size == m_recorded.size();
        const Candidate& next = m_candidates[candidate];
        const bool isHere = size < m_recorded.size() && m_recorded[size] == next.order.shares;
        if (next.isBooks)
            return isHere && fits(candidate + 1, size + 1);
        if (m_failed.count({candidate, size}) > 0)
            return false;
        if (fits(candidate + 1, size))
            return true;
        if (isHere && fits(candidate + 1, size + 1)) {
            m_taken.push_back(next.order);
            return true;
        }
        m_failed.insert({candidate, size});
        return false;
    }

    const std::vector<__int64>& m_recorded;
    const std::vector<Candidate>& m_candidates;
    std::set<std::pair<std::size_t, std::size_t>> m_failed; // those that have been tried
    std::vector<RestingOrder> m_taken;                      // latest first
};

QueueCandidates::QueueCandidates(const std::vector<QueuedOrder>& book, const std::vector<RestingOrder>& others)
    : m_bookSizes(sizesOf(book))
    , m_hasOthers(!others.empty())
{
    for (const QueuedOrder& order : book)
        m_candidates.push_back({RestingOrder{.seq = order.seq, .shares = order.shares}, true});
    for (const RestingOrder& order : others)
        m_candidates.push_back({order, false});
    std::stable_sort(m_candidates.begin(), m_candidates.end(),
                     [](const Candidate& a, const Candidate& b) { return a.order.seq < b.order.seq; });
}

std::vector<RestingOrder> QueueCandidates::explain(const std::vector<__int64>& recorded) const
{
    Fit fit(recorded, m_candidates);
    return m_hasOthers && fit.fits() ? fit.taken() : std::vector<RestingOrder>();
}

} // namespace tessi
