#pragma once

#include "indexui/tessimodel/cmodeltodayparam.h"
#include "standin/terminal.h"

#include <memory>
#include <vector>

namespace quoter {
struct QuoterAllData;
struct QuoterBase;
} // namespace quoter

namespace bench {

// A stock, its table of the day, and the day's snapshots: each adds volume. One at a time, since there is one terminal.
class TodayFeed {
public:
    enum class Price { Moves, StandsStill }; // from snapshot to snapshot

    explicit TodayFeed(Price price, int snapshots = kSnapshotsOfADay);

    // The model as the day finds it.
    void begin();

    // Each gives the number of snapshots.
    int show();         // all, one by one
    int turnAway();     // as many of which none adds volume
    int takeHistory();  // all as the history of the day, of which only the last is shown
    int format() const; // nothing but what show() writes numbers with

    static constexpr int kSnapshotsOfADay = 4800;

private:
    using Push = std::vector<std::shared_ptr<quoter::QuoterBase>>;

    standin::Terminal m_terminal;
    TC::CModelTodayParam m_model;
    std::vector<std::shared_ptr<quoter::QuoterAllData>> m_day;
    std::vector<Push> m_pushes;
    std::vector<Push> m_quietPushes;
    Push m_history;
    bool m_priceMoves;
};

} // namespace bench
