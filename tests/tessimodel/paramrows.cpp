#include "tests/tessimodel/paramrows.h"

#include "tests/support/records.h"

#include <fmt/format.h>

#include <limits>
#include <map>

namespace tests {

namespace {

using TC::ERealtimeParam;
using TC::SRealtimeParam;

// What no writer puts into a row.
const QString kUntouched = QStringLiteral("untouched");

const std::map<int, const char*> kNames = {
    {0, "RP_LAST"},
    {1, "RP_AVERAGE"},
    {2, "RP_CHANGE"},
    {3, "RP_CHANGE_SETTLE"},
    {4, "RP_RISE"},
    {5, "RP_RISE_SETTLE"},
    {6, "RP_AMPLITUDE"},
    {7, "RP_LAST_CLOSE"},
    {8, "RP_LAST_SETTLE"},
    {9, "RP_OPEN"},
    {10, "RP_HIGH"},
    {11, "RP_LOW"},
    {12, "RP_TRADE_COUNT"},
    {13, "RP_VOLUME_PER_TRADE"},
    {14, "RP_TOTAL_VOLUME"},
    {15, "RP_CURRENT_VOLUME"},
    {16, "RP_TOTAL_AMOUNT"},
    {18, "RP_COMMISSION_RATIO"},
    {19, "RP_OPEN_INTEREST"},
    {20, "RP_SETTLE"},
    {21, "RP_UP_LIMIT"},
    {22, "RP_DOWN_LIMIT"},
    {23, "RP_IOPV"},
    {24, "RP_INNER"},
    {25, "RP_OUTER"},
    {26, "RP_TOTAL_SHARES"},
    {27, "RP_FLOAT_SHARES"},
    {28, "RP_TOTAL_MARKET_VALUE"},
    {29, "RP_FLOAT_MARKET_VALUE"},
    {30, "RP_TURNOVER"},
    {31, "RP_TOTAL_BID"},
    {32, "RP_BID_AVERAGE"},
    {33, "RP_TOTAL_ASK"},
    {34, "RP_ASK_AVERAGE"},
    {35, "RP_SAME_RIGHTS"},
    {36, "RP_REGISTERED_CAPITAL"},
    {37, "RP_PROFITABLE"},
    {38, "RP_VOTING_RIGHTS"},
    {39, "RP_AFTER_HOURS_AMOUNT"},
    {40, "RP_AFTER_HOURS_VOLUME"},
    {42, "RP_TRADE_STATUS"},
    {46, "RP_IS_REGISTERED"},
    {47, "RP_VIE"},
    {48, "RP_GDR_CLOSE"},
    {49, "RP_GDR_SHARES"},
    {50, "RP_GDR_RATIO"},
    {51, "RP_GDR_PREMIUM"},
    {52, "RP_ACCRUED_INTEREST"},
    {53, "RP_DIRTY_SETTLE"},
};

std::string colourName(const QString& key)
{
    if (key == "ic_clr_entrust_text_rise")
        return "rise";
    if (key == "ic_clr_entrust_text_fall")
        return "fall";
    if (key == "ic_clr_entrust_default_text")
        return "equal";
    return key.toStdString();
}

using Rows = std::map<ERealtimeParam, SRealtimeParam>;

// The rows as the action leaves them, with the mark in what it did not write. The table itself is then as if it had
// never been marked.
Rows marked(TC::CModelTodayParam& model, const std::function<void()>& action)
{
    const Rows before = model.m_params;
    for (auto& [id, row] : model.m_params)
        row.text = row.colorKey = kUntouched;
    action();

    Rows after = model.m_params;
    for (auto& [id, row] : model.m_params) {
        if (const auto old = before.find(id); old != before.end()) {
            row.text = row.text == kUntouched ? old->second.text : row.text;
            row.colorKey = row.colorKey == kUntouched ? old->second.colorKey : row.colorKey;
        }
    }
    return after;
}

// A row that is given a colour is written, even if it should keep its text.
bool isWritten(const SRealtimeParam& row)
{
    return row.text != kUntouched || row.colorKey != kUntouched;
}

std::string bookText(const char* side, double average, __int64 volume)
{
    if (average >= std::numeric_limits<double>::max())
        return volume == 0 ? "" : fmt::format(" {} none x {}", side, volume);
    return fmt::format(" {} {} x {}", side, average, volume);
}

} // namespace

std::string nameOf(ERealtimeParam id)
{
    const auto name = kNames.find(id);
    return name == kNames.end() ? std::to_string(id) : name->second;
}

std::string writtenBy(TC::CModelTodayParam& model, const std::function<void()>& action)
{
    std::string text;
    for (const auto& [id, row] : marked(model, action)) {
        if (!isWritten(row))
            continue;
        text += nameOf(id) + ' ' + (row.text.isEmpty() ? "(empty)" : row.text.toStdString());
        if (row.colorKey != kUntouched)
            text += ' ' + colourName(row.colorKey);
        text += '\n';
    }
    return text;
}

std::string namesWrittenBy(TC::CModelTodayParam& model, const std::function<void()>& action)
{
    std::string text;
    for (const auto& [id, row] : marked(model, action)) {
        if (isWritten(row))
            text += (text.empty() ? "" : " ") + nameOf(id);
    }
    return text;
}

std::string lineOf(const std::string& written, ERealtimeParam id)
{
    const std::string lines = '\n' + written;
    const std::size_t begin = lines.find('\n' + nameOf(id) + ' ');
    if (begin == std::string::npos)
        return "";
    return lines.substr(begin + 1, lines.find('\n', begin + 1) - begin - 1);
}

std::string historyText(const TC::CModelTodayParam& model)
{
    std::string text;
    for (const auto& [timetag, entry] : model.m_history) {
        text += fmt::format("{} +{} #{} {}..{}{}{}\n", clockOf(timetag / 1000), entry.curVolume, entry.tradeCount,
                            entry.low, entry.high, bookText("bid", entry.bidAveragePrice, entry.totalBidVolume),
                            bookText("ask", entry.askAveragePrice, entry.totalAskVolume));
    }
    return text;
}

} // namespace tests
