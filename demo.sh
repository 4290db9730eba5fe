#!/usr/bin/env bash
# Builds the command line tool and replays a day, the one in the folder given or one simulated on the spot: its tick
# list, its order book and its parameters in mid-morning, and a summary.
#
#     ./demo.sh [FOLDER]
set -euo pipefail

[ $# -le 1 ] || {
    echo "usage: ./demo.sh [FOLDER]" >&2
    exit 2
}
day=${1:+$(realpath -- "$1")}
cd "$(dirname "$0")"

cmake/install-packages.sh build >&2
{
    cmake --preset demo
    cmake --build --preset demo
} >&2
tessi=build/demo/bin/tessi

if [ -z "$day" ]; then
    scratch=$(mktemp -d)
    trap 'rm -rf "$scratch"' EXIT
    day=$scratch/day
    "$tessi" simulate --seed 1 "$day"
fi

"$tessi" replay "$day" --panel ticks
echo
"$tessi" replay "$day" --panel book --depth 5 --until 10:30:00
echo
"$tessi" replay "$day" --panel params --until 10:30:00
echo
"$tessi" replay "$day"
