#pragma once

#include "tests/tessimodel/oracle/oracleruns.h"
#include "tests/tessimodel/oracle/shrinkingsteps.h"
#include "tests/tessimodel/oracle/statelines.h"

#include <fmt/format.h>

#include <string>
#include <vector>

namespace tests::oracle {

// Plays steps on what is tested and on its naive counterpart side by side. Both write their state as `State`, which is
// written in full where it differs.
template <class Step, class State = Lines>
class StepDuel {
public:
    virtual ~StepDuel() = default;

    // Compares everything after every step. Empty when both agree to the end, else what differs first.
    std::string play(const std::vector<Step>& steps)
    {
        const std::string found = playSteps(steps);
        const std::string atEnd = end();
        return found.empty() ? atEnd : found;
    }

protected:
    virtual void apply(const Step& step) = 0;
    virtual void write(State& expected, State& real) const = 0;

    // What comes behind the last step, and what differs then. It comes after a difference too.
    virtual std::string end() { return ""; }

    std::string differenceWhen(const char* when)
    {
        const std::string found = difference();
        return found.empty() ? found : fmt::format("{}:\n{}", when, found);
    }

private:
    std::string difference()
    {
        m_expectedLines.clear();
        m_realLines.clear();
        write(m_expectedLines, m_realLines);
        if (m_expectedLines == m_realLines)
            return "";
        State expected(true);
        State real(true);
        write(expected, real);
        return firstDifferences(expected, real);
    }

    std::string playSteps(const std::vector<Step>& steps)
    {
        std::string found = differenceWhen("before the first step");
        for (std::size_t i = 0; i < steps.size() && found.empty(); ++i) {
            apply(steps[i]);
            found = difference();
            if (!found.empty())
                found = fmt::format("after step {}, {}:\n{}", i + 1, text(steps[i]), found);
        }
        return found;
    }

    State m_expectedLines;
    State m_realLines;
};

// Plays streams of the steps that `make` gives for a seed, each on a duel of its own. What `newDuel` draws comes before
// the steps.
template <class Step, class NewDuel>
void checkDuels(const char* description, int streams, std::vector<Step> (*make)(unsigned long long seed),
                const NewDuel& newDuel)
{
    checkStreams(description, streams, [make, &newDuel] {
        auto duel = newDuel();
        const auto steps = *shrinkingSteps(make);
        const std::string difference = duel.play(steps.all);
        if (!difference.empty())
            RC_FAIL(difference);
    });
}

} // namespace tests::oracle
