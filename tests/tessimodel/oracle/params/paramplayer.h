#pragma once

#include "tests/tessimodel/oracle/copiedmodels.h"
#include "tests/tessimodel/oracle/params/paramstreams.h"

#include <optional>

// One side: some models, and what a step does to the one in use. The same for both sides.
namespace tests::oracle::params {

// What the step gave back.
struct ParamAnswer {
    bool yes = false;
    double price = 0;
    QString colour;
};

// What a step asks of the terminal, once for both sides.
void applyToTerminal(standin::Terminal& terminal, const ParamStep& step);

// The date on display as the models count it.
int dateOnDisplay(int daysFromLastTradingDay);

// `Side` says how the two sides differ: Model, make(std::optional<Model>&), parameter(int) and formatFlag(int).
template <class Side>
class ParamPlayer {
public:
    using Model = typename Side::Model;

    explicit ParamPlayer(Side side)
        : m_side(side)
        , m_models([side](std::optional<Model>& model) { side.make(model); })
    {}

    ParamAnswer apply(const ParamStep& step)
    {
        using enum ParamStep::Action;
        m_answer = {};
        switch (step.action) {
        case CopyConstruct:
        case CopyAssign:
        case Select:
        case Construct:
            m_models.apply(step);
            break;
        case WriteText:
        case WriteValue:
        case WriteRecord:
        case LastPrice:
        case Colour:
            call(step);
            break;
        case Follow:
        case LastClose:
        case PriceTick:
        case Level2:
        case Clear:
        case InitParams:
        case DateSource:
        case Receipt:
            set(step);
            break;
        default:
            input(step);
            break;
        }
        return m_answer;
    }

    const Model& inUse() const { return m_models.inUse(); }
    const typename CopiedModels<Model>::Models& models() const { return m_models.all(); }

private:
    Model& model() { return m_models.inUse(); }

    void input(const ParamStep& step)
    {
        using enum ParamStep::Action;
        if (step.action == Quotes)
            m_answer.yes = model().quoterCallback(step.ignored, step.kind, step.records);
        else if (step.action == Aux)
            m_answer.yes = model().quoteAuxCallback(step.aux);
        else if (step.action == Dish)
            m_answer.yes = model().setDishData(step.inner, step.outer);
        else if (step.action == Average)
            model().setAveragePrice(step.value);
        else if (step.action == AverageOfRecord)
            model().setAveragePrice(first(step));
        else if (step.action == Connect)
            m_answer.yes = model().connectTickData(first(step));
    }

    void set(const ParamStep& step)
    {
        using enum ParamStep::Action;
        if (step.action == Follow)
            m_answer.yes = model().setStock(paramKeyOf(step.number));
        else if (step.action == LastClose)
            model().setLastClose(step.value);
        else if (step.action == PriceTick)
            model().m_priceTick = step.value;
        else if (step.action == Level2)
            m_answer.yes = model().setLevel2(step.on);
        else if (step.action == Clear)
            model().clear();
        else if (step.action == InitParams)
            model().initParams();
        else if (step.action == Receipt)
            model().m_gdrStock = changingReceipt();
        else if (step.on)
            model().m_historyDateSource = [date = dateOnDisplay(step.number)] { return date; };
        else
            model().m_historyDateSource = decltype(model().m_historyDateSource)();
    }

    void call(const ParamStep& step)
    {
        using enum ParamStep::Action;
        const auto text = [](const std::string& from) { return QString::fromStdString(from); };
        if (step.action == WriteText)
            model().setParam(m_side.parameter(step.number), text(step.text), text(step.key));
        else if (step.action == WriteValue)
            model().setParam(m_side.parameter(step.number), m_side.formatFlag(step.flag), step.value, step.base);
        else if (step.action == WriteRecord)
            model().setParam(first(step));
        else if (step.action == LastPrice)
            m_answer.price = model().getLastPrice(first(step));
        else
            m_answer.colour = model().getPriceColor(step.value, step.base);
    }

    // A shrunk step may have lost its record.
    static RecordPtr first(const ParamStep& step) { return step.records.empty() ? nullptr : step.records.front(); }

    Side m_side;
    CopiedModels<Model> m_models;
    ParamAnswer m_answer;
};

} // namespace tests::oracle::params
