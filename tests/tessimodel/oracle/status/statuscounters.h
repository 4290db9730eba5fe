#pragma once

#include <array>

namespace tests::oracle::status {

// How often each rule mattered.
struct StatusCounters {
    int withoutBook = 0; // snapshots of a market that has none
    int noSnapshots = 0;
    std::array<int, 2> books{}; // level 1, level 2
    int previousGiven = 0;
    int previousOfOtherType = 0;

    // Changes at a price
    int matches = 0;
    int matchesOfOtherRow = 0;
    int matchesOfUnusedRow = 0;
    int matchesOfSeveralRows = 0; // of which the first counts
    int barelyMissed = 0;         // further than a tenth of the tick, and not further than a fifth
    int nothingThere = 0;
    int emptyLevels = 0;
    int wrappedDeltas = 0;

    // Last price and last close
    int closesWritten = 0;
    int closesWrittenAlternatively = 0;
    int nearlyMissing = 0; // last prices just above the tolerance
    int writtenUnusable = 0;
    int infiniteLast = 0;
    int missingLast = 0; // DBL_MAX, which counts
    int closesTaken = 0;
    int closesBelowTick = 0;
    int closesAtTick = 0; // above the tick by no more than the tolerance
    int closesNotFinite = 0;
    int closesOfInstrument = 0; // getLastClosePrice

    // Live
    int rises = 0;
    int falls = 0;
    int stands = 0;
    int closingShown = 0;
    int closingMissing = 0;
    int closingMoved = 0;
    int phasesEntered = 0;
    int wideAfterHoursVolumes = 0; // of which 32 bits are kept
    int wrappedSteps = 0;

    // History
    int emptyFirst = 0;
    int emptyLater = 0;
    int histories = 0;
    int pieces = 0;
    int foreignLast = 0;
    int closingOfHistory = 0;
    int closingAtFirst = 0;
    int closingPrevForeign = 0;
    int closingVolumes = 0;
    int closingWithoutVolume = 0;
    int skippedWithoutPhase = 0;
    int countsAnew = 0;
    int skippedAcrossPhase = 0; // where the market is one of those
    int acrossPhaseElsewhere = 0;
    int historySteps = 0;
    int historyWithoutStep = 0;
    int historyAtEndOfPhase = 0;

    int connectedAtEndOfPhase = 0;
    int connected = 0;
};

} // namespace tests::oracle::status
