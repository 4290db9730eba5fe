// What kind of instrument something is.

#include "datasource/datacenter.h"
#include "standin/instrumentstore.h"
#include "utils/csingletont_impl.h"
#include "ztservice/stocktypecenter.h"

template struct utils::CSingletonT<ztservice::StockTypeCenter>;

namespace ztservice {

bool StockTypeCenter::isTypedStock(int type, const std::string& market, const std::string& code) const
{
    const auto stock = standin::InstrumentStore::instance().find(market, code);
    return stock && stock->description.types.contains(type);
}

} // namespace ztservice

namespace se {

bool isIndexEx(const std::string& market, const std::string& code)
{
    const auto stock = standin::InstrumentStore::instance().find(market, code);
    return stock && stock->description.isIndex;
}

} // namespace se
