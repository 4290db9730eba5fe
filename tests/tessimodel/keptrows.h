#pragma once

#include "indexui/tessimodel/cmodeldepthtransaction.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <tuple>
#include <vector>

namespace tests {

// What of a row never changes.
inline auto lastingOf(const TC::DepthTransData& row)
{
    return std::tuple(row.time, row.price, row.volume, row.hands, row.sellSeq, row.buySeq, row.prevBuyIndex,
                      row.prevSellIndex, row.sellRun, row.buyRun, row.sellRunHands, row.buyRunHands, row.tickDirection,
                      row.transKind, row.tradeFlag, row.isUp, row.fullVolume);
}

// Rows of a trade list that a panel holds on to while the list goes on, is emptied and filled again. But for the two
// links to later rows they stay as they were.
class KeptRows {
public:
    // Looks at what is kept, keeps some of the list's first rows as well, and gives the oldest back. Tells how many of
    // those kept are no longer where they were.
    int look(const TC::CModelDepthTransaction& list)
    {
        int gone = 0;
        for (const auto& [row, index, then] : m_kept) {
            const TC::DepthTransData now = TC::readLive(*row);
            EXPECT_EQ(lastingOf(now), lastingOf(then));
            EXPECT_GE(now.nextBuyIndex, -1);
            EXPECT_GE(now.nextSellIndex, -1);
            gone += list.getData(index) != row ? 1 : 0;
        }
        for (int index = 0; index < 30; index += 3) {
            if (const auto row = list.getData(index))
                m_kept.push_back({row, index, TC::readLive(*row)});
        }
        constexpr std::size_t kMost = 300;
        if (m_kept.size() > kMost)
            m_kept.erase(m_kept.begin(), m_kept.end() - kMost);
        return gone;
    }

private:
    struct Kept {
        TC::CModelDepthTransaction::Row row;
        int index;
        TC::DepthTransData then;
    };

    std::vector<Kept> m_kept;
};

} // namespace tests
