#pragma once

#include "tests/tessimodel/oracle/statelines.h"

// The kinds of lines that both sides write.
namespace tests::oracle::sections {

inline const Section kLevel{
    "level", "price", {"isBid", "key", "active", "side", "timetag", "volume", "number", "lastChange"}};
inline const Section kQuote{"  order", nullptr, {"at", "seq", "timetag", "volume", "dealVolume", "status"}};
inline const Section kHeldQuote{
    "  order that the panel holds", nullptr, {"at", "seq", "timetag", "volume", "dealVolume", "status"}};
inline const Section kBookRow{"row of the book", "price", {"isBid", "key", "object", "volume", "delta", "number"}};
inline const Section kModelRow{"row of the model", "price", {"isBid", "key", "object", "volume", "delta", "number"}};
inline const Section kSnapshotRow{
    "row of the snapshot", "price", {"isBid", "key", "object", "volume", "delta", "number"}};
inline const Section kSavedRow{
    "row saved", "price", {"isBid", "key", "object", "volume", "delta", "number", "instrument"}};
inline const Section kPanelRow{"row of the panel", "price", {"isBid", "place", "object", "volume", "delta", "number"}};
inline const Section kSaved{"saved rows", nullptr, {"instrument", "asks", "bids"}};
inline const Section kPending{"trade that waits", nullptr, {"isBid", "for seq", "trade #"}};
inline const Section kOrderKey{"m_orderPriceKeys", nullptr, {"seq", "key"}};
inline const Section kSeenTrade{"m_seenTrades", nullptr, {"key", "-"}};
inline const Section kDealVolume{"m_dealVolumes", nullptr, {"seq", "volume"}};
inline const Section kBook{"book",
                           "m_priceTick",
                           {"m_lastTimetag", "m_lastBuySeq", "m_lastSellSeq", "m_bidsDirty", "m_asksDirty",
                            "instrument", "m_volumeUnit", "forgotten trades"}};
inline const Section kFlags{
    "model",
    nullptr,
    {"m_loadedHistory", "m_dataReady", "m_updateFlags", "m_continuous", "m_isNewLoan", "m_suppressTickFlags"}};
inline const Section kStock{"instrument", "m_priceTick", {"instrument", "m_volumeUnit", "m_hasAfterHours"}};
inline const Section kTicks{"ticks", nullptr, {"m_orders", "m_transactions", "last order #", "last trade #"}};
inline const Section kSnapshotFigures{
    "snapshot figures",
    "m_quoterLastPrice",
    {"m_quoterTimetag", "m_quoterVolumeTime", "m_quoterLastVolume", "m_quoter #", "m_afterHoursVolume"}};
inline const Section kLastClose{"model", "m_lastClose", {}};
inline const Section kTickPrice{"model", "m_tickLastPrice", {"m_tickLastVolume"}};
inline const Section kAskFloor{"model", "m_askFloor", {}};
inline const Section kBidCeiling{"model", "m_bidCeiling", {}};
inline const Section kReady{"isDataAllReadly", nullptr, {"answer"}};
inline const Section kAnswer{"answer", nullptr, {"answer", "same key"}};
inline const Section kPanelFigures{"panel", "last price", {"flags", "last volume"}};
inline const Section kPanelExtreme{"panel", "extreme", {"which"}};
inline const Section kHeldQueue{"queue that the panel holds", nullptr, {"held", "is the book's"}};

} // namespace tests::oracle::sections
