#pragma once

#include "apps/tessi/placement.h"
#include "apps/tessi/queuedorders.h"
#include "apps/tessi/watchedmodel.h"
#include "utils/int64.h"

#include <cstddef>
#include <map>
#include <optional>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace tessi {

// The exchange sends no more orders of a queue.
inline constexpr std::size_t kQueuedOrders = 50;

// A side of a recorded order queue: the sizes of the first orders at its best price, oldest first, in shares.
struct QueueRow {
    std::size_t arrival = 0; // of the record in the day
    __int64 timetag = 0;     // ms
    bool isBid = false;
    double price = 0;
    std::vector<__int64> sizes;
};

// The first orders at a price as CModelDepthThousand::getQueue gives it, oldest first; none without a level.
std::vector<QueuedOrder> firstOrders(TC::CModelDepthThousand& model, bool isBid, double price);

std::vector<__int64> sizesOf(const std::vector<QueuedOrder>& orders);

// A price of a side; orders of market kinds rest at one that no record tells.
struct QueuePlace {
    bool isBid = false;
    std::optional<int> key;

    friend bool operator<(const QueuePlace& a, const QueuePlace& b)
    {
        return std::tie(a.isBid, a.key) < std::tie(b.isBid, b.key);
    }
};

// Where the ticks of a day change queues. One thread.
class ChangedPlaces {
public:
    explicit ChangedPlaces(double priceTick)
        : m_priceTick(priceTick)
    {}

    QueuePlace at(bool isBid, double price) const;

    // The places that the next order or trade may change.
    std::vector<QueuePlace> by(const recording::Event& tick);

private:
    double m_priceTick;
    std::unordered_map<__int64, QueuePlace> m_places; // by order seq
};

// The states of the model in which it has a recorded queue. State 0 is the empty book, state n the one after the nth
// tick. Only the prices that a tick changes are read after it. One thread.
class QueueStates {
public:
    // `rows` must outlive the object.
    QueueStates(WatchedModel& model, double priceTick, const std::vector<QueueRow>& rows);

    // Pushes the next order or trade to the model.
    void apply(const recording::Event& tick);

    std::size_t last() const { return m_state; }

    // For each row its states up to now, ascending.
    std::vector<States> statesOfRows() const;

private:
    // A place at which there are rows.
    struct Watched {
        double price = 0;
        std::map<std::vector<__int64>, States> states; // by the sizes looked for
        States* current = nullptr;                     // of the sizes that the model has now; its last range is open
    };

    void read(const QueuePlace& place);

    WatchedModel& m_model;
    const std::vector<QueueRow>& m_rows;
    ChangedPlaces m_changes;
    std::map<QueuePlace, Watched> m_watched;
    std::size_t m_state = 0;
};

} // namespace tessi
