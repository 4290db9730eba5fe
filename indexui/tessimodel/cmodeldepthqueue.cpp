#include "indexui/tessimodel/cmodeldepthqueue.h"

#include "Formula/stockmanager.h"
#include "indexui/tessimodel/detail/batchlog.h"
#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/release.h"
#include "indexui/tessimodel/detail/stockparams.h"
#include "indexui/tessimodel/detail/strand.h"

namespace TC {

using namespace detail;

CModelDepthQueue::CModelDepthQueue(bool suppressTickFlags, int modelId)
    : m_modelId(modelId)
    , m_priceTick(kDefaultPriceTick)
    , m_lastClose(kNoValue)
    , m_strand(workerStrand())
    , m_suppressTickFlags(suppressTickFlags)
{}

CModelDepthQueue::~CModelDepthQueue()
{
    clear();
}

void CModelDepthQueue::setStock(const QString& key)
{
    const ModelLock lock(m_mutex);
    m_stock = utils::CSingletonT<CStockManager>::instance()->getInstrumentDetail(key);
    initStockParams();
}

void CModelDepthQueue::initStockParams()
{
    const ModelLock lock(m_mutex);
    takeStockParams(*this, sharesPerHandByType);
    shareWithBook(*this);
}

void CModelDepthQueue::entrustCallback(int first, int batchKind, const Records& records)
{
    logBatch(*this, "TC::CModelDepthQueue::entrustCallback", records);
    postWorker(*m_strand, this, &CModelDepthQueue::doEntrust, first, batchKind, records);
}

void CModelDepthQueue::transactionCallback(int first, int batchKind, const Records& records)
{
    logBatch(*this, "TC::CModelDepthQueue::transactionCallback", records);
    postWorker(*m_strand, this, &CModelDepthQueue::doTransaction, first, batchKind, records);
}

void CModelDepthQueue::queueCallback(int first, int batchKind, const Records& records)
{
    logBatch(*this, "TC::CModelDepthQueue::queueCallback", records);
    postWorker(*m_strand, this, &CModelDepthQueue::doQueue, first, batchKind, records);
}

void CModelDepthQueue::quoterCallback(int first, int batchKind, const Records& records)
{
    logBatch(*this, "TC::CModelDepthQueue::quoterCallback", records);
    postWorker(*m_strand, this, &CModelDepthQueue::doQuoter, first, batchKind, records);
}

void CModelDepthQueue::clear()
{
    ModelLock lock(m_mutex);
    m_priceTick = kDefaultPriceTick;
    m_lastClose = kNoValue;
    const auto dropped = takenOut(m_orders, m_transactions, m_dealVolumes);
    m_rawTimetag = 0;
    m_quoter.reset();
    m_levelOrder.reset();
    m_continuous = false;
    m_loadedHistory = 0;
    m_updateFlags = kUpdateRebuilt;
    // A panel that polls does not wait for the book, which is long to free, nor for what was taken out.
    lock.unlock();
    m_book.clearAll();
    initStockParams();
}

} // namespace TC
