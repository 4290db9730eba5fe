#pragma once

#include "utils/int64.h"

#include <QMap>
#include <QPair>

#include <memory>

namespace quoter {
struct LevelThousandData;
}

namespace bench {

// The yardstick of the changes between thousand-level snapshots: the rule as one would first write it down. Each record
// is compared with one that is at least a second older; both are turned into trees for that, and the latest change of
// each price stays.
//
// No locks, no flags, no instrument; prices are numbers.
class ReferenceDeltas {
public:
    using Record = std::shared_ptr<quoter::LevelThousandData>;
    using Deltas = QMap<double, QPair<int, __int64>>; // hands before minus hands after, and when that showed

    void take(const Record& record);
    const Deltas& deltas() const { return m_deltas; }

private:
    Record m_latest;
    Record m_base;
    Deltas m_deltas;
};

} // namespace bench
