#include "tests/tessi/plainparams.h"

#include "Common/numberformat.h"
#include "quoter/quoteaux.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace tests {

namespace {

constexpr __int64 kAllDay = std::numeric_limits<__int64>::max();

std::string decimal(double value, int digits, int flags)
{
    return ZP::formatDoubleNumber(value, digits, utils::CFlags(static_cast<utils::EFormatNumberFlag>(flags)), false,
                                  "非法值")
        .toStdString();
}

std::string quantity(double value)
{
    return decimal(value, 2, 0x40000);
}

std::string value(double amount)
{
    return decimal(amount, 0, 0x40000);
}

std::string ratio(double part)
{
    return decimal(part, 2, 0x10000);
}

std::string price(double price, double tick)
{
    return ZP::formatPriceDoubleNumber(price, tick).toStdString();
}

bool isNone(double number)
{
    return std::abs(number) <= 1e-5;
}

std::string limit(double stop, double tick)
{
    return isNone(stop) || isNone(stop - 100000) ? "-" : price(stop, tick);
}

std::string side(__int64 hands)
{
    return hands < 100000 ? std::to_string(hands) : quantity(static_cast<double>(hands));
}

std::string phase(int status)
{
    static const std::map<int, std::string> names = {{11, "开盘前"},       {12, "开盘集合竞价"}, {13, "连续交易"},
                                                     {14, "休市"},         {15, "竞价交易收盘"}, {18, "收盘集合竞价"},
                                                     {22, "盘后定价交易"}, {23, "收盘"}};
    return names.at(status);
}

double fieldOf(const standin::InstrumentDescription& instrument, int id)
{
    const auto found = instrument.doubleFields.find(id);
    return found == instrument.doubleFields.end() ? 0 : found->second;
}

} // namespace

PlainParams::PlainParams(const recording::RecordedDay& day, const ParamFacts& facts)
    : m_day(day)
    , m_facts(facts)
{
    for (const recording::Event& event : day.events) {
        if (event.stream != facts.stream)
            continue;
        if (const auto* level1 = dynamic_cast<const quoter::QuoterAllData*>(event.record.get()))
            read(*level1);
        else if (const auto* level2 = dynamic_cast<const quoter::QuoterDepthData*>(event.record.get()))
            read(*level2);
    }
    findTrades();
}

template <class Record>
void PlainParams::read(const Record& record)
{
    Shot shot{};
    shot.time = record.timetag;
    shot.shares = record.volume;
    shot.hands = record.volume / m_facts.sharesPerHand;
    shot.last = m_facts.readsAlternative ? record.lastPriceAlt : record.lastPrice;
    shot.open = record.open;
    shot.high = record.high;
    shot.low = record.low;
    shot.amount = record.amount;
    shot.lastSettlement = record.lastSettlementPrice;
    shot.settlement = record.settlementPrice;
    shot.iopv = record.iopv;
    shot.status = record.tradeStatus;
    m_shots.push_back(shot);
}

void PlainParams::findTrades()
{
    int count = 0;
    std::size_t traded = kNone;
    std::size_t shown = kNone;
    for (std::size_t i = 0; i < m_shots.size(); ++i) {
        Shot& shot = m_shots[i];
        const bool beginsEvening = shown != kNone && isAfterHours(shot) && !isAfterHours(m_shots[shown]);
        const bool countsAnew = traded == kNone || (isAfterHours(shot) && !isAfterHours(m_shots[traded]));
        const __int64 before = countsAnew ? 0 : m_shots[traded].hands;
        shot.isTraded = shot.hands > before;
        shot.isShown = shot.isTraded || beginsEvening || shown == kNone;
        if (shot.isTraded) {
            shot.current = shot.hands - before;
            count += isAfterHours(shot) ? 0 : 1;
            traded = i;
        }
        shown = shot.isShown ? i : shown;
        shot.count = count;
    }
}

std::size_t PlainParams::shownBefore(std::size_t shot) const
{
    while (shot-- > 0) {
        if (m_shots[shot].isShown)
            return shot;
    }
    return kNone;
}

