// The delivered records: their type information lives in the library that delivers them.

#include "quoter/brovanquoteralldata.h"
#include "quoter/levelorderdata.h"
#include "quoter/levelthousanddata.h"
#include "quoter/orderdata.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/timeseq.h"
#include "quoter/transactioncount.h"
#include "quoter/transactiondata.h"

#include <limits>

namespace quoter {

QuoterBase::~QuoterBase() = default;
QuoterAllData::~QuoterAllData() = default;
QuoterDepthData::~QuoterDepthData() = default;
OrderData::~OrderData() = default;
TransactionData::~TransactionData() = default;
LevelOrderData::~LevelOrderData() = default;
LevelThousandData::~LevelThousandData() = default;
TransactionCount::~TransactionCount() = default;

const TimeSeq TimeSeq::TIME_LASTED{std::numeric_limits<__int64>::max(), std::numeric_limits<__int64>::max()};

} // namespace quoter

namespace zolv {

BrovanQuoterAllData::~BrovanQuoterAllData() = default;

} // namespace zolv
