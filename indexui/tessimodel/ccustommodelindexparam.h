#pragma once

#include "indexui/tessimodel/export.h"
#include "quoter/quoterbaseptr_metatype.h"
#include "utils/int64.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QVector>

#include <limits>
#include <memory>

namespace TC {

// One row of the index panel.
struct SIndexParamRow {
    QString label;
    int id = 0; // position, 0 to 9
    QString text = QStringLiteral("--");
    double value = std::numeric_limits<double>::max(); // the number behind the text
    QColor color;
};

// The ten rows of an index panel, filled from each level-1 snapshot of the index.
//
// ondata may be called on any thread; the rows change on the thread that owns the object, which reads them there after
// sigReDraw. That thread runs an event loop. Who destroys the object must first have ended the calls of ondata.
class TESSIMODEL_EXPORT CCustomModelIndexParam : public QObject {
    Q_OBJECT

public:
    CCustomModelIndexParam();
    ~CCustomModelIndexParam() override;

    // Appends the ten rows, without emptying: a second call gives twenty, of which the first ten are used.
    void reset();

    // Empties the texts and values of the ten rows. Labels and colours stay.
    void clear();

    // Kept for the owner.
    void setStock(QString code);
    void onrequestId(qint64 id);

    // Do nothing: the owner sends the requests.
    void request();
    void unrequest();

    // Takes a record to the object's own thread.
    void ondata(std::shared_ptr<quoter::QuoterBase> record);

    // The colour of rise or fall of a value against its base, `normal` within the tolerance of prices.
    QColor getParamColor(double value, double base, QColor normal) const;

    QVector<SIndexParamRow> m_rows;
    QString m_stockCode;
    __int64 m_requestId = -1;

signals:
    void sigOnData(quoter::QuoterBasePtr record);
    void sigReDraw(); // the rows changed

protected slots:
    // Fills the rows. A record of another type changes none; sigReDraw comes all the same.
    void slotOnData(const quoter::QuoterBasePtr& record);
};

} // namespace TC
