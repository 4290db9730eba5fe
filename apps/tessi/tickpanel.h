#pragma once

#include "apps/tessi/panel.h"
#include "indexui/tessimodel/cmodeltransaction.h"
#include "net/rpcengine.h"
#include "recording/recordedday.h"

namespace tessi {

// The tick list, from the day's level-2 snapshots or, where it has none, from level 1. The model belongs to one thread
// at a time: a strand of the panel's own plays the panel's thread.
class TickPanel : public Panel {
public:
    TickPanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override;
    Table rows() override;
    std::string whyEmpty() const override { return "no snapshot shows a trade"; }

private:
    TC::CModelTransaction m_model;
    recording::Stream m_stream;
    boost::shared_ptr<boost::asio::io_service::strand> m_panelThread;
};

} // namespace tessi
