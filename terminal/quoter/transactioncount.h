#pragma once

#include "quoter/quoterbase.h"

namespace quoter {

// Orders and volume of the day by direction and order size, cumulative. Volumes are in hands, counted at the
// side that was active in the trade.
struct TERMINAL_API TransactionCount : QuoterBase {
    ~TransactionCount() override;

    __int64 buyOrderCount = 0;
    __int64 buyHuge = 0;
    __int64 buyBig = 0;
    __int64 buyMiddle = 0;
    __int64 buySmall = 0;
    __int64 sellOrderCount = 0;
    __int64 sellHuge = 0;
    __int64 sellBig = 0;
    __int64 sellMiddle = 0;
    __int64 sellSmall = 0;
};

} // namespace quoter
