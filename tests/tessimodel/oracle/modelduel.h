#pragma once

#include "standin/terminal.h"
#include "tests/tessimodel/oracle/realrecords.h"
#include "tests/tessimodel/oracle/stepduel.h"

#include <optional>

namespace tests::oracle {

// Plays steps on a model, whose work waits on its strand until it runs, and on the naive one. Who derives from it makes
// both.
template <class Step, class Real, class Naive>
class ModelDuel : public StepDuel<Step> {
protected:
    explicit ModelDuel(standin::Terminal& terminal)
        : m_terminal(terminal)
    {}

    // True for a step that asks the same of every model.
    bool applyCommon(const Step& step)
    {
        using Action = typename Step::Action;
        if (step.action == Action::Work) {
            work();
        } else if (step.action == Action::Clear) {
            m_real->clear();
            m_naive->clear();
        } else if (step.action == Action::Follow) {
            follow(step.instrument);
        } else {
            return applyIfHad(step);
        }
        return true;
    }

    void follow(int instrument)
    {
        m_real->setStock(stockKeyOf(instrument));
        m_naive->setStock(instrument);
    }

    template <class Callback, class Delivery>
    void deliver(const Step& step, Callback callback, const Delivery& delivery)
    {
        ((*m_real).*callback)(0, step.kind, delivery);
        m_naive->callback(step);
        if (step.works)
            work();
    }

    // What is left of the naive model when the real one went.
    virtual void leave() {}

    std::string end() override
    {
        work();
        const std::string found = this->differenceWhen("when the last work was done");
        m_real.reset();
        leave();
        const std::string behind = this->differenceWhen("when the model went");
        release();
        return found.empty() ? behind : found;
    }

    standin::Terminal& m_terminal;
    RealRecords m_records;
    std::optional<Real> m_real; // empty when it went
    std::optional<Naive> m_naive;
    bool m_realAnswer = false;
    bool m_naiveAnswer = false;

private:
    // What not every stream has.
    bool applyIfHad(const Step& step)
    {
        using Action = typename Step::Action;
        if constexpr (requires { Action::Release; }) {
            if (step.action == Action::Release)
                return release(), true;
        }
        if constexpr (requires { Action::InitParams; }) {
            if (step.action == Action::InitParams)
                return m_real->initStockParams(), m_naive->initStockParams(), true;
        }
        if constexpr (requires { Action::NewLoan; }) {
            if (step.action == Action::NewLoan)
                return m_real->setNewLoan(step.flag), m_naive->setNewLoan(step.flag), true;
        }
        return false;
    }

    void work()
    {
        m_terminal.strands.drain("modulegroup");
        m_naive->work();
    }

    void release() { m_terminal.strands.drain("data_release"); }
};

} // namespace tests::oracle
