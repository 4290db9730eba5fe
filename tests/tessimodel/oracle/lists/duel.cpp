#include "tests/tessimodel/oracle/lists/duel.h"

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

int Picks::between(int low, int high)
{
    m_state ^= m_state >> 12U;
    m_state ^= m_state << 25U;
    m_state ^= m_state >> 27U;
    const unsigned long long random = (m_state * 0x2545f4914f6cdd1dULL) >> 33U;
    return low + static_cast<int>(random % static_cast<unsigned long long>(high - low + 1));
}

void Duel::apply(const ListStep& step)
{
    ++m_step;
    m_isEveryLookup = m_step % kStepsToEveryLookup == 0;
    if (step.lowersFlags)
        lowerFlags();
    if (!applyCommon(step))
        applyOwn(step);
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

void Duel::write(Lines& expected, Lines& real) const
{
    expected.add(kAnswer, {m_expectedAnswer.result, m_expectedAnswer.first, m_expectedAnswer.last});
    real.add(kAnswer, {m_realAnswer.result, m_realAnswer.first, m_realAnswer.last});
    writeList(expected, real, Picks(m_isEveryLookup, m_step));
}

std::string Duel::end()
{
    m_isEveryLookup = true;
    const std::string found = differenceWhen("at the end");
    leave();
    workReal();
    m_terminal.strands.drain("data_release");
    return found;
}

} // namespace tests::oracle::lists
