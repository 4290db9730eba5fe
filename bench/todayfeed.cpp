#include "bench/todayfeed.h"

#include "Common/numberformat.h"
#include "quoter/quoteralldata.h"
#include "utils/stockkey.h"

#include <QString>

namespace bench {

namespace {

constexpr __int64 kOpening = 1709256600000; // 2024-03-01 09:30:00
constexpr double kLastClose = 42.50;
constexpr double kTick = 0.01;
constexpr double kTotalShares = 2'400'000'000;
constexpr double kFloatShares = 1'800'000'000;

standin::InstrumentDescription description()
{
    constexpr int kStock = 100003;
    standin::InstrumentDescription stock;
    stock.market = "SZ";
    stock.code = "000001";
    stock.lastClose = kLastClose;
    stock.priceTick = kTick;
    stock.upStopPrice = 46.75;
    stock.downStopPrice = 38.25;
    stock.types = {kStock};
    stock.doubleFields = {{3015, kTotalShares}, {3016, kFloatShares}};
    return stock;
}

std::shared_ptr<quoter::QuoterAllData> snapshot(int index, bool priceMoves)
{
    auto record = std::make_shared<quoter::QuoterAllData>();
    constexpr __int64 kStep = 1500; // the whole day within the morning, so never in a call auction
    record->timetag = kOpening + index * kStep;
    record->tradeStatus = 13;
    record->lastPrice = 42.80 + (priceMoves ? index % 7 * kTick : 0);
    record->open = 42.60;
    record->high = 43.17;
    record->low = 42.11;
    record->lastClose = kLastClose;
    record->volume = 1000 + index * 37LL;
    record->amount = static_cast<double>(record->volume) * 4271.5;
    record->bidPrice[0] = record->lastPrice - kTick;
    record->askPrice[0] = record->lastPrice;
    return record;
}

// The numbers of one snapshot, written as the table writes them.
class Formatters {
public:
    explicit Formatters(bool priceMoves)
        : m_priceMoves(priceMoves)
    {}

    void write(const quoter::QuoterAllData& now, __int64 volumeBefore, int trades) const
    {
        if (m_priceMoves || trades == 1)
            writeLast(now);
        QString::number(now.tradeStatus);
        price(now.open);
        price(now.high);
        price(now.low);
        const double volume = static_cast<double>(now.volume);
        number(volume, 2, utils::FORMAT_NUMBER_UNIT);
        number(now.amount, 2, utils::FORMAT_NUMBER_UNIT);
        number(volume * 100 / kFloatShares, 2, utils::FORMAT_NUMBER_PERCENT);
        QString::number(trades);
        number(volume / trades, 2, utils::FORMAT_NUMBER_PLAIN);
        QString::number(now.volume - volumeBefore);
    }

private:
    static void price(double value) { ZP::formatPriceDoubleNumber(value, kTick); }

    static void number(double value, int digits, ZP::CFlags flags)
    {
        ZP::formatDoubleNumber(value, digits, flags, false, QStringLiteral("非法值"));
    }

    static void writeLast(const quoter::QuoterAllData& now)
    {
        const double change = now.lastPrice - kLastClose;
        price(now.lastPrice - now.lastSettlementPrice);
        price(change);
        number(change / kLastClose, 2, utils::FORMAT_NUMBER_PERCENT);
        price(now.lastPrice);
        number(now.lastPrice * kTotalShares, 0, utils::FORMAT_NUMBER_UNIT);
        number(now.lastPrice * kFloatShares, 0, utils::FORMAT_NUMBER_UNIT);
        number((now.high - now.low) / kLastClose, 2, utils::FORMAT_NUMBER_PERCENT);
        price(now.lastPrice);
    }

    bool m_priceMoves;
};

} // namespace

TodayFeed::TodayFeed(Price price, int snapshots)
    : m_priceMoves(price == Price::Moves)
{
    m_terminal.log.setLevel(50000);
    m_terminal.instruments.add(description());
    for (int i = 0; i < snapshots; ++i) {
        m_day.push_back(snapshot(i, m_priceMoves));
        m_pushes.push_back({m_day.back()});
        auto quiet = snapshot(i, true);
        quiet->volume = m_day.front()->volume;
        m_quietPushes.push_back({quiet});
    }
    m_history.assign(m_day.begin(), m_day.end());
    begin();
}

void TodayFeed::begin()
{
    m_model.setStock(QString::fromStdString(utils::zlStockKey("SZ", "000001")));
    m_model.clear();
}

int TodayFeed::show()
{
    int shown = 0;
    for (const Push& push : m_pushes)
        shown += m_model.quoterCallback(0, 1, push) ? 1 : 0;
    return shown;
}

int TodayFeed::turnAway()
{
    m_model.quoterCallback(0, 1, m_pushes.front());
    int turnedAway = 0;
    for (const Push& push : m_quietPushes)
        turnedAway += m_model.quoterCallback(0, 1, push) ? 0 : 1;
    return turnedAway;
}

int TodayFeed::takeHistory()
{
    m_model.quoterCallback(0, 0, m_history);
    return static_cast<int>(m_history.size());
}

int TodayFeed::format() const
{
    const Formatters formatters(m_priceMoves);
    __int64 volumeBefore = 0;
    int trades = 0;
    for (const auto& record : m_day) {
        formatters.write(*record, volumeBefore, ++trades);
        volumeBefore = record->volume;
    }
    return trades;
}

} // namespace bench
