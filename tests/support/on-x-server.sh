#!/usr/bin/env bash
# Runs a command with windows on an X server of its own that shows them to nobody.
#
#     on-x-server.sh COMMAND...
#
# Exits with 77, which the tests count as skipped, where there is no such server.
set -euo pipefail

for program in xvfb-run xauth; do
    command -v "$program" >/dev/null || {
        echo "SKIPPED: no $program to show windows with" >&2
        exit 77
    }
done
export QT_QPA_PLATFORM=xcb
# Between two applications the server has no client, and would turn the next one away while it starts anew.
exec xvfb-run --auto-servernum --server-args="-screen 0 1600x1600x24 -noreset" "$@"
