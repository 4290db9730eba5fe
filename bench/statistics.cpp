#include "bench/statistics.h"

#include "bench/quoteday.h"
#include "bench/tickstream.h"
#include "indexui/tessimodel/cmodelentruststatus.h"
#include "indexui/tessimodel/cmodeltransdistribution.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "quoter/quoterdepthdata.h"

#include <cmath>
#include <memory>
#include <stdexcept>
#include <vector>

namespace bench {

namespace {

// For each snapshot of a day, pushed live.
Body prepareStatusLive()
{
    struct Panel {
        QuoteDay day;
        TC::CModelEntrustStatus model;
    };
    auto panel = std::make_shared<Panel>();
    panel->day.follow(panel->model);
    return {[panel](int) {
                for (const QuoteDay::Records& push : panel->day.pushes())
                    panel->model.quoterCallBack(0, 1, push);
                return QuoteDay::kSnapshots;
            },
            [panel] { panel->model.clear(); }};
}

// With the body of its threads in the open.
class Distribution : public TC::CModelTransDistribution {
public:
    using CModelTransDistribution::quoterCallBackThread;
};

// The least that the distribution of a day takes: for each price a bisection, and the volume added to its row.
class BareBisection {
public:
    void clear() { m_rows.clear(); }

    void add(double price, int volume, bool isBuy)
    {
        auto low = m_rows.begin();
        auto high = m_rows.end();
        while (low < high) {
            const auto middle = low + (high - low) / 2;
            const double difference = middle->price - price;
            if (std::abs(difference) <= kPriceTick / 2) {
                count(*middle, volume, isBuy);
                return;
            }
            if (difference > 0)
                low = middle + 1;
            else
                high = middle;
        }
        count(*m_rows.insert(low, {price}), volume, isBuy);
    }

    const std::vector<TC::TransDistributionPrice>& rows() const { return m_rows; }

private:
    static void count(TC::TransDistributionPrice& row, int volume, bool isBuy)
    {
        (isBuy ? row.buyVolume : row.sellVolume) += volume;
        row.totalVolume += volume;
    }

    std::vector<TC::TransDistributionPrice> m_rows;
};

// A day's ticks, and what works them out from its snapshots or is given them.
class DistributionRounds {
public:
    DistributionRounds()
    {
        m_day.follow(m_model);
        __int64 volumeBefore = 0;
        double priceBefore = 0;
        for (const auto& snapshot : m_day.snapshots()) {
            const bool isFirst = m_ticks.empty();
            m_ticks.push_back({snapshot->lastPrice, static_cast<int>(snapshot->volume - volumeBefore),
                               !isFirst && priceBefore <= snapshot->lastPrice});
            volumeBefore = snapshot->volume;
            priceBefore = snapshot->lastPrice;
        }
        check();
    }

    void clear()
    {
        m_model.clear();
        m_bare.clear();
    }

    void takeHistory() { m_model.quoterCallBackThread(m_day.history()); }

    void bisect()
    {
        for (const Tick& tick : m_ticks)
            m_bare.add(tick.price, tick.volume, tick.isBuy);
    }

private:
    struct Tick {
        double price;
        int volume;
        bool isBuy;
    };

    // Both must come to the same rows.
    void check()
    {
        takeHistory();
        bisect();
        bool isSame = static_cast<std::size_t>(m_model.m_prices.size()) == m_bare.rows().size();
        for (int i = 0; isSame && i < m_model.m_prices.size(); ++i) {
            const auto& row = m_model.m_prices.at(i);
            const auto& bare = m_bare.rows()[static_cast<std::size_t>(i)];
            isSame = TC::detail::isSamePrice(row.price, bare.price) && row.buyVolume == bare.buyVolume &&
                     row.sellVolume == bare.sellVolume;
        }
        if (!isSame)
            throw std::runtime_error("the distribution and the bare bisection differ");
        clear();
    }

    QuoteDay m_day;
    Distribution m_model;
    BareBisection m_bare;
    std::vector<Tick> m_ticks;
};

// For each snapshot of a day.
Body prepareDistribution(void (DistributionRounds::*work)())
{
    auto rounds = std::make_shared<DistributionRounds>();
    return {[rounds, work](int) {
                ((*rounds).*work)();
                return QuoteDay::kSnapshots;
            },
            [rounds] { rounds->clear(); }};
}

} // namespace

std::vector<Operation> statisticsOperations()
{
    return {
        {"status_live", prepareStatusLive},
        {"distribution_history", [] { return prepareDistribution(&DistributionRounds::takeHistory); }},
        {"distribution_bisection", [] { return prepareDistribution(&DistributionRounds::bisect); }},
    };
}

} // namespace bench
