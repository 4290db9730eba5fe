#pragma once

#include "indexui/tessimodel/cmodeldepthtransaction.h"

namespace TC {

// How a row of the trade list follows the row before it of the same order.
enum E_DEAL_KIND {
    DEAL_SINGLE = 0,          // the order has this one row
    DEAL_NEAR_SAME_PRICE = 1, // its first row of several, or directly after its previous row at the same price
    DEAL_FAR_SAME_PRICE = 2,  // at the same price with other rows between
    DEAL_FAR_OTHER_PRICE = 3, // at another price with other rows between
    DEAL_NEAR_OTHER_PRICE = 4 // at another price, directly after
};

// The trade list as a chart of time and price shows it: a range of time in view, the rows in it with their highest and
// lowest price and the height that they take, and steps from one snapshot's rows to the next.
//
// The view (setViewTimeRange, the recalc functions, the accessors) and clear(), which takes it back, belong to the
// panel's thread. Everything else is as in the trade list, whose model this is.
class TESSIMODEL_EXPORT CModelDepthHolographic : public CModelDepthTransaction {
public:
    CModelDepthHolographic() = default;

    // As the trade list's, and the view is over no rows. The height stays, so that the next recalculation tells of a
    // change.
    void clear();

    // First and last row in view, -1 for none.
    int getStartIndex() const;
    int getEndIndex() const;

    void setFullHeightHandle(const int& handle);

    // Looks from one second to another, both included. An end that has a snapshot takes that snapshot's rows. True when
    // rows, prices or height changed.
    bool setViewTimeRange(const int& start, const int& end);

    // The same for the range in view after rows came in.
    bool recalcMaxMinSeqAndPrice();

    // Prices and height of the rows in view. The height is a line a row and one a hand; a view over no rows has 1.
    bool recalcMaxMinPrice();

    // The rows of a second: of its snapshot; or, for a `volume` in hands above 0, the first of the next snapshot's rows
    // that make it up, which are then split off if that snapshot is not the latest. False, and (-1, -1), when there are
    // none.
    bool findSeq(int second, int volume, SeqPair& rows);

    // How the row follows the row before it of its buy or sell order. Two prices less than half a tick apart are the
    // same. DEAL_SINGLE for an empty pointer.
    E_DEAL_KIND getDataKind(const Row& row, bool isBuy) const;

    // The pair that covers a row, the next and the one before: at either end the row's own. (-1, -1) when no pair
    // covers it.
    SeqPair getCurrSeqPair(const int& index) const;
    SeqPair getNextSeqPair(const int& index) const;
    SeqPair getPreSeqPair(const int& index) const;

    // The snapshot second of the pair that covers a row, -1 when none does.
    int getCurrQuoterTimgtag(const int& index) const;

    // The snapshot second after or before one. From a second without a snapshot, and past either end, the latest that
    // is not above it; -1 when there is none.
    int getNextQuoterTimgtag(const int& second) const;
    int getPreQuoterTimgtag(const int& second) const;

    bool m_viewFlag = false;    // the panel's own
    int m_fullHeightHandle = 4; // the panel's own
    double m_maxPrice = 0;
    double m_minPrice = 0;
    double m_priceStep = 0.01; // the panel's own
    int m_viewStartTime = -1;  // seconds
    int m_viewEndTime = -1;
    int m_startIndex = -1;
    int m_endIndex = -1;
    int m_totalHeight = 0;

protected:
    using CModelDepthTransaction::tryMatch;

    // Splits the rows of the first snapshot after the second: those in front that come nearest to `volume` hands are
    // the answer and, if that snapshot is older than the latest matched, become the pair of `second`. Behind the last
    // snapshot the answer is the rest of the rows. False when there are none.
    bool tryMatch(int second, int volume, SeqPair& rows);

private:
    int lastIndex() const;
};

} // namespace TC
