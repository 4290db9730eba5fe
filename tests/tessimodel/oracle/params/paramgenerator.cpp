#include "tests/tessimodel/oracle/params/paramgenerator.h"

#include "tests/tessimodel/oracle/params/parammarket.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <limits>

namespace tests::oracle::params {

namespace {

class Writer {
public:
    using enum ParamStep::Action;
    using Action = ParamStep::Action;

    explicit Writer(unsigned long long seed)
        : m_seed(seed)
        , m_dice(seed)
        , m_market(m_dice)
    {}

    std::vector<ParamStep> write()
    {
        m_market.open(0);
        chooseAnswers();
        if (m_dice.oneIn(3))
            add(Level2).on = true;
        if (m_dice.oneIn(10))
            withoutInstrument();
        if (!m_dice.oneIn(30))
            follow(static_cast<int>(m_seed % paramInstruments().size())); // none is missed when seeds count up
        if (m_dice.oneIn(4))
            chooseDate();
        while (m_steps.size() < kParamSteps)
            next();
        m_steps.resize(kParamSteps);
        return std::move(m_steps);
    }

private:
    ParamStep& add(Action action)
    {
        m_steps.emplace_back().action = action;
        return m_steps.back();
    }

    // Often one of the classes that have rules of their own.
    int anyInstrument()
    {
        const auto& all = paramInstruments();
        const int candidates = m_dice.oneIn(4) ? static_cast<int>(all.size()) : soundParamInstruments();
        const int wanted = m_dice.below(8);
        int chosen = 0;
        do {
            chosen = m_dice.below(candidates);
        } while (!isOfClass(all[static_cast<std::size_t>(chosen)], wanted));
        return chosen;
    }

    static bool isOfClass(const standin::InstrumentDescription& stock, int wanted)
    {
        const auto hasOneOf = [&stock](std::initializer_list<int> types) {
            return std::any_of(types.begin(), types.end(), [&](int type) { return stock.types.contains(type); });
        };
        switch (wanted) {
        case 0:
        case 1:
        case 2:
            return hasOneOf({277, 10006});
        case 3:
            return stock.classBits != 0;
        case 4:
            return !stock.gdrCode.empty();
        case 5:
            return hasOneOf({101, 196, 10004, 100013}) || stock.market == "SHO" || stock.market == "CICC" ||
                   stock.market == "HK" || stock.isIndex;
        default:
            return true;
        }
    }

    void follow(int instrument)
    {
        add(Follow).number = instrument;
        m_followed = std::max(instrument, 0);
        m_market.open(m_followed);
        if (m_dice.oneIn(3))
            history(m_dice.between(0, 12));
    }

    // Everything so far, or the latest part of it, spoiled now and then.
    void history(int fresh)
    {
        for (int i = 0; i < fresh; ++i)
            m_market.next();
        const auto& day = m_market.day();
        const auto count = std::min<std::size_t>(day.size(), static_cast<std::size_t>(m_dice.between(0, 12)));
        ParamStep& step = add(Quotes);
        step.ignored = anyIgnored();
        step.kind = m_dice.oneIn(15) ? 3 : 0;
        step.records = {day.end() - static_cast<std::ptrdiff_t>(count), day.end()};
        spoil(step.records);
    }

    void spoil(std::vector<RecordPtr>& records)
    {
        if (records.empty() || !m_dice.oneIn(8))
            return;
        const auto at = m_dice.below(static_cast<int>(records.size()));
        if (m_dice.oneIn(3))
            records.insert(records.begin() + at, m_market.foreign());
        else if (m_dice.oneIn(2))
            records.push_back(m_dice.oneIn(3) ? m_market.foreign() : records[static_cast<std::size_t>(at)]);
        else
            std::swap(records.back(), records[static_cast<std::size_t>(at)]);
    }

    void live()
    {
        if (m_market.isOver()) { // the next day, of the same instrument
            m_market.open(m_followed);
            history(m_dice.between(0, 6));
        }
        ParamStep& step = add(Quotes);
        step.ignored = anyIgnored();
        step.kind = m_dice.oneIn(8) ? m_dice.pick({3, 3, 2, -1, 50, INT_MIN}) : 1;
        const int count = m_dice.oneIn(15) ? m_dice.below(4) : 1;
        for (int i = 0; i < count; ++i)
            step.records.push_back(m_dice.oneIn(40) ? m_market.foreign() : m_market.next());
    }

    int anyIgnored() { return m_dice.pick({0, 7, -1, INT_MIN, INT_MAX}); }

    void next()
    {
        const int what = m_dice.below(1000);
        if (what < 560)
            live();
        else if (what < 690)
            sideInput();
        else if (what < 790)
            add(Connect).records = {m_market.past()};
        else if (what < 840)
            history(m_dice.oneIn(2) ? 0 : m_dice.between(0, 4));
        else if (what < 890)
            direct();
        else if (what < 960)
            changeSetting();
        else
            changeModel();
    }

    // Nothing comes in then, but rows can be written.
    void withoutInstrument()
    {
        live();
        for (int i = 0; i < 4; ++i) {
            m_market.next();
            add(WriteRecord).records = {m_market.past()};
        }
        sideInput();
    }

    void sideInput()
    {
        const int what = m_dice.below(130);
        if (what < 80) {
            add(Aux).aux = m_dice.oneIn(40) ? nullptr : m_market.aux();
        } else if (what < 100) {
            ParamStep& step = add(Dish);
            step.inner = dishVolume();
            step.outer = dishVolume();
        } else if (what < 120) {
            add(Average).value = m_market.anyPrice();
        } else {
            add(AverageOfRecord).records = {m_market.past()};
        }
    }

