#include "tests/tessimodel/oracle/lists/duel.h"

#include "tests/tessimodel/oracle/naiveinstruments.h"
#include "ztservice/instrumentdetail.h"

#include <fmt/format.h>

namespace tests::oracle::lists {

namespace {

constexpr int kStepsToEveryLookup = 40;
const Section kAnswer{"answer", nullptr, {"answer", "first", "last"}};

} // namespace

TC::SDepthFilterParam realFilter(const Filter& filter)
{
    TC::SDepthFilterParam real;
    real.reserved0 = filter.reserved0;
    real.reserved1 = filter.reserved1;
    real.handsMode = filter.handsMode;
    real.hands = filter.hands;
    real.connective = filter.connective;
    real.amountMode = filter.amountMode;
    real.amount = filter.amount;
    real.startTime = filter.startTime;
    real.endTime = filter.endTime;
    real.showBuyOrder = filter.showBuyOrder;
    real.showSellOrder = filter.showSellOrder;
    real.showBuyCancel = filter.showBuyCancel;
    real.showSellCancel = filter.showSellCancel;
    return real;
}

std::shared_ptr<ztservice::CInstrumentDetail> detailOf(int instrument)
{
    auto detail = std::make_shared<ztservice::CInstrumentDetail>();
    detail->market = instrumentAt(instrument).market;
    detail->code = instrumentAt(instrument).code;
    return detail;
}

int Picks::between(int low, int high)
{
    m_state ^= m_state >> 12U;
    m_state ^= m_state << 25U;
    m_state ^= m_state >> 27U;
    const unsigned long long random = (m_state * 0x2545f4914f6cdd1dULL) >> 33U;
    return low + static_cast<int>(random % static_cast<unsigned long long>(high - low + 1));
}

std::string Duel::play(const std::vector<ListStep>& steps)
{
    std::string found = difference(true);
    if (!found.empty())
        return "in a new model:\n" + found;
    for (const ListStep& step : steps) {
        ++m_step;
        if (step.lowersFlags)
            lowerFlags();
        if (!applyCommon(step))
            apply(step);
        found = difference(m_step % kStepsToEveryLookup == 0);
        if (!found.empty())
            return fmt::format("after step {}, {}:\n{}", m_step, text(step), found);
    }
    found = difference(true);
    end();
    workReal();
    m_terminal.strands.drain("data_release");
    return found.empty() ? found : "at the end:\n" + found;
}

bool Duel::applyCommon(const ListStep& step)
{
    using enum ListStep::Action;
    if (step.action == Work) {
        work();
    } else if (step.action == Release) {
        m_terminal.strands.drain("data_release");
    } else if (step.action == Orders || step.action == Trades || step.action == Snapshots) {
        deliver(step, m_records.of(step.batch));
        if (step.works)
            work();
    } else {
        return false;
    }
    return true;
}

std::string Duel::difference(bool everyLookup)
{
    const auto writeBoth = [this, everyLookup](Lines& expected, Lines& real) {
        expected.clear();
        real.clear();
        expected.add(kAnswer, {m_expectedAnswer.result, m_expectedAnswer.first, m_expectedAnswer.last});
        real.add(kAnswer, {m_realAnswer.result, m_realAnswer.first, m_realAnswer.last});
        write(expected, real, Picks(everyLookup, m_step));
    };
    writeBoth(m_expectedLines, m_realLines);
    if (m_expectedLines == m_realLines)
        return "";
    Lines expected(true);
    Lines real(true);
    writeBoth(expected, real);
    return firstDifferences(expected, real);
}

} // namespace tests::oracle::lists
