#include "indexui/tessimodel/detail/queuerows.h"
#include "tests/tessimodel/queuemodel.h"

namespace {

using namespace tests;

class QueueReadingTest : public QueueTest {
protected:
    // Makes the rows of a pair of snapshots of that time, some of them valid.
    void joinAt(const std::string& clock)
    {
        feed.snapshots(live, {level2(clock).bid(10.00)});
        feed.queues(live, {bestQueues(clock).bid(0.0, {100})});
        ASSERT_EQ(model.m_rawTimetag, timeOf(clock));
        ASSERT_TRUE(model.m_bids[1] && model.m_bids[1]->m_valid);
    }

    // Polls with a row of the panel's own in either list: "flags 4, bids emptied". The asks are never touched.
    std::string poll()
    {
        const QueueReading reading = readQueues(model);
        EXPECT_TRUE(reading.keepsAsks());
        if (!reading.updated) {
            EXPECT_TRUE(reading.keepsBids());
            EXPECT_EQ(reading.flags, -1);
            return "no update";
        }
        return fmt::format("flags {}, bids {}", reading.flags,
                           reading.bids.empty()  ? "emptied"
                           : reading.keepsBids() ? "kept"
                                                 : "strange");
    }
};

// --- flags ----------------------------------------------------------------------------------------------------

TEST_F(QueueReadingTest, shouldTouchNothingWhenOnlySnapshotsCame)
{
    EXPECT_EQ(poll(), "no update");
    joinAt("09:30:03");
    EXPECT_EQ(poll(), "no update");
    feed.orders(live, {order(1).buy(10.00)});
    feed.orders(history, {order(1).buy(10.00)});
    EXPECT_EQ(poll(), "no update") << "nor does a history that waits for the other";
}

TEST_F(QueueReadingTest, shouldTellOfATickOnceWhenItChangedTheBook)
{
    feed.begin({order(1).buy(10.00)});
    EXPECT_EQ(poll(), "flags 1, bids kept");
    EXPECT_EQ(poll(), "no update");
    feed.orders(live, {order(2).buy(10.00)});
    feed.trades(live, {cancelOfBuy(1)});
    EXPECT_EQ(poll(), "flags 4, bids kept");
    feed.orders(live, {order(3).buy(10.01)});
    feed.trades(live, {fill(3, 4).shares(40)});
    EXPECT_EQ(poll(), "flags 6, bids kept");
    EXPECT_EQ(model.m_updateFlags, 0);
}

TEST_F(QueueReadingTest, shouldTellOneWhenItWasCleared)
{
    model.clear();
    EXPECT_EQ(poll(), "flags 1, bids emptied");
    EXPECT_EQ(poll(), "no update");
}

// --- bids -----------------------------------------------------------------------------------------------------

TEST_F(QueueReadingTest, shouldKeepTheBidsWhenThereIsNoInstrumentOrAnotherMarkets)
{
    terminal.instruments.add(stock("SH", "000001"));
    terminal.instruments.add(stock("sz", "000001"));
    joinAt("09:30:03");
    for (const QString& key : {keyOf("SH", "000001"), keyOf("sz", "000001"), QString("nobody knows this")}) {
        model.setStock(key);
        for (const int loaded : {0, 3}) {
            model.m_loadedHistory = loaded;
            model.m_updateFlags = 4;
            EXPECT_EQ(poll(), "flags 4, bids kept") << key.toStdString();
        }
    }
}

// The slots hold rows, but a reader walks the length, and that is 0.
TEST_F(QueueReadingTest, shouldEmptyTheBidsWhenAHistoryIsMissing)
{
    joinAt("09:30:03");
    for (const int loaded : {0, 1, 2}) {
        model.m_loadedHistory = loaded;
        model.m_updateFlags = 4;
        EXPECT_EQ(poll(), "flags 4, bids emptied") << loaded;
    }
}

struct AgeCase {
    const char* tick;
    const char* pair;
    const char* answer;
};

TEST_F(QueueReadingTest, shouldKeepTheBidsWhenTheBookIsAtLeastAsNewAsTheSnapshots)
{
    const AgeCase cases[] = {
        {"09:30:03.000", "09:30:02.999", "flags 1, bids kept"},
        {"09:30:03.000", "09:30:03.000", "flags 1, bids kept"},
        {"09:30:03.000", "09:30:03.001", "flags 1, bids emptied"},
    };
    for (const AgeCase& c : cases) {
        SCOPED_TRACE(c.pair);
        model.clear();
        feed.begin({order(1).buy(9.00).time(c.tick)});
        joinAt(c.pair);
        EXPECT_EQ(poll(), c.answer);
    }
}

// Neither has a time yet, so that the book is not the older one.
TEST_F(QueueReadingTest, shouldKeepTheBidsWhenNeitherTickNorSnapshotCame)
{
    feed.begin();
    EXPECT_EQ(poll(), "flags 1, bids kept");
}

// --- the sides by themselves ----------------------------------------------------------------------------------

TEST_F(QueueReadingTest, shouldDoNothingWhenAsksAreAskedFor)
{
    joinAt("09:30:03");
    TC::OrderQueueList rows{nullptr, nullptr};
    model.getAsks(rows);
    EXPECT_EQ(rows.size(), 2u);
    model.getBids(rows);
    EXPECT_TRUE(rows.empty());
    model.getAsks(rows);
    EXPECT_TRUE(rows.empty());
}

// What a panel would get of rows if there were any.
TEST(OrderQueueRowsTest, shouldLeaveOutARowWhenItIsValidAndTheBookHasItsLevel)
{
    const auto rowAt = [](double price, bool isValid) {
        auto row = std::make_shared<TC::OrderQueue>(price, true);
        row->m_valid = isValid;
        return row;
    };
    const TC::OrderQueueList source{rowAt(10.00, true), rowAt(10.00, false), rowAt(9.99, true)};
    TC::OrderQueueList rows;
    TC::detail::appendShown(source, rows, [](double price) { return price == 10.00; });
    EXPECT_EQ(rows, (TC::OrderQueueList{source[1], source[2]}));
}

} // namespace
