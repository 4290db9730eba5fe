#pragma once

#include "standin/terminal.h"
#include "tests/tessimodel/oracle/snapshots/recordcopies.h"
#include "tests/tessimodel/oracle/snapshots/snapshotinstruments.h"
#include "tests/tessimodel/oracle/status/statusstate.h"
#include "tests/tessimodel/oracle/status/statusstreams.h"

#include <array>
#include <functional>
#include <optional>

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
    using Make = std::function<void(std::optional<Model>&)>;

    explicit StatusPlayer(Make make)
        : m_make(std::move(make))
    {
        for (auto& model : m_models)
            m_make(model);
    }

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
            changeModel(step);
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

    const Model& inUse() const { return *m_models[m_used]; }

private:
    Model& model() { return *m_models[m_used]; }

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

    void changeModel(const StatusStep& step)
    {
        const auto other = static_cast<std::size_t>(step.number);
        if (step.action == StatusStep::Action::CopyAssign) {
            const Model& source = model(); // may be the same model
            *m_models[other] = source;
        } else if (step.action == StatusStep::Action::CopyConstruct && other != m_used) {
            m_models[other].emplace(model());
        } else if (step.action == StatusStep::Action::Construct) {
            m_make(m_models[other]);
        }
        m_used = other;
    }

    Make m_make;
    snapshots::RecordCopies m_records;
    std::array<std::optional<Model>, kModels> m_models;
    std::size_t m_used = 0;
    bool m_answer = false;
};

} // namespace tests::oracle::status
