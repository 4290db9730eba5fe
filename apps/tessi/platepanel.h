#pragma once

#include "apps/tessi/offscreenplatform.h"
#include "apps/tessi/panel.h"
#include "apps/tessi/picture.h"
#include "apps/tessi/qtapplication.h"
#include "Formula/formulaparam.h"
#include "indexui/tessimodel/cwatchplatewidget.h"
#include "recording/datalayer.h"

#include <QApplication>

#include <optional>
#include <string>

namespace tessi {

// The watch plate: active buying and selling by the size of the orders, as a table, and as a picture when a file is
// given. It shows the day up to its latest record or, with a time range, what the records from the first to the last
// of the range have gained.
class PlatePanel : public Panel {
public:
    PlatePanel(const recording::RecordedDay& day, const PanelOptions& options);

    void subscribe(recording::DataLayer& data) override;
    Table rows() override;
    std::string whyEmpty() const override { return m_whyEmpty; }
    std::string head() const override;
    std::string noteForPrograms() const override { return head(); }

private:
    bool showsRange() const { return m_from || m_to; }
    recording::RecordBatch shown() const;
    void addBlock(Table& table, int direction) const;

    OffscreenPlatform m_platform;
    QtApplication<QApplication> m_application;
    TC::CFormulaParam m_request;
    std::optional<__int64> m_from; // milliseconds, both included
    std::optional<__int64> m_to;
    std::optional<std::string> m_file;
    Picture m_picture;
    std::string m_name; // of the instrument
    std::string m_whyEmpty;
    recording::RecordBatch m_counts; // as they came
    TC::CWatchPlateWidget m_plate;
};

} // namespace tessi
