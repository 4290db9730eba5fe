#pragma once

#include "indexui/tessimodel/cmodeldepthentrust.h"
#include "indexui/tessimodel/cmodeldepthholographic.h"
#include "indexui/tessimodel/depthfilter.h"

#include <boost/shared_ptr.hpp>

namespace recording {
class DataLayer;
struct RecordedDay;
} // namespace recording

namespace tessi {

// Every order, cancel and trade of a day passes, whatever its time. The lists' own filter is that of a trading session
// and leaves out what comes before 09:00 and after 16:10.
TC::SDepthFilterParam wholeDayFilter();

// The order list of a replayed day. It reads both tick streams, gets Shanghai's deletes with the orders only, and
// shows the whole day.
class FollowedOrders {
public:
    explicit FollowedOrders(const recording::RecordedDay& day);

    void subscribe(recording::DataLayer& data);

    const boost::shared_ptr<TC::CModelDepthEntrust> model;
};

// The trade list of a replayed day, as the model that also has the view over it. It gets no deletes with the orders, so
// that it knows the sizes of orders that were deleted too, and shows the whole day.
class FollowedTrades {
public:
    explicit FollowedTrades(const recording::RecordedDay& day);

    void subscribe(recording::DataLayer& data);

    const boost::shared_ptr<TC::CModelDepthHolographic> model;
};

} // namespace tessi
