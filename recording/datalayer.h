#pragma once

#include "Formula/formulaparam.h"
#include "Formula/metacachedatawrapper.h"
#include "quoter/quoteaux.h"
#include "quoter/quoterbase.h"
#include "recording/recordedday.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <vector>

namespace recording {

using RecordBatch = std::vector<std::shared_ptr<quoter::QuoterBase>>;
using AuxBatch = std::vector<std::shared_ptr<quoter::QuoteAux>>;

// `batchKind` is 0 for the first batch of a subscription, 3 for further history, 1 for a live push of one record.
using BatchCallback = std::function<void(int batchKind, const RecordBatch& records)>;
using AuxCallback = std::function<void(int batchKind, const AuxBatch& records)>;

// Shanghai reports a deleted order in the order stream; the trade stream of a recorded day carries it once more
// as a cancel, for the book. The order list reads both streams and must get it once. The trade list takes a delete for
// the order's latest record, and then knows what was left of it instead of its size.
enum class ShanghaiCancels {
    InBothStreams,
    InOrdersOnly, // trade streams of market "SH" come without their cancels
    InTradesOnly  // order streams of market "SH" come without their deletes
};

// The point of the day up to which records are history, when the delivery starts.
class HistoryPoint {
public:
    static HistoryPoint wholeDay() { return HistoryPoint(Kind::Arrival, std::numeric_limits<__int64>::max()); }
    static HistoryPoint nothing() { return HistoryPoint(Kind::Arrival, 0); }

    // Records before this arrival position are history.
    static HistoryPoint arrival(std::size_t position) { return HistoryPoint(Kind::Arrival, clamped(position)); }

    // Records that arrive before the first one with a time stamp of `timetag` (milliseconds) or later are history.
    static HistoryPoint time(__int64 timetag) { return HistoryPoint(Kind::Time, timetag); }

    // As a position in the day, at most its number of events.
    std::size_t positionIn(const RecordedDay& day) const;

private:
    enum class Kind { Arrival, Time };
    HistoryPoint(Kind kind, __int64 value)
        : m_kind(kind)
        , m_value(value)
    {}
    static __int64 clamped(std::size_t position);

    Kind m_kind;
    __int64 m_value;
};

struct DeliveryOptions {
    static constexpr double kAsFastAsPossible = std::numeric_limits<double>::infinity();

    HistoryPoint history = HistoryPoint::wholeDay();
    std::size_t pieceSize = 5000;     // most records in one batch of history; 0 counts as 1; see subscribeWhole
    double speed = kAsFastAsPossible; // live records, in multiples of real time; 0 pauses
    std::function<void()> beforePush; // asked before each live push: returns when the receivers can take it
};

// Delivers a recorded day as the terminal's data layer delivers a running one.
//
// Subscriptions may be made before and after start(), also from within a callback. Each gets the history of its
// stream up to where the delivery stands: first a batch of kind 0, an empty one when there is nothing, then batches of
// kind 3. Then live records follow one by one, in arrival order across all subscriptions, and in the order of the
// subscriptions where several have the same stream. The same day and calls give the same deliveries. Volumes are in
// the terminal's units, see TerminalView.
//
// All callbacks run on one thread of the data layer's own. They must not throw. Delivered records are shared by all
// subscribers; those of the day itself are never changed.
//
// Of a request, market, stockCode, beginTime and endTime count: records outside these times, both included, are left
// out, and only an endTime of TIME_LASTED goes on with live records. A request for another instrument gets one empty
// batch of kind 0 and nothing more.
class DataLayer {
public:
    explicit DataLayer(std::shared_ptr<const RecordedDay> day, DeliveryOptions options = {});

    // Stops, and waits for a callback that is running. Not to be destroyed by a callback.
    ~DataLayer();
    DataLayer(const DataLayer&) = delete;
    DataLayer& operator=(const DataLayer&) = delete;

    // Returns a number for unsubscribe. `stream` is any but Aux.
    int subscribe(const TC::CFormulaParam& param, Stream stream, BatchCallback callback,
                  ShanghaiCancels cancels = ShanghaiCancels::InBothStreams);

    // The same with all of the history in the one batch of kind 0, however long: for a model that would take kind 3 for
    // a live push, as the parameter table does.
    int subscribeWhole(const TC::CFormulaParam& param, Stream stream, BatchCallback callback);
    int subscribeAux(const TC::CFormulaParam& param, AuxCallback callback);

    // No callback of the subscription begins after this; from another thread than the data layer's, one that is
    // running has also ended.
    void unsubscribe(int subscription);

    // Starts the thread, once. The delivery then waits at the end of the day for further subscriptions, until it is
    // stopped.
    void start();

    // Ends the delivery at once, also while it waits for the time of the next record; no callback runs any more
    // when it returns, except the one that calls it. Cannot be started again.
    void stop();

    // Changes the pace from now on; 0 pauses.
    void setSpeed(double speed);

    // Waits until every event has been delivered and every subscription has its history, or until stopped. True in
    // the first case. Not from within a callback.
    bool waitUntilDelivered();

    // Events of the day that have passed, history included, and all events. From any thread, at any time.
    std::size_t delivered() const;
    std::size_t total() const;

private:
    class Delivery;
    std::unique_ptr<Delivery> m_delivery;
};

// A batch in the form in which the tick-level models take it, for the instrument of the request.
boost::shared_ptr<TC::MetaCacheDataWrapper> wrapBatch(const TC::CFormulaParam& param, const RecordBatch& records);

} // namespace recording
