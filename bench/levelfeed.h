#pragma once

#include "bench/stockfeed.h"

#include <vector>

namespace quoter {
struct LevelThousandData;
}

namespace bench {

struct LevelOptions {
    int records = 100;
    int levels = 1000;     // on each side
    int changed = 200;     // prices of both sides together at which a record has another volume than the one before
    bool isOrdered = true; // best price first, as the exchange sends them; else in an order of its own each time
};

// A stock and its thousand-level snapshots, one a second. Two books take turns: a half of the changed prices lies on
// each side, spread over all levels.
class LevelFeed : public StockFeed {
public:
    explicit LevelFeed(const LevelOptions& options);

    const LevelOptions& options() const { return m_options; }
    const std::vector<std::shared_ptr<quoter::LevelThousandData>>& records() const { return m_records; }
    const std::vector<Batch>& pushes() const { return m_pushes; } // one record each

private:
    LevelOptions m_options;
    std::vector<std::shared_ptr<quoter::LevelThousandData>> m_records;
    std::vector<Batch> m_pushes;
};

} // namespace bench
