#include "standin/answers.h"

#include "datasource/datacenter.h"
#include "Env/appconfig.h"
#include "luawrapper/luamodulectrl.h"
#include "standin/newloanfactor.h"
#include "standin/reset.h"
#include "User/userconfig.h"

#include <atomic>
#include <mutex>
#include <set>

namespace standin {

namespace {

// The answers in force. Never destroyed, so that services can be asked until the very end. What every snapshot asks
// takes no lock.
struct CurrentAnswers {
    static CurrentAnswers& instance()
    {
        static CurrentAnswers& answers = *new CurrentAnswers;
        return answers;
    }

    void reset()
    {
        signedIn = true;
        for (std::atomic<bool>* const answer :
             {&userBrovanQuoteMode, &boardNewRules, &newBondsAuth, &dataCenterBrovanQuoteMode})
            *answer = false;
        clientType = Answers::kNoClientType;
        newLoanFactor = 1;
        const std::lock_guard lock(mutex);
        modules.clear();
        ownIndexMarket = kOwnIndexMarket;
    }

    static constexpr char kOwnIndexMarket[] = "CICC";

    std::atomic<bool> signedIn{true};
    std::atomic<bool> userBrovanQuoteMode{false};
    std::atomic<bool> boardNewRules{false};
    std::atomic<bool> newBondsAuth{false};
    std::atomic<bool> dataCenterBrovanQuoteMode{false};
    std::atomic<int> clientType{Answers::kNoClientType};
    std::atomic<int> newLoanFactor{1};

    std::mutex mutex; // guards what follows
    std::set<std::string> modules;
    std::string ownIndexMarket = kOwnIndexMarket;
};

CurrentAnswers& current()
{
    return CurrentAnswers::instance();
}

bool userAnswer(const std::atomic<bool>& answer)
{
    return current().signedIn && answer;
}

} // namespace

void Answers::setSignedIn(bool signedIn)
{
    current().signedIn = signedIn;
}

void Answers::setUserBrovanQuoteMode(bool on)
{
    current().userBrovanQuoteMode = on;
}

void Answers::setBoardNewRules(bool on)
{
    current().boardNewRules = on;
}

void Answers::setNewBondsAuth(bool on)
{
    current().newBondsAuth = on;
}

void Answers::setDataCenterBrovanQuoteMode(bool on)
{
    current().dataCenterBrovanQuoteMode = on;
}

void Answers::setClientType(int type)
{
    current().clientType = type;
}

void Answers::setModule(const std::string& name, bool entitled)
{
    const std::lock_guard lock(current().mutex);
    if (entitled)
        current().modules.insert(name);
    else
        current().modules.erase(name);
}

void Answers::setOwnIndexMarket(const std::string& market)
{
    const std::lock_guard lock(current().mutex);
    current().ownIndexMarket = market;
}

void Answers::setNewLoanFactor(int factor)
{
    current().newLoanFactor = factor;
}

int newLoanFactor()
{
    return current().newLoanFactor.load(std::memory_order_relaxed);
}

void resetAnswers()
{
    current().reset();
}

} // namespace standin

namespace se {

bool DataCenter::isBrovanQuoteMode()
{
    return standin::current().dataCenterBrovanQuoteMode;
}

bool isCICCIndex(const std::string& market)
{
    const std::lock_guard lock(standin::current().mutex);
    return market == standin::current().ownIndexMarket;
}

} // namespace se

namespace TC {

bool CUserConfig::isBrovanQuoteMode() const
{
    return standin::userAnswer(standin::current().userBrovanQuoteMode);
}

bool CUserConfig::isBoardNewRules() const
{
    return standin::userAnswer(standin::current().boardNewRules);
}

bool CUserConfig::hasNewBondsAuth() const
{
    return standin::userAnswer(standin::current().newBondsAuth);
}

CUserConfig* getUserConfig()
{
    static CUserConfig config;
    return standin::current().signedIn ? &config : nullptr;
}

bool CAppConfig::isClientType(EClientType type)
{
    return type == standin::current().clientType;
}

} // namespace TC

namespace luawrapper {

bool LuaModuleCtrl::checkModule(const std::string& name)
{
    const std::lock_guard lock(standin::current().mutex);
    return standin::current().modules.contains(name);
}

} // namespace luawrapper
