#pragma once

#include "tests/recording/builders.h"

#include <string>
#include <vector>

// Small source files in the vendors' layouts.
namespace recording_test {

extern const std::string kShenzhenOrderHeader;
extern const std::string kShenzhenTradeHeader;
extern const std::string kShenzhenSnapshotHeader;
extern const std::string kShenzhenQueueHeader;
extern const std::string kShanghaiOrderHeader;
extern const std::string kShanghaiTradeHeader;

// A snapshot row of SZ 000001, 2017-01-03: day volume 0, level 1 as given, nothing below it.
std::string shenzhenSnapshot(int clock, int bidPrice, int bidVolume, int askPrice, int askVolume);

// A Shanghai snapshot file with the level-1 prices and volumes that each row has.
struct ShanghaiSnapshot {
    std::string clock;
    std::string status;
    std::string lastPrice;
    std::string bidPrice;
    std::string askPrice;
};
std::string shanghaiSnapshots(const std::vector<ShanghaiSnapshot>& rows);

// What importDay says against the folder; "nothing was thrown" when it takes it.
std::string importError(const TempFolder& folder, int tradingDay = 0);

// The notes that importDay makes, a line each.
std::string importNotes(const TempFolder& folder, int tradingDay = 0);

} // namespace recording_test
