#include "apps/tessi/daydelivery.h"

#include "luawrapper/luamodulectrl.h"
#include "recording/datalayer.h"
#include "recording/recordedday.h"
#include "standin/terminal.h"

namespace tessi {

namespace {

// What a class of instruments shows only to those who are entitled to it, a replay shows.
void signInWithEverything(standin::Answers& answers)
{
    answers.setSignedIn(true);
    answers.setBoardNewRules(true);
    answers.setNewBondsAuth(true);
    answers.setModule(luawrapper::kModuleBlockTradeConvertibleBond, true);
}

} // namespace

void introduce(standin::Terminal& terminal, const recording::RecordedDay& day)
{
    terminal.instruments.add(day.instrument);
    for (const standin::InstrumentDescription& instrument : day.related)
        terminal.instruments.add(instrument);
    terminal.instruments.setLastTradingDay(day.tradingDay);
    signInWithEverything(terminal.answers);
}

void deliver(standin::Terminal& terminal, const std::shared_ptr<const recording::RecordedDay>& day,
             const recording::DeliveryOptions& options, const std::function<void(recording::DataLayer&)>& subscribe)
{
    recording::DataLayer data(day, options);
    subscribe(data);
    data.start();
    data.waitUntilDelivered();
    data.stop();
    terminal.strands.waitIdle();
}

void deliver(standin::Terminal& terminal, const recording::RecordedDay& day, const recording::DeliveryOptions& options,
             const std::function<void(recording::DataLayer&)>& subscribe)
{
    const std::shared_ptr<const recording::RecordedDay> borrowed(std::shared_ptr<void>(), &day);
    deliver(terminal, borrowed, options, subscribe);
}

void deliverAsHistory(standin::Terminal& terminal, const recording::RecordedDay& day,
                      const std::function<void(recording::DataLayer&)>& subscribe)
{
    deliver(terminal, day, recording::DeliveryOptions(), subscribe);
}

} // namespace tessi
