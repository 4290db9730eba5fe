#include "indexui/tessimodel/liveread.h"
#include "tests/tessimodel/modelstress.h"
#include "tests/tessimodel/thousandmodel.h"

namespace {

using namespace tests;

class ThousandConcurrent : public ModelStress<Thousand> {
protected:
    void deliverLive()
    {
        EndlessDay day;
        while (!stop) {
            for (int i = 0; i < 100; ++i) {
                model->entrustCallback(0, live, batchFor("SZ", "000001", {day.nextOrder()}));
                model->transactionCallback(0, live, batchFor("SZ", "000001", {day.nextTrade()}));
                if (i % 5 == 0)
                    model->quoterCallback(0, live, batchFor("SZ", "000001", {day.nextSnapshot()}));
            }
            terminal.strands.waitIdle();
        }
    }

    void poll()
    {
        BookReading reading;
        while (!stop && !HasFailure()) {
            if (reading.poll(*model)) {
                ++updates;
                EXPECT_NE(reading.flags & TC::kUpdateLevels, 0);
            }
            expectAscending(reading.bids);
            expectAscending(reading.asks);
            for (int tick = 0; tick < 40; tick += 8)
                readQueue(tick % 16 == 0, 9.80 + 0.01 * tick);
            model->isDataAllReadly();
            model->getStockKey();
        }
    }

    // Rows go on changing while they are read; their prices stay.
    static void expectAscending(const TC::EntrustList& rows)
    {
        double before = 0;
        for (const auto& row : rows) {
            const TC::EntrustData now = TC::readLive(*row);
            EXPECT_GT(now.price, before);
            EXPECT_GE(now.volume, 0);
            before = now.price;
        }
    }

    void readQueue(bool isBid, double price)
    {
        const auto level = model->getQueue(isBid, price);
        if (!level)
            return;
        TC::SingleQueue::Quotes quotes;
        level->getQuotes(quotes);
        __int64 before = 0;
        for (const auto& [seq, quote] : quotes) {
            const TC::SingleQuote now = TC::readLive(*quote);
            EXPECT_GT(seq, before);
            EXPECT_EQ(now.seq, seq) << "an order that a panel holds is not used for another";
            EXPECT_LE(now.dealVolume, now.volume);
            before = seq;
        }
        TC::readLive(level->m_volume);
        TC::readLive(level->m_timetag);
    }

    void deliverHistories(int round)
    {
        EndlessDay day;
        const auto [orders, trades, snapshots] = day.nextHistory(200);
        model->setNewLoan(round % 3 == 0);
        model->entrustCallback(0, round % 4 == 1 ? moreHistory : history, batchFor("SZ", "000001", orders));
        model->transactionCallback(0, round % 4 == 2 ? moreHistory : history, batchFor("SZ", "000001", trades));
        model->quoterCallback(0, history, batchFor("SZ", "000001", snapshots));
        if (round % 2 == 0)
            terminal.strands.waitIdle();
    }

    void useTheManager()
    {
        while (!stop) {
            const auto other = bookManager()->createModel(-1);
            ASSERT_NE(other, nullptr);
            other->setStock(keyOf("SZ", "000001"));
            const BookReading reading = readBook(*other);
            expectAscending(reading.bids);
            expectAscending(reading.asks);
            bookManager()->deleteModel(other->m_modelId);
            terminal.changeTradeData("all");
        }
    }
};

TEST_F(ThousandConcurrent, shouldStayWholeWhenEverythingRunsAtOnce)
{
    const auto panel = [this] { poll(); };
    meetUntilTheTimeIsOver({[this] { deliverLive(); }, panel, panel, panel, [this] { useTheManager(); }},
                           [this](int round) {
                               deliverHistories(round);
                               disturb(round);
                           });
    EXPECT_GT(updates, 0);
    for (const auto* levels : {&model->m_book.m_bidLevels, &model->m_book.m_askLevels}) {
        for (const auto& [key, level] : *levels)
            EXPECT_EQ(static_cast<std::size_t>(level->m_number), level->m_quotes.size()) << "at key " << key;
    }
    model->clear();
    model->entrustCallback(0, history,
                           batchFor("SZ", "000001", {order(1).buy(10.00).shares(300), order(2).sell(10.02)}));
    model->transactionCallback(0, history, batchFor("SZ", "000001", {fill(1, 9).at(10.00).shares(100)}));
    terminal.strands.waitIdle();
    EXPECT_EQ(bookText(*model), "bid 10.00 2h x1 (-1)\nask 10.02 1h x1 (+1)\n");
}

} // namespace
