// The operations by the clock. Figures are for comparing within one run: machines differ, and have moods.

#include "bench/operations.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>

int main(int argc, char** argv)
{
    setenv("TZ", "Asia/Shanghai", 1);
    constexpr int kTimes = 5000;
    for (const bench::Operation& operation : bench::operations()) {
        benchmark::RegisterBenchmark(operation.name.c_str(), [&operation](benchmark::State& state) {
            const auto body = operation.prepare();
            std::int64_t done = 0;
            for (auto _ : state)
                done += body(kTimes);
            state.SetItemsProcessed(done);
        });
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
