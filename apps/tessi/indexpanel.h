#pragma once

#include "apps/tessi/panel.h"
#include "apps/tessi/qtapplication.h"
#include "Formula/formulaparam.h"
#include "indexui/tessimodel/ccustommodelindexparam.h"

#include <QCoreApplication>
#include <QThread>

#include <string>

namespace tessi {

// The ten rows of the index panel after the latest level-1 snapshot. The data layer's thread hands records in; the
// model lives on a thread of the panel's own with an event loop, as it lives on a terminal's GUI thread.
class IndexPanel : public Panel {
public:
    IndexPanel(const recording::RecordedDay& day, const PanelOptions& options);

    // Only when the data layer has stopped.
    ~IndexPanel() override;
    IndexPanel(const IndexPanel&) = delete;
    IndexPanel& operator=(const IndexPanel&) = delete;

    void subscribe(recording::DataLayer& data) override;
    Table rows() override;
    std::string whyEmpty() const override { return "the table has no rows"; }
    std::string note() const override { return m_note; }

private:
    QtApplication<QCoreApplication> m_application;
    TC::CFormulaParam m_request;
    std::string m_note;
    QThread m_panelThread;
    TC::CCustomModelIndexParam m_model;
};

} // namespace tessi
