#include "tests/tessimodel/oracle/generator.h"

#include "tests/tessimodel/oracle/market.h"
#include "tests/tessimodel/oracle/shrinkingsteps.h"
#include "tests/tessimodel/oracle/stepwriter.h"

#include <algorithm>

namespace tests::oracle {

namespace {

using enum Step::Action;

class Writer : StepList<Step, Market> {
public:
    Writer(unsigned long long seed, int steps)
        : StepList(seed, static_cast<std::size_t>(steps))
    {
        m_stream.seed = seed;
        m_stream.suppressTickFlags = m_dice.oneIn(6);
        m_stream.instrument = anyInstrument();
        m_followed = m_stream.instrument;
    }

    Stream write()
    {
        warmUp();
        if (!m_dice.oneIn(12))
            openSession();
        while (!isFull())
            next();
        m_stream.steps = finished();
        return m_stream;
    }

private:
    int anyInstrument()
    {
        // The last one has no usable tick, so that nothing of it gets a row.
        const int count = static_cast<int>(instruments().size());
        return m_dice.oneIn(60) ? count - 1 : m_dice.below(count - 1);
    }

    // What happened before the panel came.
    void warmUp()
    {
        const int events = m_dice.below(60);
        for (int i = 0; i < events; ++i) {
            if (m_dice.percent(70))
                m_market.order();
            else if (m_dice.percent(90))
                m_market.trade();
            else
                m_market.snapshot();
        }
    }

    void deliver(Step::Action action, int kind, std::vector<RecordPtr> records)
    {
        Step& step = add(action);
        step.kind = kind;
        step.works = !m_dice.oneIn(8);
        auto batch = std::make_shared<Batch>();
        batch->instrument = m_dice.oneIn(80) || m_followed < 0 ? anyInstrument() : m_followed;
        batch->records = std::move(records);
        if (m_dice.oneIn(50))
            spoil(batch->records);
        if (!m_dice.oneIn(250))
            step.batch = batch;
    }

    void spoil(std::vector<RecordPtr>& records)
    {
        const RecordPtr odd = m_dice.oneIn(2) ? nullptr : m_dice.oneIn(2) ? m_market.levelOne() : m_market.snapshot();
        const int place = m_dice.below(static_cast<int>(records.size()) + 1);
        records.insert(records.begin() + place, odd);
        if (m_dice.oneIn(3))
            std::swap(records[static_cast<std::size_t>(m_dice.below(static_cast<int>(records.size())))],
                      records.back());
        if (m_dice.oneIn(4))
            records.clear();
    }

    // A history whole, or in pieces of which the later ones come on top.
    void deliverHistory(Step::Action action, const std::vector<RecordPtr>& all)
    {
        const std::size_t pieces = m_dice.oneIn(4) ? 2 + static_cast<std::size_t>(m_dice.below(2)) : 1;
        std::size_t from = 0;
        for (std::size_t piece = 1; piece <= pieces; ++piece) {
            const std::size_t to = all.size() * piece / pieces;
            const auto at = [&all](std::size_t i) { return all.begin() + static_cast<std::ptrdiff_t>(i); };
            deliver(action, piece == 1 && !m_dice.oneIn(20) ? 0 : 3, {at(from), at(to)});
            from = m_dice.oneIn(10) ? to / 2 : to; // pieces may overlap
            if (m_dice.oneIn(6))
                liveTick();
        }
    }

    // Histories without a tick are histories too.
    void openEmptySession()
    {
        deliver(Orders, 0, {});
        deliver(Trades, 0, {});
        if (m_dice.oneIn(2))
            live(Snapshots, &Market::snapshot);
    }

    void openSession()
    {
        if (m_dice.oneIn(10)) {
            openEmptySession();
            return;
        }
        const bool ordersFirst = m_dice.oneIn(2);
        deliverHistory(ordersFirst ? Orders : Trades, ordersFirst ? m_market.orders() : m_market.trades());
        if (m_dice.oneIn(3))
            next();
        deliverHistory(ordersFirst ? Trades : Orders, ordersFirst ? m_market.trades() : m_market.orders());
        if (m_dice.oneIn(3))
            deliverHistory(Snapshots, m_market.snapshots());
    }

    void live(Step::Action action, RecordPtr (Market::*make)())
    {
        auto records = liveRecords(40, make);
        deliver(action, liveKind(), std::move(records));
    }

    void liveTick()
    {
        if (m_dice.percent(66))
            live(Orders, &Market::order);
        else
            live(Trades, &Market::trade);
    }

    // To another instrument, to none, or back; now and then without the clear that belongs to it.
    void changeInstrument()
    {
        if (!m_dice.oneIn(4))
            add(Clear);
        if (m_dice.oneIn(4)) { // none for a while
            follow(-1);
            liveTick();
            add(Read);
        }
        follow(m_dice.oneIn(12) ? -1 : m_dice.oneIn(2) ? m_stream.instrument : anyInstrument());
        if (m_dice.oneIn(2))
            add(Read, m_dice.oneIn(2));
        if (!m_dice.oneIn(4))
            openSession();
    }

    void repeatHistory()
    {
        const int which = m_dice.below(3);
        const std::vector<RecordPtr>& all = which == 0   ? m_market.orders()
                                            : which == 1 ? m_market.trades()
                                                         : m_market.snapshots();
        deliver(which == 0 ? Orders : which == 1 ? Trades : Snapshots, m_dice.oneIn(2) ? 0 : 3, all);
    }

    void next()
    {
        const int what = m_dice.below(1000);
        if (what < 560)
            liveTick();
        else if (what < 680)
            live(Snapshots, &Market::snapshot);
        else if (what < 810)
            add(Read, m_dice.oneIn(3));
        else if (what < 822)
            add(ReadSide, m_dice.oneIn(2));
        else if (what < 920)
            add(Queue, m_dice.oneIn(2), m_market.queuePrice());
        else if (what < 945)
            add(Work);
        else if (what < 950)
            add(Release);
        else if (what < 957)
            add(NewLoan, m_dice.oneIn(2));
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
                add(Read);
            if (!m_dice.oneIn(4))
                openSession();
        } else if (what < 987) {
            changeInstrument();
        } else if (what < 989) {
            add(TradeDataChanged);
        }
    }

    Stream m_stream;
};

rc::Seq<Stream> smallerStreams(const Stream& stream)
{
    const auto with = [stream](std::vector<Step>&& steps) {
        Stream smaller = stream;
        smaller.steps = std::move(steps);
        return smaller;
    };
    return rc::seq::concat(rc::seq::map(rc::shrink::removeChunks(stream.steps), with),
                           rc::seq::map(rc::shrink::eachElement(stream.steps, &withFewerRecords<Step>), with));
}

} // namespace

Stream makeStream(unsigned long long seed, int steps)
{
    return Writer(seed, steps).write();
}

rc::Gen<Stream> streams(int steps)
{
    return rc::Gen<Stream>([steps](const rc::Random& random, int) {
        rc::Random source = random;
        return rc::shrinkable::shrinkRecur(makeStream(source.next(), steps), &smallerStreams);
    });
}

} // namespace tests::oracle
