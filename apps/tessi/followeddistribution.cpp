#include "apps/tessi/followeddistribution.h"

#include "apps/tessi/dayrequest.h"
#include "recording/dayspan.h"
#include "recording/recordedday.h"
#include "utils/stockkey.h"

#include <QString>

namespace tessi {

FollowedDistribution::FollowedDistribution(const recording::RecordedDay& day)
    : m_stream(snapshotStream(day))
    , m_priceTick(day.instrument.priceTick)
    , m_panelThread(utils::CSingletonT<net::RPCEngine>::instance()->getStrand("panel"))
{
    m_model.setStock(QString::fromStdString(utils::zlStockKey(day.instrument.market, day.instrument.code)));
    const auto dayInSeconds = static_cast<int>(recording::DaySpan(day.tradingDay).begin() / 1000);
    m_model.m_dateProvider = [dayInSeconds] { return dayInSeconds; };
    QObject::connect(
        &m_model, &TC::CModelTransDistribution::sigRedraw, &m_model,
        [this] {
            const std::lock_guard lock(m_mutex);
            m_redrawn.notify_all();
        },
        Qt::DirectConnection);
}

void FollowedDistribution::subscribe(recording::DataLayer& data)
{
    TC::CFormulaParam request;
    m_model.getParams(request);
    data.subscribe(request, m_stream, [this](int batchKind, const recording::RecordBatch& records) {
        m_panelThread->post([this, batchKind, records] {
            m_model.quoterCallBack(0, batchKind, records);
            waitUntilReady();
        });
    });
}

// Each history thread ends with the signal, after the model is ready again.
void FollowedDistribution::waitUntilReady()
{
    std::unique_lock lock(m_mutex);
    m_redrawn.wait(lock, [this] { return m_model.init(); });
}

} // namespace tessi
