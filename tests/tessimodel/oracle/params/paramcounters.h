#pragma once

#include <array>
#include <cstddef>

namespace tests::oracle::params {

// How often a snapshot came by class of its instrument, level and status.
struct StatusTable {
    static constexpr int kStatuses = 31; // 0 to 30

    void count(bool afterHoursType, bool levelOne, int status)
    {
        if (status >= 0 && status < kStatuses)
            ++counts[afterHoursType][levelOne][static_cast<std::size_t>(status)];
    }

    std::array<std::array<std::array<int, kStatuses>, 2>, 2> counts{};
};

// How often each rule mattered.
struct ParamCounters {
    int unknownIds = 0;

    // Set-up
    int listChanges = 0;
    int sameLists = 0;
    int unknownInstruments = 0;
    int newLoans = 0;
    int convertibles = 0; // that would have been counted in shares
    int registered = 0;
    int gdrSetUps = 0;
    int clearedInstruments = 0;

    // Where a snapshot is taken
    StatusTable calls;
    StatusTable looksBack;

    // The gates
    int settlements = 0;
    int counted = 0;
    int refused = 0;
    int stillButFirst = 0;
    int stillInAuction = 0;
    int stillButBrovan = 0;
    int latePassed = 0;
    int lateRefused = 0;
    int foreign = 0;

    // Rows
    int moved = 0;
    int still = 0;
    int changesOfLast = 0;
    int changesOfSubstitute = 0;
    int changesOfNothing = 0;
    int auctionSubstitutes = 0;
    int otherSubstitutes = 0;
    int unusableLevelOne = 0;
    int unusableLevelTwo = 0;
    int iopvs = 0;
    int lateWithDay = 0;
    int lateWithoutDay = 0;
    int lateWithOtherStream = 0;
    int premiums = 0;
    int discounts = 0;
    int zeroPremiums = 0;
    int noAmplitudes = 0;
    int noTurnovers = 0;
    int firstLate = 0;
    int ownLimits = 0;

    // The history pass
    int historyEntries = 0;
    int skippedInHistory = 0;
    int lateInHistory = 0;
    int lateStepsInHistory = 0;
    int passesOfBothStreams = 0;

    // The look back
    int foreignPast = 0;
    int emptyPast = 0;
    int pastDays = 0;
    int pastCloses = 0;
    int pastLates = 0;
    int pastLatesWithOtherStream = 0;
    int pastPremiums = 0;
    int pastUnknown = 0;
    int pastKnown = 0;
    int pastUncounted = 0;
    int pastBooks = 0;

    // Side inputs
    int auxesKept = 0;
    int auxesTaken = 0;
    int auxesOfEntries = 0;
    int pastDates = 0;
    int todayDates = 0;
    int otherDates = 0;
};

} // namespace tests::oracle::params
