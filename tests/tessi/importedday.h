#pragma once

#include "apps/tessi/daydelivery.h"
#include "recording/importday.h"
#include "recording/recordedday.h"
#include "standin/terminal.h"
#include "tests/support/recordeddays.h"

#include <gtest/gtest.h>

namespace tests {

// A recorded day by the name of its folder, imported from the exchange's files and known to the terminal. Skipped
// where it is absent.
class ImportedDay : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override
    {
        const std::filesystem::path source = recordedDay(GetParam());
        if (!std::filesystem::exists(source))
            GTEST_SKIP() << "no recorded day " << source;
        m_day = recording::importDay(source.string(), 0);
        tessi::introduce(m_terminal, m_day);
    }

    standin::Terminal m_terminal;
    recording::RecordedDay m_day;
};

} // namespace tests
