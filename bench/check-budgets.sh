#!/usr/bin/env bash
# Counts the instructions of each operation under callgrind and compares them with budgets.json.
#
#     check-budgets.sh INSTRUCTIONS_OF BUDGETS [--update]
#
# Instructions do not depend on the machine's mood, so a figure more than 5 % above its budget is a change of the code.
set -euo pipefail

program=$1
budgets=$2
update=${3:-}
times=5000

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# budgets.json is one flat object with an entry on each line.
entries() { sed -nE 's/^ *"([a-z0-9_]+)": *([0-9]+),?$/\1 \2/p' "$1"; }

instructions() {
    valgrind --tool=callgrind --collect-atstart=no --callgrind-out-file="$scratch/out" "$program" "$1" "$times" \
        >"$scratch/done" 2>"$scratch/log" || { cat "$scratch/log" >&2; return 1; }
    awk -v done="$(cat "$scratch/done")" \
        '/^(summary|totals):/ {total = $2} END {if (!total) exit 1; printf "%d", total / done}' "$scratch/out"
}

failed=0
measured=()
known=$("$program" --list)
for name in $known; do
    actual=$(instructions "$name")
    budget=$(entries "$budgets" | awk -v name="$name" '$1 == name {print $2}')
    verdict=ok
    if [ -z "$budget" ]; then
        verdict="has no budget"
        failed=1
    elif [ $((actual * 100)) -gt $((budget * 105)) ]; then
        verdict="over budget"
        failed=1
    elif [ $((actual * 100)) -lt $((budget * 95)) ]; then
        verdict="ok, and the budget can be lowered"
    fi
    printf '%-32s %9d instructions, budget %9s: %s\n' "$name" "$actual" "${budget:-none}" "$verdict"
    measured+=("  \"$name\": $actual")
done

# Reading a day against the least that has to be done with its bytes.
figure() { printf '%s\n' "${measured[@]}" | sed -nE "s/^ *\"$1\": ([0-9]+)$/\1/p"; }
reading=$(figure read_day_row)
bare=$(figure bare_loop_row)
printf 'reading a row costs %s times the bare loop, at most 4\n' "$(awk "BEGIN {printf \"%.2f\", $reading / $bare}")"
[ "$reading" -le $((bare * 4)) ] || failed=1

for name in $(entries "$budgets" | cut -d' ' -f1); do
    grep -qx "$name" <<<"$known" || { echo "$name has a budget and is no operation" >&2; failed=1; }
done

if [ "$update" = "--update" ]; then
    {
        echo "{"
        printf '%s\n' "${measured[@]}" | sed '$!s/$/,/'
        echo "}"
    } >"$budgets"
    exit 0
fi
exit $failed
