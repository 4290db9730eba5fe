#include "tests/exchange/plainreplay.h"

#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "tests/exchange/snapshottext.h"

#include <cstdlib>

namespace {

constexpr int kUncross[] = {(9 * 60 + 25) * 60'000, 15 * 3'600'000};

int clock(int hour, int minute)
{
    return (hour * 60 + minute) * 60'000;
}

bool continuous(int time)
{
    return (time >= clock(9, 30) && time < clock(11, 30)) || (time >= clock(13, 0) && time < clock(14, 57));
}

bool mayRest(int kind)
{
    return kind == 1 || kind == 6 || kind == 7;
}

} // namespace

PlainReplay::PlainReplay(const recording::RecordedDay& day)
    : perUnit(static_cast<int>(std::llround(1 / day.instrument.priceTick)))
    , m_lot(day.instrument.classBits >> 20 == 4 ? 10 : 100)
    , m_midnight(day.events.front().record->timetag - clock(9, 0))
    , m_lastClose(ticks(day.instrument.lastClose))
    , m_low(ticks(day.instrument.downStopPrice))
    , m_high(ticks(day.instrument.upStopPrice))
{}

int PlainReplay::ticks(double price) const
{
    return static_cast<int>(std::llround(price * perUnit));
}

void PlainReplay::fault(const std::string& what)
{
    faults.push_back(line("at ", m_now, " ms after order ", m_lastSeq, ": ", what));
}

void PlainReplay::checkClock(__int64 timetag)
{
    const int now = static_cast<int>(timetag - m_midnight);
    if (now < m_now)
        fault(line("time goes back to ", now));
    for (const int uncross : kUncross) {
        if (m_now < uncross && now >= uncross)
            m_due = auction();
        if (m_now <= uncross && now > uncross)
            checkUncross();
    }
    m_now = now;
}

// Once the moment of an auction has passed, all that could trade in it has, whether a trade was seen or not.
void PlainReplay::checkUncross()
{
    if (m_due.volume != 0)
        fault(line("the auction leaves ", m_due.volume, " untraded that match at ", m_due.price));
    checkNotCrossed();
}

void PlainReplay::checkNotCrossed()
{
    if (bestPrice(true) != 0 && bestPrice(false) != 0 && bestPrice(true) >= bestPrice(false))
        fault(line("the book is crossed, bid ", bestPrice(true), " and ask ", bestPrice(false)));
}

void PlainReplay::settle(__int64 timetag)
{
    checkNothingPending(false);
    checkClock(timetag);
}

int PlainReplay::status() const
{
    if (m_now < clock(9, 15))
        return 11;
    if (m_now <= clock(9, 25))
        return 12;
    if (m_now < clock(9, 30) || (m_now >= clock(11, 30) && m_now < clock(13, 0)))
        return 14;
    if (m_now < clock(14, 57))
        return 13;
    return m_now <= clock(15, 0) ? 18 : 15;
}

bool PlainReplay::inAuction() const
{
    return status() == 12 || status() == 18;
}

// An order that arrived in continuous trading goes on trading until its own records end.
void PlainReplay::checkNothingPending(bool sameOrderGoesOn)
{
    if (m_pending == 0 || sameOrderGoesOn)
        return;
    const auto found = m_resting.find(m_pending);
    if (found != m_resting.end()) {
        const Order& order = found->second;
        if (!mayRest(order.kind) || order.price == 0)
            fault(line("order ", m_pending, " of kind ", order.kind, " was left to rest"));
        if (crosses(order))
            fault(line("order ", m_pending, " was left across the book"));
        levelOf(order).volume += order.left();
        levelOf(order).orders.insert(m_pending);
    }
    m_pending = 0;
}

bool PlainReplay::crosses(const Order& order) const
{
    const int other = bestPrice(!order.buy);
    return other != 0 && (order.buy ? order.price >= other : order.price <= other);
}

int PlainReplay::bestPrice(bool buy) const
{
    return levels(buy).empty() ? 0 : std::abs(levels(buy).begin()->first);
}

PlainReplay::Level& PlainReplay::levelOf(const Order& order)
{
    return order.buy ? m_bids[-order.price] : m_asks[order.price];
}

// Files the order away; one that did not arrive just now also leaves its level.
void PlainReplay::leave(__int64 seq)
{
    const Order& order = m_resting.at(seq);
    if (seq != m_pending) {
        levelOf(order).orders.erase(seq);
        if (levelOf(order).orders.empty())
            (order.buy ? m_bids.erase(-order.price) : m_asks.erase(order.price));
    }
    m_done.insert(m_resting.extract(seq));
}

void PlainReplay::apply(const quoter::OrderData& record)
{
    checkNothingPending(false);
    checkClock(record.timetag);
    const bool collected = inAuction() && m_now != kUncross[0] && m_now != kUncross[1];
    if (!collected && !continuous(m_now))
        fault(line("order ", record.seq, " while the exchange rests"));
    if (collected && record.orderKind != 1)
        fault(line("kind ", record.orderKind, " in a call auction"));
    if (record.seq <= m_lastSeq + m_recordsSinceSeq || record.seq > 0x7fffffff)
        fault(line("seq ", record.seq, " leaves no room for the ", m_recordsSinceSeq, " records in between"));
    if (record.volume <= 0 || record.bsFlag < 1 || record.bsFlag > 2)
        fault(line("order ", record.seq, " has volume ", record.volume, " and side ", record.bsFlag));
    if (record.bsFlag == 1 && record.volume % m_lot != 0)
        fault(line("order ", record.seq, " buys an odd lot"));
    m_lastSeq = record.seq;
    m_recordsSinceSeq = 0;

    Order order{record.bsFlag == 1, record.orderKind, ticks(record.price), record.volume, 0, 0, m_now};
    if (order.kind == 1 && (order.price < m_low || order.price > m_high))
        fault(line("order ", record.seq, " at ", order.price, " is beyond the limits"));
    if (order.kind != 1 && order.price != 0)
        fault(line("order ", record.seq, " of kind ", order.kind, " carries a price"));
    if (order.kind == 6)
        order.price = bestPrice(order.buy);
    if (order.kind == 7)
        order.price = bestPrice(!order.buy);
    m_resting.emplace(record.seq, order);
    m_pending = record.seq;
    if (collected) {
        levelOf(order).volume += order.left();
        levelOf(order).orders.insert(record.seq);
        m_pending = 0;
    }
}

PlainReplay::Order* PlainReplay::take(__int64 seq, bool buy)
{
    const auto found = m_resting.find(seq);
    if (found != m_resting.end() && found->second.buy == buy)
        return &found->second;
    fault(line("order ", seq, " is not there to trade"));
    return nullptr;
}

void PlainReplay::apply(const quoter::TransactionData& trade)
{
    const __int64 aggressor = std::max(trade.buySeq, trade.sellSeq);
    const __int64 passive = std::min(trade.buySeq, trade.sellSeq);
    checkNothingPending(aggressor == m_pending && trade.timetag - m_midnight == m_now);
    checkClock(trade.timetag);
    ++m_recordsSinceSeq;
    if (trade.transKind == 3) {
        applyCancel(trade);
        return;
    }

    const int price = ticks(trade.price);
    if (price < m_low || price > m_high || trade.volume <= 0)
        fault(line("trade of ", trade.volume, " at ", price));
    if (trade.tradeFlag != (trade.buySeq > trade.sellSeq ? 1 : 2))
        fault(line("trade ", trade.buySeq, "x", trade.sellSeq, " marked as ", trade.tradeFlag));
    Order* buy = take(trade.buySeq, true);
    Order* sell = take(trade.sellSeq, false);
    if (!buy || !sell)
        return;
    if (m_now == kUncross[0] || m_now == kUncross[1])
        checkAuctionFill(price, trade.volume);
    else
        checkContinuousFill(trade, aggressor, passive, price);
    for (const auto& [seq, order] : {std::pair(trade.buySeq, buy), std::pair(trade.sellSeq, sell)}) {
        order->traded += trade.volume;
        if (seq != m_pending)
            levelOf(*order).volume -= trade.volume;
        if (order->left() < 0)
            fault(line("order ", seq, " trades more than it has"));
        if (order->price != 0 && (order->buy ? price > order->price : price < order->price))
            fault(line("order ", seq, " trades at ", price, ", its limit is ", order->price));
    }
    m_open = volume == 0 ? price : m_open;
    m_dayLow = volume == 0 ? price : std::min(m_dayLow, price);
    m_dayHigh = std::max(m_dayHigh, price);
    m_last = price;
    volume += trade.volume;
    m_amount += price * trade.volume;
    count(aggressor, price, trade.volume);
    for (const __int64 seq : {aggressor, passive}) {
        if (m_resting.at(seq).left() == 0)
            leave(seq);
    }
}

void PlainReplay::checkAuctionFill(int price, __int64 shares)
{
    if (price != m_due.price)
        fault(line("auction trade at ", price, " instead of ", m_due.price));
    m_due.volume -= shares;
}

// In continuous trading an arriving order meets the best price, there the oldest order, at that order's price.
void PlainReplay::checkContinuousFill(const quoter::TransactionData& trade, __int64 aggressor, __int64 passive,
                                      int price)
{
    if (!continuous(m_now))
        fault("trade outside trading hours");
    if (aggressor != m_pending)
        fault(line("order ", aggressor, " trades long after its arrival"));
    const bool passiveBuys = trade.buySeq == passive;
    const int best = bestPrice(passiveBuys);
    if (price != best)
        fault(line("trade at ", price, " while the best price is ", best));
    if (best != 0 && *levels(passiveBuys).begin()->second.orders.begin() != passive)
        fault(line("order ", passive, " trades ahead of an older one"));
}

void PlainReplay::applyCancel(const quoter::TransactionData& trade)
{
    const bool buy = trade.buySeq != 0;
    if (buy == (trade.sellSeq != 0) || trade.price != 0 || trade.tradeFlag != 0)
        fault(line("cancel names ", trade.buySeq, " and ", trade.sellSeq, " at ", trade.price));
    if (!continuous(m_now) && (m_now < clock(9, 15) || m_now >= clock(9, 20)))
        fault("cancel while cancels are refused");
    const __int64 seq = buy ? trade.buySeq : trade.sellSeq;
    if (Order* order = take(seq, buy)) {
        if (order->left() != trade.volume)
            fault(line("cancel of ", trade.volume, ", order ", seq, " has ", order->left()));
        order->cancelled += trade.volume;
        if (seq != m_pending)
            levelOf(*order).volume -= trade.volume;
        leave(seq);
    }
}

void PlainReplay::count(__int64 seq, int price, __int64 shares)
{
    Active& active = m_active[seq];
    active.buy = m_resting.at(seq).buy;
    active.volume += shares;
    active.ticks += price * shares;
}

void PlainReplay::finish()
{
    settle(m_midnight + clock(24, 0));
    checkNotCrossed();
    const auto conserved = [this](__int64 seq, const Order& order, __int64 resting) {
        if (order.entered != order.traded + order.cancelled + resting)
            fault(line("order ", seq, ": ", order.entered, " entered, ", order.traded, " traded, ", order.cancelled,
                       " cancelled, ", resting, " resting"));
    };
    for (const auto& [seq, order] : m_done)
        conserved(seq, order, 0);
    for (const auto& [seq, order] : m_resting) {
        conserved(seq, order, order.left());
        if (!mayRest(order.kind))
            fault(line("order ", seq, " of kind ", order.kind, " rests at the end"));
    }
}

PlainReplay::Match PlainReplay::auction() const
{
    const int reference = m_last == 0 ? m_lastClose : m_last;
    Match best;
    const auto buysFrom = [this](int price) {
        __int64 sum = 0;
        for (const auto& [key, level] : m_bids)
            sum += -key >= price ? level.volume : 0;
        return sum;
    };
    const auto sellsTo = [this](int price) {
        __int64 sum = 0;
        for (const auto& [key, level] : m_asks)
            sum += key <= price ? level.volume : 0;
        return sum;
    };
    for (int price = m_low; price <= m_high; ++price) {
        const __int64 buys = buysFrom(price);
        const __int64 sells = sellsTo(price);
        const __int64 matched = std::min(buys, sells);
        if (matched == 0 || buysFrom(price + 1) > matched || sellsTo(price - 1) > matched)
            continue;
        const __int64 left = std::abs(buys - sells);
        const __int64 bestLeft = best.buyLeft + best.sellLeft;
        if (matched > best.volume || (matched == best.volume && left < bestLeft) ||
            (matched == best.volume && left == bestLeft &&
             std::abs(price - reference) < std::abs(best.price - reference)))
            best = {price, matched, buys - matched, sells - matched};
    }
    return best;
}

std::string PlainReplay::quoteText(int count) const
{
    std::string text = line("open ", m_open, " high ", m_dayHigh, " low ", m_dayLow, " last ", m_last, " close ",
                            m_lastClose, " volume ", volume, " amount ", m_amount, " status ", status(), "\n");
    std::vector<std::string> bids;
    std::vector<std::string> asks;
    if (inAuction()) {
        const Match match = auction();
        bids = {line(match.price, "x", match.volume), line("0x", match.buyLeft)};
        asks = {line(match.price, "x", match.volume), line("0x", match.sellLeft)};
    } else {
        for (const auto& [key, level] : levels(true))
            bids.push_back(line(-key, "x", level.volume));
        for (const auto& [key, level] : levels(false))
            asks.push_back(line(key, "x", level.volume));
    }
    bids.resize(static_cast<std::size_t>(count), "0x0");
    asks.resize(static_cast<std::size_t>(count), "0x0");
    for (std::size_t i = 0; i < bids.size(); ++i)
        text.append(line(bids[i], " ", asks[i], "\n"));
    return text;
}

std::string PlainReplay::queueText() const
{
    if (inAuction()) {
        const int price = auction().price;
        return line("bid ", price, ": ask ", price, ":");
    }
    std::string text;
    for (const bool buy : {true, false}) {
        text.append(line(buy ? "bid " : " ask ", bestPrice(buy), ":"));
        if (levels(buy).empty())
            continue;
        int shown = 0;
        for (const __int64 seq : levels(buy).begin()->second.orders) {
            if (shown++ < 50)
                text.append(line(" ", m_resting.at(seq).left()));
        }
    }
    return text;
}

std::string PlainReplay::thousandText() const
{
    std::string text;
    for (const bool buy : {true, false}) {
        text.append(buy ? "bid" : " ask");
        if (inAuction())
            continue;
        int shown = 0;
        for (const auto& [key, level] : levels(buy)) {
            if (shown++ < 1000)
                text.append(line(" ", std::abs(key), "=", level.volume, "/", level.orders.size()));
        }
    }
    return text;
}

std::map<int, PlainReplay::Resting> PlainReplay::marketOrders(bool buy) const
{
    std::map<int, Resting> resting;
    for (const auto& [seq, order] : m_resting) {
        if (order.buy != buy || order.kind == 1)
            continue;
        resting[order.price].shares += order.left();
        ++resting[order.price].orders;
    }
    return resting;
}

std::map<int, __int64> PlainReplay::limitShares(bool buy) const
{
    std::map<int, __int64> shares;
    for (const auto& [seq, order] : m_resting) {
        if (order.buy == buy && order.kind == 1)
            shares[order.price] += order.left();
    }
    return shares;
}

std::string PlainReplay::countsText() const
{
    __int64 orders[2] = {};
    __int64 classes[2][4] = {};
    for (const auto& [seq, active] : m_active) {
        const __int64 yuan = active.ticks / perUnit;
        const __int64 shares = active.volume;
        const int size = shares >= 500'000 || yuan >= 1'000'000 ? 0
                         : shares >= 100'000 || yuan >= 200'000 ? 1
                         : shares >= 20'000 || yuan >= 40'000   ? 2
                                                                : 3;
        ++orders[active.buy ? 0 : 1];
        classes[active.buy ? 0 : 1][size] += shares;
    }
    const auto side = [&](int i) {
        return line(orders[i], ": ", classes[i][0], " ", classes[i][1], " ", classes[i][2], " ", classes[i][3]);
    };
    return line("buy ", side(0), " sell ", side(1));
}

std::string PlainReplay::auxText() const
{
    std::string text;
    for (const bool buy : {true, false}) {
        __int64 total = 0;
        __int64 amount = 0;
        for (const auto& [key, level] : levels(buy)) {
            if (!inAuction()) {
                total += level.volume;
                amount += level.volume * std::abs(key);
            }
        }
        // Half a tick rounds up.
        const __int64 twice = total == 0 ? 0 : 2 * amount / total;
        text.append(line(buy ? "bid " : " ask ", total, "@", (twice + 1) / 2));
    }
    return text;
}
