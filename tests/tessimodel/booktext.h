#pragma once

#include "indexui/tessimodel/cmodeldepthqueue_book.h"
#include "indexui/tessimodel/cmodeldepthqueue_level.h"
#include "indexui/tessimodel/cmodeldepththousand_book.h"
#include "indexui/tessimodel/cmodeldepththousand_queue.h"

#include <string>

// Books as text, so that a failing test reads as a story. A number of orders that is not known is "x?".
namespace tests {

// "10.00 2h x1 (-1)": price, hands, orders, change in hands.
std::string rowText(const TC::EntrustData& row);

// "bid 9.99 3h x2 (0)\nbid 10.00 2h x1 (-1)\nask 10.02 4h x1 (+4)\n": both sides by ascending price.
std::string bookText(const TC::EntrustList& bids, const TC::EntrustList& asks);
std::string bookText(const TC::EntrustRows& bids, const TC::EntrustRows& asks);

// The rows that a book keeps, uncorrected.
std::string bookText(const TC::ThousandBook& book);

// "3:500-200 8:300": seq, shares when it came, shares dealt; oldest first. "none" for no level at all.
std::string queueText(const std::shared_ptr<TC::SingleQueue>& level);
std::string queueText(const std::shared_ptr<TC::OrderQueue>& level);
std::string queueText(TC::SingleQueue& level);
std::string queueText(TC::OrderQueue& level);

// "[3:500-200 8:300] 600 x2": the orders with the level's running totals. A level that ran out ends in " dead".
std::string totalsText(TC::SingleQueue& level);
std::string totalsText(TC::OrderQueue& level);

// "[3:500-200 8:300] 600 x2 (-200)": the orders with the level's running totals and its latest change in shares. A
// level that ran out ends in " dead".
std::string levelText(TC::SingleQueue& level);

// "bid 1000 3:500-200 8:300\nask -2 9:100\n": every level by price key with its orders, also those without a row.
std::string levelsText(const TC::ThousandBook& book);
std::string levelsText(const TC::QueueBook& book);

} // namespace tests
