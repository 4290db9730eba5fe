#pragma once

#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"

#include <typeinfo>

namespace TC::detail {

// Hands a snapshot to `visit` as what it is, of level 1 or of level 2; any other record and none are passed over. For
// those who go through whole histories: both exact types are tried before a cast through the hierarchy, where recordAs
// of the one would try that first with every record of the other.
template <class Visit>
void visitSnapshot(const quoter::QuoterBase* record, const Visit& visit)
{
    if (!record)
        return;
    const std::type_info& type = typeid(*record);
    if (type == typeid(quoter::QuoterDepthData)) {
        visit(static_cast<const quoter::QuoterDepthData&>(*record));
    } else if (type == typeid(quoter::QuoterAllData)) {
        visit(static_cast<const quoter::QuoterAllData&>(*record));
    } else if (const auto* const level1 = dynamic_cast<const quoter::QuoterAllData*>(record)) {
        visit(*level1);
    } else if (const auto* const level2 = dynamic_cast<const quoter::QuoterDepthData*>(record)) {
        visit(*level2);
    }
}

} // namespace TC::detail
