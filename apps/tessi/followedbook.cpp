#include "apps/tessi/followedbook.h"

#include "apps/tessi/dayrequest.h"
#include "recording/datalayer.h"
#include "utils/stockkey.h"

namespace tessi {

FollowedBook::FollowedBook(const recording::RecordedDay& day)
    : m_request(wholeDay(day))
{
    model.setStock(QString::fromStdString(utils::zlStockKey(day.instrument.market, day.instrument.code)));
}

// The model posts what it gets to its strand, so that the data layer's thread may call it.
void FollowedBook::subscribe(recording::DataLayer& data)
{
    using recording::Stream;
    data.subscribe(m_request, Stream::Orders, [this](int batchKind, const recording::RecordBatch& records) {
        model.entrustCallback(0, batchKind, recording::wrapBatch(m_request, records));
    });
    data.subscribe(m_request, Stream::Trades, [this](int batchKind, const recording::RecordBatch& records) {
        model.transactionCallback(0, batchKind, recording::wrapBatch(m_request, records));
    });
    data.subscribe(m_request, Stream::Snapshots, [this](int batchKind, const recording::RecordBatch& records) {
        model.quoterCallback(0, batchKind, recording::wrapBatch(m_request, records));
    });
}

} // namespace tessi
