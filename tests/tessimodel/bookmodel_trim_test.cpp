#include "tests/tessimodel/bookmodels.h"

#include <vector>

namespace {

using namespace tests;

// The rows as a panel gets them: their extremes, and the trim of a book that crosses.
template <class Model>
class BookModelTrimTest : public BookModelTest<Model> {
protected:
    using Prices = std::vector<double>;

    // Rows of so many hands each, newer than any snapshot here; given best first.
    void give(const Prices& bids, const Prices& asks, int hands = 1)
    {
        if constexpr (std::is_same_v<Model, Thousand>)
            this->feed.begin(ordersAt(bids, asks, hands));
        else
            this->feed.thousand(live, {thousand("09:31:00").bids(levelsAt(bids, hands)).asks(levelsAt(asks, hands))});
    }

    BookReading read()
    {
        this->model.m_updateFlags |= 4;
        BookReading reading;
        poll(reading);
        return reading;
    }

    void poll(BookReading& reading)
    {
        if constexpr (std::is_same_v<Model, Thousand>)
            reading.poll(this->model);
        else
            reading.poll(this->model, byRecord);
    }

    // "10.00 10.01 | 10.02 10.03": the prices of one read, bids and asks.
    std::string prices()
    {
        const BookReading reading = read();
        std::string text;
        for (const auto& row : reading.bids)
            text += fmt::format("{:.2f} ", row->price);
        text += "|";
        for (const auto& row : reading.asks)
            text += fmt::format(" {:.2f}", row->price);
        return text;
    }

private:
    static Records ordersAt(const Prices& bids, const Prices& asks, int hands)
    {
        Records orders;
        __int64 seq = 0;
        for (const double price : bids)
            orders.push_back(order(++seq).buy(price).shares(100LL * hands).time("09:31:00"));
        for (const double price : asks)
            orders.push_back(order(++seq).sell(price).shares(100LL * hands).time("09:31:00"));
        return orders;
    }

