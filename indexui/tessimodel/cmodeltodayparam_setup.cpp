#include "Common/numberformat.h"
#include "datasource/datacenter.h"
#include "Formula/stockmanager.h"
#include "indexui/tessimodel/cmodeltodayparam.h"
#include "indexui/tessimodel/detail/colorkeys.h"
#include "indexui/tessimodel/detail/instrumentfields.h"
#include "indexui/tessimodel/detail/markets.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/numbertext.h"
#include "indexui/tessimodel/detail/stocktype.h"
#include "indexui/tessimodel/detail/tradingphase.h"
#include "indexui/tessimodel/detail/userconfig.h"
#include "IndexUtils/instrumentdetails.h"
#include "luawrapper/luamodulectrl.h"
#include "ztservice/instrumentdetail.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <string>

namespace TC {

using namespace detail;

namespace {

using Instrument = ztservice::CInstrumentDetail;

// Types by what they decide here.
constexpr int kTypeStock = 100003;
constexpr int kTypeFund = 100013;
constexpr int kTypeRegistered = 10004; // registered list A
constexpr int kTypeBoard = 101;        // registered list B, but for those of the after-hours type
constexpr int kTypeOtherBoard = 196;   // registered list B
constexpr int kTypeConvertible = 135;  // list of new-rule bonds
constexpr int kTypeOtherConvertible = 10019;
constexpr int kTypeBond = 100016;
constexpr int kTypeNamedBond = 100005; // a bond when its name says so
constexpr int kTypeShanghaiBond = 126;

constexpr char kShanghai[] = "SH";
constexpr char kGdrMarket[] = "LSE";

bool isConvertible(const Instrument& stock)
{
    return isOfType(kTypeConvertible, stock) || isOfType(kTypeOtherConvertible, stock);
}

bool isNewRuleBond(const Instrument& stock)
{
    return luawrapper::LuaModuleCtrl::checkModule(luawrapper::kModuleBlockTradeConvertibleBond) && isConvertible(stock);
}

bool isBondClass(const Instrument& stock)
{
    constexpr unsigned kFirstBit = 20;
    constexpr unsigned kSixBits = 0x3F;
    constexpr unsigned kBond = 4;
    return ((stock.classBits >> kFirstBit) & kSixBits) == kBond;
}

// The older rule, which clear() goes by: by type, not by class. The second type is looked up as Shanghai's wherever the
// instrument is traded.
bool isBondType(const Instrument& stock)
{
    return isOfType(kTypeBond, stock) || isOfType(kTypeShanghaiBond, kShanghai, stock.code);
}

bool isRegisteredB(const Instrument& stock)
{
    return (isOfType(kTypeBoard, stock) && !hasAfterHoursType(stock)) || isOfType(kTypeOtherBoard, stock);
}

bool contains(const std::string& name, const char* part)
{
    return name.find(part) != std::string::npos;
}

// A convertible among the bonds that are told by name. Blanks within the name do not count.
bool isNamedConvertible(std::string name)
{
    name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
    return contains(name, "转债");
}

// Bonds under the new loan rules are read in their new-loan form, and labelled as quantities, not as hands.
// Convertibles that are told by name stay with hands.
bool isNewLoan(const Instrument& stock)
{
    if (!isUserOfNewBonds())
        return false;
    const bool namedBond = isOfType(kTypeNamedBond, stock);
    if (namedBond && isNamedConvertible(stock.name))
        return false;
    return (isOfType(kTypeBond, stock) && !isConvertible(stock)) || (namedBond && contains(stock.name, "债"));
}

QString wholeText(int value)
{
    return ZP::formatIntNumber(value, 0, utils::FORMAT_NUMBER_PLAIN);
}

// Two numbers as a ratio in lowest terms; 0 : 0 stays as it is.
QString gdrRatioText(int shares, int stocks)
{
    const __int64 divisor = std::gcd(static_cast<__int64>(shares), static_cast<__int64>(stocks));
    const auto lowest = [divisor](int term) { return divisor == 0 ? term : static_cast<int>(term / divisor); };
    return wholeText(lowest(shares)) + ":" + wholeText(lowest(stocks));
}

} // namespace

bool CModelTodayParam::setStock(const QString& code)
{
    const QList<int>* const listBefore = m_paramList;
    const auto stocks = utils::CSingletonT<CStockManager>::instance();
    m_stock = stocks->getInstrumentDetail(code);
    const std::string gdrCode = m_stock ? stocks->getGDRCode(m_stock->code) : std::string();
    classify(!gdrCode.empty());
    setVolumeLabels();
    m_lastClose = getDetailLastClose(m_stock);
    m_paramList = &m_defaultParams;
    if (m_stock) {
        doRegistParams(hasListingFlag(*m_stock, kBitRegistered));
        m_paramList = listOfClass();
        if (m_paramList == &m_gdrParams)
            m_gdrStock = stocks->getInstrumentDetail(kGdrMarket, gdrCode);
        setFixedRows(0);
        setGdrRows();
        setClassRows();
    }
    return m_paramList != listBefore;
}

void CModelTodayParam::initStockParams()
{
    m_lastClose = getDetailLastClose(m_stock);
    m_priceTick = m_stock ? getDetailPriceTick(m_stock) : kDefaultPriceTick;
    m_isNewRuleBond = m_stock && isNewRuleBond(*m_stock);
    m_isBond = m_stock && isBondType(*m_stock);
    m_isIopvFund = m_stock && isOfType(kTypeFund, *m_stock);
    if (m_stock)
        setFixedRows(2);
}

void CModelTodayParam::classify(bool hasGdr)
{
    const Instrument* const stock = m_stock.get();
    m_priceTick = stock ? getDetailPriceTick(m_stock) : kDefaultPriceTick;
    m_isNewRuleBond = stock && isNewRuleBond(*stock);
    m_isBond = stock && isBondClass(*stock);
    m_isIopvFund = stock && isOfType(kTypeFund, *stock);
    m_isAfterHoursA = stock && hasAfterHoursType(*stock);
    m_isOption = stock && isOptionMarket(stock->market);
    m_isAfterHoursB = stock && hasAfterHoursTypeSz(*stock);
    m_isRegisteredA = stock && isUserOfNewBoardRules() && isOfType(kTypeRegistered, *stock);
    m_isHk = stock && isHongKongMarket(stock->market);
    m_hasGdr = stock && hasGdr;
    m_isRegisteredB = stock && isUserOfNewBoardRules() && isRegisteredB(*stock);
    m_isNewLoan = stock && isNewLoan(*stock);
}

// Volumes are labelled as hands, but for bonds under the new loan rules.
void CModelTodayParam::setVolumeLabels()
{
    setLabel(RP_TOTAL_VOLUME, m_isNewLoan ? QStringLiteral("总量") : QStringLiteral("总手"), volumeColorKey());
    setLabel(RP_CURRENT_VOLUME, m_isNewLoan ? QStringLiteral("现量") : QStringLiteral("现手"), plainColorKey());
}

void CModelTodayParam::setLabel(ERealtimeParam id, const QString& label, const QString& colorKey)
{
    const auto found = m_params.find(id);
    if (found == m_params.end())
        return;
    found->second.label = label;
    found->second.colorKey = colorKey;
}

// The first class of an instrument that has several.
const QList<int>* CModelTodayParam::listOfClass() const
{
    const Instrument& stock = *m_stock;
    const struct {
        bool isOfClass;
        const QList<int>* list;
    } classes[] = {
        {m_isAfterHoursA, &m_afterHoursParamsA},
        {m_isAfterHoursB, &m_afterHoursParamsB},
        {m_isRegisteredA, &m_registeredParamsA},
        {m_isRegisteredB, &m_registeredParamsB},
        {m_hasGdr, &m_gdrParams},
        {isFutureMarket(stock.market), &m_futureParams},
        {isOptionMarket(stock.market), &m_optionParams},
        {isOfType(kTypeStock, stock), &m_stockParams},
        {isOfType(kTypeFund, stock), &m_fundParams},
        {se::isIndexEx(stock.market, stock.code), &m_indexParams},
        {m_isNewRuleBond, &m_newRuleBondParams},
        {m_isBond, &m_bondParams},
        {m_isHk, &m_hkParams},
        {se::isCICCIndex(stock.market), &m_ciccIndexParams},
        {true, &m_defaultParams},
    };
    return std::find_if(std::begin(classes), std::end(classes), [](const auto& each) { return each.isOfClass; })->list;
}

// The rows that the instrument alone gives. The numbers of shares have `shareDigits` decimals.
void CModelTodayParam::setFixedRows(int shareDigits)
{
    setText(RP_LAST_CLOSE, priceText(m_stock->lastClose));
    setLimits(m_stock->upStopPrice, m_stock->downStopPrice);
    setText(RP_TOTAL_SHARES, quantityText(m_stock->getDoubleField(kFieldTotalShares), shareDigits));
    setText(RP_FLOAT_SHARES, quantityText(m_stock->getDoubleField(kFieldFloatShares), shareDigits));
    setMarketValues(m_stock->lastClose);
    if (isFutureMarket(m_stock->market))
        setText(RP_LAST_SETTLE, priceText(m_stock->getDoubleField(kFieldSettlement)));
}

void CModelTodayParam::setGdrRows()
{
    if (!m_hasGdr || !m_gdrStock)
        return;
    const int shares = m_gdrStock->getIntField(kFieldGdrShares);
    setText(RP_GDR_CLOSE, priceText(m_gdrStock->getDoubleField(kFieldGdrClose)));
    setText(RP_GDR_SHARES, wholeText(shares));
    setText(RP_GDR_RATIO, gdrRatioText(shares, m_gdrStock->getIntField(kFieldGdrStocks)));
    // A positive premium shows its sign alone until the first snapshot.
    if (const auto premium = gdrPremium(m_stock->lastClose))
        setParam(RP_GDR_PREMIUM, isGreater(*premium, 0) ? QStringLiteral("+") : ratioText(*premium),
                 getPriceColor(*premium, 0));
}

void CModelTodayParam::setClassRows()
{
    if (m_isAfterHoursA) {
        setRegisteredCapital();
        setText(RP_SAME_RIGHTS, ratioText(m_stock->getDoubleField(kFieldSameRights)));
    }
    if (m_isAfterHoursB || m_isRegisteredA) {
        setRegisteredCapital();
        setText(RP_VIE, hasListingFlag(*m_stock, kBitVie) ? QStringLiteral("具有") : QStringLiteral("不具有"));
    }
    if (m_isBond)
        setText(RP_ACCRUED_INTEREST, priceText(m_stock->getDoubleField(kFieldInterest)));
}

void CModelTodayParam::setRegisteredCapital()
{
    constexpr double kMillion = 1e6;
    if (const int millions = m_stock->getIntField(kFieldCapital); millions != kNoCapital)
        setText(RP_REGISTERED_CAPITAL, quantityText(millions * kMillion));
}

} // namespace TC
