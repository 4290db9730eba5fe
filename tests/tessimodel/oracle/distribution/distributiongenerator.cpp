#include "tests/tessimodel/oracle/distribution/distributiongenerator.h"

#include "tests/tessimodel/oracle/snapshots/snapshotsteps.h"

#include <climits>

namespace tests::oracle::distribution {

namespace {

using namespace snapshots;

class Writer : public SnapshotSteps<DistributionStep> {
public:
    using enum DistributionStep::Action;
    using SnapshotSteps::SnapshotSteps;

private:
    void beforeFollowing() override
    {
        if (m_dice.oneIn(10))
            live();
        if (!m_dice.oneIn(3))
            chooseDate();
    }

    void chooseDate()
    {
        DistributionStep& step = add(Dates);
        step.on = !m_dice.oneIn(4);
        step.number = m_dice.below(kDates);
    }

    void withoutInstrument() override
    {
        history(3);
        live();
        if (!m_dice.oneIn(3))
            add(Follow).number = m_followed;
    }

    int anyOrUnknown() { return m_dice.oneIn(15) ? kUnknownInstrument : anyInstrument(); }

    Records piece(int fresh)
    {
        pass(fresh);
        return m_market.history(kLongestHistory);
    }

    void history(int fresh) override
    {
        DistributionStep& step = add(Batch);
        step.ignored = anyIgnored();
        step.kind = m_dice.oneIn(2) ? 3 : 0;
        step.records = piece(fresh);
    }

    void live() { SnapshotSteps::live({2, 2, 4, -1, 5, INT_MIN, INT_MAX}, 10); }

    // Histories that meet, and what comes in meanwhile.
    void together()
    {
        DistributionStep& step = add(Together);
        step.kind = m_dice.oneIn(3) ? 0 : 3;
        step.on = !m_dice.oneIn(3);
        step.records = piece(m_dice.between(0, 5));
        const int pieces = m_dice.between(0, 2);
        for (int i = 0; i < pieces; ++i)
            step.pieces.push_back(piece(m_dice.between(0, 4)));
        const int what = m_dice.below(3);
        if (what == 0)
            step.pushes.push_back({m_dice.oneIn(10) ? m_market.foreign() : m_market.next()});
        else if (what == 1 && m_dice.oneIn(2))
            step.instruments.push_back(m_dice.oneIn(2) ? kUnknownInstrument : anyOrUnknown());
    }

    Tick anyTick()
    {
        return {m_market.price(), narrowed(m_market.volume()),
                m_dice.oneIn(4) ? narrowed(m_market.oddVolume()) : m_dice.between(-2, 300), m_dice.oneIn(2)};
    }

    static int narrowed(__int64 value) { return static_cast<int>(value); }

    void series()
    {
        if (m_dice.oneIn(2))
            chooseDate();
        if (m_dice.oneIn(2)) {
            DistributionStep& step = add(Pending);
            const int count = m_dice.below(4);
            for (int i = 0; i < count; ++i)
                step.ticks.push_back(anyTick());
        }
        if (m_dice.oneIn(6))
            add(Clear);
        DistributionStep& step = add(Series);
        const int rows = m_dice.below(7);
        double volume = static_cast<double>(m_dice.between(0, 5000));
        for (int i = 0; i < rows; ++i) {
            volume += m_dice.pick({0.0, 1.0, 1.5, 0.4, 100.0, -3.0, -0.7});
            step.series.prices.push_back(m_market.price());
            step.series.volumes.push_back(m_dice.oneIn(6) ? oddVolume() : volume);
        }
        step.series.rowCount = m_dice.oneIn(6) ? m_dice.pick({rows + 1, rows - 1, -1, INT_MAX, INT_MIN, 0}) : rows;
        if (m_dice.oneIn(12) && rows > 0)
            (m_dice.oneIn(2) ? step.series.prices : step.series.volumes).pop_back();
    }

    double oddVolume()
    {
        return m_dice.oneIn(2) ? m_market.oddDouble()
                               : m_dice.pick({2147483647.0, 2147483648.0, 2147483647.5, -2147483648.0, -2147483648.9,
                                              -2147483649.0, 4294967297.0, 0.5, -0.5, 1e-5, 1.1e-5, -7.0, 6e9});
    }

    // What the panels never call, but a class that derives from the model may.
    void direct()
    {
        const int what = m_dice.below(4);
        if (what == 0)
            add(Record).records = {m_dice.oneIn(2) ? m_market.next() : m_market.past()};
        else if (what == 1)
            add(Thread).records = piece(2);
        else
            add(OneTick).ticks = {anyTick()};
    }

    void next() override
    {
        const int what = m_dice.below(1000);
        if (what < 700)
            live();
        else if (what < 770)
            history(m_dice.oneIn(2) ? 0 : m_dice.between(0, 4));
        else if (what < 810)
            together();
        else if (what < 850)
            direct();
        else if (what < 890)
            series();
        else if (what < 905)
            add(Batch).kind = m_dice.pick({0, 3, 1, 2, 4, -1}); // an empty one
        else
            changeSetting();
    }

    void changeSetting()
    {
        const int what = m_dice.below(20);
        if (what < 8) {
            if (m_dice.oneIn(2))
                add(Clear);
            follow(m_dice.oneIn(4) ? m_followed : anyOrUnknown());
        } else if (what < 12) {
            chooseDate();
        } else if (what < 15) {
            renew(m_followed);
        } else if (what < 19) {
            add(Clear);
        } else {
            add(Construct);
            if (m_dice.oneIn(2))
                chooseDate();
            follow(anyOrUnknown());
        }
    }
};

} // namespace

std::vector<DistributionStep> makeDistributionSteps(unsigned long long seed)
{
    return Writer(seed).write(kDistributionSteps);
}

} // namespace tests::oracle::distribution
