#!/usr/bin/env bash
# Everything that must hold before a change goes in. Works from a fresh clone; installs what is missing.
set -euo pipefail
cd "$(dirname "$0")"

say() { printf '\n== %s\n' "$1"; }

say "Packages"
cmake/install-packages.sh all

say "Formatting"
cmake/check-format.sh

# The release build compiles every header alone, too.
for preset in release asan-ubsan tsan; do
    say "Build: $preset"
    cmake --preset "$preset"
    cmake --build --preset "$preset"
done

say "Static analysis"
cmake/check-tidy.sh

# The release tests come last: they check the budgets and the contract as well.
for preset in asan-ubsan tsan release; do
    say "Tests: $preset"
    ctest --preset "$preset"
done
