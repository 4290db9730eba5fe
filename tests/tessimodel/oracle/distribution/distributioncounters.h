#pragma once

#include <array>

namespace tests::oracle::distribution {

// How often each rule mattered.
struct DistributionCounters {
    // Batches
    int dropped = 0; // without an instrument
    int otherKinds = 0;
    int live = 0;
    int emptyLive = 0;
    int histories = 0;
    int emptyHistories = 0;
    int pieces = 0;
    int emptyPieces = 0;
    int withoutInstrument = 0; // threads that found none any more

    // Snapshots
    int foreign = 0;
    int late = 0;        // left out
    int lateButKept = 0; // of an instrument without an after-hours phase
    int noVolume = 0;
    int indexWithoutVolume = 0;
    int falls = 0;
    int negative = 0; // differences that lose their sign
    int wrapped = 0;  // and that wrap
    int smallest = 0; // INT_MIN, which keeps its sign
    int buys = 0;
    int sells = 0;
    int stillPrices = 0;
    int firstBuys = 0;
    int firstSells = 0;
    int firstWithoutDate = 0;
    int firstAtClose = 0;      // and sells
    int firstNearClose = 0;    // above it by no more than the tolerance
    int firstOfOtherFacts = 0; // the key gives another close than the instrument followed

    // Ticks
    std::array<int, 3> ticks{}; // of snapshots of level 1, of level 2, of the broker's
    int dropsWithoutVolume = 0;
    int dropsBelowZero = 0;
    int indexKept = 0; // of volume 0 or below
    int joined = 0;
    int joinedNearby = 0;
    int joinedAtHalf = 0; // exactly half a tick away
    int opened = 0;
    int openedAtEnd = 0;
    int openedOfNan = 0;
    int openedThoughThere = 0; // the bisection misses a row that would do
    int largest = 0;
    int notLargest = 0;
    int overflows = 0;

    // Series
    int seriesRows = 0;
    int seriesSkipped = 0;
    int seriesFirst = 0;
    int seriesFirstOfMany = 0; // though there are ticks
    int seriesUnfit = 0;       // volumes that do not fit an int
    int seriesCut = 0;
    int pendingFirst = 0;
    int pendingFirstOfAll = 0; // with no ticks before
    int pendingLater = 0;
    int indexLikes = 0;
};

} // namespace tests::oracle::distribution
