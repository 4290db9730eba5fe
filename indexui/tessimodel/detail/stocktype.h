#pragma once

#include "ztservice/instrumentdetail.h"
#include "ztservice/stocktypecenter.h"

#include <string>

// Types of the terminal's instrument service. What a number stands for is the terminal's affair; rules name a type by
// what it decides for them.
namespace TC::detail {

inline bool isOfType(int type, const std::string& market, const std::string& code)
{
    return utils::CSingletonT<ztservice::StockTypeCenter>::instance()->isTypedStock(type, market, code);
}

inline bool isOfType(int type, const ztservice::CInstrumentDetail& stock)
{
    return isOfType(type, stock.market, stock.code);
}

} // namespace TC::detail
