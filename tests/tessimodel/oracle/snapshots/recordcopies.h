#pragma once

#include "tests/tessimodel/oracle/snapshots/snapshotmarket.h"
#include "tests/tessimodel/oracle/statelines.h"

#include <unordered_map>
#include <vector>

namespace tests::oracle::snapshots {

// The records of a stream as one side has them: who changes one changes its own.
class RecordCopies {
public:
    RecordPtr of(const RecordPtr& record);
    Records of(const Records& records);

    // The how-manieth of all; -1 for null.
    int idOf(const quoter::QuoterBase* copy) const;

    // Those that are no longer as they came.
    void writeChanged(Lines& out) const;

private:
    struct Known {
        RecordPtr original;
        RecordPtr copy;
    };

    std::vector<Known> m_known;
    std::unordered_map<const quoter::QuoterBase*, int> m_ids; // by original, and by copy
};

} // namespace tests::oracle::snapshots
