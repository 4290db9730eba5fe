// The distribution against one that is too plain to be wrong, fed with the same streams, and compared in full after
// every step.

#include "indexui/tessimodel/cmodeltransdistribution.h"
#include "quoter/quoterbase.h"
#include "standin/terminal.h"
#include "tests/tessimodel/oracle/distribution/distributiongenerator.h"
#include "tests/tessimodel/oracle/distribution/distributionstate.h"
#include "tests/tessimodel/oracle/distribution/naiveside.h"
#include "tests/tessimodel/oracle/snapshots/snapshotinstruments.h"
#include "tests/tessimodel/oracle/stepduel.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

namespace {

using namespace tests::oracle;
using namespace tests::oracle::distribution;

constexpr int kStreams = 400; // each starts some twenty threads

struct Model : TC::CModelTransDistribution {
    using CModelTransDistribution::calc;
    using CModelTransDistribution::processData;
    using CModelTransDistribution::quoterCallBackThread;
};

TC::CModelTransDistribution::TransDistributionData realTick(const Tick& tick)
{
    TC::CModelTransDistribution::TransDistributionData out;
    out.price = tick.price;
    out.totalVolume = tick.totalVolume;
    out.volume = tick.volume;
    out.isBuy = tick.isBuy;
    return out;
}

// What a step does to the model. All its threads are done behind it.
class RealSide {
public:
    RealSide() { make(); }

    void apply(const DistributionStep& step)
    {
        using enum DistributionStep::Action;
        m_ready = true;
        m_trace = 0;
        m_isTraced = step.action != Together; // of threads that meet nobody can tell
        m_startsThreads = step.action == Together || (step.action == Batch && (step.kind == 0 || step.kind == 3));
        if (step.action == Batch || step.action == Together)
            batches(step);
        else if (step.action == Record || step.action == OneTick || step.action == Thread || step.action == Series)
            direct(step);
        else
            set(step);
    }

    // The signal of a thread is the last that it does. One that never ends, or says nothing at its end, is a difference
    // too, after a while.
    void waitFor(int redraws)
    {
        using std::chrono::seconds;
        const auto areThere = [this, redraws] { return m_signals >= redraws; };
        std::unique_lock lock(m_signalMutex);
        if (!m_signalled.wait_for(lock, m_startsThreads ? seconds(2) : seconds(0), areThere) && !m_model->init())
            m_signalled.wait_for(lock, seconds(20), areThere);
    }

    void write(Lines& out) const
    {
        const QMutexLocker lock(&m_model->m_mutex);
        const std::lock_guard signalLock(m_signalMutex);
        writeModel(out, *m_model);
        out.add(sections::kAnswer, {m_ready, m_model->m_dateProvider ? m_model->m_dateProvider() : -1});
        out.add(sections::kSignals, {m_signals, m_model->init(), m_isTraced ? m_trace : 0});
    }

private:
    void make()
    {
        m_model.emplace();
        m_signals = 0;
        // On the thread that sends it.
        QObject::connect(&*m_model, &Model::sigRedraw, [this] {
            const std::lock_guard lock(m_signalMutex);
            ++m_signals;
            if (m_isTraced)
                m_trace = traced(m_trace, m_model->init(), static_cast<std::size_t>(m_model->m_ticks.size()));
            m_signalled.notify_all();
        });
    }

    void batches(const DistributionStep& step)
    {
        // Who holds the lock can see that the threads are not done.
        const bool isHeld = step.action == DistributionStep::Action::Batch || step.on;
        if (isHeld)
            m_model->m_mutex.lock();
        m_model->quoterCallBack(step.ignored, step.kind, step.records);
        for (const Records& piece : step.pieces)
            m_model->quoterCallBack(step.ignored, 3, piece);
        for (const Records& push : step.pushes)
            m_model->quoterCallBack(step.ignored, 1, push);
        for (const int instrument : step.instruments)
            m_model->setStock(snapshots::snapshotKeyOf(instrument));
        if (!isHeld)
            return;
        m_ready = m_model->init();
        m_model->m_mutex.unlock();
    }

    void direct(const DistributionStep& step)
    {
        using enum DistributionStep::Action;
        if (step.action == Thread) {
            m_model->quoterCallBackThread(step.records);
        } else if (step.action == Series) {
            m_model->calc(step.series, {}, "", step.ignored, "");
        } else {
            const QMutexLocker lock(&m_model->m_mutex);
            auto tick = realTick(step.ticks.empty() ? Tick() : step.ticks.front());
            if (step.action == OneTick)
                m_model->processData(tick);
            else
                m_model->processData(step.records.empty() ? nullptr : step.records.front());
        }
    }

    void set(const DistributionStep& step)
    {
        using enum DistributionStep::Action;
        if (step.action == Follow) {
            m_model->setStock(snapshots::snapshotKeyOf(step.number));
        } else if (step.action == Clear) {
            m_model->clear();
        } else if (step.action == Pending) {
            m_model->m_pending.clear();
            for (const Tick& tick : step.ticks)
                m_model->m_pending.append(realTick(tick));
        } else if (step.action == Construct) {
            make();
        } else if (step.action == Dates) {
            m_model->m_dateProvider.clear();
            if (step.on)
                m_model->m_dateProvider = [date = snapshots::dateAt(step.number)] { return date; };
        }
    }

    mutable std::mutex m_signalMutex;
    std::condition_variable m_signalled;
    int m_signals = 0; // since the model was made
    bool m_ready = true;
    bool m_startsThreads = false;
    bool m_isTraced = true;
    __int64 m_trace = 0;
    std::optional<Model> m_model;
};

class DistributionDuel : public StepDuel<DistributionStep> {
public:
    explicit DistributionDuel(standin::Terminal& terminal)
        : m_terminal(terminal)
        , m_naive(m_counted)
    {
        snapshots::prepareSnapshots(terminal);
    }

private:
    void apply(const DistributionStep& step) override
    {
        if (step.action == DistributionStep::Action::Renew)
            m_terminal.instruments.add(snapshots::renewed(step.number, step.facts));
        m_naive.apply(step);
        m_real.apply(step);
        m_real.waitFor(m_naive.right().front().m_signals);
        Lines real;
        m_real.write(real);
        m_naive.settle(real);
    }

    void write(Lines& expected, Lines& real) const override
    {
        writeNaive(expected, m_naive.right().front(), m_naive.answer());
        m_real.write(real);
    }

    standin::Terminal& m_terminal;
    DistributionCounters m_counted;
    NaiveSide m_naive;
    RealSide m_real;
};

TEST(DistributionOracle, shouldEqualTheNaiveDistributionWhenStreamsAreAnything)
{
    standin::Terminal terminal;
    checkDuels("ticks, prices, sums and signals", kStreams, &makeDistributionSteps,
               [&terminal] { return DistributionDuel(terminal); });
}

} // namespace
