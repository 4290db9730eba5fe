#include "exchange/instrumentclass.h"

#include "recording/recordedday.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>

namespace exchange {

namespace {

using recording::Stream;

constexpr int kStock = 100003;
constexpr int kFund = 100013;
constexpr int kTenToAHand = 100017; // with which a bond of Shenzhen is counted in hands of 10

constexpr unsigned kBondClass = 4U << 20;

constexpr int kProfitable = 1 << 1;
constexpr int kVotingRightsDiffer = 1 << 4;
constexpr int kRegistered = 1 << 19;
constexpr int kVie = 1 << 20;

constexpr int kRegisteredCapital = 2022; // in millions
constexpr int kSameRights = 3000;
constexpr int kAccruedInterest = 3003;

constexpr TickSize kTenthOfCent{1000};
constexpr TickSize kHundredthOfCent{10'000};
constexpr TickSize kFifth{5};
constexpr TickSize kTwentieth{20};
constexpr TickSize kWhole{1};

// Shenzhen's eight streams; what Shanghai's files are imported to; and what there is without ticks.
const std::vector<Stream> kShenzhen{Stream::Orders, Stream::Trades,   Stream::Quotes, Stream::Snapshots,
                                    Stream::Queues, Stream::Thousand, Stream::Counts, Stream::Aux};
const std::vector<Stream> kShanghai{Stream::Orders, Stream::Trades, Stream::Quotes, Stream::Snapshots, Stream::Aux};
const std::vector<Stream> kBothLevels{Stream::Quotes, Stream::Snapshots};
const std::vector<Stream> kLevelOne{Stream::Quotes};

} // namespace

std::string priceText(double price, TickSize tick)
{
    int decimals = 0;
    for (int units = 1; units % tick.perUnit != 0; units *= 10)
        ++decimals;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, price);
    return text.data();
}

const std::vector<InstrumentClass>& instrumentClasses()
{
    // clang-format off
    static const std::vector<InstrumentClass> all = {
        // Stocks.
        {.name = "stock", .summary = "Shenzhen stock",
         .market = "SZ", .code = "009001", .instrumentName = "模拟股份", .lastClose = 42.50,
         .types = {kStock}, .streams = kShenzhen},
        {.name = "sh-stock", .summary = "Shanghai stock",
         .market = "SH", .code = "609001", .instrumentName = "模拟沪股", .lastClose = 12.30,
         .types = {kStock}, .streams = kShanghai},
        {.name = "after-hours-a", .summary = "Shanghai stock with fixed-price trading after the close, type 277",
         .market = "SH", .code = "689001", .instrumentName = "模拟科创", .lastClose = 56.80,
         .bandPercent = 20, .afterClose = AfterClose::AfterHours,
         .types = {kStock, 277}, .listingFlags = kProfitable | kRegistered,
         .intFields = {{kRegisteredCapital, 420}}, .doubleFields = {{kSameRights, 0.85}}, .streams = kShanghai},
        {.name = "after-hours-b", .summary = "Shenzhen stock with fixed-price trading after the close, type 10006",
         .market = "SZ", .code = "309001", .instrumentName = "模拟创业", .lastClose = 28.40,
         .bandPercent = 20, .afterClose = AfterClose::AfterHours,
         .types = {kStock, 10006}, .listingFlags = kVotingRightsDiffer | kRegistered | kVie,
         .intFields = {{kRegisteredCapital, 360}}, .streams = kShenzhen},
        {.name = "registered-a", .summary = "Shenzhen stock under registration rules, type 10004",
         .market = "SZ", .code = "309002", .instrumentName = "模拟注册", .lastClose = 19.60,
         .bandPercent = 20,
         .types = {kStock, 10004}, .listingFlags = kProfitable | kVotingRightsDiffer | kRegistered,
         .intFields = {{kRegisteredCapital, 250}}, .streams = kShenzhen},
        {.name = "registered-b", .summary = "Shanghai stock under registration rules, type 101",
         .market = "SH", .code = "609002", .instrumentName = "模拟沪注", .lastClose = 8.76,
         .types = {kStock, 101}, .listingFlags = kProfitable | kRegistered, .streams = kShanghai},
        {.name = "registered-c", .summary = "Shenzhen stock under registration rules, type 196",
         .market = "SZ", .code = "009002", .instrumentName = "模拟深注", .lastClose = 15.20,
         .types = {kStock, 196}, .listingFlags = kRegistered, .streams = kShenzhen},
        {.name = "gdr", .summary = "Shanghai stock with a depositary receipt on market LSE",
         .market = "SH", .code = "609003", .instrumentName = "模拟存托", .lastClose = 14.40,
         .types = {kStock},
         .receipt = Receipt{.code = "SIMG", .name = "模拟存托凭证", .receipts = 1, .shares = 10, .rate = 720},
         .streams = kShanghai},
        {.name = "hk-stock", .summary = "Hong Kong stock",
         .market = "HK", .code = "99001", .instrumentName = "模拟港股", .lastClose = 62.50,
         .tick = kTwentieth, .lot = 500, .hasOddLots = false, .bandPercent = 30, .hasPriceLimits = false,
         .streams = kBothLevels},

        // Funds and bonds.
        {.name = "fund", .summary = "Shenzhen fund with an indicative net value",
         .market = "SZ", .code = "199001", .instrumentName = "模拟基金", .lastClose = 1.250,
         .tick = kTenthOfCent, .types = {kFund}, .streams = kShenzhen, .hasIopv = true},
        {.name = "bond", .summary = "Shenzhen bond, type 100016",
         .market = "SZ", .code = "109901", .instrumentName = "模拟国债", .lastClose = 101.250,
         .tick = kTenthOfCent, .lot = 10,
         .types = {100016}, .classBits = kBondClass, .doubleFields = {{kAccruedInterest, 1.237}},
         .streams = kShenzhen, .hasAveragePrice = true},
        {.name = "company-bond", .summary = "Shenzhen bond, type 100005",
         .market = "SZ", .code = "119901", .instrumentName = "模拟公司债", .lastClose = 98.700,
         .tick = kTenthOfCent, .lot = 10,
         .types = {100005, kTenToAHand}, .classBits = kBondClass, .doubleFields = {{kAccruedInterest, 2.481}},
         .streams = kShenzhen, .hasAveragePrice = true},
        {.name = "convertible", .summary = "Shenzhen convertible bond, types 100005 and 135",
         .market = "SZ", .code = "129901", .instrumentName = "模拟转债", .lastClose = 118.600,
         .tick = kTenthOfCent, .lot = 10, .bandPercent = 20,
         .types = {100005, kTenToAHand, 135}, .classBits = kBondClass, .doubleFields = {{kAccruedInterest, 0.312}},
         .streams = kShenzhen, .hasAveragePrice = true},
        {.name = "convertible-b", .summary = "Shenzhen convertible bond, types 100005 and 10019",
         .market = "SZ", .code = "129902", .instrumentName = "模 拟 定 转 债", .lastClose = 104.200,
         .tick = kTenthOfCent, .lot = 10, .bandPercent = 20,
         .types = {100005, kTenToAHand, 10019}, .classBits = kBondClass, .doubleFields = {{kAccruedInterest, 0.845}},
         .streams = kShenzhen, .hasAveragePrice = true},

        // Indices.
        {.name = "index", .summary = "index, level-1 quotes only",
         .market = "SH", .code = "009900", .instrumentName = "模拟指数", .lastClose = 3050.12,
         .hasPriceLimits = false, .isIndex = true, .hasShares = false, .streams = kLevelOne, .showsBook = false},
        {.name = "cicc-index", .summary = "index of market CICC, level-1 quotes only",
         .market = "CICC", .code = "CI9001", .instrumentName = "模拟策略指数", .lastClose = 1280.50,
         .hasPriceLimits = false, .hasShares = false, .streams = kLevelOne, .showsBook = false},

        // Futures and options, counted in contracts.
        {.name = "future", .summary = "index future of market IF",
         .market = "IF", .code = "IF2406", .instrumentName = "模拟期指2406", .lastClose = 3560.0,
         .tick = kFifth, .lot = 1, .hasOddLots = false, .contractSize = 300, .afterClose = AfterClose::Settlement,
         .hasShares = false, .streams = kBothLevels, .settles = true},
        {.name = "commodity-future", .summary = "commodity future of market SHFE",
         .market = "SHFE", .code = "SM2410", .instrumentName = "模拟商品2410", .lastClose = 3650,
         .tick = kWhole, .lot = 1, .hasOddLots = false, .contractSize = 10, .afterClose = AfterClose::Settlement,
         .hasShares = false, .streams = kBothLevels, .settles = true},
        {.name = "option", .summary = "option of market SHO",
         .market = "SHO", .code = "10009901", .instrumentName = "模拟购6月2500", .lastClose = 0.1500,
         .tick = kHundredthOfCent, .lot = 1, .hasOddLots = false, .contractSize = 10'000, .bandPercent = 50,
         .afterClose = AfterClose::Settlement, .hasShares = false, .streams = kBothLevels, .settles = true},
    };
    // clang-format on
    return all;
}

const InstrumentClass* findInstrumentClass(const std::string& name)
{
    const auto& all = instrumentClasses();
    const auto found = std::find_if(all.begin(), all.end(), [&name](const auto& row) { return row.name == name; });
    return found == all.end() ? nullptr : &*found;
}

const InstrumentClass& instrumentClass(const std::string& name)
{
    if (const InstrumentClass* const found = findInstrumentClass(name))
        return *found;
    std::string names;
    for (const InstrumentClass& row : instrumentClasses())
        names.append(names.empty() ? "" : ", ").append(row.name);
    throw std::invalid_argument("no instrument class \"" + name + "\"; there are " + names);
}

} // namespace exchange
