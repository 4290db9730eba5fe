#pragma once

#include "indexui/tessimodel/detail/batch.h"
#include "IndexUtils/quotefields.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "utils/int64.h"

#include <memory>
#include <optional>
#include <type_traits>

namespace TC::detail {

// What the parameter table reads of a snapshot. The two levels share the names of the fields, not their layout: taken
// out once, the rows are the same code for both.
struct SnapshotFigures {
    bool isLevel2 = false;
    __int64 timetag = 0;
    int tradeStatus = 0; // of a future its open interest
    double last = 0;     // last price, volume and amount as the instrument is quoted
    __int64 volume = 0;
    double amount = 0;
    double open = 0;
    double high = 0;
    double low = 0;
    double lastClose = 0;
    double lastSettlement = 0;
    double settlement = 0;
    double iopv = 0;
    double bid = 0; // best
    double ask = 0;
};

template <class Snapshot>
SnapshotFigures figuresOf(const std::shared_ptr<Snapshot>& record, bool newLoan)
{
    SnapshotFigures figures;
    figures.isLevel2 = std::is_same_v<Snapshot, quoter::QuoterDepthData>;
    figures.timetag = record->timetag;
    figures.tradeStatus = record->tradeStatus;
    figures.last = getLastPriceEx(newLoan, record);
    figures.volume = getVolumeEx(newLoan, record);
    figures.amount = getAmountEx(newLoan, record);
    figures.open = record->open;
    figures.high = record->high;
    figures.low = record->low;
    figures.lastClose = record->lastClose;
    figures.lastSettlement = record->lastSettlementPrice;
    figures.settlement = record->settlementPrice;
    figures.iopv = record->iopv;
    figures.bid = record->bidPrice[0];
    figures.ask = record->askPrice[0];
    return figures;
}

// What it reads of the snapshot before.
struct PreviousFigures {
    int tradeStatus = 0;
    double last = 0;
    __int64 volume = 0;
};

inline PreviousFigures asPrevious(const SnapshotFigures& figures)
{
    return {figures.tradeStatus, figures.last, figures.volume};
}

template <class Snapshot>
std::optional<PreviousFigures> previousFiguresOf(const std::shared_ptr<Snapshot>& record, bool newLoan)
{
    if (!record)
        return std::nullopt;
    return PreviousFigures{record->tradeStatus, getLastPriceEx(newLoan, record), getVolumeEx(newLoan, record)};
}

// Null for a record that is no snapshot.
inline std::optional<SnapshotFigures> figuresOf(const std::shared_ptr<quoter::QuoterBase>& record, bool newLoan)
{
    if (const auto level1 = recordAs<quoter::QuoterAllData>(record))
        return figuresOf(level1, newLoan);
    if (const auto level2 = recordAs<quoter::QuoterDepthData>(record))
        return figuresOf(level2, newLoan);
    return std::nullopt;
}

// Volume and amount of the day, or of its after-hours phase.
struct DayTotals {
    __int64 volume = 0;
    double amount = 0;
};

} // namespace TC::detail
