#include "standin/answers.h"

#include "datasource/datacenter.h"
#include "Env/appconfig.h"
#include "luawrapper/luamodulectrl.h"
#include "standin/reset.h"
#include "User/userconfig.h"

#include <mutex>
#include <set>

namespace standin {

namespace {

struct AnswerSheet {
    bool signedIn = true;
    bool userBrovanQuoteMode = false;
    bool boardNewRules = false;
    bool newBondsAuth = false;
    bool dataCenterBrovanQuoteMode = false;
    int clientType = Answers::kNoClientType;
    std::set<std::string> modules;
    std::string ownIndexMarket = "CICC";
};

// The answers in force. Never destroyed, so that services can be asked until the very end.
class CurrentAnswers {
public:
    static CurrentAnswers& instance()
    {
        static CurrentAnswers& answers = *new CurrentAnswers;
        return answers;
    }

    // Reads or changes the sheet under its lock.
    template <class Use>
    auto with(Use&& use)
    {
        const std::lock_guard lock(m_mutex);
        return use(m_sheet);
    }

private:
    std::mutex m_mutex;
    AnswerSheet m_sheet;
};

template <class Value>
void set(Value AnswerSheet::*answer, const Value& value)
{
    CurrentAnswers::instance().with([&](AnswerSheet& sheet) { sheet.*answer = value; });
}

template <class Value>
Value get(Value AnswerSheet::*answer)
{
    return CurrentAnswers::instance().with([&](const AnswerSheet& sheet) { return sheet.*answer; });
}

bool userAnswer(bool AnswerSheet::*answer)
{
    return CurrentAnswers::instance().with([&](const AnswerSheet& sheet) { return sheet.signedIn && sheet.*answer; });
}

} // namespace

void Answers::setSignedIn(bool signedIn)
{
    set(&AnswerSheet::signedIn, signedIn);
}

void Answers::setUserBrovanQuoteMode(bool on)
{
    set(&AnswerSheet::userBrovanQuoteMode, on);
}

void Answers::setBoardNewRules(bool on)
{
    set(&AnswerSheet::boardNewRules, on);
}

void Answers::setNewBondsAuth(bool on)
{
    set(&AnswerSheet::newBondsAuth, on);
}

void Answers::setDataCenterBrovanQuoteMode(bool on)
{
    set(&AnswerSheet::dataCenterBrovanQuoteMode, on);
}

void Answers::setClientType(int type)
{
    set(&AnswerSheet::clientType, type);
}

void Answers::setModule(const std::string& name, bool entitled)
{
    CurrentAnswers::instance().with([&](AnswerSheet& sheet) {
        if (entitled)
            sheet.modules.insert(name);
        else
            sheet.modules.erase(name);
    });
}

void Answers::setOwnIndexMarket(const std::string& market)
{
    set(&AnswerSheet::ownIndexMarket, market);
}

void resetAnswers()
{
    CurrentAnswers::instance().with([](AnswerSheet& sheet) { sheet = AnswerSheet(); });
}

} // namespace standin

namespace se {

bool DataCenter::isBrovanQuoteMode()
{
    return standin::get(&standin::AnswerSheet::dataCenterBrovanQuoteMode);
}

bool isCICCIndex(const std::string& market)
{
    return market == standin::get(&standin::AnswerSheet::ownIndexMarket);
}

} // namespace se

namespace TC {

bool CUserConfig::isBrovanQuoteMode() const
{
    return standin::userAnswer(&standin::AnswerSheet::userBrovanQuoteMode);
}

bool CUserConfig::isBoardNewRules() const
{
    return standin::userAnswer(&standin::AnswerSheet::boardNewRules);
}

bool CUserConfig::hasNewBondsAuth() const
{
    return standin::userAnswer(&standin::AnswerSheet::newBondsAuth);
}

CUserConfig* getUserConfig()
{
    static CUserConfig config;
    return standin::get(&standin::AnswerSheet::signedIn) ? &config : nullptr;
}

bool CAppConfig::isClientType(EClientType type)
{
    return type == standin::get(&standin::AnswerSheet::clientType);
}

} // namespace TC

namespace luawrapper {

bool LuaModuleCtrl::checkModule(const std::string& name)
{
    return standin::CurrentAnswers::instance().with(
        [&](const standin::AnswerSheet& sheet) { return sheet.modules.contains(name); });
}

} // namespace luawrapper
