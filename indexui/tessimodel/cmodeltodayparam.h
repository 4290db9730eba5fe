#pragma once

#include "indexui/tessimodel/detail/keptpricetext.h"
#include "indexui/tessimodel/export.h"
#include "indexui/tessimodel/realtimeparam.h"
#include "utils/formatnumberflag.h"

#include <QList>
#include <QString>

#include <boost/function.hpp>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace quoter {
struct QuoteAux;
struct QuoterAllData;
struct QuoterBase;
struct QuoterDepthData;
} // namespace quoter

namespace ztservice {
struct CInstrumentDetail;
}

namespace TC {

struct CFormulaParam;

namespace detail {
struct DayTotals;
struct PreviousFigures;
struct SnapshotFigures;
} // namespace detail

// The real-time parameter table of one instrument: 49 rows of finished text with a colour key each, and the list of
// rows that suits the instrument's class.
//
// A panel calls setStock, carries the request of getParams to the data layer, hands the snapshots to quoterCallback
// and draws the rows of m_params in the order of *m_paramList. Snapshots are of level 1 or level 2. Book summaries,
// inner and outer volume and the average price come in by calls of their own. To show a moment of the past the panel
// hands its snapshot to connectTickData; rows that the next live snapshot does not write keep their past text.
//
// No lock: everything, the reading included, happens on one thread at a time. A copy shares the records; its
// m_paramList points into the source until the copy's own setStock, so a copy must not outlive its source before.
class TESSIMODEL_EXPORT CModelTodayParam {
public:
    CModelTodayParam();
    CModelTodayParam(const CModelTodayParam&);
    CModelTodayParam& operator=(const CModelTodayParam&);
    ~CModelTodayParam(); // as clear()

    // Follows the instrument of a terminal key: classifies it, chooses the list and fills the rows that need no quote.
    // An unknown key leaves the model without an instrument, with the default list and the rows' old texts. History
    // and previous snapshots stay: they go with clear(). True when m_paramList points at another list than before.
    bool setStock(const QString& code);

    // Fills the request for the stream "QUOTER" of the last trading day, open ended. Without an instrument the request
    // stays as it was.
    void getParams(CFormulaParam& param) const;

    // Takes a batch of snapshots, oldest first. Kind 0 is the day so far: with two records and more the count of
    // trades starts anew, and what each snapshot showed is remembered, over what is remembered already; then the last
    // is shown. An empty one forgets the day. Of any other kind, 3 included, only the last record counts, so history
    // must come in one batch. True asks the panel to redraw; false without an instrument, and for a live snapshot that
    // adds no volume, unless a call auction, the broker's quotes or the beginning of the after-hours phase let it
    // through.
    bool quoterCallback(int, int batchKind, const std::vector<std::shared_ptr<quoter::QuoterBase>>& records);

    // The book's totals and average prices at one snapshot, which may come before or after it. False for null.
    bool quoteAuxCallback(const std::shared_ptr<quoter::QuoteAux>& aux);

    // Volume sold into the bid and bought from the ask, in the unit of the stream. Always true.
    bool setDishData(qint64 inner, qint64 outer);

    // The day's average price. One that is not finite is ignored.
    void setAveragePrice(double value);

    // Does nothing: a snapshot brings no average, the panel works it out.
    void setAveragePrice(const std::shared_ptr<quoter::QuoterBase>& record);

    // The base of all changes from the next snapshot on; rows stay as they are.
    void setLastClose(double value);

    // Whether the rows of the whole book are in the lists. Builds all lists anew, also when nothing changed, so that
    // the listing rows are gone until the next setStock. True when the value changed.
    bool setLevel2(bool on);

    // Shows the table as it stood at a snapshot of the past. Counters and history stay. False without an instrument.
    bool connectTickData(const std::shared_ptr<quoter::QuoterBase>& record);

    // Whether a snapshot has been taken since the last clear().
    bool isDataValid() const;

