#pragma once

#include "Formula/metacachedatawrapper.h"
#include "standin/terminal.h"

#include <boost/shared_ptr.hpp>

#include <QString>

#include <memory>
#include <type_traits>

namespace ztservice {
struct CInstrumentDetail;
}

namespace bench {

// A terminal with one stock, its strands run by hand, and batches for that stock. One at a time, since there is one
// terminal.
class StockFeed {
public:
    using Batch = boost::shared_ptr<TC::MetaCacheDataWrapper>;

    StockFeed(int lowestKey, int highestKey); // the price limits in ticks, half-way between them the last close

    const std::shared_ptr<ztservice::CInstrumentDetail>& stock() const { return m_stock; }

    template <class Model>
    void follow(Model& model) const
    {
        model.setStock(key());
    }

    Batch emptyBatch() const;

    template <class Record>
    Batch batchOf(const std::shared_ptr<Record>& record) const
    {
        Batch batch = emptyBatch();
        batch->records.push_back(record);
        return batch;
    }

    // Hands a batch to a callback, of models that know its instrument and of those that take the bare records.
    template <class Model, class Owner, class Taken>
    static void push(Model& model, void (Owner::*callback)(int, int, const Taken&), int kind, const Batch& batch)
    {
        if constexpr (std::is_same_v<Taken, Batch>)
            (model.*callback)(0, kind, batch);
        else
            (model.*callback)(0, kind, batch->records);
    }

    void drain();        // what was posted to the models' strand
    void freeReleased(); // what was left to "data_release"

private:
    static QString key();

    standin::Terminal m_terminal;
    std::shared_ptr<ztservice::CInstrumentDetail> m_stock;
};

} // namespace bench
