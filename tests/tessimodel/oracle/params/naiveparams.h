#pragma once

#include "tests/tessimodel/oracle/params/paramcounters.h"
#include "utils/int64.h"

#include <QList>
#include <QString>

#include <cfloat>
#include <functional>
#include <map>
#include <memory>
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

// The parameter table a second time: every rule written out where it applies, parameters by their numbers, nothing kept
// but what the rules keep. Members are named as the real ones, so that one template writes the state of both.
namespace tests::oracle::params {

struct NaiveRow {
    int id = 0;
    QString label;
    QString text;
    QString colorKey;
};

struct NaiveHistory {
    double high = 0;
    double low = 0;
    double bidAveragePrice = DBL_MAX;
    __int64 totalBidVolume = 0;
    double askAveragePrice = DBL_MAX;
    __int64 totalAskVolume = 0;
    int curVolume = 0;
    int tradeCount = 0;
};

// What the rules read of a snapshot of either level.
struct Seen {
    bool known = false; // a snapshot at all
    bool levelOne = false;
    __int64 timetag = 0;
    __int64 volume = 0;
    int status = 0;
    double last = 0;
    double amount = 0;
    double open = 0;
    double high = 0;
    double low = 0;
    double lastClose = 0;
    double lastSettlement = 0;
    double settlement = 0;
    double iopv = 0;
    double bid = 0;
    double ask = 0;
};

// What the history pass remembers on its way.
struct HistoryPass {
    __int64 current = 0;
    __int64 lateVolume = 0;
    double lateAmount = 0;
};

class NaiveParams {
public:
    using RecordPtr = std::shared_ptr<quoter::QuoterBase>;

    explicit NaiveParams(ParamCounters& counters);

    bool setStock(const QString& code);
    bool quoterCallback(int, int batchKind, const std::vector<RecordPtr>& records);
    bool quoteAuxCallback(const std::shared_ptr<quoter::QuoteAux>& aux);
    bool setDishData(__int64 inner, __int64 outer);
    void setAveragePrice(double value);
    void setAveragePrice(const RecordPtr&) {}
    void setLastClose(double value) { m_lastClose = value; }
    bool setLevel2(bool on);
    bool connectTickData(const RecordPtr& record);
    bool isDataValid() const { return m_lastAll || m_lastDepth; }
    void clear();
    void initParams();
    double getLastPrice(const RecordPtr& record);
    void setParam(int id, const QString& text, const QString& colorKey);
    void setParam(int id, int flag, double value, double base);
    void setParam(const RecordPtr& record);
    static QString getPriceColor(double price, double base);

    std::map<int, NaiveRow> m_params;
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
    const QList<int>* m_paramList;
    bool m_level2 = false;

    std::shared_ptr<ztservice::CInstrumentDetail> m_stock;
    std::shared_ptr<ztservice::CInstrumentDetail> m_gdrStock;
    double m_lastClose = DBL_MAX;
    double m_priceTick = 0.001;
    bool m_isNewRuleBond = false;
    bool m_isBond = false;
    bool m_isIopvFund = false;
    bool m_isAfterHoursA = false;
    bool m_isOption = false;
    bool m_isAfterHoursB = false;
    bool m_isRegisteredA = false;
    bool m_hasGdr = false;
    bool m_isHk = false;
    bool m_isRegisteredB = false;
    bool m_isNewLoan = false;

    int m_tradeCount = 0;
    std::shared_ptr<quoter::QuoterAllData> m_lastAll;
    std::shared_ptr<quoter::QuoterDepthData> m_lastDepth;
    RecordPtr m_lastContinuous;
    std::map<__int64, NaiveHistory> m_history;
    std::map<__int64, std::shared_ptr<quoter::QuoteAux>> m_pendingAux;
    std::function<int()> m_historyDateSource;

private:
    // Set-up
    bool isType(int type) const;
    bool isFutureMarket() const;
    bool isOptionMarket() const;
    bool isMarked() const { return m_isAfterHoursA || m_isAfterHoursB; }
    bool hasBlockTradeType() const;
    void forgetInstrument();
    void classify();
    void chooseUnit();
    void chooseList();
    void writeVolumeLabels(const char* total, const char* current);
    void writeFixedRows(int shareDigits);
    void writeGdrRows();
    void writeCapital();
    void initStockParams();
    void doRegistParams(bool registered);

    // Snapshots
    Seen read(const RecordPtr& record) const;
    void writeLimits(double up, double down);
    void clearQuoterData();
    void updateHistoryLastClose(const RecordPtr& record);
    void calcHistory(const std::vector<RecordPtr>& records);
    void passHistory(const RecordPtr& record, const Seen& now, HistoryPass& pass);
    bool passedInHistory(const Seen& now, const Seen& before, __int64& current);
    bool calc(const RecordPtr& record, bool isInit);
    bool passesGate(const RecordPtr& record, const Seen& now, const Seen& before, bool isInit);
    bool passesDayGate(const RecordPtr& record, const Seen& now, const Seen& before, bool isInit);
    void calcPrices(const Seen& now);
    void calcVolumes(const Seen& now);
    void calcMoved(const Seen& now);
    void calcGdrPremium(const Seen& now);
    void calcTurnover(const Seen& now);
    void calcCounts(const Seen& now, const Seen& before);
    void becomePrevious(const RecordPtr& record);
    double gdrPremium(double price) const;
    bool hasGdrClose() const;

    // A look back
    void refresh(const RecordPtr& record);
    void refreshVolumes(const Seen& past);
    void refreshPrices(const RecordPtr& record, const Seen& past);
    void refreshTurnover(const Seen& past);
    void refreshFromHistory(const Seen& past);

    // Texts
    QString price(double value) const;
    static QString quantity(double value);
    static QString marketValue(double value);
    static QString ratio(double value);

    ParamCounters* m_counters;
};

QString statusText(int status);

// Within 1e-5, as the rules compare doubles.
bool near(double a, double b);
bool usable(double value); // near neither 0 nor the largest double

} // namespace tests::oracle::params