std::size_t PlainParams::tradedBefore(std::size_t shot) const
{
    while (shot-- > 0) {
        if (m_shots[shot].isTraded)
            return shot;
    }
    return kNone;
}

std::size_t PlainParams::shownLast() const
{
    return shownBefore(m_shots.size());
}

const PlainParams::Shot* PlainParams::lastContinuous() const
{
    for (auto shot = m_shots.rbegin(); shot != m_shots.rend(); ++shot) {
        if (shot->isTraded && !isAfterHours(*shot))
            return &*shot;
    }
    return nullptr;
}

PlainParams::Texts PlainParams::texts(std::size_t index, std::size_t before) const
{
    const Shot& shot = m_shots.at(index);
    const std::size_t traded = shot.isTraded ? index : tradedBefore(index);
    Texts texts;
    addInstrument(texts);
    addReceipt(texts, shot.last);
    addPrices(texts, shot);
    addTotals(texts, shot);
    addDeals(texts, kAllDay);
    texts[12] = std::to_string(shot.count);
    const __int64 hands = isAfterHours(shot) ? m_shots.at(before).hands : shot.hands;
    texts[13] = decimal(static_cast<double>(hands) / shot.count, 2, 0);
    texts[15] = std::to_string(m_shots.at(traded).current);
    texts[53] = price(fieldOf(m_day.instrument, 3003) + shot.last, m_day.instrument.priceTick);
    for (const Shot& each : m_shots) {
        if (each.settlement > 1e-5 && each.status > 0)
            texts[20] = price(each.settlement, m_day.instrument.priceTick);
    }
    const auto isBook = [](const recording::Event& event) { return event.aux != nullptr; };
    const auto book = std::find_if(m_day.events.rbegin(), m_day.events.rend(), isBook);
    if (book != m_day.events.rend())
        addBook(texts, book->aux->timetag);
    if (m_facts.isMarked)
        texts[42] = phase(m_shots.back().status); // changes without a trade
    return texts;
}

PlainParams::Texts PlainParams::at(__int64 time, Texts texts) const
{
    std::size_t index = m_shots.size();
    do {
        index = tradedBefore(index);
    } while (m_shots.at(index).time > time);
    const Shot& shot = m_shots.at(index);
    if (m_facts.isMarked)
        texts[42] = phase(shot.status);
    if (m_facts.isMarked && shot.status < 22 && shot.status != 15) {
        texts[39] = quantity(0);
        texts[40] = "0";
    }
    addReceipt(texts, shot.last);
    addPrices(texts, shot);
    addTotals(texts, shot);
    addDeals(texts, (isAfterHours(shot) ? *lastContinuous() : shot).shares);
    addBook(texts, shot.time);
    texts[12] = std::to_string(shot.count);
    texts[13] = decimal(static_cast<double>(shot.hands) / shot.count, 2, 0);
    texts[15] = std::to_string(shot.current);
    return texts;
}

// What needs no record.
void PlainParams::addInstrument(Texts& texts) const
{
    const standin::InstrumentDescription& instrument = m_day.instrument;
    texts[7] = price(instrument.lastClose, instrument.priceTick);
    texts[21] = limit(instrument.upStopPrice, instrument.priceTick);
    texts[22] = limit(instrument.downStopPrice, instrument.priceTick);
    texts[26] = value(fieldOf(instrument, 3015));
    texts[27] = value(fieldOf(instrument, 3016));
    if (m_facts.isBond)
        texts[52] = price(fieldOf(instrument, 3003), instrument.priceTick);
    if (const auto capital = instrument.intFields.find(2022); capital != instrument.intFields.end())
        texts[36] = quantity(capital->second * 1e6);
    const auto has = [&instrument](int bit) { return (instrument.listingFlags >> bit & 1) != 0; };
    if (has(19)) {
        texts[37] = has(1) ? "已盈利" : "未盈利";
        texts[38] = has(4) ? "存在差异" : "无差异";
    }
    texts[47] = has(20) ? "具有" : "不具有";
}

