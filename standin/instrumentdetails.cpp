#include "IndexUtils/instrumentdetails.h"

#include "Common/strings.h"
#include "standin/instrumentstore.h"
#include "utils/stockkey.h"
#include "ztservice/instrumentdetail.h"

#include <cfloat>
#include <limits>

namespace ztservice {

CInstrumentDetail::~CInstrumentDetail() = default;

int CInstrumentDetail::getIntField(int id) const
{
    constexpr int kRegisteredCapital = 2022;
    return id == kRegisteredCapital ? std::numeric_limits<int>::max() : 0;
}

double CInstrumentDetail::getDoubleField(int) const
{
    return 0;
}

} // namespace ztservice

namespace TC {

namespace {

constexpr double kDefaultPriceTick = 0.001;

} // namespace

std::string getDetailMarket(const std::shared_ptr<ztservice::CInstrumentDetail>& stock)
{
    return stock ? stock->market : std::string();
}

std::string getDetailCode(const std::shared_ptr<ztservice::CInstrumentDetail>& stock)
{
    return stock ? stock->code : std::string();
}

std::string getDetailKey(const std::shared_ptr<ztservice::CInstrumentDetail>& stock)
{
    return stock ? utils::zlStockKey(stock->market, stock->code) : std::string();
}

QString getDetailQsMarket(const std::shared_ptr<ztservice::CInstrumentDetail>& stock)
{
    return ZP::sToQs(getDetailMarket(stock));
}

QString getDetailQsCode(const std::shared_ptr<ztservice::CInstrumentDetail>& stock)
{
    return ZP::sToQs(getDetailCode(stock));
}

QString getDetailQsKey(const std::shared_ptr<ztservice::CInstrumentDetail>& stock)
{
    return ZP::sToQs(getDetailKey(stock));
}

double getDetailLastClose(const std::shared_ptr<ztservice::CInstrumentDetail>& stock)
{
    return stock ? stock->lastClose : DBL_MAX;
}

double getDetailPriceTick(const std::shared_ptr<ztservice::CInstrumentDetail>& stock)
{
    const auto described = std::dynamic_pointer_cast<standin::DescribedInstrument>(stock);
    return described ? described->description.priceTick : kDefaultPriceTick;
}

} // namespace TC
