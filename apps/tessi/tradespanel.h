#pragma once

#include "apps/tessi/followedlists.h"
#include "apps/tessi/panel.h"
#include "indexui/tessimodel/depthfilter.h"

namespace tessi {

// The trades that pass the filter, each with the sizes of its two orders and the second of the snapshot that it is
// matched to. Trades are matched before they are filtered: a snapshot's volume is that of all trades.
class TradesPanel : public Panel {
public:
    TradesPanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override { m_trades.subscribe(data); }
    Table rows() override;
    std::string whyEmpty() const override { return "no trade passes the filter"; }

private:
    FollowedTrades m_trades;
    TC::SDepthFilterParam m_filter;
};

} // namespace tessi
