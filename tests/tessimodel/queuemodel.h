#pragma once

#include "indexui/tessimodel/cmodeldepthqueue.h"
#include "tests/tessimodel/bookfeed.h"
#include "tests/tessimodel/booktext.h"
#include "ztservice/instrumentdetail.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <memory>
#include <string>

namespace tests {

// An order queue model whose single steps a test can take.
class Queue : public TC::CModelDepthQueue {
public:
    using CModelDepthQueue::CModelDepthQueue;
    using CModelDepthQueue::doEntrust;
    using CModelDepthQueue::doQueue;
    using CModelDepthQueue::doQuoter;
    using CModelDepthQueue::doTransaction;
    using CModelDepthQueue::getAsks;
    using CModelDepthQueue::getBids;
    using CModelDepthQueue::updateRaw;
};

// What a panel gets of one poll. The lists begin with a row of the panel's own.
struct QueueReading {
    bool poll(TC::CModelDepthQueue& model) { return updated = model.checkUpdate(flags, bids, asks); }

    bool keepsBids() const { return bids == TC::OrderQueueList{panelsRow}; }
    bool keepsAsks() const { return asks == TC::OrderQueueList{panelsRow}; }

    std::shared_ptr<TC::OrderQueue> panelsRow = std::make_shared<TC::OrderQueue>(7.77, true);
    bool updated = false;
    int flags = -1;
    TC::OrderQueueList bids{panelsRow};
    TC::OrderQueueList asks{panelsRow};
};

inline QueueReading readQueues(TC::CModelDepthQueue& model)
{
    QueueReading reading;
    reading.poll(model);
    return reading;
}

// A row of a snapshot: "bid 0.00 500, 2 of 300 [0:100 1:200]", which is price, volume, and the queue's orders with the
// shares that they have together; "bare" for one that was not filled, "none" for an empty slot.
inline std::string snapshotRowText(const std::shared_ptr<TC::OrderQueue>& row)
{
    if (!row)
        return "none";
    const std::string text = fmt::format("{} {:.2g} {}, {} of {} [{}]", row->m_isBid ? "bid" : "ask", row->m_price,
                                         row->m_volume, row->m_count, row->m_queueVolume, queueText(*row));
    if (!row->m_valid)
        return text == "bid 0 0, 0 of 0 []" ? "bare" : "not valid: " + text;
    return text;
}

// The ten slots of a side, those from `first` on that look like it as one: "0: bid 0 500, 0 of 0 []\n1-9: bare\n".
inline std::string slotsText(const TC::OrderQueueRows& rows)
{
    std::string text;
    for (std::size_t i = 0, next = 0; i < TC::OrderQueueRows::kSlots; i = next) {
        const std::string row = snapshotRowText(rows[i]);
        for (next = i + 1; next < TC::OrderQueueRows::kSlots && snapshotRowText(rows[next]) == row;)
            ++next;
        text += (next == i + 1 ? fmt::format("{}: ", i) : fmt::format("{}-{}: ", i, next - 1)) + row + "\n";
    }
    return text;
}

class QueueTest : public ::testing::Test, protected FollowedModel<Queue> {};

} // namespace tests
