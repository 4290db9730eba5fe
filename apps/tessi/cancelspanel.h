#pragma once

#include "apps/tessi/followedlists.h"
#include "apps/tessi/panel.h"
#include "indexui/tessimodel/depthfilter.h"

namespace tessi {

// The cancels whose orders pass the filter, in the order in which they came, with the side, kind, price and size of
// the order: the cancel itself has no price in Shenzhen.
class CancelsPanel : public Panel {
public:
    CancelsPanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override { m_orders.subscribe(data); }
    Table rows() override;
    std::string whyEmpty() const override { return "no cancel of a known order passes the filter"; }

private:
    FollowedOrders m_orders;
    TC::SDepthFilterParam m_filter;
};

} // namespace tessi
