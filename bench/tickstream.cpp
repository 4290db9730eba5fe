#include "bench/tickstream.h"

#include "exchange/random.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"

#include <algorithm>
#include <list>

namespace bench {

namespace {

constexpr __int64 kAuction = 1709255700000; // 2024-03-01 09:15:00
constexpr __int64 kMinute = 60 * 1000LL;
constexpr __int64 kMorning = kAuction + 15 * kMinute;
constexpr __int64 kMorningLength = 120 * kMinute;
constexpr __int64 kNoonBreak = 90 * kMinute;
constexpr __int64 kAuctionLength = 10 * kMinute;
constexpr __int64 kTradingLength = 236 * kMinute; // shortened by the closing auction and a minute
constexpr int kMeanGap = 14;                      // ms between orders and cancels, when a million make up a day
constexpr int kCrowd = 15;                        // mean distance from the touch in ticks, of most orders
constexpr int kLot = 100;

// The market that makes the ticks, with a book of its own that is written to be right.
class Market {
public:
    explicit Market(const TickOptions& options);
    TickStream run();

private:
    struct Order {
        int seq;
        int key;
        bool isBuy;
        __int64 left;
        std::list<int>::iterator place{}; // in its level's queue
        std::size_t live = 0;             // in m_live
    };
    struct Side {
        std::vector<std::list<int>> levels; // oldest first, by price from the lower limit
        int best = 0;                       // a price key
        std::size_t orders = 0;
    };

    bool isOver() const;
    void passTime();
    void open();
    void walk();
    void placeOrder();
    void cancelOne();
    void enter(bool isBuy, int key, __int64 volume);
    void match(Order& aggressor);
    void fill(Order& aggressor, Order& oldest);
    void rest(int index);
    void leave(Order& order);
    void findBest(bool isBuy);
    int passiveKey(bool isBuy);
    int recentOrder();
    bool isAggressive();
    void emitTrade(int buySeq, int sellSeq, int key, __int64 volume, int flag, int kind);
    __int64 lots(int median) { return kLot * std::max<__int64>(1, m_chance.logNormal(median, 256)); }
    int nextSeq() { return m_seq += 1 + m_chance.below(8); }
    Side& side(bool isBuy) { return isBuy ? m_bids : m_asks; }
    std::list<int>& level(bool isBuy, int key)
    {
        return side(isBuy).levels[static_cast<std::size_t>(key - m_stream.lowestKey)];
    }
    Order& order(int index) { return m_orders[static_cast<std::size_t>(index)]; }
    static double price(int key) { return key / 100.0; }

