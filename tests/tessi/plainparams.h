#pragma once

#include "recording/recordedday.h"
#include "utils/int64.h"

#include <map>
#include <string>
#include <vector>

namespace tests {

// What a test knows of an instrument's class.
struct ParamFacts {
    recording::Stream stream = recording::Stream::Snapshots;
    int sharesPerHand = 100;
    bool readsAlternative = false; // the last price is the record's lastPriceAlt
    bool isMarked = false;         // trades after hours, with a volume of its own
    bool isBond = false;           // prices are per 100 of the face value
    bool isHongKong = false;
    bool hasAverage = true;
};

// The rows of the parameter table, worked out a second time from a day's records alone: own loops, texts by the
// terminal's formatters, nothing of the library. Of a row that is not written there is no text.
class PlainParams {
public:
    using Texts = std::map<int, std::string>; // by the number of the parameter

    PlainParams(const recording::RecordedDay& day, const ParamFacts& facts);

    // After the whole day, which came live or as one history.
    Texts afterLive() const { return texts(shownLast(), shownBefore(shownLast())); }
    Texts afterHistory() const { return texts(m_shots.size() - 1, tradedBefore(m_shots.size() - 1)); }

    // At the last snapshot up to a time (ms) in which something was traded. Rows that a look at the past does not write
    // stay as they are in `shown`.
    Texts at(__int64 time, Texts shown) const;

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    struct Shot {
        __int64 time, shares, hands;
        double last, open, high, low, amount, lastSettlement, settlement, iopv;
        int status;
        bool isTraded = false;
        bool isShown = false; // when it comes live
        __int64 current = 0;
        int count = 0;
    };
    template <class Record>
    void read(const Record& record);
    void findTrades();

    bool isAfterHours(const Shot& shot) const { return m_facts.isMarked && shot.status >= 22; }
    std::size_t shownLast() const;
    std::size_t shownBefore(std::size_t shot) const;
    std::size_t tradedBefore(std::size_t shot) const;
    const Shot* lastContinuous() const;

    Texts texts(std::size_t shot, std::size_t before) const;
    void addInstrument(Texts& texts) const;
    void addReceipt(Texts& texts, double last) const;
    void addPrices(Texts& texts, const Shot& shot) const;
    void addTotals(Texts& texts, const Shot& shot) const;
    void addBook(Texts& texts, __int64 time) const;
    void addDeals(Texts& texts, __int64 dayShares) const;

    const recording::RecordedDay& m_day;
    const ParamFacts m_facts;
    std::vector<Shot> m_shots;
};

} // namespace tests
