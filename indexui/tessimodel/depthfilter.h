#pragma once

#include "indexui/tessimodel/export.h"

namespace TC {

// What the panel of a tick list wants to see. A row must be of the time of day, on a side that is shown, and of a size.
//
// The size is tested in hands and as an amount; `connective` says whether one of the two is enough. A mode that is
// none of those named lets every size pass, whatever the other mode says. With the defaults every row of the day
// passes.
struct TESSIMODEL_EXPORT SDepthFilterParam {
    int reserved0 = 0; // the panel's own
    int reserved1 = 0;
    int handsMode = 0; // 0 at least, 1 more than, 2 equal to
    int hands = 0;
    int connective = 0;              // 0 either test is enough, else both are needed
    int amountMode = 0;              // 0 at least, 1 more than
    int amount = 0;                  // shares times price
    int startTime = 9 * 3600 * 1000; // milliseconds since midnight, both ends included
    int endTime = (16 * 60 + 10) * 60 * 1000;
    bool showBuyOrder = true; // the four sides are those of the order list; the trade list shows both
    bool showSellOrder = true;
    bool showBuyCancel = true;
    bool showSellCancel = true;
};

} // namespace TC