    // Empties all texts and forgets the day, then writes the rows that the instrument alone gives; the listing facts,
    // the depositary receipt and the interest come back with setStock only. Labels, colours and the list in force stay.
    // Bonds are told by their types from then on, no longer by their class as setStock does: m_isBond, and with it the
    // market values, may change.
    void clear();

    // Builds all lists anew, without the listing rows.
    void initParams();

    std::map<ERealtimeParam, SRealtimeParam> m_params; // all 49, at any time

    // The display lists: parameters, kParamSeparator, and parameters plus kParamMark.
    QList<int> m_stockParams;
    QList<int> m_futureParams;
    QList<int> m_fundParams;
    QList<int> m_optionParams;
    QList<int> m_indexParams;
    QList<int> m_defaultParams;
    QList<int> m_afterHoursParamsA;
    QList<int> m_afterHoursParamsB;
    QList<int> m_registeredParamsA;
    QList<int> m_registeredParamsB;
    QList<int> m_gdrParams;
    QList<int> m_newRuleBondParams;
    QList<int> m_bondParams;
    QList<int> m_hkParams;
    QList<int> m_ciccIndexParams;
    const QList<int>* m_paramList; // the one in force
    bool m_level2 = false;         // the rows of the whole book are wanted

    std::shared_ptr<ztservice::CInstrumentDetail> m_stock; // the instrument followed, may be null
    std::shared_ptr<ztservice::CInstrumentDetail>
        m_gdrStock;     // receipt on market "LSE" of the last stock that had m_gdrParams
    double m_lastClose; // base of changes; DBL_MAX without an instrument, until setLastClose or a past day's
    double m_priceTick; // 0.001 without an instrument
    bool m_isNewRuleBond = false;
    bool m_isBond = false;
    bool m_isIopvFund = false;
    bool m_isAfterHoursA = false; // has an after-hours fixed-price phase
    bool m_isOption = false;
    bool m_isAfterHoursB = false; // the same, of the other type
    bool m_isRegisteredA = false;
    bool m_hasGdr = false;
    bool m_isHk = false;
    bool m_isRegisteredB = false;
    bool m_isNewLoan = false; // read snapshots in their new-loan form

    int m_tradeCount = 0;                             // snapshots in which the day's volume rose
    std::shared_ptr<quoter::QuoterAllData> m_lastAll; // the previous snapshot of each stream
    std::shared_ptr<quoter::QuoterDepthData> m_lastDepth;
    std::shared_ptr<quoter::QuoterBase>
        m_lastContinuous;                            // the last one before the after-hours phase, where there is one
    std::map<__int64, STodayParamHistory> m_history; // by timetag
    std::map<__int64, std::shared_ptr<quoter::QuoteAux>> m_pendingAux; // by timetag, until the snapshot comes

    // Date of the day on display, counted as CStockManager::getLastTradingDay counts: seconds since the epoch. With it
    // a past day's last close is taken from its snapshots. May be empty.
    boost::function<int()> m_historyDateSource;

protected:
    // One snapshot into the rows, counters and history. False when it brings nothing that is to be shown; true for
    // a record that is no snapshot.
    bool calc(const std::shared_ptr<quoter::QuoterBase>& record, bool isInit);

    // Counters and history from all snapshots but the last.
    void calc(const std::vector<std::shared_ptr<quoter::QuoterBase>>& records);

    // One snapshot of the past into the rows alone. Always true.
    bool refresh(const std::shared_ptr<quoter::QuoterBase>& record);

    // A price for a snapshot without a trade: best bid, best ask or previous close. 0 when there is none, when the
    // snapshot has a trade price, and on a stock exchange outside the call auctions.
    double getLastPrice(const std::shared_ptr<quoter::QuoterBase>& record) const;

    // Writes a row. An id that the table lacks is ignored; an empty key keeps the row's colour.
    void setParam(ERealtimeParam id, const QString& text, const QString& colorKey);

    // Writes the difference of value and base, or its ratio to the base when the flag is FORMAT_NUMBER_PERCENT, in the
    // colour of the two. A value of 0 is no price and shows no difference.
    void setParam(ERealtimeParam id, utils::EFormatNumberFlag flag, double value, double base);

