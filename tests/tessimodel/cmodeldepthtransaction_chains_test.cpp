#include "tests/tessimodel/tradelist.h"

namespace {

using namespace tests;

class TradeChainsTest : public TradeListTest {
protected:
    static std::shared_ptr<quoter::TransactionData> dealtAtSecond(__int64 second)
    {
        std::shared_ptr<quoter::TransactionData> trade = fill(1, 2).at(10.00);
        trade->timetag = second * 1000;
        return trade;
    }
};

// --- chains --------------------------------------------------------------------------------------------------

TEST_F(TradeChainsTest, shouldChainTheRowsOfAnOrderWhenItTradesMoreThanOnce)
{
    feed.trades(history, {fill(1, 11), fill(2, 11), fill(1, 12)});
    feed.trades(live, {fill(1, 11)});
    EXPECT_EQ(chainsText(model->m_buyChains), "1: 0 2 3\n2: 1\n");
    EXPECT_EQ(chainsText(model->m_sellChains), "11: 0 1 3\n12: 2\n");
    EXPECT_EQ(linksText(*model), "0: buy -1 2, sell -1 1\n"
                                 "1: buy -1 -1, sell 0 3\n"
                                 "2: buy 0 3, sell -1 -1\n"
                                 "3: buy 2 -1, sell 1 -1\n");
}

TEST_F(TradeChainsTest, shouldKeepSidesApartWhenABuyAndASellOrderHaveOneSeq)
{
    feed.trades(history, {fill(5, 6), fill(6, 5)});
    EXPECT_EQ(chainsText(model->m_buyChains), "5: 0\n6: 1\n");
    EXPECT_EQ(chainsText(model->m_sellChains), "5: 1\n6: 0\n");
    EXPECT_EQ(linksText(*model), "0: buy -1 -1, sell -1 -1\n1: buy -1 -1, sell -1 -1\n");
}

// An unknown order is seq 0, and all that it trades is one chain.
TEST_F(TradeChainsTest, shouldChainLikeAnyOtherWhenSeqIsZeroOrNegative)
{
    feed.trades(history, {fill(0, -3), fill(0, 0), fill(7, -3), fill(0, 0)});
    EXPECT_EQ(chainsText(model->m_buyChains), "0: 0 1 3\n7: 2\n");
    EXPECT_EQ(chainsText(model->m_sellChains), "-3: 0 2\n0: 1 3\n");
    EXPECT_EQ(linksText(*model), "0: buy -1 1, sell -1 2\n"
                                 "1: buy 0 3, sell -1 3\n"
                                 "2: buy -1 -1, sell 0 -1\n"
                                 "3: buy 1 -1, sell 1 -1\n");
}

TEST_F(TradeChainsTest, shouldChainNothingWhenTradeMakesNoRow)
{
    feed.trades(history, {fill(1, 11), fill(1, 11).shares(0), cancelOfBuy(1), fill(1, 12)});
    EXPECT_EQ(chainsText(model->m_buyChains), "1: 0 1\n");
    EXPECT_EQ(chainsText(model->m_sellChains), "11: 0\n12: 1\n");
}

// --- numbers and positions part ways -------------------------------------------------------------------------

// A row's number is how many rows had passed when it came, a refused row's too, and a number is looked up as a position
// among all rows: links land on other rows of the list, as settled with the panel.
TEST_F(TradeChainsTest, shouldNumberByRowsPassedAndLinkByPositionWhenFilterRefusesRows)
{
    filter(atLeastHands(2));
    feed.trades(history,
                {fill(1, 11).shares(100), fill(1, 12).shares(300), fill(1, 13).shares(100), fill(1, 14).shares(200)});
    EXPECT_EQ(model->m_rowCount, 2);
    EXPECT_EQ(chainsText(model->m_buyChains), "1: 0 0 1 1\n");
    EXPECT_EQ(chainsText(model->m_sellChains), "11: 0\n12: 0\n13: 1\n14: 1\n");
    EXPECT_EQ(linksText(*model), "0: buy -1 1, sell -1 -1\n"
                                 "1: buy 0 1, sell -1 -1\n"
                                 "2: buy 0 -1, sell -1 -1\n"
                                 "3: buy 1 -1, sell -1 -1\n");
}

TEST_F(TradeChainsTest, shouldLinkTheWrongRowWhenARefusedRowCameBeforeTheChain)
{
    filter(atLeastHands(2));
    feed.trades(history, {fill(9, 19).shares(100), fill(1, 11).shares(200), fill(1, 12).shares(200)});
    EXPECT_EQ(chainsText(model->m_buyChains), "1: 0 1\n9: 0\n");
    EXPECT_EQ(linksText(*model), "0: buy -1 1, sell -1 -1\n"
                                 "1: buy -1 -1, sell -1 -1\n"
                                 "2: buy 0 -1, sell -1 -1\n")
        << "the row that was refused stands at position 0";
}

TEST_F(TradeChainsTest, shouldNotRebuildChainsPairsAndMinutesWhenFilterIsSetAfterRowsCame)
{
    feed.trades(history,
                {fill(1, 11).time("09:30:01").at(10.00).shares(100), fill(1, 12).time("09:31:01").at(10.00).shares(300),
                 fill(1, 13).time("09:32:01").at(10.00).shares(100)});
    feed.snapshots(history, {snapshot("09:31:03", 10.00, 4)});
    const std::string chains = chainsText(model->m_buyChains) + chainsText(model->m_sellChains);
    const std::string links = linksText(*model);
    const std::string pairs = pairsText(*model);
    EXPECT_EQ(pairs, "09:31:03 (0, 1)\n");
    tookChange();

    filter(atLeastHands(2));
    EXPECT_EQ(rowsText(model->m_filteredRows), "0 09:31:01 10.00 3h B1 S12\n");
    EXPECT_EQ(model->m_rowCount, 1);
    EXPECT_EQ(model->m_rows.size(), 3);
    EXPECT_EQ(model->getData(0), model->m_rows.at(1));
    EXPECT_EQ(chainsText(model->m_buyChains) + chainsText(model->m_sellChains), chains);
    EXPECT_EQ(linksText(*model), links);
    EXPECT_EQ(pairsText(*model), pairs);
    EXPECT_EQ(minutesText(*model), "09:30:00 0\n09:31:00 1\n09:32:00 2\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
    EXPECT_FALSE(tookChange()) << "who sets the filter knows";
}

TEST_F(TradeChainsTest, shouldNumberByTheNewCountWhenRowsComeAfterTheFilter)
{
    feed.trades(history, {fill(1, 11).shares(100), fill(1, 12).shares(300), fill(1, 13).shares(100)});
    filter(atLeastHands(2));
    feed.trades(live, {fill(1, 14).shares(400)});
    EXPECT_EQ(model->m_rowCount, 2);
    EXPECT_EQ(chainsText(model->m_buyChains), "1: 0 1 2 1\n");
    EXPECT_EQ(linksText(*model), "0: buy -1 1, sell -1 -1\n"
                                 "1: buy 0 2, sell -1 -1\n"
                                 "2: buy 1 1, sell -1 -1\n"
                                 "3: buy 2 -1, sell -1 -1\n");
    filter({});
    EXPECT_EQ(model->m_rowCount, 4);
    feed.trades(live, {fill(1, 15).shares(100)});
    EXPECT_EQ(chainsText(model->m_buyChains), "1: 0 1 2 1 4\n");
    EXPECT_EQ(model->m_rows.at(4)->prevBuyIndex, 1);
    EXPECT_EQ(model->m_rows.at(1)->nextBuyIndex, 4);
}

// --- the minute index ----------------------------------------------------------------------------------------

TEST_F(TradeChainsTest, shouldNoteTheFirstRowOfEachMinuteWhenRowsCome)
{
    feed.trades(history, {dealt("09:30:59.999", 10.00, 1), dealt("09:31:00", 10.00, 1), dealt("09:31:30", 10.00, 1),
                          dealt("09:33:00", 10.00, 1)});
    feed.trades(live, {dealt("09:33:59", 10.00, 1)});
    feed.trades(live, {dealt("09:34:00", 10.00, 1)});
    EXPECT_EQ(minutesText(*model), "09:30:00 0\n09:31:00 1\n09:33:00 3\n09:34:00 5\n");
}

TEST_F(TradeChainsTest, shouldKeepTheFirstRowOfAMinuteWhenTimesGoBack)
{
    feed.trades(history, {dealt("09:31:10", 10.00, 1), dealt("09:30:20", 10.00, 1), dealt("09:31:00", 10.00, 1),
                          dealt("09:30:00", 10.00, 1)});
    EXPECT_EQ(minutesText(*model), "09:30:00 1\n09:31:00 0\n");
}

// The entry is the number of the last row that has passed: a refused row notes the one before it, -1 for none.
TEST_F(TradeChainsTest, shouldNoteTheLastRowThatPassedWhenTheFirstOfAMinuteIsRefused)
{
    filter(atLeastHands(2));
    feed.trades(history, {dealt("09:30:00", 10.00, 1), dealt("09:30:30", 10.00, 2), dealt("09:31:00", 10.00, 2),
                          dealt("09:32:00", 10.00, 1), dealt("09:32:01", 10.00, 2), dealt("09:33:00", 10.00, 2)});
    EXPECT_EQ(minutesText(*model), "09:30:00 -1\n09:31:00 1\n09:32:00 1\n09:33:00 3\n");
}

TEST_F(TradeChainsTest, shouldCutTheMinuteTowardsZeroWhenItIsBeforeTheEpoch)
{
    feed.trades(history, {dealtAtSecond(-61), dealtAtSecond(-59)});
    EXPECT_EQ(model->m_minuteIndex, (std::map<int, int>{{-60, -1}, {0, -1}})) << "refused: it is 7:58:59 at UTC+8";
}

TEST_F(TradeChainsTest, shouldKeyTheMinuteByItsLowBitsWhenItExceedsAnInt)
{
    constexpr __int64 kTwoTo32 = 4294967296; // seconds: at 14:28:16 of a day, UTC+8
    feed.trades(history, {dealtAtSecond(kTwoTo32 + 100), dealtAtSecond(kTwoTo32 + 110)});
    EXPECT_EQ(model->m_minuteIndex, (std::map<int, int>{{44, 0}, {104, 1}})) << "a minute starts 44 seconds after 2^32";
}

} // namespace
