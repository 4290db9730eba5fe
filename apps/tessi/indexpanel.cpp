#include "apps/tessi/indexpanel.h"

#include "apps/tessi/dayrequest.h"
#include "apps/tessi/missingstreams.h"
#include "apps/tessi/paramtable.h"
#include "apps/tessi/text.h"
#include "recording/datalayer.h"

#include <vector>

namespace tessi {

namespace {

std::string missingIn(const recording::RecordedDay& day)
{
    std::vector<std::string> notes;
    if (!isIndex(day))
        notes.emplace_back("the instrument is no index");
    if (const std::string missing = missingStreamsText(day, {recording::Stream::Quotes}); !missing.empty())
        notes.push_back(missing);
    return joinedNotes(notes);
}

} // namespace

IndexPanel::IndexPanel(const recording::RecordedDay& day, const PanelOptions& /*options*/)
    : m_request(wholeDay(day))
    , m_note(missingIn(day))
{
    m_model.setStock(m_request.stockCode);
    m_model.moveToThread(&m_panelThread);
    m_panelThread.start();
}

IndexPanel::~IndexPanel()
{
    m_panelThread.quit();
    m_panelThread.wait();
}

// The model takes one snapshot at a time, and each replaces the one before: of a batch the last is all that counts.
void IndexPanel::subscribe(recording::DataLayer& data)
{
    data.subscribe(m_request, recording::Stream::Quotes, [this](int, const recording::RecordBatch& records) {
        if (!records.empty())
            m_model.ondata(records.back());
    });
}

Table IndexPanel::rows()
{
    // A redraw that is queued behind all records: when it has been, the thread rests and its rows may be read.
    QMetaObject::invokeMethod(&m_model, "sigReDraw", Qt::BlockingQueuedConnection);

    Table table(paramColumns());
    for (const TC::SIndexParamRow& row : m_model.m_rows) {
        const std::string colour = row.color.isValid() ? row.color.name().toStdString() : "";
        table.add({row.label.toStdString(), row.text.toStdString(), numberText(row.id), colour}, tintOf(row.color));
    }
    return table;
}

} // namespace tessi
