#!/usr/bin/env bash
# Compares what the built library asks of the terminal with the checked-in list.
#
#     check-terminal-symbols.sh LIBRARY LIST [--update]
#
# What the library needs and none of the libraries that it links defines can only come from the terminal.
set -euo pipefail
export LC_ALL=C

library=$1
list=$2

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

symbols() { nm -D "$@" | awk '{print $(NF-1), $NF}' | sed 's/@.*//'; }

symbols --undefined-only "$library" | awk '$1 == "U" {print $2}' | sort -u >"$scratch/needed"
ldd "$library" | awk '/=> \//{print $3} $1 ~ /^\//{print $1}' >"$scratch/dependencies"
while read -r dependency; do
    symbols --defined-only "$dependency" | awk '{print $2}'
done <"$scratch/dependencies" | sort -u >"$scratch/provided"
comm -23 "$scratch/needed" "$scratch/provided" | c++filt | sort >"$scratch/actual"

if [ "${3:-}" = "--update" ]; then
    cp "$scratch/actual" "$list"
    exit 0
fi

if ! difference=$(diff -u --label "$list" --label "$library" "$list" "$scratch/actual"); then
    printf '%s\n' "$difference"
    cat <<'TEXT'

The library asks other things of the terminal than the integration contract says. If that is wanted, run
tests/contract/check-terminal-symbols.sh with --update, and tell about it in docs/integrating.md.
TEXT
    exit 1
fi
printf 'The library asks %s things of the terminal, as the contract says.\n' "$(wc -l < "$list")"
