#include "bench/quoteday.h"

#include "bench/tickstream.h"
#include "exchange/random.h"
#include "quoter/quoterdepthdata.h"

#include <algorithm>

namespace bench {

namespace {

constexpr __int64 kOpening = 1709256600000; // 2024-03-01 09:30:00
constexpr int kLowestKey = 3825;
constexpr int kHighestKey = 4675;
constexpr int kLevels = 10;
constexpr int kLargestStep = 4; // ticks from one snapshot to the next

std::shared_ptr<quoter::QuoterDepthData> snapshot(int index, int key, __int64 volume, exchange::Random& random)
{
    auto record = std::make_shared<quoter::QuoterDepthData>();
    record->timetag = kOpening + index * 3000LL;
    record->tradeStatus = 13;
    record->lastPrice = key * kPriceTick;
    record->lastClose = (kLowestKey + kHighestKey) / 2 * kPriceTick;
    record->volume = volume;
    for (int level = 0; level < kLevels; ++level) {
        record->askPrice[level] = (key + 1 + level) * kPriceTick;
        record->askVolume[level] = 1 + random.below(900);
        record->bidPrice[level] = (key - level) * kPriceTick;
        record->bidVolume[level] = 1 + random.below(900);
    }
    return record;
}

} // namespace

QuoteDay::QuoteDay()
    : StockFeed(kLowestKey, kHighestKey)
{
    constexpr int kSeed = 7;
    exchange::Random random(kSeed);
    int key = (kLowestKey + kHighestKey) / 2;
    __int64 volume = 0;
    for (int i = 0; i < kSnapshots; ++i) {
        const int step = random.below(2 * kLargestStep + 1) - kLargestStep;
        key = std::clamp(key + step, kLowestKey + kLevels, kHighestKey - kLevels);
        volume += 1 + random.below(500);
        m_snapshots.push_back(snapshot(i, key, volume, random));
        m_history.push_back(m_snapshots.back());
        m_pushes.push_back({m_snapshots.back()});
    }
}

} // namespace bench
