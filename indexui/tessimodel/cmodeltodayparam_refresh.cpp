#include "indexui/tessimodel/cmodeltodayparam.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/numbertext.h"
#include "indexui/tessimodel/detail/snapshotfigures.h"
#include "indexui/tessimodel/detail/tradingphase.h"

namespace TC {

using namespace detail;

bool CModelTodayParam::connectTickData(const std::shared_ptr<quoter::QuoterBase>& record)
{
    return m_stock && refresh(record);
}

bool CModelTodayParam::refresh(const std::shared_ptr<quoter::QuoterBase>& record)
{
    const std::optional<SnapshotFigures> now = figuresOf(record, m_isNewLoan);
    // A level-1 snapshot is shown whatever its volume, one of level 2 only once the day has begun to trade.
    if (now && !(now->isLevel2 && now->volume == 0))
        refreshRows(*now);
    return true;
}

void CModelTodayParam::refreshRows(const SnapshotFigures& now)
{
    setSettlements(now);
    setPrice(RP_OPEN, now.open);
    if (isAfterHoursType()) {
        setText(RP_TRADE_STATUS, quoteStatusToQString(now.tradeStatus));
        // Nothing has been traded after hours before the phase begins; between close and phase the rows stay.
        if (!isAfterHours(now.tradeStatus) && now.tradeStatus != kStatusAuctionClosed)
            setAfterHoursTotals({});
    }
    setTotals(now);
    setIopv(now);
    setChanges(now);
    setGdrPremium(now);
    setLast(now);
    setTurnover(now);
    setMoment(now);
}

// What the snapshot showed at its time beyond its own figures. A moment that is not remembered, since it added no
// volume, leaves the counts as they are.
void CModelTodayParam::setMoment(const SnapshotFigures& now)
{
    const auto found = m_history.find(now.timetag);
    if (found == m_history.end()) {
        setPrice(RP_HIGH, now.high);
        setPrice(RP_LOW, now.low);
        return;
    }
    const STodayParamHistory& moment = found->second;
    setPrice(RP_HIGH, moment.high);
    setPrice(RP_LOW, moment.low);
    setText(RP_TRADE_COUNT, QString::number(moment.tradeCount));
    setText(RP_VOLUME_PER_TRADE, plainText(static_cast<double>(now.volume) / moment.tradeCount));
    setText(RP_CURRENT_VOLUME, QString::number(moment.curVolume));
    if (!isMissing(moment.bidAveragePrice))
        setBids(moment.bidAveragePrice, moment.totalBidVolume);
    if (!isMissing(moment.askAveragePrice))
        setAsks(moment.askAveragePrice, moment.totalAskVolume);
}

} // namespace TC
