#pragma once

#include <utility>
#include <vector>

namespace TC::detail {

// Map nodes of what has gone, kept for what comes: an order that trades at once opens a level and closes it again. A
// node keeps its object too, if nobody else holds it.
template <class Map>
class NodePool {
public:
    // Puts an object in under the key: one that was kept, made as new by `renew`, or one from `make`.
    template <class Make, class Renew>
    typename Map::iterator insert(Map& map, typename Map::iterator before, int key, const Make& make,
                                  const Renew& renew)
    {
        if (m_spare.empty())
            return map.emplace_hint(before, key, make());
        auto node = std::move(m_spare.back());
        m_spare.pop_back();
        node.key() = key;
        if (node.mapped())
            renew(*node.mapped());
        else
            node.mapped() = make();
        return map.insert(before, std::move(node));
    }

    void erase(Map& map, typename Map::iterator entry)
    {
        auto node = map.extract(entry);
        if (node.mapped().use_count() != 1)
            node.mapped().reset();
        m_spare.push_back(std::move(node));
    }

    void swap(NodePool& other) noexcept { m_spare.swap(other.m_spare); }

private:
    std::vector<typename Map::node_type> m_spare;
};

} // namespace TC::detail