    TickOptions m_options;
    exchange::Random m_chance;
    TickStream m_stream;
    std::vector<Order> m_orders; // all of them; left 0 when gone
    std::vector<int> m_live;     // what rests, in no order
    Side m_bids;
    Side m_asks;
    int m_seq = 0;
    int m_close;
    int m_centre; // the price that trading is drawn to; it wanders
    __int64 m_time = kAuction;
    __int64 m_gaps = 0;         // between the orders and cancels so far, in a day of a million
    __int64 m_perMilleOwed = 0; // cancels that are behind their share
};

Market::Market(const TickOptions& options)
    : m_options(options)
    , m_chance(options.seed)
    , m_close(options.levels * 10)
    , m_centre(m_close)
{
    m_stream.lowestKey = m_close - options.levels;
    m_stream.highestKey = m_close + options.levels;
    const auto keys = 2 * static_cast<std::size_t>(options.levels) + 1;
    m_bids.levels.resize(keys);
    m_asks.levels.resize(keys);
    m_bids.best = m_stream.lowestKey;
    m_asks.best = m_stream.highestKey;
    m_stream.ticks.reserve(static_cast<std::size_t>(options.events));
    m_orders.reserve(static_cast<std::size_t>(options.events) + 1);
}

TickStream Market::run()
{
    open();
    while (!isOver()) {
        const std::size_t before = m_stream.ticks.size();
        passTime();
        walk();
        if (m_chance.chance(m_perMilleOwed > 0 ? 700 : 100)) {
            cancelOne();
            m_perMilleOwed -= 1000;
        } else {
            placeOrder();
        }
        m_perMilleOwed += m_options.cancelPerMille * static_cast<__int64>(m_stream.ticks.size() - before);
    }
    return std::move(m_stream);
}

bool Market::isOver() const
{
    if (m_options.fills > 0)
        return m_stream.fills >= static_cast<std::size_t>(m_options.fills);
    return m_stream.ticks.size() >= static_cast<std::size_t>(m_options.events);
}

void Market::passTime()
{
    m_gaps += m_chance.below(2 * kMeanGap + 1);
    const __int64 traded = std::min(m_gaps * 1'000'000 / m_options.perDay, kTradingLength);
    m_time = kMorning + traded + (traded > kMorningLength ? kNoonBreak : 0);
}

// One order at every price, then more of them about the touch: what a call auction would leave.
void Market::open()
{
    const int standing = 2 * m_options.levels;
    const int orders = std::max(m_options.resting, standing);
    for (int i = 0; i < orders; ++i) {
        m_time = kAuction + kAuctionLength * i / orders;
        const bool isBuy = i % 2 == 0;
        int key = isBuy ? m_close - 1 - i / 2 : m_close + 1 + i / 2;
        if (i >= standing)
            key = passiveKey(isBuy);
        enter(isBuy, key, lots(8));
    }
    m_stream.opening = m_stream.ticks.size();
}

void Market::walk()
{
    if (!m_chance.chance(20))
        return;
    const int reach = m_options.levels * 3 / 10;
    m_centre = std::clamp(m_centre + m_chance.normal(2), m_close - reach, m_close + reach);
}

// Aggressors are the more likely, the more orders rest, so that the book neither grows nor runs dry.
bool Market::isAggressive()
{
    const __int64 surplus = static_cast<__int64>(m_live.size()) - m_options.resting;
    return m_chance.chance(static_cast<int>(std::clamp<__int64>(130 + surplus * 5000 / m_options.resting, 20, 600)));
}

void Market::placeOrder()
{
    const bool canTrade = m_bids.orders > 100 && m_asks.orders > 100;
    if (!canTrade || !isAggressive()) {
        const bool isBuy = m_chance.chance(500);
        enter(isBuy, passiveKey(isBuy), lots(8));
        return;
    }
    const int pull = std::clamp((2 * m_centre - m_bids.best - m_asks.best) * 10, -300, 300);
    const bool isBuy = m_chance.chance(500 + pull);
    const int through = m_chance.below(3);
    const int key = isBuy ? std::min(m_asks.best + through, m_stream.highestKey)
                          : std::max(m_bids.best - through, m_stream.lowestKey);
    enter(isBuy, key, lots(14));
}

int Market::passiveKey(bool isBuy)
{
    const int spread = m_asks.best - m_bids.best;
    int distance = m_chance.exponential(kCrowd);
    if (m_chance.chance(50))
        distance = m_chance.below(m_options.levels);
    else if (spread > 1 && m_chance.chance(300))
        distance = -1;
    const int key = isBuy ? m_bids.best - distance : m_asks.best + distance;
    return std::clamp(key, m_stream.lowestKey, m_stream.highestKey);
}

void Market::enter(bool isBuy, int key, __int64 volume)
{
    const int index = static_cast<int>(m_orders.size());
    m_orders.push_back({.seq = nextSeq(), .key = key, .isBuy = isBuy, .left = volume});
    auto record = std::make_shared<quoter::OrderData>();
    record->timetag = m_time;
    record->price = price(key);
    record->volume = volume;
    record->seq = m_orders.back().seq;
    record->orderKind = 1;
    record->bsFlag = isBuy ? quoter::kSideBuy : quoter::kSideSell;
    m_stream.ticks.push_back({std::move(record), nullptr});
    ++m_stream.orders;

    match(m_orders.back());
    if (m_orders.back().left > 0)
        rest(index);
}

void Market::match(Order& aggressor)
{
    const Side& other = side(!aggressor.isBuy);
    while (aggressor.left > 0 && other.orders > 0) {
        if (aggressor.isBuy ? other.best > aggressor.key : other.best < aggressor.key)
            return;
        fill(aggressor, order(level(!aggressor.isBuy, other.best).front()));
    }
}

void Market::fill(Order& aggressor, Order& oldest)
{
    const __int64 volume = std::min(aggressor.left, oldest.left);
    const Order& buy = aggressor.isBuy ? aggressor : oldest;
    const Order& sell = aggressor.isBuy ? oldest : aggressor;
    emitTrade(buy.seq, sell.seq, oldest.key, volume, aggressor.isBuy ? 1 : 2, 0);
    ++m_stream.fills;
    aggressor.left -= volume;
    oldest.left -= volume;
    if (oldest.left == 0)
        leave(oldest);
}

void Market::cancelOne()
{
    if (m_live.empty())
        return;
    Order& gone = order(recentOrder());
    const int buySeq = gone.isBuy ? gone.seq : 0;
    const int sellSeq = gone.isBuy ? 0 : gone.seq;
    emitTrade(buySeq, sellSeq, 0, gone.left, 0, quoter::kTransKindCancel);
    gone.left = 0;
    leave(gone);
}

// Most orders that are taken back are young.
int Market::recentOrder()
{
    if (m_chance.chance(900)) {
        int index = static_cast<int>(m_orders.size()) - 1 - m_chance.exponential(200);
        for (int tries = 0; tries < 100 && index >= 0; ++tries, --index) {
            if (order(index).left > 0)
                return index;
        }
    }
    return m_live[static_cast<std::size_t>(m_chance.below(static_cast<int>(m_live.size())))];
}

void Market::emitTrade(int buySeq, int sellSeq, int key, __int64 volume, int flag, int kind)
{
    nextSeq();
    auto record = std::make_shared<quoter::TransactionData>();
    record->timetag = m_time;
    record->price = price(key);
    record->volume = volume;
    record->buySeq = buySeq;
    record->sellSeq = sellSeq;
    record->tradeFlag = flag;
    record->transKind = kind;
    m_stream.ticks.push_back({nullptr, std::move(record)});
    ++m_stream.trades;
}

void Market::rest(int index)
{
    Order& resting = order(index);
    std::list<int>& queue = level(resting.isBuy, resting.key);
    resting.place = queue.insert(queue.end(), index);
    resting.live = m_live.size();
    m_live.push_back(index);
    Side& own = side(resting.isBuy);
    ++own.orders;
    own.best = resting.isBuy ? std::max(own.best, resting.key) : std::min(own.best, resting.key);
}

void Market::leave(Order& gone)
{
    std::list<int>& queue = level(gone.isBuy, gone.key);
    queue.erase(gone.place);
    const int last = m_live.back();
    m_live[gone.live] = last;
    order(last).live = gone.live;
    m_live.pop_back();
    --side(gone.isBuy).orders;
    if (queue.empty())
        findBest(gone.isBuy);
}

void Market::findBest(bool isBuy)
{
    Side& own = side(isBuy);
    const int step = isBuy ? -1 : 1;
    const int end = isBuy ? m_stream.lowestKey : m_stream.highestKey;
    while (own.best != end && level(isBuy, own.best).empty())
        own.best += step;
}

} // namespace

TickStream makeTicks(const TickOptions& options)
{
    return Market(options).run();
}

} // namespace bench
