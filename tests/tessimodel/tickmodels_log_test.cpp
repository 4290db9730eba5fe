#include "tests/support/logtext.h"
#include "tests/tessimodel/tickmodel.h"

// What a model with a tick-built book logs of the batches that it gets, whatever book it is.
namespace {

using namespace tests;

template <class Model>
class TickLog : public ::testing::Test, protected ModelStory<Model> {
protected:
    void deliverTwoOfEach()
    {
        this->feed.orders(history, {order(1).buy(10), order(2).buy(10)});
        this->feed.trades(history, {fill(1, 2), fill(1, 3)});
        this->feed.snapshots(history, {level2(), level2()});
    }

    std::string line(const std::string& callback, int count, const std::string& range) const
    {
        const std::string name = std::is_same_v<Model, Queue> ? "CModelDepthQueue" : "CModelDepthThousand";
        return batchLine(&this->model, "TC::" + name + "::" + callback, count, range);
    }
};

TYPED_TEST_SUITE(TickLog, BothModels, ModelNames);

TYPED_TEST(TickLog, shouldLogBatchesOfTwoAndMoreWhenTheyAreDelivered)
{
    this->feed.orders(history, {order(1).buy(10).time("09:15:01"), order(2).buy(10).time("09:25:02")});
    this->feed.trades(live, {fill(1, 2).time("09:30:03"), fill(1, 3).time("09:30:04"), fill(1, 4).time("09:30:05")});
    this->feed.snapshots(moreHistory, {level2("10:00:00"), level2("10:00:03.500")});
    EXPECT_EQ(logTexts(this->terminal),
              (std::vector{this->line("entrustCallback", 2, "20240301091501-20240301092502"),
                           this->line("transactionCallback", 3, "20240301093003-20240301093005"),
                           this->line("quoterCallback", 2, "20240301100000-20240301100003")}));
}

TYPED_TEST(TickLog, shouldLogNothingWhenBatchIsASingleRecordOrEmpty)
{
    this->feed.begin();
    this->feed.orders(live, {order(1).buy(10)});
    this->feed.orders(history, {order(1).buy(10)});
    this->feed.trades(live, {fill(1, 2)});
    this->feed.snapshots(live, {level2()});
    EXPECT_EQ(logTexts(this->terminal), std::vector<std::string>());
}

TYPED_TEST(TickLog, shouldLogNothingWhenThereIsNoInstrumentOrTheLogDoesNotTakeIt)
{
    this->model.setStock("nobody knows this");
    this->deliverTwoOfEach();
    this->model.setStock(keyOf("SZ", "000001"));
    this->terminal.log.setLevel(30000);
    this->deliverTwoOfEach();
    EXPECT_EQ(logTexts(this->terminal), std::vector<std::string>());
    this->terminal.log.setLevel(20000);
    this->deliverTwoOfEach();
    EXPECT_EQ(logTexts(this->terminal).size(), 3u);
}

} // namespace
