#pragma once

#include "standin/terminal.h"
#include "tests/tessimodel/oracle/copiedmodels.h"
#include "tests/tessimodel/oracle/snapshots/recordcopies.h"
#include "tests/tessimodel/oracle/snapshots/snapshotinstruments.h"
#include "tests/tessimodel/oracle/status/statusstate.h"
#include "tests/tessimodel/oracle/status/statusstreams.h"

#include <optional>
#include <utility>

namespace tests::oracle::status {

// What a step asks of the terminal, once for both sides.
inline void applyToTerminal(standin::Terminal& terminal, const StatusStep& step)
{
    if (step.action == StatusStep::Action::Factor)
        terminal.answers.setNewLoanFactor(step.number);
    else if (step.action == StatusStep::Action::Renew)
        terminal.instruments.add(snapshots::renewed(step.number, step.facts));
}

// One side: some models, their records, and what a step does to the model in use. The same for both sides.
template <class Model>
class StatusPlayer {
public:
    using Make = typename CopiedModels<Model>::Make;

    explicit StatusPlayer(Make make)
        : m_models(std::move(make))
    {}

    void apply(const StatusStep& step)
    {
        using enum StatusStep::Action;
        m_answer = false;
        switch (step.action) {
        case Batch:
            m_answer = model().quoterCallBack(step.ignored, step.kind, m_records.of(step.records));
            break;
        case Connect:
            model().connectTickData(recordAt(step, 0), recordAt(step, 1), step.volume);
            break;
        case Calc:
            m_answer = model().calc(step.kind, recordAt(step, 0), recordAt(step, 1));
            break;
        case CopyConstruct:
        case CopyAssign:
        case Select:
        case Construct:
            m_models.apply(step);
            break;
        default:
            set(step);
            break;
        }
    }

    void write(Lines& out) const
    {
        out.add(sections::kAnswer, {m_answer});
        writeModel(out, inUse(), m_records);
    }

    const Model& inUse() const { return m_models.inUse(); }

private:
    Model& model() { return m_models.inUse(); }

    // A shrunk step may have lost its records.
    RecordPtr recordAt(const StatusStep& step, std::size_t at)
    {
        return at < step.records.size() ? m_records.of(step.records[at]) : nullptr;
    }

    void set(const StatusStep& step)
    {
        using enum StatusStep::Action;
        if (step.action == Follow)
            model().setStock(snapshots::snapshotKeyOf(step.number));
        else if (step.action == Clear)
            model().clear();
        else if (step.action == NewLoan)
            model().setNewLoan(step.on);
        else if (step.action == PriceTick)
            model().m_priceTick = step.value;
        else if (step.action == LastClose)
            model().m_lastClose = step.value;
    }

    CopiedModels<Model> m_models;
    snapshots::RecordCopies m_records;
    bool m_answer = false;
};

} // namespace tests::oracle::status
