// Performs one operation under callgrind with only that being counted, and prints how often it really did:
//
//     instructions_of --list
//     valgrind --tool=callgrind --instr-atstart=no --collect-atstart=no instructions_of OPERATION

#include "bench/operations.h"

#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstring>

namespace {

int count(const bench::Operation& operation)
{
    const bench::Body body = operation.prepare();
    const auto reset = [&body] {
        if (body.reset)
            body.reset();
    };
    reset();
    body.perform(operation.times); // fills pools and caches
    reset();
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_TOGGLE_COLLECT;
    const int done = body.perform(operation.times);
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_STOP_INSTRUMENTATION;
    return done;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--list") == 0) {
        for (const bench::Operation& operation : bench::operations())
            std::puts(operation.name.c_str());
        return 0;
    }
    for (const bench::Operation& operation : bench::operations()) {
        if (argc != 2 || operation.name != argv[1])
            continue;
        std::printf("%d\n", count(operation));
        return 0;
    }
    std::fputs("usage: instructions_of --list | OPERATION\n", stderr);
    return 2;
}
