#include "bench/todayparam.h"

#include "bench/todayfeed.h"

namespace bench {

namespace {

using Price = TodayFeed::Price;

// For each snapshot.
template <class Work>
Body prepare(Price price, Work work)
{
    auto feed = std::make_shared<TodayFeed>(price);
    return {[feed, work](int) { return ((*feed).*work)(); }, [feed] { feed->begin(); }};
}

// For a whole day.
Body prepareHistory()
{
    auto feed = std::make_shared<TodayFeed>(Price::Moves);
    return {[feed](int) {
                feed->takeHistory();
                return 1;
            },
            [feed] { feed->begin(); }};
}

} // namespace

std::vector<Operation> todayParamOperations()
{
    return {
        {"today_live", [] { return prepare(Price::Moves, &TodayFeed::show); }},
        {"today_live_formats", [] { return prepare(Price::Moves, &TodayFeed::format); }},
        {"today_live_still_price", [] { return prepare(Price::StandsStill, &TodayFeed::show); }},
        {"today_live_still_price_formats", [] { return prepare(Price::StandsStill, &TodayFeed::format); }},
        {"today_turned_away", [] { return prepare(Price::Moves, &TodayFeed::turnAway); }},
        {"today_history_day", prepareHistory, 1},
    };
}

} // namespace bench
