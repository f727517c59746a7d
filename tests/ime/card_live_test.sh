#!/usr/bin/env bash
# The staff card of the built program, typed on through the real input method
# (ibus with the mozc engine in hiragana input, on Xvfb, keys from xdotool), as
# a clerk corrects a record:
#
#   1. a demo installation (staff-setup --demo) and the program started for one
#      record, 担当者登録 00000001 (office 000, staff 00001), on the Xvfb display
#      with QT_IM_MODULE=ibus;
#   2. Tab from コード to 姓, there suzuki Space Space Enter (すずき, スズキ,
#      鈴木), then Tab one key at a time until the save question comes (Tab out
#      of EMAIL after a change), answered with Return: the program ends by
#      itself after the save;
#   3. the program started again without a command line: 1 and Tab typed into
#      コード with the input method still on; the code must be read (each read
#      leaves a row in T閲覧), then the window is closed;
#   4. the database: M担当者 00001 has 姓 鈴木, カナ姓 ｽｽﾞｷ, カナ "ｽｽﾞｷ <カナ名>",
#      a black row in L担当者, and both runs ended with their 終了 row.
#
#   card_live_test.sh PATH/TO/staff-setup PATH/TO/担当者登録
#
# Exit status 0 passed, 1 failed (the reason is printed), 77 skipped: the input
# method, xdotool, Xvfb or D-Bus are not installed, or the session cannot start.
# Run as root, it types as the plain system user "imerec" (mozc does not run as
# root), made when missing. Waits (seconds) can be raised on a slow machine:
#   IME_KEY_DELAY after each key (0.3), IME_STEP_DELAY after each step (1.2),
#   IME_START_DELAY before the first key into a window (2).
set -uo pipefail

# Tabs from 姓 to the save question on the demo's record 00001: 41 to EMAIL
# (the demo links a personnel system, so 社員コード takes a stop; each
# drop-down list takes one; 退社日付日 turns to the address page), one out of it.
expected_tabs=42

progress() { echo "ime card: ${SECONDS}s: $*" >&2; }

# ---------------------------------------------------------------------------
# In the session, as the plain user: the typing. Writes what it saw into
# WORK/result as NAME=VALUE lines; ends 0 when every step went through, 1 when
# one did not (the reason is in the result), 77 when the session cannot start.

key_delay="${IME_KEY_DELAY:-0.3}"
step_delay="${IME_STEP_DELAY:-1.2}"
start_delay="${IME_START_DELAY:-2}"

result() { echo "$1=$2" >>"$work/result"; }
failed() {
    result failure "$*"
    echo "ime card: $*" >&2
    exit 1
}

key() {
    xdotool key "$1" || failed "xdotool could not send the key $1"
    sleep "$key_delay"
}

# Visible windows of the program: its card ("担当者登録（company）") and its
# message boxes (titled "担当者登録").
card_window() { xdotool search --onlyvisible --name '^担当者登録（' 2>/dev/null | head -1; }
message_box() { xdotool search --onlyvisible --name '^担当者登録$' 2>/dev/null | head -1; }

# Rows of T閲覧 for staff 00001: one more each time the card reads that code.
reads_of_00001() {
    python3 - "$work/demo/data/main.accdb" <<'EOF'
import sqlite3, sys
print(sqlite3.connect(sys.argv[1]).execute("SELECT COUNT(*) FROM T閲覧 WHERE キー項目 = '00001'").fetchone()[0])
EOF
}

# The window manager's close (WM_DELETE_WINDOW), which xdotool does not send.
close_window() {
    python3 - "$1" <<'EOF'
import ctypes, ctypes.util, sys

x = ctypes.cdll.LoadLibrary(ctypes.util.find_library("X11"))
x.XOpenDisplay.restype = ctypes.c_void_p
x.XOpenDisplay.argtypes = [ctypes.c_char_p]
x.XInternAtom.restype = ctypes.c_ulong
x.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]


class ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("l", ctypes.c_long * 5)]


class Event(ctypes.Union):
    _fields_ = [("xclient", ClientMessage), ("pad", ctypes.c_long * 24)]


