#include "standin/instrumentstore.h"

#include "standin/instruments.h"
#include "standin/reset.h"
#include "utils/timeutils.h"

#include <chrono>
#include <mutex>
#include <stdexcept>

namespace standin {

DescribedInstrument::DescribedInstrument(const InstrumentDescription& from)
    : description(from)
{
    market = from.market;
    code = from.code;
    name = from.name;
    lastClose = from.lastClose;
    upStopPrice = from.upStopPrice;
    downStopPrice = from.downStopPrice;
    zeroPriceThreshold = from.zeroPriceThreshold;
    classBits = from.classBits;
    listingFlags = from.listingFlags;
}

int DescribedInstrument::getIntField(int id) const
{
    const auto field = description.intFields.find(id);
    return field == description.intFields.end() ? CInstrumentDetail::getIntField(id) : field->second;
}

double DescribedInstrument::getDoubleField(int id) const
{
    const auto field = description.doubleFields.find(id);
    return field == description.doubleFields.end() ? CInstrumentDetail::getDoubleField(id) : field->second;
}

std::string instrumentKey(const std::string& market, const std::string& code)
{
    return market + ':' + code;
}

int secondsOfDate(int yyyymmdd)
{
    const int year = yyyymmdd / 10000;
    const int month = yyyymmdd / 100 % 100;
    const int day = yyyymmdd % 100;
    // The last day of which the seconds since the epoch fit into an int.
    constexpr int kLastDate = 20380119;
    const bool inRange = yyyymmdd >= 19700101 && yyyymmdd <= kLastDate;
    if (!inRange || !std::chrono::year_month_day(std::chrono::year{year} / month / day).ok())
        throw std::invalid_argument(std::to_string(yyyymmdd) + " is no date yyyymmdd from 19700101 to 20380119");
    return static_cast<int>(utils::timeToMilliseconds(year, month, day, 0, 0, 0) / 1000);
}

InstrumentStore& InstrumentStore::instance()
{
    static InstrumentStore& store = *new InstrumentStore;
    return store;
}

InstrumentStore::InstrumentStore()
    : m_defaultTradingDay(secondsOfDate(kDefaultTradingDay))
{}

void InstrumentStore::add(const DescribedInstrumentPtr& instrument)
{
    const std::string key = instrumentKey(instrument->market, instrument->code);
    const std::unique_lock lock(m_mutex);
    m_instruments[key] = instrument;
}

DescribedInstrumentPtr InstrumentStore::find(const std::string& key) const
{
    const std::shared_lock lock(m_mutex);
    const auto found = m_instruments.find(key);
    return found == m_instruments.end() ? nullptr : found->second;
}

DescribedInstrumentPtr InstrumentStore::find(const std::string& market, const std::string& code) const
{
    // Such a pair would read as another instrument's key.
    if (market.find(':') != std::string::npos)
        return nullptr;
    return find(instrumentKey(market, code));
}

std::string InstrumentStore::gdrCode(const std::string& code) const
{
    const std::shared_lock lock(m_mutex);
    for (const auto& [key, instrument] : m_instruments) {
        if (instrument->code == code && !instrument->description.gdrCode.empty())
            return instrument->description.gdrCode;
    }
    return {};
}

void InstrumentStore::setLastTradingDay(int seconds)
{
    const std::unique_lock lock(m_mutex);
    m_defaultTradingDay = seconds;
}

void InstrumentStore::setLastTradingDay(const std::string& market, int seconds)
{
    const std::unique_lock lock(m_mutex);
    m_tradingDays[market] = seconds;
}

int InstrumentStore::lastTradingDay(const std::string& market) const
{
    const std::shared_lock lock(m_mutex);
    const auto day = m_tradingDays.find(market);
    return day == m_tradingDays.end() ? m_defaultTradingDay : day->second;
}

void resetInstruments()
{
    InstrumentStore::instance().reset();
}

void InstrumentStore::reset()
{
    const std::unique_lock lock(m_mutex);
    m_instruments.clear();
    m_tradingDays.clear();
    m_defaultTradingDay = secondsOfDate(kDefaultTradingDay);
    m_connectQueries = 0;
}

} // namespace standin
