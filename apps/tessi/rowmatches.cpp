#include "apps/tessi/rowmatches.h"

#include "apps/tessi/text.h"

#include <fmt/format.h>

namespace tessi {

std::string RowMatch::secondText() const
{
    return second < 0 ? std::string() : clockText(second);
}

std::string RowMatch::rowsText() const
{
    return second < 0 ? std::string() : fmt::format("{}-{}", rows.first, rows.second);
}

const RowMatch& RowMatches::of(int index)
{
    if (index < m_latest.rows.first || index > m_latest.rows.second)
        m_latest = {m_model.getCurrSeqPair(index), m_model.getCurrQuoterTimgtag(index)};
    return m_latest;
}

} // namespace tessi
