#pragma once

#include "terminal_api.h"

#include <string>

namespace standin {

// The answers of DataCenter, CUserConfig, CAppConfig and LuaModuleCtrl, switchable while everything runs, from any
// thread. After a reset all are no, and a user is signed in.
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

    // An edition that no question asks for.
    static constexpr int kNoClientType = -1;
};

} // namespace standin
