#pragma once

#include "standin/terminal.h"
#include "tests/tessimodel/oracle/snapshots/snapshotinstruments.h"
#include "tests/tessimodel/oracle/snapshots/snapshotmarket.h"

#include <array>
#include <cstddef>
#include <map>

#include <gtest/gtest.h>

// What the tests of the generators share: many streams are played on a naive model alone, and what they put in counts.
namespace tests::oracle::snapshots {

using Counts = std::map<int, int>;

// Every instrument and the unknown one, every kind of a batch, every status of a snapshot.
void expectEveryInput(const Counts& follows, const Counts& kinds, const Counts& statuses);

// Counts the status of the last record, if that is a snapshot.
void countLastStatus(Counts& statuses, const Records& records);

template <class Step>
struct StepCounts {
    std::array<int, Step::kActions> actions{};
    Counts follows; // by instrument
    Counts kinds;
    Counts statuses; // of last records

    void count(const Step& step)
    {
        ++actions[static_cast<std::size_t>(step.action)];
        if (step.action == Step::Action::Follow)
            ++follows[step.number];
        if (step.action == Step::Action::Batch)
            countBatch(step);
    }

    void countBatch(const Step& step)
    {
        ++kinds[step.kind];
        countLastStatus(statuses, step.records);
    }

    void expectEnough() const
    {
        expectEveryInput(follows, kinds, statuses);
        for (std::size_t action = 0; action < actions.size(); ++action)
            EXPECT_GE(actions[action], 80) << "steps of action " << action;
    }
};

// `make` gives the steps of a seed, `play` plays them into a run.
template <class Run, class Make, class Play>
Run playManyStreams(const Make& make, const Play& play)
{
    constexpr unsigned long long kStreams = 300;
    standin::Terminal terminal;
    Run run;
    for (unsigned long long seed = 1; seed <= kStreams; ++seed) {
        prepareSnapshots(terminal);
        play(run, terminal, make(seed));
    }
    return run;
}

} // namespace tests::oracle::snapshots
