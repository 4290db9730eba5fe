#pragma once

#include "indexui/tessimodel/cmodeldepththousand.h"
#include "indexui/tessimodel/cmodelquoterdepththousand.h"
#include "tests/tessimodel/oracle/realrecords.h"
#include "tests/tessimodel/oracle/statelines.h"

#include <cfloat>

namespace tests::oracle {

struct RealPanel {
    int flags = 0;
    TC::EntrustList bids;
    TC::EntrustList asks;
    double lastPrice = 0;
    int lastVolume = 0;
    double minPrice = DBL_MAX;
    double maxPrice = -DBL_MAX;
    double maxAmount = 0;
};

// The same lines as naivestate.h, of what is tested.
void writeState(Lines& out, const TC::SingleQueue& level, bool isBid, int key);
void writeState(Lines& out, const TC::ThousandBook& book, const RealRecords& records);
template <class Model>
void writeSharedState(Lines& out, const Model& model, const RealRecords& records);
void writeState(Lines& out, const TC::CModelDepthThousand& model, const RealRecords& records);
void writeState(Lines& out, const TC::CDepthThousandModelManager& manager);
void writeState(Lines& out, const RealPanel& panel);

} // namespace tests::oracle
