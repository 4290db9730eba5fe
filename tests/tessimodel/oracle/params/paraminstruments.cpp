#include "tests/tessimodel/oracle/params/paraminstruments.h"

#include "tests/support/instruments.h"
#include "ztservice/instrumentdetail.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <limits>

namespace tests::oracle::params {

namespace {

using Description = standin::InstrumentDescription;

constexpr int kProfitable = 1 << 1;
constexpr int kVotesDiffer = 1 << 4;
constexpr int kRegistered = 1 << 19;
constexpr int kVie = 1 << 20;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr unsigned kBondClass = 4U << 20;

Description plain(const std::string& market, const std::string& code, const std::set<int>& types = {})
{
    Description out = stock(market, code, types);
    out.upStopPrice = 11.0;
    out.downStopPrice = 9.0;
    out.doubleFields = {{3015, 2.5e9}, {3016, 1.75e8}};
    return out;
}

Description with(Description out, int listingFlags, int capital)
{
    out.listingFlags = listingFlags;
    out.intFields[2022] = capital;
    out.doubleFields[3000] = 0.25;
    return out;
}

Description receipt(const std::string& code, double close, int shares, int perShares)
{
    Description out = plain("LSE", code);
    out.intFields = {{2008, shares}, {2009, perShares}};
    out.doubleFields = {{3002, close}, {3011, 912.5}};
    return out;
}

Description withReceipt(Description out, const std::string& code)
{
    out.gdrCode = code;
    return out;
}

Description future(const std::string& market, const std::string& code)
{
    Description out = plain(market, code);
    out.priceTick = 0.2;
    out.lastClose = 3500;
    out.upStopPrice = 100000;
    out.downStopPrice = 0;
    out.doubleFields = {{3002, 3498.4}};
    return out;
}

Description bond(const std::string& market, const std::string& code, const std::string& name,
                 const std::set<int>& types, unsigned classBits = kBondClass)
{
    Description out = plain(market, code, types);
    out.name = name;
    out.priceTick = 0.001;
    out.lastClose = 102.5;
    out.classBits = classBits;
    out.doubleFields[3003] = 1.234;
    return out;
}

Description fund(const std::string& market, const std::string& code, const std::set<int>& types)
{
    Description out = plain(market, code, types);
    out.priceTick = 0.001;
    out.lastClose = 2.345;
    return out;
}

// Last close, limits, threshold, shares.
Description odd(const std::string& code, double lastClose, double limit, double threshold, double shares)
{
    Description out = plain("SZ", code, {100003});
    out.lastClose = lastClose;
    out.upStopPrice = out.downStopPrice = limit;
    out.zeroPriceThreshold = threshold;
    out.doubleFields = {{3015, shares}, {3016, shares}};
    return out;
}

void addStocks(std::vector<Description>& all)
{
    all.push_back(plain("SH", "600001", {100003}));
    all.push_back(plain("SZ", "000001", {100003}));
    all.push_back(with(plain("SH", "688001", {277, 100003}), kProfitable | kVotesDiffer | kRegistered | kVie, 123));
    all.push_back(with(plain("SH", "688002", {277, 101}), kVotesDiffer, INT_MAX));
    all.push_back(with(plain("SZ", "300001", {10006}), kProfitable | kRegistered | kVie, 98765));
    all.push_back(with(plain("SZ", "300002", {10006, 10004}), kRegistered, INT_MAX));
    all.push_back(with(plain("SZ", "300003", {10006, 277}), kRegistered, 7));
    all.push_back(with(plain("IF", "300004", {277}), 0, INT_MIN)); // after-hours comes before future
    all.push_back(with(plain("SZ", "301001", {10004, 100003}), kProfitable | kRegistered | kVie, 50));
    all.push_back(with(plain("SH", "601001", {101, 100003}), kVotesDiffer | kRegistered, 60));
    all.push_back(with(plain("SZ", "001001", {196}), kRegistered, 60));
    all.push_back(with(plain("SZ", "001002", {196, 10004, 277}), kRegistered, 60));
    all.push_back(plain("BJ", "430001"));
    all.push_back(plain("SSE", "600002", {100003}));
    all.push_back(plain("SZSE", "000002", {100003}));
}

void addReceipts(std::vector<Description>& all)
{
    all.push_back(receipt("GDRA", 12.5, 10, 4));
    all.push_back(receipt("GDRB", 0.000009, 1, 5));
    all.push_back(receipt("GDRC", 12.5, 0, 0));
    all.push_back(receipt("GDRD", 0.01, 2000000, -500000));
    all.push_back(receipt("GDRE", 1.25, INT_MIN, INT_MAX));
    all.push_back(receipt("GDRF", 1.0, 5, 7));
    all.back().doubleFields[3011] = 1400; // as much as the stock closed at
    all.push_back(receipt("GDRG", 1.0, 0, 9));
    all.push_back(receipt("GDRH", 1.0, 12, 0));
    all.push_back(withReceipt(plain("SH", "601002", {100003}), "GDRA"));
    all.push_back(withReceipt(plain("SH", "601003"), "GDRB"));
    all.push_back(withReceipt(plain("SH", "601004"), "GDRC"));
    all.push_back(withReceipt(plain("SH", "601005"), "GDRD"));
    all.push_back(withReceipt(plain("SH", "601006"), "GDRE"));
    all.push_back(withReceipt(plain("SH", "601007"), "GDRF"));
    all.push_back(withReceipt(plain("SH", "601008"), "GDRG"));
    all.push_back(withReceipt(plain("SH", "601010"), "GDRH"));
    all.push_back(withReceipt(plain("SH", "601009", {100003}), "UNKNOWN"));
    all.push_back(withReceipt(plain("SH", "688003", {277}), "GDRA"));
    all.push_back(withReceipt(plain("SZ", "300005", {10006}), "UNKNOWN"));
    all.push_back(withReceipt(future("SF", "rb2405"), "GDRA"));
}

void addFuturesAndOptions(std::vector<Description>& all)
{
    for (const char* market : {"DF", "DCE", "ZF", "CZCE", "SF", "SHFE", "GF", "GFEX", "IF", "CFFEX", "INE"})
        all.push_back(future(market, "a2405"));
    all.push_back(future("IFX", "a2405"));
    for (const char* market : {"SHO", "SZO", "SHOX"})
        all.push_back(future(market, "10001"));
}

void addBonds(std::vector<Description>& all)
{
    all.push_back(bond("SH", "113001", "某转债", {135, 100005, 126}));
    all.push_back(bond("SZ", "123001", "另转债", {10019, 100016}));
    all.push_back(bond("SH", "010101", "国债", {100016, 126}));
    all.push_back(bond("SH", "010102", "国 债", {100005}));
    all.push_back(bond("SZ", "010103", "企债", {126}));
    all.push_back(bond("SZ", "010104", "无名", {100005}, 0));
    all.push_back(bond("SZ", "010105", "某 转 债 ", {100005, 100016}));
    all.push_back(bond("SZ", "010106", "转债", {100016}, 5U << 20));
    all.push_back(bond("SZ", "010107", "转\t债", {100005}, kBondClass | 1U << 26));
    all.push_back(bond("SZ", "010108", "债", {100005, 135}, 6U << 20));
    all.push_back(bond("BJ", "010109", "", {}));
}

void addOthers(std::vector<Description>& all)
{
    all.push_back(fund("SH", "510050", {100013}));
    all.push_back(fund("SZ", "159001", {100013, 100003}));
    all.push_back(fund("SZ", "159002", {100013, 10006}));
    all.push_back(plain("SH", "000300"));
    all.back().isIndex = true;
    all.push_back(plain("CICC", "000905"));
    all.push_back(plain("HK", "00700"));
    all.push_back(plain("HK", "00701"));
    all.back().zeroPriceThreshold = 0.5;
    all.push_back(plain("HK", "00702"));
    all.back().zeroPriceThreshold = 0.5;
    all.back().lastClose = 0.3;
    all.push_back(plain("HKX", "00001"));
    all.push_back(odd("000101", 0, 0, 0, 0));
    all.push_back(odd("000102", DBL_MAX, 100000, 0, 1.0));
    all.push_back(odd("000103", 0.00001, 0.00001, 0.01, 1.0));
    all.push_back(odd("000104", 10, 99999.99998, 10.0, DBL_MAX));
    all.push_back(odd("000108", 10, 99999.999995, 0, 1.000005));
    all.push_back(odd("000105", kNan, DBL_MAX, 0, 1.00001));
    all.push_back(odd("000106", -10, 100000.00002, -1, 0.00002));
    all.push_back(odd("000107", 10, kInfinity, 0, 1e9));
    all.back().priceTick = 0;
}

// Facts that no instrument service should send.
void addSpoiled(std::vector<Description>& all)
{
    struct Spoiled {
        double value;
        const char* number;
    };
    for (const auto& [value, number] :
         {Spoiled{kNan, "1"}, {kInfinity, "2"}, {-kInfinity, "3"}, {DBL_MAX, "4"}, {-12.5, "5"}}) {
        const std::string last = number;
        all.push_back(bond("SH", "01020" + last, "国债", {100016}));
        all.back().doubleFields[3003] = value;
        all.back().doubleFields[3016] = value;
        all.push_back(plain("SH", "60010" + last, {100003}));
        all.back().doubleFields[3015] = value;
        all.push_back(plain("SZ", "30010" + last, {10006}));
        all.back().doubleFields[3016] = value;
        all.push_back(future("IF", "b240" + last));
        all.back().doubleFields[3002] = value;
        all.push_back(receipt("GDRY" + last, value, 10, 4));
        all.push_back(withReceipt(plain("SH", "60110" + last), "GDRY" + last));
        all.push_back(receipt("GDRZ" + last, 12.5, 10, 4));
        all.back().doubleFields[3011] = value;
        all.push_back(withReceipt(plain("SH", "60120" + last), "GDRZ" + last));
    }
    for (const int type : {277, 10006, 10004, 101}) {
        all.push_back(with(plain("SH", "69000" + std::to_string(all.size()), {type}), -1, 0));
        all.push_back(with(plain("SZ", "39000" + std::to_string(all.size()), {type}), INT_MIN, -1));
    }
    all.push_back(with(plain("SZ", "300006", {101, 10006}), kRegistered | kVie, 40));
}

std::vector<Description> soundInstruments()
{
    std::vector<Description> all;
    addStocks(all);
    addReceipts(all);
    addFuturesAndOptions(all);
    addBonds(all);
    addOthers(all);
    return all;
}

std::vector<Description> allInstruments()
{
    auto all = soundInstruments();
    addSpoiled(all);
    return all;
}

} // namespace

const std::vector<Description>& paramInstruments()
{
    static const std::vector<Description> all = allInstruments();
    return all;
}

int soundParamInstruments()
{
    static const int sound = static_cast<int>(soundInstruments().size());
    return sound;
}

QString paramKeyOf(int instrument)
{
    if (instrument == kUnknownInstrument)
        return "SH:unknown";
    const Description& found = paramInstruments().at(static_cast<std::size_t>(instrument));
    return tests::keyOf(found.market, found.code);
}

std::string paramNameOf(int instrument)
{
    if (instrument == kUnknownInstrument)
        return "an unknown instrument";
    const Description& found = paramInstruments().at(static_cast<std::size_t>(instrument));
    return found.market + ':' + found.code;
}

void prepareParams(standin::Terminal& terminal)
{
    for (const Description& description : paramInstruments())
        terminal.instruments.add(description);
    // Not every market is on the mainland's day.
    terminal.instruments.setLastTradingDay("HK", standin::kDefaultTradingDay + 1);
    terminal.instruments.setLastTradingDay("SZ", standin::kDefaultTradingDay - 1);
    setAnswer(terminal, Answer::SignedIn, true);
    for (int answer = static_cast<int>(Answer::UserBrovan); answer < kAnswers; ++answer)
        setAnswer(terminal, static_cast<Answer>(answer), false);
}

void renew(standin::Terminal& terminal, int instrument)
{
    Description other = paramInstruments().at(static_cast<std::size_t>(instrument));
    other.lastClose *= 1.1;
    other.upStopPrice += 1;
    other.doubleFields[3016] = 1.0;
    other.doubleFields[3002] += 0.5;
    std::swap(other.intFields[2008], other.intFields[2009]);
    other.types.insert(100016);
    other.types.erase(277);
    other.listingFlags ^= kRegistered | kVotesDiffer;
    terminal.instruments.add(other);
}

int receiptOf(int instrument)
{
    const auto& all = paramInstruments();
    if (instrument < 0)
        return kUnknownInstrument;
    const std::string& wanted = all[static_cast<std::size_t>(instrument)].gdrCode;
    const auto found = std::find_if(all.begin(), all.end(), [&wanted](const Description& receipt) {
        return receipt.market == "LSE" && receipt.code == wanted;
    });
    return found == all.end() ? kUnknownInstrument : static_cast<int>(found - all.begin());
}

namespace {

struct ChangingReceipt : ztservice::CInstrumentDetail {
    int getIntField(int id) const override { return id == 2008 ? facts.shares : id == 2009 ? facts.perShares : 0; }
    double getDoubleField(int id) const override { return id == 3002 ? facts.close : id == 3011 ? facts.rate : 0; }

    ReceiptFacts facts;
};

const std::shared_ptr<ChangingReceipt>& theChangingReceipt()
{
    static const auto receipt = std::make_shared<ChangingReceipt>();
    return receipt;
}

} // namespace

std::shared_ptr<ztservice::CInstrumentDetail> changingReceipt()
{
    return theChangingReceipt();
}

void changeReceipt(const ReceiptFacts& facts)
{
    theChangingReceipt()->facts = facts;
}

} // namespace tests::oracle::params
