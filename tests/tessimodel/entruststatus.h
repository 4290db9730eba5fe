#pragma once

#include "indexui/tessimodel/cmodelentruststatus.h"
#include "standin/terminal.h"
#include "tests/support/bothstreams.h"
#include "tests/support/instruments.h"
#include "tests/support/oddvalues.h"
#include "tests/support/records.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

namespace tests {

// A book summary whose single steps a test can take.
class EntrustStatus : public TC::CModelEntrustStatus {
public:
    using CModelEntrustStatus::calc;

    bool history(const Records& records) { return quoterCallBack(0, 0, records); }
    bool more(const Records& records) { return quoterCallBack(0, 3, records); }
    bool live(const Records& records) { return quoterCallBack(0, 1, records); }

    // Only the rows of a pair of snapshots.
    bool show(const quoter::QuoterBasePtr& current, const quoter::QuoterBasePtr& previous = nullptr)
    {
        return calc(0, current, previous);
    }
};

// "DBL_MAX" stands for what has no value.
inline std::string valueText(double value)
{
    return value == kNoPrice ? "DBL_MAX" : fmt::format("{}", value);
}

// One row as "ask2 10.03 300 +50"; the change is left out when there is none.
inline std::string rowText(const std::string& name, const TC::EntrustStatusRow& row)
{
    const std::string delta = row.delta == 0 ? "" : fmt::format(" {:+}", row.delta);
    return fmt::format("{} {} {}{}\n", name, valueText(row.price), row.volume, delta);
}

// The rows from the top of a panel, without those that hold zeros: "ask2 10.03 300\nask1 10.02 200 +50\nbid1 10 7\n".
inline std::string rowsText(const TC::CModelEntrustStatus& model)
{
    const auto isZero = [](const TC::EntrustStatusRow& row) {
        return row.price == 0 && row.volume == 0 && row.delta == 0;
    };
    std::string text;
    for (int i = 0; i < model.m_askRows.size(); ++i)
        text += isZero(model.m_askRows[i]) ? "" : rowText(fmt::format("ask{}", 10 - i), model.m_askRows[i]);
    for (int i = 0; i < model.m_bidRows.size(); ++i)
        text += isZero(model.m_bidRows[i]) ? "" : rowText(fmt::format("bid{}", 1 + i), model.m_bidRows[i]);
    return text;
}

// The rows that a snapshot has written, from the top: ".....xxxxx xxxxx.....".
inline std::string usedText(const TC::CModelEntrustStatus& model)
{
    std::string text;
    for (const TC::EntrustStatusRow& row : model.m_askRows)
        text += row.used ? 'x' : '.';
    text += ' ';
    for (const TC::EntrustStatusRow& row : model.m_bidRows)
        text += row.used ? 'x' : '.';
    return text;
}

// "tick 50, kept 30, last 10.01, close 10": all figures that snapshots bring.
inline std::string figuresText(const TC::CModelEntrustStatus& model)
{
    return fmt::format("tick {}, kept {}, last {}, close {}", model.m_tickVolume, model.m_afterHoursVolume,
                       valueText(model.m_lastPrice), valueText(model.m_lastClose));
}

// Every member, one a line. Equal texts, equal models.
inline std::string memberText(const TC::CModelEntrustStatus& m)
{
    return fmt::format("{}{}\n{}\nstock {} types {} {} step {} new loan {}\nlevel1 {} level2 {} closing {} after {}\n",
                       rowsText(m), usedText(m), figuresText(m), fmt::ptr(m.m_stock.get()), m.m_hasAfterHours,
                       m.m_hasAfterHoursSz, m.m_priceTick, m.m_isNewLoan, fmt::ptr(m.m_lastAllData.get()),
                       fmt::ptr(m.m_lastDepthData.get()), fmt::ptr(m.m_closingData.get()),
                       fmt::ptr(m.m_closingPrevData.get()));
}

// The last price of a snapshot in its new-loan form.
inline double alternativeLastOf(const quoter::QuoterBasePtr& record)
{
    if (const auto level1 = std::dynamic_pointer_cast<quoter::QuoterAllData>(record))
        return level1->lastPriceAlt;
    return std::dynamic_pointer_cast<quoter::QuoterDepthData>(record)->lastPriceAlt;
}

// A book summary and the terminal that it stands in.
class EntrustStatusTest : public ::testing::Test {
protected:
    // Puts an instrument there, also in place of the one with its name, and follows it.
    void follow(const standin::InstrumentDescription& description)
    {
        terminal.instruments.add(description);
        model.setStock(keyOf(description.market, description.code));
    }

    void follow(const std::string& market = "SZ", const std::string& code = "000001", const std::set<int>& types = {})
    {
        follow(stock(market, code, types));
    }

    // With this step of the price.
    void followWithStep(double priceTick)
    {
        standin::InstrumentDescription description = stock("SZ", "000001");
        description.priceTick = priceTick;
        follow(description);
    }

    standin::Terminal terminal;
    EntrustStatus model;
};

// What it does alike with either stream. The snapshots of a test are written as level 1; those of the run for level 2
// carry the same figures.
class EntrustStreamTest : public EntrustStatusTest, public ::testing::WithParamInterface<int> {
protected:
    using Written = std::shared_ptr<quoter::QuoterAllData>;

    bool isLevel1() const { return GetParam() == 1; }

    quoter::QuoterBasePtr of(const Written& record) const
    {
        return isLevel1() ? quoter::QuoterBasePtr(record) : asLevel2(*record);
    }

    // The same figures as a snapshot of the other stream.
    quoter::QuoterBasePtr foreign(const Written& record) const
    {
        return isLevel1() ? quoter::QuoterBasePtr(asLevel2(*record)) : record;
    }

    // The model's latest snapshot of the stream, and of the other one.
    quoter::QuoterBasePtr latest() const
    {
        return isLevel1() ? quoter::QuoterBasePtr(model.m_lastAllData) : model.m_lastDepthData;
    }
    quoter::QuoterBasePtr latestOfOther() const
    {
        return isLevel1() ? quoter::QuoterBasePtr(model.m_lastDepthData) : model.m_lastAllData;
    }
};

} // namespace tests
