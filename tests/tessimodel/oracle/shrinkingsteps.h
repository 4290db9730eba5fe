#pragma once

#include <rapidcheck.h>

#include <ostream>
#include <utility>
#include <vector>

namespace tests::oracle {

// Steps from one seed, printed line by line, that shrink by leaving steps out.
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

template <class Step>
rc::Gen<Steps<Step>> shrinkingSteps(std::vector<Step> (*make)(unsigned long long seed))
{
    return rc::Gen<Steps<Step>>([make](const rc::Random& random, int) {
        rc::Random source = random;
        const unsigned long long seed = source.next();
        return rc::shrinkable::shrinkRecur(Steps<Step>{seed, make(seed)}, [](const Steps<Step>& steps) {
            return rc::seq::map(rc::shrink::removeChunks(steps.all), [seed = steps.seed](std::vector<Step>&& fewer) {
                return Steps<Step>{seed, std::move(fewer)};
            });
        });
    });
}

} // namespace tests::oracle
