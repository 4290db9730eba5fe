#include "datasource/datacenter.h"
#include "indexui/tessimodel/cmodeltodayparam.h"
#include "indexui/tessimodel/detail/colorkeys.h"
#include "indexui/tessimodel/detail/userconfig.h"

#include <initializer_list>

namespace TC {

using namespace detail;

namespace {

struct CatalogueEntry {
    ERealtimeParam id;
    const char* label;
    QString (*colorKey)();
};

// Three rows share the label "均价": the day's average, and the averages of the book's two sides.
constexpr CatalogueEntry kCatalogue[] = {
    {RP_LAST, "最新", plainColorKey},
    {RP_AVERAGE, "均价", plainColorKey},
    {RP_CHANGE, "涨跌", plainColorKey},
    {RP_CHANGE_SETTLE, "涨跌[结]", plainColorKey},
    {RP_RISE, "涨幅", plainColorKey},
    {RP_RISE_SETTLE, "涨幅[结]", plainColorKey},
    {RP_AMPLITUDE, "振幅", plainColorKey},
    {RP_LAST_CLOSE, "昨收", plainColorKey},
    {RP_LAST_SETTLE, "前结", settlementColorKey},
    {RP_OPEN, "今开", plainColorKey},
    {RP_HIGH, "最高", plainColorKey},
    {RP_LOW, "最低", plainColorKey},
    {RP_TRADE_COUNT, "总笔", plainColorKey},
    {RP_VOLUME_PER_TRADE, "每笔", plainColorKey},
    {RP_TOTAL_VOLUME, "总手", volumeColorKey},
    {RP_CURRENT_VOLUME, "现手", plainColorKey},
    {RP_TOTAL_AMOUNT, "总额", amountColorKey},
    {RP_COMMISSION_RATIO, "委比", plainColorKey},
    {RP_OPEN_INTEREST, "持仓", openInterestColorKey},
    {RP_SETTLE, "今结", plainColorKey},
    {RP_UP_LIMIT, "涨停", riseColorKey},
    {RP_DOWN_LIMIT, "跌停", fallColorKey},
    {RP_IOPV, "IOPV", plainColorKey},
    {RP_INNER, "内盘", fallColorKey},
    {RP_OUTER, "外盘", riseColorKey},
    {RP_TOTAL_SHARES, "总股本", plainColorKey},
    {RP_FLOAT_SHARES, "流通盘", plainColorKey},
    {RP_TOTAL_MARKET_VALUE, "总市值", volumeColorKey},
    {RP_FLOAT_MARKET_VALUE, "流通市值", volumeColorKey},
    {RP_TURNOVER, "换手", plainColorKey},
    {RP_TOTAL_BID, "总买", volumeColorKey},
    {RP_BID_AVERAGE, "均价", plainColorKey},
    {RP_TOTAL_ASK, "总卖", volumeColorKey},
    {RP_ASK_AVERAGE, "均价", plainColorKey},
    {RP_SAME_RIGHTS, "同股同权", plainColorKey},
    {RP_REGISTERED_CAPITAL, "注册资本", plainColorKey},
    {RP_PROFITABLE, "是否盈利", plainColorKey},
    {RP_VOTING_RIGHTS, "表决权", plainColorKey},
    {RP_AFTER_HOURS_AMOUNT, "盘后额", plainColorKey},
    {RP_AFTER_HOURS_VOLUME, "盘后量", plainColorKey},
    {RP_TRADE_STATUS, "交易状态", phaseColorKey},
    {RP_IS_REGISTERED, "是否注册制", plainColorKey},
    {RP_VIE, "协议控制架构", plainColorKey},
    {RP_GDR_CLOSE, "收盘价", plainColorKey},
    {RP_GDR_SHARES, "份额", plainColorKey},
    {RP_GDR_RATIO, "转换比例", plainColorKey},
    {RP_GDR_PREMIUM, "溢价率", plainColorKey},
    {RP_ACCRUED_INTEREST, "应计利息", plainColorKey},
    {RP_DIRTY_SETTLE, "结算价全价", plainColorKey},
};

constexpr int kGap = kParamSeparator;

constexpr int marked(ERealtimeParam id)
{
    return id + kParamMark;
}

using Entries = std::initializer_list<int>;

// clang-format off
constexpr Entries kBasic = {
    RP_LAST, RP_AVERAGE, RP_CHANGE, RP_TURNOVER, RP_RISE, RP_OPEN, RP_TOTAL_VOLUME, RP_HIGH,
    RP_CURRENT_VOLUME, RP_LOW, RP_TOTAL_AMOUNT, RP_LAST_CLOSE, RP_UP_LIMIT, RP_DOWN_LIMIT,
    RP_TRADE_COUNT, RP_VOLUME_PER_TRADE};
constexpr Entries kIndex = {
    RP_LAST, RP_AVERAGE, RP_CHANGE, RP_LAST_CLOSE, RP_RISE, RP_OPEN, RP_TOTAL_VOLUME, RP_HIGH,
    RP_TOTAL_AMOUNT, RP_LOW, RP_AMPLITUDE, RP_TRADE_COUNT};
constexpr Entries kCiccIndex = {
    RP_LAST, RP_CHANGE, RP_LAST_CLOSE, RP_RISE, RP_OPEN, RP_TOTAL_VOLUME, RP_HIGH,
    RP_TOTAL_AMOUNT, RP_LOW, RP_AMPLITUDE, RP_TRADE_COUNT};
constexpr Entries kFuture = {
    RP_LAST, RP_AVERAGE, RP_CHANGE_SETTLE, RP_CHANGE, RP_RISE_SETTLE, RP_RISE, RP_AMPLITUDE, RP_OPEN,
    RP_CURRENT_VOLUME, RP_HIGH, RP_TOTAL_VOLUME, RP_LOW, RP_TOTAL_AMOUNT, RP_TRADE_COUNT, RP_UP_LIMIT,
    RP_DOWN_LIMIT, kGap, RP_OPEN_INTEREST, RP_LAST_SETTLE, RP_SETTLE, RP_LAST_CLOSE};
constexpr Entries kFund = {
    RP_LAST, RP_AVERAGE, RP_CHANGE, RP_TURNOVER, RP_RISE, RP_OPEN, RP_TOTAL_VOLUME, RP_HIGH,
    RP_CURRENT_VOLUME, RP_LOW, RP_IOPV, RP_TOTAL_AMOUNT, RP_LAST_CLOSE, RP_UP_LIMIT, RP_DOWN_LIMIT,
    RP_TRADE_COUNT, RP_VOLUME_PER_TRADE};
constexpr Entries kBond = {
    RP_LAST, RP_AVERAGE, RP_CHANGE, RP_TURNOVER, RP_RISE, RP_OPEN, RP_TOTAL_VOLUME, RP_HIGH,
    RP_CURRENT_VOLUME, RP_LOW, RP_TOTAL_AMOUNT, RP_LAST_CLOSE, RP_TRADE_COUNT, RP_VOLUME_PER_TRADE};
constexpr Entries kHongKong = {
    RP_LAST, RP_AVERAGE, RP_CHANGE, RP_RISE, RP_OPEN, RP_TOTAL_VOLUME, RP_HIGH,
    RP_CURRENT_VOLUME, RP_LOW, RP_TOTAL_AMOUNT, RP_LAST_CLOSE, RP_TRADE_COUNT, RP_VOLUME_PER_TRADE};

// What stands below them. Two gaps before the after-hours volume of list B, where list A has one, are wanted.
constexpr Entries kInnerOuter = {RP_INNER, RP_OUTER};
constexpr Entries kBook = {kGap, RP_TOTAL_ASK, RP_ASK_AVERAGE, kGap, RP_TOTAL_BID, RP_BID_AVERAGE};
constexpr Entries kAfterHoursA = {
    kGap, marked(RP_TRADE_STATUS), kGap, RP_AFTER_HOURS_VOLUME, RP_AFTER_HOURS_AMOUNT};
constexpr Entries kAfterHoursB = {
    kGap, marked(RP_TRADE_STATUS), kGap, kGap, RP_AFTER_HOURS_VOLUME, RP_AFTER_HOURS_AMOUNT};
constexpr Entries kShares = {
    kGap, RP_TOTAL_SHARES, RP_FLOAT_SHARES, marked(RP_TOTAL_MARKET_VALUE), marked(RP_FLOAT_MARKET_VALUE)};
constexpr Entries kReceipt = {kGap, RP_GDR_CLOSE, RP_GDR_SHARES, RP_GDR_RATIO, RP_GDR_PREMIUM};
constexpr Entries kInterest = {kGap, marked(RP_ACCRUED_INTEREST), marked(RP_DIRTY_SETTLE)};
// clang-format on

} // namespace

CModelTodayParam::Params CModelTodayParam::catalogue()
{
    Params params;
    for (const CatalogueEntry& entry : kCatalogue) {
        SRealtimeParam row;
        row.id = entry.id;
        row.label = QString::fromUtf8(entry.label);
        row.colorKey = entry.colorKey();
        params.emplace(entry.id, row);
    }
    return params;
}

void CModelTodayParam::initParams()
{
    using List = QList<int>;
    const auto only = [](bool wanted, Entries entries) { return wanted ? List(entries) : List(); };

    // With the broker's quotes some rows are left out. Two services answer whose quotes they are: the data centre for
    // inner and outer volume, the user's configuration for the after-hours phase. List B of the latter and that of the
    // receipts show inner and outer volume of any quotes.
    const List exchangeInnerOuter = only(!se::DataCenter::isBrovanQuoteMode(), kInnerOuter);
    const bool hasAfterHours = !isUserBrovanQuoteMode();
    const List book = only(m_level2, kBook);

    m_defaultParams = kBasic;
    m_indexParams = kIndex;
    m_ciccIndexParams = kCiccIndex;
    m_futureParams = kFuture;
    m_optionParams = kFuture;
    m_fundParams = List(kFund) + book;
    m_stockParams = List(kBasic) + exchangeInnerOuter + book + kShares;
    m_afterHoursParamsA = List(kBasic) + exchangeInnerOuter + book + only(hasAfterHours, kAfterHoursA) + kShares;
    m_afterHoursParamsB = List(kBasic) + kInnerOuter + book + only(hasAfterHours, kAfterHoursB) + kShares;
    m_registeredParamsA = m_stockParams;
    m_registeredParamsB = m_stockParams;
    m_gdrParams = List(kBasic) + kInnerOuter + book + kShares + kReceipt;
    m_newRuleBondParams = List(kBasic) + kInterest;
    m_bondParams = List(kBond) + kInterest;
    m_hkParams = kHongKong;
}

bool CModelTodayParam::setLevel2(const bool on)
{
    const bool changed = m_level2 != on;
    m_level2 = on;
    initParams();
    return changed;
}

} // namespace TC
