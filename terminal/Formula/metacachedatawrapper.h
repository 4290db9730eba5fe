#pragma once

#include "quoter/quoterbase.h"

#include <memory>
#include <string>
#include <vector>

namespace TC {

// A batch as the data layer hands it to the tick-level models, held by boost::shared_ptr and never changed.
struct MetaCacheDataWrapper {
    std::vector<std::shared_ptr<quoter::QuoterBase>> records; // oldest first; a pointer may be null
    std::string market;                                       // the instrument that the batch was requested for
    std::string stockCode;
};

} // namespace TC
