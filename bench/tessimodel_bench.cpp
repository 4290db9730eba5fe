// The operations by the clock. Figures are for comparing within one run: machines differ, and have moods.

#include "bench/operations.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>

int main(int argc, char** argv)
{
    setenv("TZ", "Asia/Shanghai", 1);
    for (const bench::Operation& operation : bench::operations()) {
        auto* const registered =
            benchmark::RegisterBenchmark(operation.name.c_str(), [&operation](benchmark::State& state) {
                const bench::Body body = operation.prepare();
                std::int64_t done = 0;
                for (auto _ : state) {
                    if (body.reset) {
                        state.PauseTiming();
                        body.reset();
                        state.ResumeTiming();
                    }
                    done += body.perform(operation.times);
                }
                state.SetItemsProcessed(done);
            });
        if (operation.rounds > 0)
            registered->Iterations(operation.rounds);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
