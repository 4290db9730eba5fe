#!/usr/bin/env bash
# Counts the instructions of each operation under callgrind and compares them with budgets.json.
#
#     check-budgets.sh INSTRUCTIONS_OF BUDGETS [--update]
#
# Instructions do not depend on the machine's mood, so a figure more than 5 % above its budget is a change of the code.
# Beyond the budgets there are limits that --update does not move.
set -euo pipefail

program=$1
budgets=$2
update=${3:-}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# budgets.json is one flat object with an entry on each line.
entries() { sed -nE 's/^ *"([a-z0-9_]+)": *([0-9]+),?$/\1 \2/p' "$1"; }

instructions() {
    valgrind --tool=callgrind --instr-atstart=no --collect-atstart=no --callgrind-out-file="$scratch/out" \
        "$program" "$1" >"$scratch/done" 2>"$scratch/log" || { cat "$scratch/log" >&2; return 1; }
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

# Whatever the budgets say, some things must not cost more than this.
figure() { printf '%s\n' "${measured[@]}" | sed -nE "s/^ *\"$1\": ([1-9][0-9]*)$/\1/p"; }

have_figures() { # OPERATION...
    local name
    for name; do
        [ -n "$(figure "$name")" ] || { echo "$name has a limit and no figure" >&2; failed=1; return 1; }
    done
}

at_most() { # OPERATION INSTRUCTIONS
    have_figures "$1" || return 0
    local actual verdict=ok
    actual=$(figure "$1")
    [ "$actual" -le "$2" ] || { verdict=exceeded; failed=1; }
    printf '%s is %d instructions, at most %d: %s\n' "$1" "$actual" "$2" "$verdict"
}

ratio_at_most() { # OPERATION YARDSTICK RATIO
    have_figures "$1" "$2" || return 0
    local ratio verdict=ok
    ratio=$(awk "BEGIN {printf \"%.2f\", $(figure "$1") / $(figure "$2")}")
    awk "BEGIN {exit !($ratio <= $3)}" || { verdict=exceeded; failed=1; }
    printf '%s is %s times %s, at most %s: %s\n' "$1" "$ratio" "$2" "$3" "$verdict"
}

ratio_at_most read_day_row bare_loop_row 4
at_most book_history 450
at_most book_live 560
at_most check_update_idle 59
at_most trade_history 1200
at_most order_history 800
ratio_at_most trade_live_evening trade_live_morning 1.5
ratio_at_most trade_find_evening trade_find_morning 1.5
ratio_at_most trade_clear_1000000 trade_clear_1000 1.1
ratio_at_most order_clear_1000000 order_clear_1000 1.1
ratio_at_most book_history reference_history 5.0
ratio_at_most book_live reference_live 6.5
ratio_at_most book_live_20000_levels book_live_200_levels 1.6
ratio_at_most queue_book_history book_history 1.1
ratio_at_most queue_history_day model_history_day 1.1
ratio_at_most queue_history_day_trades_first model_history_day_trades_first 1.1
ratio_at_most thousand_check_update thousand_bare_rows 2
ratio_at_most thousand_record thousand_record_reference 0.5
ratio_at_most today_live today_live_formats 1.3
ratio_at_most today_live_still_price today_live_still_price_formats 1.3
ratio_at_most today_turned_away today_live_formats 0.05
ratio_at_most today_history_day today_live 100
ratio_at_most distribution_history distribution_bisection 2.5
ratio_at_most plate_repaint plate_primitives 1.5

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
