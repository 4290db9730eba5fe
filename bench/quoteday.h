#pragma once

#include "bench/stockfeed.h"

#include <memory>
#include <vector>

namespace quoter {
struct QuoterBase;
struct QuoterDepthData;
} // namespace quoter

namespace bench {

// A stock and a day of its level-2 snapshots, the same each time: the price wanders over a few hundred ticks, the ten
// levels of either side stand around it, and each snapshot adds volume. One at a time, since there is one terminal.
class QuoteDay : public StockFeed {
public:
    using Records = std::vector<std::shared_ptr<quoter::QuoterBase>>;

    QuoteDay();

    const Records& history() const { return m_history; }            // the whole day
    const std::vector<Records>& pushes() const { return m_pushes; } // the same, one by one
    const std::vector<std::shared_ptr<quoter::QuoterDepthData>>& snapshots() const { return m_snapshots; }

    static constexpr int kSnapshots = 4800;

private:
    std::vector<std::shared_ptr<quoter::QuoterDepthData>> m_snapshots;
    Records m_history;
    std::vector<Records> m_pushes;
};

} // namespace bench
