#pragma once

#include "quoter/quoterbase.h"

namespace quoter {

// Level-2 snapshot: ten levels a side, best first. A level that does not exist has price 0 and volume 0.
// The day's amount is read through TC::getAmountEx only.
struct TERMINAL_API QuoterDepthData : QuoterBase {
    ~QuoterDepthData() override;

    double open = 0;
    double high = 0;
    double low = 0;
    __int64 volume = 0;   // cumulative volume of the day
    int tradeStatus = 0;  // as in QuoterAllData
    double lastClose = 0; // previous close as the record carries it
    double lastSettlementPrice = 0;
    double settlementPrice = 0;
    double iopv = 0;
    double askPrice[10] = {};
    __int64 askVolume[10] = {};
    double bidPrice[10] = {};
    __int64 bidVolume[10] = {};
    double lastPriceAlt = 0; // as in QuoterAllData

    double amount = 0; // the terminal's own; the models ask TC::getAmountEx
};

} // namespace quoter
