#pragma once

#include "tests/tessimodel/oracle/dice.h"
#include "tests/tessimodel/oracle/streams.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace tests::oracle {

// Writes steps out of a market, up to a number of them.
template <class Step, class Market>
class StepList {
protected:
    using Action = typename Step::Action;
    using Records = std::vector<RecordPtr>;

    StepList(unsigned long long seed, std::size_t steps)
        : m_dice(seed)
        , m_market(m_dice)
        , m_limit(steps)
    {}

    Step& add(Action action)
    {
        Step& step = m_steps.emplace_back();
        step.action = action;
        return step;
    }

    Step& add(Action action, bool flag, double price = 0)
    {
        Step& step = add(action);
        step.flag = flag;
        step.price = price;
        return step;
    }

    void follow(int instrument)
    {
        m_followed = instrument;
        add(Action::Follow).instrument = instrument;
    }

    // Mostly one, else a few: of several records in a live batch only the last one counts.
    Records liveRecords(int fewOdds, RecordPtr (Market::*make)())
    {
        Records records;
        const int count = m_dice.oneIn(fewOdds) ? m_dice.below(4) : 1;
        for (int i = 0; i < count; ++i)
            records.push_back((m_market.*make)());
        return records;
    }

    // Every kind that is none of a history.
    int liveKind() { return m_dice.oneIn(10) ? m_dice.pick({2, -1, 7}) : 1; }

    bool isFull() const { return m_steps.size() >= m_limit; }

    std::vector<Step> finished()
    {
        m_steps.resize(m_limit);
        return std::move(m_steps);
    }

    Dice m_dice;
    Market m_market;
    int m_followed = 0;

private:
    const std::size_t m_limit;
    std::vector<Step> m_steps;
};

// Steps of a model that is fed with batches.
template <class Step, class Market>
class StepWriter : protected StepList<Step, Market> {
public:
    virtual ~StepWriter() = default;

protected:
    using Base = StepList<Step, Market>;
    using Base::m_dice;
    using Base::m_followed;
    using Base::m_market;
    using typename Base::Action;
    using typename Base::Records;

    using Base::Base;

    Step& deliver(Action action, int kind, Records records)
    {
        auto batch = std::make_shared<Batch>();
        batch->instrument = m_followed < 0 ? 0 : m_followed;
        batch->records = std::move(records);
        if (m_dice.oneIn(50))
            spoil(batch->records);
        Step& step = this->add(action);
        step.kind = kind;
        step.works = !m_dice.oneIn(8);
        step.batch = batch;
        return step;
    }

    Step& live(Action action, RecordPtr (Market::*make)())
    {
        Records records = this->liveRecords(30, make);
        return deliver(action, this->liveKind(), std::move(records));
    }

    // Whole, or in pieces of which the later ones come on top and may overlap.
    void deliverHistory(Action action, const Records& all)
    {
        const std::size_t pieces = m_dice.oneIn(4) ? 2 : 1;
        std::size_t from = 0;
        for (std::size_t piece = 1; piece <= pieces; ++piece) {
            const std::size_t to = all.size() * piece / pieces;
            const auto at = [&all](std::size_t i) { return all.begin() + static_cast<std::ptrdiff_t>(i); };
            deliver(action, piece == 1 && !m_dice.oneIn(20) ? 0 : 3, {at(from), at(to)});
            from = m_dice.oneIn(10) ? to / 2 : to;
        }
    }

    // A record that only this model takes.
    virtual RecordPtr ownRecord() = 0;

private:
    void spoil(Records& records)
    {
        const auto any = [this, &records] { return m_dice.below(static_cast<int>(records.size())); };
        records.push_back(m_dice.oneIn(2) ? nullptr : foreign());
        std::swap(records.back(), records[static_cast<std::size_t>(any())]);
        if (m_dice.oneIn(3))
            std::swap(records.back(), records[static_cast<std::size_t>(any())]);
        if (m_dice.oneIn(4))
            records.clear();
    }

    // A record for a stream that does not take it.
    RecordPtr foreign()
    {
        using Make = RecordPtr (Market::*)();
        const Make make = m_dice.template pick<Make>({&Market::order, &Market::trade, &Market::snapshot});
        return m_dice.oneIn(3) ? ownRecord() : m_dice.oneIn(3) ? m_market.levelOne() : (m_market.*make)();
    }
};

} // namespace tests::oracle
