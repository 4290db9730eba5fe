#pragma once

#include "standin/instrumentdescription.h"
#include "tests/support/instruments.h"
#include "tests/tessimodel/figuredstock.h"

#include <set>
#include <string>

// Instruments of the classes that the parameter table tells apart: last close 10.00, tick 0.01, limits 11.00 and 9.00,
// 200 million shares of which 5 million float, unless said otherwise.
namespace tests {

inline standin::InstrumentDescription ordinary(const std::string& market, const std::string& code,
                                               const std::set<int>& types = {})
{
    standin::InstrumentDescription description = stock(market, code, types);
    description.upStopPrice = 11;
    description.downStopPrice = 9;
    description.doubleFields = {{3015, 2e8}, {3016, 5e6}};
    return description;
}

inline standin::InstrumentDescription plainStock()
{
    return ordinary("SH", "600000", {100003});
}

// With an after-hours phase, of the one type and of the other.
inline standin::InstrumentDescription afterHoursStockA()
{
    return ordinary("SH", "688001", {277});
}

inline standin::InstrumentDescription afterHoursStockB()
{
    return ordinary("SZ", "300001", {10006});
}

inline standin::InstrumentDescription hkStock()
{
    return ordinary("HK", "00700");
}

inline standin::InstrumentDescription iopvFund()
{
    standin::InstrumentDescription description = ordinary("SH", "510300", {100013});
    description.priceTick = 0.001;
    return description;
}

// Last close 100, accrued interest 1.25.
inline standin::InstrumentDescription bond()
{
    standin::InstrumentDescription description = ordinary("SH", "019547");
    description.lastClose = 100;
    description.priceTick = 0.001;
    description.classBits = kBondClass;
    description.doubleFields[3003] = 1.25;
    return description;
}

// Quoted under the new loan rules, once setNewBondsAuth is on.
inline standin::InstrumentDescription newLoanBond()
{
    return ordinary("SZ", "111001", {100016});
}

// Last close 3500.0, tick 0.2, previous settlement 3480.0.
inline standin::InstrumentDescription future()
{
    standin::InstrumentDescription description = ordinary("IF", "IF2403");
    description.lastClose = 3500;
    description.priceTick = 0.2;
    description.doubleFields = {{3002, 3480}};
    return description;
}

// A stock with a depositary receipt. One receipt stands for 2 shares and closed at 3.00 dollars of 7 yuan: 10.50 a
// share.
inline standin::InstrumentDescription receiptStock()
{
    standin::InstrumentDescription description = ordinary("SH", "601688", {100003});
    description.gdrCode = "HTSC";
    return description;
}

inline standin::InstrumentDescription receipt()
{
    standin::InstrumentDescription description = stock("LSE", "HTSC");
    description.intFields = {{2008, 1}, {2009, 2}};
    description.doubleFields = {{3002, 3}, {3011, 700}};
    return description;
}

} // namespace tests
