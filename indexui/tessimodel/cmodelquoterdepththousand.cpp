#include "indexui/tessimodel/cmodelquoterdepththousand.h"

#include "indexui/tessimodel/detail/batchlog.h"
#include "indexui/tessimodel/detail/bookmodel.h"
#include "indexui/tessimodel/detail/levelvolumes.h"
#include "indexui/tessimodel/detail/snapshotstep.h"
#include "indexui/tessimodel/detail/strand.h"
#include "quoter/levelthousanddata.h"
#include "quoter/quoterdepthdata.h"

namespace TC {

using namespace detail;

namespace {

// The base of comparison moves this often at most, so that a change shows what happened over about a second.
constexpr __int64 kBaseMs = 1000;

} // namespace

CModelQuoterDepthThousand::CModelQuoterDepthThousand(bool suppressTickFlags, int modelId)
    : m_modelId(modelId)
    , m_priceTick(kDefaultPriceTick)
    , m_lastClose(kNoValue)
    , m_strand(workerStrand())
    , m_suppressTickFlags(suppressTickFlags)
    , m_askFloor(kNoAskFloor)
    , m_tickLastPrice(kNoValue)
    , m_quoterLastPrice(kNoValue)
{}

CModelQuoterDepthThousand::~CModelQuoterDepthThousand()
{
    clear();
}

void CModelQuoterDepthThousand::setStock(const QString& key)
{
    followBookStock(*this, key);
}

void CModelQuoterDepthThousand::initStockParams()
{
    initBookStockParams(*this);
}

void CModelQuoterDepthThousand::ThousandDataCallback(int first, int batchKind, const Batch& batch)
{
    logBatch(*this, "TC::CModelQuoterDepthThousand::ThousandDataCallback", batch);
    postWorker(*m_strand, this, &CModelQuoterDepthThousand::doThousandData, first, batchKind, batch);
}

void CModelQuoterDepthThousand::quoterCallback(int first, int batchKind, const Batch& batch)
{
    logBatch(*this, "TC::CModelQuoterDepthThousand::quoterCallback", batch);
    postWorker(*m_strand, this, &CModelQuoterDepthThousand::doQuoter, first, batchKind, batch);
}

bool CModelQuoterDepthThousand::isContinousStatus(const std::shared_ptr<quoter::QuoterDepthData>& record) const
{
    return isContinuousTrading(*record);
}

void CModelQuoterDepthThousand::setNewLoan(bool isNewLoan)
{
    m_isNewLoan = isNewLoan;
}

QString CModelQuoterDepthThousand::getStockKey() const
{
    return stockKeyOf(*this);
}

void CModelQuoterDepthThousand::doThousandData(int, int, const Batch& batch)
{
    const ModelLock lock(m_mutex);
    if (!isFor(batch, m_stock))
        return;
    const auto record = lastAs<quoter::LevelThousandData>(batch->records);
    if (!record)
        return;
    // With the first record the base takes the still empty one before it; the second gives it the first.
    if (!m_prevThousand || difference64(record->timetag, m_prevThousand->timetag) >= kBaseMs)
        m_prevThousand = m_thousand;
    m_thousand = record;
    updatePriceVolDelta();
    m_updateFlags |= kUpdateInPlace;
}

void CModelQuoterDepthThousand::updatePriceVolDelta()
{
    if (!m_prevThousand || !m_thousand)
        return;
    const LevelVolumes before = volumesByPrice(*m_prevThousand);
    const LevelVolumes after = volumesByPrice(*m_thousand);
    forEachCommonPrice(before, after, [this](double price, int volumeBefore, int volumeAfter) {
        // Growth is negative. That is wanted.
        if (volumeBefore != volumeAfter)
            m_priceDeltas[price] = {difference32(volumeBefore, volumeAfter), m_thousand->timetag};
    });
}

void CModelQuoterDepthThousand::doQuoter(int, int batchKind, const Batch& batch)
{
    takeSnapshots(*this, batch, [&](const DepthPtr& last, DayVolume dayVolume) {
        // A first push that has earlier records shows its step: the base is looked for among them.
        if (!m_quoter)
            m_quoter = baseOfStep(batch->records, batch->records.size() - 1, last, dayVolume);
        takeVolumeStep(*this, batchKind, batch->records, last, dayVolume);
        if (advanceBase(*this, last, dayVolume))
            m_quoterVolumeTime = low32(last->timetag);
    });
}

void CModelQuoterDepthThousand::clear()
{
    const ModelLock lock(m_mutex);
    clearBookModel(*this);
    m_thousand.reset();
    m_prevThousand.reset();
    m_priceDeltas.clear();
}

} // namespace TC
