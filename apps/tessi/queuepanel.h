#pragma once

#include "apps/tessi/followedbook.h"
#include "apps/tessi/panel.h"

namespace tessi {

// The orders that rest at one price, oldest first, in shares, each with what stands before it. Where a snapshot shows
// more than the ticks account for, the rest is there as implied orders, which have neither a time nor a number of the
// exchange's.
class QueuePanel : public Panel {
public:
    QueuePanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override { m_book.subscribe(data); }
    Table rows() override;
    std::string whyEmpty() const override;
    std::string foot() const override { return m_foot; }

private:
    FollowedBook m_book;
    bool m_isBid;
    double m_price;
    std::string m_foot;
};

} // namespace tessi
