#pragma once

#include "terminal_api.h"

#include <string>

namespace ztservice {

// What the instrument service knows of one instrument. Shared by all models and read-only for them; a new
// trading day brings a new object.
struct TERMINAL_API CInstrumentDetail {
    virtual ~CInstrumentDetail();

    std::string market; // "SH", "SZ", "BJ", "HK", ...
    std::string code;
    std::string name; // UTF-8
    double lastClose = 0;
    double upStopPrice = 0; // limits of the day; 0 or 100000 where there is none
    double downStopPrice = 0;
    double zeroPriceThreshold = 0; // a last price of at most this size counts as no trade price
    unsigned classBits = 0;        // bits 20 to 25 hold the instrument class; 4 is a bond
    int listingFlags = 0; // bit 1 profitable, 4 voting rights differ, 19 under registration rules, 20 VIE structure

    // Further values by numeric id; 0 where the instrument has none, but for 2022. Safe from any thread.
    //
    //     int     2008, 2009  depositary receipts: shares; the two halves of the conversion ratio
    //             2022        registered capital in millions; 2147483647 stands for none
    //     double  3000  voting weight ratio            3002  previous settlement; close of a depositary receipt
    //             3003  accrued interest               3011  exchange rate per 100 units
    //             3015  total shares                   3016  float shares
    virtual int getIntField(int id) const;
    virtual double getDoubleField(int id) const;
};

} // namespace ztservice
