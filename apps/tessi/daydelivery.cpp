#include "apps/tessi/daydelivery.h"

#include "recording/datalayer.h"
#include "recording/recordedday.h"
#include "standin/terminal.h"

namespace tessi {

void introduce(standin::Terminal& terminal, const recording::RecordedDay& day)
{
    terminal.instruments.add(day.instrument);
    terminal.instruments.setLastTradingDay(day.tradingDay);
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

void deliverAsHistory(standin::Terminal& terminal, const recording::RecordedDay& day,
                      const std::function<void(recording::DataLayer&)>& subscribe)
{
    const std::shared_ptr<const recording::RecordedDay> borrowed(std::shared_ptr<void>(), &day);
    deliver(terminal, borrowed, recording::DeliveryOptions(), subscribe);
}

} // namespace tessi
