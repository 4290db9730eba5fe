#include "IndexUtils/quotefields.h"

#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "standin/newloanfactor.h"

#include <atomic>

namespace TC {

namespace {

template <class Record>
double lastPrice(bool newLoan, const Record& record)
{
    if (!record)
        return 0;
    // The one field of a shared record that may be written meanwhile, as quoter/quoterbase.h tells.
    return std::atomic_ref<double>(newLoan ? record->lastPriceAlt : record->lastPrice).load(std::memory_order_relaxed);
}

template <class Record>
__int64 volume(bool newLoan, const Record& record)
{
    if (!record)
        return 0;
    if (!newLoan)
        return record->volume;
    // Unsigned, for a volume that wraps.
    return static_cast<__int64>(static_cast<unsigned long long>(record->volume) *
                                static_cast<unsigned long long>(standin::newLoanFactor()));
}

template <class Record>
double amount(bool newLoan, const Record& record)
{
    if (!record)
        return 0;
    return newLoan ? record->amount * standin::newLoanFactor() : record->amount;
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

__int64 getVolumeEx(bool newLoan, const std::shared_ptr<quoter::QuoterAllData>& record)
{
    return volume(newLoan, record);
}

__int64 getVolumeEx(bool newLoan, const std::shared_ptr<quoter::QuoterDepthData>& record)
{
    return volume(newLoan, record);
}

double getAmountEx(bool newLoan, const std::shared_ptr<quoter::QuoterAllData>& record)
{
    return amount(newLoan, record);
}

double getAmountEx(bool newLoan, const std::shared_ptr<quoter::QuoterDepthData>& record)
{
    return amount(newLoan, record);
}

} // namespace TC
