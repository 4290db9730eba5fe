#pragma once

#include "apps/tessi/followedlists.h"
#include "apps/tessi/panel.h"
#include "indexui/tessimodel/depthfilter.h"

namespace tessi {

// The orders that pass the filter, in the order in which they came, with what became of each.
class OrdersPanel : public Panel {
public:
    OrdersPanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override { m_orders.subscribe(data); }
    Table rows() override;
    std::string whyEmpty() const override { return "no order passes the filter"; }

private:
    FollowedOrders m_orders;
    TC::SDepthFilterParam m_filter;
};

} // namespace tessi
