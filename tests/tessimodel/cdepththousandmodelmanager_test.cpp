#include "tests/support/layout.h"
#include "tests/tessimodel/thousandmodel.h"
#include "utils/stockkey.h"

#include <boost/weak_ptr.hpp>

#include <QMetaObject>

#include <thread>

namespace {

using namespace tests;

class BookManagerTest : public ::testing::Test {
protected:
    // A model of the manager's with one bid at 10.00, polled.
    boost::shared_ptr<TC::CModelDepthThousand> givenModel(int id)
    {
        auto model = bookManager()->createModel(id);
        model->setStock(keyOf("SZ", "000001"));
        BookFeed(terminal, *model).begin({order(1).buy(10.00)});
        readBook(*model);
        return model;
    }

    BookTerminal terminal;
    const std::string key = utils::zlStockKey("SZ", "000001");
    TC::EntrustRows asks;
    TC::EntrustRows bids;
};

TEST_F(BookManagerTest, shouldKeepMembersInOrderWhenLaidOut)
{
    const auto manager = bookManager();
    EXPECT_TRUE(standInOrder(manager->m_modelsMutex, manager->m_dataMutex, manager->m_nextModelId, manager->m_models,
                             manager->m_asksData, manager->m_bidsData));
    EXPECT_STREQ(manager->metaObject()->className(), "TC::CDepthThousandModelManager");
    EXPECT_GE(manager->metaObject()->indexOfSlot("slotTradeDataChange(QString)"), 0);
}

// --- models ---------------------------------------------------------------------------------------------------

TEST_F(BookManagerTest, shouldCountIdsFromZeroWhenNoneIsAskedFor)
{
    const auto first = bookManager()->createModel(-1);
    const auto second = bookManager()->createModel(-1);
    EXPECT_EQ(first->m_modelId, 0);
    EXPECT_EQ(second->m_modelId, 1);
    EXPECT_NE(first, second);
    EXPECT_FALSE(first->m_suppressTickFlags);
    EXPECT_EQ(bookManager()->m_models.at(1), second);
}

TEST_F(BookManagerTest, shouldPassOverIdsInUseWhenNoneIsAskedFor)
{
    bookManager()->createModel(0);
    bookManager()->createModel(1);
    bookManager()->createModel(3);
    EXPECT_EQ(bookManager()->createModel(-1)->m_modelId, 2);
    EXPECT_EQ(bookManager()->createModel(-1)->m_modelId, 4);
}

// The next id moves on only when it is found taken.
TEST_F(BookManagerTest, shouldGiveTheSameIdAgainWhenItWasDeletedMeanwhile)
{
    EXPECT_EQ(bookManager()->createModel(-1)->m_modelId, 0);
    EXPECT_EQ(bookManager()->createModel(-1)->m_modelId, 1);
    bookManager()->deleteModel(1);
    EXPECT_EQ(bookManager()->createModel(-1)->m_modelId, 1);
    bookManager()->deleteModel(0);
    EXPECT_EQ(bookManager()->createModel(-1)->m_modelId, 2) << "it never looks back";
}

TEST_F(BookManagerTest, shouldGiveNoSecondModelWhenTheIdIsTaken)
{
    const auto first = bookManager()->createModel(5);
    EXPECT_EQ(first->m_modelId, 5);
    EXPECT_EQ(bookManager()->createModel(5), nullptr);
    EXPECT_EQ(bookManager()->m_models.at(5), first);
    bookManager()->deleteModel(5);
    EXPECT_NE(bookManager()->createModel(5), nullptr);
    EXPECT_NE(bookManager()->createModel(-2), nullptr) << "any other id is one";
    EXPECT_EQ(bookManager()->createModel(-2), nullptr);
}

TEST_F(BookManagerTest, shouldDoNothingWhenAnUnknownModelIsDeleted)
{
    bookManager()->createModel(5);
    bookManager()->deleteModel(6);
    bookManager()->deleteModel(-1);
    EXPECT_EQ(bookManager()->m_models.size(), 1u);
}

TEST_F(BookManagerTest, shouldLeaveTheModelToItsHolderWhenDeleted)
{
    const auto model = givenModel(5);
    bookManager()->deleteModel(5);
    model->m_updateFlags = 4;
    EXPECT_EQ(bookText(*model), "bid 10.00 1h x1 (+1)\n");
    EXPECT_FALSE(bookManager()->checkData(key));
}

TEST_F(BookManagerTest, shouldKeepTheRowsWhenItsLastHolderWasTheManager)
{
    givenModel(5);
    bookManager()->deleteModel(5);
    ASSERT_TRUE(bookManager()->getBids(key, bids));
    EXPECT_EQ(bookText(bids, {}), "bid 10.00 1h x1 (+1)\n");
}

// --- rows -----------------------------------------------------------------------------------------------------

TEST_F(BookManagerTest, shouldGiveCopiesOfTheMapsWithTheSameRowsWhenAsked)
{
    const TC::EntrustRows someAsks = rowsAt(10.02, 5);
    const TC::EntrustRows someBids = rowsAt(10.00, 3);
    bookManager()->setData(key, someAsks, someBids);
    EXPECT_TRUE(bookManager()->getData(key, asks, bids));
    EXPECT_EQ(bookText(bids, asks), "bid 10.00 3h x1 (0)\nask 10.02 5h x1 (0)\n");
    EXPECT_EQ(asks, someAsks);
    EXPECT_EQ(bids, someBids);
    asks.clear();
    EXPECT_TRUE(bookManager()->getAsks(key, asks));
    EXPECT_EQ(asks, someAsks);
}

TEST_F(BookManagerTest, shouldReplaceOlderRowsWhenNewOnesCome)
{
    bookManager()->setData(key, rowsAt(10.02, 5), rowsAt(10.00, 3));
    bookManager()->setData(key, {}, rowsAt(9.99, 2));
    bookManager()->setData("other", rowsAt(1, 1), rowsAt(1, 1));
    EXPECT_TRUE(bookManager()->getData(key, asks, bids));
    EXPECT_EQ(bookText(bids, asks), "bid 9.99 2h x1 (0)\n");
}

TEST_F(BookManagerTest, shouldHoldTheKeyWhenOneSideIsEmpty)
{
    bookManager()->setData(key, {}, rowsAt(10.00, 3));
    EXPECT_TRUE(bookManager()->checkData(key));
    EXPECT_TRUE(bookManager()->getBids(key, bids));
    EXPECT_EQ(bookText(bids, {}), "bid 10.00 3h x1 (0)\n");
    asks = rowsAt(1, 1);
    EXPECT_TRUE(bookManager()->getAsks(key, asks));
    EXPECT_TRUE(asks.empty());
}

TEST_F(BookManagerTest, shouldTouchNothingWhenTheKeyIsNotHeldForBothSides)
{
    asks = rowsAt(1, 1);
    bids = rowsAt(2, 2);
    const auto expectNothing = [&] {
        EXPECT_FALSE(bookManager()->checkData(key));
        EXPECT_FALSE(bookManager()->getData(key, asks, bids));
        EXPECT_FALSE(bookManager()->getAsks(key, asks));
        EXPECT_FALSE(bookManager()->getBids(key, bids));
        EXPECT_EQ(bookText(bids, asks), "bid 2.00 2h x1 (0)\nask 1.00 1h x1 (0)\n");
    };
    expectNothing();
    bookManager()->m_asksData[key] = rowsAt(10.02, 5);
    expectNothing();
    bookManager()->clearDatas();
    bookManager()->m_bidsData[key] = rowsAt(10.00, 5);
    expectNothing();
    EXPECT_EQ(bookManager()->m_asksData.size(), 0u) << "asking makes no entry";
}

// --- trading data changed -------------------------------------------------------------------------------------

TEST_F(BookManagerTest, shouldDropAllRowsAndNoModelWhenTradeDataChange)
{
    for (const QString& text : {QString(), QString("SZ"), QString::fromStdString(key)}) {
        const auto model = bookManager()->createModel(-1);
        bookManager()->setData(key, {}, {});
        bookManager()->setData("other", {}, {});
        terminal.changeTradeData(text);
        EXPECT_FALSE(bookManager()->checkData(key));
        EXPECT_FALSE(bookManager()->checkData("other"));
        EXPECT_TRUE(bookManager()->m_models.contains(model->m_modelId));
        model->setStock(keyOf("SZ", "000001"));
        EXPECT_EQ(model->m_updateFlags, 0) << "there is nothing to show";
    }
}

TEST_F(BookManagerTest, shouldDropTheRowsAtOnceWhenTheSignalComesFromAnotherThread)
{
    bookManager()->setData(key, {}, {});
    std::thread([&] { terminal.changeTradeData("all"); }).join();
    EXPECT_FALSE(bookManager()->checkData(key));
}

TEST_F(BookManagerTest, shouldLeaveRowsWhenAModelHasAlreadyTakenThem)
{
    givenModel(1);
    bookManager()->deleteModel(1);
    const auto model = bookManager()->createModel(2);
    model->setStock(keyOf("SZ", "000001"));
    EXPECT_EQ(bookText(*model), "bid 10.00 1h x1 (+1)\n");
    terminal.changeTradeData("all");
    model->m_updateFlags = 4;
    EXPECT_EQ(bookText(*model), "bid 10.00 1h x1 (+1)\n") << "from its own rows";
}

// --- its end --------------------------------------------------------------------------------------------------

TEST_F(BookManagerTest, shouldBeAnotherOneWhenReleased)
{
    const boost::weak_ptr<TC::CDepthThousandModelManager> first = bookManager();
    EXPECT_EQ(bookManager(), first.lock());
    bookManager()->setData(key, {}, {});
    utils::CSingletonT<TC::CDepthThousandModelManager>::release();
    EXPECT_TRUE(first.expired());
    EXPECT_FALSE(bookManager()->checkData(key));
    EXPECT_TRUE(bookManager()->m_models.empty());
}

TEST_F(BookManagerTest, shouldMakeNoNewManagerWhenItsOwnModelsGoWithIt)
{
    boost::weak_ptr<TC::CModelDepthThousand> model = givenModel(1);
    utils::CSingletonT<TC::CDepthThousandModelManager>::release();
    EXPECT_TRUE(model.expired());
    EXPECT_FALSE(bookManager()->checkData(key)) << "the models of the old one leave nothing to the new one";
}

TEST_F(BookManagerTest, shouldGoOnWhenAModelOutlivesTheManager)
{
    auto model = givenModel(1);
    utils::CSingletonT<TC::CDepthThousandModelManager>::release();
    model->m_updateFlags = 4;
    EXPECT_EQ(bookText(*model), "bid 10.00 1h x1 (+1)\n");
    const auto next = bookManager();
    model.reset();
    EXPECT_TRUE(next->checkData(key)) << "it leaves its rows to the manager of the moment";
}

TEST_F(BookManagerTest, shouldDoNoHarmWhenAModelDiesAfterTheManager)
{
    auto model = givenModel(1);
    utils::CSingletonT<TC::CDepthThousandModelManager>::release();
    model.reset();
    EXPECT_FALSE(bookManager()->checkData(key));
}

TEST_F(BookManagerTest, shouldHearOfChangesAsLongAsItIsHeldWhenReleased)
{
    const auto old = bookManager();
    utils::CSingletonT<TC::CDepthThousandModelManager>::release();
    bookManager()->setData(key, {}, {});
    old->setData(key, {}, {});
    terminal.changeTradeData("all");
    EXPECT_FALSE(bookManager()->checkData(key));
    EXPECT_FALSE(old->checkData(key)) << "whoever still holds the old one has it connected";
}

TEST_F(BookManagerTest, shouldFreeReplacedRowsElsewhereWhenNewOnesCome)
{
    TC::EntrustRows rows{{1002, boost::make_shared<TC::EntrustData>()}};
    const boost::weak_ptr<TC::EntrustData> old = rows.at(1002);
    bookManager()->setData(key, rows, {});
    rows.clear();
    terminal.strands.drain("data_release");
    bookManager()->setData(key, {}, {});
    EXPECT_FALSE(old.expired());
    terminal.strands.drain("data_release");
    EXPECT_TRUE(old.expired());
}

} // namespace
