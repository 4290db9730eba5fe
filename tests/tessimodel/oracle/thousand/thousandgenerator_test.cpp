// Whether the streams are still worth playing: an oracle whose streams make nothing happen finds nothing.

#include "tests/tessimodel/oracle/expectations.h"
#include "tests/tessimodel/oracle/thousand/naivequoterthousand.h"
#include "tests/tessimodel/oracle/thousand/thousandgenerator.h"

namespace {

using namespace tests::oracle;
using namespace tests::oracle::thousand;

constexpr int kStreams = 300;

// Plays steps on the naive model alone.
class NaiveRun {
public:
    NaiveRun(Counters& shared, ThousandCounters& counted, bool suppresses)
        : m_model(suppresses, m_manager, shared, counted)
    {}

    void play(const std::vector<ThousandStep>& steps)
    {
        for (const ThousandStep& step : steps) {
            if (step.batch)
                m_model.callback(step);
            if (step.batch && step.works)
                m_model.work();
            apply(step);
            m_model.compareNewerQuote();
        }
    }

private:
    void apply(const ThousandStep& step)
    {
        using enum ThousandStep::Action;
        if (step.action == Work)
            m_model.work();
        else if (step.action == Clear)
            m_model.clear();
        else if (step.action == Follow)
            m_model.setStock(step.instrument);
        else if (step.action == Read)
            m_model.checkUpdate(m_panel, step.byQuoter);
        else if (step.action == ReadSide)
            m_model.getSide(step.flag, step.byQuoter, m_panel);
        else if (step.action == Reserve)
            m_model.reserved = m_model.reservedTime(step);
        else if (step.action == Own)
            fill(step.price);
    }

    void fill(double price)
    {
        m_model.askRows[7] = std::make_shared<NaiveRow>(NaiveRow{price, 5, -1, 2});
        m_model.loadedHistory = 3;
    }

    NaiveManager m_manager;
    NaiveQuoterThousand m_model;
    NaivePanel m_panel;
};

TEST(ThousandGenerator, shouldMakeEveryRuleMatterWhenManyStreamsAreMade)
{
    Counters shared;
    ThousandCounters c;
    for (int seed = 1; seed <= kStreams; ++seed)
        NaiveRun(shared, c, seed % 6 == 0).play(makeThousandSteps(static_cast<unsigned long long>(seed)));
    expectCounts({
        {"records", c.records, 13000},
        {"records that move the base", c.newBases, 10000},
        {"records that leave it", c.keptBases, 3000},
        {"changes at a price", c.deltas, 43000},
        {"prices met twice", c.pricesTwice, 8000},
        {"lists of unequal length", c.unequalLists, 1500},
        {"rows with a change", c.rowsWithDelta, 27000},
        {"rows whose change is old", c.rowsOfOldDelta, 38000},
        {"rows of a level-2 snapshot with a change", c.quoterRowsWithDelta, 8500},
        {"reads before a record", c.readsWithoutRecord, 1200},
        {"sides read before a level-2 snapshot", c.readsWithoutSnapshot, 310},
        {"sides read without an instrument", c.readsWithoutStock, 250},
        {"reads without flags", c.emptyFlags, 2000},
        {"flags raised by crossing rows", c.raisedByTrim, 950},
        {"trimmed crossings", shared.trims, 670},
        {"bases found in a batch", c.basesFound, 180},
        {"first snapshots without a base", c.firstBases, 630},
        {"snapshots ahead of the reserved time", c.newerQuotes, 8900},
        {"snapshots at the limit ahead of it", c.quotesAtLimit, 200},
        {"snapshots near it", c.nearQuotes, 6700},
        {"snapshots of a model with a history", c.flagsOfSnapshots, 1100},
        {"rows handed to the manager", c.handedRows, 160},
        {"steps into the after-hours phase", shared.afterHoursSteps, 75},
        {"auction snapshots", shared.auctions, 1100},
        {"batches of another instrument", shared.foreignBatches, 2100},
    });
}

TEST(ThousandGenerator, shouldMakeTheSameStepsWhenTheSeedIsTheSame)
{
    expectStepsToGoByTheSeed(&makeThousandSteps);
}

} // namespace
