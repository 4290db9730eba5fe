#pragma once

#include "apps/tessi/orderledger.h"
#include "apps/tessi/queuestates.h"

#include <vector>

namespace tessi {

// What stands at a price at one moment, and what may: the first orders of the book there, and others, by ascending seq,
// that rest at the exchange and may do so there without the book's knowledge.
class QueueCandidates {
public:
    QueueCandidates(const std::vector<QueuedOrder>& book, const std::vector<RestingOrder>& others);

    // The orders that a recorded queue has more than the book: each stands among the book's where its number puts it,
    // with all that is left of it. Of others that would do in the same place the latest is taken. Empty when the others
    // cannot make up the difference, and when there is none.
    std::vector<RestingOrder> explain(const std::vector<__int64>& recorded) const;

    // The sizes of the book's orders.
    const std::vector<__int64>& bookSizes() const { return m_bookSizes; }

private:
    struct Candidate {
        RestingOrder order;
        bool isBooks = false; // it must be in the queue; any other may
    };
    class Fit;

    std::vector<Candidate> m_candidates; // by seq
    std::vector<__int64> m_bookSizes;
    bool m_hasOthers;
};

} // namespace tessi
