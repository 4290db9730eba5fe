// The parameter table against one that is too plain to be wrong, fed with the same streams, and compared in full after
// every step.

#include "indexui/tessimodel/cmodeltodayparam.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "tests/tessimodel/oracle/params/naiveside.h"
#include "tests/tessimodel/oracle/params/paramgenerator.h"
#include "tests/tessimodel/oracle/params/paramplayer.h"
#include "tests/tessimodel/oracle/params/paramstate.h"
#include "tests/tessimodel/oracle/stepduel.h"

namespace {

using namespace tests::oracle;
using namespace tests::oracle::params;

constexpr int kStreams = 1000;

struct Model : TC::CModelTodayParam {
    using CModelTodayParam::getLastPrice;
    using CModelTodayParam::getPriceColor;
    using CModelTodayParam::setParam;
};

struct RealSide {
    using Model = ::Model;

    static void make(std::optional<Model>& model) { model.emplace(); }
    static TC::ERealtimeParam parameter(int id) { return static_cast<TC::ERealtimeParam>(id); }
    static utils::EFormatNumberFlag formatFlag(int flag) { return static_cast<utils::EFormatNumberFlag>(flag); }
};

class ParamDuel : public StepDuel<ParamStep, ParamState> {
public:
    explicit ParamDuel(standin::Terminal& terminal)
        : m_terminal(terminal)
        , m_naive(NaiveSide{&m_counted})
        , m_real(RealSide())
    {
        prepareParams(terminal);
    }

private:
    void apply(const ParamStep& step) override
    {
        applyToTerminal(m_terminal, step);
        m_naiveAnswer = m_naive.apply(step);
        m_realAnswer = m_real.apply(step);
    }

    void write(ParamState& expected, ParamState& real) const override
    {
        writeSide(expected, m_naive, m_naiveAnswer);
        writeSide(real, m_real, m_realAnswer);
    }

    // What was copied shares nothing with its source: the models that are not in use stood still.
    std::string end() override
    {
        std::string found;
        for (int model = 0; model < kModels && found.empty(); ++model) {
            ParamStep select;
            select.action = ParamStep::Action::Select;
            select.number = model;
            apply(select);
            found = differenceWhen("in the end");
        }
        return found;
    }

    template <class Player>
    static void writeSide(ParamState& out, const Player& player, const ParamAnswer& answer)
    {
        ParamLine& line = out.add("answer");
        line.numbers = {answer.yes};
        line.doubles = {answer.price};
        line.texts = {answer.colour};
        writeTable(out, player.inUse());
        writeMembers(out, player.inUse());
        writeListInForce(out, player.models(), player.inUse());
    }

    standin::Terminal& m_terminal;
    ParamCounters m_counted;
    ParamPlayer<NaiveSide> m_naive;
    ParamPlayer<RealSide> m_real;
    ParamAnswer m_naiveAnswer;
    ParamAnswer m_realAnswer;
};

TEST(ParamOracle, shouldEqualTheNaiveTableWhenStreamsAreAnything)
{
    standin::Terminal terminal;
    checkDuels("rows, lists, counters and all that is kept", kStreams, &makeParamSteps,
               [&terminal] { return ParamDuel(terminal); });
}

TEST(ParamOracle, shouldEqualTheNaiveTextsWhenStatusesAreAnything)
{
    for (int status = -2; status <= 40; ++status)
        EXPECT_EQ(TC::quoteStatusToQString(status), statusText(status)) << status;
}

} // namespace
