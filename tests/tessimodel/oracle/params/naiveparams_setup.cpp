#include "Common/numberformat.h"
#include "datasource/datacenter.h"
#include "Formula/stockmanager.h"
#include "IndexUtils/instrumentdetails.h"
#include "luawrapper/luamodulectrl.h"
#include "tests/tessimodel/oracle/params/naiveparams.h"
#include "User/userconfig.h"
#include "ztservice/instrumentdetail.h"
#include "ztservice/stocktypecenter.h"

#include <cstdlib>
#include <string>

namespace tests::oracle::params {

bool NaiveParams::isType(int type) const
{
    const auto types = utils::CSingletonT<ztservice::StockTypeCenter>::instance();
    return types->isTypedStock(type, m_stock->market, m_stock->code);
}

bool NaiveParams::isFutureMarket() const
{
    const std::string& m = m_stock->market;
    return m == "DF" || m == "DCE" || m == "ZF" || m == "CZCE" || m == "SF" || m == "SHFE" || m == "GF" ||
           m == "GFEX" || m == "IF" || m == "CFFEX" || m == "INE";
}

bool NaiveParams::isOptionMarket() const
{
    return m_stock->market == "SHO" || m_stock->market == "SZO";
}

bool NaiveParams::hasBlockTradeType() const
{
    return luawrapper::LuaModuleCtrl::checkModule(luawrapper::kModuleBlockTradeConvertibleBond) &&
           (isType(135) || isType(10019));
}

bool NaiveParams::setStock(const QString& code)
{
    const QList<int>* const before = m_paramList;
    m_stock = utils::CSingletonT<TC::CStockManager>::instance()->getInstrumentDetail(code);
    m_isNewLoan = false;
    if (m_stock) {
        classify();
        chooseUnit();
    } else {
        forgetInstrument();
    }
    m_lastClose = TC::getDetailLastClose(m_stock);
    m_paramList = &m_defaultParams;
    if (m_stock) {
        doRegistParams((m_stock->listingFlags >> 19 & 1) != 0);
        chooseList();
        writeFixedRows(0);
        if (m_hasGdr && m_gdrStock)
            writeGdrRows();
        if (m_isAfterHoursA) {
            writeCapital();
            setParam(35, ratio(m_stock->getDoubleField(3000)), "");
        }
        if (m_isAfterHoursB || m_isRegisteredA) {
            writeCapital();
            setParam(47, (m_stock->listingFlags >> 20 & 1) != 0 ? "具有" : "不具有", "");
        }
        if (m_isBond)
            setParam(52, price(m_stock->getDoubleField(3003)), "");
    }
    ++(m_paramList != before ? m_counters->listChanges : m_counters->sameLists);
    return m_paramList != before;
}

void NaiveParams::forgetInstrument()
{
    m_isNewRuleBond = false;
    m_isBond = false;
    m_isIopvFund = false;
    m_isAfterHoursA = false;
    m_isOption = false;
    m_isAfterHoursB = false;
    m_isRegisteredA = false;
    m_hasGdr = false;
    m_isHk = false;
    m_isRegisteredB = false;
    m_priceTick = 0.001;
    writeVolumeLabels("总手", "现手");
    ++m_counters->unknownInstruments;
}

void NaiveParams::classify()
{
    const bool newRules = TC::getUserConfig() && TC::getUserConfig()->isBoardNewRules();
    const auto stocks = utils::CSingletonT<TC::CStockManager>::instance();
    m_priceTick = TC::getDetailPriceTick(m_stock);
    m_isNewRuleBond = hasBlockTradeType();
    m_isBond = (m_stock->classBits >> 20 & 63) == 4;
    m_isIopvFund = isType(100013);
    m_isAfterHoursA = isType(277);
    m_isOption = isOptionMarket();
    m_isAfterHoursB = isType(10006);
    m_isRegisteredA = newRules && isType(10004);
    m_isHk = m_stock->market == "HK";
    m_hasGdr = !stocks->getGDRCode(m_stock->code).empty();
    m_isRegisteredB = newRules && ((isType(101) && !isType(277)) || isType(196));
}

void NaiveParams::chooseUnit()
{
    const bool entitled = TC::getUserConfig() && TC::getUserConfig()->hasNewBondsAuth();
    const std::string& name = m_stock->name;
    if (entitled && isType(100016) && !isType(135) && !isType(10019))
        m_isNewLoan = true;
    if (entitled && isType(100005) && name.find("债") != std::string::npos)
        m_isNewLoan = true;
    std::string withoutBlanks;
    for (const char c : name) {
        if (c != ' ')
            withoutBlanks += c;
    }
    if (isType(100005) && withoutBlanks.size() > 5 && withoutBlanks.find("转债") != std::string::npos) {
        m_counters->convertibles += m_isNewLoan ? 1 : 0;
        m_isNewLoan = false;
    }
    m_counters->newLoans += m_isNewLoan ? 1 : 0;
    if (m_isNewLoan)
        writeVolumeLabels("总量", "现量");
    else
        writeVolumeLabels("总手", "现手");
}

void NaiveParams::writeVolumeLabels(const char* total, const char* current)
{
    m_params[14].label = total;
    m_params[14].colorKey = "ic_clr_entrust_amount";
    m_params[15].label = current;
    m_params[15].colorKey = "ic_clr_modulegroup_default_text";
}

void NaiveParams::chooseList()
{
    if (m_isAfterHoursA) {
        m_paramList = &m_afterHoursParamsA;
    } else if (m_isAfterHoursB) {
        m_paramList = &m_afterHoursParamsB;
    } else if (m_isRegisteredA) {
        m_paramList = &m_registeredParamsA;
    } else if (m_isRegisteredB) {
        m_paramList = &m_registeredParamsB;
    } else if (m_hasGdr) {
        m_paramList = &m_gdrParams;
        const auto stocks = utils::CSingletonT<TC::CStockManager>::instance();
        m_gdrStock = stocks->getInstrumentDetail("LSE", stocks->getGDRCode(m_stock->code));
    } else if (isFutureMarket()) {
        m_paramList = &m_futureParams;
    } else if (isOptionMarket()) {
        m_paramList = &m_optionParams;
    } else if (isType(100003)) {
        m_paramList = &m_stockParams;
    } else if (isType(100013)) {
        m_paramList = &m_fundParams;
    } else if (se::isIndexEx(m_stock->market, m_stock->code)) {
        m_paramList = &m_indexParams;
    } else if (m_isNewRuleBond) {
        m_paramList = &m_newRuleBondParams;
    } else if (m_isBond) {
        m_paramList = &m_bondParams;
    } else if (m_isHk) {
        m_paramList = &m_hkParams;
    } else if (se::isCICCIndex(m_stock->market)) {
        m_paramList = &m_ciccIndexParams;
    }
}

// The two share rows take 0 digits as the instrument is followed, and 2 after a clear.
void NaiveParams::writeFixedRows(int shareDigits)
{
    const auto flag = utils::EFormatNumberFlag(0x40000);
    const double total = m_stock->getDoubleField(3015);
    const double floating = m_stock->getDoubleField(3016);
    const double base = m_isBond ? m_stock->lastClose / 100 : m_stock->lastClose;
    setParam(7, price(m_stock->lastClose), "");
    writeLimits(m_stock->upStopPrice, m_stock->downStopPrice);
    setParam(26, ZP::formatDoubleNumber(total, shareDigits, flag, false, "非法值"), "");
    setParam(27, ZP::formatDoubleNumber(floating, shareDigits, flag, false, "非法值"), "");
    setParam(28, marketValue(total * base), "");
    setParam(29, marketValue(floating * base), "");
    if (isFutureMarket())
        setParam(8, price(m_stock->getDoubleField(3002)), "");
}

void NaiveParams::writeGdrRows()
{
    const long long first = m_gdrStock->getIntField(2008);
    const long long second = m_gdrStock->getIntField(2009);
    long long divisor = std::llabs(first);
    for (long long rest = std::llabs(second); rest != 0;) {
        const long long left = divisor % rest;
        divisor = rest;
        rest = left;
    }
    if (divisor == 0)
        divisor = 1;
    setParam(48, price(m_gdrStock->getDoubleField(3002)), "");
    setParam(49, ZP::formatIntNumber(static_cast<int>(first), 0, utils::EFormatNumberFlag(0)), "");
    setParam(50,
             ZP::formatIntNumber(static_cast<int>(first / divisor), 0, utils::EFormatNumberFlag(0)) + ":" +
                 ZP::formatIntNumber(static_cast<int>(second / divisor), 0, utils::EFormatNumberFlag(0)),
             "");
    if (near(m_gdrStock->getDoubleField(3002), 0))
        return;
    const double premium = gdrPremium(m_stock->lastClose);
    setParam(51, premium > 1e-5 ? QString("+") : ratio(premium), getPriceColor(premium, 0));
    ++m_counters->gdrSetUps;
}

double NaiveParams::gdrPremium(double price) const
{
    if (m_gdrStock->getIntField(2009) <= 0 || !(price > 1e-5))
        return 0;
    const double receipt =
        m_gdrStock->getDoubleField(3002) * m_gdrStock->getIntField(2008) / m_gdrStock->getIntField(2009);
    return (m_gdrStock->getDoubleField(3011) * receipt / 100 - price) / price;
}

void NaiveParams::writeCapital()
{
    const int millions = m_stock->getIntField(2022);
    if (millions != 2147483647)
        setParam(36, quantity(millions * 1000000.0), "");
}

void NaiveParams::initStockParams()
{
    m_lastClose = TC::getDetailLastClose(m_stock);
    if (!m_stock) {
        m_priceTick = 0.001;
        m_isNewRuleBond = false;
        m_isBond = false;
        m_isIopvFund = false;
        return;
    }
    const auto types = utils::CSingletonT<ztservice::StockTypeCenter>::instance();
    m_isNewRuleBond = hasBlockTradeType();
    m_isBond = isType(100016) || types->isTypedStock(126, "SH", m_stock->code);
    m_isIopvFund = isType(100013);
    m_priceTick = TC::getDetailPriceTick(m_stock);
    writeFixedRows(2);
    ++m_counters->clearedInstruments;
}

void NaiveParams::doRegistParams(bool registered)
{
    for (const int entry : {1036, 1037, 1038})
        m_afterHoursParamsA.removeAll(entry);
    for (const int entry : {1036, 1037, 1038, 1047})
        m_afterHoursParamsB.removeAll(entry);
    for (const int entry : {1037, 1038, 1047})
        m_registeredParamsA.removeAll(entry);
    for (const int entry : {1038, 1037})
        m_registeredParamsB.removeAll(entry);
    if (!registered)
        return;
    m_afterHoursParamsA += QList<int>({1036, 1037, 1038});
    m_afterHoursParamsB += QList<int>({1036, 1037, 1038, 1047});
    m_registeredParamsA += QList<int>({1037, 1038, 1047});
    m_registeredParamsB += QList<int>({1038, 1037});
    setParam(38, (m_stock->listingFlags >> 4 & 1) != 0 ? "存在差异" : "无差异", "");
    setParam(37, (m_stock->listingFlags >> 1 & 1) != 0 ? "已盈利" : "未盈利", "");
    ++m_counters->registered;
}

} // namespace tests::oracle::params
