#pragma once

#include "standin/terminal.h"
#include "tests/support/instruments.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

// How many shares make one hand, for every model that has such a figure.
namespace tests {

struct HandCase {
    const char* market;
    std::set<int> types;
    std::set<int> shenzhenTwinTypes; // of the instrument with the same code in SZ
    int sharesPerHand;
    bool isShanghaisOwn = false; // by the rule for Shanghai's bonds alone
};

// Type 100017 is asked for with the market "SZ", whatever the instrument's own market is; 126 and the instrument's own
// 100017 count in SH only, and only for models that have a rule for Shanghai's bonds.
inline const std::vector<HandCase>& handCases()
{
    static const std::vector<HandCase> cases{
        {"SH", {}, {}, 100},
        {"SZ", {}, {}, 100},
        {"BJ", {}, {}, 100},
        {"SH", {100016}, {}, 10},
        {"SZ", {100016}, {}, 10},
        {"BJ", {100016}, {}, 10},
        {"SH", {}, {100016}, 100},
        {"SZ", {100017}, {}, 10},
        {"BJ", {}, {100017}, 10},
        {"SH", {}, {100017}, 10},
        {"SZSE", {}, {100017}, 10},
        {"BJ", {100017}, {}, 100},
        {"SZSE", {100017}, {}, 100},
        {"SH", {100017}, {}, 10, true},
        {"SH", {126}, {}, 10, true},
        {"SH", {}, {126}, 100},
        {"SZ", {126}, {}, 100},
        {"BJ", {126}, {}, 100},
        {"SSE", {126}, {}, 100},
        {"SSE", {100017}, {}, 100},
        {"sh", {126}, {}, 100},
        {"SHA", {126}, {}, 100},
        {"SH", {277, 10006}, {277, 10006}, 100},
    };
    return cases;
}

// Puts the case's instrument there and has the model follow it.
template <class Model>
int sharesPerHand(standin::Terminal& terminal, Model& model, const HandCase& c, const std::string& code)
{
    if (!c.shenzhenTwinTypes.empty())
        terminal.instruments.add(stock("SZ", code, c.shenzhenTwinTypes));
    terminal.instruments.add(stock(c.market, code, c.types));
    model.setStock(keyOf(c.market, code));
    return model.m_volumeUnit;
}

// Looks at the m_volumeUnit of a model that counts Shanghai's bonds by ten.
template <class Model>
void expectHandsByType(standin::Terminal& terminal, Model& model)
{
    int code = 600000;
    for (const HandCase& c : handCases()) {
        const std::string name = std::to_string(++code);
        EXPECT_EQ(sharesPerHand(terminal, model, c, name), c.sharesPerHand) << c.market << " case " << name;
    }
}

// The same of a model to which Shanghai is a market like any.
template <class Model>
void expectHandsWithoutShanghaisRule(standin::Terminal& terminal, Model& model)
{
    int code = 600000;
    for (const HandCase& c : handCases()) {
        const std::string name = std::to_string(++code);
        EXPECT_EQ(sharesPerHand(terminal, model, c, name), c.isShanghaisOwn ? 100 : c.sharesPerHand)
            << c.market << " case " << name;
    }
}

} // namespace tests
