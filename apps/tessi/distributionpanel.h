#pragma once

#include "apps/tessi/followeddistribution.h"
#include "apps/tessi/panel.h"

#include <string>
#include <vector>

namespace tessi {

// The day's volume at each price, bought and sold, with a bar as long as its part of the largest.
class DistributionPanel : public Panel {
public:
    DistributionPanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override { m_distribution.subscribe(data); }
    Table rows() override;
    std::string whyEmpty() const override { return "no snapshot shows a trade"; }
    std::string note() const override { return m_note; }
    std::string foot() const override;

private:
    std::vector<TC::TransDistributionPrice> prices() const; // highest first

    FollowedDistribution m_distribution;
    std::string m_note;
};

} // namespace tessi
