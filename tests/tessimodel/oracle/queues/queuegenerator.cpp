#include "tests/tessimodel/oracle/queues/queuegenerator.h"

#include "tests/tessimodel/oracle/queues/queuemarket.h"
#include "tests/tessimodel/oracle/stepwriter.h"

namespace tests::oracle::queues {

namespace {

class Writer : public StepWriter<ModelStep, QueueMarket> {
public:
    using enum ModelStep::Action;

    explicit Writer(unsigned long long seed)
        : StepWriter(seed, kSteps)
    {}

    std::vector<ModelStep> write()
    {
        if (!m_dice.oneIn(20))
            follow(anyInstrument());
        warmUp();
        if (!m_dice.oneIn(12))
            openSession();
        while (!isFull())
            next();
        return finished();
    }

private:
    // Mostly of Shenzhen.
    int anyInstrument()
    {
        return m_dice.oneIn(6) ? m_dice.below(static_cast<int>(instruments().size())) : m_dice.pick({0, 2, 3});
    }

    RecordPtr ownRecord() override { return m_market.queue(); }

    // What happened before the panel came.
    void warmUp()
    {
        const int events = m_dice.below(60);
        for (int i = 0; i < events; ++i) {
            if (m_dice.percent(70))
                m_market.order();
            else
                m_market.trade();
        }
    }

    void openSession()
    {
        const bool isEmpty = m_dice.oneIn(10);
        const bool isOrdersFirst = m_dice.oneIn(2);
        for (const bool isOrders : {isOrdersFirst, !isOrdersFirst}) {
            if (isEmpty)
                deliver(isOrders ? Orders : Trades, 0, {});
            else
                deliverHistory(isOrders ? Orders : Trades, isOrders ? m_market.orders() : m_market.trades());
            if (m_dice.oneIn(3))
                next();
        }
    }

    void liveTick()
    {
        if (m_dice.percent(66))
            live(Orders, &QueueMarket::order);
        else
            live(Trades, &QueueMarket::trade);
    }

    void liveSnapshot()
    {
        const bool isQueueFirst = m_dice.oneIn(3);
        for (const bool isQueue : {isQueueFirst, !isQueueFirst}) {
            if (m_dice.oneIn(5))
                continue;
            if (isQueue)
                live(Queues, &QueueMarket::queue);
            else
                live(Snapshots, &QueueMarket::levelTwo);
            if (m_dice.oneIn(5))
                next();
        }
    }

    // To another instrument, to none, or back; now and then without the clear that belongs to it.
    void changeInstrument()
    {
        if (!m_dice.oneIn(4))
            add(Clear);
        if (m_dice.oneIn(4)) { // none for a while
            follow(-1);
            liveTick();
            liveSnapshot();
            add(Read, m_dice.oneIn(2));
        }
        follow(m_dice.oneIn(12) ? -1 : anyInstrument());
        if (m_dice.oneIn(2))
            add(Read, true);
        if (!m_dice.oneIn(4))
            openSession();
    }

    void repeatHistory()
    {
        const int kind = m_dice.oneIn(2) ? 0 : 3;
        if (m_dice.oneIn(4))
            deliver(Snapshots, kind, m_market.snapshots());
        else if (m_dice.oneIn(2))
            deliver(Orders, kind, m_market.orders());
        else
            deliver(Trades, kind, m_market.trades());
    }

    void next()
    {
        const int what = m_dice.below(1000);
        if (what < 570)
            liveTick();
        else if (what < 680)
            liveSnapshot();
        else if (what < 780)
            add(Read, m_dice.oneIn(3));
        else if (what < 800)
            add(ReadBids, m_dice.oneIn(2));
        else if (what < 920)
            add(Level, m_dice.oneIn(2), m_market.queuePrice());
        else if (what < 940)
            add(Work);
        else if (what < 960)
            add(Clean);
        else
            rare(what);
    }

    void rare(int what)
    {
        if (what < 970) {
            m_market.rest();
        } else if (what < 978) {
            repeatHistory();
        } else if (what < 982) {
            add(Clear);
            if (m_dice.oneIn(2))
                add(Read, true);
            if (!m_dice.oneIn(4))
                openSession();
        } else if (what < 986) {
            changeInstrument();
        } else if (what < 989) {
            add(BookOf).instrument = m_dice.oneIn(3) ? m_followed : m_dice.between(-1, 3);
            if (m_dice.oneIn(2))
                repeatHistory();
        } else if (what < 991) {
            add(InitParams);
        } else if (what < 993) {
            add(NewTick).price = m_dice.pick({0.01, 0.005, 0.001, 0.0});
        }
    }
};

} // namespace

std::vector<ModelStep> makeModelSteps(unsigned long long seed)
{
    return Writer(seed).write();
}

} // namespace tests::oracle::queues
