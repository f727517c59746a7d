#!/usr/bin/env bash
# Types cases through the real input method (ibus with its mozc engine) into
# ime_recorder and keeps the recorder's log of each. Every case gets a session
# of its own: a fresh home folder, Xvfb, a D-Bus session, ibus-daemon with the
# mozc engine (started in hiragana input), and the recorder; keys and clicks
# are sent with xdotool, one key at a time.
#
#   session.sh --recorder BIN --out DIR CASE...      (cases: tests/ime/cases.sh)
#   session.sh --list
#
# Sourced (as tests/ime/card_live_test.sh does), it only defines its functions:
# session_start, stop_all, cannot_start, sweep_session.
#
# Writes DIR/CASE.json for each case. Runs as a plain user: mozc does not run
# as root. Delays (seconds) can be raised on a slow machine:
#   IME_KEY_DELAY  after each key       (default 0.25)
#   IME_STEP_DELAY after each step      (default 0.8)
#   IME_START_DELAY before the first step (default 1.5)
# Exit status: 0 every case recorded; 77 the session cannot start on this
# machine (the reason is printed); 1 a case failed.
set -uo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=tests/ime/cases.sh
source "$here/cases.sh"

key_delay="${IME_KEY_DELAY:-0.25}"
step_delay="${IME_STEP_DELAY:-0.8}"
start_delay="${IME_START_DELAY:-1.5}"

say() { echo "ime session: $*" >&2; }

# ---------------------------------------------------------------------------
# Steps used by the cases. With dry=1 they only collect what would be typed.

dry=0
described=()
ready_file=""

field_position() {
    local name x y
    while read -r name x y; do
        if [ "$name" = "$1" ]; then
            echo "$x $y"
            return 0
        fi
    done <"$ready_file"
    return 1
}

mark() {
    [ "$dry" = 1 ] && return 0
    echo "mark $*" >&6
}

# step DESCRIPTION KEY... : a marker in the log, then the keys one by one.
step() {
    local description="$1"
    shift
    if [ "$dry" = 1 ]; then
        described+=("$description")
        return 0
    fi
    mark "$description"
    local key
    for key in "$@"; do
        xdotool key "$key" || return 1
        sleep "$key_delay"
    done
    sleep "$step_delay"
}

