#pragma once

#include "standin/instrumentdescription.h"
#include "ztservice/instrumentdetail.h"

#include <atomic>
#include <map>
#include <memory>
#include <shared_mutex>
#include <string>

namespace standin {

// An instrument record together with the description that it was made from. The public fields of the record are
// what the models read; the rest is answered from the description.
struct DescribedInstrument : ztservice::CInstrumentDetail {
    explicit DescribedInstrument(const InstrumentDescription& from);
    int getIntField(int id) const override;
    double getDoubleField(int id) const override;

    const InstrumentDescription description;
};

using DescribedInstrumentPtr = std::shared_ptr<DescribedInstrument>;

// All instruments of the process, and the trading days of their markets. Never destroyed, so that services can be
// asked until the very end. Safe from any thread.
class InstrumentStore {
public:
    static InstrumentStore& instance();

    void add(const DescribedInstrumentPtr& instrument);
    DescribedInstrumentPtr find(const std::string& key) const;
    DescribedInstrumentPtr find(const std::string& market, const std::string& code) const;

    // The depositary receipt of the first instrument with that code that has one, in the order of the keys.
    std::string gdrCode(const std::string& code) const;

    // Seconds since the epoch.
    void setLastTradingDay(int seconds);
    void setLastTradingDay(const std::string& market, int seconds);
    int lastTradingDay(const std::string& market) const;

    void countConnectQuery() { ++m_connectQueries; }
    std::size_t connectQueries() const { return m_connectQueries; }

    void reset();

private:
    InstrumentStore();

    mutable std::shared_mutex m_mutex;
    std::map<std::string, DescribedInstrumentPtr> m_instruments; // by key
    std::map<std::string, int> m_tradingDays;                    // by market
    int m_defaultTradingDay;
    std::atomic<std::size_t> m_connectQueries{0};
};

// Instrument key. The market holds no ':', so that two instruments never share one.
std::string instrumentKey(const std::string& market, const std::string& code);

// 00:00:00 at UTC+8 of a date, in seconds since the epoch; throws std::invalid_argument, as setLastTradingDay says.
int secondsOfDate(int yyyymmdd);

} // namespace standin
