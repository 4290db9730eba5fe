#pragma once

#include "apps/tessi/followedlists.h"
#include "apps/tessi/panel.h"

namespace tessi {

// The trades of a time range as the chart of time and price takes them: how each follows the trade before it of its
// two orders, and the rows of its snapshot. Below them the range of prices and the height of the drawing.
class ViewPanel : public Panel {
public:
    ViewPanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override { m_trades.subscribe(data); }
    Table rows() override;
    std::string whyEmpty() const override { return "no trade is in view"; }
    std::string foot() const override;

private:
    FollowedTrades m_trades;
    int m_from; // seconds
    int m_to;
};

} // namespace tessi
