#pragma once

#include "utils/int64.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quoter {
struct QuoterDepthData;
}

namespace TC {
class ThousandBook;
}

namespace tessi {

// What rests at one price, in the unit of its book: shares unless said otherwise.
struct BookLevel {
    int key = 0; // the price in whole ticks, by which levels compare
    double price = 0;
    __int64 volume = 0;

    friend bool operator==(const BookLevel& a, const BookLevel& b) { return a.key == b.key && a.volume == b.volume; }
};

// The best levels of both sides, best first.
struct BestLevels {
    std::vector<BookLevel> bids;
    std::vector<BookLevel> asks;

    friend bool operator==(const BestLevels&, const BestLevels&) = default;
};

inline constexpr std::size_t kSnapshotLevels = 10;

// The best `depth` levels a side of a tick-built book, in shares. Only those that have a price: orders of the kinds
// without one rest where no panel sees them.
BestLevels bestLevels(TC::ThousandBook& book, std::size_t depth);

// The levels that a snapshot shows, in its own unit.
BestLevels shownLevels(const quoter::QuoterDepthData& snapshot, double priceTick);

// The same for equal levels, and hardly ever for others.
std::uint64_t fingerprint(const BestLevels& levels);

// A price at which a snapshot and a book are not the same.
struct Difference {
    bool isBid = false;
    int key = 0;
    double price = 0;
    __int64 missing = 0; // shares that the snapshot has more than the book
};

// Whether a snapshot's side reaches down to a price: a full one ends at its tenth level, any other shows all there is.
bool reaches(const std::vector<BookLevel>& side, bool isBid, int key);

// All of them as far down as the snapshot reaches. The book must be given deeper
// than the snapshot, since what it has too much pushes the rest down.
std::vector<Difference> differences(const BestLevels& snapshot, const BestLevels& book);

} // namespace tessi
