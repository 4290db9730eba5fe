#include "indexui/tessimodel/cmodeldepththousand.h"

#include "indexui/tessimodel/detail/batchlog.h"
#include "indexui/tessimodel/detail/bookmodel.h"
#include "indexui/tessimodel/detail/strand.h"

namespace TC {

using namespace detail;

CModelDepthThousand::CModelDepthThousand(bool suppressTickFlags, int modelId)
    : m_modelId(modelId)
    , m_priceTick(kDefaultPriceTick)
    , m_lastClose(kNoValue)
    , m_strand(workerStrand())
    , m_suppressTickFlags(suppressTickFlags)
    , m_askFloor(kNoAskFloor)
    , m_tickLastPrice(kNoValue)
    , m_quoterLastPrice(kNoValue)
{}

CModelDepthThousand::~CModelDepthThousand()
{
    clear();
}

void CModelDepthThousand::setStock(const QString& key)
{
    followBookStock(*this, key);
}

void CModelDepthThousand::initStockParams()
{
    initBookStockParams(*this);
}

void CModelDepthThousand::entrustCallback(int first, int batchKind, const Batch& batch)
{
    logBatch(*this, "TC::CModelDepthThousand::entrustCallback", batch);
    postWorker(*m_strand, this, &CModelDepthThousand::doEntrust, first, batchKind, batch);
}

void CModelDepthThousand::transactionCallback(int first, int batchKind, const Batch& batch)
{
    logBatch(*this, "TC::CModelDepthThousand::transactionCallback", batch);
    postWorker(*m_strand, this, &CModelDepthThousand::doTransaction, first, batchKind, batch);
}

void CModelDepthThousand::quoterCallback(int first, int batchKind, const Batch& batch)
{
    logBatch(*this, "TC::CModelDepthThousand::quoterCallback", batch);
    postWorker(*m_strand, this, &CModelDepthThousand::doQuoter, first, batchKind, batch);
}

bool CModelDepthThousand::isDataAllReadly() const
{
    return m_dataReady == kBothLoaded;
}

void CModelDepthThousand::setNewLoan(bool isNewLoan)
{
    m_isNewLoan = isNewLoan;
}

QString CModelDepthThousand::getStockKey() const
{
    return stockKeyOf(*this);
}

void CModelDepthThousand::clear()
{
    const ModelLock lock(m_mutex);
    clearBookModel(*this);
    m_askRowsAreBooks = false;
    m_bidRowsAreBooks = false;
}

} // namespace TC
