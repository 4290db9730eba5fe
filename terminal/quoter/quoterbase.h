#pragma once

#include "terminal_api.h"
#include "utils/int64.h"

#include <memory>

// The records that the terminal's data layer delivers.
//
// They are held by std::shared_ptr, shared by all readers, and told apart by a dynamic cast from QuoterBase. No reader
// changes a record, with one exception that belongs to the contract: the book summary stores the last close into the
// last price (or the alternative one) of a snapshot that has none, as one relaxed atomic store. Other readers of
// the snapshot see either value. A double that carries no value holds DBL_MAX. Prices are in the instrument's
// currency, amounts too; times are milliseconds since the epoch.
namespace quoter {

// Base of all delivered records.
struct TERMINAL_API QuoterBase {
    virtual ~QuoterBase();

    __int64 timetag = 0; // time of the record in milliseconds
    union {
        double lastPrice = 0; // snapshots: last price
        double price;         // tick records: price of the order or trade, in the same slot
    };
};

using QuoterBasePtr = std::shared_ptr<QuoterBase>;

} // namespace quoter
