#include "datasource/rpcformula.h"
#include "tests/tessimodel/transdistributiontest.h"

#include <QMutexLocker>

#include <climits>
#include <functional>
#include <string>
#include <utility>

// Kinds of batches, and the redraws that they ask for.
namespace {

using namespace tests;

class TransDistributionBatches : public TransDistributionTest {
protected:
    TransDistributionBatches() { follow("SZ", "000001"); }

    // The redraws since the last call, of which there must be at least that many.
    std::string redrawn(std::size_t count)
    {
        EXPECT_TRUE(redraws.reach(count));
        std::string text = redraws.text();
        redraws.forget();
        return text;
    }
};

// --- live pushes and other kinds ----------------------------------------------------------------------------------

TEST_F(TransDistributionBatches, shouldTakeTheLastRecordAtOnceWhenPushedLive)
{
    for (const int kind : {1, 2}) {
        model.clear();
        model.quoterCallBack(0, kind, {level1().last(10).volume(5)});
        model.quoterCallBack(0, kind, {level1().last(11).volume(6), level1().last(12).volume(7)});
        EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n"
                                    "12 +2 of 7 B\n");
        EXPECT_EQ(redrawn(2), "caller ready, caller ready") << kind;
    }
}

TEST_F(TransDistributionBatches, shouldAskForARedrawOnlyWhenTheLastLiveRecordIsOfNoUse)
{
    const Records batches[] = {{},
                               {nullptr},
                               {level1().last(10).volume(5), nullptr},
                               {level1().last(10).volume(5), order(1).buy(10)},
                               {level1().last(10).volume(5), level1().last(10).volume(0)}};
    for (const int kind : {1, 2}) {
        for (const Records& batch : batches) {
            model.quoterCallBack(0, kind, batch);
            EXPECT_EQ(ticksText(model), "");
            EXPECT_EQ(redrawn(1), "caller ready");
        }
    }
}

TEST_F(TransDistributionBatches, shouldAskForARedrawAndNoMoreWhenTheKindIsUnknown)
{
    history({level1().last(10).volume(5)});
    model.m_pending.append({10, 5, 5, true});
    redrawn(3);
    for (const int kind : {-1, -2, INT_MIN, 4, 5, INT_MAX}) {
        for (const Records& batch : {Records{}, Records{level1().last(11).volume(9)}}) {
            model.quoterCallBack(0, kind, batch);
            EXPECT_EQ(redrawn(1), "caller ready") << kind;
            EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n");
            EXPECT_EQ(pricesText(model), "10 buys 0 sells 5 of 5\n");
            EXPECT_EQ(sumsText(model), "all 5 max 5");
            EXPECT_EQ(model.m_pending.size(), 1);
        }
    }
}

TEST_F(TransDistributionBatches, shouldNotReadTheFirstNumberWhenItTakesABatch)
{
    for (const int first : {-1, 0, 3, 4}) {
        model.quoterCallBack(first, 0, {level1().last(10).volume(5)});
        ASSERT_TRUE(becomesReady(model));
        model.quoterCallBack(first, 1, {level1().last(10).volume(7)});
        EXPECT_EQ(sumsText(model), "all 7 max 7");
    }
}

TEST_F(TransDistributionBatches, shouldDropEveryKindWholeWhenThereIsNoInstrument)
{
    history({level1().last(10).volume(5)});
    model.m_pending.append({10, 5, 5, true});
    redrawn(3);
    model.setStock("nobody");
    for (int kind = -1; kind <= 4; ++kind) {
        model.quoterCallBack(0, kind, {});
        model.quoterCallBack(0, kind, {level1().last(11).volume(9)});
        EXPECT_TRUE(model.init());
        EXPECT_EQ(redraws.text(), "") << kind;
        EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n");
        EXPECT_EQ(pricesText(model), "10 buys 0 sells 5 of 5\n");
        EXPECT_EQ(sumsText(model), "all 5 max 5");
        EXPECT_EQ(model.m_pending.size(), 1);
    }
}

// The instrument is open to the panel, and may be another one by the next batch.
TEST_F(TransDistributionBatches, shouldMeasureByTheStepOfTheInstrumentWhenABatchArrives)
{
    se::RPCFormulaMetaResult series;
    series.rowCount = 2;
    series.prices = {10, 10.05};
    series.volumes = {5, 7};
    const Records records{level1().last(10).volume(5), level1().last(10.05).volume(7)};
    const std::pair<const char*, std::function<void()>> batches[] = {
        {"live",
         [&] {
             model.live({records[0]});
             model.live({records[1]});
         }},
        {"history", [&] { more(records); }},
        {"series", [&] { model.calc(series, {}, "", 0, ""); }},
    };
    auto coarse = stock("SZ", "000002");
    coarse.priceTick = 0.2;
    const auto other = terminal.instruments.add(coarse);
    for (const auto& [name, arrive] : batches) {
        model.clear();
        model.setStock(keyOf("SZ", "000001"));
        arrive();
        EXPECT_EQ(pricesText(model), "10.05 buys 2 sells 0 of 2\n"
                                     "10 buys 0 sells 5 of 5\n")
            << name;
        model.clear();
        model.m_stock = other;
        arrive();
        EXPECT_EQ(pricesText(model), "10 buys 2 sells 5 of 7\n") << name;
    }
}

// --- histories ----------------------------------------------------------------------------------------------------

