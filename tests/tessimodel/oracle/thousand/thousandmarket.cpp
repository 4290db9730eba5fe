#include "tests/tessimodel/oracle/thousand/thousandmarket.h"

#include <algorithm>
#include <climits>

namespace tests::oracle::thousand {

ThousandMarket::ThousandMarket(Dice& randomness)
    : Market(randomness)
{
    for (Side* side : {&m_bids, &m_asks}) {
        for (Level& level : *side)
            level = {anyVolume(), m_dice.below(9)};
    }
}

int ThousandMarket::anyVolume()
{
    return m_dice.oneIn(80) ? m_dice.pick({INT_MAX, INT_MIN, -1, 0, 2000000000, -2000000000}) : m_dice.between(1, 60);
}

void ThousandMarket::passTime()
{
    m_time += m_dice.oneIn(3) ? m_dice.pick<__int64>({0, 1, 999, 1000, 1001, 2000, 2999, 3000, 3001, 11000})
                              : m_dice.between(50, 700);
}

void ThousandMarket::change(Side& side)
{
    const int changes = m_dice.below(5);
    for (int i = 0; i < changes; ++i) {
        Level& level = side[static_cast<std::size_t>(m_dice.below(kPrices))];
        level = {anyVolume(), m_dice.oneIn(50) ? m_dice.pick({-1, INT_MAX}) : m_dice.below(9)};
    }
}

// Best first.
AllLevels ThousandMarket::listed(const Side& side, bool isBid)
{
    AllLevels levels;
    // One in many crosses the other side.
    const int crossing = m_dice.oneIn(12) ? m_dice.between(1, 3) : 0;
    const int first = isBid ? m_middle - 1 + crossing : m_middle - crossing;
    for (int at = std::clamp(first, 0, kPrices - 1); at >= 0 && at < kPrices; at += isBid ? -1 : 1) {
        if (m_dice.oneIn(25))
            continue;
        const Level& level = side[static_cast<std::size_t>(at)];
        levels.prices.push_back(priceAt(at));
        levels.volumes.push_back(level.volume);
        levels.numbers.push_back(level.number);
    }
    return levels;
}

void ThousandMarket::tear(AllLevels& levels)
{
    if (levels.prices.empty())
        return;
    const auto any = [this](auto& list) -> auto&
    {
        return list[static_cast<std::size_t>(m_dice.below(static_cast<int>(list.size())))];
    };
    switch (m_dice.below(8)) {
    case 0:
        levels = {};
        break;
    case 1:
        any(levels.prices) = wildPrice();
        break;
    case 2:
        any(levels.prices) = any(levels.prices);
        break;
    case 3:
        std::swap(any(levels.prices), any(levels.prices));
        break;
    case 4:
        levels.prices.resize(levels.prices.size() - 1);
        break;
    case 5:
        levels.volumes.resize(static_cast<std::size_t>(m_dice.below(static_cast<int>(levels.volumes.size()))));
        break;
    case 6:
        levels.numbers.resize(levels.numbers.size() - 1);
        break;
    default:
        any(levels.prices) = m_dice.pick({0.0, -0.0});
        break;
    }
}

RecordPtr ThousandMarket::record()
{
    if (!m_records.empty() && m_dice.oneIn(30))
        return repeated(m_records);
    passTime();
    change(m_bids);
    change(m_asks);
    if (m_dice.oneIn(15))
        m_middle = m_dice.between(6, 13);
    Record next;
    next.type = Record::Type::Thousand;
    next.timetag = m_dice.oneIn(120)  ? m_dice.pick<__int64>({LLONG_MAX, LLONG_MIN, 0, -1})
                   : m_dice.oneIn(15) ? m_time - m_dice.between(1, 4000)
                                      : m_time;
    next.allBids = listed(m_bids, true);
    next.allAsks = listed(m_asks, false);
    if (m_dice.oneIn(8))
        tear(next.allBids);
    if (m_dice.oneIn(8))
        tear(next.allAsks);
    return kept(m_records, next);
}

// With the ticks between it and the one before.
RecordPtr ThousandMarket::levelTwo()
{
    for (int ticks = m_dice.below(6); ticks > 0; --ticks) {
        if (m_dice.percent(66))
            order();
        else
            trade();
    }
    RecordPtr made = snapshot();
    if (!m_dice.oneIn(40))
        return made;
    Record next = *made;
    next.timetag = m_dice.pick<__int64>({(1LL << 32) + m_time, (1LL << 31) + m_time, (1LL << 40), -m_time});
    return kept(m_snapshots, next);
}

std::vector<__int64> ThousandMarket::queueVolumes()
{
    std::vector<__int64> volumes;
    for (int count = m_dice.below(6); count > 0; --count)
        volumes.push_back(m_dice.oneIn(20) ? m_dice.pick<__int64>({LLONG_MAX, LLONG_MIN, 0, -7, 1LL << 33})
                                           : m_dice.between(1, 900));
    return volumes;
}

} // namespace tests::oracle::thousand
