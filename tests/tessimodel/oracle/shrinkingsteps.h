#pragma once

#include "tests/tessimodel/oracle/streams.h"

#include <rapidcheck.h>

#include <ostream>
#include <utility>
#include <vector>

namespace tests::oracle {

// Steps from one seed, printed line by line, that shrink by leaving out steps, and records of their batches.
template <class Step>
struct Steps {
    unsigned long long seed = 0;
    std::vector<Step> all;

    friend std::ostream& operator<<(std::ostream& out, const Steps& steps)
    {
        out << "seed " << steps.seed << "\n";
        for (std::size_t i = 0; i < steps.all.size(); ++i)
            out << "  " << i + 1 << " " << text(steps.all[i]) << "\n";
        return out;
    }
};

// The step with fewer records, which stand in it or in its batch.
template <class Step>
rc::Seq<Step> withFewerRecords(const Step& step) requires requires
{
    step.records;
}
{
    using Records = decltype(step.records);
    return rc::seq::map(rc::shrink::removeChunks(step.records), [step](Records&& fewer) {
        Step smaller = step;
        smaller.records = std::move(fewer);
        return smaller;
    });
}

template <class Step>
rc::Seq<Step> withFewerRecords(const Step& step) requires requires
{
    step.batch;
}
{
    if (!step.batch || step.batch->records.empty())
        return {};
    return rc::seq::map(rc::shrink::removeChunks(step.batch->records), [step](std::vector<RecordPtr>&& fewer) {
        Step smaller = step;
        auto batch = std::make_shared<Batch>(*step.batch);
        batch->records = std::move(fewer);
        smaller.batch = batch;
        return smaller;
    });
}

template <class Step>
rc::Gen<Steps<Step>> shrinkingSteps(std::vector<Step> (*make)(unsigned long long seed))
{
    return rc::Gen<Steps<Step>>([make](const rc::Random& random, int) {
        rc::Random source = random;
        const unsigned long long seed = source.next();
        return rc::shrinkable::shrinkRecur(Steps<Step>{seed, make(seed)}, [](const Steps<Step>& steps) {
            const auto with = [seed = steps.seed](std::vector<Step>&& others) {
                return Steps<Step>{seed, std::move(others)};
            };
            auto shorter = rc::seq::map(rc::shrink::removeChunks(steps.all), with);
            if constexpr (requires(const Step& step) { withFewerRecords(step); })
                return rc::seq::concat(std::move(shorter),
                                       rc::seq::map(rc::shrink::eachElement(steps.all, &withFewerRecords<Step>), with));
            else
                return shorter;
        });
    });
}

} // namespace tests::oracle
