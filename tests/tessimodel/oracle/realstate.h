#pragma once

#include "indexui/tessimodel/cmodeldepththousand.h"
#include "tests/tessimodel/oracle/statelines.h"
#include "tests/tessimodel/oracle/streams.h"

#include <cfloat>
#include <unordered_map>

namespace quoter {
struct QuoterBase;
}

namespace tests::oracle {

// The records of a stream as the terminal's own, each made once, and back from a record to its name.
class RealRecords {
public:
    std::shared_ptr<quoter::QuoterBase> of(const RecordPtr& record);
    boost::shared_ptr<TC::MetaCacheDataWrapper> of(const BatchPtr& batch);

    // -1 for null.
    int idOf(const quoter::QuoterBase* record) const;

private:
    std::unordered_map<RecordPtr, std::shared_ptr<quoter::QuoterBase>> m_real; // keeps both sides' records
    std::unordered_map<const quoter::QuoterBase*, int> m_ids;
};

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
void writeState(Lines& out, const TC::CModelDepthThousand& model, const RealRecords& records);
void writeState(Lines& out, const TC::CDepthThousandModelManager& manager);
void writeState(Lines& out, const RealPanel& panel);

} // namespace tests::oracle
