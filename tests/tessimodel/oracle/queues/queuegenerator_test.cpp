// Whether the streams are still worth playing: an oracle whose streams make nothing happen finds nothing.

#include "tests/tessimodel/oracle/expectations.h"
#include "tests/tessimodel/oracle/queues/naivequeuemodel.h"
#include "tests/tessimodel/oracle/queues/queuegenerator.h"

namespace {

using namespace tests::oracle;
using namespace tests::oracle::queues;

constexpr int kStreams = 300;

// Plays steps on the naive model alone.
class NaiveRun {
public:
    NaiveRun(Counters& counters, bool suppresses)
        : m_model(suppresses, counters)
    {}

    void play(const std::vector<ModelStep>& steps)
    {
        for (const ModelStep& step : steps) {
            apply(step);
            const NaiveQueueBook& book = m_model.book;
            m_stepsWithBook += book.bids.levels.size() >= 3 && book.asks.levels.size() >= 3 ? 1 : 0;
        }
    }

    int stepsWithBook() const { return m_stepsWithBook; }

private:
    void apply(const ModelStep& step)
    {
        using enum ModelStep::Action;
        if (step.batch)
            m_model.callback(step);
        if (step.action == Work || (step.batch && step.works))
            m_model.work();
        else if (step.action == Clear)
            m_model.clear();
        else if (step.action == Follow)
            m_model.setStock(step.instrument);
        else if (step.action == InitParams)
            m_model.initStockParams();
        else if (step.action == Read)
            m_model.checkUpdate(m_flags, m_bids);
        else if (step.action == ReadBids)
            m_model.getBids(m_bids);
        else if (step.action == Level)
            m_model.book.getLevel(step.flag, step.price);
        else if (step.action == BookOf)
            m_model.book.stock = step.instrument;
        else if (step.action == NewTick)
            m_model.priceTick = m_model.book.priceTick = step.price;
    }

    NaiveQueueModel m_model;
    int m_flags = 0;
    NaiveQueueModel::List m_bids;
    int m_stepsWithBook = 0;
};

TEST(QueueGenerator, shouldMakeEveryRuleMatterWhenManyStreamsAreMade)
{
    Counters c;
    int stepsWithBook = 0;
    for (int seed = 1; seed <= kStreams; ++seed) {
        NaiveRun run(c, seed % 6 == 0);
        run.play(makeModelSteps(static_cast<unsigned long long>(seed)));
        stepsWithBook += run.stepsWithBook();
    }
    expectCounts({
        {"steps on a book with three levels a side", stepsWithBook, 23000},
        {"built books", c.builds, 610},
        {"fills", c.fills, 2400},
        {"partial fills", c.partialFills, 3600},
        {"fills of more than was left", c.overfills, 640},
        {"cancels", c.cancels, 1000},
        {"fills that took older orders with them", c.olderGone, 1000},
        {"fills of an order between those of a level", c.passedOver, 64},
        {"fills behind all orders of a level", c.ranOff, 74},
        {"levels dead with orders", c.deadWithOrders, 90},
        {"late and repeated orders", c.lateOrders, 2500},
        {"trades that wait", c.parked, 1500},
        {"waiting trades taken", c.parkedTaken, 650},
        {"trades lost", c.lost, 4000},
        {"repeated trades", c.seenTrades, 1100},
        {"orders consumed by a history", c.consumedOrders, 6200},
        {"trades of consumed orders", c.skippedTrades, 5100},
        {"ticks taken in silence", c.silentTicks, 1600},
        {"batches for an instrument of another market", c.otherMarkets, 4900},
        {"batches stopped by another instrument", c.stoppedBatches, 28},
        {"auction snapshots", c.auctions, 300},
        {"old snapshots", c.oldSnapshots, 980},
        {"queues that are old or of an auction", c.refusedQueues, 1400},
        {"pairs", c.pairs, 950},
        {"rows with content", c.filledRows, 10000},
        {"rows with a queue", c.assignedRows, 4200},
        {"emptied lists", c.emptiedLists, 310},
        {"lists left alone", c.keptLists, 2000},
        {"levels handed out", c.levelsFound, 1300},
    });
}

TEST(QueueGenerator, shouldMakeTheSameStepsWhenTheSeedIsTheSame)
{
    expectStepsToGoByTheSeed(&makeModelSteps);
}

} // namespace
