#pragma once

#include "tests/tessimodel/oracle/dice.h"
#include "tests/tessimodel/oracle/snapshots/snapshotinstruments.h"
#include "tests/tessimodel/oracle/snapshots/snapshotmarket.h"

#include <climits>
#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

namespace tests::oracle::snapshots {

inline constexpr int kLongestHistory = 14; // in snapshots, before it is spoiled

// Writes the steps of a model that follows an instrument and is fed with its snapshots.
template <class Step>
class SnapshotSteps {
public:
    explicit SnapshotSteps(unsigned long long seed)
        : m_dice(seed)
        , m_market(m_dice)
        , m_seed(seed)
    {}

    virtual ~SnapshotSteps() = default;

    std::vector<Step> write(std::size_t count)
    {
        m_market.open(snapshotInstruments().front());
        beforeFollowing();
        if (!m_dice.oneIn(30))
            follow(static_cast<int>(m_seed % snapshotInstruments().size())); // none is missed when seeds count up
        while (m_steps.size() < count)
            next();
        m_steps.resize(count);
        return std::move(m_steps);
    }

protected:
    using Action = typename Step::Action;

    virtual void beforeFollowing() = 0;
    virtual void withoutInstrument() = 0; // behind an instrument that the terminal does not know
    virtual void next() = 0;              // a step at least

    // A batch with the end of the day so far, behind that many fresh snapshots.
    virtual void history(int fresh) = 0;

    Step& add(Action action)
    {
        Step& step = m_steps.emplace_back();
        step.action = action;
        return step;
    }

    void follow(int instrument)
    {
        if (instrument != kUnknownInstrument && m_dice.oneIn(3))
            renew(instrument);
        add(Action::Follow).number = instrument;
        if (instrument == kUnknownInstrument) {
            withoutInstrument();
            return;
        }
        m_followed = instrument;
        openDay();
        if (m_dice.oneIn(2))
            history(m_dice.between(0, 12));
    }

    void renew(int instrument)
    {
        Step& step = add(Action::Renew);
        step.number = instrument;
        step.facts = m_dice.below(kFacts);
    }

    // Mostly of kind 1 and of one record.
    void live(std::initializer_list<int> otherKinds, int oddsOfOtherCounts)
    {
        if (m_market.isOver()) {
            openDay();
            history(m_dice.between(0, 6));
        }
        Step& step = add(Action::Batch);
        step.ignored = anyIgnored();
        step.kind = m_dice.oneIn(6) ? m_dice.pick(otherKinds) : 1;
        const int count = m_dice.oneIn(oddsOfOtherCounts) ? m_dice.below(4) : 1;
        for (int i = 0; i < count; ++i)
            step.records.push_back(m_dice.oneIn(30)   ? m_market.foreign()
                                   : m_dice.oneIn(20) ? m_market.past()
                                                      : m_market.next());
    }

    // Snapshots that the model is not told of as they come in.
    void pass(int fresh)
    {
        for (int i = 0; i < fresh; ++i)
            m_market.next();
    }

    int anyInstrument() { return m_dice.below(static_cast<int>(snapshotInstruments().size())); }
    int anyIgnored() { return m_dice.pick({0, 7, -1, INT_MIN, INT_MAX}); }

    Dice m_dice;
    SnapshotMarket m_market;
    int m_followed = 0;

private:
    void openDay() { m_market.open(snapshotInstruments()[static_cast<std::size_t>(m_followed)]); }

    const unsigned long long m_seed;
    std::vector<Step> m_steps;
};

} // namespace tests::oracle::snapshots
