#include "apps/tessi/session.h"

#include "quoter/quoterdepthdata.h"
#include "recording/recordedday.h"
#include "utils/timeutils.h"

#include <algorithm>
#include <memory>

namespace tessi {

bool isInSession(__int64 timetag, const std::string& market, bool hasClosingAuction)
{
    constexpr auto at = [](int hour, int minute) { return (hour * 60 + minute) * 60; };
    const int second = utils::d8_getSecondFromZero(timetag / 1000);
    if (second < at(9, 30) || second >= (hasClosingAuction ? at(14, 57) : at(15, 0)))
        return false;
    return market == "SH" || second <= at(11, 30) || second >= at(13, 0);
}

bool hasClosingAuction(const recording::RecordedDay& day)
{
    return std::any_of(day.events.begin(), day.events.end(), [](const recording::Event& event) {
        const auto snapshot = std::dynamic_pointer_cast<quoter::QuoterDepthData>(event.record);
        return snapshot && snapshot->tradeStatus == kClosingAuctionStatus;
    });
}

std::vector<const recording::Event*> ticksOf(const recording::RecordedDay& day)
{
    std::vector<const recording::Event*> ticks;
    for (const recording::Event& event : day.events) {
        if (event.stream == recording::Stream::Orders || event.stream == recording::Stream::Trades)
            ticks.push_back(&event);
    }
    return ticks;
}

} // namespace tessi
