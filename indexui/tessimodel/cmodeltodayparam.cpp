#include "indexui/tessimodel/cmodeltodayparam.h"

#include "Common/numberformat.h"
#include "indexui/tessimodel/detail/colorkeys.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/numbertext.h"
#include "indexui/tessimodel/detail/request.h"

namespace TC {

using namespace detail;

CModelTodayParam::CModelTodayParam()
    : m_params(catalogue())
    , m_paramList(&m_defaultParams)
    , m_lastClose(kNoValue)
    , m_priceTick(kDefaultPriceTick)
{
    initParams();
}

CModelTodayParam::CModelTodayParam(const CModelTodayParam&) = default;

CModelTodayParam& CModelTodayParam::operator=(const CModelTodayParam&) = default;

CModelTodayParam::~CModelTodayParam()
{
    clear();
}

void CModelTodayParam::getParams(CFormulaParam& param) const
{
    fillRequest(param, m_stock, kQuotes);
}

bool CModelTodayParam::isDataValid() const
{
    return m_lastAll || m_lastDepth;
}

void CModelTodayParam::clear()
{
    for (auto& [id, row] : m_params)
        row.text.clear();
    m_lastClose = kNoValue;
    clearQuoterData();
    initStockParams();
}

void CModelTodayParam::clearQuoterData()
{
    m_tradeCount = 0;
    m_lastAll.reset();
    m_lastDepth.reset();
    m_lastContinuous.reset();
    m_history.clear();
    m_pendingAux.clear();
}

void CModelTodayParam::setParam(ERealtimeParam id, const QString& text, const QString& colorKey)
{
    const auto found = m_params.find(id);
    if (found == m_params.end())
        return;
    SRealtimeParam& row = found->second;
    row.text = text;
    if (!colorKey.isEmpty())
        row.colorKey = colorKey;
}

void CModelTodayParam::setParam(ERealtimeParam id, utils::EFormatNumberFlag flag, double value, double base)
{
    if (!isZero(value)) {
        setDifference(id, flag, value, base);
        return;
    }
    const bool isRatio = flag == utils::FORMAT_NUMBER_PERCENT;
    setParam(id, isRatio ? ZP::formatDoubleNumber(0, 2, flag, false, QString()) : priceText(0), levelColorKey());
}

QString CModelTodayParam::getPriceColor(double price, double base)
{
    if (isLess(price, base))
        return fallColorKey();
    if (isGreater(price, base))
        return riseColorKey();
    return levelColorKey();
}

QString CModelTodayParam::priceText(double price) const
{
    return ZP::formatPriceDoubleNumber(price, m_priceTick);
}

// The row keeps its colour.
void CModelTodayParam::setText(ERealtimeParam id, const QString& text)
{
    setParam(id, text, QString());
}

void CModelTodayParam::setPrice(ERealtimeParam id, double price)
{
    setParam(id, priceText(price), getPriceColor(price, m_lastClose));
}

void CModelTodayParam::setDifference(ERealtimeParam id, utils::EFormatNumberFlag flag, double value, double base)
{
    const double difference = value - base;
    const bool isRatio = flag == utils::FORMAT_NUMBER_PERCENT;
    setParam(id, isRatio ? ratioText(difference / base) : priceText(difference), getPriceColor(value, base));
}

} // namespace TC
