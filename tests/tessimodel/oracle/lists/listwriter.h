#pragma once

#include "tests/tessimodel/oracle/lists/listgenerator.h"
#include "tests/tessimodel/oracle/lists/listmarket.h"

#include <algorithm>
#include <utility>

namespace tests::oracle::lists {

// Writes what both lists go through.
class Writer {
public:
    using enum ListStep::Action;
    using Records = std::vector<RecordPtr>;

    Writer(unsigned long long seed, bool withSnapshots)
        : m_dice(seed)
        , m_market(m_dice)
        , m_hasSnapshots(withSnapshots)
    {
        m_home = anyInstrument();
        follow(m_home);
        if (m_dice.oneIn(6))
            setFilter();
    }

protected:
    int anyInstrument() { return m_dice.below(static_cast<int>(instruments().size())); }

    ListStep& add(ListStep::Action action, int first = 0, int second = 0)
    {
        ListStep& step = m_steps.emplace_back();
        step.action = action;
        step.lowersFlags = m_dice.oneIn(3);
        step.first = first;
        step.second = second;
        return step;
    }

    void setFilter() { add(SetFilter).filter = m_market.filter(); }

    void follow(int instrument)
    {
        m_followed = instrument;
        m_market.follow(instrument);
        add(Follow).instrument = instrument;
    }

    int mostlyFollowed(int odds)
    {
        return m_dice.oneIn(odds) ? (m_dice.oneIn(3) ? m_home : anyInstrument()) : std::max(m_followed, 0);
    }

    void deliver(ListStep::Action action, int kind, Records records)
    {
        auto batch = std::make_shared<Batch>();
        batch->instrument = mostlyFollowed(80);
        batch->records = std::move(records);
        if (m_dice.oneIn(50))
            spoil(batch->records);
        ListStep& step = add(action);
        step.kind = kind;
        step.works = !m_dice.oneIn(10);
        if (!m_dice.oneIn(250))
            step.batch = batch;
    }

    void spoil(Records& records)
    {
        const RecordPtr odd = m_dice.oneIn(3)   ? nullptr
                              : m_dice.oneIn(3) ? m_market.levelOne()
                              : m_dice.oneIn(2) ? m_market.snapshot()
                                                : m_market.order();
        records.insert(records.begin() + m_dice.below(static_cast<int>(records.size()) + 1), odd);
        if (m_dice.oneIn(3))
            std::swap(records[static_cast<std::size_t>(m_dice.below(static_cast<int>(records.size())))],
                      records.back());
        if (m_dice.oneIn(4))
            records.clear();
    }

    const Records& allOf(ListStep::Action action) const
    {
        return action == Orders ? m_market.orders() : action == Trades ? m_market.trades() : m_market.snapshots();
    }

    // The last part of the day so far, whole or in pieces, of which the later ones come on top.
    void deliverHistory(ListStep::Action action)
    {
        constexpr std::size_t kLongest = 60;
        const Records& all = allOf(action);
        const Records part(all.end() - static_cast<std::ptrdiff_t>(std::min(all.size(), kLongest)), all.end());
        const std::size_t pieces = m_dice.oneIn(4) ? 2 : 1;
        std::size_t from = 0;
        for (std::size_t piece = 1; piece <= pieces; ++piece) {
            const std::size_t to = part.size() * piece / pieces;
            const auto at = [&part](std::size_t i) { return part.begin() + static_cast<std::ptrdiff_t>(i); };
            deliver(action, piece == 1 && !m_dice.oneIn(12) ? 0 : 3, {at(from), at(to)});
            from = to;
            if (m_dice.oneIn(6))
                live(action);
        }
    }

    RecordPtr make(ListStep::Action action)
    {
        return action == Orders ? m_market.order() : action == Trades ? m_market.trade() : m_market.snapshot();
    }

    void live(ListStep::Action action)
    {
        // Of several records only the last one counts.
        Records records;
        const int count = m_dice.oneIn(40) ? m_dice.below(4) : 1;
        for (int i = 0; i < count; ++i)
            records.push_back(make(action));
        deliver(action, m_dice.oneIn(10) ? m_dice.pick({2, -1, 7, 4}) : 1, std::move(records));
    }

    ListStep::Action anyStream() { return m_dice.pick({Orders, Trades, m_hasSnapshots ? Snapshots : Trades}); }

    void appendDirectly()
    {
        const int instrument = mostlyFollowed(3);
        const RecordPtr record = make(anyStream());
        ListStep& step = add(Append);
        step.instrument = instrument;
        step.record = record;
    }

    // To another instrument, to none, or back; now and then without the clear that belongs to it.
    void changeInstrument()
    {
        if (!m_dice.oneIn(3))
            add(Clear);
        if (m_dice.oneIn(4)) { // none for a while
            follow(-1);
            live(anyStream());
        }
        follow(m_dice.oneIn(12) ? -1 : m_dice.oneIn(2) ? m_home : anyInstrument());
    }

    void clearSome()
    {
        if (m_dice.oneIn(3))
            add(Clear);
        else
            add(m_dice.pick({ClearOrders, ClearTrades, m_hasSnapshots ? ClearQuotes : ClearTrades}));
        if (m_followed >= 0 && m_dice.oneIn(2)) // the order list forgets its instrument
            follow(m_followed);
    }

    // What is rare in both lists; `what` is below 1000.
    bool rare(int what)
    {
        if (what < 300)
            m_market.rest();
        else if (what < 420)
            add(Work);
        else if (what < 470)
            add(Release);
        else if (what < 580)
            setFilter();
        else if (what < 860)
            appendDirectly();
        else if (what < 880)
            add(InitParams);
        else if (what < 925)
            deliverHistory(anyStream());
        else
            return false;
        return true;
    }

    std::vector<ListStep> finished()
    {
        m_steps.resize(kSteps);
        return std::move(m_steps);
    }

    bool isFull() const { return m_steps.size() >= kSteps; }

    Dice m_dice;
    ListMarket m_market;
    const bool m_hasSnapshots;
    std::vector<ListStep> m_steps;
    int m_followed = 0;
    int m_home = 0;
};

} // namespace tests::oracle::lists
