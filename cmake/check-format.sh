#!/usr/bin/env bash
# Fails when a source is not formatted as .clang-format says; with --fix formats them all.
set -euo pipefail
cd "$(dirname "$0")/.."

list=$(git -c safe.directory='*' ls-files --cached --others --exclude-standard '*.h' '*.cpp')
mapfile -t sources <<<"$list"
if [ -z "$list" ]; then
    echo "check-format.sh: no sources found" >&2
    exit 1
fi
if [ "${1:-}" = "--fix" ]; then
    exec clang-format-14 -i "${sources[@]}"
fi
clang-format-14 --dry-run --Werror "${sources[@]}"
echo "${#sources[@]} sources are formatted."
