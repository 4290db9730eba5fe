#include "tests/tessimodel/oracle/params/naiveparams.h"

#include "Common/numberformat.h"
#include "datasource/datacenter.h"
#include "User/userconfig.h"

#include <cmath>

namespace tests::oracle::params {

namespace {

const char* const kText = "ic_clr_modulegroup_default_text";
const char* const kAmount = "ic_clr_entrust_amount";
const char* const kRise = "ic_clr_entrust_text_rise";
const char* const kFall = "ic_clr_entrust_text_fall";

struct Row {
    int id;
    const char* label;
    const char* colorKey;
};

const Row kRows[] = {
    {0, "最新", kText},
    {1, "均价", kText},
    {2, "涨跌", kText},
    {3, "涨跌[结]", kText},
    {4, "涨幅", kText},
    {5, "涨幅[结]", kText},
    {6, "振幅", kText},
    {7, "昨收", kText},
    {8, "前结", "ic_clr_global_equal"},
    {9, "今开", kText},
    {10, "最高", kText},
    {11, "最低", kText},
    {12, "总笔", kText},
    {13, "每笔", kText},
    {14, "总手", kAmount},
    {15, "现手", kText},
    {16, "总额", "ic_clr_model_today_amount"},
    {18, "委比", kText},
    {19, "持仓", "ic_clr_model_today_position"},
    {20, "今结", kText},
    {21, "涨停", kRise},
    {22, "跌停", kFall},
    {23, "IOPV", kText},
    {24, "内盘", kFall},
    {25, "外盘", kRise},
    {26, "总股本", kText},
    {27, "流通盘", kText},
    {28, "总市值", kAmount},
    {29, "流通市值", kAmount},
    {30, "换手", kText},
    {31, "总买", kAmount},
    {32, "均价", kText},
    {33, "总卖", kAmount},
    {34, "均价", kText},
    {35, "同股同权", kText},
    {36, "注册资本", kText},
    {37, "是否盈利", kText},
    {38, "表决权", kText},
    {39, "盘后额", kText},
    {40, "盘后量", kText},
    {42, "交易状态", "ic_clr_model_trade_status"},
    {46, "是否注册制", kText},
    {47, "协议控制架构", kText},
    {48, "收盘价", kText},
    {49, "份额", kText},
    {50, "转换比例", kText},
    {51, "溢价率", kText},
    {52, "应计利息", kText},
    {53, "结算价全价", kText},
};

const QList<int> kBasic = {0, 1, 2, 30, 4, 9, 14, 10, 15, 11, 16, 7, 21, 22, 12, 13};
const QList<int> kBook = {-1, 33, 34, -1, 31, 32};
const QList<int> kShares = {-1, 26, 27, 1028, 1029};
const QList<int> kFuture = {0, 1, 3, 2, 5, 4, 6, 9, 15, 10, 14, 11, 16, 12, 21, 22, -1, 19, 8, 20, 7};

} // namespace

NaiveParams::NaiveParams(ParamCounters& counters)
    : m_counters(&counters)
{
    for (const auto& [id, label, colorKey] : kRows)
        m_params[id] = {id, label, "", colorKey};
    initParams();
    m_paramList = &m_defaultParams;
}

void NaiveParams::initParams()
{
    const QList<int> dish = se::DataCenter::isBrovanQuoteMode() ? QList<int>() : QList<int>({24, 25});
    const QList<int> book = m_level2 ? kBook : QList<int>();
    const bool userBrovan = TC::getUserConfig() && TC::getUserConfig()->isBrovanQuoteMode();
    const QList<int> lateA = userBrovan ? QList<int>() : QList<int>({-1, 1042, -1, 40, 39});
    const QList<int> lateB = userBrovan ? QList<int>() : QList<int>({-1, 1042, -1, -1, 40, 39});

    m_defaultParams = kBasic;
    m_indexParams = {0, 1, 2, 7, 4, 9, 14, 10, 16, 11, 6, 12};
    m_ciccIndexParams = {0, 2, 7, 4, 9, 14, 10, 16, 11, 6, 12};
    m_futureParams = kFuture;
    m_optionParams = kFuture;
    m_fundParams = QList<int>({0, 1, 2, 30, 4, 9, 14, 10, 15, 11, 23, 16, 7, 21, 22, 12, 13}) + book;
    m_stockParams = kBasic + dish + book + kShares;
    m_afterHoursParamsA = kBasic + dish + book + lateA + kShares;
    m_afterHoursParamsB = kBasic + QList<int>({24, 25}) + book + lateB + kShares;
    m_registeredParamsA = m_stockParams;
    m_registeredParamsB = m_stockParams;
    m_gdrParams = kBasic + QList<int>({24, 25}) + book + kShares + QList<int>({-1, 48, 49, 50, 51});
    m_newRuleBondParams = kBasic + QList<int>({-1, 1052, 1053});
    m_bondParams = {0, 1, 2, 30, 4, 9, 14, 10, 15, 11, 16, 7, 12, 13, -1, 1052, 1053};
    m_hkParams = {0, 1, 2, 4, 9, 14, 10, 15, 11, 16, 7, 12, 13};
}

bool near(double a, double b)
{
    return std::abs(a - b) <= 1e-5;
}

bool usable(double value)
{
    return !near(value, 0) && !near(value, DBL_MAX);
}

QString NaiveParams::price(double value) const
{
    return ZP::formatPriceDoubleNumber(value, m_priceTick);
}

QString NaiveParams::quantity(double value)
{
    return ZP::formatDoubleNumber(value, 2, utils::EFormatNumberFlag(0x40000), false, "非法值");
}

QString NaiveParams::marketValue(double value)
{
    return ZP::formatDoubleNumber(value, 0, utils::EFormatNumberFlag(0x40000), false, "非法值");
}

QString NaiveParams::ratio(double value)
{
    return ZP::formatDoubleNumber(value, 2, utils::EFormatNumberFlag(0x10000), false, "非法值");
}

QString NaiveParams::getPriceColor(double price, double base)
{
    const double d = price - base;
    if (d < -1e-5)
        return kFall;
    if (d > 1e-5)
        return kRise;
    return "ic_clr_entrust_default_text";
}

void NaiveParams::setParam(int id, const QString& text, const QString& colorKey)
{
    const auto row = m_params.find(id);
    if (row == m_params.end()) {
        ++m_counters->unknownIds;
        return;
    }
    row->second.text = text;
    if (!colorKey.isEmpty())
        row->second.colorKey = colorKey;
}

void NaiveParams::setParam(int id, int flag, double value, double base)
{
    if (flag == 0x10000 && !near(value, 0))
        setParam(id, ratio((value - base) / base), getPriceColor(value, base));
    else if (flag == 0x10000)
        setParam(id, ZP::formatDoubleNumber(0, 2, utils::EFormatNumberFlag(0x10000), false, ""),
                 "ic_clr_entrust_default_text");
    else if (!near(value, 0))
        setParam(id, price(value - base), getPriceColor(value, base));
    else
        setParam(id, price(0), "ic_clr_entrust_default_text");
}

void NaiveParams::setParam(const RecordPtr& record)
{
    const Seen now = read(record);
    if (!now.known)
        return;
    if (!near(now.last, 0) || !m_stock) {
        setParam(3, price(now.last - now.lastSettlement), getPriceColor(now.last, now.lastSettlement));
        setParam(2, price(now.last - m_lastClose), getPriceColor(now.last, m_lastClose));
        if (!near(now.lastSettlement, 0))
            setParam(5, ratio((now.last - now.lastSettlement) / now.lastSettlement),
                     getPriceColor(now.last, now.lastSettlement));
        if (!near(m_lastClose, 0))
            setParam(4, ratio((now.last - m_lastClose) / m_lastClose), getPriceColor(now.last, m_lastClose));
        ++m_counters->changesOfLast;
        return;
    }
    const double s = getLastPrice(record);
    setParam(3, 0, s, now.lastSettlement);
    setParam(2, 0, s, m_lastClose);
    if (!near(now.lastSettlement, 0))
        setParam(5, 0x10000, s, now.lastSettlement);
    if (!near(m_lastClose, 0))
        setParam(4, 0x10000, s, m_lastClose);
    ++(near(s, 0) ? m_counters->changesOfNothing : m_counters->changesOfSubstitute);
}

} // namespace tests::oracle::params
