#pragma once

#include "Formula/stockmanager.h"
#include "indexui/tessimodel/cmodeldepththousand.h"
#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/release.h"
#include "indexui/tessimodel/detail/snapshotrows.h"
#include "indexui/tessimodel/detail/stockparams.h"
#include "indexui/tessimodel/detail/tradingphase.h"
#include "utils/stockkey.h"

#include <utility>

// How a model of a whole book is set up and cleared, over the members that such models share by name.
namespace TC::detail {

// Price tick, shares per hand, after-hours phase and last close from the model's instrument, for its book too.
template <class Model>
void initBookStockParams(Model& model)
{
    const ModelLock lock(model.m_mutex);
    takeStockParams(model, sharesPerHand);
    model.m_hasAfterHours = model.m_stock && hasAfterHoursPhase(*model.m_stock);
    shareWithBook(model);
}

// Follows the instrument of a key; what was saved of it raises an update.
template <class Model>
void followBookStock(Model& model, const QString& key)
{
    {
        // One lock over both, so that no snapshot is keyed with the tick of the former instrument.
        const ModelLock lock(model.m_mutex);
        model.m_stock = utils::CSingletonT<CStockManager>::instance()->getInstrumentDetail(key);
        initBookStockParams(model);
    }
    if (utils::CSingletonT<CDepthThousandModelManager>::instance()->checkData(key.toStdString()))
        model.m_updateFlags = kUpdateRebuilt;
}

template <class Model>
QString stockKeyOf(const Model& model)
{
    const InstrumentPtr stock = stockOf(model);
    return stock ? QString::fromStdString(utils::zlStockKey(stock->market, stock->code)) : QString();
}

// Hands the rows to the manager: a panel that comes back to the instrument has some to show at once. The caller holds
// m_mutex.
template <class Model>
void leaveRows(Model& model)
{
    const InstrumentPtr& stock = model.m_stock;
    // Models that the manager itself takes down have nobody to leave rows to; asking would make a new manager.
    if (!stock || (model.m_askRows.empty() && model.m_bidRows.empty()) || !CDepthThousandModelManager::exists())
        return;
    utils::CSingletonT<CDepthThousandModelManager>::instance()->setData(
        utils::zlStockKey(stock->market, stock->code), std::move(model.m_askRows), std::move(model.m_bidRows));
}

// Back to the state with no data. Instrument and settings stay. The caller holds m_mutex.
template <class Model>
void clearBookModel(Model& model)
{
    leaveRows(model);
    model.m_priceTick = kDefaultPriceTick;
    model.m_lastClose = kNoValue;
    model.m_tickLastPrice = kNoValue;
    model.m_quoterLastPrice = kNoValue;
    model.m_tickLastVolume = 0;
    model.m_quoterLastVolume = 0;
    model.m_afterHoursVolume = 0;
    model.m_quoterVolumeTime = 0;
    model.m_quoter.reset();
    releaseLater(model.m_orders, model.m_transactions, model.m_snapshotAsks, model.m_snapshotBids, model.m_dealVolumes,
                 model.m_askRows, model.m_bidRows);
    model.m_askFloor = kNoAskFloor;
    model.m_bidCeiling = 0;
    model.m_quoterTimetag = 0;
    model.m_reserved = 0;
    model.m_continuous = false;
    model.m_loadedHistory = 0;
    model.m_dataReady = 0;
    model.m_updateFlags = kUpdateRebuilt;
    model.m_book.clearAll();
    initBookStockParams(model);
}

} // namespace TC::detail
