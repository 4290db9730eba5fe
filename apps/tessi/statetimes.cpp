#include "apps/tessi/statetimes.h"

#include <algorithm>
#include <cstddef>

namespace tessi {

void StateTimes::add(__int64 timetag)
{
    m_latest.push_back(m_latest.empty() ? timetag : std::max(m_latest.back(), timetag));
}

StateRange StateTimes::around(__int64 timetag) const
{
    // A state ends with the stamp of the next tick.
    const auto first = std::lower_bound(m_latest.begin(), m_latest.end(), timetag - kStampWindow);
    const auto behind = std::upper_bound(first, m_latest.end(), timetag + kStampWindow);
    return {static_cast<std::size_t>(first - m_latest.begin()),
            static_cast<std::size_t>(behind - m_latest.begin()) + 1};
}

} // namespace tessi
