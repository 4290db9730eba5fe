#pragma once

#include "indexui/tessimodel/cmodeltodayparam.h"
#include "quoter/quoteaux.h"
#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/support/oddvalues.h"
#include "tests/support/records.h"
#include "ztservice/instrumentdetail.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <utility>

// What tests of the real-time parameter table are written with.
namespace tests {

// A table whose single steps a test can take.
class TodayParam : public TC::CModelTodayParam {
public:
    using CModelTodayParam::calc;
    using CModelTodayParam::clearQuoterData;
    using CModelTodayParam::doRegistParams;
    using CModelTodayParam::getLastPrice;
    using CModelTodayParam::getPriceColor;
    using CModelTodayParam::initStockParams;
    using CModelTodayParam::refresh;
    using CModelTodayParam::setParam;
    using CModelTodayParam::updateHistoryLastClose;

    bool history(const Records& records) { return quoterCallback(0, 0, records); }
    bool live(const Records& records) { return quoterCallback(0, 1, records); }
};

// The whole book at one snapshot.
inline std::shared_ptr<quoter::QuoteAux> summary(const std::string& clock, double bidAverage = 9.5, __int64 bids = 70,
                                                 double askAverage = 10.5, __int64 asks = 80)
{
    auto aux = std::make_shared<quoter::QuoteAux>();
    aux->timetag = timeOf(clock);
    aux->bidAveragePrice = bidAverage;
    aux->totalBidVolume = bids;
    aux->askAveragePrice = askAverage;
    aux->totalAskVolume = asks;
    return aux;
}

// Label, text and colour key of a row, as UTF-8.
inline std::string labelOf(const TC::CModelTodayParam& model, TC::ERealtimeParam id)
{
    return model.m_params.at(id).label.toStdString();
}

inline std::string textOf(const TC::CModelTodayParam& model, TC::ERealtimeParam id)
{
    return model.m_params.at(id).text.toStdString();
}

inline std::string colourOf(const TC::CModelTodayParam& model, TC::ERealtimeParam id)
{
    return model.m_params.at(id).colorKey.toStdString();
}

inline const std::string kRise = "ic_clr_entrust_text_rise";
inline const std::string kFall = "ic_clr_entrust_text_fall";
inline const std::string kEqual = "ic_clr_entrust_default_text";
inline const std::string kPlain = "ic_clr_modulegroup_default_text"; // of most rows until they are coloured

// "0 最新 [10.02] ic_clr_entrust_text_rise\n" for every row: to see that a table stayed as it was.
inline std::string tableText(const TC::CModelTodayParam& model)
{
    std::ostringstream text;
    for (const auto& [id, row] : model.m_params) {
        text << id << ' ' << row.label.toStdString() << " [" << row.text.toStdString() << "] "
             << row.colorKey.toStdString() << '\n';
    }
    return text.str();
}

// "7 10.00\n21 11.00\n": the rows that have a text.
inline std::string filledText(const TC::CModelTodayParam& model)
{
    std::ostringstream text;
    for (const auto& [id, row] : model.m_params) {
        if (!row.text.isEmpty())
            text << id << ' ' << row.text.toStdString() << '\n';
    }
    return text.str();
}

// "0 1 2 -1 1028", without a blank behind the last.
inline std::string listText(const QList<int>& list)
{
    std::string text;
    for (const int entry : list)
        text += (text.empty() ? "" : " ") + std::to_string(entry);
    return text;
}

// The fifteen lists by name, in the order of their members.
using ParamList = QList<int> TC::CModelTodayParam::*;

struct NamedList {
    const char* name;
    ParamList list;
};

inline constexpr NamedList kParamLists[] = {
    {"stock", &TC::CModelTodayParam::m_stockParams},
    {"future", &TC::CModelTodayParam::m_futureParams},
    {"fund", &TC::CModelTodayParam::m_fundParams},
    {"option", &TC::CModelTodayParam::m_optionParams},
    {"index", &TC::CModelTodayParam::m_indexParams},
    {"default", &TC::CModelTodayParam::m_defaultParams},
    {"afterHoursA", &TC::CModelTodayParam::m_afterHoursParamsA},
    {"afterHoursB", &TC::CModelTodayParam::m_afterHoursParamsB},
    {"registeredA", &TC::CModelTodayParam::m_registeredParamsA},
    {"registeredB", &TC::CModelTodayParam::m_registeredParamsB},
    {"gdr", &TC::CModelTodayParam::m_gdrParams},
    {"newRuleBond", &TC::CModelTodayParam::m_newRuleBondParams},
    {"bond", &TC::CModelTodayParam::m_bondParams},
    {"hk", &TC::CModelTodayParam::m_hkParams},
    {"ciccIndex", &TC::CModelTodayParam::m_ciccIndexParams},
};

// One of them; none when there is no such name.
inline ParamList listNamed(const std::string& name)
{
    for (const auto& [each, list] : kParamLists) {
        if (each == name)
            return list;
    }
    ADD_FAILURE() << "no list " << name;
    return nullptr;
}

// The name of the list in force; "none of its own" when it is none of this model's.
inline std::string listInForce(const TC::CModelTodayParam& model)
{
    for (const auto& [name, list] : kParamLists) {
        if (&(model.*list) == model.m_paramList)
            return name;
    }
    return "none of its own";
}

// "bond hk": the instrument flags that are up, in their order.
inline std::string flagsText(const TC::CModelTodayParam& model)
{
    const std::pair<const char*, bool> flags[] = {
        {"newRuleBond", model.m_isNewRuleBond}, {"bond", model.m_isBond},     {"iopvFund", model.m_isIopvFund},
        {"afterHoursA", model.m_isAfterHoursA}, {"option", model.m_isOption}, {"afterHoursB", model.m_isAfterHoursB},
        {"registeredA", model.m_isRegisteredA}, {"gdr", model.m_hasGdr},      {"hk", model.m_isHk},
        {"registeredB", model.m_isRegisteredB},
    };
    std::string text;
    for (const auto& [name, isUp] : flags) {
        if (isUp)
            text += (text.empty() ? "" : " ") + std::string(name);
    }
    return text;
}

// A table and the terminal that it stands in.
class TodayParamTest : public ::testing::Test {
protected:
    // Puts an instrument there, also in place of the one with its name, and has the table follow it. What setStock
    // says.
    bool follow(const standin::InstrumentDescription& description)
    {
        terminal.instruments.add(description);
        return model.setStock(keyOf(description.market, description.code));
    }

    bool follow(const std::string& market, const std::string& code, const std::set<int>& types = {})
    {
        return follow(stock(market, code, types));
    }

    standin::Terminal terminal;
    TodayParam model;
};

} // namespace tests