x.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long, ctypes.POINTER(Event)]
x.XFlush.argtypes = [ctypes.c_void_p]
display = x.XOpenDisplay(None)
if not display:
    sys.exit("no display")
window = int(sys.argv[1])
event = Event()
event.xclient.type = 33  # ClientMessage
event.xclient.window = window
event.xclient.message_type = x.XInternAtom(display, b"WM_PROTOCOLS", 0)
event.xclient.format = 32
event.xclient.l[0] = x.XInternAtom(display, b"WM_DELETE_WINDOW", 0)
x.XSendEvent(display, window, 0, 0, ctypes.byref(event))
x.XFlush(display)
EOF
}

program_pid=""
# start_program NAME [ARGUMENT] : the program on the session's display, its card
# in front with the keyboard focus.
start_program() {
    local name="$1"
    shift
    QT_IM_MODULE=ibus QT_QPA_PLATFORM=xcb "$work/demo/prgbin/担当者登録" "$@" >"$work/$name.log" 2>&1 &
    program_pid=$!
    local window="" box=""
    for _ in $(seq 300); do
        window="$(card_window)"
        box="$(message_box)"
        [ -n "$window" ] || [ -n "$box" ] && break
        kill -0 "$program_pid" 2>/dev/null || failed "$name: the program ended at start ($(tail -3 "$work/$name.log"))"
        sleep 0.1
    done
    [ -z "$box" ] || failed "$name: a message box came at start instead of the card"
    [ -n "$window" ] || failed "$name: the card did not appear within 30 s"
    timeout 5 xdotool windowfocus --sync "$window" >/dev/null 2>&1 || xdotool windowfocus "$window"
    sleep "$start_delay"
}

# wait_end NAME SECONDS : waits for the program to end by itself; its exit
# status into the result.
wait_end() {
    local name="$1" seconds="$2"
    for _ in $(seq $((seconds * 10))); do
        kill -0 "$program_pid" 2>/dev/null || break
        sleep 0.1
    done
    if kill -0 "$program_pid" 2>/dev/null; then
        [ -n "$(message_box)" ] && result "${name}_box" "a message box is open"
        kill "$program_pid" 2>/dev/null
        wait "$program_pid" 2>/dev/null
        program_pid=""
        failed "$name: the program did not end within $seconds s"
    fi
    wait "$program_pid"
    local status=$?
    program_pid=""
    result "${name}_exit" "$status"
    [ "$status" = 0 ] || failed "$name: the program ended with $status ($(tail -3 "$work/$name.log"))"
}

session_end() {
    if [ -n "$program_pid" ] && kill -0 "$program_pid" 2>/dev/null; then
        kill "$program_pid" 2>/dev/null
        wait "$program_pid" 2>/dev/null
    fi
    stop_all
}

in_session() {
    work="$1"
    # shellcheck source=tests/ime/session.sh
    source "$work/session.sh"
    trap session_end EXIT
    # The card is wider than the recorder: a screen it fits on.
    session_start "$work" 1280x800x24
    : >"$work/result"
    progress "session ready on display $DISPLAY"

    # --- one record: 姓 typed over, the card walked to its end and saved.
    start_program card 00000001
    progress "card of 00001 open"
    # The focus is in コード (a direct field: the input method takes no keys there).
    key Tab
    sleep "$step_delay"
    local letter
    for letter in s u z u k i; do key "$letter"; done
    sleep "$step_delay"
    key space # スズキ
    sleep "$step_delay"
    key space # 鈴木
    sleep "$step_delay"
    key Return
    sleep "$step_delay"
    progress "鈴木 typed into 姓"

    # Tab one key at a time until the save question comes. The keys reach the
    # card in order, so only the question can come late: at the expected count
    # it is waited for longer, so that no further Tab lands in the message box.
    local tabs=0 box="" wait
    while [ "$tabs" -lt $((expected_tabs + 15)) ]; do
        key Tab
        tabs=$((tabs + 1))
        wait=3
        [ "$tabs" = "$expected_tabs" ] && wait=80
        for _ in $(seq "$wait"); do
            box="$(message_box)"
            [ -n "$box" ] && break
            kill -0 "$program_pid" 2>/dev/null || break
            sleep 0.1
        done
        [ -n "$box" ] && break
        kill -0 "$program_pid" 2>/dev/null || failed "card: the program ended after $tabs Tabs without a question ($(tail -3 "$work/card.log"))"
    done
    result tabs "$tabs"
    progress "after $tabs Tabs: $([ -n "$box" ] && echo "a message box" || echo "no message box")"
    [ -n "$box" ] || failed "card: no save question after $tabs Tabs"
    sleep "$step_delay"
    local focused
    focused="$(xdotool getwindowfocus 2>/dev/null)"
    result question_focused "$([ "$focused" = "$box" ] && echo yes || echo "no (focus on $focused)")"
    [ "$focused" = "$box" ] || timeout 5 xdotool windowfocus --sync "$box" >/dev/null 2>&1
    # Yes is the default button.
    key Return
    wait_end card 20
    progress "the program ended after the save"

    # --- a start without a command line: the code typed with the input method on.
    local before after
    before="$(reads_of_00001)"
    result reads_before "$before"
    start_program plain
    key 1
    key Tab
    for _ in $(seq 100); do
        after="$(reads_of_00001)"
        [ "$after" != "$before" ] && break
        sleep 0.1
    done
    result reads_after "$after"
    progress "1 Tab typed into コード: T閲覧 rows for 00001 $before -> $after"
    sleep "$step_delay"
    close_window "$(card_window)" || failed "plain: the card's window could not be closed"
    wait_end plain 20
    progress "the program ended after its window was closed"
    exit 0
}

