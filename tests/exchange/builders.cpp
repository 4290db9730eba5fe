#include "tests/exchange/builders.h"

#include <ranges>
#include <sstream>

namespace exchange {

namespace {

void write(std::ostream& out, const Level& level)
{
    out << level.price << ":";
    for (const RestingOrder& resting : level.orders)
        out << " " << resting.seq << "x" << resting.left;
    out << "\n";
}

} // namespace

std::string bookText(const OrderBook& book)
{
    std::ostringstream out;
    for (const auto& [key, level] : book.levels(Side::Sell) | std::views::reverse)
        write(out, level);
    out << "---\n";
    for (const auto& [key, level] : book.levels(Side::Buy))
        write(out, level);
    return out.str();
}

std::string fillsText(const std::vector<Fill>& fills)
{
    std::ostringstream out;
    const char* gap = "";
    for (const Fill& fill : fills) {
        out << gap << fill.buySeq << "x" << fill.sellSeq << " " << fill.volume << "@" << fill.price;
        gap = " ";
    }
    return out.str();
}

std::string outcomeText(const Outcome& outcome)
{
    std::ostringstream out;
    out << fillsText(outcome.fills);
    if (outcome.cancelled != 0)
        out << (outcome.fills.empty() ? "" : " ") << "cancelled " << outcome.cancelled;
    if (outcome.resting != 0)
        out << (outcome.fills.empty() ? "" : " ") << "resting " << outcome.resting;
    return out.str();
}

} // namespace exchange