void PlainParams::addReceipt(Texts& texts, double last) const
{
    if (m_day.related.empty())
        return;
    const standin::InstrumentDescription& receipt = m_day.related.front();
    const double close = fieldOf(receipt, 3002);
    const int receipts = receipt.intFields.at(2008);
    const int shares = receipt.intFields.at(2009);
    const int divisor = std::gcd(receipts, shares);
    texts[48] = price(close, m_day.instrument.priceTick);
    texts[49] = std::to_string(receipts);
    texts[50] = std::to_string(receipts / divisor) + ":" + std::to_string(shares / divisor);
    const double premium = (fieldOf(receipt, 3011) * (close * receipts / shares) / 100 - last) / last;
    texts[51] = (premium > 1e-5 ? "+" : "") + ratio(premium);
}

void PlainParams::addPrices(Texts& texts, const Shot& shot) const
{
    const double tick = m_day.instrument.priceTick;
    const double close = m_day.instrument.lastClose;
    texts[0] = price(shot.last, tick);
    texts[2] = price(shot.last - close, tick);
    texts[3] = price(shot.last - shot.lastSettlement, tick);
    texts[4] = ratio((shot.last - close) / close);
    if (!isNone(shot.lastSettlement))
        texts[5] = ratio((shot.last - shot.lastSettlement) / shot.lastSettlement);
    texts[6] = ratio((shot.high - shot.low) / close);
    texts[8] = price(shot.lastSettlement, tick);
    texts[9] = price(shot.open, tick);
    texts[10] = price(shot.high, tick);
    texts[11] = price(shot.low, tick);
    texts[19] = std::to_string(shot.status);
    if (!isNone(shot.iopv))
        texts[23] = price(shot.iopv, 0.0001);
    const double worth = m_facts.isBond ? shot.last / 100 : shot.last;
    texts[28] = value(worth * fieldOf(m_day.instrument, 3015));
    texts[29] = value(worth * fieldOf(m_day.instrument, 3016));
}

void PlainParams::addTotals(Texts& texts, const Shot& shot) const
{
    if (isAfterHours(shot)) {
        texts[39] = quantity(shot.amount);
        texts[40] = ZP::formatLongLongNumber(shot.hands, 0, utils::CFlags(utils::FORMAT_NUMBER_UNIT)).toStdString();
    }
    const Shot& day = isAfterHours(shot) ? *lastContinuous() : shot;
    const auto hands = static_cast<double>(day.hands);
    texts[14] = quantity(hands);
    texts[16] = quantity(day.amount);
    if (m_facts.hasAverage)
        texts[1] = price(day.amount / static_cast<double>(day.shares), m_day.instrument.priceTick);
    const double floating = fieldOf(m_day.instrument, 3016);
    if (!isNone(floating))
        texts[30] = ratio(hands * (m_facts.isHongKong ? 1 : 100) / floating);
}

// The book's summary of that time, if there is one.
void PlainParams::addBook(Texts& texts, __int64 time) const
{
    for (const recording::Event& event : m_day.events) {
        if (!event.aux || event.aux->timetag != time)
            continue;
        const double tick = m_day.instrument.priceTick;
        texts[31] = std::to_string(event.aux->totalBidVolume / m_facts.sharesPerHand);
        texts[32] = price(event.aux->bidAveragePrice, tick);
        texts[33] = std::to_string(event.aux->totalAskVolume / m_facts.sharesPerHand);
        texts[34] = price(event.aux->askAveragePrice, tick);
    }
}

// Trades by the aggressor's side: those of the day's first so many shares.
void PlainParams::addDeals(Texts& texts, __int64 dayShares) const
{
    __int64 shares[3] = {};
    bool isKnown = false;
    for (const recording::Event& event : m_day.events) {
        const auto* trade = dynamic_cast<const quoter::TransactionData*>(event.record.get());
        if (!trade || trade->transKind == 3)
            continue;
        isKnown = isKnown || trade->tradeFlag != 0;
        dayShares -= trade->volume;
        if (dayShares >= 0)
            shares[trade->tradeFlag] += trade->volume;
    }
    if (!isKnown)
        return;
    texts[24] = side(shares[2] / m_facts.sharesPerHand);
    texts[25] = side(shares[1] / m_facts.sharesPerHand);
}

} // namespace tests