TEST_F(TransDistributionBatches, shouldTakeEveryRecordInOrderWhenAHistoryArrives)
{
    history({level1().last(10).volume(5), nullptr, level2().last(10.01).volume(7), order(1).buy(10),
             level1().last(10).volume(7), level1().last(9.99).volume(10)});
    const std::string ticks = "10 +5 of 5 S\n"
                              "10.01 +2 of 7 B\n"
                              "9.99 +3 of 10 S\n";
    EXPECT_EQ(ticksText(model), ticks);
    more({level1().last(9.99).volume(12), level1().last(10).volume(13)});
    EXPECT_EQ(ticksText(model), ticks + "9.99 +2 of 12 B\n"
                                        "10 +1 of 13 B\n");
    EXPECT_EQ(pricesText(model), "10.01 buys 2 sells 0 of 2\n"
                                 "10 buys 1 sells 5 of 6\n"
                                 "9.99 buys 2 sells 3 of 5\n");
    EXPECT_EQ(sumsText(model), "all 13 max 6");
}

TEST_F(TransDistributionBatches, shouldReplaceWhatThereIsWhenTheFirstHistoryArrives)
{
    history({level1().last(10).volume(5)});
    model.m_pending.append({10, 5, 5, true});
    history({level1().last(11).volume(3)});
    EXPECT_EQ(ticksText(model), "11 +3 of 3 S\n");
    EXPECT_EQ(pricesText(model), "11 buys 0 sells 3 of 3\n");
    EXPECT_EQ(sumsText(model), "all 3 max 3");
    EXPECT_TRUE(model.m_pending.isEmpty());
}

TEST_F(TransDistributionBatches, shouldKeepWhatIsPendingWhenMoreHistoryArrives)
{
    model.m_pending.append({10, 5, 5, true});
    more({level1().last(11).volume(3)});
    model.live({level1().last(11).volume(4)});
    EXPECT_EQ(ticksText(model.m_pending), "10 +5 of 5 B\n");
    EXPECT_EQ(sumsText(model), "all 4 max 4");
}

// A panel redraws the emptied list, then shows that it is waiting, then the list that came.
TEST_F(TransDistributionBatches, shouldAskForThreeRedrawsWhenTheFirstHistoryArrives)
{
    model.live({level1().last(10).volume(5)});
    redrawn(1);
    {
        const QMutexLocker held(&model.m_mutex);
        model.startHistory({level1().last(11).volume(3)});
        EXPECT_EQ(redraws.text(), "caller ready, caller busy");
        EXPECT_EQ(ticksText(model), "");
        EXPECT_FALSE(model.init());
    }
    EXPECT_EQ(redrawn(3), "caller ready, caller busy, thread ready");
    EXPECT_EQ(ticksText(model), "11 +3 of 3 S\n");
}

TEST_F(TransDistributionBatches, shouldAskForTwoRedrawsWhenMoreHistoryArrives)
{
    {
        const QMutexLocker held(&model.m_mutex);
        model.startMore({level1().last(11).volume(3)});
        EXPECT_EQ(redraws.text(), "caller busy");
        EXPECT_FALSE(model.init());
    }
    EXPECT_EQ(redrawn(2), "caller busy, thread ready");
}

TEST_F(TransDistributionBatches, shouldShowAnEmptyListFirstWhenTheFirstHistoryReplacesAnother)
{
    history({level1().last(10).volume(5)});
    redrawn(3);
    std::string shown;
    {
        const QMutexLocker held(&model.m_mutex);
        const auto listening = QObject::connect(&model, &TC::CModelTransDistribution::sigRedraw, [&] {
            shown += fmt::format("[{}{}{}]", ticksText(model), pricesText(model), sumsText(model));
        });
        model.startHistory({level1().last(11).volume(3)});
        QObject::disconnect(listening);
    }
    EXPECT_EQ(shown, "[all 0 max 0][all 0 max 0]");
}

TEST_F(TransDistributionBatches, shouldEmptyAndEndReadyWhenTheFirstHistoryIsEmpty)
{
    history({level1().last(10).volume(5)});
    redrawn(3);
    {
        const QMutexLocker held(&model.m_mutex);
        model.startHistory({});
        EXPECT_EQ(ticksText(model), "");
        EXPECT_EQ(pricesText(model), "");
        EXPECT_EQ(sumsText(model), "all 0 max 0");
        EXPECT_FALSE(model.init());
    }
    EXPECT_EQ(redrawn(3), "caller ready, caller busy, thread ready");
    EXPECT_TRUE(model.init());
}

TEST_F(TransDistributionBatches, shouldRunAThreadThatAddsNothingWhenMoreHistoryIsEmpty)
{
    history({level1().last(10).volume(5)});
    redrawn(3);
    {
        const QMutexLocker held(&model.m_mutex);
        model.startMore({});
        EXPECT_FALSE(model.init());
    }
    EXPECT_EQ(redrawn(2), "caller busy, thread ready");
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n");
}

// The caller may do with its batch what it likes once the call is over.
TEST_F(TransDistributionBatches, shouldWorkThroughItsOwnCopyWhenTheCallersBatchChanges)
{
    Records batch{level1().last(10).volume(5), level1().last(11).volume(7)};
    {
        const QMutexLocker held(&model.m_mutex);
        model.startHistory(batch);
        batch[0] = level1().last(12).volume(9);
        batch.pop_back();
    }
    ASSERT_TRUE(becomesReady(model));
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n"
                                "11 +2 of 7 B\n");
}

TEST_F(TransDistributionBatches, shouldDoTheThreadsWorkWhenItIsCalledDirectly)
{
    model.quoterCallBackThread({level1().last(10).volume(5), level1().last(11).volume(7)});
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n"
                                "11 +2 of 7 B\n");
    EXPECT_TRUE(model.init());
    EXPECT_EQ(redraws.text(), "caller ready");
}

} // namespace
