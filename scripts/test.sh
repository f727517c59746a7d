#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test with CTest beside a
# throwaway PostgreSQL server.
#
#   scripts/test.sh [CTEST-ARG...]     e.g. scripts/test.sh -R Toolkit
#
# The build folder is $STAFF_BUILD_DIR, by default build/ in the checkout.
# Without a PostgreSQL server the tests skip their PostgreSQL half, except
# under CI=true, where that is a failure. The exit code is CTest's.
set -euo pipefail

repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${STAFF_BUILD_DIR:-$repo/build}"
export STAFF_BUILD_DIR="$build"

bash "$repo/scripts/install-deps.sh"
bash "$repo/scripts/build.sh"

# Screen tests need no display.
export QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"

exec bash "$repo/scripts/with-postgres.sh" \
    ctest --test-dir "$build" --output-on-failure -j2 --timeout 600 "$@"
