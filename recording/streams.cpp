#include "recording/recordedday.h"

#include <stdexcept>

namespace recording {

const char* streamName(Stream stream)
{
    switch (stream) {
    case Stream::Orders:
        return "orders";
    case Stream::Trades:
        return "trades";
    case Stream::Quotes:
        return "quotes";
    case Stream::Snapshots:
        return "snapshots";
    case Stream::Queues:
        return "queues";
    case Stream::Thousand:
        return "thousand";
    case Stream::Counts:
        return "counts";
    case Stream::Aux:
        return "aux";
    }
    throw std::logic_error("a stream that does not exist");
}

__int64 timetagOf(const Event& event)
{
    if (event.record)
        return event.record->timetag;
    return event.aux ? event.aux->timetag : 0;
}

} // namespace recording
