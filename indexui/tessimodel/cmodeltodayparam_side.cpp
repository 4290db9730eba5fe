#include "Formula/stockmanager.h"
#include "indexui/tessimodel/cmodeltodayparam.h"
#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/bookmoment.h"
#include "indexui/tessimodel/detail/instrumentfields.h"
#include "indexui/tessimodel/detail/numbertext.h"
#include "IndexUtils/instrumentdetails.h"
#include "quoter/quoteaux.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "ztservice/instrumentdetail.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace TC {

using namespace detail;

namespace {

constexpr int kVotingRights = RP_VOTING_RIGHTS + kParamMark;
constexpr int kProfitable = RP_PROFITABLE + kParamMark;
constexpr int kCapital = RP_REGISTERED_CAPITAL + kParamMark;
constexpr int kVie = RP_VIE + kParamMark;

// Volumes below this are short enough to be read in full.
constexpr qint64 kShortened = 100000;

QString sideVolumeText(qint64 volume)
{
    return volume < kShortened ? QString::number(volume) : quantityText(volume);
}

} // namespace

bool CModelTodayParam::quoteAuxCallback(const std::shared_ptr<quoter::QuoteAux>& aux)
{
    if (!aux)
        return false;
    setBids(aux->bidAveragePrice, aux->totalBidVolume);
    setAsks(aux->askAveragePrice, aux->totalAskVolume);
    if (const auto moment = m_history.find(aux->timetag); moment != m_history.end())
        keepBook(moment->second, *aux);
    else
        m_pendingAux[aux->timetag] = aux;
    return true;
}

bool CModelTodayParam::setDishData(qint64 inner, qint64 outer)
{
    setText(RP_INNER, sideVolumeText(inner));
    setText(RP_OUTER, sideVolumeText(outer));
    return true;
}

void CModelTodayParam::setAveragePrice(double value)
{
    if (std::isfinite(value))
        setPrice(RP_AVERAGE, value);
}

void CModelTodayParam::setAveragePrice(const std::shared_ptr<quoter::QuoterBase>&) {}

void CModelTodayParam::setLastClose(double value)
{
    m_lastClose = value;
}

void CModelTodayParam::updateHistoryLastClose(const std::shared_ptr<quoter::QuoterBase>& record)
{
    if (!m_historyDateSource || !m_stock)
        return;
    const int shown = m_historyDateSource();
    const int latest = utils::CSingletonT<CStockManager>::instance()->getLastTradingDay(getDetailQsMarket(m_stock));
    if (shown > latest)
        return;
    // The instrument knows the close before the latest day only; that of a past day is in its snapshots.
    if (shown == latest)
        m_lastClose = getDetailLastClose(m_stock);
    else if (const auto level1 = recordAs<quoter::QuoterAllData>(record))
        m_lastClose = level1->lastClose;
    else if (const auto level2 = recordAs<quoter::QuoterDepthData>(record))
        m_lastClose = level2->lastClose;
    else
        return;
    setText(RP_LAST_CLOSE, priceText(m_lastClose));
}

// The listing facts, at the end of the lists of instruments that have them. That registered list B has its two the
// other way round is wanted.
void CModelTodayParam::doRegistParams(bool registered)
{
    const struct {
        QList<int>& list;
        QList<int> entries;
    } listings[] = {
        {m_afterHoursParamsA, {kCapital, kProfitable, kVotingRights}},
        {m_afterHoursParamsB, {kCapital, kProfitable, kVotingRights, kVie}},
        {m_registeredParamsA, {kProfitable, kVotingRights, kVie}},
        {m_registeredParamsB, {kVotingRights, kProfitable}},
    };
    for (const auto& [list, entries] : listings) {
        for (const int entry : entries)
            list.removeAll(entry);
        if (registered)
            list += entries;
    }
    if (!registered || !m_stock)
        return;
    setText(RP_VOTING_RIGHTS,
            hasListingFlag(*m_stock, kBitVotingDiffers) ? QStringLiteral("存在差异") : QStringLiteral("无差异"));
    setText(RP_PROFITABLE,
            hasListingFlag(*m_stock, kBitProfitable) ? QStringLiteral("已盈利") : QStringLiteral("未盈利"));
}

QString quoteStatusToQString(int status)
{
    static const struct {
        int status;
        QString text;
    } phases[] = {
        {1, QStringLiteral("停牌")},
        {11, QStringLiteral("开盘前")},
        {12, QStringLiteral("开盘集合竞价")},
        {13, QStringLiteral("连续交易")},
        {14, QStringLiteral("休市")},
        {15, QStringLiteral("竞价交易收盘")},
        {16, QStringLiteral("波动性中断")},
        {17, QStringLiteral("临时停牌")},
        {18, QStringLiteral("收盘集合竞价")},
        {19, QStringLiteral("盘中集合竞价")},
        {20, QStringLiteral("暂停交易至闭市")},
        {21, QStringLiteral("状态异常")},
        {22, QStringLiteral("盘后定价交易")},
    };
    constexpr int kClosed = 23;
    if (status >= kClosed)
        return QStringLiteral("收盘");
    const auto* const phase = std::find_if(std::begin(phases), std::end(phases),
                                           [status](const auto& each) { return each.status == status; });
    return phase == std::end(phases) ? QStringLiteral("未知") : phase->text;
}

} // namespace TC
