#include "luawrapper/luamodulectrl.h"
#include "tests/tessimodel/oracle/params/paraminstruments.h"

namespace tests::oracle::params {

void setAnswer(standin::Terminal& terminal, Answer answer, bool on)
{
    switch (answer) {
    case Answer::SignedIn:
        return terminal.answers.setSignedIn(on);
    case Answer::UserBrovan:
        return terminal.answers.setUserBrovanQuoteMode(on);
    case Answer::BoardNewRules:
        return terminal.answers.setBoardNewRules(on);
    case Answer::NewBondsAuth:
        return terminal.answers.setNewBondsAuth(on);
    case Answer::DataCenterBrovan:
        return terminal.answers.setDataCenterBrovanQuoteMode(on);
    case Answer::BlockTradeModule:
        return terminal.answers.setModule(luawrapper::kModuleBlockTradeConvertibleBond, on);
    case Answer::OwnIndex:
        return terminal.answers.setOwnIndexMarket(on ? "HKX" : "CICC");
    case Answer::NewLoanFactor:
        return terminal.answers.setNewLoanFactor(on ? 10 : 1);
    }
}

const char* answerName(Answer answer)
{
    constexpr const char* kNames[] = {"signed in",
                                      "user's Brovan mode",
                                      "board new rules",
                                      "new bonds entitled",
                                      "data centre's Brovan mode",
                                      "block-trade module",
                                      "own index market is HKX",
                                      "volume and amount of new loans tenfold"};
    return kNames[static_cast<int>(answer)];
}

} // namespace tests::oracle::params
