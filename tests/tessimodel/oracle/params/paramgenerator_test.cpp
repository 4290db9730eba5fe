// Whether the streams are still worth playing: an oracle whose streams make nothing happen finds nothing.

#include "datasource/datacenter.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "tests/tessimodel/oracle/expectations.h"
#include "tests/tessimodel/oracle/params/naiveside.h"
#include "tests/tessimodel/oracle/params/paramgenerator.h"
#include "tests/tessimodel/oracle/params/paramplayer.h"
#include "tests/tessimodel/oracle/params/paramstate.h"
#include "User/userconfig.h"

#include <fmt/format.h>

#include <climits>
#include <map>

namespace {

using namespace tests::oracle;
using namespace tests::oracle::params;

constexpr int kStreams = 300;

// Catalogues by the answers that decide on their lists: the data centre's Brovan mode, the user's, level 2.
using CatalogueTable = std::array<std::array<std::array<int, 2>, 2>, 2>;

std::optional<bool> isLevelOne(const RecordPtr& record)
{
    if (std::dynamic_pointer_cast<quoter::QuoterAllData>(record))
        return true;
    if (std::dynamic_pointer_cast<quoter::QuoterDepthData>(record))
        return false;
    return std::nullopt;
}

// Plays steps on the naive table alone.
class NaiveRun {
public:
    void play(standin::Terminal& terminal, const std::vector<ParamStep>& steps)
    {
        prepareParams(terminal);
        ParamPlayer<NaiveSide> player(NaiveSide{&m_counted});
        for (const ParamStep& step : steps) {
            applyToTerminal(terminal, step);
            const bool shown = player.apply(step).yes;
            ++m_actions[static_cast<std::size_t>(step.action)];
            countCatalogue(step, player.inUse().m_level2);
            if (step.action == ParamStep::Action::Follow)
                ++m_follows[step.number];
            if (step.action == ParamStep::Action::Quotes && shown && !step.records.empty()) {
                countStream(step);
                m_underChanging += player.inUse().m_hasGdr && player.inUse().m_gdrStock == changingReceipt() ? 1 : 0;
            }
            const auto lists = listsOf(player.inUse());
            const auto inForce = std::find(lists.begin(), lists.end(), player.inUse().m_paramList);
            if (inForce == lists.end())
                ++m_borrowedLists;
            else if (step.action == ParamStep::Action::Quotes)
                ++m_lists[static_cast<std::size_t>(inForce - lists.begin())];
        }
    }

    ParamCounters m_counted;
    std::array<int, ParamStep::kActions> m_actions{};
    std::array<int, 15> m_lists{}; // batches while it was in force
    int m_borrowedLists = 0;
    std::map<int, int> m_follows;   // by instrument
    int m_underChanging = 0;        // snapshots shown under the receipt whose facts change
    std::map<int, int> m_ignored;   // batches by the first argument of quoterCallback
    CatalogueTable m_made{};        // of new models
    CatalogueTable m_setAnew{};     // of models that were there
    int m_changesOfStream = 0;      // snapshots shown behind one of the other stream
    std::optional<bool> m_levelOne; // of the snapshot shown last

private:
    void countCatalogue(const ParamStep& step, bool level2)
    {
        using enum ParamStep::Action;
        if (step.action != Construct && step.action != Level2 && step.action != InitParams)
            return;
        const bool userBrovan = TC::getUserConfig() && TC::getUserConfig()->isBrovanQuoteMode();
        ++(step.action == Construct ? m_made : m_setAnew)[se::DataCenter::isBrovanQuoteMode()][userBrovan][level2];
    }

