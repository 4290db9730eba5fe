#pragma once

#include "indexui/tessimodel/cmodeldepthholographic.h"

#include <string>

namespace tessi {

// The snapshot that a row of the trade list is matched to.
struct RowMatch {
    TC::CModelDepthHolographic::SeqPair rows{-1, -1}; // all of that snapshot's
    int second = -1;

    // "hh:mm:ss", and "120-125"; empty without a snapshot.
    std::string secondText() const;
    std::string rowsText() const;
};

// Looks up row after row, which is quick as long as they are of one snapshot. One thread.
class RowMatches {
public:
    explicit RowMatches(const TC::CModelDepthHolographic& model)
        : m_model(model)
    {}

    const RowMatch& of(int index);

private:
    const TC::CModelDepthHolographic& m_model;
    RowMatch m_latest;
};

} // namespace tessi
