#pragma once

#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>

// What tests run with level-1 and with level-2 snapshots alike: they write level 1.
namespace tests {

// Names the runs of INSTANTIATE_TEST_SUITE_P(BothStreams, SUITE, ::testing::Values(1, 2), levelName).
inline std::string levelName(const ::testing::TestParamInfo<int>& info)
{
    return "Level" + std::to_string(info.param);
}

// The same figures as a level-2 snapshot, whose levels 6 to 10 are empty.
inline std::shared_ptr<quoter::QuoterDepthData> asLevel2(const quoter::QuoterAllData& from)
{
    auto record = std::make_shared<quoter::QuoterDepthData>();
    record->timetag = from.timetag;
    record->lastPrice = from.lastPrice;
    record->lastPriceAlt = from.lastPriceAlt;
    record->open = from.open;
    record->high = from.high;
    record->low = from.low;
    record->lastClose = from.lastClose;
    record->volume = from.volume;
    record->amount = from.amount;
    record->tradeStatus = from.tradeStatus;
    record->lastSettlementPrice = from.lastSettlementPrice;
    record->settlementPrice = from.settlementPrice;
    record->iopv = from.iopv;
    std::copy(std::begin(from.askPrice), std::end(from.askPrice), record->askPrice);
    std::copy(std::begin(from.bidPrice), std::end(from.bidPrice), record->bidPrice);
    std::copy(std::begin(from.askVolume), std::end(from.askVolume), record->askVolume);
    std::copy(std::begin(from.bidVolume), std::end(from.bidVolume), record->bidVolume);
    return record;
}

} // namespace tests
