#pragma once

#include "net/rpcengine.h"

#include <boost/make_shared.hpp>

#include <tuple>
#include <utility>

namespace TC::detail {

// Empties containers. What they held, their room included, is freed with the result: behind the lock, if need be.
template <class... Containers>
[[nodiscard]] std::tuple<Containers...> takenOut(Containers&... containers)
{
    std::tuple<Containers...> taken;
    std::apply([&](auto&... emptied) { (emptied.swap(containers), ...); }, taken);
    return taken;
}

// Empties containers at once and frees what they held on the strand "data_release": freeing 100,000 rows takes
// milliseconds that belong neither to the thread that clears nor to the strand of the workers. The caller holds
// the lock that guards the containers.
template <class... Containers>
void releaseLater(Containers&... containers)
{
    auto released = boost::make_shared<std::tuple<Containers...>>(takenOut(containers...));
    const auto strand = utils::CSingletonT<net::RPCEngine>::instance()->getStrand("data_release");
    // The task alone owns it: a pointer that stayed behind here could be the last one.
    strand->post([owned = std::move(released)]() mutable { owned.reset(); });
}

} // namespace TC::detail
