#pragma once

#include "apps/tessi/followedstatus.h"
#include "apps/tessi/panel.h"

#include <optional>
#include <string>

namespace tessi {

// The best levels of both sides as a panel shows them, with the change at each price since the snapshot before. They
// stand as after the day or, of a day that has been cut behind a moment, as at that moment.
class StatusPanel : public Panel {
public:
    StatusPanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override { m_status.subscribe(data); }

    Table rows() override;
    std::string whyEmpty() const override;
    std::string note() const override { return m_note; }
    std::string foot() const override;
    std::string noteForPrograms() const override { return foot(); }

private:
    void showMoment();
    bool hasNoBook() const;

    const bool m_isIndex;
    const recording::Stream m_stream;
    FollowedStatus m_status;
    std::optional<std::string> m_at;
    __int64 m_atTime; // the last millisecond of that second
    std::string m_note;
    std::string m_moment;
};

} // namespace tessi
