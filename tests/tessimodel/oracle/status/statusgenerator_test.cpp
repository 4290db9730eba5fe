// Whether the streams are still worth playing: an oracle whose streams make nothing happen finds nothing.

#include "tests/tessimodel/oracle/expectations.h"
#include "tests/tessimodel/oracle/snapshots/snapshotruns.h"
#include "tests/tessimodel/oracle/status/naivestatus.h"
#include "tests/tessimodel/oracle/status/statusgenerator.h"
#include "tests/tessimodel/oracle/status/statusplayer.h"

namespace {

using namespace tests::oracle;
using namespace tests::oracle::status;

// Steps played on the naive summary alone.
struct NaiveRun {
    StatusCounters counted;
    snapshots::StepCounts<StatusStep> steps;
};

void play(NaiveRun& run, standin::Terminal& terminal, const std::vector<StatusStep>& steps)
{
    StatusPlayer<NaiveStatus> player([&run](std::optional<NaiveStatus>& model) { model.emplace(run.counted); });
    for (const StatusStep& step : steps) {
        applyToTerminal(terminal, step);
        player.apply(step);
        player.inUse().getLastClosePrice(); // as a panel does that shows the rise
        run.steps.count(step);
    }
}

const NaiveRun& manyStreams()
{
    static const auto run = snapshots::playManyStreams<NaiveRun>(makeStatusSteps, play);
    return run;
}

TEST(StatusGenerator, shouldReachEveryInputWhenManyStreamsAreMade)
{
    manyStreams().steps.expectEnough();
}

TEST(StatusGenerator, shouldMakeEveryRuleMatterWhenManyStreamsAreMade)
{
    const StatusCounters& c = manyStreams().counted;
    expectCounts({
        {"snapshots of a market without book", c.withoutBook, 1600},
        {"books of what is no snapshot", c.noSnapshots, 240},
        {"books of level 1", c.books[0], 9400},
        {"books of level 2", c.books[1], 6200},
        {"books with a previous one", c.previousGiven, 3400},
        {"previous ones of another type", c.previousOfOtherType, 270},
        {"levels whose price was there", c.matches, 93000},
        {"levels whose price was in another row", c.matchesOfOtherRow, 61000},
        {"levels that match an unused row", c.matchesOfUnusedRow, 2300},
        {"levels that match several rows", c.matchesOfSeveralRows, 25000},
        {"levels that barely match none", c.barelyMissed, 7300},
        {"levels whose price was not there", c.nothingThere, 100000},
        {"levels without a price", c.emptyLevels, 22000},
        {"changes that wrap", c.wrappedDeltas, 910},
        {"last closes written into a snapshot", c.closesWritten, 820},
        {"last closes written as alternative price", c.closesWrittenAlternatively, 340},
        {"last closes written that are no price", c.writtenUnusable, 84},
        {"last prices that are hardly there", c.nearlyMissing, 490},
        {"last prices that are not finite", c.infiniteLast, 100},
        {"last prices that are none", c.missingLast, 39},
        {"last closes taken", c.closesTaken, 13000},
        {"last closes below the tick", c.closesBelowTick, 1700},
        {"last closes hardly above the tick", c.closesAtTick, 160},
        {"last closes that are not finite", c.closesNotFinite, 720},
        {"last closes of the instrument", c.closesOfInstrument, 1300},
        {"live rises", c.rises, 6800},
        {"live falls", c.falls, 2100},
        {"live volumes that stood still", c.stands, 2300},
        {"steps that wrap", c.wrappedSteps, 10},
        {"books of the close", c.closingShown, 580},
        {"ends of a phase without a close", c.closingMissing, 110},
        {"snapshots that may be the close", c.closingMoved, 5200},
        {"phases entered", c.phasesEntered, 390},
        {"after-hours volumes beyond 32 bits", c.wideAfterHoursVolumes, 9},
        {"empty batches that clear", c.emptyFirst, 330},
        {"empty batches that do nothing", c.emptyLater, 520},
        {"histories", c.histories, 1600},
        {"pieces of history", c.pieces, 1000},
        {"histories that end with no snapshot", c.foreignLast, 48},
        {"closes found in a history", c.closingOfHistory, 1300},
        {"closes that are the first record", c.closingAtFirst, 270},
        {"closes behind another record", c.closingPrevForeign, 97},
        {"tick volumes of a close", c.closingVolumes, 840},
        {"closes without a tick volume", c.closingWithoutVolume, 240},
        {"late ones skipped without a phase", c.skippedWithoutPhase, 570},
        {"counts that start anew", c.countsAnew, 88},
        {"skipped across the phase", c.skippedAcrossPhase, 210},
        {"counted across the phase on other markets", c.acrossPhaseElsewhere, 34},
        {"steps found in a history", c.historySteps, 1400},
        {"histories without a step", c.historyWithoutStep, 1100},
        {"histories up to the end of a phase", c.historyAtEndOfPhase, 100},
        {"ends of a phase connected", c.connectedAtEndOfPhase, 49},
        {"pairs connected", c.connected, 1900},
    });
}

TEST(StatusGenerator, shouldMakeTheSameStepsWhenTheSeedIsTheSame)
{
    expectStepsToGoByTheSeed(&makeStatusSteps);
}

} // namespace
