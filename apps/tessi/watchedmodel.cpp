#include "apps/tessi/watchedmodel.h"

#include "apps/tessi/bookreading.h"
#include "apps/tessi/dayrequest.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/liveread.h"
#include "recording/datalayer.h"
#include "standin/terminal.h"
#include "utils/stockkey.h"

namespace tessi {

namespace {

constexpr int kHistory = 0;
constexpr int kLive = 1;

standin::Terminal& prepared(standin::Terminal& terminal, const recording::RecordedDay& day)
{
    terminal.strands.runByHand();
    terminal.instruments.add(day.instrument);
    return terminal;
}

// `from` to `to` runs from the best row to the worst.
template <class Iterator>
std::vector<BookLevel> firstRows(Iterator from, Iterator to, double priceTick)
{
    std::vector<BookLevel> levels;
    for (; from != to && levels.size() < kSnapshotLevels; ++from) {
        const TC::EntrustData row = TC::readLive(**from);
        levels.push_back({TC::detail::priceKey(row.price, priceTick), row.price, row.volume});
    }
    return levels;
}

} // namespace

// The histories are empty, so that the book is live from the first tick on.
WatchedModel::WatchedModel(standin::Terminal& terminal, const recording::RecordedDay& day)
    : m_terminal(prepared(terminal, day))
    , m_priceTick(day.instrument.priceTick)
    , m_request(wholeDay(day))
{
    m_model.setStock(QString::fromStdString(utils::zlStockKey(day.instrument.market, day.instrument.code)));
    call(&TC::CModelDepthThousand::entrustCallback, kHistory, {});
    call(&TC::CModelDepthThousand::transactionCallback, kHistory, {});
}

void WatchedModel::push(const recording::Event& event)
{
    if (event.stream == recording::Stream::Orders)
        call(&TC::CModelDepthThousand::entrustCallback, kLive, {event.record});
    else if (event.stream == recording::Stream::Trades)
        call(&TC::CModelDepthThousand::transactionCallback, kLive, {event.record});
    else if (event.stream == recording::Stream::Snapshots)
        call(&TC::CModelDepthThousand::quoterCallback, kLive, {event.record});
}

bool WatchedModel::isContinuous(const std::shared_ptr<quoter::QuoterDepthData>& snapshot) const
{
    return m_model.isContinousStatus(snapshot);
}

std::optional<BestLevels> WatchedModel::read()
{
    const BookReading book(m_model);
    if (!book.isNew)
        return std::nullopt;
    return BestLevels{firstRows(book.bids.rbegin(), book.bids.rend(), m_priceTick),
                      firstRows(book.asks.begin(), book.asks.end(), m_priceTick)};
}

void WatchedModel::call(Callback callback, int batchKind, const recording::RecordBatch& records)
{
    (m_model.*callback)(0, batchKind, recording::wrapBatch(m_request, records));
    m_terminal.strands.drain("modulegroup");
}

} // namespace tessi
