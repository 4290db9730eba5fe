#include "bench/queuemodel.h"

#include "bench/modelfeed.h"
#include "indexui/tessimodel/cmodeldepthqueue.h"
#include "quoter/levelorderdata.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

#include <algorithm>
#include <stdexcept>

namespace bench {

namespace {

using Model = TC::CModelDepthQueue;

constexpr TickOptions kPart{.events = 200'000};
constexpr TickOptions kFullDay{.events = 1'000'000, .resting = 100'000};

// With the workers of its snapshots in the open.
class SnapshotModel : public Model {
public:
    using CModelDepthQueue::doQueue;
    using CModelDepthQueue::doQuoter;
};

// What clear() takes: the records stay, since others hold them too.
Body prepareClear()
{
    auto followed = std::make_shared<FollowedModel<Model>>(kFullDay);
    return {[followed](int) {
                followed->model.clear();
                return 1;
            },
            [followed] {
                followed->feed.freeReleased();
                followed->build();
            }};
}

struct Pair {
    TC::CModelDepthQueue::Records snapshot;
    TC::CModelDepthQueue::Records queues;
    __int64 timetag = 0;
};

// Ten levels each side about a price of 10.00 and fifty orders at the best of each. At the upper limit nothing is
// offered.
Pair makePair(__int64 timetag, bool isAtLimit)
{
    constexpr std::size_t kOrders = 50;
    auto snapshot = std::make_shared<quoter::QuoterDepthData>();
    auto queues = std::make_shared<quoter::LevelOrderData>();
    snapshot->timetag = queues->timetag = timetag;
    for (int i = 0; i < 10; ++i) {
        snapshot->bidPrice[i] = (1000 - i) / 100.0;
        snapshot->bidVolume[i] = 100 + i;
        snapshot->askPrice[i] = isAtLimit ? 0 : (1001 + i) / 100.0;
        snapshot->askVolume[i] = isAtLimit ? 0 : 100 + i;
    }
    queues->bidPrice = snapshot->bidPrice[0];
    queues->askPrice = snapshot->askPrice[0];
    queues->bidQueue.assign(kOrders, 200);
    queues->askQueue.assign(isAtLimit ? 0 : kOrders, 200);
    return {{snapshot}, {queues}, timetag};
}

// Both snapshots of a moment, by the strand's workers, until the rows are made.
Body preparePairs(bool isAtLimit)
{
    constexpr int kPairs = 5000;
    auto feed = std::make_shared<StockFeed>(900, 1100);
    auto model = std::make_shared<SnapshotModel>();
    feed->follow(*model);
    auto pairs = std::make_shared<std::vector<Pair>>();
    for (int i = 0; i < kPairs; ++i)
        pairs->push_back(makePair(1'000'000 + i * 3000LL, isAtLimit));
    return {[feed, model, pairs](int) {
                for (const Pair& pair : *pairs) {
                    model->doQuoter(0, 1, pair.snapshot);
                    model->doQueue(0, 1, pair.queues);
                }
                if (model->m_rawTimetag != pairs->back().timetag)
                    throw std::logic_error("the snapshots were not joined");
                return kPairs;
            },
            [model] { model->clear(); }};
}

} // namespace

std::vector<Operation> queueModelOperations()
{
    return {
        {"queue_history_day", [] { return prepareModelHistory<Model>({}, FirstHistory::Orders); }},
        {"queue_history_day_trades_first", [] { return prepareModelHistory<Model>({}, FirstHistory::Trades); }},
        {"queue_live", [] { return prepareModelLive<Model>(kPart); }},
        {"queue_pair", [] { return preparePairs(false); }},
        {"queue_pair_at_limit", [] { return preparePairs(true); }},
        {"queue_clear", prepareClear, 1, 10},
    };
}

} // namespace bench
