#include "apps/tessi/placement.h"

#include <algorithm>
#include <iterator>

namespace tessi {

namespace {

// The longest chains so far: of each length the one that ends at the lowest state, so that the states rise with the
// length.
class Chains {
public:
    void extend(std::size_t thing, const States& states)
    {
        // From the last range to the first, so that no chain gets the thing twice.
        for (auto range = states.rbegin(); range != states.rend(); ++range)
            extend(thing, *range);
    }

    // The things of the longest chain at their states.
    void place(std::vector<std::optional<std::size_t>>& states) const
    {
        for (std::size_t at = m_ends.empty() ? kNone : m_ends.back(); at != kNone; at = m_links[at].before)
            states[m_links[at].thing] = m_links[at].state;
    }

private:
    static constexpr auto kNone = static_cast<std::size_t>(-1);

    struct Link {
        std::size_t thing = 0;
        std::size_t state = 0;
        std::size_t before = kNone; // place in m_links
    };

    // A chain that ends before the range goes on at its first state, one that ends within it where it ends.
    void extend(std::size_t thing, const StateRange& range)
    {
        const auto endsBefore = [this](std::size_t end, std::size_t state) { return m_links[end].state < state; };
        const auto within = std::lower_bound(m_ends.begin(), m_ends.end(), range.from + 1, endsBefore);
        const auto behind = std::lower_bound(within, m_ends.end(), range.to, endsBefore);
        const std::size_t before = within == m_ends.begin() ? kNone : *(within - 1);
        const auto first = within - m_ends.begin();
        std::vector<std::size_t> longer{link(thing, range.from, before)};
        for (auto end = within; end != behind; ++end)
            longer.push_back(link(thing, m_links[*end].state, *end));
        if (behind == m_ends.end())
            m_ends.push_back(kNone);
        std::copy(longer.begin(), longer.end(), m_ends.begin() + first);
    }

    std::size_t link(std::size_t thing, std::size_t state, std::size_t before)
    {
        m_links.push_back({thing, state, before});
        return m_links.size() - 1;
    }

    std::vector<Link> m_links;
    std::vector<std::size_t> m_ends; // by length, places in m_links
};

} // namespace

bool isIn(const StateRange& range, std::size_t state)
{
    return range.from <= state && state < range.to;
}

bool isIn(const States& states, std::size_t state)
{
    return std::any_of(states.begin(), states.end(), [state](const StateRange& range) { return isIn(range, state); });
}

States common(const States& a, const States& b)
{
    States both;
    for (auto x = a.begin(), y = b.begin(); x != a.end() && y != b.end();) {
        const StateRange range{std::max(x->from, y->from), std::min(x->to, y->to)};
        if (range.from < range.to)
            both.push_back(range);
        if (x->to < y->to)
            ++x;
        else
            ++y;
    }
    return both;
}

States joined(const States& a, const States& b)
{
    States either;
    std::merge(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(either),
               [](const StateRange& x, const StateRange& y) { return x.from < y.from; });
    return either;
}

std::vector<std::optional<std::size_t>> placeInOrder(const std::vector<States>& states)
{
    Chains chains;
    for (std::size_t thing = 0; thing < states.size(); ++thing)
        chains.extend(thing, states[thing]);
    std::vector<std::optional<std::size_t>> placed(states.size());
    chains.place(placed);
    return placed;
}

} // namespace tessi
