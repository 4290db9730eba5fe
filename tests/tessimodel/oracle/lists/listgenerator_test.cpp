// Whether the streams are still worth playing: an oracle whose streams make nothing happen finds nothing.

#include "tests/tessimodel/oracle/expectations.h"
#include "tests/tessimodel/oracle/lists/listgenerator.h"
#include "tests/tessimodel/oracle/lists/naiveorderlist.h"
#include "tests/tessimodel/oracle/lists/naivetradelist.h"

namespace {

using namespace tests::oracle;
using namespace tests::oracle::lists;

constexpr int kStreams = 300;

template <class List>
void applyCommon(List& list, const ListStep& step)
{
    using enum ListStep::Action;
    switch (step.action) {
    case Orders:
    case Trades:
    case Snapshots:
        list.callback(step);
        if (step.works)
            list.work();
        break;
    case Work:
        list.work();
        break;
    case Clear:
        list.clear();
        break;
    case ClearOrders:
        list.clearEntrusts();
        break;
    case ClearTrades:
        list.clearTransactions();
        break;
    case Follow:
        list.setStock(step.instrument);
        break;
    case SetFilter:
        list.setFilterParam(step.filter);
        break;
    case Append:
        list.append(step.instrument, step.record);
        break;
    default:
        break;
    }
}

void applyToView(NaiveTradeList& list, const ListStep& step)
{
    using enum ListStep::Action;
    NaiveTradeList::SeqPair rows;
    switch (step.action) {
    case ClearQuotes:
        list.clearQuotes();
        break;
    case Match:
        list.tryMatch(step.instrument);
        break;
    case Reprice:
        list.reprice(step.record, step.price);
        break;
    case Find:
        list.findSeq(step.first, step.second, rows);
        break;
    case Split:
        list.tryMatch(step.first, step.second, rows);
        break;
    case View:
        list.setViewTimeRange(step.first, step.second);
        break;
    case Recalculate:
        list.recalcMaxMinSeqAndPrice();
        break;
    default:
        break;
    }
}

TEST(ListGenerator, shouldMakeEveryRuleMatterWhenManyOrderListsAreFed)
{
    Counters c;
    for (int seed = 1; seed <= kStreams; ++seed) {
        NaiveOrderList list(c);
        for (const ListStep& step : makeOrderListSteps(static_cast<unsigned long long>(seed)))
            applyCommon(list, step);
    }
    expectCounts({
        {"batches of another instrument", c.foreignBatches, 3000},
        {"records as of another instrument", c.foreignAppends, 410},
        {"orders", c.orderRows, 36000},
        {"cancels sent as orders", c.cancelsByOrder, 890},
        {"cancels sent as trades", c.cancelsByTrade, 2800},
        {"cancels whose order is not known", c.cancelsOfUnknown, 3700},
        {"cancels that pass", c.cancelsPassed, 3100},
        {"seqs that come again", c.repeatedSeqs, 2700},
        {"orders that pass", c.passedRows, 58000},
        {"orders refused by their size or time", c.refusedRows, 28000},
        {"rows of a time that is filtered away", c.timeRefusals, 8700},
        {"rows of a size that is filtered away", c.rangeRefusals, 21000},
        {"orders of a side that is switched off", c.sideSwitches, 9600},
        {"cancels of a side that is switched off", c.cancelSwitches, 510},
        {"rows under a mode without a name", c.unnamedModes, 10000},
    });
}

TEST(ListGenerator, shouldMakeEveryRuleMatterWhenManyTradeListsAreFed)
{
    Counters c;
    for (int seed = 1; seed <= kStreams; ++seed) {
        NaiveTradeList list(c);
        for (const ListStep& step : makeTradeListSteps(static_cast<unsigned long long>(seed))) {
            applyCommon(list, step);
            applyToView(list, step);
        }
        for (const auto& row : list.m_rows) {
            for (const bool isBuy : {true, false}) {
                list.getEntrustVolume(row, isBuy);
                list.getDataKind(row, isBuy);
            }
        }
    }
    expectCounts({
        {"batches of another instrument", c.foreignBatches, 1200},
        {"records as of another instrument", c.foreignAppends, 190},
        {"rows", c.tradeRows, 24000},
        {"cancels and trades without volume", c.emptyTrades, 2500},
        {"trades before the history", c.waits, 2300},
        {"of these taken", c.waitedTaken, 770},
        {"chains of three rows", c.chainsOfThree, 6700},
        {"runs of three rows", c.runsOfThree, 5100},
        {"rows that pass", c.passedRows, 28000},
        {"rows that are refused", c.refusedRows, 15000},
        {"rows whose number is not their place", c.partedNumbers, 13000},
        {"minutes that begin with -1", c.minuteOfMinusOne, 270},
        {"snapshots that are not kept", c.droppedQuotes, 4000},
        {"closed pairs", c.closedPairs, 4200},
        {"of these exact", c.exactPairs, 1500},
        {"walks ended by a later row", c.closedByTime, 5500},
        {"walks ended by a worse difference", c.closedByDifference, 2000},
        {"ties", c.ties, 330},
        {"snapshots without a best row", c.emptyPairs, 3300},
        {"pairs written over another", c.overwrittenPairs, 3400},
        {"open pairs", c.openPairs, 6000},
        {"best rows forgotten", c.ranOff, 4400},
        {"trade histories while a snapshot waits for its rows", c.begunAnewOpen, 65},
        {"targets of the whole volume", c.wholeTargets, 95},
        {"matches as of another instrument", c.foreignMatches, 39},
        {"new prices of the next snapshot", c.repricedNext, 95},
        {"splits of a closed pair", c.splits, 190},
        {"splits of an open pair", c.openSplits, 310},
        {"splits up to the last row", c.splitsToTheEnd, 150},
        {"searches behind the last snapshot", c.restOfRows, 320},
        {"sizes of known orders", c.knownOrders, 19000},
        {"sizes of unknown orders", c.unknownOrders, 6200},
        {"rows alone in their chain", c.dealKinds[0], 2000},
        {"rows next in their chain", c.dealKinds[1], 6900},
        {"rows apart in their chain", c.dealKinds[2], 2600},
        {"rows apart at another price", c.dealKinds[3], 11000},
        {"rows next at another price", c.dealKinds[4], 2000},
        {"changed views", c.viewChanges, 1300},
        {"views over rows", c.viewsOfRows, 1200},
        {"walks that are stopped", c.longWalks, 590},
    });
}

TEST(ListGenerator, shouldMakeTheSameStepsWhenTheSeedIsTheSame)
{
    expectStepsToGoByTheSeed(&makeOrderListSteps);
    expectStepsToGoByTheSeed(&makeTradeListSteps);
}

} // namespace
