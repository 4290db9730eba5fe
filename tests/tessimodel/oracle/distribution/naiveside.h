#pragma once

#include "tests/tessimodel/oracle/distribution/naivedistribution.h"
#include "tests/tessimodel/oracle/statelines.h"

#include <vector>

namespace tests::oracle::distribution {

// What a step does to the naive distribution. Histories that meet are worked through in any order, so there may be
// several that are right.
class NaiveSide {
public:
    explicit NaiveSide(DistributionCounters& counters);

    void apply(const DistributionStep& step);

    const std::vector<NaiveDistribution>& right() const { return m_right; }

    // Goes on with the one that writes these lines, if there is one.
    void settle(const Lines& real);

    // What the step gave back: with the threads held up, whether the model was ready all the same.
    bool answer() const { return m_answer; }

private:
    void applyOther(NaiveDistribution& model, const DistributionStep& step);
    void batch(const DistributionStep& step);
    void together(const DistributionStep& step);

    DistributionCounters* m_counters;
    std::vector<NaiveDistribution> m_right;
    bool m_answer = true;
};

// The lines of one of them.
void writeNaive(Lines& out, const NaiveDistribution& model, bool answer);

} // namespace tests::oracle::distribution
