#pragma once

#include "indexui/tessimodel/cmodeldepththousand.h"
#include "quoter/levelthousanddata.h"
#include "quoter/quoterdepthdata.h"

#include <fmt/format.h>

#include <cmath>
#include <cstddef>
#include <iterator>
#include <map>
#include <string>
#include <vector>

// Rows, records and levels of whole days as texts that can be compared. Prices are in ticks of 0.01.
namespace tests {

inline int ticksOf(double price)
{
    return static_cast<int>(std::lround(price * 100));
}

// "1001=3/1 1002=5/2 ": price in ticks, hands and orders.
inline std::string levelText(int ticks, __int64 hands, int orders)
{
    return fmt::format("{}={}/{} ", ticks, hands, orders);
}

// By ascending price, as a panel gets them.
inline std::string rowsText(const TC::EntrustList& rows)
{
    std::string text;
    for (const auto& row : rows)
        text += levelText(ticksOf(row->price), row->volume, row->number);
    return text;
}

// Both sides of one read.
struct Rows {
    std::string bids;
    std::string asks;
    std::string changes;
};

// "1001-3 1004+2 ": the rows' changes, those of none left out.
inline std::string changesText(const TC::EntrustList& rows)
{
    std::string text;
    for (const auto& row : rows)
        text += row->delta == 0 ? "" : fmt::format("{}{:+} ", ticksOf(row->price), row->delta);
    return text;
}

// A side of a thousand-level record, best first.
struct RecordSide {
    const std::vector<double>& prices;
    const std::vector<int>& volumes;
    const std::vector<int>& numbers;
};

inline RecordSide sideOf(const quoter::LevelThousandData& record, bool isBid)
{
    return isBid ? RecordSide{record.bidPrices, record.bidVolumes, record.bidNumbers}
                 : RecordSide{record.askPrices, record.askVolumes, record.askNumbers};
}

template <class Each>
void eachByAscendingPrice(const RecordSide& side, bool isBid, Each each)
{
    for (std::size_t i = 0; i < side.prices.size(); ++i) {
        const std::size_t level = isBid ? side.prices.size() - 1 - i : i;
        each(ticksOf(side.prices[level]), side.volumes[level], side.numbers[level]);
    }
}

// The record as rows, in its own unit.
inline std::string recordText(const quoter::LevelThousandData& record, bool isBid)
{
    std::string text;
    eachByAscendingPrice(sideOf(record, isBid), isBid,
                         [&](int ticks, int hands, int orders) { text += levelText(ticks, hands, orders); });
    return text;
}

// How the record's rows must tell what changed: growth is negative, and a new price is no change.
inline std::string changesText(const std::map<int, int>& handsBefore, const quoter::LevelThousandData& record,
                               bool isBid)
{
    std::string text;
    eachByAscendingPrice(sideOf(record, isBid), isBid, [&](int ticks, int hands, int) {
        const auto before = handsBefore.find(ticks);
        if (before != handsBefore.end() && before->second != hands)
            text += fmt::format("{}{:+} ", ticks, before->second - hands);
    });
    return text;
}

inline std::map<int, int> handsByPrice(const quoter::LevelThousandData& record)
{
    std::map<int, int> hands;
    for (const bool isBid : {true, false}) {
        eachByAscendingPrice(sideOf(record, isBid), isBid,
                             [&](int ticks, int volume, int) { hands.emplace(ticks, volume); });
    }
    return hands;
}

// The ten levels of a snapshot as rows, those without a price included.
inline Rows snapshotRows(const quoter::QuoterDepthData& snapshot)
{
    Rows rows;
    for (std::size_t i = 0; i < std::size(snapshot.bidPrice); ++i) {
        rows.bids = levelText(ticksOf(snapshot.bidPrice[i]), snapshot.bidVolume[i], -1) + rows.bids;
        rows.asks += levelText(ticksOf(snapshot.askPrice[i]), snapshot.askVolume[i], -1);
    }
    return rows;
}

// "1001: 3x200 8x500 = 700\n": the levels of a side, market kinds at their negative keys, with what is left of each
// order by its number, oldest first, and the level's shares.
template <class Levels>
std::string sideText(const Levels& levels)
{
    std::string text;
    for (const auto& [key, level] : levels) {
        text += fmt::format("{}: ", key);
        for (const auto& [seq, quote] : level->m_quotes)
            text += fmt::format("{}x{} ", seq, quote->volume - quote->dealVolume);
        text += fmt::format("= {}\n", level->m_volume);
    }
    return text;
}

} // namespace tests
