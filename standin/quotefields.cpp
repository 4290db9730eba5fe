#include "IndexUtils/quotefields.h"

#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"

namespace TC {

namespace {

template <class Record>
double lastPrice(bool newLoan, const Record& record)
{
    if (!record)
        return 0;
    return newLoan ? record->lastPriceAlt : record->lastPrice;
}

} // namespace

double getLastPriceEx(bool newLoan, const std::shared_ptr<quoter::QuoterAllData>& record)
{
    return lastPrice(newLoan, record);
}

double getLastPriceEx(bool newLoan, const std::shared_ptr<quoter::QuoterDepthData>& record)
{
    return lastPrice(newLoan, record);
}

__int64 getVolumeEx(bool, const std::shared_ptr<quoter::QuoterAllData>& record)
{
    return record ? record->volume : 0;
}

__int64 getVolumeEx(bool, const std::shared_ptr<quoter::QuoterDepthData>& record)
{
    return record ? record->volume : 0;
}

double getAmountEx(bool, const std::shared_ptr<quoter::QuoterAllData>& record)
{
    return record ? record->amount : 0;
}

double getAmountEx(bool, const std::shared_ptr<quoter::QuoterDepthData>& record)
{
    return record ? record->amount : 0;
}

} // namespace TC
