#include "tests/tessimodel/oracle/params/paramplayer.h"

#include "standin/instruments.h"
#include "utils/timeutils.h"

namespace tests::oracle::params {

void applyToTerminal(standin::Terminal& terminal, const ParamStep& step)
{
    if (step.action == ParamStep::Action::Switch)
        setAnswer(terminal, static_cast<Answer>(step.number), step.on);
    else if (step.action == ParamStep::Action::Renew)
        renew(terminal, step.number);
    else if (step.action == ParamStep::Action::Receipt)
        changeReceipt(step.receipt);
}

int dateOnDisplay(int daysFromLastTradingDay)
{
    constexpr int kDay = standin::kDefaultTradingDay;
    constexpr int kSecondsPerDay = 24 * 60 * 60;
    const __int64 today = utils::timeToMilliseconds(kDay / 10000, kDay / 100 % 100, kDay % 100, 0, 0, 0) / 1000;
    return static_cast<int>(today) + daysFromLastTradingDay * kSecondsPerDay;
}

} // namespace tests::oracle::params
