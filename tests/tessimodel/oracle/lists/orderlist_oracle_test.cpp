// The order list against one that is too plain to be wrong, fed with the same streams, and compared in full after every
// step.

#include "indexui/tessimodel/cmodeldepthentrust.h"
#include "tests/tessimodel/oracle/lists/duel.h"
#include "tests/tessimodel/oracle/lists/lookups.h"
#include "tests/tessimodel/oracle/lists/naiveorderlist.h"

namespace {

using namespace tests::oracle;
using namespace tests::oracle::lists;

constexpr int kStreams = 2000;

struct Model : TC::CModelDepthEntrust {
    using CModelDepthEntrust::append;
    using CModelDepthEntrust::datasFilter;
};

struct NaiveOrderIds : NaiveIds {
    static std::string symbolOf(const NaiveOrderList::OrderRow& row) { return lists::symbolOf(row); }
};

struct RealOrderIds : RealIds {
    static std::string symbolOf(const Model::OrderRow& row) { return TC::getOrderSymbol(row).toStdString(); }
};

class OrderListDuel : public DuelOf<Model, NaiveOrderList> {
public:
    using DuelOf::DuelOf;

private:
    void lowerFlags() override
    {
        m_real->m_ordersChanged = m_real->m_transactionsChanged = false;
        m_naive.m_ordersChanged = m_naive.m_transactionsChanged = false;
    }

    void applyOwn(const ListStep& step) override
    {
        if (applyShared(step))
            return;
        m_real->datasFilter();
        m_naive.datasFilter();
    }

    OrderListGrid gridOf(Picks picks) const
    {
        OrderListGrid grid;
        if (picks.isEvery) {
            for (int index = -2; index <= m_naive.m_orderCount + 1; ++index)
                grid.indices.push_back(index);
            for (int index = m_naive.m_orderCount + 2; index <= m_naive.m_filteredCancelCount + 1; ++index)
                grid.indices.push_back(index);
            for (const auto& [seq, index] : m_naive.m_orderIndexBySeq)
                grid.seqs.push_back(seq);
            for (const auto& [seq, trades] : m_naive.m_transactionsBySeq)
                grid.seqs.push_back(seq);
            return grid;
        }
        grid.indices = {picks.between(-2, m_naive.m_orderCount + 1),
                        picks.between(-2, m_naive.m_filteredOrderCount + 1),
                        picks.between(-2, m_naive.m_filteredCancelCount + 1)};
        grid.seqs = {picks.between(-2, 100), picks.between(0, 100), picks.between(0, 20)};
        return grid;
    }

    void writeList(Lines& expected, Lines& real, Picks picks) const override
    {
        const RealOrderIds realIds{{m_records}};
        const OrderListGrid grid = gridOf(picks);
        writeOrderList(expected, m_naive, NaiveOrderIds());
        writeOrderList(real, *m_real, realIds);
        writeLookups(expected, m_naive, grid, NaiveOrderIds());
        writeLookups(real, *m_real, grid, realIds);
    }
};

TEST(OrderListOracle, shouldEqualTheNaiveListWhenStreamsAreAnything)
{
    standin::Terminal terminal;
    prepare(terminal);
    checkDuels("orders, cancels, both filtered, trades by order", kStreams, &makeOrderListSteps,
               [&terminal] { return OrderListDuel(terminal); });
}

} // namespace
