#include "bench/levelfeed.h"
#include "bench/referencedeltas.h"
#include "exchange/random.h"
#include "indexui/tessimodel/cmodelquoterdepththousand.h"
#include "tests/support/thousandrecord.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace bench;
using tests::thousandAt;
using tests::ThousandLevel;

namespace {

using Record = std::shared_ptr<quoter::LevelThousandData>;

Record record(__int64 timetag, const std::vector<ThousandLevel>& bids, const std::vector<ThousandLevel>& asks)
{
    return thousandAt(timetag).bids(bids).asks(asks);
}

std::string textOf(const ReferenceDeltas::Deltas& deltas)
{
    std::ostringstream text;
    for (auto delta = deltas.begin(); delta != deltas.end(); ++delta)
        text << delta.key() << " " << delta->first << " at " << delta->second << "\n";
    return text.str();
}

std::string textAfter(const std::vector<Record>& records)
{
    ReferenceDeltas reference;
    for (const Record& taken : records)
        reference.take(taken);
    return textOf(reference.deltas());
}

// Levels about one price, the sides overlapping: prices that were there before and others, some of them twice. As the
// exchange sorts them, or in no order.
std::vector<ThousandLevel> someLevels(exchange::Random& chance, bool isOrdered)
{
    std::vector<ThousandLevel> levels;
    int key = 1000;
    for (int i = chance.below(40); i > 0; --i) {
        key = isOrdered ? key + chance.below(3) : 1000 + chance.below(60);
        levels.push_back({key / 100.0, chance.below(4)});
    }
    return levels;
}

} // namespace

TEST(ReferenceDeltas, shouldHaveNoneWhenThereIsOneRecord)
{
    EXPECT_EQ(textAfter({record(0, {{10.00, 100}}, {{10.01, 100}})}), "");
}

TEST(ReferenceDeltas, shouldCountGrowthAsNegativeWhenVolumesChange)
{
    EXPECT_EQ(textAfter({record(0, {{10.00, 100}}, {{10.01, 100}}), record(3000, {{10.00, 150}}, {{10.01, 40}})}),
              "10 -50 at 3000\n10.01 60 at 3000\n");
}

TEST(ReferenceDeltas, shouldLookASecondBackWhenRecordsAreClose)
{
    EXPECT_EQ(textAfter({record(0, {{10.00, 100}}, {}), record(400, {{10.00, 110}}, {}), //
                         record(800, {{10.00, 130}}, {})}),
              "10 -30 at 800\n");
    EXPECT_EQ(textAfter({record(0, {{10.00, 100}}, {}), record(400, {{10.00, 110}}, {}), //
                         record(1000, {{10.00, 130}}, {})}),
              "10 -20 at 1000\n");
}

TEST(ReferenceDeltas, shouldTakeTheFirstVolumeWhenAPriceIsThereTwice)
{
    EXPECT_EQ(textAfter({record(0, {{10.00, 100}}, {{10.00, 5}}), record(3000, {{10.00, 90}, {10.00, 1}}, {})}),
              "10 10 at 3000\n");
}

TEST(ReferenceDeltas, shouldLeaveOutAPriceWhenOnlyOneRecordHasIt)
{
    EXPECT_EQ(textAfter({record(0, {{10.00, 100}}, {}), record(3000, {{9.99, 100}}, {})}), "");
}

// What is measured is the same work: model and reference come to the same changes by the same records.
struct Shape {
    std::uint64_t seed;
    bool isOrdered;

    std::string name() const { return (isOrdered ? "ordered" : "unordered") + std::to_string(seed); }
    friend std::ostream& operator<<(std::ostream& out, const Shape& shape) { return out << shape.name(); }
};

class MeasuredLevels : public testing::TestWithParam<Shape> {};

INSTANTIATE_TEST_SUITE_P(Shapes, MeasuredLevels,
                         testing::Values(Shape{1, true}, Shape{2, true}, Shape{1, false}, Shape{2, false}),
                         [](const auto& shape) { return shape.param.name(); });

TEST_P(MeasuredLevels, shouldComeToTheSameChangesWhenRecordsAreMeasured)
{
    LevelFeed feed({.records = 20, .isOrdered = GetParam().isOrdered});
    TC::CModelQuoterDepthThousand model;
    feed.follow(model);
    ReferenceDeltas reference;
    for (std::size_t i = 0; i < feed.records().size(); ++i) {
        model.ThousandDataCallback(0, 1, feed.pushes()[i]);
        feed.drain();
        reference.take(feed.records()[i]);
        ASSERT_EQ(textOf(model.m_priceDeltas), textOf(reference.deltas())) << i;
        ASSERT_EQ(reference.deltas().size(), i == 0 ? 0 : 200) << i;
    }
}

TEST_P(MeasuredLevels, shouldComeToTheSameChangesWhenRecordsAreOdd)
{
    exchange::Random chance{GetParam().seed};
    StockFeed feed(900, 1100);
    TC::CModelQuoterDepthThousand model;
    feed.follow(model);
    ReferenceDeltas reference;
    __int64 time = 0;
    for (int i = 0; i < 2000; ++i) {
        time += chance.below(1000) - 100;
        const Record taken =
            record(time, someLevels(chance, GetParam().isOrdered), someLevels(chance, GetParam().isOrdered));
        model.ThousandDataCallback(0, 1, feed.batchOf(taken));
        feed.drain();
        reference.take(taken);
        ASSERT_EQ(textOf(model.m_priceDeltas), textOf(reference.deltas())) << i;
    }
    EXPECT_GT(reference.deltas().size(), 30);
}
