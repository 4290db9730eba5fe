#include "tests/tessimodel/oracle/lists/listgenerator.h"

#include "tests/tessimodel/oracle/lists/listwriter.h"
#include "tests/tessimodel/oracle/wrapping.h"

#include <algorithm>
#include <climits>

namespace tests::oracle::lists {

namespace {

class OrderListWriter : Writer {
public:
    explicit OrderListWriter(unsigned long long seed)
        : Writer(seed, false)
    {}

    std::vector<ListStep> write()
    {
        for (int events = m_dice.below(60); events > 0; --events)
            make(m_dice.percent(65) ? Orders : Trades);
        open();
        while (!isFull())
            next();
        return finished();
    }

private:
    void open()
    {
        if (!m_dice.oneIn(4))
            deliverHistory(Orders);
        if (!m_dice.oneIn(4))
            deliverHistory(Trades);
    }

    void next()
    {
        const int what = m_dice.below(100);
        if (what < 48)
            live(Orders);
        else if (what < 80)
            live(Trades);
        else if (what < 82)
            add(FilterAnew);
        else if (!rare(m_dice.below(1000)))
            startAnew();
    }

    void startAnew()
    {
        if (m_dice.oneIn(2))
            clearSome();
        else
            changeInstrument();
        if (!m_dice.oneIn(3))
            open();
    }
};

class TradeListWriter : Writer {
public:
    explicit TradeListWriter(unsigned long long seed)
        : Writer(seed, true)
    {}

    std::vector<ListStep> write()
    {
        for (int events = m_dice.below(40); events > 0; --events) {
            const int what = m_dice.below(100);
            make(what < 30 ? Orders : what < 80 ? Trades : Snapshots);
        }
        open();
        while (!isFull())
            next();
        return finished();
    }

private:
    void open()
    {
        ListStep::Action order[] = {Orders, Trades, Snapshots};
        for (int i = 0; i < 3; ++i)
            std::swap(order[i], order[m_dice.below(3)]);
        for (const ListStep::Action action : order) {
            if (!m_dice.oneIn(10))
                deliverHistory(action);
            if (m_dice.oneIn(5))
                burst();
        }
    }

    // Some trades and the snapshot that has them, in any order.
    void burst()
    {
        Records trades;
        for (int count = m_dice.between(0, 4); count > 0; --count)
            trades.push_back(m_market.trade());
        const RecordPtr snapshot = m_dice.oneIn(4) ? nullptr : m_market.snapshot();
        const int count = static_cast<int>(trades.size());
        const int place = m_dice.oneIn(2) ? count : m_dice.below(count + 1);
        for (int i = 0; i <= count; ++i) {
            if (i == place && snapshot)
                deliver(Snapshots, 1, {snapshot});
            if (i < count)
                deliver(Trades, 1, {trades[static_cast<std::size_t>(i)]});
        }
    }

    void next()
    {
        const int what = m_dice.below(100);
        if (what < 36)
            burst();
        else if (what < 40)
            live(anyStream());
        else if (what < 48)
            live(Orders);
        else if (what < 67)
            search();
        else if (what < 82)
            look();
        else if (!rare(m_dice.below(1000)))
            startAnew();
    }

    int someSecond()
    {
        if (m_dice.oneIn(30))
            return m_dice.pick({-1, 0, INT_MAX, INT_MIN, m_market.second() + 100000});
        return m_market.second() - m_dice.pick({m_dice.below(5), m_dice.below(15), m_dice.below(60)});
    }

    void search()
    {
        if (m_dice.oneIn(5) && !m_market.snapshots().empty()) {
            reprice();
            return;
        }
        if (m_dice.oneIn(6)) {
            add(Match).instrument = mostlyFollowed(3);
            return;
        }
        const int hands = m_dice.oneIn(12) ? m_dice.pick({-1, INT_MAX, INT_MIN, 1410065410}) : m_dice.below(12);
        // Asked once more, or for just before, a second that has a pair by a split already.
        const int second = m_dice.oneIn(4) ? plus32(m_asked, -m_dice.below(3)) : someSecond();
        m_asked = std::max(second, 0);
        add(m_dice.oneIn(4) ? Split : Find, second, hands);
    }

    void reprice()
    {
        const Records& snapshots = m_market.snapshots();
        const int back = std::min(m_dice.below(3), static_cast<int>(snapshots.size()) - 1);
        const double price = m_market.nextPrice();
        ListStep& step = add(Reprice);
        step.record = snapshots[snapshots.size() - 1 - static_cast<std::size_t>(back)];
        step.price = price;
    }

    void look()
    {
        const int what = m_dice.below(10);
        if (what < 5) {
            const int from = someSecond();
            add(View, from, m_dice.oneIn(5) ? someSecond() : plus32(from, m_dice.below(30)));
        } else if (what < 8) {
            add(Recalculate);
        } else if (what < 9) {
            add(RecalculatePrices);
        } else {
            add(Height, m_dice.below(100));
        }
    }

    void startAnew()
    {
        if (m_dice.oneIn(2))
            clearSome();
        else
            changeInstrument();
        if (!m_dice.oneIn(3))
            open();
    }

    int m_asked = 0; // second of the last search
};

} // namespace

std::vector<ListStep> makeOrderListSteps(unsigned long long seed)
{
    return OrderListWriter(seed).write();
}

std::vector<ListStep> makeTradeListSteps(unsigned long long seed)
{
    return TradeListWriter(seed).write();
}

} // namespace tests::oracle::lists
