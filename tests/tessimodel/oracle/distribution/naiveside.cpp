#include "tests/tessimodel/oracle/distribution/naiveside.h"

#include "tests/tessimodel/oracle/distribution/distributionstate.h"
#include "tests/tessimodel/oracle/snapshots/snapshotinstruments.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace tests::oracle::distribution {

NaiveSide::NaiveSide(DistributionCounters& counters)
    : m_counters(&counters)
    , m_right{NaiveDistribution(counters)}
{}

void NaiveSide::apply(const DistributionStep& step)
{
    m_answer = true;
    m_right.front().m_trace = 0;
    if (step.action == DistributionStep::Action::Batch)
        batch(step);
    else if (step.action == DistributionStep::Action::Together)
        together(step);
    else
        applyOther(m_right.front(), step);
}

void NaiveSide::applyOther(NaiveDistribution& model, const DistributionStep& step)
{
    using enum DistributionStep::Action;
    if (step.action == Follow)
        model.setStock(snapshots::snapshotKeyOf(step.number));
    else if (step.action == Clear)
        model.clear();
    else if (step.action == Dates)
        model.m_date = step.on ? std::optional(snapshots::dateAt(step.number)) : std::nullopt;
    else if (step.action == Pending)
        model.m_pending = step.ticks;
    else if (step.action == Series)
        model.calc(step.series);
    else if (step.action == OneTick)
        model.processData(step.ticks.front());
    else if (step.action == Thread)
        model.quoterCallBackThread(step.records);
    else if (step.action == Construct)
        model = NaiveDistribution(*m_counters);
    else if (step.action == Record)
        model.processData(step.records.empty() ? nullptr : step.records.front());
}

void NaiveSide::batch(const DistributionStep& step)
{
    NaiveDistribution& model = m_right.front();
    const bool works = model.quoterCallBack(step.ignored, step.kind, step.records);
    if (works)
        model.quoterCallBackThread(step.records);
    m_answer = !works;
}

void NaiveSide::together(const DistributionStep& step)
{
    using Work = std::function<void(NaiveDistribution&)>;
    NaiveDistribution start = m_right.front();
    std::vector<Work> works;
    const auto call = [&](int kind, const Records& records) {
        if (start.quoterCallBack(step.ignored, kind, records))
            works.emplace_back([&records](NaiveDistribution& model) { model.quoterCallBackThread(records); });
    };
    call(step.kind, step.records);
    for (const Records& piece : step.pieces)
        call(3, piece);
    m_answer = !step.on || works.empty();
    for (const Records& push : step.pushes) {
        if (start.m_stock)
            works.emplace_back([&](NaiveDistribution& model) { model.quoterCallBack(step.ignored, 1, push); });
    }
    for (const int instrument : step.instruments)
        works.emplace_back(
            [instrument](NaiveDistribution& model) { model.setStock(snapshots::snapshotKeyOf(instrument)); });

    std::vector<std::size_t> order(works.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    m_right.clear();
    do {
        NaiveDistribution& model = m_right.emplace_back(start);
        for (const std::size_t work : order)
            works[work](model);
        model.m_trace = 0; // of threads that meet nobody can tell
    } while (std::next_permutation(order.begin(), order.end()));
}

void NaiveSide::settle(const Lines& real)
{
    if (m_right.size() == 1)
        return;
    const auto isSame = [&](const NaiveDistribution& model) {
        Lines lines;
        writeNaive(lines, model, m_answer);
        return lines == real;
    };
    const auto found = std::find_if(m_right.begin(), m_right.end(), isSame);
    const NaiveDistribution chosen = found == m_right.end() ? m_right.front() : *found;
    m_right.assign(1, chosen);
}

void writeNaive(Lines& out, const NaiveDistribution& model, bool answer)
{
    writeModel(out, model);
    out.add(sections::kAnswer, {answer, model.m_date.value_or(-1)});
    out.add(sections::kSignals, {model.m_signals, true, model.m_trace});
}

} // namespace tests::oracle::distribution