# type_romaji WORD : the letters of WORD as single keys.
type_romaji() {
    local word="$1" keys=() i
    for ((i = 0; i < ${#word}; i++)); do keys+=("${word:i:1}"); done
    step "type $word" "${keys[@]}"
}

click() {
    if [ "$dry" = 1 ]; then
        described+=("click $1")
        return 0
    fi
    local position
    position="$(field_position "$1")" || {
        say "no field $1"
        return 1
    }
    mark "click $1"
    # shellcheck disable=SC2086
    xdotool mousemove --sync $position click 1 || return 1
    sleep "$step_delay"
}

# ---------------------------------------------------------------------------
# One case in a session of its own (run in a process session of its own too,
# so that whatever it starts can be found and ended afterwards).

pids=()
stop_all() {
    local pid
    if [ -n "${recorder_pid:-}" ] && kill -0 "$recorder_pid" 2>/dev/null; then
        echo quit >&6 2>/dev/null
        for _ in $(seq 50); do kill -0 "$recorder_pid" 2>/dev/null || break; sleep 0.1; done
        kill "$recorder_pid" 2>/dev/null
    fi
    exec 6>&- 2>/dev/null
    [ -n "${DISPLAY:-}" ] && [ -n "${ibus_pid:-}" ] && timeout 5 ibus exit >/dev/null 2>&1
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null; done
    [ -n "${DBUS_SESSION_BUS_PID:-}" ] && kill "$DBUS_SESSION_BUS_PID" 2>/dev/null
    return 0
}

cannot_start() {
    say "cannot start: $*"
    stop_all
    exit 77
}

# session_start WORK [SCREEN] : a fresh home folder in WORK, Xvfb (SCREEN as
# WIDTHxHEIGHTxDEPTH, by default 800x600x24), a D-Bus session and ibus-daemon
# with the mozc engine in hiragana input; exports HOME, DISPLAY and the bus
# address for what runs next. Ends the process with 77 (through cannot_start)
# when the session cannot start; stop_all ends it.
session_start() {
    local work="$1" screen="${2:-800x600x24}"
    export HOME="$work/home"
    export XDG_RUNTIME_DIR="$work/run"
    export LANG=C.UTF-8
    unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME XMODIFIERS GTK_IM_MODULE
    mkdir -p "$HOME/.config/mozc" "$XDG_RUNTIME_DIR"
    chmod 700 "$XDG_RUNTIME_DIR"
    # The engine's own settings: start in hiragana input rather than direct input.
    cat >"$HOME/.config/mozc/ibus_config.textproto" <<'EOF'
engines {
  name : "mozc-jp"
  longname : "Mozc"
  layout : "default"
  layout_variant : ""
  layout_option : ""
  rank : 80
}
active_on_launch: True
EOF

    Xvfb -displayfd 5 -screen 0 "$screen" -nolisten tcp 5>"$work/display" >"$work/xvfb.log" 2>&1 &
    pids+=($!)
    for _ in $(seq 100); do [ -s "$work/display" ] && break; sleep 0.1; done
    [ -s "$work/display" ] || cannot_start "Xvfb did not start ($(tail -1 "$work/xvfb.log"))"
    DISPLAY=":$(tr -d '\n' <"$work/display")"
    export DISPLAY

    eval "$(dbus-launch --sh-syntax)" || cannot_start "dbus-launch failed"
    [ -n "${DBUS_SESSION_BUS_ADDRESS:-}" ] || cannot_start "dbus-launch gave no bus"

    ibus-daemon --replace --panel=disable --emoji-extension=disable >"$work/ibus.log" 2>&1 &
    ibus_pid=$!
    pids+=("$ibus_pid")
    local engine=""
    for _ in $(seq 100); do
        # "ibus engine NAME" ends with 1 even when it has set the engine: ask again.
        ibus engine mozc-jp >/dev/null 2>&1
        engine="$(ibus engine 2>/dev/null)"
        [ "$engine" = "mozc-jp" ] && break
        kill -0 "$ibus_pid" 2>/dev/null || cannot_start "ibus-daemon ended ($(tail -1 "$work/ibus.log"))"
        sleep 0.2
    done
    [ "$engine" = "mozc-jp" ] || cannot_start "ibus did not take the mozc engine (it has: ${engine:-none})"
}

run_one() {
    local name="$1" recorder="$2" out="$3" work="$4"
    local function="case_${name//-/_}"

    # What the case types, for the log's "keys".
    dry=1
    described=()
    prefill=()
    "$function"
    dry=0
    local keys
    keys="$(printf '%s; ' "${described[@]}")"
    keys="${keys%; }"

    trap stop_all EXIT
    session_start "$work"

    local described_im
    described_im="ibus $(ibus version 2>/dev/null | sed 's/^IBus //'), engine mozc-jp (ibus-mozc $(dpkg-query -W -f='${Version}' ibus-mozc 2>/dev/null)), hiragana input at start, xdotool keys on Xvfb"

    ready_file="$work/ready"
    rm -f "$ready_file" "$work/commands"
    mkfifo "$work/commands"
    local arguments=(--log "$out/$name.json" --ready "$ready_file" --case "$name" --keys "$keys"
        --input-method "$described_im")
    local fill
    for fill in "${prefill[@]}"; do arguments+=(--prefill "$fill"); done
    QT_IM_MODULE=ibus QT_QPA_PLATFORM=xcb "$recorder" "${arguments[@]}" <"$work/commands" >"$work/recorder.log" 2>&1 &
    recorder_pid=$!
    exec 6>"$work/commands"
    for _ in $(seq 150); do
        [ -s "$ready_file" ] && break
        kill -0 "$recorder_pid" 2>/dev/null || {
            say "the recorder ended: $(tail -3 "$work/recorder.log")"
            stop_all
            exit 1
        }
        sleep 0.1
    done
    [ -s "$ready_file" ] || cannot_start "the recorder's window did not appear"

    local window
    window="$(field_position window)"
    xdotool windowfocus --sync "$window" >/dev/null 2>&1 || xdotool windowfocus "$window"
    sleep "$start_delay"

    if ! "$function"; then
        say "case $name: a step failed"
        stop_all
        exit 1
    fi
    sleep "$step_delay"
    mark "end"
    echo quit >&6
    for _ in $(seq 100); do kill -0 "$recorder_pid" 2>/dev/null || break; sleep 0.1; done
    wait "$recorder_pid"
    local status=$?
    recorder_pid=""
    stop_all
    trap - EXIT
    if [ "$status" != 0 ] || [ ! -s "$out/$name.json" ]; then
        say "case $name: the recorder ended with $status"
        exit 1
    fi
    exit 0
}

# Ends whatever is left of a case's process session (mozc's server outlives ibus).
sweep_session() {
    local session="$1" stat pid rest fields
    for stat in /proc/[0-9]*/stat; do
        pid="${stat#/proc/}"
        pid="${pid%/stat}"
        rest="$(cat "$stat" 2>/dev/null)" || continue
        rest="${rest##*) }"
        read -r -a fields <<<"$rest"
        [ "${fields[3]:-}" = "$session" ] && [ "$pid" != "$$" ] && kill "$pid" 2>/dev/null
    done
    return 0
}

# ---------------------------------------------------------------------------

main() {
    local recorder="" out="" names=()
    while [ $# -gt 0 ]; do
        case "$1" in
        --recorder) recorder="$2"; shift 2 ;;
        --out) out="$2"; shift 2 ;;
        --list) echo "${all_cases[@]}"; return 0 ;;
        --one) shift; run_one "$@" ;; # ends the process
        -*) say "unknown option $1"; return 2 ;;
        *) names+=("$1"); shift ;;
        esac
    done
    if [ -z "$recorder" ] || [ -z "$out" ] || [ ${#names[@]} -eq 0 ]; then
        say "usage: session.sh --recorder BIN --out DIR CASE... | --list"
        return 2
    fi
    if [ "$(id -u)" = 0 ]; then
        say "cannot start: mozc does not run as root; run this as a plain user"
        return 77
    fi
    local missing=() command
    for command in Xvfb dbus-launch ibus-daemon ibus xdotool setsid; do
        command -v "$command" >/dev/null 2>&1 || missing+=("$command")
    done
    [ -x /usr/lib/ibus-mozc/ibus-engine-mozc ] || missing+=("ibus-engine-mozc")
    if [ ${#missing[@]} -gt 0 ]; then
        say "cannot start: missing ${missing[*]}"
        return 77
    fi
    local name
    for name in "${names[@]}"; do
        declare -F "case_${name//-/_}" >/dev/null || {
            say "no case $name (cases: ${all_cases[*]})"
            return 2
        }
    done
    recorder="$(cd "$(dirname "$recorder")" && pwd)/$(basename "$recorder")"
    mkdir -p "$out"
    out="$(cd "$out" && pwd)"

    local status=0 work pid result
    for name in "${names[@]}"; do
        work="$(mktemp -d "${TMPDIR:-/tmp}/ime-case.XXXXXX")"
        setsid -w bash "${BASH_SOURCE[0]}" --one "$name" "$recorder" "$out" "$work" &
        pid=$!
        wait "$pid"
        result=$?
        sweep_session "$pid"
        case "$result" in
        0) say "recorded $name" ;;
        77) rm -rf "$work"; return 77 ;;
        *) say "case $name failed (logs kept in $work)"; status=1; continue ;;
        esac
        rm -rf "$work"
    done
    return $status
}

# Sourced by other scripts for the functions above; run, it types the cases.
if [ "${BASH_SOURCE[0]}" = "$0" ]; then
    main "$@"
fi
