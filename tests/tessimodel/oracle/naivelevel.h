#pragma once

#include "tests/tessimodel/oracle/streams.h"

#include <map>
#include <memory>

// One price level, once more and as plainly as it can be written: full walks, nothing remembered, nothing reused.
namespace tests::oracle {

struct NaiveQuote {
    __int64 timetag = 0;
    __int64 seq = 0;
    __int64 volume = 0;
    int dealVolume = 0;
    int status = 1;

    __int64 live() const;
};

// Rows have identity: book, model, manager and panel may hold the same one.
struct NaiveRow {
    double price = 0;
    int volume = 0;
    int delta = 0;
    int number = -1;
};

using NaiveRowPtr = std::shared_ptr<NaiveRow>;
using NaiveRows = std::map<int, NaiveRowPtr>; // by price key

struct NaiveLevel {
    std::map<__int64, std::shared_ptr<NaiveQuote>> quotes;
    bool active = false;
    bool isBid = true;
    __int64 timetag = 0;
    double price = 0;
    __int64 volume = 0;
    int number = 0;
    int lastChange = 0;

    bool order(const Record& order, NaiveRow* row, int unit);
    bool deal(const Record& trade, NaiveRow* row, int unit);
    int correctNumber(int target) const;
    static int correctNumber(int from, int to);
    void correctQueue(int target);
    std::shared_ptr<NaiveLevel> deepCopy() const;

private:
    bool cancel(__int64 seq);
    bool fill(const Record& trade, __int64 seq);
    void takeAway(std::map<__int64, std::shared_ptr<NaiveQuote>>::iterator quote);
    void writeRow(NaiveRow& row, int unit) const;
};

using NaiveLevelPtr = std::shared_ptr<NaiveLevel>;

} // namespace tests::oracle
