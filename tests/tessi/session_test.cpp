#include "apps/tessi/session.h"

#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace {

using namespace tests;

TEST(Session, shouldSayInSessionWhenTheClockIsWithinContinuousTrading)
{
    struct Row {
        const char* clock;
        bool inShenzhen, inShanghai, withoutClosingAuction;
    };
    const Row rows[] = {{"09:29:59.999", false, false, false}, {"09:30:00", true, true, true},
                        {"11:30:00.999", true, true, true},    {"11:30:01", false, true, false},
                        {"12:59:59", false, true, false},      {"13:00:00", true, true, true},
                        {"14:56:59.999", true, true, true},    {"14:57:00", false, false, true},
                        {"14:59:59.999", false, false, true},  {"15:00:00", false, false, false}};
    for (const Row& row : rows) {
        EXPECT_EQ(tessi::isInSession(timeOf(row.clock), "SZ", true), row.inShenzhen) << row.clock;
        EXPECT_EQ(tessi::isInSession(timeOf(row.clock), "SH", true), row.inShanghai) << row.clock;
        EXPECT_EQ(tessi::isInSession(timeOf(row.clock), "SZ", false), row.withoutClosingAuction) << row.clock;
    }
}

} // namespace
