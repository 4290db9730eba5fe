#include "Common/numberformat.h"
#include "datasource/datacenter.h"
#include "indexui/tessimodel/cmodeltodayparam.h"
#include "indexui/tessimodel/detail/instrumentfields.h"
#include "indexui/tessimodel/detail/markets.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/numbertext.h"
#include "indexui/tessimodel/detail/snapshotfigures.h"
#include "indexui/tessimodel/detail/tradingphase.h"
#include "ztservice/instrumentdetail.h"

#include <cmath>
#include <optional>

// The rows that a live snapshot and one of the past write alike.
namespace TC {

using namespace detail;

bool CModelTodayParam::isAfterHoursType() const
{
    return m_isAfterHoursA || m_isAfterHoursB;
}

bool CModelTodayParam::isInAfterHours(const SnapshotFigures& now) const
{
    return isAfterHoursType() && isAfterHours(now.tradeStatus);
}

// The day's totals as the last snapshot before the after-hours phase had them, when it came in the stream of `now`.
std::optional<DayTotals> CModelTodayParam::continuousTotals(const SnapshotFigures& now) const
{
    const std::optional<SnapshotFigures> last = figuresOf(m_lastContinuous, m_isNewLoan);
    if (!last || last->isLevel2 != now.isLevel2)
        return std::nullopt;
    return DayTotals{last->volume, last->amount};
}

double CModelTodayParam::getLastPrice(const std::shared_ptr<quoter::QuoterBase>& record) const
{
    const std::optional<SnapshotFigures> now = figuresOf(record, m_isNewLoan);
    return now ? substitutePrice(*now) : 0;
}

// Applies when the snapshot has no trade price and something that could stand for one.
double CModelTodayParam::substitutePrice(const SnapshotFigures& now) const
{
    if (!m_stock)
        return 0;
    const auto isPrice = [threshold = m_stock->zeroPriceThreshold](double price) {
        return std::abs(price) > threshold;
    };
    if (isPrice(now.last))
        return 0;
    // On a stock exchange the book stands for a trade in the call auctions only.
    const double close = now.isLevel2 ? now.lastClose : m_stock->lastClose;
    const bool applies = isMainlandMarket(m_stock->market) ? isCallAuctionPhase(now.tradeStatus)
                                                           : isPrice(now.bid) || isPrice(now.ask) || isPrice(close);
    if (!applies)
        return 0;
    for (const double price : {now.bid, now.ask, now.lastClose}) {
        if (!isZero(price))
            return price;
    }
    return 0;
}

void CModelTodayParam::setParam(const std::shared_ptr<quoter::QuoterBase>& record)
{
    if (const std::optional<SnapshotFigures> now = figuresOf(record, m_isNewLoan))
        setChanges(*now);
}

// Without a trade the changes are those of a substitute price, and none at all without that.
void CModelTodayParam::setChanges(const SnapshotFigures& now)
{
    const bool substitutes = isZero(now.last) && m_stock;
    const double price = substitutes ? substitutePrice(now) : now.last;
    const auto set = [&](ERealtimeParam id, utils::EFormatNumberFlag flag, double base) {
        if (substitutes)
            setParam(id, flag, price, base);
        else
            setDifference(id, flag, price, base);
    };
    set(RP_CHANGE_SETTLE, utils::FORMAT_NUMBER_PLAIN, now.lastSettlement);
    set(RP_CHANGE, utils::FORMAT_NUMBER_PLAIN, m_lastClose);
    if (!isZero(now.lastSettlement))
        set(RP_RISE_SETTLE, utils::FORMAT_NUMBER_PERCENT, now.lastSettlement);
    if (!isZero(m_lastClose))
        set(RP_RISE, utils::FORMAT_NUMBER_PERCENT, m_lastClose);
}

// A limit of 0 or of 100000 stands for none.
void CModelTodayParam::setLimits(double up, double down)
{
    constexpr double kNoLimit = 100000;
    const auto isNone = [](double limit) { return isZero(limit) || isEqual(limit, kNoLimit); };
    const auto none = [] { return QStringLiteral("-"); };
    setText(RP_UP_LIMIT, isNone(up) ? none() : m_upLimitText.of(up, m_priceTick));
    setText(RP_DOWN_LIMIT, isNone(down) ? none() : m_downLimitText.of(down, m_priceTick));
}

void CModelTodayParam::setMarketValues(double price)
{
    if (!m_stock)
        return;
    constexpr double kBondFaceValue = 100; // bonds are quoted for so much of it
    const double pricePerShare = m_isBond ? price / kBondFaceValue : price;
    setText(RP_TOTAL_MARKET_VALUE, quantityText(pricePerShare * m_stock->getDoubleField(kFieldTotalShares), 0));
    setText(RP_FLOAT_MARKET_VALUE, quantityText(pricePerShare * m_stock->getDoubleField(kFieldFloatShares), 0));
}

// How much dearer the receipt's close makes a share than `price`; 0 where that cannot be told. None without a close.
std::optional<double> CModelTodayParam::gdrPremium(double price) const
{
    if (!m_hasGdr || !m_gdrStock)
        return std::nullopt;
    const double close = m_gdrStock->getDoubleField(kFieldGdrClose);
    if (isZero(close))
        return std::nullopt;
    const int stocks = m_gdrStock->getIntField(kFieldGdrStocks);
    if (stocks <= 0 || !isGreater(price, 0))
        return 0.0;
    const double perStock = close * m_gdrStock->getIntField(kFieldGdrShares) / stocks;
    constexpr double kRateUnits = 100; // the exchange rate is that of so many units
    return (m_gdrStock->getDoubleField(kFieldExchangeRate) * perStock / kRateUnits - price) / price;
}

// A snapshot carries the phase of a security in the place of a future's open interest; the row shows either.
void CModelTodayParam::setSettlements(const SnapshotFigures& now)
{
    setText(RP_LAST_SETTLE, m_lastSettlementText.of(now.lastSettlement, m_priceTick));
    setText(RP_OPEN_INTEREST, QString::number(now.tradeStatus));
}

// After hours volume and amount count anew, so that the day's totals are those of the phase before.
void CModelTodayParam::setTotals(const SnapshotFigures& now)
{
    std::optional<DayTotals> day = DayTotals{now.volume, now.amount};
    if (isInAfterHours(now)) {
        setAfterHoursTotals(*day);
        day = continuousTotals(now);
    }
    if (day) {
        setText(RP_TOTAL_VOLUME, quantityText(day->volume));
        setText(RP_TOTAL_AMOUNT, quantityText(day->amount));
    }
}

void CModelTodayParam::setAfterHoursTotals(const DayTotals& totals)
{
    setText(RP_AFTER_HOURS_VOLUME, afterHoursVolumeText(totals.volume));
    setText(RP_AFTER_HOURS_AMOUNT, quantityText(totals.amount));
}

void CModelTodayParam::setIopv(const SnapshotFigures& now)
{
    constexpr double kIopvTick = 0.0001;
    if (m_isIopvFund && isUsable(now.iopv))
        setParam(RP_IOPV, ZP::formatPriceDoubleNumber(now.iopv, kIopvTick), getPriceColor(now.iopv, m_lastClose));
}

void CModelTodayParam::setGdrPremium(const SnapshotFigures& now)
{
    const auto premium = gdrPremium(now.last);
    if (!premium)
        return;
    const QString sign = isGreater(*premium, 0) ? QStringLiteral("+") : QString();
    setParam(RP_GDR_PREMIUM, sign + ratioText(*premium), getPriceColor(*premium, 0));
}

void CModelTodayParam::setLast(const SnapshotFigures& now)
{
    setPrice(RP_LAST, now.last);
    setMarketValues(now.last);
    if (!isZero(m_lastClose))
        setText(RP_AMPLITUDE, ratioText((now.high - now.low) / m_lastClose));
}

void CModelTodayParam::setTurnover(const SnapshotFigures& now)
{
    const double floatShares = m_stock ? m_stock->getDoubleField(kFieldFloatShares) : 0;
    if (isZero(floatShares))
        return;
    // With the data centre's broker quotes a float of exactly 1 is one that is not known.
    constexpr double kUnknownFloat = 1.0;
    if (isSamePrice(floatShares, kUnknownFloat) && se::DataCenter::isBrovanQuoteMode()) {
        setText(RP_TURNOVER, QStringLiteral("--    ")); // the blanks are part of the text
        return;
    }
    constexpr double kSharesPerHand = 100; // Hong Kong's volumes are shares
    DayTotals day{now.volume, now.amount};
    if (isInAfterHours(now))
        day = continuousTotals(now).value_or(DayTotals());
    const double sharesPerUnit = m_isHk && !isInAfterHours(now) ? 1 : kSharesPerHand;
    setText(RP_TURNOVER, ratioText(static_cast<double>(day.volume) * sharesPerUnit / floatShares));
}

void CModelTodayParam::setBids(double averagePrice, __int64 totalVolume)
{
    setText(RP_TOTAL_BID, bookTotalText(totalVolume));
    setPrice(RP_BID_AVERAGE, averagePrice);
}

void CModelTodayParam::setAsks(double averagePrice, __int64 totalVolume)
{
    setText(RP_TOTAL_ASK, bookTotalText(totalVolume));
    setPrice(RP_ASK_AVERAGE, averagePrice);
}

} // namespace TC
