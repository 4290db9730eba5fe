#pragma once

#include <atomic>
#include <cstddef>

namespace TC::detail {

// Memory for many objects at once. It is on the heap and frees itself when the last of them, and whoever takes its
// places, has let go of it.
template <class Place, std::size_t kPlaces>
struct CountedBlock {
    std::size_t taken = 0;
    std::atomic<std::size_t> held{kPlaces}; // objects that live and places that may still be taken
    Place places[kPlaces];                  // not touched before they are taken

    Place& take() { return places[taken++]; }
    bool isUsedUp() const { return taken == kPlaces; }

    // Nobody will take the places that are left.
    void letGoOfTheRest() noexcept { letGo(kPlaces - taken); }

    void letGo(std::size_t count = 1) noexcept
    {
        if (held.fetch_sub(count, std::memory_order_acq_rel) == count)
            delete this;
    }
};

} // namespace TC::detail
