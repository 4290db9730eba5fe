#pragma once

#include "terminal_api.h"
#include "utils/int64.h"

#include <memory>

namespace quoter {
struct QuoterAllData;
struct QuoterDepthData;
} // namespace quoter

// The snapshot fields whose meaning depends on how an instrument is quoted. `newLoan` is for instruments under
// the new loan rules: their last price is the record's alternative one; volume and amount are the same in both
// forms here. A null record gives 0.
namespace TC {

TERMINAL_API double getLastPriceEx(bool newLoan, const std::shared_ptr<quoter::QuoterAllData>& record);
TERMINAL_API double getLastPriceEx(bool newLoan, const std::shared_ptr<quoter::QuoterDepthData>& record);

TERMINAL_API __int64 getVolumeEx(bool newLoan, const std::shared_ptr<quoter::QuoterAllData>& record);
TERMINAL_API __int64 getVolumeEx(bool newLoan, const std::shared_ptr<quoter::QuoterDepthData>& record);

TERMINAL_API double getAmountEx(bool newLoan, const std::shared_ptr<quoter::QuoterAllData>& record);
TERMINAL_API double getAmountEx(bool newLoan, const std::shared_ptr<quoter::QuoterDepthData>& record);

} // namespace TC
