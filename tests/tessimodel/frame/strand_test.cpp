#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/support/records.h"
#include "tests/tessimodel/frame/framemodel.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

namespace {

using namespace tests;

class StrandTest : public ::testing::Test {
protected:
    StrandTest()
    {
        terminal.strands.runByHand();
        terminal.instruments.add(stock("SZ", "000001"));
        terminal.instruments.add(stock("SZ", "000002"));
        FrameModel::destroyed = 0;
        model = boost::make_shared<FrameModel>();
        model->setStock(keyOf("SZ", "000001"));
    }

    static FrameModel::Batch twoOrders(const std::string& code = "000001")
    {
        return batchFor("SZ", code, {order(1).buy(10), order(2).buy(10)});
    }

    standin::Terminal terminal;
    boost::shared_ptr<FrameModel> model;
};

TEST_F(StrandTest, shouldReturnAtOnceWhenBatchIsPosted)
{
    model->entrustCallback(0, 3, twoOrders());
    EXPECT_EQ(model->size(), 0) << "no model code runs on the data layer's thread";
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(model->size(), 2);
}

TEST_F(StrandTest, shouldNotRunInlineWhenPostedFromTheStrandItself)
{
    int sizeWithin = -1;
    TC::detail::workerStrand()->post([&] {
        model->entrustCallback(0, 3, twoOrders());
        sizeWithin = model->size();
    });
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(sizeWithin, 0);
    EXPECT_EQ(model->size(), 2);
}

TEST_F(StrandTest, shouldHandOnBothNumbersWhenPosted)
{
    model->entrustCallback(42, 3, twoOrders());
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(model->lastFirst(), 42);
}

TEST_F(StrandTest, shouldDropBatchWhenItIsNull)
{
    model->entrustCallback(0, 3, twoOrders());
    model->entrustCallback(0, 0, nullptr);
    model->plainCallback(0, 0, nullptr);
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(model->size(), 2);
}

// A batch that counts how often it is copied.
struct CountedBatch {
    explicit CountedBatch(int& count)
        : copies(&count)
    {}
    CountedBatch(const CountedBatch& other)
        : copies(other.copies)
    {
        ++*copies;
    }
    CountedBatch(CountedBatch&& other) noexcept = default;
    CountedBatch& operator=(const CountedBatch&) = delete;
    CountedBatch& operator=(CountedBatch&&) = delete;
    ~CountedBatch() = default;

    int* copies;
};

struct CountedModel {
    void take(int, int, const CountedBatch&) { ++taken; }
    int taken = 0;
};

TEST_F(StrandTest, shouldCopyBatchOnceWhenPosted)
{
    int copies = 0;
    CountedModel counted;
    const CountedBatch batch(copies);
    TC::detail::postWorker(*TC::detail::workerStrand(), &counted, &CountedModel::take, 0, 3, batch);
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(counted.taken, 1);
    EXPECT_EQ(copies, 1);
}

TEST_F(StrandTest, shouldRunInPostingOrderWhenSeveralBatchesWait)
{
    model->entrustCallback(0, 3, twoOrders());
    model->entrustCallback(0, 0, batchFor("SZ", "000001", {order(3).sell(11)}));
    EXPECT_TRUE(terminal.strands.drain("modulegroup"));
    EXPECT_EQ(model->size(), 1) << "the history that starts anew came last";
}

TEST_F(StrandTest, shouldStayAliveUntilTaskIsDoneWhenOwnerLetsGo)
{
    model->entrustCallback(0, 3, twoOrders());
    model.reset();
    EXPECT_EQ(FrameModel::destroyed, 0) << "the queued task holds the model";
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(FrameModel::destroyed, 1);
}

TEST_F(StrandTest, shouldNotBeHeldByItsTaskWhenBoundByPlainPointer)
{
    model->plainCallback(0, 3, twoOrders());
    EXPECT_EQ(model.use_count(), 1);
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(model->size(), 2);
}

TEST_F(StrandTest, shouldDropBatchWholeWhenItIsForAnotherInstrument)
{
    model->entrustCallback(0, 3, twoOrders());
    model->entrustCallback(0, 0, twoOrders("000002")); // kind 0 would empty
    model->entrustCallback(0, 3, batchFor("SH", "000001", {order(1).buy(10)}));
    model->entrustCallback(0, 3, batchFor("SZ", "00000", {order(1).buy(10)}));
    model->entrustCallback(0, 3, batchFor("SZ", "0000011", {order(1).buy(10)}));
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(model->size(), 2);
}

TEST_F(StrandTest, shouldDropBatchWhenModelMovedOnBeforeItRan)
{
    model->entrustCallback(0, 3, twoOrders());
    model->setStock(keyOf("SZ", "000002"));
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(model->size(), 0);

    model->entrustCallback(0, 3, twoOrders("000002"));
    model->setStock("nobody");
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(model->size(), 0);
}

TEST_F(StrandTest, shouldBeEmptyAtOnceWhenClearedWhileReleaseWaits)
{
    model->entrustCallback(0, 3, twoOrders());
    terminal.strands.drain("modulegroup");
    ASSERT_EQ(model->rowToken.use_count(), 3);

    model->clear();
    EXPECT_EQ(model->size(), 0);
    EXPECT_EQ(model->rowToken.use_count(), 3) << "the rows are not freed on the thread that clears";

    EXPECT_TRUE(terminal.strands.drain("data_release"));
    EXPECT_EQ(model->rowToken.use_count(), 1);
}

TEST(Batch, shouldTakeWholeBatchOnlyWhenKindIsHistory)
{
    using namespace TC::detail;
    EXPECT_TRUE(isHistory(0));
    EXPECT_TRUE(isHistory(3));
    for (const int live : {1, 2, 4, -1, -3, 1000})
        EXPECT_FALSE(isHistory(live)) << live;
}

TEST(Batch, shouldGiveNullWhenRecordIsOfAnotherType)
{
    using namespace TC::detail;
    EXPECT_EQ(recordAs<quoter::OrderData>(nullptr), nullptr);
    EXPECT_EQ(recordAs<quoter::OrderData>(fill(1, 2)), nullptr);
    EXPECT_NE(recordAs<quoter::OrderData>(order(1)), nullptr);
}

} // namespace
