#pragma once

#include "User/userconfig.h"

// The user's configuration. While nobody is signed in there is none, and every question is answered no.
namespace TC::detail {

inline bool isUserBrovanQuoteMode()
{
    const CUserConfig* const user = getUserConfig();
    return user && user->isBrovanQuoteMode();
}

inline bool isUserOfNewBoardRules()
{
    const CUserConfig* const user = getUserConfig();
    return user && user->isBoardNewRules();
}

inline bool isUserOfNewBonds()
{
    const CUserConfig* const user = getUserConfig();
    return user && user->hasNewBondsAuth();
}

} // namespace TC::detail
