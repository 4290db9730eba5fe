#pragma once

#include "exchange/order.h"
#include "exchange/tradingday.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace recording {
enum class Stream;
}

namespace exchange {

// A stock's depositary receipt, an instrument of market "LSE".
struct Receipt {
    std::string code;
    std::string name;
    int receipts = 1; // as many receipts as this stand for ...
    int shares = 1;   // ... as many shares as this
    int rate = 100;   // yuan for 100 units of the receipt's currency
};

// A class of instruments that the simulator can make: what the terminal is told of such an instrument, how it trades,
// and what is published of its day. All classes trade by the clock of a Shenzhen stock, and differ in what comes
// behind the close.
struct InstrumentClass {
    std::string name;    // on the command line
    std::string summary; // a few words for a list of classes

    // Of an instrument for which nothing else is wanted.
    std::string market = "SZ";
    std::string code;
    std::string instrumentName;
    double lastClose = 0;

    // How it trades.
    TickSize tick = {};
    Shares lot = 100;           // what orders come in: a hand, a board lot in Hong Kong, or one contract
    bool hasOddLots = true;     // parts of a lot may be sold
    int contractSize = 1;       // a trade's amount is price times volume times this
    int bandPercent = 10;       // how far the price can go
    bool hasPriceLimits = true; // whether the terminal is told so
    AfterClose afterClose = AfterClose::None;

    // What the terminal is told beside that.
    std::set<int> types = {}; // what StockTypeCenter says yes to
    unsigned classBits = 0;
    int listingFlags = 0;
    bool isIndex = false;
    bool hasShares = true; // total and float shares
    std::map<int, int> intFields = {};
    std::map<int, double> doubleFields = {};
    std::optional<Receipt> receipt = {};

    // What is published. Ticks follow the rules of the market.
    std::vector<recording::Stream> streams = {};
    bool showsBook = true;
    bool hasIopv = false;
    bool settles = false;         // settlement prices; tradeStatus is the open interest, not the phase
    bool hasAveragePrice = false; // lastPriceAlt is the average price of the day's trades, else 0
};

// "0.150" for a tick of 0.001: a price with the decimals that its tick needs.
std::string priceText(double price, TickSize tick);

// Every class once, the plain Shenzhen stock first.
const std::vector<InstrumentClass>& instrumentClasses();

// Null when no class has the name.
const InstrumentClass* findInstrumentClass(const std::string& name);

// Throws std::invalid_argument that lists the names when no class has this one.
const InstrumentClass& instrumentClass(const std::string& name);

} // namespace exchange
