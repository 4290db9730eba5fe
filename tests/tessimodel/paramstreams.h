#pragma once

#include "tests/support/bothstreams.h"
#include "tests/support/records.h"
#include "tests/tessimodel/paraminstruments.h"
#include "tests/tessimodel/paramrows.h"
#include "tests/tessimodel/todayparam.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tests {

// A snapshot with a figure for every row.
inline Snapshot<quoter::QuoterAllData> ordinarySnapshot(const std::string& clock)
{
    return level1(clock)
        .last(10.50)
        .open(10.10)
        .high(10.60)
        .low(9.90)
        .lastClose(10.30)
        .lastSettlement(10.20)
        .settlement(10.40)
        .iopv(1.23456)
        .amount(5.25e6)
        .volume(5000);
}

// The prices that it writes live and looked back at, for an instrument whose last close is 10.00; those of the day come
// behind.
inline const std::string kOrdinaryPrices = "RP_LAST 10.50 rise\n"
                                           "RP_CHANGE 0.50 rise\n"
                                           "RP_CHANGE_SETTLE 0.30 rise\n"
                                           "RP_RISE 5.00% rise\n"
                                           "RP_RISE_SETTLE 2.94% rise\n"
                                           "RP_AMPLITUDE 7.00%\n"
                                           "RP_LAST_SETTLE 10.20\n"
                                           "RP_OPEN 10.10 rise\n";

// What a table does alike with either stream. The snapshots of a test are written as level 1; those of the run for
// level 2 carry the same figures.
class ParamStreamTest : public TodayParamTest, public ::testing::WithParamInterface<int> {
protected:
    using Written = std::shared_ptr<quoter::QuoterAllData>;

    quoter::QuoterBasePtr of(const Written& record) const
    {
        return GetParam() == 1 ? quoter::QuoterBasePtr(record) : asLevel2(*record);
    }

    Records of(const std::vector<Written>& records) const
    {
        Records batch;
        for (const Written& record : records)
            batch.push_back(of(record));
        return batch;
    }

    // One snapshot past the callback, which would write the limits besides.
    bool calc(const Written& record, bool isInit = false) { return model.calc(of(record), isInit); }

    // The rows that it writes.
    std::string written(const Written& record, bool isInit = false)
    {
        const quoter::QuoterBasePtr snapshot = of(record);
        return writtenBy(model, [&] { model.calc(snapshot, isInit); });
    }

    std::string writtenByRefresh(const Written& record)
    {
        const quoter::QuoterBasePtr snapshot = of(record);
        return writtenBy(model, [&] { model.refresh(snapshot); });
    }

    // The history pass alone.
    std::string writtenByPass(const std::vector<Written>& records)
    {
        const Records batch = of(records);
        return writtenBy(model, [&] { model.calc(batch); });
    }

    void setPrevious(const Written& record)
    {
        if (GetParam() == 1)
            model.m_lastAll = record;
        else
            model.m_lastDepth = asLevel2(*record);
    }

    quoter::QuoterBasePtr previous() const
    {
        return GetParam() == 1 ? quoter::QuoterBasePtr(model.m_lastAll) : model.m_lastDepth;
    }
};

} // namespace tests
