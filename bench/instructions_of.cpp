// Performs one operation at least a number of times, under callgrind with only that being counted, and prints how often
// it really did:
//
//     instructions_of --list
//     valgrind --tool=callgrind --collect-atstart=no instructions_of OPERATION TIMES

#include "bench/operations.h"

#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int argc, char** argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--list") == 0) {
        for (const bench::Operation& operation : bench::operations())
            std::puts(operation.name.c_str());
        return 0;
    }
    const int times = argc == 3 ? std::atoi(argv[2]) : 0; // NOLINT(cert-err34-c): 0 is refused below
    for (const bench::Operation& operation : bench::operations()) {
        if (times <= 0 || operation.name != argv[1])
            continue;
        const auto body = operation.prepare();
        body(times); // fills pools and caches
        CALLGRIND_TOGGLE_COLLECT;
        const int done = body(times);
        CALLGRIND_TOGGLE_COLLECT;
        std::printf("%d\n", done);
        return 0;
    }
    std::fputs("usage: instructions_of --list | OPERATION TIMES\n", stderr);
    return 2;
}
