// The book summary against one that is too plain to be wrong, fed with the same streams, and compared in full after
// every step.

#include "indexui/tessimodel/cmodelentruststatus.h"
#include "tests/tessimodel/oracle/status/naivestatus.h"
#include "tests/tessimodel/oracle/status/statusgenerator.h"
#include "tests/tessimodel/oracle/status/statusplayer.h"
#include "tests/tessimodel/oracle/stepduel.h"

namespace {

using namespace tests::oracle;
using namespace tests::oracle::status;

constexpr int kStreams = 1000;

struct Model : TC::CModelEntrustStatus {
    using CModelEntrustStatus::calc;
};

class StatusDuel : public StepDuel<StatusStep> {
public:
    explicit StatusDuel(standin::Terminal& terminal)
        : m_terminal(terminal)
        , m_naive([this](std::optional<NaiveStatus>& model) { model.emplace(m_counted); })
        , m_real([](std::optional<Model>& model) { model.emplace(); })
    {
        snapshots::prepareSnapshots(terminal);
    }

private:
    void apply(const StatusStep& step) override
    {
        applyToTerminal(m_terminal, step);
        m_naive.apply(step);
        m_real.apply(step);
    }

    void write(Lines& expected, Lines& real) const override
    {
        m_naive.write(expected);
        m_real.write(real);
    }

    // The models that are not in use stood still, though they share rows and snapshots with the one that is.
    std::string end() override
    {
        std::string found;
        for (int model = 0; model < kModels && found.empty(); ++model) {
            StatusStep select;
            select.action = StatusStep::Action::Select;
            select.number = model;
            apply(select);
            found = differenceWhen("in the end");
        }
        return found;
    }

    standin::Terminal& m_terminal;
    StatusCounters m_counted;
    StatusPlayer<NaiveStatus> m_naive;
    StatusPlayer<Model> m_real;
};

TEST(StatusOracle, shouldEqualTheNaiveSummaryWhenStreamsAreAnything)
{
    standin::Terminal terminal;
    checkDuels("rows, prices, volumes and snapshots kept", kStreams, &makeStatusSteps,
               [&terminal] { return StatusDuel(terminal); });
}

} // namespace
