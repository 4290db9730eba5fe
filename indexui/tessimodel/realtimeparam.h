#pragma once

#include "utils/int64.h"

#include <QString>

#include <limits>

namespace TC {

// The parameters of the real-time table. The numbers are fixed; those that are left out have no parameter. Any int may
// be cast to the type: a list also holds separators and marked entries.
enum ERealtimeParam : int {
    RP_LAST = 0,
    RP_AVERAGE = 1,
    RP_CHANGE = 2,
    RP_CHANGE_SETTLE = 3, // against the previous settlement
    RP_RISE = 4,
    RP_RISE_SETTLE = 5,
    RP_AMPLITUDE = 6,
    RP_LAST_CLOSE = 7,
    RP_LAST_SETTLE = 8,
    RP_OPEN = 9,
    RP_HIGH = 10,
    RP_LOW = 11,
    RP_TRADE_COUNT = 12, // snapshots in which the day's volume rose
    RP_VOLUME_PER_TRADE = 13,
    RP_TOTAL_VOLUME = 14,
    RP_CURRENT_VOLUME = 15, // what the latest snapshot added
    RP_TOTAL_AMOUNT = 16,
    RP_COMMISSION_RATIO = 18, // in no list and never written; panels look it up
    RP_OPEN_INTEREST = 19,    // of a security its trading phase as a number
    RP_SETTLE = 20,
    RP_UP_LIMIT = 21,
    RP_DOWN_LIMIT = 22,
    RP_IOPV = 23,
    RP_INNER = 24,
    RP_OUTER = 25,
    RP_TOTAL_SHARES = 26,
    RP_FLOAT_SHARES = 27,
    RP_TOTAL_MARKET_VALUE = 28,
    RP_FLOAT_MARKET_VALUE = 29,
    RP_TURNOVER = 30,
    RP_TOTAL_BID = 31, // the whole book's bids
    RP_BID_AVERAGE = 32,
    RP_TOTAL_ASK = 33,
    RP_ASK_AVERAGE = 34,
    RP_SAME_RIGHTS = 35, // a ratio
    RP_REGISTERED_CAPITAL = 36,
    RP_PROFITABLE = 37,
    RP_VOTING_RIGHTS = 38,
    RP_AFTER_HOURS_AMOUNT = 39,
    RP_AFTER_HOURS_VOLUME = 40,
    RP_TRADE_STATUS = 42,
    RP_IS_REGISTERED = 46, // in no list and never written; panels look it up
    RP_VIE = 47,
    RP_GDR_CLOSE = 48,
    RP_GDR_SHARES = 49,
    RP_GDR_RATIO = 50,
    RP_GDR_PREMIUM = 51,
    RP_ACCRUED_INTEREST = 52,
    RP_DIRTY_SETTLE = 53 // last price plus accrued interest
};

// What a display list holds besides plain parameters: an empty row, and a parameter that the panel shows in a manner
// of its own. Take the mark off before the row is looked up.
inline constexpr int kParamSeparator = -1;
inline constexpr int kParamMark = 1000;

// One row of the table, ready to be drawn.
struct SRealtimeParam {
    int id = 0; // the ERealtimeParam
    QString label;
    QString text;     // empty until first written
    QString colorKey; // for ZP::CUiResource::getColor
};

// What the table showed at one snapshot, for a look back at its moment.
struct STodayParamHistory {
    double high = 0;
    double low = 0;
    double bidAveragePrice = std::numeric_limits<double>::max(); // of the whole book; the largest double for none
    __int64 totalBidVolume = 0;
    double askAveragePrice = std::numeric_limits<double>::max();
    __int64 totalAskVolume = 0;
    int curVolume = 0; // what the snapshot added to the day's volume, low 32 bits
    int tradeCount = 0;
};

} // namespace TC
