#pragma once

#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "tests/tessimodel/oracle/snapshots/recordcopies.h"

#include <cstdint>

namespace tests::oracle::status {

namespace sections {

inline const Section kAsk{"ask row", "price", {"at", "used", "volume", "delta"}};
inline const Section kBid{"bid row", "price", {"at", "used", "volume", "delta"}};
inline const Section kPrice{"model", "m_lastPrice", {}};
inline const Section kClose{"model", "m_lastClose", {}};
inline const Section kCloseAsked{"model", "getLastClosePrice", {}};
inline const Section kTick{"model", "m_priceTick", {}};
inline const Section kVolumes{"model", nullptr, {"m_tickVolume", "m_afterHoursVolume"}};
inline const Section kFlags{"model", nullptr, {"m_stock", "m_hasAfterHours", "m_hasAfterHoursSz", "m_isNewLoan"}};
inline const Section kRecords{
    "model", nullptr, {"m_lastAllData #", "m_lastDepthData #", "m_closingData #", "m_closingPrevData #"}};
inline const Section kAnswer{"answer", nullptr, {"of the step"}};

} // namespace sections

// Both models have the same members.
template <class Model>
void writeModel(Lines& out, const Model& m, const snapshots::RecordCopies& records)
{
    const auto writeSide = [&out](const Section& section, const auto& rows) {
        int at = 0;
        for (const auto& row : rows)
            out.add(section, row.price, {at++, row.used, row.volume, row.delta});
    };
    writeSide(sections::kAsk, m.m_askRows);
    writeSide(sections::kBid, m.m_bidRows);
    out.add(sections::kPrice, m.m_lastPrice, {});
    out.add(sections::kClose, m.m_lastClose, {});
    out.add(sections::kCloseAsked, m.getLastClosePrice(), {});
    out.add(sections::kTick, m.m_priceTick, {});
    out.add(sections::kVolumes, {m.m_tickVolume, m.m_afterHoursVolume});
    // Instruments are the same objects on both sides.
    const auto stock = static_cast<__int64>(reinterpret_cast<std::intptr_t>(m.m_stock.get()));
    out.add(sections::kFlags, {stock, m.m_hasAfterHours, m.m_hasAfterHoursSz, m.m_isNewLoan});
    out.add(sections::kRecords, {records.idOf(m.m_lastAllData.get()), records.idOf(m.m_lastDepthData.get()),
                                 records.idOf(m.m_closingData.get()), records.idOf(m.m_closingPrevData.get())});
    records.writeChanged(out);
}

} // namespace tests::oracle::status
