#pragma once

#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "tests/tessimodel/oracle/realrecords.h"
#include "tests/tessimodel/oracle/stepduel.h"
#include "ztservice/instrumentdetail.h"

#include <memory>
#include <type_traits>

namespace tests::oracle {

// Plays steps on a tick-built book by itself and on the naive one. Both begin with the first instrument.
template <class Step, class Real, class Naive>
class BookDuel : public StepDuel<Step> {
protected:
    BookDuel()
    {
        m_naive.counters = &m_counters;
        takeInstrument();
    }

    void takeInstrument()
    {
        m_real.m_stock = detailOf(0);
        m_naive.stock = 0;
    }

    // What every book is asked for alike.
    void applyCommon(const Step& step)
    {
        using Action = typename Step::Action;
        if (step.action == Action::ClearBook) {
            m_real.clearBook();
            m_naive.clearBook();
        } else if (step.action == Action::ClearPending) {
            m_real.clearPending();
            m_naive.clearPending();
        } else if (step.action == Action::ClearAll) {
            m_real.clearAll();
            m_naive.clearAll();
        } else if (step.action == Action::Clean) {
            m_real.m_bidsDirty = m_real.m_asksDirty = m_naive.bids.dirty = m_naive.asks.dirty = false;
        }
    }

    template <class... Options>
    void offer(const Step& step, const Options&... options)
    {
        const auto record = m_records.of(step.record);
        const auto stock = detailOf(step.stock);
        if (const auto order = std::dynamic_pointer_cast<quoter::OrderData>(record)) {
            m_realAnswer = m_real.appendOrder(stock, order, m_realFlags, options...);
            m_naiveAnswer = m_naive.appendOrder(step.stock, step.record, m_naiveFlags, options...);
        } else {
            const auto trade = std::dynamic_pointer_cast<quoter::TransactionData>(record);
            m_realAnswer = m_real.appendTransaction(stock, trade, m_realFlags, options...);
            m_naiveAnswer = m_naive.appendTransaction(step.stock, step.record, m_naiveFlags, options...);
        }
    }

    RealRecords m_records;
    std::remove_pointer_t<decltype(Naive::counters)> m_counters;
    Real m_real;
    Naive m_naive;
    bool m_realAnswer = false;
    bool m_naiveAnswer = false;
    int m_realFlags = 0;
    int m_naiveFlags = 0;
};

} // namespace tests::oracle
