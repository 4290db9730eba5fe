#pragma once

#include <string>

// Names of markets, compared whole and case sensitive.
namespace TC::detail {

// The mainland's stock exchanges, under both of their names where they have two.
inline bool isMainlandMarket(const std::string& market)
{
    return market == "SH" || market == "SZ" || market == "BJ" || market == "SSE" || market == "SZSE";
}

// Shenzhen alone, by the name under which its ticks come.
inline bool isShenzhenMarket(const std::string& market)
{
    return market == "SZ";
}

// Hong Kong stocks traded through the Shanghai and the Shenzhen exchange.
inline bool isShanghaiConnectMarket(const std::string& market)
{
    return market == "HGT" || market == "SSEHKEX";
}

inline bool isShenzhenConnectMarket(const std::string& market)
{
    return market == "SGT" || market == "SZSEHKEX";
}

} // namespace TC::detail
