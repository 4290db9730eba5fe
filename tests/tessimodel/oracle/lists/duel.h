#pragma once

#include "tests/tessimodel/oracle/lists/listgenerator.h"
#include "tests/tessimodel/oracle/lists/liststate.h"
#include "tests/tessimodel/oracle/lists/naivefilter.h"
#include "tests/tessimodel/oracle/realrecords.h"
#include "tests/tessimodel/oracle/stepduel.h"

#include "indexui/tessimodel/depthfilter.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

#include <boost/make_shared.hpp>

#include <string>
#include <vector>

namespace tests::oracle::lists {

TC::SDepthFilterParam realFilter(const Filter& filter);

struct NaiveIds {
    static int idOf(const Record* record) { return record ? record->id : -1; }
    static int instrumentOf(int stock) { return stock; }
};

struct RealIds {
    const RealRecords& records;

    int idOf(const quoter::QuoterBase* record) const { return records.idOf(record); }
    static int instrumentOf(const std::shared_ptr<ztservice::CInstrumentDetail>& stock) { return indexOf(stock); }
};

// Arguments for lookups, the same whenever the same steps are played: all of them, or some by chance.
class Picks {
public:
    Picks(bool every, int step)
        : isEvery(every)
        , m_state(static_cast<unsigned long long>(step) * 0x9e3779b97f4a7c15ULL + 1)
    {}

    int between(int low, int high);

    const bool isEvery;

private:
    unsigned long long m_state;
};

// Plays steps on a list and on the naive one side by side.
class Duel : public StepDuel<ListStep> {
public:
    explicit Duel(standin::Terminal& terminal)
        : m_terminal(terminal)
    {}

protected:
    struct Answer {
        int result = 0;
        int first = 0;
        int last = 0;
    };

    virtual void lowerFlags() = 0;
    virtual void applyOwn(const ListStep& step) = 0;
    virtual void writeList(Lines& expected, Lines& real, Picks picks) const = 0;
    virtual void deliver(const ListStep& step, const boost::shared_ptr<TC::MetaCacheDataWrapper>& batch) = 0;
    virtual void work() = 0;

    // The model goes, with work that waits for it.
    virtual void leave() = 0;

    void workReal() { m_terminal.strands.drain("modulegroup"); }

    RealRecords m_records;
    Answer m_expectedAnswer;
    Answer m_realAnswer;

private:
    void apply(const ListStep& step) override;
    void write(Lines& expected, Lines& real) const override;
    std::string end() override;

    // True for a step that is the same for every list.
    bool applyCommon(const ListStep& step);

    standin::Terminal& m_terminal;
    int m_step = 0;
    bool m_isEveryLookup = true;
};

// A duel of the real model with the naive one.
template <class Real, class Naive>
class DuelOf : public Duel {
public:
    using Duel::Duel;

protected:
    // True for a step that is the same for both lists.
    bool applyShared(const ListStep& step);
    void append(const ListStep& step);
    void deliver(const ListStep& step, const boost::shared_ptr<TC::MetaCacheDataWrapper>& batch) override;
    void leave() override { m_real.reset(); }

    void work() override
    {
        workReal();
        m_naive.work();
    }

    Counters m_counters;
    boost::shared_ptr<Real> m_real = boost::make_shared<Real>();
    Naive m_naive{m_counters};
};

template <class Real, class Naive>
bool DuelOf<Real, Naive>::applyShared(const ListStep& step)
{
    using enum ListStep::Action;
    TC::SDepthFilterParam filter = realFilter(step.filter);
    switch (step.action) {
    case Clear:
        m_real->clear();
        m_naive.clear();
        break;
    case ClearOrders:
        m_real->clearEntrusts();
        m_naive.clearEntrusts();
        break;
    case ClearTrades:
        m_real->clearTransactions();
        m_naive.clearTransactions();
        break;
    case Follow:
        m_real->setStock(stockKeyOf(step.instrument));
        m_naive.setStock(step.instrument);
        break;
    case InitParams:
        m_real->initStockParams();
        m_naive.initStockParams();
        break;
    case SetFilter:
        m_real->setFilterParam(filter);
        m_naive.setFilterParam(step.filter);
        break;
    case Append:
        append(step);
        break;
    default:
        return false;
    }
    return true;
}

template <class Real, class Naive>
void DuelOf<Real, Naive>::append(const ListStep& step)
{
    const auto record = m_records.of(step.record);
    const auto stock = detailOf(step.instrument);
    if (const auto order = std::dynamic_pointer_cast<quoter::OrderData>(record))
        m_realAnswer.result = m_real->append(stock, order);
    if (const auto trade = std::dynamic_pointer_cast<quoter::TransactionData>(record))
        m_realAnswer.result = m_real->append(stock, trade);
    if constexpr (requires(std::shared_ptr<quoter::QuoterDepthData> snapshot) { m_real->append(stock, snapshot); }) {
        if (const auto snapshot = std::dynamic_pointer_cast<quoter::QuoterDepthData>(record))
            m_realAnswer.result = m_real->append(stock, snapshot);
    }
    m_expectedAnswer.result = m_naive.append(step.instrument, step.record);
}

template <class Real, class Naive>
void DuelOf<Real, Naive>::deliver(const ListStep& step, const boost::shared_ptr<TC::MetaCacheDataWrapper>& batch)
{
    if (step.action == ListStep::Action::Orders)
        m_real->entrustCallback(0, step.kind, batch);
    if (step.action == ListStep::Action::Trades)
        m_real->transactionCallback(0, step.kind, batch);
    if constexpr (requires { m_real->quoterCallback(0, step.kind, batch); }) {
        if (step.action == ListStep::Action::Snapshots)
            m_real->quoterCallback(0, step.kind, batch);
    }
    m_naive.callback(step);
}

} // namespace tests::oracle::lists
