#pragma once

#include "tests/tessimodel/oracle/lists/liststreams.h"

#include <deque>
#include <functional>

// What the two naive lists have in common.
namespace tests::oracle::lists {

// What the streams made happen, so that a generator which no longer makes anything happen is found out.
struct Counters {
    // both lists
    int foreignBatches = 0;
    int foreignAppends = 0;
    int refusedRows = 0;
    int passedRows = 0; // under a filter that refuses some
    // order list
    int orderRows = 0;
    int cancelsByOrder = 0;
    int cancelsByTrade = 0;
    int cancelsOfUnknown = 0;
    int cancelsPassed = 0;
    int repeatedSeqs = 0; // a seq, or its low 32 bits, came before
    int sideSwitches = 0; // rows that a side switch stopped
    int cancelSwitches = 0;
    int rangeRefusals = 0;
    int timeRefusals = 0;
    int unnamedModes = 0;
    // trade list
    int tradeRows = 0;
    int emptyTrades = 0;
    int waits = 0;
    int waitedTaken = 0;
    int chainsOfThree = 0;
    int runsOfThree = 0;
    int partedNumbers = 0; // the row's number is not its place
    int minuteOfMinusOne = 0;
    int droppedQuotes = 0; // the day's volume did not grow
    int closedPairs = 0;
    int closedByTime = 0;
    int closedByDifference = 0;
    int exactPairs = 0;
    int ties = 0;
    int emptyPairs = 0; // (p, p) of a snapshot without a best row
    int overwrittenPairs = 0;
    int openPairs = 0;
    int ranOff = 0;        // with a best row that is forgotten
    int begunAnewOpen = 0; // trade histories that begin while a snapshot waits for its rows
    int wholeTargets = 0;  // not lessened by the snapshot before, in the after-hours phase
    int foreignMatches = 0;
    int repricedNext = 0; // of the snapshot that is to be matched next
    int splits = 0;       // written
    int openSplits = 0;   // answered only
    int splitsToTheEnd = 0;
    int restOfRows = 0;
    int knownOrders = 0;
    int unknownOrders = 0;
    int longWalks = 0; // a chain walk that is stopped after as many links as there are rows
    int dealKinds[5] = {};
    int viewChanges = 0;
    int viewsOfRows = 0;
};

// Shares as hands in a row of the lists: rounded, and never less than one.
int roundedHands(__int64 volume, int unit);

// Of the day at UTC+8.
int secondOfDay(__int64 second);

__int64 secondOf(const Record& record);

bool isInTime(const Filter& filter, __int64 second, Counters& counters);
bool isInTheRange(const Filter& filter, int hands, double amount, Counters& counters);

// How many rows up to this one are of its second without a break; the low 32 bits count.
template <class Rows>
int traceback(const Rows& rows, int index)
{
    if (index <= 0 || index >= static_cast<int>(rows.size()))
        return 1;
    int count = 1;
    for (auto row = static_cast<std::size_t>(index); row > 0; --row, ++count) {
        if (static_cast<int>(rows.at(row - 1)->time) != static_cast<int>(rows.at(row)->time))
            break;
    }
    return count;
}

// The work that callbacks queue until work() is called, and the gate before it.
class NaiveStrand {
public:
    explicit NaiveStrand(Counters& counters)
        : m_counters(counters)
    {}

    // `followed` is looked at when the work is done.
    void post(const int& followed, const BatchPtr& batch, const std::function<void()>& worker);
    void work();

private:
    Counters& m_counters;
    std::deque<std::function<void()>> m_tasks;
};

} // namespace tests::oracle::lists
