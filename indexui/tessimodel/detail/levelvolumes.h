#pragma once

#include <vector>

namespace quoter {
struct LevelThousandData;
}

namespace TC::detail {

// A price of a thousand-level snapshot with its volume in hands.
struct LevelVolume {
    double price;
    int volume;
};
using LevelVolumes = std::vector<LevelVolume>; // of both sides, by ascending price, each price once

// Of a price that comes twice the first volume counts, bids before asks. A NaN is no price. A side ends with the
// shorter of its prices and volumes.
LevelVolumes volumesByPrice(const quoter::LevelThousandData& record);

// Calls `take` with each price that both have and its two volumes.
template <class Take>
void forEachCommonPrice(const LevelVolumes& a, const LevelVolumes& b, const Take& take)
{
    auto inA = a.begin();
    auto inB = b.begin();
    while (inA != a.end() && inB != b.end()) {
        if (inA->price < inB->price) {
            ++inA;
        } else if (inB->price < inA->price) {
            ++inB;
        } else {
            take(inB->price, inA->volume, inB->volume);
            ++inA;
            ++inB;
        }
    }
}

} // namespace TC::detail
