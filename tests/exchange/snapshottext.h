#pragma once

#include "quoter/levelorderdata.h"
#include "quoter/levelthousanddata.h"
#include "quoter/quoteaux.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactioncount.h"

#include <cmath>
#include <string>

// Snapshot records as text, without their time. A price is written in ticks, of which so many as `perUnit` make one
// unit of the currency, and as "?" when it is not exactly the double next to a whole number of them.
inline std::string ticksText(double price, int perUnit)
{
    const __int64 ticks = std::llround(price * perUnit);
    return static_cast<double>(ticks) / perUnit == price ? std::to_string(ticks) : "?";
}

template <class... Parts>
std::string line(const Parts&... parts)
{
    std::string text;
    const auto append = [&text](const auto& part) {
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(part)>>)
            text.append(std::to_string(part));
        else
            text.append(part);
    };
    (append(parts), ...);
    return text;
}

template <class Snapshot>
std::string quoteText(const Snapshot& record, int perUnit)
{
    std::string text = line("open ", ticksText(record.open, perUnit), " high ", ticksText(record.high, perUnit),
                            " low ", ticksText(record.low, perUnit), " last ", ticksText(record.lastPrice, perUnit),
                            " close ", ticksText(record.lastClose, perUnit), " volume ", record.volume, " amount ",
                            ticksText(record.amount, perUnit), " status ", record.tradeStatus, "\n");
    for (std::size_t i = 0; i < std::size(record.askPrice); ++i)
        text.append(line(ticksText(record.bidPrice[i], perUnit), "x", record.bidVolume[i], " ",
                         ticksText(record.askPrice[i], perUnit), "x", record.askVolume[i], "\n"));
    return text;
}

inline std::string textOf(const quoter::LevelOrderData& record, int perUnit)
{
    std::string text = line("bid ", ticksText(record.bidPrice, perUnit), ":");
    for (const int volume : record.bidQueue)
        text.append(line(" ", volume));
    text.append(line(" ask ", ticksText(record.askPrice, perUnit), ":"));
    for (const int volume : record.askQueue)
        text.append(line(" ", volume));
    return text;
}

inline std::string textOf(const quoter::LevelThousandData& record, int perUnit)
{
    if (record.bidPrices.size() != record.bidVolumes.size() || record.bidPrices.size() != record.bidNumbers.size() ||
        record.askPrices.size() != record.askVolumes.size() || record.askPrices.size() != record.askNumbers.size())
        return "lists of unequal length";
    std::string text = "bid";
    for (std::size_t i = 0; i < record.bidPrices.size(); ++i)
        text.append(
            line(" ", ticksText(record.bidPrices[i], perUnit), "=", record.bidVolumes[i], "/", record.bidNumbers[i]));
    text.append(" ask");
    for (std::size_t i = 0; i < record.askPrices.size(); ++i)
        text.append(
            line(" ", ticksText(record.askPrices[i], perUnit), "=", record.askVolumes[i], "/", record.askNumbers[i]));
    return text;
}

inline std::string textOf(const quoter::TransactionCount& record)
{
    return line("buy ", record.buyOrderCount, ": ", record.buyHuge, " ", record.buyBig, " ", record.buyMiddle, " ",
                record.buySmall, " sell ", record.sellOrderCount, ": ", record.sellHuge, " ", record.sellBig, " ",
                record.sellMiddle, " ", record.sellSmall);
}

inline std::string textOf(const quoter::QuoteAux& record, int perUnit)
{
    return line("bid ", record.totalBidVolume, "@", ticksText(record.bidAveragePrice, perUnit), " ask ",
                record.totalAskVolume, "@", ticksText(record.askAveragePrice, perUnit));
}