    void countStream(const ParamStep& step)
    {
        ++m_ignored[step.ignored];
        const std::optional<bool> levelOne = isLevelOne(step.records.back());
        if (!levelOne)
            return;
        m_changesOfStream += m_levelOne && *m_levelOne != *levelOne ? 1 : 0;
        m_levelOne = levelOne;
    }
};

NaiveRun playManyStreams()
{
    standin::Terminal terminal;
    NaiveRun run;
    for (int seed = 1; seed <= kStreams; ++seed)
        run.play(terminal, makeParamSteps(static_cast<unsigned long long>(seed)));
    return run;
}

const NaiveRun& manyStreams()
{
    static const NaiveRun run = playManyStreams();
    return run;
}

TEST(ParamGenerator, shouldMakeEveryRuleMatterWhenManyStreamsAreMade)
{
    const NaiveRun& run = manyStreams();
    for (std::size_t list = 0; list < run.m_lists.size(); ++list)
        EXPECT_GE(run.m_lists[list], 70) << "batches under list " << list;
    for (int instrument = 0; instrument < static_cast<int>(paramInstruments().size()); ++instrument)
        EXPECT_TRUE(run.m_follows.contains(instrument)) << paramNameOf(instrument);
    for (const int ignored : {0, 7, -1, INT_MIN, INT_MAX})
        EXPECT_GE(run.m_ignored.at(ignored), 1000) << "batches with the first argument " << ignored;
    for (std::size_t action = 0; action < run.m_actions.size(); ++action)
        EXPECT_GE(run.m_actions[action], 80) << "steps of action " << action;
    const ParamCounters& c = run.m_counted;
    expectCounts({
        {"ids outside the catalogue", c.unknownIds, 230},
        {"changes of the list in force", c.listChanges, 860},
        {"instruments under the same list", c.sameLists, 240},
        {"unknown instruments", c.unknownInstruments, 32},
        {"bonds counted in bonds", c.newLoans, 51},
        {"convertibles that stay with hands", c.convertibles, 20},
        {"instruments under registration rules", c.registered, 210},
        {"receipts at set-up", c.gdrSetUps, 130},
        {"clears with an instrument", c.clearedInstruments, 440},
        {"settlements", c.settlements, 3000},
        {"snapshots that count", c.counted, 10000},
        {"refused without a rise", c.refused, 3700},
        {"shown as the first without a rise", c.stillButFirst, 860},
        {"shown in an auction without a rise", c.stillInAuction, 710},
        {"shown in the broker's mode without a rise", c.stillButBrovan, 1600},
        {"shown after hours", c.latePassed, 960},
        {"refused after hours", c.lateRefused, 350},
        {"records that are no snapshot", c.foreign, 460},
        {"prices that moved", c.moved, 10000},
        {"prices that stood still", c.still, 3900},
        {"changes of the last price", c.changesOfLast, 11000},
        {"changes of a substitute", c.changesOfSubstitute, 590},
        {"changes without any price", c.changesOfNothing, 1800},
        {"substitutes in an auction", c.auctionSubstitutes, 350},
        {"substitutes on other markets", c.otherSubstitutes, 410},
        {"level-1 snapshots without a day price", c.unusableLevelOne, 240},
        {"level-2 snapshots without a day price", c.unusableLevelTwo, 180},
        {"net values of a fund", c.iopvs, 430},
        {"after-hours rows with the day's totals", c.lateWithDay, 720},
        {"after-hours rows without the day's totals", c.lateWithoutDay, 150},
        {"after-hours rows behind a day of the other stream", c.lateWithOtherStream, 83},
        {"premiums", c.premiums, 350},
        {"discounts", c.discounts, 660},
        {"premiums of zero", c.zeroPremiums, 1000},
        {"snapshots under a receipt that changes", run.m_underChanging, 1400},
        {"amplitudes without a close", c.noAmplitudes, 230},
        {"turnovers of an unknown float", c.noTurnovers, 180},
        {"first snapshots after hours", c.firstLate, 310},
        {"limits of the broker's record", c.ownLimits, 800},
        {"history entries of a pass", c.historyEntries, 4500},
        {"snapshots skipped in a pass", c.skippedInHistory, 2200},
        {"after-hours snapshots in a pass", c.lateInHistory, 250},
        {"steps into the phase in a pass", c.lateStepsInHistory, 65},
        {"passes of both streams", c.passesOfBothStreams, 210},
        {"snapshots behind one of the other stream", run.m_changesOfStream, 1700},
        {"looks back at no snapshot", c.foreignPast, 220},
        {"looks back at an empty level 2", c.emptyPast, 54},
        {"looks back at the day of a marked one", c.pastDays, 720},
        {"looks back at its close", c.pastCloses, 32},
        {"looks back at its phase", c.pastLates, 170},
        {"looks back at its phase behind a day of the other stream", c.pastLatesWithOtherStream, 10},
        {"premiums of the past", c.pastPremiums, 380},
        {"looks back without an entry", c.pastUnknown, 1300},
        {"looks back with one", c.pastKnown, 1300},
        {"looks back at an uncounted one", c.pastUncounted, 27},
        {"books of the past", c.pastBooks, 140},
        {"book summaries kept", c.auxesKept, 1600},
        {"book summaries taken by a snapshot", c.auxesTaken, 280},
        {"book summaries of an entry", c.auxesOfEntries, 940},
        {"days of the past", c.pastDates, 230},
        {"days of today", c.todayDates, 170},
        {"other days", c.otherDates, 170},
        {"batches and more under a list of the source", run.m_borrowedLists, 2450},
    });
}

// A day's statuses go their ways through all gates, on either stream, with an after-hours phase or without.
TEST(ParamGenerator, shouldShowEveryStatusOnEitherLevelWhenManyStreamsAreMade)
{
    const NaiveRun& run = manyStreams();
    for (const bool afterHours : {false, true}) {
        for (const bool levelOne : {false, true}) {
            for (std::size_t status = 0; status < StatusTable::kStatuses; ++status) {
                const auto where = fmt::format("status {}, level {}, {} after-hours phase", status, levelOne ? 1 : 2,
                                               afterHours ? "with" : "without");
                EXPECT_GE(run.m_counted.calls.counts[afterHours][levelOne][status], 1) << "shown: " << where;
                EXPECT_GE(run.m_counted.looksBack.counts[afterHours][levelOne][status], 1) << "looked at: " << where;
            }
        }
    }
}

TEST(ParamGenerator, shouldMakeCataloguesUnderEveryAnswerWhenManyStreamsAreMade)
{
    const NaiveRun& run = manyStreams();
    for (const bool dataCentre : {false, true}) {
        for (const bool user : {false, true}) {
            const auto where = fmt::format("data centre's Brovan mode {}, user's {}", dataCentre, user);
            EXPECT_GE(run.m_made[dataCentre][user][false], 1) << "new models, " << where;
            EXPECT_GE(run.m_setAnew[dataCentre][user][false], 1) << "without level 2, " << where;
            EXPECT_GE(run.m_setAnew[dataCentre][user][true], 1) << "with level 2, " << where;
        }
    }
}

TEST(ParamGenerator, shouldMakeTheSameStepsWhenTheSeedIsTheSame)
{
    expectStepsToGoByTheSeed(&makeParamSteps);
}

} // namespace
