#pragma once

#include "quoter/quoterbase.h"

namespace quoter {

// Level-1 snapshot: five levels a side, best first. A level that does not exist has price 0 and volume 0.
// Volumes are cumulative for the day, in the unit of the stream (hands for mainland securities).
struct TERMINAL_API QuoterAllData : QuoterBase {
    ~QuoterAllData() override;

    double open = 0;
    double high = 0;
    double low = 0;
    double lastClose = 0; // previous close as the record carries it
    double amount = 0;    // cumulative amount of the day
    __int64 volume = 0;   // cumulative volume of the day
    __int64 rawVolume = 0;
    int tradeStatus = 0; // trading phase of a security; the open interest of a future
    double lastSettlementPrice = 0;
    double settlementPrice = 0;
    double iopv = 0; // indicative net value of a fund
    double askPrice[5] = {};
    double bidPrice[5] = {};
    __int64 askVolume[5] = {};
    __int64 bidVolume[5] = {};
    double lastPriceAlt = 0; // last price of an instrument that is quoted under the new loan rules
};

} // namespace quoter
