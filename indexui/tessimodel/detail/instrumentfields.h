#pragma once

#include "ztservice/instrumentdetail.h"

// Ids of ztservice::CInstrumentDetail::getIntField and getDoubleField, and bits of its listingFlags.
namespace TC::detail {

// getIntField
inline constexpr int kFieldGdrShares = 2008;  // of a depositary receipt; the receipts' half of its conversion ratio
inline constexpr int kFieldGdrStocks = 2009;  // the stocks' half
inline constexpr int kFieldCapital = 2022;    // registered capital in millions
inline constexpr int kNoCapital = 2147483647; // its value when there is none

// getDoubleField
inline constexpr int kFieldSameRights = 3000;
inline constexpr int kFieldSettlement = 3002;   // of a future: previous settlement
inline constexpr int kFieldGdrClose = 3002;     // of a depositary receipt
inline constexpr int kFieldInterest = 3003;     // accrued interest
inline constexpr int kFieldExchangeRate = 3011; // per 100 units
inline constexpr int kFieldTotalShares = 3015;
inline constexpr int kFieldFloatShares = 3016;

// listingFlags
inline constexpr int kBitProfitable = 1;
inline constexpr int kBitVotingDiffers = 4;
inline constexpr int kBitRegistered = 19;
inline constexpr int kBitVie = 20;

inline bool hasListingFlag(const ztservice::CInstrumentDetail& stock, int bit)
{
    return ((static_cast<unsigned>(stock.listingFlags) >> bit) & 1U) != 0;
}

} // namespace TC::detail
