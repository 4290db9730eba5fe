#pragma once

#include "indexui/tessimodel/cmodeltransdistribution.h"
#include "tests/support/records.h"
#include "tests/tessimodel/encounter.h"

#include <fmt/format.h>

#include <chrono>
#include <string>
#include <thread>

// What tests of the distribution of transactions are written with.
namespace tests {

// A model whose single steps a test can take.
class TransDistribution : public TC::CModelTransDistribution {
public:
    using CModelTransDistribution::calc;
    using CModelTransDistribution::processData;
    using CModelTransDistribution::quoterCallBackThread;

    void live(const Records& records) { quoterCallBack(0, 1, records); }
    void startHistory(const Records& records) { quoterCallBack(0, 0, records); }
    void startMore(const Records& records) { quoterCallBack(0, 3, records); }

    // Feeds one tick.
    void tick(double price, int volume, bool isBuy = false)
    {
        TransDistributionData data;
        data.price = price;
        data.totalVolume = volume;
        data.volume = volume;
        data.isBuy = isBuy;
        processData(data);
    }
};

// Waits until no history is being worked through; false when that does not come.
inline bool becomesReady(const TC::CModelTransDistribution& model)
{
    const auto end = std::chrono::steady_clock::now() + kLong;
    while (!model.init() && std::chrono::steady_clock::now() < end)
        std::this_thread::yield();
    return model.init();
}

// Ticks as "10.02 +500 of 500 B" lines, oldest first.
inline std::string ticksText(const QList<TC::CModelTransDistribution::TransDistributionData>& ticks)
{
    std::string text;
    for (const auto& tick : ticks)
        text += fmt::format("{} +{} of {} {}\n", tick.price, tick.volume, tick.totalVolume, tick.isBuy ? "B" : "S");
    return text;
}

inline std::string ticksText(const TC::CModelTransDistribution& model)
{
    return ticksText(model.m_ticks);
}

// Rows as "10.02 buys 300 sells 200 of 500" lines, highest price first.
inline std::string pricesText(const TC::CModelTransDistribution& model)
{
    std::string text;
    for (const auto& row : model.m_prices)
        text += fmt::format("{} buys {} sells {} of {}\n", row.price, row.buyVolume, row.sellVolume, row.totalVolume);
    return text;
}

// "all 500 max 300".
inline std::string sumsText(const TC::CModelTransDistribution& model)
{
    return fmt::format("all {} max {}", model.m_totalVolume.load(), model.m_maxVolume.load());
}

} // namespace tests
