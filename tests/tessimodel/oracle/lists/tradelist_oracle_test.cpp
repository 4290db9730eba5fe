// The trade list, its matching, its lookups and the view over it against one that is too plain to be wrong, fed with
// the same streams, and compared in full after every step.

#include "indexui/tessimodel/cmodeldepthholographic.h"
#include "indexui/tessimodel/cmodeltransaction.h"
#include "tests/tessimodel/oracle/lists/duel.h"
#include "tests/tessimodel/oracle/lists/lookups.h"
#include "tests/tessimodel/oracle/lists/naivetradelist.h"

#include <climits>
#include <set>

namespace {

using namespace tests::oracle;
using namespace tests::oracle::lists;

constexpr int kStreams = 3000;

struct Model : TC::CModelDepthHolographic {
    using CModelDepthHolographic::append;
    using CModelDepthHolographic::tryMatch;
};

struct NaiveTradeIds : NaiveIds {
    static bool isSpecial(const RecordPtr& order) { return isOrderSpecial(order); }
    static std::string specialName(const RecordPtr& order) { return orderSpecialName(order); }
};

struct RealTradeIds : RealIds {
    using Order = std::shared_ptr<quoter::OrderData>;

    static bool isSpecial(const Order& order) { return TC::isOrderSpecial(order); }
    static std::string specialName(const Order& order) { return TC::getOrderSpecialName(order).toStdString(); }
};

class TradeListDuel : public DuelOf<Model, NaiveTradeList> {
public:
    using DuelOf::DuelOf;

private:
    void lowerFlags() override { m_real->m_changed = m_naive.m_changed = false; }

    void applyOwn(const ListStep& step) override
    {
        using enum ListStep::Action;
        if (applyShared(step))
            return;
        switch (step.action) {
        case ClearQuotes:
            m_real->clearQuotes();
            m_naive.clearQuotes();
            break;
        case Reprice:
            m_records.of(step.record)->lastPrice = step.price;
            m_naive.reprice(step.record, step.price);
            break;
        case Match:
            m_realAnswer.result = m_real->tryMatch(detailOf(step.instrument));
            m_expectedAnswer.result = m_naive.tryMatch(step.instrument);
            break;
        case Find:
        case Split:
            search(step);
            break;
        case View:
            m_realAnswer.result = m_real->setViewTimeRange(step.first, step.second);
            m_expectedAnswer.result = m_naive.setViewTimeRange(step.first, step.second);
            break;
        case Recalculate:
            m_realAnswer.result = m_real->recalcMaxMinSeqAndPrice();
            m_expectedAnswer.result = m_naive.recalcMaxMinSeqAndPrice();
            break;
        case RecalculatePrices:
            m_realAnswer.result = m_real->recalcMaxMinPrice();
            m_expectedAnswer.result = m_naive.recalcMaxMinPrice();
            break;
        default:
            m_real->setFullHeightHandle(step.first);
            m_naive.setFullHeightHandle(step.first);
        }
    }

    void search(const ListStep& step)
    {
        const bool splits = step.action == ListStep::Action::Split;
        const auto ask = [&step, splits](auto& model) {
            std::pair<int, int> rows;
            const bool isFound =
                splits ? model.tryMatch(step.first, step.second, rows) : model.findSeq(step.first, step.second, rows);
            // A split that finds nothing says nothing of the rows.
            return splits && !isFound ? Answer{isFound, 0, 0} : Answer{isFound, rows.first, rows.second};
        };
        m_realAnswer = ask(*m_real);
        m_expectedAnswer = ask(m_naive);
    }

    std::set<int> knownSeconds() const
    {
        std::set<int> seconds;
        const auto add = [&seconds](__int64 second) {
            for (const __int64 near : {second - 1, second, second + 1})
                seconds.insert(static_cast<int>(near));
        };
        for (const auto& row : m_naive.m_rows)
            add(row->time);
        for (const auto& quote : m_naive.m_quotes)
            add(secondOf(*quote));
        for (const auto& [second, pair] : m_naive.m_seqPairs)
            add(second);
        for (const auto& [second, number] : m_naive.m_minuteIndex)
            add(second);
        for (const int odd : {-2, -1, 0, INT_MIN, INT_MAX})
            seconds.insert(odd);
        return seconds;
    }

    TradeListGrid fullGrid() const
    {
        TradeListGrid grid;
        for (int index = -2; index <= m_naive.m_rowCount + 1; ++index)
            grid.indices.push_back(index);
        for (int place = -1; place < static_cast<int>(m_naive.m_rows.size()); ++place)
            grid.places.push_back(place);
        const std::set<int> seconds = knownSeconds();
        grid.seconds.assign(seconds.begin(), seconds.end());
        for (const auto& [seq, order] : m_naive.m_orders) {
            for (const __int64 near : {seq, static_cast<__int64>(static_cast<int>(seq))})
                grid.seqs.push_back(near);
        }
        grid.seqs.push_back(-2);
        for (const int second : seconds) {
            if (!m_naive.m_quotes.empty() && second < secondOf(*m_naive.m_quotes.back()) - 1)
                continue;
            for (const int volume : {-1, 0, 1, 3, 7, 20, INT_MAX})
                grid.ticks.push_back({second, volume});
        }
        return grid;
    }

    int anySecond(Picks& picks) const
    {
        const int near = picks.between(-1, 1);
        if (m_naive.m_rows.empty() || picks.between(0, 3) == 0)
            return m_naive.m_quotes.empty() ? near : static_cast<int>(secondOf(*m_naive.m_quotes.back())) + near;
        const int place = picks.between(0, static_cast<int>(m_naive.m_rows.size()) - 1);
        return static_cast<int>(m_naive.m_rows.at(static_cast<std::size_t>(place))->time + near);
    }

    TradeListGrid gridOf(Picks picks) const
    {
        if (picks.isEvery)
            return fullGrid();
        TradeListGrid grid;
        grid.indices = {picks.between(-2, m_naive.m_rowCount + 1), picks.between(-2, m_naive.m_rowCount + 1)};
        grid.seconds = {anySecond(picks), anySecond(picks)};
        for (int i = 0; i < 3; ++i)
            grid.places.push_back(picks.between(-1, static_cast<int>(m_naive.m_rows.size()) - 1));
        grid.seqs = {picks.between(0, 60)};
        grid.ticks = {{anySecond(picks), picks.between(0, 15)}, {INT_MAX, picks.between(0, 15)}};
        return grid;
    }

    void writeList(Lines& expected, Lines& real, Picks picks) const override
    {
        const RealTradeIds realIds{{m_records}};
        const TradeListGrid grid = gridOf(picks);
        writeTradeList(expected, m_naive, NaiveTradeIds());
        writeTradeList(real, *m_real, realIds);
        writeLookups<NaiveTick>(expected, m_naive, grid, NaiveTradeIds());
        writeLookups<TC::TransData>(real, *m_real, grid, realIds);
    }
};

TEST(TradeListOracle, shouldEqualTheNaiveListWhenStreamsAreAnything)
{
    standin::Terminal terminal;
    prepare(terminal);
    checkDuels("rows, chains, pairs, lookups, the view", kStreams, &makeTradeListSteps,
               [&terminal] { return TradeListDuel(terminal); });
}

} // namespace
