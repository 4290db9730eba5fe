#pragma once

#include "Formula/stockmanager.h"
#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/request.h"

#include <QString>

#include <algorithm>
#include <cstddef>

// How a model of a tick list follows an instrument, over the members that such models share by name.
namespace TC::detail {

template <class Model>
void followListStock(Model& model, const QString& key)
{
    // One lock over both, so that no row is made with the parameters of the former instrument.
    const ModelLock lock(model.m_mutex);
    model.m_stock = utils::CSingletonT<CStockManager>::instance()->getInstrumentDetail(key);
    model.initStockParams();
}

template <class Model>
void fillListRequest(const Model& model, CFormulaParam& param)
{
    const ModelLock lock(model.m_mutex);
    fillRequest(param, model.m_stock, kQuotesByVolume);
}

// Gives `take` each record of a type in order, with the pointer that owns it. False, and it ends there, when the model
// has moved on to another instrument than `stock`. It is called under the model's lock, which is given back after every
// few records, so that readers get in.
template <class Record, class Model, class Take>
bool takeEach(const Model& model, const InstrumentPtr& stock, const RecordList& records, const Take& take)
{
    constexpr std::size_t kTogether = 32;
    for (std::size_t next = 0; next < records.size();) {
        const ModelLock lock(model.m_mutex);
        if (!isSameInstrument(model.m_stock, stock))
            return false;
        for (const std::size_t end = std::min(next + kTogether, records.size()); next < end; ++next) {
            if (const Record* const record = recordAs<Record>(records[next].get()))
                take(*record, records[next]);
        }
    }
    return true;
}

} // namespace TC::detail
