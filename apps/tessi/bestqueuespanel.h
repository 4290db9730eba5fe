#pragma once

#include "apps/tessi/followedbook.h"
#include "apps/tessi/panel.h"

#include <cstddef>
#include <string>

namespace tessi {

// All that the model of the order queues holds: the levels of its book, built from ticks, with the first orders of
// each; and the ten slots of each side that a pair of snapshots fills, of which those with an ordinary price stay bare.
// Below them what checkUpdate hands out.
class BestQueuesPanel : public Panel {
public:
    BestQueuesPanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override { m_queues.subscribe(data); }
    Table rows() override;
    std::string whyEmpty() const override { return m_whyEmpty; }
    std::string note() const override { return m_note; }
    std::string foot() const override { return m_foot; }

private:
    void addLevels(Table& table, bool isBid);
    void addSlots(Table& table, bool isBid) const;
    std::string readText();

    FollowedOrderQueues m_queues;
    std::size_t m_depth;
    std::string m_note;
    std::string m_whyEmpty = "no order rests";
    std::string m_foot;
};

} // namespace tessi
