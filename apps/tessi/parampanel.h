#pragma once

#include "apps/tessi/followedparams.h"
#include "apps/tessi/panel.h"

#include <string>

namespace tessi {

// The real-time parameter table as a panel shows it: label and value, with an empty row for each separator. It stands
// as after the day or, of a day that has been cut behind a moment, as at that moment.
class ParamPanel : public Panel {
public:
    ParamPanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override { m_params.subscribe(data); }

    Table rows() override;
    std::string whyEmpty() const override { return "the table has no rows"; }
    std::string note() const override { return m_note; }
    std::string foot() const override { return m_foot; }
    std::string noteForPrograms() const override { return m_foot; }

private:
    void showMoment();

    FollowedParams m_params;
    std::optional<std::string> m_at;
    __int64 m_atTime; // the last millisecond of that second
    std::string m_note;
    std::string m_foot;
};

} // namespace tessi
