#pragma once

#include "tests/tessimodel/oracle/distribution/distributioncounters.h"
#include "tests/tessimodel/oracle/distribution/distributionstreams.h"

#include <memory>
#include <optional>
#include <vector>

#include <QString>

namespace se {
struct RPCFormulaMetaResult;
}

namespace ztservice {
struct CInstrumentDetail;
}

// The distribution of the day's volume once more, as plainly as can be. Its histories wait until they are asked for.
namespace tests::oracle::distribution {

struct NaivePrice {
    double price = 0;
    int buyVolume = 0;
    int sellVolume = 0;
    int totalVolume = 0;
};

class NaiveDistribution {
public:
    explicit NaiveDistribution(DistributionCounters& counters)
        : m_counters(&counters)
    {}

    void setStock(const QString& key);
    // True when a history has to be worked through.
    bool quoterCallBack(int, int batchKind, const Records& records);
    void quoterCallBackThread(const Records& records);
    void clear();
    void processData(const RecordPtr& record);
    void processData(const Tick& tick);
    void calc(const se::RPCFormulaMetaResult& meta);

    std::shared_ptr<ztservice::CInstrumentDetail> m_stock;
    bool m_isShSz = false;
    int m_maxVolume = 0;
    int m_totalVolume = 0;
    std::vector<Tick> m_ticks;
    std::vector<NaivePrice> m_prices;
    std::optional<int> m_date;
    bool m_hasAfterHours = false;
    bool m_hasAfterHoursSz = false;
    std::vector<Tick> m_pending;
    int m_signals = 0;
    __int64 m_trace = 0; // what who gets the signals sees

private:
    void signal(bool isReady);
    template <class Snapshot>
    void take(const Snapshot& record);
    void direct(Tick& first, double lastClose) const;
    void directLater(Tick& tick);
    bool isIndexLike() const;
    NaivePrice* rowOf(double price, double half);
    void open(const Tick& tick, double half);
    void join(NaivePrice& row, const Tick& tick, double half);

    DistributionCounters* m_counters;
};

} // namespace tests::oracle::distribution
