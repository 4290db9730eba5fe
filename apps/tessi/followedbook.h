#pragma once

#include "Formula/formulaparam.h"
#include "indexui/tessimodel/cmodeldepthqueue.h"
#include "indexui/tessimodel/cmodeldepththousand.h"
#include "indexui/tessimodel/cmodelquoterdepththousand.h"

namespace recording {
class DataLayer;
struct RecordedDay;
} // namespace recording

namespace tessi {

// A model of a replayed day, with the streams that it needs: of a book from ticks, of the order queues, of the book
// from thousand-level snapshots. What panels of the same model share.
template <class Model>
class Followed {
public:
    explicit Followed(const recording::RecordedDay& day);

    void subscribe(recording::DataLayer& data);

    Model model;

private:
    TC::CFormulaParam m_request;
};

using FollowedBook = Followed<TC::CModelDepthThousand>;
using FollowedOrderQueues = Followed<TC::CModelDepthQueue>;
using FollowedSnapshotBook = Followed<TC::CModelQuoterDepthThousand>;

extern template class Followed<TC::CModelDepthThousand>;
extern template class Followed<TC::CModelDepthQueue>;
extern template class Followed<TC::CModelQuoterDepthThousand>;

} // namespace tessi