    __int64 dishVolume()
    {
        return m_dice.oneIn(2)   ? m_dice.pick<__int64>({99999, 100000, 100001, 99998, -1, 0})
               : m_dice.oneIn(2) ? m_market.oddVolume()
                                 : m_dice.between(0, 300000);
    }

    // What the panels never call, but a class that derives from the model may.
    void direct()
    {
        const int what = m_dice.below(7);
        if (what == 6) {
            add(PriceTick).value = m_dice.oneIn(3) ? m_market.oddDouble() : m_dice.pick({0.01, 0.001, 0.2, 0.25});
        } else if (what == 0) {
            ParamStep& step = add(WriteText);
            step.number = anyParam();
            step.text = m_dice.pick({"", "text", "--"});
            step.key = m_dice.pick({"", "", "ic_clr_global_equal"});
        } else if (what == 1) {
            ParamStep& step = add(WriteValue);
            step.number = anyParam();
            step.flag = m_dice.pick({0, 0x10000, 0x10000, 0x40000, 0x50000, -1});
            step.value = m_market.anyPrice();
            step.base = m_market.anyPrice();
        } else if (what == 2) {
            ParamStep& step = add(Colour);
            step.value = m_market.anyPrice();
            step.base = m_market.anyPrice();
        } else if (what == 3) {
            add(InitParams);
        } else {
            add(what == 4 ? WriteRecord : LastPrice).records = {m_market.past()};
        }
    }

    int anyParam()
    {
        return m_dice.oneIn(2) ? m_dice.below(54) : m_dice.pick({17, 41, 43, -1, 54, 1028, 1024, INT_MAX, INT_MIN});
    }

    void changeSetting()
    {
        const int what = m_dice.below(10);
        if (what <= 1)
            add(LastClose).value = m_market.anyPrice();
        else if (what == 2)
            add(Level2).on = m_dice.oneIn(2);
        else if (what == 3)
            chooseDate();
        else if (what <= 5)
            switchAnswer();
        else
            changeReceiptFacts();
    }

    // Only where there is one.
    void changeReceiptFacts()
    {
        constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        if (paramInstruments()[static_cast<std::size_t>(m_followed)].gdrCode.empty())
            return;
        const auto anyTerm = [this] { return m_dice.pick({10, 4, 1, 7, 0, -6, INT_MIN, INT_MAX}); };
        add(Receipt).receipt = {m_dice.pick({12.5, 0.01, 1.25, 9e-6, -3.5, 0.0, kNan, kInfinity, -kInfinity, DBL_MAX}),
                                m_dice.pick({912.5, 912.5, 100.0, 0.0, -100.0, kNan, kInfinity, DBL_MAX}), anyTerm(),
                                anyTerm()};
    }

    void chooseAnswers()
    {
        constexpr int kPercent[kAnswers] = {8, 25, 50, 60, 25, 50, 20, 40}; // of not being signed in, else of a yes
        for (int answer = 0; answer < kAnswers; ++answer) {
            if (!m_dice.percent(kPercent[answer]))
                continue;
            ParamStep& step = add(Switch);
            step.number = answer;
            step.on = answer != static_cast<int>(Answer::SignedIn);
        }
    }

    void switchAnswer()
    {
        ParamStep& step = add(Switch);
        step.number = m_dice.below(kAnswers);
        const bool signedIn = step.number == static_cast<int>(Answer::SignedIn);
        step.on = signedIn ? !m_dice.oneIn(3) : !m_dice.oneIn(4);
    }

    void chooseDate()
    {
        ParamStep& step = add(DateSource);
        step.on = !m_dice.oneIn(4);
        step.number = m_dice.pick({0, 0, -1, -1, -30, 1});
    }

    void renew()
    {
        const int receipt = receiptOf(m_followed);
        add(Renew).number = receipt != kUnknownInstrument && m_dice.oneIn(2) ? receipt : m_followed;
    }

    void changeModel()
    {
        const int what = m_dice.below(40);
        if (what < 18) {
            if (m_dice.oneIn(2))
                add(Clear);
            if (m_dice.oneIn(40))
                renew();
            follow(m_dice.oneIn(15) ? kUnknownInstrument : m_dice.oneIn(6) ? m_followed : anyInstrument());
        } else if (what < 24) {
            add(Clear);
        } else if (what < 26) {
            renew();
        } else if (what < 29) {
            add(Construct).number = m_dice.below(kModels);
            if (m_dice.oneIn(2))
                add(Level2).on = true;
            follow(m_dice.oneIn(2) ? m_followed : anyInstrument());
        } else {
            add(m_dice.pick({CopyConstruct, CopyAssign, CopyAssign, Select})).number = m_dice.below(kModels);
            if (m_steps.back().action == Select && !m_dice.oneIn(3))
                follow(m_dice.oneIn(2) ? m_followed : anyInstrument());
            else if (m_dice.oneIn(2))
                add(Follow).number = m_followed;
        }
    }

    unsigned long long m_seed;
    Dice m_dice;
    ParamMarket m_market;
    int m_followed = 0;
    std::vector<ParamStep> m_steps;
};

} // namespace

std::vector<ParamStep> makeParamSteps(unsigned long long seed)
{
    return Writer(seed).write();
}

} // namespace tests::oracle::params
