#pragma once

#include "apps/tessi/bestlevels.h"
#include "apps/tessi/orderledger.h"

#include <vector>

namespace TC {
class ThousandBook;
}

namespace tessi {

// The orders that rest at the exchange, may stand at the price, and are not among the book's there: those of market
// kinds, and limit orders that the book lost. Oldest first of either kind.
std::vector<RestingOrder> unknownTo(TC::ThousandBook& book, bool isBid, double price, int key,
                                    const OrderLedger& ledger);

// The orders that make up all differences between a snapshot and the book: they rest at the exchange, and the book has
// them in no row at that price. The exchange gives an order of a market kind the price that it found, which no record
// tells; a limit order may be missing when the book lost it. Each price is made up to the share, by as few orders as
// will do and at most eight; it becomes the price of the orders. Empty when that is not possible, and when there is no
// difference.
std::vector<RestingOrder> explain(const std::vector<Difference>& differences, const OrderLedger& ledger,
                                  TC::ThousandBook& book);

} // namespace tessi
