// Whether the streams are still worth playing: an oracle whose streams make nothing happen finds nothing.

#include "tests/tessimodel/oracle/distribution/distributiongenerator.h"
#include "tests/tessimodel/oracle/distribution/naiveside.h"
#include "tests/tessimodel/oracle/expectations.h"
#include "tests/tessimodel/oracle/snapshots/snapshotruns.h"

#include <array>
#include <map>

namespace {

using namespace tests::oracle;
using namespace tests::oracle::distribution;

// Steps played on the naive distribution alone.
struct NaiveRun {
    DistributionCounters counted;
    snapshots::StepCounts<DistributionStep> steps;
    std::map<std::size_t, int> met;                 // by the number of batches that come together
    std::array<std::array<int, 2>, 2> followedBy{}; // m_hasAfterHours, m_hasAfterHoursSz
    int differentOrders = 0;
};

bool differs(const NaiveDistribution& a, const NaiveDistribution& b)
{
    Lines one;
    Lines other;
    writeNaive(one, a, true);
    writeNaive(other, b, true);
    return !(one == other);
}

void countTogether(NaiveRun& run, const DistributionStep& step)
{
    run.steps.countBatch(step);
    ++run.met[1 + step.pieces.size() + step.pushes.size() + step.instruments.size()];
}

void play(NaiveRun& run, standin::Terminal& terminal, const std::vector<DistributionStep>& steps)
{
    using enum DistributionStep::Action;
    NaiveSide naive(run.counted);
    for (const DistributionStep& step : steps) {
        if (step.action == Renew)
            terminal.instruments.add(snapshots::renewed(step.number, step.facts));
        naive.apply(step);
        run.steps.count(step);
        const NaiveDistribution& model = naive.right().front();
        if (step.action == Follow)
            ++run.followedBy[model.m_hasAfterHours][model.m_hasAfterHoursSz];
        if (step.action == Together)
            countTogether(run, step);
        run.differentOrders += differs(model, naive.right().back()) ? 1 : 0;
        naive.settle(Lines());
    }
}

const NaiveRun& manyStreams()
{
    static const auto run = snapshots::playManyStreams<NaiveRun>(makeDistributionSteps, play);
    return run;
}

TEST(DistributionGenerator, shouldReachEveryInputWhenManyStreamsAreMade)
{
    const NaiveRun& run = manyStreams();
    run.steps.expectEnough();
    for (const std::size_t batches : {1U, 2U, 3U, 4U})
        EXPECT_TRUE(run.met.contains(batches)) << batches << " batches together";
    for (const auto& row : run.followedBy) {
        for (const int follows : row)
            EXPECT_GE(follows, 5);
    }
}

TEST(DistributionGenerator, shouldMakeEveryRuleMatterWhenManyStreamsAreMade)
{
    const NaiveRun& run = manyStreams();
    const DistributionCounters& c = run.counted;
    expectCounts({
        {"histories that meet and whose order shows", run.differentOrders, 610},
        {"batches without an instrument", c.dropped, 1700},
        {"batches of other kinds", c.otherKinds, 1800},
        {"live batches", c.live, 15000},
        {"empty live batches", c.emptyLive, 440},
        {"histories", c.histories, 1400},
        {"empty histories", c.emptyHistories, 240},
        {"pieces of history", c.pieces, 2500},
        {"empty pieces", c.emptyPieces, 310},
        {"threads that find no instrument", c.withoutInstrument, 1100},
        {"records that are no snapshots", c.foreign, 2500},
        {"snapshots left out after hours", c.late, 12000},
        {"snapshots kept after hours", c.lateButKept, 18000},
        {"snapshots without volume", c.noVolume, 1200},
        {"snapshots of an index without volume", c.indexWithoutVolume, 510},
        {"falling day volumes", c.falls, 17000},
        {"differences below zero", c.negative, 17000},
        {"differences that wrap", c.wrapped, 560},
        {"differences that keep their sign", c.smallest, 230},
        {"buys", c.buys, 62000},
        {"sells", c.sells, 42000},
        {"prices that stood still", c.stillPrices, 16000},
        {"first ticks that buy", c.firstBuys, 540},
        {"first ticks that sell", c.firstSells, 2700},
        {"first ticks without a date", c.firstWithoutDate, 1400},
        {"first ticks at the close", c.firstAtClose, 66},
        {"first ticks hardly above the close", c.firstNearClose, 10},
        {"first ticks whose key has another close", c.firstOfOtherFacts, 120},
        {"ticks of level 1", c.ticks[0], 33000},
        {"ticks of level 2", c.ticks[1], 39000},
        {"ticks of the broker's", c.ticks[2], 20000},
        {"ticks dropped without volume", c.dropsWithoutVolume, 14000},
        {"ticks dropped below zero", c.dropsBelowZero, 620},
        {"ticks of an index without volume", c.indexKept, 7900},
        {"questions about what is like an index", c.indexLikes, 8400},
        {"ticks that join a row", c.joined, 62000},
        {"ticks that join a row nearby", c.joinedNearby, 33000},
        {"ticks that join at half a tick", c.joinedAtHalf, 810},
        {"rows opened", c.opened, 32000},
        {"rows opened at the end", c.openedAtEnd, 11000},
        {"rows of no price", c.openedOfNan, 61},
        {"rows opened though one was there", c.openedThoughThere, 740},
        {"new largest rows", c.largest, 22000},
        {"rows that are not the largest", c.notLargest, 40000},
        {"totals that wrap", c.overflows, 560},
        {"rows of a series", c.seriesRows, 2200},
        {"rows of a series without volume", c.seriesSkipped, 90},
        {"first rows of a series", c.seriesFirst, 650},
        {"first rows of a series behind other ticks", c.seriesFirstOfMany, 480},
        {"volumes that fit no int", c.seriesUnfit, 140},
        {"series cut short", c.seriesCut, 160},
        {"first pending ticks", c.pendingFirst, 280},
        {"first pending ticks of all", c.pendingFirstOfAll, 4},
        {"later pending ticks", c.pendingLater, 280},
    });
}

TEST(DistributionGenerator, shouldMakeTheSameStepsWhenTheSeedIsTheSame)
{
    expectStepsToGoByTheSeed(&makeDistributionSteps);
}

} // namespace
