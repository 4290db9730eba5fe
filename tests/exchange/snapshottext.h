#pragma once

#include "quoter/levelorderdata.h"
#include "quoter/levelthousanddata.h"
#include "quoter/quoteaux.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactioncount.h"

#include <cmath>
#include <string>

// Snapshot records as text, without their time. A price is written in ticks of 0.01, and as "?" when it is not exactly
// the double next to a whole number of them.
inline std::string ticksText(double price)
{
    const __int64 ticks = std::llround(price * 100);
    return static_cast<double>(ticks) / 100 == price ? std::to_string(ticks) : "?";
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
std::string quoteText(const Snapshot& record)
{
    std::string text =
        line("open ", ticksText(record.open), " high ", ticksText(record.high), " low ", ticksText(record.low),
             " last ", ticksText(record.lastPrice), " close ", ticksText(record.lastClose), " volume ", record.volume,
             " amount ", ticksText(record.amount), " status ", record.tradeStatus, "\n");
    for (std::size_t i = 0; i < std::size(record.askPrice); ++i)
        text.append(line(ticksText(record.bidPrice[i]), "x", record.bidVolume[i], " ", ticksText(record.askPrice[i]),
                         "x", record.askVolume[i], "\n"));
    return text;
}

inline std::string textOf(const quoter::LevelOrderData& record)
{
    std::string text = line("bid ", ticksText(record.bidPrice), ":");
    for (const int volume : record.bidQueue)
        text.append(line(" ", volume));
    text.append(line(" ask ", ticksText(record.askPrice), ":"));
    for (const int volume : record.askQueue)
        text.append(line(" ", volume));
    return text;
}

inline std::string textOf(const quoter::LevelThousandData& record)
{
    if (record.bidPrices.size() != record.bidVolumes.size() || record.bidPrices.size() != record.bidNumbers.size() ||
        record.askPrices.size() != record.askVolumes.size() || record.askPrices.size() != record.askNumbers.size())
        return "lists of unequal length";
    std::string text = "bid";
    for (std::size_t i = 0; i < record.bidPrices.size(); ++i)
        text.append(line(" ", ticksText(record.bidPrices[i]), "=", record.bidVolumes[i], "/", record.bidNumbers[i]));
    text.append(" ask");
    for (std::size_t i = 0; i < record.askPrices.size(); ++i)
        text.append(line(" ", ticksText(record.askPrices[i]), "=", record.askVolumes[i], "/", record.askNumbers[i]));
    return text;
}

inline std::string textOf(const quoter::TransactionCount& record)
{
    return line("buy ", record.buyOrderCount, ": ", record.buyHuge, " ", record.buyBig, " ", record.buyMiddle, " ",
                record.buySmall, " sell ", record.sellOrderCount, ": ", record.sellHuge, " ", record.sellBig, " ",
                record.sellMiddle, " ", record.sellSmall);
}

inline std::string textOf(const quoter::QuoteAux& record)
{
    return line("bid ", record.totalBidVolume, "@", ticksText(record.bidAveragePrice), " ask ", record.totalAskVolume,
                "@", ticksText(record.askAveragePrice));
}
