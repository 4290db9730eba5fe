#pragma once

#include "utils/int64.h"

#include <array>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <vector>

// A stream: what happens to one model, step by step, as plain data that can be printed, cut down and played.
namespace tests::oracle {

struct Instrument {
    std::string market;
    std::string code;
    double priceTick;
    double lastClose;
    std::set<int> types;
};

// Everything that a stream may follow; a stream names an instrument by its place here, and an unknown one by -1.
const std::vector<Instrument>& instruments();
int instrumentIndex(const std::string& market, const std::string& code);

struct TenLevels {
    std::array<double, 10> prices{};
    std::array<__int64, 10> volumes{};
};

// One side of a thousand-level record, or of a queue record, which has one price and a volume for each order there.
struct AllLevels {
    std::vector<double> prices;
    std::vector<int> volumes;
    std::vector<int> numbers;
};

struct Record {
    enum class Type { Order, Trade, Snapshot, LevelOne, Queue, Thousand };

    int id = 0; // its name in the texts
    Type type = Type::Order;
    __int64 timetag = 0;
    double price = 0; // of a snapshot the last price
    __int64 volume = 0;
    __int64 seq = 0;
    int orderKind = 1;
    int bsFlag = 1;
    int buySeq = 0;
    int sellSeq = 0;
    int transKind = 0;
    int tradeFlag = 0;
    int tradeStatus = 13;
    double lastPriceAlt = 0;
    TenLevels bids;
    TenLevels asks;
    AllLevels allBids;
    AllLevels allAsks;
};

using RecordPtr = std::shared_ptr<const Record>; // null for a null record of a batch

struct Batch {
    int instrument = 0;
    std::vector<RecordPtr> records;
};

using BatchPtr = std::shared_ptr<const Batch>; // null for a null batch

struct Step {
    enum class Action {
        Orders,    // a batch for entrustCallback
        Trades,    // for transactionCallback
        Snapshots, // for quoterCallback
        Work,      // the strand of the models runs
        Release,   // the strand that frees runs
        Clear,
        Follow,
        NewLoan,
        Read,     // checkUpdate
        ReadSide, // getBids or getAsks, as a model that derives from this one does
        Queue,    // getQueue
        TradeDataChanged
    };

    Action action = Action::Work;
    int kind = 1;
    BatchPtr batch;
    bool works = true; // the strand of the models runs right after the callback
    int instrument = 0;
    bool flag = false; // NewLoan: the value; Read: the panel starts its extremes anew; ReadSide, Queue: bid side
    double price = 0;
};

struct Stream {
    unsigned long long seed = 0;
    bool suppressTickFlags = false;
    int instrument = 0; // followed from the start
    std::vector<Step> steps;
};

std::string nameOf(int instrument);
std::string text(const Record* record);
std::string recordsText(const std::vector<RecordPtr>& records); // a line for each
std::string batchText(const char* what, int kind, const BatchPtr& batch, bool works);
std::string text(const Step& step);
std::ostream& operator<<(std::ostream& out, const Stream& stream);

} // namespace tests::oracle
