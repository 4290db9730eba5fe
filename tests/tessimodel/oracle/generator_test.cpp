// Whether the streams are still worth playing: an oracle whose streams make nothing happen finds nothing.

#include "tests/tessimodel/oracle/expectations.h"
#include "tests/tessimodel/oracle/generator.h"
#include "tests/tessimodel/oracle/player.h"

#include <optional>

namespace {

using namespace tests::oracle;

constexpr int kStreams = 300;
constexpr int kSteps = 200;

// Plays streams on the naive model alone.
class NaiveRun {
public:
    explicit NaiveRun(Counters& counters)
        : m_counters(counters)
    {}

    void play(const Stream& stream)
    {
        m_model.emplace(stream.suppressTickFlags, m_manager, m_counters);
        m_model->setStock(stream.instrument);
        for (const Step& step : stream.steps) {
            apply(step);
            const NaiveBook& book = m_model->book;
            if (m_model->loadedHistory == 3 && book.bids.levels.size() >= 3 && book.asks.levels.size() >= 3)
                ++m_stepsWithBook;
        }
        m_model->clear(); // counts what is counted for a whole day
    }

    int stepsWithBook() const { return m_stepsWithBook; }

private:
    void apply(const Step& step)
    {
        using enum Step::Action;
        if (step.action == Orders || step.action == Trades || step.action == Snapshots) {
            m_model->callback(step);
            if (step.works)
                m_model->work();
        } else if (step.action == Work) {
            m_model->work();
        } else if (step.action == Clear) {
            m_model->clear();
        } else if (step.action == Follow) {
            m_model->setStock(step.instrument);
        } else if (step.action == Read) {
            m_model->checkUpdate(m_panel);
        } else if (step.action == ReadSide) {
            m_model->getSide(step.flag, m_panel);
        } else if (step.action == Queue) {
            m_model->getQueue(step.flag, step.price);
        }
    }

    Counters& m_counters;
    int m_stepsWithBook = 0;
    NaiveManager m_manager;
    NaivePanel m_panel;
    std::optional<NaiveModel> m_model;
};

TEST(StreamGenerator, shouldMakeEveryRuleMatterWhenManyStreamsAreMade)
{
    Counters counters;
    int stepsWithBook = 0;
    for (int seed = 1; seed <= kStreams; ++seed) {
        NaiveRun run(counters);
        run.play(makeStream(static_cast<unsigned long long>(seed), kSteps));
        stepsWithBook += run.stepsWithBook();
    }
    expectCounts({
        {"steps on a book with three levels a side", stepsWithBook, 20000},
        {"built books", counters.builds, 500},
        {"reads of a book with three levels a side", counters.readsOfBook, 1300},
        {"fills", counters.fills, 2300},
        {"partial fills", counters.partialFills, 3300},
        {"cancels", counters.cancels, 900},
        {"late and repeated orders", counters.lateOrders, 2500},
        {"orders consumed by a history", counters.consumedOrders, 5000},
        {"waiting trades taken", counters.parkedTaken, 600},
        {"trades forgotten", counters.forgotten, 3500},
        {"marks faded", counters.fadedMarks, 6000},
        {"trimmed crossings", counters.trims, 500},
        {"corrected rows", counters.correctedRows, 2300},
        {"inserted snapshot rows", counters.insertedRows, 500},
        {"erased rows", counters.erasedRows, 900},
        {"reads of saved rows", counters.savedRowsShown, 200},
        {"copies of queues", counters.queueCopies, 450},
        {"queues of the book's own", counters.ownQueues, 600},
        {"steps into the after-hours phase", counters.afterHoursSteps, 30},
        {"snapshots of a book without ticks", counters.snapshotsBeforeTicks, 15},
        {"auction snapshots", counters.auctions, 450},
        {"batches of another instrument", counters.foreignBatches, 600},
    });
}

TEST(StreamGenerator, shouldMakeTheSameStreamWhenTheSeedIsTheSame)
{
    expectStepsToGoByTheSeed([](unsigned long long seed) { return makeStream(seed, kSteps).steps; });
}

} // namespace
