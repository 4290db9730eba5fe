#pragma once

#include "Formula/metacachedatawrapper.h"
#include "standin/terminal.h"
#include "tests/tessimodel/oracle/streams.h"

#include <boost/shared_ptr.hpp>

#include <unordered_map>
#include <vector>

#include <QString>

namespace quoter {
struct QuoterBase;
}

namespace ztservice {
struct CInstrumentDetail;
}

namespace tests::oracle {

// The instruments of the streams, in a terminal whose strands run by hand.
void prepare(standin::Terminal& terminal);

// The terminal's key of an instrument of the streams, and one that it does not know for -1.
QString stockKeyOf(int instrument);

// An instrument as a worker holds it: not the model's own object. Null for -1.
std::shared_ptr<ztservice::CInstrumentDetail> detailOf(int instrument);

// Place in instruments(), -1 for null.
int indexOf(const std::shared_ptr<ztservice::CInstrumentDetail>& stock);

// The records of a stream as the terminal's own, each made once, and back from a record to its name.
class RealRecords {
public:
    std::shared_ptr<quoter::QuoterBase> of(const RecordPtr& record);
    std::vector<std::shared_ptr<quoter::QuoterBase>> of(const std::vector<RecordPtr>& records);
    boost::shared_ptr<TC::MetaCacheDataWrapper> of(const BatchPtr& batch);

    // -1 for null.
    int idOf(const quoter::QuoterBase* record) const;

private:
    std::unordered_map<RecordPtr, std::shared_ptr<quoter::QuoterBase>> m_real; // keeps both sides' records
    std::unordered_map<const quoter::QuoterBase*, int> m_ids;
};

} // namespace tests::oracle
