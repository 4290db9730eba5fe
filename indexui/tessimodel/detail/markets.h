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

// Hong Kong's own; the ways to it from the mainland are markets of their own.
inline bool isHongKongMarket(const std::string& market)
{
    return market == "HK";
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

// The futures exchanges, under both of their names where they have two.
inline bool isFutureMarket(const std::string& market)
{
    return market == "DF" || market == "DCE" || market == "ZF" || market == "CZCE" || market == "SF" ||
           market == "SHFE" || market == "GF" || market == "GFEX" || market == "IF" || market == "CFFEX" ||
           market == "INE";
}

// The options of the mainland's stock exchanges.
inline bool isOptionMarket(const std::string& market)
{
    return market == "SHO" || market == "SZO";
}

// A market whose instruments have prices and volumes, and no book.
inline bool isBooklessMarket(const std::string& market)
{
    return market == "YSWP";
}

} // namespace TC::detail