# As the plain user: the session in a process session of its own, and whatever
# it leaves running (mozc's server outlives ibus) ended afterwards.
as_user() {
    work="$1"
    # shellcheck source=tests/ime/session.sh
    source "$work/session.sh"
    setsid -w bash "$work/card_live_test.sh" --session "$work" &
    local pid=$!
    wait "$pid"
    local status=$?
    sweep_session "$pid"
    return "$status"
}

case "${1:-}" in
--session) in_session "$2" ;;
--as-user) as_user "$2"; exit $? ;;
esac

# ---------------------------------------------------------------------------
# The test.

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
setup_tool="${1:-}"
program="${2:-}"

skip() {
    echo "skipped: $*"
    exit 77
}

if [ ! -x "$setup_tool" ] || [ ! -x "$program" ]; then
    echo "usage: card_live_test.sh PATH/TO/staff-setup PATH/TO/担当者登録"
    exit 2
fi
missing=()
for command in ibus-daemon ibus xdotool Xvfb dbus-launch setsid python3; do
    command -v "$command" >/dev/null 2>&1 || missing+=("$command")
done
[ -x /usr/lib/ibus-mozc/ibus-engine-mozc ] || missing+=("ibus-engine-mozc (package ibus-mozc)")
[ -x /usr/lib/mozc/mozc_server ] || missing+=("mozc_server (package mozc-server)")
[ ${#missing[@]} -eq 0 ] || skip "the real input method session needs ${missing[*]} (scripts/ime-record.sh installs them)"

work="$(mktemp -d "${TMPDIR:-/tmp}/ime-card.XXXXXX")"
trap 'rm -rf "$work"' EXIT
"$setup_tool" --root "$work/demo" --demo --postcodes fixture --program "$program" >"$work/setup.log" 2>&1 || {
    cat "$work/setup.log"
    echo "FAILED: staff-setup could not make the demo installation"
    exit 1
}
cp "$here/session.sh" "$here/cases.sh" "$here/card_live_test.sh" "$work/"

# The record as the demo has it, before the typing.
python3 - "$work/demo/data/main.accdb" >"$work/before" <<'EOF' || {
import sqlite3, sys
row = sqlite3.connect(sys.argv[1]).execute("SELECT 姓, 名, カナ名 FROM M担当者 WHERE コード = '00001'").fetchone()
if row is None:
    sys.exit("the demo has no staff 00001")
print("\t".join(row))
EOF
    echo "FAILED: the demo installation has no staff 00001"
    exit 1
}

run=(bash "$work/card_live_test.sh" --as-user "$work")
if [ "$(id -u)" = 0 ]; then
    if ! id imerec >/dev/null 2>&1; then
        useradd --system --user-group --no-create-home --home-dir /nonexistent --shell /usr/sbin/nologin imerec ||
            skip "running as root and the plain user imerec could not be made"
    fi
    chown -R imerec: "$work"
    chmod 755 "$work"
    run=(runuser -u imerec -- "${run[@]}")
fi

(cd "$work" && TMPDIR="$work" "${run[@]}")
status=$?
[ "$status" = 77 ] && skip "the input method session could not start (see above)"

python3 - "$work" "$status" "$expected_tabs" <<'EOF'
import sqlite3
import sys

work, status, expected_tabs = sys.argv[1], int(sys.argv[2]), sys.argv[3]
before_surname, given, given_kana = open(f"{work}/before", encoding="utf-8").read().rstrip("\n").split("\t")
seen = {}
try:
    for line in open(f"{work}/result", encoding="utf-8"):
        name, _, value = line.rstrip("\n").partition("=")
        seen[name] = value
except FileNotFoundError:
    pass
main = sqlite3.connect(f"{work}/demo/data/main.accdb")
conf = sqlite3.connect(f"{work}/demo/conf/usrcnfg.accdb")
problems = []
if status != 0:
    problems.append(f"the typing did not go through: {seen.get('failure', f'the session ended with {status}')}")

row = main.execute("SELECT 姓, 名, 氏名, カナ姓, カナ名, カナ FROM M担当者 WHERE コード = '00001'").fetchone()
print(f"before: 姓 {before_surname!r}, 名 {given!r}, カナ名 {given_kana!r}")
print("M担当者 00001:", dict(zip(("姓", "名", "氏名", "カナ姓", "カナ名", "カナ"), row or ())))
wanted = {"姓": "鈴木", "名": given, "氏名": f"鈴木 {given}", "カナ姓": "ｽｽﾞｷ", "カナ名": given_kana,
          "カナ": f"ｽｽﾞｷ {given_kana}"}
if row is None:
    problems.append("M担当者 has no row 00001")
else:
    for (column, value), actual in zip(wanted.items(), row):
        if actual != value:
            problems.append(f"M担当者 00001 {column} is {actual!r}, not {value!r}")

log = main.execute("SELECT 赤黒区分, 氏名, カナ FROM L担当者 WHERE コード = '00001' ORDER BY rowid").fetchall()
print("L担当者 00001 (赤黒区分, 氏名, カナ):", log)
black = [r for r in log if r[0] == "1"]
if len(black) != 1:
    problems.append(f"{len(black)} black rows (赤黒区分 '1') in L担当者 for 00001, not 1")
elif black[0][1:] != (f"鈴木 {given}", f"ｽｽﾞｷ {given_kana}"):
    problems.append(f"the black row holds {black[0][1:]!r}")

tabs = seen.get("tabs")
print(f"save question after {tabs} Tabs from 姓 (expected {expected_tabs}); "
      f"it had the keyboard focus: {seen.get('question_focused')}")
if tabs is not None and tabs != expected_tabs:
    problems.append(f"the save question came after {tabs} Tabs from 姓, not {expected_tabs}")

before, after = seen.get("reads_before"), seen.get("reads_after")
print(f"T閲覧 rows for 00001 before and after 1 Tab typed into コード: {before} -> {after}")
if before is not None and (after is None or int(after) != int(before) + 1):
    problems.append(f"typing 1 Tab into コード did not read 00001 once (T閲覧 rows {before} -> {after})")

history = [r[0] for r in conf.execute("SELECT 摘要 FROM プログラム稼動履歴 ORDER BY rowid")]
runs = [h for h in history if h.startswith("開始")]
ends = [h for h in history if h == "終了"]
print("run history:", [h if len(h) < 40 else h[:40] + "…" for h in history])
if status == 0 and (len(runs) != 2 or len(ends) != 2 or history[-1] != "終了"):
    problems.append(f"the run history has {len(runs)} starts and {len(ends)} ends, not 2 of each")

if problems:
    print("FAILED: " + "; ".join(problems))
    sys.exit(1)
print("passed: 鈴木 typed through the input method into 姓, カナ姓 ｽｽﾞｷ followed, saved with its black log row; "
      "1 Tab in コード read 00001")
EOF
