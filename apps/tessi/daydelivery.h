#pragma once

#include <functional>
#include <memory>

namespace recording {
class DataLayer;
struct DeliveryOptions;
struct RecordedDay;
} // namespace recording

namespace standin {
class Terminal;
}

namespace tessi {

// Makes the day's instrument, those related to it and the day itself known to the terminal, whose user has all
// entitlements from then on: before models are made.
void introduce(standin::Terminal& terminal, const recording::RecordedDay& day);

// Delivers the day to what `subscribe` subscribes, and returns when the models have worked it through. The strands run
// on their pool.
void deliver(standin::Terminal& terminal, const std::shared_ptr<const recording::RecordedDay>& day,
             const recording::DeliveryOptions& options, const std::function<void(recording::DataLayer&)>& subscribe);

// The same of a day that must outlive the call only, and so with the whole of it as history.
void deliver(standin::Terminal& terminal, const recording::RecordedDay& day, const recording::DeliveryOptions& options,
             const std::function<void(recording::DataLayer&)>& subscribe);
void deliverAsHistory(standin::Terminal& terminal, const recording::RecordedDay& day,
                      const std::function<void(recording::DataLayer&)>& subscribe);

} // namespace tessi
