#pragma once

#include "utils/int64.h"

#include <algorithm>
#include <deque>

namespace TC::detail {

// When which level's change mark is to fade: a note for every change of a level, the oldest out first.
class FadeQueue {
public:
    struct Mark {
        __int64 since; // ms, of the level when it was noted
        int key;
        bool isBid;
    };

    // Ticks come in the order of their time, so the place is nearly always the last one.
    void note(const Mark& mark)
    {
        if (m_marks.empty() || m_marks.back().since <= mark.since)
            m_marks.push_back(mark);
        else
            m_marks.insert(std::upper_bound(m_marks.begin(), m_marks.end(), mark, isEarlier), mark);
    }

    // Whether there is a mark that has stood for at least `fadeMs` at the time `now`.
    bool hasDue(__int64 now, __int64 fadeMs) const { return !m_marks.empty() && now - m_marks.front().since >= fadeMs; }

    Mark takeFirst()
    {
        const Mark first = m_marks.front();
        m_marks.pop_front();
        return first;
    }

    void clear() { m_marks.clear(); }

private:
    static bool isEarlier(const Mark& a, const Mark& b) { return a.since < b.since; }

    std::deque<Mark> m_marks; // by ascending time
};

} // namespace TC::detail