    // Writes change and rise, against the last close and against the previous settlement.
    void setParam(const std::shared_ptr<quoter::QuoterBase>& record);

    // Colour key of a price against its base, within the tolerance of prices.
    static QString getPriceColor(double price, double base);

    void clearQuoterData();
    void initStockParams();

    // Puts the listing rows at the end of the lists that have them, or takes them out.
    void doRegistParams(bool registered);

    // The last close of the day on display, when m_historyDateSource says which that is.
    void updateHistoryLastClose(const std::shared_ptr<quoter::QuoterBase>& record);

private:
    using Params = std::map<ERealtimeParam, SRealtimeParam>;
    using Figures = detail::SnapshotFigures;
    using Previous = detail::PreviousFigures;
    using Totals = detail::DayTotals;

    static Params catalogue();

    // Set-up.
    void classify(bool hasGdr);
    void setVolumeLabels();
    void setLabel(ERealtimeParam id, const QString& label, const QString& colorKey);
    const QList<int>* listOfClass() const;
    void setFixedRows(int shareDigits);
    void setGdrRows();
    void setClassRows();
    void setRegisteredCapital();

    // What a row is written with.
    QString priceText(double price) const;
    void setText(ERealtimeParam id, const QString& text);
    void setPrice(ERealtimeParam id, double price);
    void setDifference(ERealtimeParam id, utils::EFormatNumberFlag flag, double value, double base);

    // Rows that a live snapshot and one of the past write alike. Whether they are written is up to the caller.
    bool isAfterHoursType() const;
    bool isInAfterHours(const Figures& now) const;
    std::optional<Totals> continuousTotals(const Figures& now) const;
    std::optional<double> gdrPremium(double price) const;
    double substitutePrice(const Figures& now) const;
    void setChanges(const Figures& now);
    void setLimits(double up, double down);
    void setMarketValues(double price);
    void setSettlements(const Figures& now);
    void setTotals(const Figures& now);
    void setAfterHoursTotals(const Totals& totals);
    void setIopv(const Figures& now);
    void setGdrPremium(const Figures& now);
    void setLast(const Figures& now);
    void setTurnover(const Figures& now);
    void setBids(double averagePrice, __int64 totalVolume);
    void setAsks(double averagePrice, __int64 totalVolume);

    // Calculation.
    void setLimitsOf(const std::vector<std::shared_ptr<quoter::QuoterBase>>& records);
    template <class Snapshot>
    void calcHistory(const std::vector<std::shared_ptr<quoter::QuoterBase>>& records,
                     std::shared_ptr<Snapshot>& previous);
    template <class Snapshot>
    bool calcSnapshot(const std::shared_ptr<Snapshot>& record, std::shared_ptr<Snapshot>& previous, bool isInit);
    bool admit(const std::shared_ptr<quoter::QuoterBase>& record, const Figures& now,
               const std::optional<Previous>& before, bool isInit);
    bool isInCallAuction(const Figures& now) const;
    bool countsAnew(const Figures& now, const std::optional<Previous>& before) const;
    __int64 addedVolume(const Figures& now, const std::optional<Previous>& before) const;
    void setDayPrices(const Figures& now);
    void setCounts(const Figures& now, const std::optional<Previous>& before);
    void takeCurrentVolume(const Figures& now, const std::optional<Previous>& before);
    STodayParamHistory& remember(const Figures& now, __int64 current);

    // Refresh.
    void refreshRows(const Figures& now);
    void setMoment(const Figures& now);

    // Texts that every snapshot brings anew and that seldom change.
    detail::KeptPriceText m_upLimitText;
    detail::KeptPriceText m_downLimitText;
    detail::KeptPriceText m_settlementText;
    detail::KeptPriceText m_lastSettlementText;
};

// A trading phase in words.
TESSIMODEL_EXPORT QString quoteStatusToQString(int status);

} // namespace TC
