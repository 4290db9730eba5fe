#include "Formula/stockmanager.h"

#include "standin/instrumentstore.h"
#include "utils/csingletont_impl.h"
#include "utils/stockkey.h"

#include <QString>

#include <cfloat>

template struct utils::CSingletonT<TC::CStockManager>;

using standin::InstrumentStore;

namespace utils {

std::string zlStockKey(const std::string& market, const std::string& code)
{
    return standin::instrumentKey(market, code);
}

} // namespace utils

namespace TC {

std::shared_ptr<ztservice::CInstrumentDetail> CStockManager::getInstrumentDetail(const QString& key) const
{
    return InstrumentStore::instance().find(key.toStdString());
}

std::shared_ptr<ztservice::CInstrumentDetail> CStockManager::getInstrumentDetail(const std::string& market,
                                                                                 const std::string& code) const
{
    return InstrumentStore::instance().find(market, code);
}

int CStockManager::getLastTradingDay(const QString& market) const
{
    return InstrumentStore::instance().lastTradingDay(market.toStdString());
}

bool CStockManager::hasHGT(const std::string& market, const std::string& code) const
{
    InstrumentStore::instance().countConnectQuery();
    const auto stock = InstrumentStore::instance().find(market, code);
    return stock && stock->description.hasHGT;
}

bool CStockManager::hasSGT(const std::string& market, const std::string& code) const
{
    InstrumentStore::instance().countConnectQuery();
    const auto stock = InstrumentStore::instance().find(market, code);
    return stock && stock->description.hasSGT;
}

std::string CStockManager::getGDRCode(const std::string& code) const
{
    return InstrumentStore::instance().gdrCode(code);
}

double CStockManager::getCurrentDateLastClose(const QString& key, int date) const
{
    return getCurrentDateLastClose(getInstrumentDetail(key), date);
}

double CStockManager::getCurrentDateLastClose(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
                                              int date) const
{
    if (!stock)
        return DBL_MAX;
    if (const auto described = std::dynamic_pointer_cast<standin::DescribedInstrument>(stock)) {
        const auto close = described->description.lastCloses.find(date);
        if (close != described->description.lastCloses.end())
            return close->second;
    }
    return date == InstrumentStore::instance().lastTradingDay(stock->market) ? stock->lastClose : DBL_MAX;
}

} // namespace TC
