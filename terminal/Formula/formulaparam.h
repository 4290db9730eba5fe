#pragma once

#include "quoter/timeseq.h"
#include "utils/int64.h"

#include <QString>

namespace TC {

// A request to the data layer. The caller owns it, a model's getParams fills it, and the caller carries it to
// the data layer, which answers with batches until the caller ends the subscription.
struct CFormulaParam {
    int subscriptionId = -1; // the caller's own; no model reads or writes it

    QString market;
    QString stockCode;
    __int64 rangeFlags = 0;
    QString dataName;          // "QUOTER" or "QUOTERVOL"
    quoter::TimeSeq beginTime; // start of the last trading day
    quoter::TimeSeq endTime;   // TIME_LASTED: stays open
    int period = 0;            // refresh period in milliseconds
};

} // namespace TC
