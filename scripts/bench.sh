#!/usr/bin/env bash
# Installs what is missing, builds, and runs the benchmarks beside a
# throwaway PostgreSQL server.
#
#   scripts/bench.sh [BENCHMARK-ARG...]   e.g. --benchmark_filter=Translate
set -euo pipefail

repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${STAFF_BUILD_DIR:-$repo/build}"
export STAFF_BUILD_DIR="$build"

bash "$repo/scripts/install-deps.sh"
bash "$repo/scripts/build.sh"

export QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"
# Each benchmark program in turn; arguments (e.g. --benchmark_filter=...) go to each.
for name in staff-bench search-bench card-bench employee-bench report-bench; do
    bench="$build/bench/$name"
    if [ ! -x "$bench" ]; then
        echo "bench: the build did not produce $bench" >&2
        exit 1
    fi
    echo "== $name"
    bash "$repo/scripts/with-postgres.sh" "$bench" "$@"
done
