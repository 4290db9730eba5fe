#include "bench/levelfeed.h"

#include "bench/tickstream.h"
#include "exchange/random.h"
#include "quoter/levelthousanddata.h"

#include <numeric>
#include <utility>

namespace bench {

namespace {

constexpr __int64 kOpening = 1709256600000; // 2024-03-01 09:30:00
constexpr __int64 kSecond = 1000;

// One side of the two books that take turns.
struct Side {
    std::vector<double> prices; // best first
    std::vector<int> volumes[2];
    std::vector<int> numbers;
};

using Order = std::vector<std::size_t>;

Order shuffled(std::size_t count, exchange::Random& chance)
{
    Order order(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (std::size_t i = count; i > 1; --i)
        std::swap(order[i - 1], order[static_cast<std::size_t>(chance.below(static_cast<int>(i)))]);
    return order;
}

Side makeSide(int bestKey, int step, const LevelOptions& options, exchange::Random& chance)
{
    Side side;
    for (int i = 0; i < options.levels; ++i) {
        side.prices.push_back((bestKey + i * step) * kPriceTick);
        side.volumes[0].push_back(1 + chance.below(5000));
        side.numbers.push_back(1 + chance.below(50));
    }
    side.volumes[1] = side.volumes[0];
    Order changed = shuffled(side.prices.size(), chance);
    changed.resize(static_cast<std::size_t>(options.changed) / 2);
    for (const std::size_t level : changed)
        side.volumes[1][level] += 1 + chance.below(500);
    return side;
}

template <class Value>
std::vector<Value> inOrder(const std::vector<Value>& values, const Order& order)
{
    std::vector<Value> sorted;
    sorted.reserve(values.size());
    for (const std::size_t place : order)
        sorted.push_back(values[place]);
    return sorted;
}

} // namespace

LevelFeed::LevelFeed(const LevelOptions& options)
    : StockFeed(8 * options.levels, 12 * options.levels)
    , m_options(options)
{
    exchange::Random chance{1};
    const int middle = 10 * options.levels;
    const Side bids = makeSide(middle, -1, options, chance);
    const Side asks = makeSide(middle + 1, 1, options, chance);
    const auto levels = static_cast<std::size_t>(options.levels);
    Order bidOrder(levels);
    std::iota(bidOrder.begin(), bidOrder.end(), std::size_t{0});
    Order askOrder = bidOrder;
    for (int i = 0; i < options.records; ++i) {
        if (!options.isOrdered) {
            bidOrder = shuffled(levels, chance);
            askOrder = shuffled(levels, chance);
        }
        auto record = std::make_shared<quoter::LevelThousandData>();
        record->timetag = kOpening + i * kSecond;
        record->bidPrices = inOrder(bids.prices, bidOrder);
        record->bidVolumes = inOrder(bids.volumes[i % 2], bidOrder);
        record->bidNumbers = inOrder(bids.numbers, bidOrder);
        record->askPrices = inOrder(asks.prices, askOrder);
        record->askVolumes = inOrder(asks.volumes[i % 2], askOrder);
        record->askNumbers = inOrder(asks.numbers, askOrder);
        m_pushes.push_back(batchOf(record));
        m_records.push_back(std::move(record));
    }
}

} // namespace bench
