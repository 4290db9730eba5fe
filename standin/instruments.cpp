#include "standin/instruments.h"

#include "standin/instrumentjson.h"
#include "standin/instrumentstore.h"

#include <set>
#include <stdexcept>
#include <vector>

namespace standin {

std::shared_ptr<ztservice::CInstrumentDetail> Instruments::add(const InstrumentDescription& description)
{
    if (description.market.empty() || description.code.empty())
        throw std::invalid_argument("an instrument needs a market and a code");
    if (description.market.find(':') != std::string::npos)
        throw std::invalid_argument("a market holds no ':', unlike \"" + description.market + "\"");
    auto instrument = std::make_shared<DescribedInstrument>(description);
    InstrumentStore::instance().add(instrument);
    return instrument;
}

void Instruments::load(const std::string& path)
{
    for (const InstrumentDescription& description : readInstruments(path))
        add(description);
}

void Instruments::setLastTradingDay(int yyyymmdd)
{
    InstrumentStore::instance().setLastTradingDay(secondsOfDate(yyyymmdd));
}

void Instruments::setLastTradingDay(const std::string& market, int yyyymmdd)
{
    InstrumentStore::instance().setLastTradingDay(market, secondsOfDate(yyyymmdd));
}

std::size_t Instruments::connectQueries() const
{
    return InstrumentStore::instance().connectQueries();
}

} // namespace standin
