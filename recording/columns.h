#pragma once

#include "quoter/levelorderdata.h"
#include "quoter/levelthousanddata.h"
#include "quoter/orderdata.h"
#include "quoter/quoteaux.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactioncount.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"

#include <stdexcept>
#include <tuple>
#include <type_traits>

// The columns of each stream: the fields of its record by name, in declared order, base first.
namespace recording {

template <class Owner, class Type>
struct Column {
    const char* name;
    Type Owner::*member;
    bool isVolume = false; // never below 0
};

template <class Owner, class Type>
constexpr Column<Owner, Type> column(const char* name, Type Owner::*member)
{
    return {name, member};
}

template <class Owner, class Type>
constexpr Column<Owner, Type> volume(const char* name, Type Owner::*member)
{
    return {name, member, true};
}

template <class Record>
struct Columns;

template <>
struct Columns<quoter::OrderData> {
    using R = quoter::OrderData;
    static constexpr auto kAll =
        std::tuple{column("timetag", &R::timetag), column("price", &R::price),         volume("volume", &R::volume),
                   column("seq", &R::seq),         column("orderKind", &R::orderKind), column("bsFlag", &R::bsFlag)};
};

template <>
struct Columns<quoter::TransactionData> {
    using R = quoter::TransactionData;
    static constexpr auto kAll = std::tuple{column("timetag", &R::timetag),    column("price", &R::price),
                                            volume("volume", &R::volume),      column("buySeq", &R::buySeq),
                                            column("sellSeq", &R::sellSeq),    column("tradeFlag", &R::tradeFlag),
                                            column("transKind", &R::transKind)};
};

template <>
struct Columns<quoter::QuoterAllData> {
    using R = quoter::QuoterAllData;
    static constexpr auto kAll = std::tuple{column("timetag", &R::timetag),
                                            column("lastPrice", &R::lastPrice),
                                            column("open", &R::open),
                                            column("high", &R::high),
                                            column("low", &R::low),
                                            column("lastClose", &R::lastClose),
                                            column("amount", &R::amount),
                                            volume("volume", &R::volume),
                                            volume("rawVolume", &R::rawVolume),
                                            column("tradeStatus", &R::tradeStatus),
                                            column("lastSettlementPrice", &R::lastSettlementPrice),
                                            column("settlementPrice", &R::settlementPrice),
                                            column("iopv", &R::iopv),
                                            column("askPrice", &R::askPrice),
                                            column("bidPrice", &R::bidPrice),
                                            volume("askVolume", &R::askVolume),
                                            volume("bidVolume", &R::bidVolume),
                                            column("lastPriceAlt", &R::lastPriceAlt)};
};

template <>
struct Columns<quoter::QuoterDepthData> {
    using R = quoter::QuoterDepthData;
    static constexpr auto kAll = std::tuple{column("timetag", &R::timetag),
                                            column("lastPrice", &R::lastPrice),
                                            column("open", &R::open),
                                            column("high", &R::high),
                                            column("low", &R::low),
                                            volume("volume", &R::volume),
                                            column("tradeStatus", &R::tradeStatus),
                                            column("lastClose", &R::lastClose),
                                            column("lastSettlementPrice", &R::lastSettlementPrice),
                                            column("settlementPrice", &R::settlementPrice),
                                            column("iopv", &R::iopv),
                                            column("askPrice", &R::askPrice),
                                            volume("askVolume", &R::askVolume),
                                            column("bidPrice", &R::bidPrice),
                                            volume("bidVolume", &R::bidVolume),
                                            column("lastPriceAlt", &R::lastPriceAlt),
                                            column("amount", &R::amount)};
};

template <>
struct Columns<quoter::LevelOrderData> {
    using R = quoter::LevelOrderData;
    static constexpr auto kAll = std::tuple{column("timetag", &R::timetag),   column("lastPrice", &R::lastPrice),
                                            column("bidPrice", &R::bidPrice), volume("bidQueue", &R::bidQueue),
                                            column("askPrice", &R::askPrice), volume("askQueue", &R::askQueue)};
};

template <>
struct Columns<quoter::LevelThousandData> {
    using R = quoter::LevelThousandData;
    static constexpr auto kAll = std::tuple{column("timetag", &R::timetag),       column("lastPrice", &R::lastPrice),
                                            column("bidPrices", &R::bidPrices),   volume("bidVolumes", &R::bidVolumes),
                                            column("bidNumbers", &R::bidNumbers), column("askPrices", &R::askPrices),
                                            volume("askVolumes", &R::askVolumes), column("askNumbers", &R::askNumbers)};
};

template <>
struct Columns<quoter::TransactionCount> {
    using R = quoter::TransactionCount;
    static constexpr auto kAll = std::tuple{column("timetag", &R::timetag),
                                            column("lastPrice", &R::lastPrice),
                                            column("buyOrderCount", &R::buyOrderCount),
                                            volume("buyHuge", &R::buyHuge),
                                            volume("buyBig", &R::buyBig),
                                            volume("buyMiddle", &R::buyMiddle),
                                            volume("buySmall", &R::buySmall),
                                            column("sellOrderCount", &R::sellOrderCount),
                                            volume("sellHuge", &R::sellHuge),
                                            volume("sellBig", &R::sellBig),
                                            volume("sellMiddle", &R::sellMiddle),
                                            volume("sellSmall", &R::sellSmall)};
};

template <>
struct Columns<quoter::QuoteAux> {
    using R = quoter::QuoteAux;
    static constexpr auto kAll =
        std::tuple{column("timetag", &R::timetag), column("bidAveragePrice", &R::bidAveragePrice),
                   volume("totalBidVolume", &R::totalBidVolume), column("askAveragePrice", &R::askAveragePrice),
                   volume("totalAskVolume", &R::totalAskVolume)};
};

// Calls `visit` with the std::type_identity of the stream's record.
template <class Visit>
decltype(auto) withRecordType(Stream stream, Visit&& visit)
{
    switch (stream) {
    case Stream::Orders:
        return visit(std::type_identity<quoter::OrderData>{});
    case Stream::Trades:
        return visit(std::type_identity<quoter::TransactionData>{});
    case Stream::Quotes:
        return visit(std::type_identity<quoter::QuoterAllData>{});
    case Stream::Snapshots:
        return visit(std::type_identity<quoter::QuoterDepthData>{});
    case Stream::Queues:
        return visit(std::type_identity<quoter::LevelOrderData>{});
    case Stream::Thousand:
        return visit(std::type_identity<quoter::LevelThousandData>{});
    case Stream::Counts:
        return visit(std::type_identity<quoter::TransactionCount>{});
    case Stream::Aux:
        return visit(std::type_identity<quoter::QuoteAux>{});
    }
    throw std::logic_error("a stream that does not exist");
}

} // namespace recording
