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

// Makes the day's instrument and the day itself known to the terminal: before models are made.
void introduce(standin::Terminal& terminal, const recording::RecordedDay& day);

// Delivers the day to what `subscribe` subscribes, and returns when the models have worked it through. The strands run
// on their pool.
void deliver(standin::Terminal& terminal, const std::shared_ptr<const recording::RecordedDay>& day,
             const recording::DeliveryOptions& options, const std::function<void(recording::DataLayer&)>& subscribe);

// The same with the whole day as history. `day` must outlive the call only.
void deliverAsHistory(standin::Terminal& terminal, const recording::RecordedDay& day,
                      const std::function<void(recording::DataLayer&)>& subscribe);

} // namespace tessi
