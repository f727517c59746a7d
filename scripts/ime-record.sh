#!/usr/bin/env bash
# Records what a real Japanese input method (ibus with the mozc engine) sends
# to the card's name fields, one fixture per case, into tests/fixtures/ime/.
#
#   scripts/ime-record.sh              every case
#   scripts/ime-record.sh plain ...    only these cases (see tests/ime/cases.sh)
#   scripts/ime-record.sh --list       the cases
#
# What it needs, and does:
#   - the Debian packages ibus ibus-mozc mozc-server xdotool dbus-x11 xvfb:
#     installed with apt-get when missing (as root; otherwise it says which);
#   - the recorder tests/ime/ime_recorder.cpp, built here (target ime_recorder
#     in $STAFF_BUILD_DIR, by default build/) when missing or out of date;
#   - a plain user: mozc does not run as root. Run as root, the script makes the
#     system user "imerec" (no home, no login) when missing and types the cases
#     as that user; run as a plain user, it types them as you;
#   - per case, a session of its own (fresh home, Xvfb, D-Bus, ibus-daemon with
#     the mozc engine starting in hiragana input, the recorder); nothing touches
#     your own display or input method settings.
# Each fixture is replaced only when its case was recorded; the others stay.
set -euo pipefail

repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${STAFF_BUILD_DIR:-$repo/build}"
fixtures="$repo/tests/fixtures/ime"
session="$repo/tests/ime/session.sh"
user=imerec

say() { echo "ime-record: $*" >&2; }

if [ "${1:-}" = "--list" ]; then
    bash "$session" --list
    exit 0
fi

# --- packages --------------------------------------------------------------
packages=(ibus ibus-mozc mozc-server xdotool dbus-x11 xvfb)
missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
    if [ "$(id -u)" != 0 ]; then
        say "missing Debian packages: ${missing[*]} (run as root, or: sudo apt-get install ${missing[*]})"
        exit 1
    fi
    say "installing ${missing[*]}"
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

# --- the recorder ----------------------------------------------------------
recorder="$build/tests/ime/ime_recorder"
source_file="$repo/tests/ime/ime_recorder.cpp"
if [ ! -x "$recorder" ] || [ "$source_file" -nt "$recorder" ]; then
    say "building the recorder in $build"
    if [ ! -f "$build/CMakeCache.txt" ]; then
        flock /tmp/staff-build.lock cmake -S "$repo" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    fi
    flock /tmp/staff-build.lock cmake --build "$build" -j2 --target ime_recorder
fi

# --- a work folder the typing user can read and write -----------------------
work="$(mktemp -d "${TMPDIR:-/tmp}/ime-record.XXXXXX")"
trap 'rm -rf "$work"' EXIT
cp "$recorder" "$repo/tests/ime/session.sh" "$repo/tests/ime/cases.sh" "$work/"
mkdir "$work/out"

run=(bash "$work/session.sh" --recorder "$work/ime_recorder" --out "$work/out")
if [ "$(id -u)" = 0 ]; then
    if ! id "$user" >/dev/null 2>&1; then
        say "making the plain user $user to type as (mozc does not run as root)"
        useradd --system --user-group --no-create-home --home-dir /nonexistent --shell /usr/sbin/nologin "$user"
    fi
    chown -R "$user:" "$work"
    chmod 755 "$work"
    run=(runuser -u "$user" -- "${run[@]}")
fi

if [ $# -gt 0 ]; then
    cases=("$@")
else
    read -r -a cases <<<"$(bash "$session" --list)"
fi

status=0
(cd "$work" && "${run[@]}" "${cases[@]}") || status=$?

mkdir -p "$fixtures"
recorded=0
for file in "$work"/out/*.json; do
    [ -e "$file" ] || continue
    cp "$file" "$fixtures/"
    recorded=$((recorded + 1))
done
[ "$(id -u)" = 0 ] && [ -n "${SUDO_UID:-}" ] && chown -R "$SUDO_UID:${SUDO_GID:-$SUDO_UID}" "$fixtures"
say "$recorded fixture(s) written to $fixtures"
case "$status" in
0) ;;
77) say "the input method session could not start here (see above)"; exit 1 ;;
*) say "some cases failed (see above)"; exit 1 ;;
esac
