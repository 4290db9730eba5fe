#pragma once

#include "BaseWidget/basewidget.h"
#include "indexui/tessimodel/cwatchplatewidget_data.h"
#include "indexui/tessimodel/export.h"

#include <QString>

#include <memory>
#include <vector>

class QPaintEvent;
class QResizeEvent;

namespace quoter {
struct QuoterBase;
struct TransactionCount;
} // namespace quoter

namespace TC {

// The watch plate: how the traded volume of one instrument splits between active buying and active selling and among
// four order sizes, as a pie of eight sectors and a table. The size classes come with the records.
//
// Records may be set on any thread; all else is for the GUI thread.
class TESSIMODEL_EXPORT CWatchPlateWidget : public ZP::CBaseWidget {
    Q_OBJECT

public:
    explicit CWatchPlateWidget(QWidget* parent);
    ~CWatchPlateWidget() override;

    // Empties the plate for another instrument. With an empty key it repaints at once; with any other, the old picture
    // stays on the screen until the next paint.
    void setStock(const QString& key);

    // Shows the state of the day: the last record. A batch without a TransactionCount there is ignored.
    void setTransactionCount(const std::vector<std::shared_ptr<quoter::QuoterBase>>& records);

    // Shows a range of the day: the last record less the first, so that one record shows zeros. A batch without a
    // TransactionCount at both ends is ignored.
    void setRegionTransaction(const std::vector<std::shared_ptr<quoter::QuoterBase>>& records);

    // Hands everything on to the base.
    bool handleEvent(int event, int first, int second, QString text, void* payload) override;

    void resizeLayout();
    void themeChanged() override;

    WatchPlateData m_data;
    QString m_stockKey;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void take(const quoter::TransactionCount& last, const quoter::TransactionCount& first);
    void requestUpdate();
};

} // namespace TC
