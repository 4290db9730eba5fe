#pragma once

#include "Formula/stockmanager.h"
#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/log.h"
#include "indexui/tessimodel/detail/release.h"
#include "indexui/tessimodel/detail/strand.h"
#include "quoter/orderdata.h"

#include <boost/enable_shared_from_this.hpp>
#include <boost/thread/locks.hpp>
#include <boost/thread/recursive_mutex.hpp>

#include <QList>
#include <QString>

#include <atomic>

namespace tests {

// The least that a tick-level model is: a strand, a lock, a list of rows. Its tasks keep it alive.
class FrameModel : public boost::enable_shared_from_this<FrameModel> {
public:
    using Batch = TC::detail::BatchPtr;

    FrameModel()
        : m_strand(TC::detail::workerStrand())
    {}

    ~FrameModel() { ++destroyed; }

    void setStock(const QString& key)
    {
        const Lock lock(m_mutex);
        m_stock = utils::CSingletonT<TC::CStockManager>::instance()->getInstrumentDetail(key);
    }

    void entrustCallback(int first, int batchKind, const Batch& batch)
    {
        TC::detail::postWorker(*m_strand, shared_from_this(), &FrameModel::doEntrust, first, batchKind, batch);
    }

    // As the models do that are bound by a plain pointer.
    void plainCallback(int first, int batchKind, const Batch& batch)
    {
        if (batch)
            TC::detail::logDataReturn(this, "FrameModel::plainCallback", stock(), batch->records);
        TC::detail::postWorker(*m_strand, this, &FrameModel::doEntrust, first, batchKind, batch);
    }

    void clear()
    {
        const Lock lock(m_mutex);
        TC::detail::releaseLater(m_rows);
    }

    int size() const
    {
        const Lock lock(m_mutex);
        return m_rows.size();
    }

    int lastFirst() const
    {
        const Lock lock(m_mutex);
        return m_lastFirst;
    }

    // A row that notices its own end.
    struct Row {
        std::shared_ptr<quoter::OrderData> order;
        std::shared_ptr<void> alive;
    };

    std::shared_ptr<void> rowToken = std::make_shared<int>(0); // shared by the rows from now on
    static inline std::atomic<int> destroyed = 0;

protected:
    void doEntrust(int first, int batchKind, const Batch& batch)
    {
        const Lock lock(m_mutex);
        if (!TC::detail::isFor(batch, m_stock))
            return;
        m_lastFirst = first;
        if (batchKind == TC::detail::kHistoryStart)
            TC::detail::releaseLater(m_rows);
        for (const auto& record : batch->records) {
            if (const auto order = TC::detail::recordAs<quoter::OrderData>(record))
                m_rows.append({order, rowToken});
        }
    }

private:
    using Lock = boost::unique_lock<boost::recursive_mutex>;

    TC::detail::InstrumentPtr stock() const
    {
        const Lock lock(m_mutex);
        return m_stock;
    }

    mutable boost::recursive_mutex m_mutex;
    TC::detail::StrandPtr m_strand;
    TC::detail::InstrumentPtr m_stock;
    int m_lastFirst = 0;
    QList<Row> m_rows;
};

} // namespace tests
