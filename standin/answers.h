#pragma once

#include "terminal_api.h"

#include <string>

namespace standin {

// The answers of DataCenter, CUserConfig, CAppConfig and LuaModuleCtrl, and of the snapshot fields where the terminal
// may choose, switchable while everything runs, from any thread. After a reset all are no, and a user is signed in.
class TERMINAL_API Answers {
public:
    // No: getUserConfig() is null, and a configuration that somebody kept answers no to everything. The answers
    // below are there again for who signs in next.
    void setSignedIn(bool signedIn);
    void setUserBrovanQuoteMode(bool on);
    void setBoardNewRules(bool on);
    void setNewBondsAuth(bool on);
    void setDataCenterBrovanQuoteMode(bool on);
    void setClientType(int type); // kNoClientType after a reset
    void setModule(const std::string& name, bool entitled);
    void setOwnIndexMarket(const std::string& market); // what isCICCIndex says yes to; "CICC" after a reset

    // Volume and amount in the form for the new loan rules are the record's times this: of getVolumeEx and getAmountEx.
    // 1 after a reset: both forms are the same then. A volume wraps.
    void setNewLoanFactor(int factor);

    // An edition that no question asks for.
    static constexpr int kNoClientType = -1;
};

} // namespace standin
