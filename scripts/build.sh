#!/usr/bin/env bash
# Configures and builds the program, its tools, tests and benchmarks.
#
#   scripts/build.sh [CMAKE-CONFIGURE-ARG...]
#
# Builds with Ninja (RelWithDebInfo) into $STAFF_BUILD_DIR, by default
# build/ in the checkout. Extra arguments go to the configure step, e.g.
# -DSTAFF_BUILD_BENCH=OFF.
set -euo pipefail

repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${STAFF_BUILD_DIR:-$repo/build}"

cmake -S "$repo" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@"
cmake --build "$build" -j2
