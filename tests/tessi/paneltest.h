#pragma once

#include "recording/dayfolder.h"
#include "tests/tessi/command.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace tests {

// Tests of one panel over days that are written to a folder of the test's own; the usual one is called "day".
class PanelTest : public ::testing::Test {
protected:
    PanelTest(std::string panel, const recording::RecordedDay& day)
        : m_panel(std::move(panel))
    {
        write(day, "day");
    }

    void write(const recording::RecordedDay& day, const char* name) const
    {
        recording::writeDay(day, m_scratch.path(name), recording::Compression::None);
    }

    // The panel of the usual day, or of another one.
    Outcome shown(const std::string& arguments) const { return shownOf("day", arguments); }
    Outcome shownOf(const std::string& day, const std::string& arguments = "") const
    {
        return m_scratch.tessi("replay " + day + " --panel " + m_panel + " " + arguments);
    }

    Scratch m_scratch;

private:
    const std::string m_panel;
};

} // namespace tests