    static std::vector<ThousandLevel> levelsAt(const Prices& prices, int hands)
    {
        std::vector<ThousandLevel> levels;
        for (const double price : prices)
            levels.push_back({price, hands});
        return levels;
    }
};

TYPED_TEST_SUITE(BookModelTrimTest, BookModels, BookModelNames);

// --- extremes -------------------------------------------------------------------------------------------------

TYPED_TEST(BookModelTrimTest, shouldWidenTheExtremesOnlyWhenRowsGoBeyondThem)
{
    this->give({10.01, 9.97}, {10.02, 10.06}, 5);
    BookReading reading = this->read();
    EXPECT_EQ(reading.minPrice, 9.97);
    EXPECT_EQ(reading.maxPrice, 10.06);
    EXPECT_EQ(reading.maxAmount, 5 * 10.06);

    this->model.m_updateFlags = 4;
    reading.minPrice = 1;
    reading.maxPrice = 10.059995; // equal within the tolerance
    reading.maxAmount = 1000;
    this->poll(reading);
    EXPECT_EQ(reading.minPrice, 1);
    EXPECT_EQ(reading.maxPrice, 10.059995);
    EXPECT_EQ(reading.maxAmount, 1000);
}

TYPED_TEST(BookModelTrimTest, shouldCountRowsThatTheTrimTakesAwayWhenExtremesAreFound)
{
    this->feed.snapshots(live, {level2("09:30:30").bid(10.01).ask(10.03)});
    this->give({10.05, 10.00}, {9.90, 10.04}, 9);
    const BookReading reading = this->read();
    EXPECT_EQ(reading.minPrice, 9.90);
    EXPECT_EQ(reading.maxPrice, 10.05);
    EXPECT_EQ(reading.maxAmount, 9 * 10.05);
}

// --- the trim -------------------------------------------------------------------------------------------------

TYPED_TEST(BookModelTrimTest, shouldDropRowsBeyondTheSnapshotsLimitsWhenTheBookCrosses)
{
    this->feed.snapshots(live, {level2("09:30:30").bid(10.01).ask(10.03)});
    this->give({10.03, 10.02, 10.00}, {10.01, 10.02, 10.04});
    EXPECT_EQ(this->prices(), "10.00 | 10.04");
}

TYPED_TEST(BookModelTrimTest, shouldKeepRowsAtTheLimitsWhenTheBookCrosses)
{
    this->feed.snapshots(live, {level2("09:30:30").bid(10.03).ask(10.04)});
    this->give({10.03, 10.00}, {10.02, 10.04});
    EXPECT_EQ(this->prices(), "10.00 10.03 | 10.04");
}

TYPED_TEST(BookModelTrimTest, shouldLoseAWholeSideWhenTheSnapshotHasNoneOfIt)
{
    this->feed.snapshots(live, {level2("09:30:30").bid(10.01)});
    this->give({10.03, 10.00}, {10.02, 10.04});
    EXPECT_EQ(this->prices(), "10.00 |") << "no ask is at a floor of 10000000000";
    this->feed.snapshots(live, {level2("09:30:33").ask(10.03)});
    EXPECT_EQ(this->prices(), "| 10.04") << "no bid is at a ceiling of 0";
}

TYPED_TEST(BookModelTrimTest, shouldGoOutCrossedWhenTradingIsNotContinuous)
{
    this->give({10.03, 10.00}, {10.02, 10.04});
    EXPECT_EQ(this->prices(), "10.00 10.03 | 10.02 10.04") << "no snapshot has come";
    this->feed.snapshots(live, {level2("09:30:30").bid(10.01).ask(10.01)});
    EXPECT_EQ(this->prices(), "10.00 10.03 | 10.02 10.04");
    this->feed.snapshots(live, {level2("09:30:33").bid(10.01).ask(10.03)});
    EXPECT_EQ(this->prices(), "10.00 | 10.04");
    this->feed.snapshots(live, {level2("09:30:36").bid(10.01).ask(10.01)});
    EXPECT_EQ(this->prices(), "10.00 10.03 | 10.02 10.04") << "after an auction the limits of before do not count";
}

TYPED_TEST(BookModelTrimTest, shouldCountAsCrossedWhenBestPricesAreEqual)
{
    this->feed.snapshots(live, {level2("09:30:30").bid(10.01).ask(10.03)});
    this->give({10.02}, {10.02, 10.03});
    EXPECT_EQ(this->prices(), "| 10.03");
}

TYPED_TEST(BookModelTrimTest, shouldCompareWithToleranceWhenPricesDifferByLessThanATick)
{
    // Within 1e-5 the best bid is no higher than the limit, the best ask no lower, and the two are equal.
    this->feed.snapshots(live, {level2("09:30:30").bid(10.03).asks({{10.05, 1}, {10.049995, 1}})});
    EXPECT_EQ(this->model.m_askFloor, 10.05);
    this->give({10.030005}, {10.030012, 10.049995});
    EXPECT_EQ(this->read().bids.size(), 1u);
    const BookReading reading = this->read();
    ASSERT_EQ(reading.asks.size(), 1u) << "10.030012 is as good as the bid: the book crosses";
    EXPECT_EQ(reading.asks.front()->price, 10.049995);
}

TYPED_TEST(BookModelTrimTest, shouldNotTrimWhenTheBookDoesNotCrossOrHasOneSide)
{
    this->feed.snapshots(live, {level2("09:30:30").bid(9.01).ask(11.03)});
    this->give({10.02}, {10.03});
    EXPECT_EQ(this->prices(), "10.02 | 10.03");
    this->give({10.02}, {});
    EXPECT_EQ(this->prices(), "10.02 |");
    this->give({}, {10.03});
    EXPECT_EQ(this->prices(), "| 10.03");
}

} // namespace
