#pragma once

#include "indexui/tessimodel/detail/log.h"
#include "indexui/tessimodel/detail/modelstate.h"

namespace TC::detail {

// The line of a callback of `model`. Takes the model's lock for a batch that is logged only: a push must not wait for a
// panel that reads.
template <class Model>
void logBatch(const Model& model, const char* function, const RecordList& records,
              const boost::source_location& where = BOOST_CURRENT_LOCATION)
{
    if (isDataReturnLogged(records))
        logDataReturn(&model, function, stockOf(model), records, where);
}

template <class Model>
void logBatch(const Model& model, const char* function, const BatchPtr& batch,
              const boost::source_location& where = BOOST_CURRENT_LOCATION)
{
    if (batch)
        logBatch(model, function, batch->records, where);
}

} // namespace TC::detail
