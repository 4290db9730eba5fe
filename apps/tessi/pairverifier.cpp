#include "apps/tessi/pairverifier.h"

#include "apps/tessi/daydelivery.h"
#include "apps/tessi/followedlists.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "quoter/quoterdepthdata.h"
#include "recording/recordedday.h"
#include "standin/terminal.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace tessi {

namespace {

using Model = TC::CModelDepthHolographic;
using Rows = Model::SeqPair;
using Snapshot = std::shared_ptr<quoter::QuoterDepthData>;

// The day volumes of the snapshots that the model kept, in shares as the day has them.
std::vector<__int64> dayVolumes(const recording::RecordedDay& day, const Model& model)
{
    std::vector<__int64> volumes;
    for (const recording::Event& event : day.events) {
        const auto kept = static_cast<int>(volumes.size());
        if (event.stream != recording::Stream::Snapshots || kept == model.m_quotes.size())
            continue;
        const auto& record = static_cast<const quoter::QuoterDepthData&>(*event.record);
        const quoter::QuoterDepthData& next = *model.m_quotes[kept];
        if (record.timetag == next.timetag && record.volume / model.m_volumeUnit == next.volume)
            volumes.push_back(record.volume);
    }
    return volumes;
}

class PairCheck {
public:
    PairCheck(const recording::RecordedDay& day, const Model& model)
        : m_model(model)
        , m_dayVolumes(dayVolumes(day, model))
    {
        for (int i = 0; const auto row = model.getData(i); ++i)
            m_shares.push_back(m_shares.back() + row->fullVolume);
    }

    VerifiedPairs run()
    {
        for (int quote = 0; quote <= m_model.m_lastMatchedQuote; ++quote) {
            if (const std::optional<Rows> rows = closedPair(quote))
                check(quote, *rows);
        }
        return std::move(m_result);
    }

private:
    // Of two snapshots of one second the later one has the pair.
    std::optional<Rows> closedPair(int quote) const
    {
        const int second = secondOf(quote);
        const bool isReplaced = quote < m_model.m_lastMatchedQuote && secondOf(quote + 1) == second;
        const auto found = m_model.m_seqPairs.find(second);
        if (isReplaced || found == m_model.m_seqPairs.end())
            return std::nullopt;
        return found->second;
    }

    void check(int quote, const Rows& rows)
    {
        const Snapshot& snapshot = m_model.m_quotes[quote];
        const __int64 before = quote > 0 ? m_model.m_quotes[quote - 1]->volume : 0;
        PairMiss pair{snapshot->timetag, rows, rightRows(quote)};
        pair.shares = m_shares[index(rows.second) + 1] - m_shares[index(rows.first)];
        pair.hands = pair.shares / m_model.m_volumeUnit;
        pair.step = snapshot->volume - before;
        const bool isEmpty = isWithoutRow(*snapshot, rows);

        ++m_result.pairs;
        m_result.rightRows += !isEmpty && rows == pair.should ? 1U : 0U;
        if (pair.hands == pair.step) {
            ++m_result.matches;
        } else {
            pair.fault = isEmpty ? PairFault::NoRow : faultOf(pair, *snapshot);
            m_result.misses.push_back(pair);
        }
        m_start = isEmpty ? m_start : rows.second + 1;
    }

    // The rows by which the day volume grew. (-1, -1) when they do not end between two trades.
    Rows rightRows(int quote) const
    {
        const auto kept = index(quote);
        if (kept >= m_dayVolumes.size())
            return {-1, -1};
        const std::optional<int> from = kept == 0 ? 0 : rowsUpTo(m_dayVolumes[kept - 1]);
        const std::optional<int> to = rowsUpTo(m_dayVolumes[kept]);
        return from && to && *from < *to ? Rows{*from, *to - 1} : Rows{-1, -1};
    }

    // How many rows make up a day volume.
    std::optional<int> rowsUpTo(__int64 dayVolume) const
    {
        const auto found = std::lower_bound(m_shares.begin(), m_shares.end(), dayVolume);
        if (found == m_shares.end() || *found != dayVolume)
            return std::nullopt;
        return static_cast<int>(found - m_shares.begin());
    }

    // A snapshot without a row of its own is given the row before the first free one; at the day's beginning the first.
    bool isWithoutRow(const quoter::QuoterDepthData& snapshot, const Rows& rows) const
    {
        return rows.first < m_start || (m_start == 0 && rows.second == 0 && !canEnd(snapshot, 0));
    }

    // Whether the matching may take a row for the snapshot's last trade.
    bool canEnd(const quoter::QuoterDepthData& snapshot, int row) const
    {
        return !isLater(snapshot, row) && isAtLastPrice(snapshot, row);
    }

    bool isLater(const quoter::QuoterDepthData& snapshot, int row) const
    {
        return m_model.getData(row)->time > TC::detail::toSeconds(snapshot.timetag);
    }

    bool isAtLastPrice(const quoter::QuoterDepthData& snapshot, int row) const
    {
        return TC::detail::isEqual(m_model.getData(row)->price, snapshot.lastPrice);
    }

    PairFault faultOf(const PairMiss& pair, const quoter::QuoterDepthData& snapshot) const
    {
        if (pair.should.first < 0)
            return PairFault::Unknown;
        if (pair.rows == pair.should)
            return PairFault::WholeHands;
        if (pair.rows.first != pair.should.first)
            return PairFault::Carried;
        if (isLater(snapshot, pair.should.second))
            return PairFault::LateTrade;
        return isAtLastPrice(snapshot, pair.should.second) ? PairFault::OddLots : PairFault::OtherPrice;
    }

    int secondOf(int quote) const { return TC::detail::low32(TC::detail::toSeconds(m_model.m_quotes[quote]->timetag)); }

    static std::size_t index(int row) { return static_cast<std::size_t>(row); }

    const Model& m_model;
    std::vector<__int64> m_dayVolumes; // of the kept snapshots, shares
    std::vector<__int64> m_shares{0};  // of all rows before each
    int m_start = 0;                   // the first row that no snapshot has yet
    VerifiedPairs m_result;
};

} // namespace

const char* nameOf(PairFault fault)
{
    switch (fault) {
    case PairFault::WholeHands:
        return "whole hands";
    case PairFault::Carried:
        return "carried";
    case PairFault::OddLots:
        return "odd lots";
    case PairFault::LateTrade:
        return "late trade";
    case PairFault::OtherPrice:
        return "other price";
    case PairFault::NoRow:
        return "no row";
    case PairFault::Unknown:
        break;
    }
    return "unknown";
}

std::size_t VerifiedPairs::count(PairFault fault) const
{
    return static_cast<std::size_t>(
        std::count_if(misses.begin(), misses.end(), [fault](const PairMiss& miss) { return miss.fault == fault; }));
}

VerifiedPairs verifyPairs(const recording::RecordedDay& day)
{
    standin::Terminal terminal;
    introduce(terminal, day);
    FollowedTrades trades(day);
    deliverAsHistory(terminal, day, [&trades](recording::DataLayer& data) { trades.subscribe(data); });
    return PairCheck(day, *trades.model).run();
}

} // namespace tessi
