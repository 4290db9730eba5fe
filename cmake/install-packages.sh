#!/usr/bin/env bash
# Installs the Debian packages that are missing, for building the tools or for everything. Needs root or sudo only when
# something is missing, and never removes a package.
#
#     install-packages.sh build|all
set -euo pipefail

wanted=(g++ cmake ninja-build ccache qtbase5-dev libboost1.81-dev libboost-thread1.81-dev liblog4cxx-dev libfmt-dev
        libcli11-dev nlohmann-json3-dev libzstd-dev)
case "${1:-}" in
    build) ;;
    all)
        wanted+=(git binutils bsdutils libgtest-dev libgmock-dev librapidcheck-dev libbenchmark-dev valgrind
                 clang-format-14 clang-tidy-14 fonts-noto-cjk xvfb xauth)
        ;;
    *)
        echo "usage: install-packages.sh build|all" >&2
        exit 2
        ;;
esac

missing=()
for package in "${wanted[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
        echo "missing packages, and neither root nor sudo to install them: ${missing[*]}" >&2
        exit 1
    }
    as_root=(sudo)
fi
echo "Installing ${missing[*]}" >&2
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-remove --no-install-recommends "${missing[@]}" >/dev/null
