#include "datasource/datacenter.h"
#include "Env/appconfig.h"
#include "luawrapper/luamodulectrl.h"
#include "standin/terminal.h"
#include "User/userconfig.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

using standin::Answers;

// Every yes-or-no answer with its switch.
struct Switch {
    const char* name;
    std::function<void(Answers&, bool)> set;
    std::function<bool()> ask;
};

const std::vector<Switch>& switches()
{
    static const std::vector<Switch> all = {
        {"data centre's Brovan mode", &Answers::setDataCenterBrovanQuoteMode, &se::DataCenter::isBrovanQuoteMode},
        {"user's Brovan mode", &Answers::setUserBrovanQuoteMode,
         [] { return TC::getUserConfig()->isBrovanQuoteMode(); }},
        {"board rules", &Answers::setBoardNewRules, [] { return TC::getUserConfig()->isBoardNewRules(); }},
        {"new bonds", &Answers::setNewBondsAuth, [] { return TC::getUserConfig()->hasNewBondsAuth(); }},
        {"module", [](Answers& answers, bool on) { answers.setModule("m", on); },
         [] { return luawrapper::LuaModuleCtrl::checkModule("m"); }},
    };
    return all;
}

bool isClientType(int type)
{
    return TC::CAppConfig::isClientType(static_cast<TC::EClientType>(type));
}

} // namespace

TEST(Answers, shouldAllBeNoWithAUserSignedInWhenNew)
{
    standin::Terminal terminal;
    EXPECT_NE(TC::getUserConfig(), nullptr);
    for (const Switch& answer : switches())
        EXPECT_FALSE(answer.ask()) << answer.name;
    for (const int type : {0, 1, 2, 3, 4})
        EXPECT_FALSE(isClientType(type)) << type;
    EXPECT_TRUE(se::isCICCIndex("CICC"));
    EXPECT_FALSE(se::isCICCIndex("SH"));
}

TEST(Answers, shouldChangeNoOtherAnswerWhenOneIsSwitched)
{
    standin::Terminal terminal;
    for (const Switch& switched : switches()) {
        switched.set(terminal.answers, true);
        for (const Switch& other : switches())
            EXPECT_EQ(other.ask(), &other == &switched) << switched.name << " / " << other.name;
        switched.set(terminal.answers, false);
        EXPECT_FALSE(switched.ask()) << switched.name;
    }
}

TEST(Answers, shouldBeNoFromAKeptConfigurationWhenUserSignsOut)
{
    standin::Terminal terminal;
    const TC::CUserConfig* const kept = TC::getUserConfig();
    terminal.answers.setUserBrovanQuoteMode(true);
    terminal.answers.setBoardNewRules(true);
    terminal.answers.setNewBondsAuth(true);
    terminal.answers.setSignedIn(false);
    EXPECT_EQ(TC::getUserConfig(), nullptr);
    EXPECT_FALSE(kept->isBrovanQuoteMode() || kept->isBoardNewRules() || kept->hasNewBondsAuth());
    terminal.answers.setSignedIn(true);
    EXPECT_EQ(TC::getUserConfig(), kept);
    EXPECT_TRUE(kept->isBrovanQuoteMode() && kept->isBoardNewRules() && kept->hasNewBondsAuth());
}

TEST(Answers, shouldNameModulesClientAndOwnMarketWhenSet)
{
    standin::Terminal terminal;
    terminal.answers.setModule(luawrapper::kModuleBlockTradeConvertibleBond, true);
    EXPECT_TRUE(luawrapper::LuaModuleCtrl::checkModule(luawrapper::kModuleBlockTradeConvertibleBond));
    EXPECT_FALSE(luawrapper::LuaModuleCtrl::checkModule("unknown"));
    terminal.answers.setClientType(TC::CLIENT_TYPE_SDK);
    EXPECT_TRUE(isClientType(3));
    EXPECT_FALSE(isClientType(2));
    terminal.answers.setOwnIndexMarket("ZLI");
    EXPECT_TRUE(se::isCICCIndex("ZLI"));
    EXPECT_FALSE(se::isCICCIndex("CICC"));
}

TEST(Answers, shouldAllBeNoAgainWhenTerminalIsNew)
{
    {
        standin::Terminal terminal;
        for (const Switch& answer : switches())
            answer.set(terminal.answers, true);
        terminal.answers.setClientType(3);
        terminal.answers.setOwnIndexMarket("ZLI");
        terminal.answers.setSignedIn(false);
    }
    EXPECT_NE(TC::getUserConfig(), nullptr);
    for (const Switch& answer : switches())
        EXPECT_FALSE(answer.ask()) << answer.name;
    EXPECT_FALSE(isClientType(3));
    EXPECT_TRUE(se::isCICCIndex("CICC"));
}
