#include "tests/tessimodel/oracle/status/statusgenerator.h"

#include "tests/support/oddvalues.h"
#include "tests/tessimodel/oracle/snapshots/snapshotsteps.h"

#include <cfloat>
#include <climits>

namespace tests::oracle::status {

namespace {

using namespace snapshots;

class Writer : public SnapshotSteps<StatusStep> {
public:
    using enum StatusStep::Action;
    using SnapshotSteps::SnapshotSteps;

private:
    void beforeFollowing() override
    {
        if (m_dice.oneIn(4))
            changeLoan();
        if (m_dice.oneIn(10))
            withoutInstrument();
    }

    void history(int fresh) override
    {
        pass(fresh);
        StatusStep& step = add(Batch);
        step.ignored = anyIgnored();
        step.kind = m_dice.oneIn(3) ? 3 : 0;
        step.records = m_market.history(kLongestHistory);
    }

    void live() { SnapshotSteps::live({2, 4, -1, 5, 3, INT_MIN, INT_MAX}, 12); }

    // Any two records of the day, known to the model or not.
    void anyPair(Action action)
    {
        if (m_dice.oneIn(2))
            m_market.next();
        StatusStep& step = add(action);
        step.kind = anyIgnored();
        step.volume = m_dice.oneIn(3) ? m_market.oddVolume() : m_dice.between(-5, 5000);
        step.records = {m_market.past(), m_dice.oneIn(3) ? nullptr : m_market.past()};
    }

    void next() override
    {
        const int what = m_dice.below(1000);
        if (what < 650)
            live();
        else if (what < 730)
            history(m_dice.oneIn(2) ? 0 : m_dice.between(0, 4));
        else if (what < 810)
            anyPair(Connect);
        else if (what < 830)
            anyPair(Calc);
        else if (what < 870)
            changeSetting();
        else if (what < 880)
            add(Batch).kind = m_dice.pick({0, 0, 3, 1}); // an empty one
        else
            changeModel();
    }

    // Batches change nothing then, but a pair of records can be shown.
    void withoutInstrument() override
    {
        live();
        history(3);
        anyPair(Connect);
        if (m_dice.oneIn(2))
            changeSetting();
        anyPair(m_dice.pick({Connect, Calc}));
    }

    void changeLoan()
    {
        add(NewLoan).on = !m_dice.oneIn(4);
        add(Factor).number = m_dice.pick({1, 10, -1, 3});
    }

    void changeSetting()
    {
        const int what = m_dice.below(4);
        if (what == 0)
            add(PriceTick).value = m_dice.pick({0.001, 0.01, 0.01, 0.2, 0.25, 1e-6, 0.0, -0.01, kNaN, kInfinity});
        else if (what == 1)
            add(LastClose).value = m_dice.pick({kNaN, kInfinity, -kInfinity, DBL_MAX, 0.0, -DBL_MAX, 12.0});
        else
            changeLoan();
    }

    void changeModel()
    {
        const int what = m_dice.below(40);
        if (what < 16) {
            if (m_dice.oneIn(2))
                add(Clear);
            follow(m_dice.oneIn(12) ? kUnknownInstrument : m_dice.oneIn(4) ? m_followed : anyInstrument());
        } else if (what < 20) {
            add(Clear);
        } else if (what < 22) {
            renew(m_followed);
        } else if (what < 24) {
            add(Construct).number = m_dice.below(kModels);
            follow(m_dice.oneIn(2) ? m_followed : anyInstrument());
        } else {
            add(m_dice.pick({CopyConstruct, CopyAssign, CopyAssign, Select, Select})).number = m_dice.below(kModels);
            if (m_dice.oneIn(4))
                add(Follow).number = m_followed;
        }
    }
};

} // namespace

std::vector<StatusStep> makeStatusSteps(unsigned long long seed)
{
    return Writer(seed).write(kStatusSteps);
}

} // namespace tests::oracle::status
