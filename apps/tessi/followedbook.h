#pragma once

#include "Formula/formulaparam.h"
#include "indexui/tessimodel/cmodeldepththousand.h"

namespace recording {
class DataLayer;
struct RecordedDay;
} // namespace recording

namespace tessi {

// The thousand-level model of a replayed day, with the three streams that it needs. What panels of the book share.
class FollowedBook {
public:
    explicit FollowedBook(const recording::RecordedDay& day);

    void subscribe(recording::DataLayer& data);

    TC::CModelDepthThousand model;

private:
    TC::CFormulaParam m_request;
};

} // namespace tessi
