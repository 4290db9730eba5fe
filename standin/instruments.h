#pragma once

#include "standin/instrumentdescription.h"
#include "terminal_api.h"

#include <cstddef>
#include <memory>
#include <string>

namespace ztservice {
struct CInstrumentDetail;
}

namespace standin {

// The last trading day of a market for which none is set. A fixed Tuesday, not today: runs repeat.
inline constexpr int kDefaultTradingDay = 20240102;

// The instruments and the calendar behind CStockManager, StockTypeCenter and the getDetail functions. Safe from
// any thread.
class TERMINAL_API Instruments {
public:
    // Adds an instrument, or puts a new description in place of the one with its market and code: models that
    // hold the old record keep it. Returns the record that the lookups now give.
    // Throws std::invalid_argument when the market or code is empty, or the market holds a ':'.
    std::shared_ptr<ztservice::CInstrumentDetail> add(const InstrumentDescription& description);

    // Adds all instruments of a JSON file: one description or an array of them, written as
    // instrumentToJson does. Throws std::runtime_error that names the file, and the place or field at fault; then
    // none is added. The same instrument twice is a fault.
    void load(const std::string& path);

    // The last trading day of every market without one of its own, as yyyymmdd. Throws std::invalid_argument for
    // a number that is no date from 19700101 to 20380119, the days whose seconds since the epoch fit into an int.
    void setLastTradingDay(int yyyymmdd);
    void setLastTradingDay(const std::string& market, int yyyymmdd);

    // How often hasHGT and hasSGT were asked, together, since the reset: the real service looks far for an answer, so
    // a test may want to know.
    std::size_t connectQueries() const;
};

} // namespace standin
