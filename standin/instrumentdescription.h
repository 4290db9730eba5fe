#pragma once

#include <map>
#include <set>
#include <string>

namespace standin {

// All that the stand-in's services answer about one instrument. A plain value: tests and importers fill in what
// they need, the defaults make an ordinary stock without links.
struct InstrumentDescription {
    std::string market;
    std::string code;
    std::string name; // UTF-8

    double lastClose = 0;
    double upStopPrice = 0;
    double downStopPrice = 0;
    double priceTick = 0.01;
    double zeroPriceThreshold = 0;

    unsigned classBits = 0;
    int listingFlags = 0;
    std::set<int> types; // what StockTypeCenter says yes to

    bool isIndex = false;
    bool hasHGT = false; // open to Shanghai-Hong Kong Connect
    bool hasSGT = false; // open to Shenzhen-Hong Kong Connect
    std::string gdrCode; // depositary receipt on market "LSE", "" for none

    std::map<int, int> intFields;       // ztservice::CInstrumentDetail::getIntField
    std::map<int, double> doubleFields; // ztservice::CInstrumentDetail::getDoubleField
    std::map<int, double> lastCloses;   // by date in seconds since the epoch: closes of other days

    friend bool operator==(const InstrumentDescription&, const InstrumentDescription&) = default;
};

} // namespace standin
