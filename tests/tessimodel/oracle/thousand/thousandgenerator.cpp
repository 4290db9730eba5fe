#include "tests/tessimodel/oracle/thousand/thousandgenerator.h"

#include "tests/tessimodel/oracle/stepwriter.h"
#include "tests/tessimodel/oracle/thousand/thousandmarket.h"

#include <algorithm>
#include <climits>

namespace tests::oracle::thousand {

namespace {

class Writer : public StepWriter<ThousandStep, ThousandMarket> {
public:
    using enum ThousandStep::Action;

    explicit Writer(unsigned long long seed)
        : StepWriter(seed, kSteps)
    {}

    std::vector<ThousandStep> write()
    {
        if (!m_dice.oneIn(20))
            follow(anyInstrument());
        for (int events = m_dice.between(10, 40); events > 0; --events)
            m_market.levelTwo();
        if (!m_dice.oneIn(3))
            deliverHistory(Snapshots, lastSnapshots());
        while (!isFull())
            next();
        return finished();
    }

private:
    int anyInstrument() { return m_dice.below(static_cast<int>(instruments().size())); }

    RecordPtr ownRecord() override { return m_market.record(); }

    Records lastSnapshots()
    {
        const Records& all = m_market.snapshots();
        const auto count = std::min(all.size(), static_cast<std::size_t>(m_dice.between(1, 30)));
        return {all.end() - static_cast<std::ptrdiff_t>(count), all.end()};
    }

    // At times of another instrument, or no batch at all.
    void liveBatch(Action action, RecordPtr (ThousandMarket::*make)())
    {
        ThousandStep& step = live(action, make);
        if (m_dice.oneIn(60)) {
            auto batch = std::make_shared<Batch>(*step.batch);
            batch->instrument = anyInstrument();
            step.batch = batch;
        }
        if (m_dice.oneIn(200))
            step.batch = nullptr;
    }

    void read()
    {
        const bool byQuoter = m_dice.oneIn(3);
        if (m_dice.oneIn(6))
            add(ReadSide, m_dice.oneIn(2)).byQuoter = byQuoter;
        else
            add(Read, m_dice.oneIn(3)).byQuoter = byQuoter;
    }

    // To another instrument, to none, or back; now and then without the clear that belongs to it.
    void changeInstrument()
    {
        if (!m_dice.oneIn(3))
            add(Clear);
        if (m_dice.oneIn(3)) { // none for a while
            follow(-1);
            liveBatch(Thousand, &ThousandMarket::record);
            read();
        }
        follow(m_dice.oneIn(12) ? -1 : anyInstrument());
        read();
    }

    void next()
    {
        const int what = m_dice.below(1000);
        if (what < 370)
            liveBatch(Thousand, &ThousandMarket::record);
        else if (what < 580)
            liveBatch(Snapshots, &ThousandMarket::levelTwo);
        else if (what < 800)
            read();
        else if (what < 830)
            deliverHistory(Snapshots, lastSnapshots());
        else if (what < 870)
            add(Queue, m_dice.oneIn(2), m_market.price()).volumes = m_market.queueVolumes();
        else if (what < 890)
            add(Work);
        else if (what < 930)
            reserve();
        else
            rare(what);
    }

    // At the limit, or near the market's time.
    void reserve()
    {
        if (m_dice.oneIn(2))
            add(Reserve, true).time = m_dice.pick<__int64>({-10000, -10001, -9999, 10000, 10001, INT_MIN, 1LL << 31});
        else
            add(Reserve).time = m_dice.oneIn(5) ? anyTime() : m_market.now() + m_dice.between(-25000, 15000);
    }

    __int64 anyTime() { return m_dice.pick<__int64>({0, -1, INT_MIN, INT_MAX, LLONG_MAX, LLONG_MIN, 1LL << 32}); }

    void rare(int what)
    {
        if (what < 940)
            m_market.rest();
        else if (what < 948)
            add(NewLoan, m_dice.oneIn(2));
        else if (what < 960)
            add(Clear);
        else if (what < 970)
            changeInstrument();
        else if (what < 977)
            add(Own, m_dice.oneIn(2), m_market.price());
        else if (what < 982)
            add(Save).instrument = m_dice.oneIn(2) ? std::max(m_followed, 0) : anyInstrument();
        else if (what < 984)
            add(Forget);
        else if (what < 989)
            add(Release);
        else if (what < 992)
            add(InitParams);
    }
};

} // namespace

std::vector<ThousandStep> makeThousandSteps(unsigned long long seed)
{
    return Writer(seed).write();
}

} // namespace tests::oracle::thousand
