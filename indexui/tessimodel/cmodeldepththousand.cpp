#include "indexui/tessimodel/cmodeldepththousand.h"

#include "Formula/stockmanager.h"
#include "indexui/tessimodel/detail/log.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/release.h"
#include "indexui/tessimodel/detail/sharesperhand.h"
#include "indexui/tessimodel/detail/snapshotrows.h"
#include "indexui/tessimodel/detail/strand.h"
#include "indexui/tessimodel/detail/tickhistory.h"
#include "IndexUtils/instrumentdetails.h"
#include "utils/stockkey.h"
#include "ztservice/stocktypecenter.h"

#include <boost/thread/lock_guard.hpp>

namespace TC {

using namespace detail;

namespace {

constexpr int kTypeAfterHours = 277;
constexpr int kTypeAfterHoursSz = 10006;

bool hasAfterHoursPhase(const ztservice::CInstrumentDetail& stock)
{
    const auto types = utils::CSingletonT<ztservice::StockTypeCenter>::instance();
    return types->isTypedStock(kTypeAfterHours, stock.market, stock.code) ||
           types->isTypedStock(kTypeAfterHoursSz, stock.market, stock.code);
}

InstrumentPtr stockOf(const CModelDepthThousand& model)
{
    const ModelLock lock(model.m_mutex);
    return model.m_stock;
}

// Takes the model's lock for a batch that is logged only: a push must not wait for a panel that reads.
void logBatch(const CModelDepthThousand& model, const char* function, const BatchPtr& batch,
              const boost::source_location& where = BOOST_CURRENT_LOCATION)
{
    if (batch && isDataReturnLogged(batch->records))
        logDataReturn(&model, function, stockOf(model), batch, where);
}

} // namespace

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
    {
        // One lock over both, so that no snapshot is keyed with the tick of the former instrument.
        const ModelLock lock(m_mutex);
        m_stock = utils::CSingletonT<CStockManager>::instance()->getInstrumentDetail(key);
        initStockParams();
    }
    if (utils::CSingletonT<CDepthThousandModelManager>::instance()->checkData(key.toStdString()))
        m_updateFlags = kUpdateRebuilt;
}

void CModelDepthThousand::initStockParams()
{
    const ModelLock lock(m_mutex);
    m_priceTick = m_stock ? getDetailPriceTick(m_stock) : kDefaultPriceTick;
    m_volumeUnit = m_stock ? sharesPerHand(*m_stock) : 1;
    m_hasAfterHours = m_stock && hasAfterHoursPhase(*m_stock);
    m_lastClose = getDetailLastClose(m_stock);

    const boost::lock_guard<RecursiveLock> bookLock(m_book.m_mutex);
    m_book.m_stock = m_stock;
    m_book.m_priceTick = m_priceTick;
    m_book.m_volumeUnit = m_volumeUnit;
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
    const InstrumentPtr stock = stockOf(*this);
    return stock ? QString::fromStdString(utils::zlStockKey(stock->market, stock->code)) : QString();
}

void CModelDepthThousand::clear()
{
    const ModelLock lock(m_mutex);
    if (m_stock && !(m_askRows.empty() && m_bidRows.empty()))
        leaveRows();
    m_priceTick = kDefaultPriceTick;
    m_lastClose = kNoValue;
    m_tickLastPrice = kNoValue;
    m_quoterLastPrice = kNoValue;
    m_tickLastVolume = 0;
    m_quoterLastVolume = 0;
    m_afterHoursVolume = 0;
    m_quoterVolumeTime = 0;
    m_quoter.reset();
    releaseLater(m_orders, m_transactions, m_snapshotAsks, m_snapshotBids, m_dealVolumes, m_askRows, m_bidRows);
    m_askRowsAreBooks = false;
    m_bidRowsAreBooks = false;
    m_askFloor = kNoAskFloor;
    m_bidCeiling = 0;
    m_quoterTimetag = 0;
    m_reserved = 0;
    m_continuous = false;
    m_loadedHistory = 0;
    m_dataReady = 0;
    m_updateFlags = kUpdateRebuilt;
    m_book.clearAll();
    initStockParams();
}

// A panel that comes back to the instrument has rows to show at once.
void CModelDepthThousand::leaveRows()
{
    // Models that the manager itself takes down have nobody to leave rows to; asking would make a new manager.
    if (CDepthThousandModelManager::exists()) {
        utils::CSingletonT<CDepthThousandModelManager>::instance()->setData(
            utils::zlStockKey(m_stock->market, m_stock->code), std::move(m_askRows), std::move(m_bidRows));
    }
}

} // namespace TC
