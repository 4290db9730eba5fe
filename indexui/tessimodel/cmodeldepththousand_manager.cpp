#include "indexui/tessimodel/cmodeldepththousand.h"

#include "Formula/formulamanager.h"
#include "indexui/tessimodel/detail/release.h"
#include "utils/csingletont_impl.h"

#include <boost/make_shared.hpp>
#include <boost/thread/locks.hpp>

template struct utils::CSingletonT<TC::CDepthThousandModelManager>;

namespace TC {

using namespace detail;

namespace {

using Lock = boost::unique_lock<boost::recursive_mutex>;

std::atomic<int> s_managers{0};

} // namespace

CDepthThousandModelManager::CDepthThousandModelManager()
{
    // Direct, on whatever thread the signal comes: it must not wait for the event loop of the thread that happened to
    // ask for the manager first, which may have none.
    connect(utils::CSingletonT<CFormulaManager>::instance().get(), SIGNAL(sigTradeDataChange(QString)), this,
            SLOT(slotTradeDataChange(QString)), Qt::DirectConnection);
    ++s_managers;
}

CDepthThousandModelManager::~CDepthThousandModelManager()
{
    disconnect(utils::CSingletonT<CFormulaManager>::instance().get(), nullptr, this, nullptr);
    --s_managers;
    std::map<int, boost::shared_ptr<CModelDepthThousand>> models;
    {
        const Lock lock(m_modelsMutex);
        models.swap(m_models);
    }
    models.clear();
    clearDatas();
}

bool CDepthThousandModelManager::exists()
{
    return s_managers > 0;
}

boost::shared_ptr<CModelDepthThousand> CDepthThousandModelManager::createModel(int id)
{
    constexpr int kNextFree = -1;
    const Lock lock(m_modelsMutex);
    if (id == kNextFree) {
        while (m_models.contains(m_nextModelId))
            ++m_nextModelId;
        id = m_nextModelId;
    }
    if (m_models.contains(id))
        return nullptr;
    return m_models[id] = boost::make_shared<CModelDepthThousand>(false, id);
}

void CDepthThousandModelManager::deleteModel(int id)
{
    boost::shared_ptr<CModelDepthThousand> last; // destroyed with the mutex free: it leaves its rows here
    const Lock lock(m_modelsMutex);
    const auto model = m_models.find(id);
    if (model == m_models.end())
        return;
    last.swap(model->second);
    m_models.erase(model);
}

void CDepthThousandModelManager::setData(const std::string& key, const EntrustRows& asks, const EntrustRows& bids)
{
    setData(key, EntrustRows(asks), EntrustRows(bids));
}

void CDepthThousandModelManager::setData(const std::string& key, EntrustRows&& asks, EntrustRows&& bids)
{
    const Lock lock(m_dataMutex);
    m_asksData[key].swap(asks);
    m_bidsData[key].swap(bids);
    releaseLater(asks, bids);
}

bool CDepthThousandModelManager::getData(const std::string& key, EntrustRows& asks, EntrustRows& bids)
{
    const Lock lock(m_dataMutex);
    return getAsks(key, asks) && getBids(key, bids);
}

bool CDepthThousandModelManager::getAsks(const std::string& key, EntrustRows& asks)
{
    const Lock lock(m_dataMutex);
    if (!checkData(key))
        return false;
    asks = m_asksData[key];
    return true;
}

bool CDepthThousandModelManager::getBids(const std::string& key, EntrustRows& bids)
{
    const Lock lock(m_dataMutex);
    if (!checkData(key))
        return false;
    bids = m_bidsData[key];
    return true;
}

bool CDepthThousandModelManager::checkData(const std::string& key)
{
    const Lock lock(m_dataMutex);
    return m_asksData.contains(key) && m_bidsData.contains(key);
}

void CDepthThousandModelManager::clearDatas()
{
    const Lock lock(m_dataMutex);
    m_asksData.clear();
    m_bidsData.clear();
}

void CDepthThousandModelManager::slotTradeDataChange(const QString&)
{
    clearDatas();
}

} // namespace TC
