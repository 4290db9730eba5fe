// The parameter table of real days, against what their recorded snapshots say by themselves.

#include "apps/tessi/followedparams.h"
#include "recording/datalayer.h"
#include "tests/tessi/importedday.h"
#include "tests/tessi/paramtexts.h"
#include "tests/tessi/plainparams.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace tests;

// Ten moments, among them one in the opening auction's break, one over lunch and one after the close.
const char* const kMoments[] = {"09:26:00", "09:30:10", "09:31:00", "09:47:30", "10:30:00",
                                "11:29:59", "12:15:00", "13:00:20", "14:56:59", "15:01:00"};

class RecordedParams : public ImportedDay {
protected:
    std::unique_ptr<tessi::FollowedParams> after(recording::HistoryPoint history)
    {
        auto params = std::make_unique<tessi::FollowedParams>(m_day, true);
        recording::DeliveryOptions options;
        options.history = history;
        tessi::deliver(m_terminal, m_day, options, [&](recording::DataLayer& data) { params->subscribe(data); });
        return params;
    }
};

TEST_P(RecordedParams, shouldShowWhatTheSnapshotsSayWhenTheDayIsOver)
{
    const PlainParams plain(m_day, {});
    const auto live = after(recording::HistoryPoint::nothing());
    EXPECT_EQ(listedTexts(live->model), listedTexts(live->model, plain.afterLive()));
    EXPECT_GT(live->model.m_tradeCount, 800);
    const auto history = after(recording::HistoryPoint::wholeDay());
    EXPECT_EQ(listedTexts(history->model), listedTexts(history->model, plain.afterHistory()));
    const auto half = after(recording::HistoryPoint::time(clockOn(m_day, "10:30:00")));
    EXPECT_EQ(listedTexts(half->model), listedTexts(half->model, plain.afterLive()));
}

TEST_P(RecordedParams, shouldShowWhatTheSnapshotsSayWhenMomentsAreLookedAt)
{
    const PlainParams plain(m_day, {});
    for (const auto& history : {recording::HistoryPoint::nothing(), recording::HistoryPoint::wholeDay()}) {
        const auto params = after(history);
        PlainParams::Texts texts = plain.afterLive();
        for (const char* clock : kMoments) {
            const __int64 time = clockOn(m_day, clock);
            ASSERT_TRUE(params->showAt(time)) << clock;
            texts = plain.at(time, texts);
            EXPECT_EQ(listedTexts(params->model), listedTexts(params->model, texts)) << clock;
        }
    }
}

// A time stamp does not say which trades a snapshot has seen, its volume does.
TEST_P(RecordedParams, shouldShowNoMoreInnerAndOuterThanTotalWhenAnySnapshotIsLookedAt)
{
    const auto params = after(recording::HistoryPoint::wholeDay());
    const auto hands = [&params](int id) {
        const QString text = shownText(params->model, id).c_str();
        return text.endsWith(QStringLiteral("万")) ? std::round(text.chopped(1).toDouble() * 1e4) : text.toDouble();
    };
    const auto moments = params->model.m_history;
    for (const auto& [time, moment] : moments) {
        ASSERT_EQ(params->showAt(time), time);
        const double total = hands(TC::RP_TOTAL_VOLUME);
        const double cutOff = total < 1e4 ? 0 : 100; // two digits behind the point
        EXPECT_LE(hands(TC::RP_INNER) + hands(TC::RP_OUTER), total + cutOff) << time;
    }
}

INSTANTIATE_TEST_SUITE_P(Days, RecordedParams,
                         ::testing::Values("szse-20171229-300446", "szse-20170103-000001", "sse-20230201-600519"),
                         [](const auto& param) { return testName(param.param); });

} // namespace
