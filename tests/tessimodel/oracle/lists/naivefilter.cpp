#include "tests/tessimodel/oracle/lists/naivefilter.h"

#include "tests/tessimodel/oracle/wrapping.h"

namespace tests::oracle::lists {

int roundedHands(__int64 volume, int unit)
{
    if (volume < unit)
        return 1;
    return truncated(static_cast<double>(volume) / static_cast<double>(unit) + 0.5);
}

int secondOfDay(__int64 second)
{
    constexpr __int64 kDay = 24LL * 3600;
    constexpr __int64 kEastOfGreenwich = 8LL * 3600;
    const __int64 inDay = (second % kDay + kEastOfGreenwich) % kDay;
    return narrow(inDay < 0 ? inDay + kDay : inDay);
}

__int64 secondOf(const Record& record)
{
    return record.timetag / 1000;
}

bool isInTime(const Filter& filter, __int64 second, Counters& counters)
{
    const int ms = secondOfDay(second) * 1000;
    const bool is = filter.startTime <= ms && ms <= filter.endTime;
    counters.timeRefusals += is ? 0 : 1;
    return is;
}

bool isInTheRange(const Filter& filter, int hands, double amount, Counters& counters)
{
    const bool handsModeIsNamed = filter.handsMode == 0 || filter.handsMode == 1 || filter.handsMode == 2;
    const bool amountModeIsNamed = filter.amountMode == 0 || filter.amountMode == 1;
    if (!handsModeIsNamed || !amountModeIsNamed) {
        ++counters.unnamedModes;
        return true;
    }
    const bool byHands = filter.handsMode == 0   ? hands >= filter.hands
                         : filter.handsMode == 1 ? hands > filter.hands
                                                 : hands == filter.hands;
    const double threshold = filter.amount;
    const bool byAmount = filter.amountMode == 0 ? amount >= threshold : amount > threshold;
    const bool is = filter.connective == 0 ? byHands || byAmount : byHands && byAmount;
    counters.rangeRefusals += is ? 0 : 1;
    return is;
}

void NaiveStrand::post(const int& followed, const BatchPtr& batch, const std::function<void()>& worker)
{
    if (!batch)
        return;
    m_tasks.emplace_back([this, &followed, batch, worker] {
        if (followed >= 0 && batch->instrument == followed)
            worker();
        else
            ++m_counters.foreignBatches;
    });
}

void NaiveStrand::work()
{
    while (!m_tasks.empty()) {
        const auto task = m_tasks.front();
        m_tasks.pop_front();
        task();
    }
}

} // namespace tests::oracle::lists
