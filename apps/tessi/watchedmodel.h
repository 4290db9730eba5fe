#pragma once

#include "apps/tessi/bestlevels.h"
#include "indexui/tessimodel/cmodeldepththousand.h"
#include "recording/datalayer.h"

#include <memory>
#include <optional>

namespace standin {
class Terminal;
}

namespace tessi {

// The thousand-level model of a day's instrument, live from the first record on, and fed one record at a time: when
// push returns the model has worked it through. Runs the terminal's strands by hand. One thread.
class WatchedModel {
public:
    WatchedModel(standin::Terminal& terminal, const recording::RecordedDay& day);
    WatchedModel(const WatchedModel&) = delete;
    WatchedModel& operator=(const WatchedModel&) = delete;

    // An order, trade or snapshot in the terminal's units.
    void push(const recording::Event& event);

    bool isContinuous(const std::shared_ptr<quoter::QuoterDepthData>& snapshot) const;

    // The latest snapshot that the model took, in ms; 0 for none.
    __int64 snapshotTime() const { return m_model.m_quoterTimetag; }

    // By the rule of time: the snapshot is newer than every tick.
    bool isSnapshotNewer() const { return m_model.m_book.m_lastTimetag < m_model.m_quoterTimetag; }

    // What a panel reads now: the ten best levels of each side in hands. Nothing when there is no update to read.
    std::optional<BestLevels> read();

    TC::CModelDepthThousand& model() { return m_model; }
    TC::ThousandBook& book() { return m_model.m_book; }

private:
    using Callback = void (TC::CModelDepthThousand::*)(int, int, const TC::CModelDepthThousand::Batch&);
    void call(Callback callback, int batchKind, const recording::RecordBatch& records);

    standin::Terminal& m_terminal;
    double m_priceTick;
    TC::CFormulaParam m_request;
    TC::CModelDepthThousand m_model;
};

} // namespace tessi
