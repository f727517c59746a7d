#!/usr/bin/env bash
# Installs what is missing, builds, sets up the demo installation ./demo in
# the checkout (first time only) and starts the program on it.
#
#   scripts/demo.sh
#
# To start again from scratch, delete ./demo.
set -euo pipefail

repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${STAFF_BUILD_DIR:-$repo/build}"
export STAFF_BUILD_DIR="$build"
cd "$repo"

say() { echo "demo: $*"; }

bash "$repo/scripts/install-deps.sh"
bash "$repo/scripts/build.sh"

program_name="担当者登録"
built_program="$build/src/app/$program_name"
# The report program of the staff card, built beside the program.
report_name="担当者カード"
built_report="$build/src/app/$report_name"
setup_tool="$build/tools/staff-setup"
demo="./demo"
program="$demo/prgbin/$program_name"
report="$demo/prgbin/$report_name"

for f in "$built_program" "$built_report" "$setup_tool"; do
    if [ ! -x "$f" ]; then
        say "the build did not produce $f" >&2
        exit 1
    fi
done

if [ ! -e "$demo" ]; then
    say "setting up the demo installation in $repo/demo"
    # Without network the tool uses its small built-in postcode set.
    if ! "$setup_tool" --root "$demo" --demo --program "$built_program" --report-program "$built_report" \
        --postcodes npm; then
        say "staff-setup failed; removing the half-made $demo" >&2
        rm -rf "$demo"
        exit 1
    fi
elif [ -e "$program" ] && ! [ "$built_program" -ef "$program" ]; then
    # An existing demo gets the programs just built.
    say "updating the programs in the existing $demo"
    cp --remove-destination "$built_program" "$program"
    cp --remove-destination "$built_report" "$report"
fi

if [ ! -x "$program" ]; then
    say "there is no program at $program; delete $demo and run this script again" >&2
    exit 1
fi

say "what the program finds in the installation ($program --check):"
set +e
# The check only prints; it needs no display.
QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}" "$program" --check
rc=$?
set -e
if [ "$rc" -ne 0 ]; then
    say "the check failed (exit code $rc)" >&2
    exit "$rc"
fi

# Says how the program ended and passes its exit code on.
finish() {
    if [ "$1" -ne 0 ]; then
        say "the program ended with exit code $1" >&2
    fi
    exit "$1"
}

if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    say "starting $program"
    set +e
    "$program"
    finish $?
fi

say "there is no display (DISPLAY and WAYLAND_DISPLAY are empty):"
say "running the program under a virtual X server to take a screenshot"
if ! command -v xvfb-run >/dev/null 2>&1; then
    say "xvfb-run is missing (Debian package xvfb)" >&2
    exit 1
fi
screenshot="$demo/screenshot.png"
rm -f "$screenshot"
set +e
# The card of the first demo staff member (office 000, staff 00001).
timeout 300 xvfb-run -a "$program" --screenshot "$screenshot" 00000001
rc=$?
set -e
if [ -s "$screenshot" ]; then
    say "screenshot: $repo/demo/screenshot.png"
else
    say "no screenshot was made"
fi
finish "$rc"
