#include "exchange/auction.h"

#include "exchange/orderbook.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <vector>

namespace exchange {

namespace {

// Volumes by tick, with one tick of margin on either side of the band.
struct Curves {
    explicit Curves(const OrderBook& book);

    std::vector<Shares> demand; // buys of at least the price
    std::vector<Shares> supply; // sells of at most the price
};

Curves::Curves(const OrderBook& book)
    : demand(static_cast<std::size_t>(book.band().high - book.band().low) + 3)
    , supply(demand.size())
{
    const auto slot = [&book](Ticks price) { return static_cast<std::size_t>(price - book.band().low) + 1; };
    for (const auto& [key, level] : book.levels(Side::Buy))
        demand[slot(level.price)] = level.volume;
    for (const auto& [key, level] : book.levels(Side::Sell))
        supply[slot(level.price)] = level.volume;
    for (std::size_t i = 1; i < supply.size(); ++i) {
        supply[i] += supply[i - 1];
        demand[demand.size() - 1 - i] += demand[demand.size() - i];
    }
}

} // namespace

std::optional<Uncross> findUncross(const OrderBook& book, Ticks reference)
{
    if (!book.isCrossed())
        return std::nullopt;

    const Curves curves(book);
    // Smaller is better in all three.
    using Merit = std::tuple<Shares, Shares, Ticks>;
    std::optional<Merit> bestMerit;
    Uncross best;
    for (std::size_t i = 1; i + 1 < curves.demand.size(); ++i) {
        const Ticks price = book.band().low + static_cast<Ticks>(i) - 1;
        const Shares demand = curves.demand[i];
        const Shares supply = curves.supply[i];
        const Shares volume = std::min(demand, supply);
        // Some price of the largest volume always fills the better ones, so this may be asked first.
        if (curves.demand[i + 1] > volume || curves.supply[i - 1] > volume)
            continue;
        const Merit merit{-volume, std::abs(demand - supply), std::abs(price - reference)};
        if (!bestMerit || merit < *bestMerit) {
            bestMerit = merit;
            best = {price, volume, demand - volume, supply - volume};
        }
    }
    return best;
}

} // namespace exchange
