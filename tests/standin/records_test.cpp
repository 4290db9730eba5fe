#include "quoter/brovanquoteralldata.h"
#include "quoter/levelorderdata.h"
#include "quoter/levelthousanddata.h"
#include "quoter/orderdata.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/timeseq.h"
#include "quoter/transactioncount.h"
#include "quoter/transactiondata.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using quoter::QuoterBasePtr;

template <class Record>
bool is(const QuoterBasePtr& record)
{
    return std::dynamic_pointer_cast<Record>(record) != nullptr;
}

// Which of the record types a record passes for.
std::string typesOf(const QuoterBasePtr& record)
{
    std::string text;
    text += is<quoter::QuoterAllData>(record) ? "all " : "";
    text += is<zolv::BrovanQuoterAllData>(record) ? "brovan " : "";
    text += is<quoter::QuoterDepthData>(record) ? "depth " : "";
    text += is<quoter::OrderData>(record) ? "order " : "";
    text += is<quoter::TransactionData>(record) ? "trade " : "";
    text += is<quoter::LevelOrderData>(record) ? "queue " : "";
    text += is<quoter::LevelThousandData>(record) ? "thousand " : "";
    text += is<quoter::TransactionCount>(record) ? "count " : "";
    return text;
}

} // namespace

TEST(Records, shouldPassOnlyForTheirOwnTypesWhenCast)
{
    EXPECT_EQ(typesOf(std::make_shared<quoter::QuoterBase>()), "");
    EXPECT_EQ(typesOf(std::make_shared<quoter::QuoterAllData>()), "all ");
    EXPECT_EQ(typesOf(std::make_shared<zolv::BrovanQuoterAllData>()), "all brovan ");
    EXPECT_EQ(typesOf(std::make_shared<quoter::QuoterDepthData>()), "depth ");
    EXPECT_EQ(typesOf(std::make_shared<quoter::OrderData>()), "order ");
    EXPECT_EQ(typesOf(std::make_shared<quoter::TransactionData>()), "trade ");
    EXPECT_EQ(typesOf(std::make_shared<quoter::LevelOrderData>()), "queue ");
    EXPECT_EQ(typesOf(std::make_shared<quoter::LevelThousandData>()), "thousand ");
    EXPECT_EQ(typesOf(std::make_shared<quoter::TransactionCount>()), "count ");
}

TEST(Records, shouldShareOneSlotWhenPriceOrLastPriceIsSet)
{
    quoter::OrderData order;
    order.price = 10.5;
    EXPECT_EQ(order.lastPrice, 10.5);
    EXPECT_EQ(&order.price, &order.lastPrice);
}

TEST(Records, shouldHoldTheLargestTimeWhenTheEndIsOpen)
{
    EXPECT_EQ(quoter::TimeSeq::TIME_LASTED, (quoter::TimeSeq{LLONG_MAX, LLONG_MAX}));
    EXPECT_FALSE(quoter::TimeSeq() == quoter::TimeSeq::TIME_LASTED);
}
