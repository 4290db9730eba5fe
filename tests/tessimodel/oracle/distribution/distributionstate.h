#pragma once

#include "tests/tessimodel/oracle/statelines.h"

#include <cstddef>
#include <cstdint>

namespace tests::oracle::distribution {

namespace sections {

inline const Section kTick{"tick", "price", {"totalVolume", "volume", "isBuy"}};
inline const Section kPending{"pending tick", "price", {"totalVolume", "volume", "isBuy"}};
inline const Section kPrice{"price", "price", {"buyVolume", "sellVolume", "totalVolume"}};
inline const Section kSums{"model", nullptr, {"m_maxVolume", "m_totalVolume"}};
inline const Section kFlags{"model", nullptr, {"m_stock", "m_isShSz", "m_hasAfterHours", "m_hasAfterHoursSz"}};
inline const Section kSignals{"signals", nullptr, {"since the model was made", "init", "trace"}};
inline const Section kAnswer{"model", nullptr, {"ready while threads were held up", "date"}};

} // namespace sections

// What a slot sees at each signal, as a number: init(), and how many ticks there are.
inline __int64 traced(__int64 before, bool isReady, std::size_t ticks)
{
    return static_cast<__int64>(static_cast<unsigned long long>(before) * 1000003 + 2 * ticks + (isReady ? 1 : 2));
}

// Both models have the same members.
template <class Model>
void writeModel(Lines& out, const Model& m)
{
    for (const auto& tick : m.m_ticks)
        out.add(sections::kTick, tick.price, {tick.totalVolume, tick.volume, tick.isBuy});
    for (const auto& tick : m.m_pending)
        out.add(sections::kPending, tick.price, {tick.totalVolume, tick.volume, tick.isBuy});
    for (const auto& row : m.m_prices)
        out.add(sections::kPrice, row.price, {row.buyVolume, row.sellVolume, row.totalVolume});
    out.add(sections::kSums, {m.m_maxVolume, m.m_totalVolume});
    // Instruments are the same objects on both sides.
    const auto stock = static_cast<__int64>(reinterpret_cast<std::intptr_t>(m.m_stock.get()));
    out.add(sections::kFlags, {stock, m.m_isShSz, m.m_hasAfterHours, m.m_hasAfterHoursSz});
}

} // namespace tests::oracle::distribution
