#!/usr/bin/env bash
# The command lines of the three programs without a display: --help prints the
# usage in Japanese and English, --version the version, both with exit code 0;
# a word that starts with "--" and is no option is refused with a usage line.
# Arguments: 担当者登録, 担当者カード, staff-setup, the project's version.
set -euo pipefail
app="$1"
report="$2"
setup_tool="$3"
version="$4"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

# No display of any kind, and no platform chosen for the programs.
run() {
    set +e
    env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "$@" > "$work/out" 2> "$work/err"
    rc=$?
    set -e
}

for program in "$app" "$report" "$setup_tool"; do
    name=$(basename "$program")

    run "$program" --help
    [ "$rc" -eq 0 ] || fail "$name --help: exit code $rc: $(cat "$work/err")"
    grep -q '^使い方 / Usage' "$work/out" || fail "$name --help: no usage line: $(cat "$work/out")"
    grep -q 'この説明 / this text' "$work/out" || fail "$name --help: --help is not explained in both languages"
    grep -q 'the version' "$work/out" || fail "$name --help: --version is not explained"

    run "$program" --version
    [ "$rc" -eq 0 ] || fail "$name --version: exit code $rc"
    [ "$(cat "$work/out")" = "$name $version" ] || fail "$name --version printed: $(cat "$work/out")"

    run "$program" --no-such-option
    [ "$rc" -eq 2 ] || fail "$name --no-such-option: exit code $rc, not 2"
    grep -q -- '--no-such-option' "$work/err" || fail "$name: the wrong option is not named: $(cat "$work/err")"
    grep -q '使い方 / Usage' "$work/err" || fail "$name: no usage line after a wrong option"
    [ ! -s "$work/out" ] || fail "$name: a wrong option printed on the standard output: $(cat "$work/out")"
    echo "$name: --help, --version and a wrong option answered without a display"
done

# The office and staff code stay the program's command line, and --check still runs on it:
# outside an installation the check fails for the installation, not for the command line.
run "$app" --check 00000001
[ "$rc" -ne 2 ] || fail "担当者登録 --check 00000001 was taken for a wrong command line: $(cat "$work/err")"
grep -q 'unknown option' "$work/err" && fail "担当者登録 took the office and staff code for an option"
echo "担当者登録 --check 00000001: exit code $rc outside an installation"

# The tool's usage errors name what is wrong.
run "$setup_tool" --root "$work/x" --menu --no-menu
[ "$rc" -eq 2 ] || fail "staff-setup --menu --no-menu: exit code $rc"
grep -q -- '--menu と --no-menu' "$work/err" || fail "staff-setup --menu --no-menu: $(cat "$work/err")"
run "$setup_tool" --root "$work/x" --update-postcodes fixture --demo
[ "$rc" -eq 2 ] || fail "staff-setup --update-postcodes --demo: exit code $rc"
[ ! -e "$work/x" ] || fail "staff-setup made $work/x after a usage error"
echo "staff-setup: usage errors refused"

# The menu entry: a new tree needs a program to start; an existing installation gets only its entry.
export XDG_DATA_HOME="$work/data-home"
run "$setup_tool" --root "$work/new" --menu --postcodes fixture
[ "$rc" -eq 2 ] || fail "staff-setup --menu without a program: exit code $rc"
grep -q -- '--menu には prgbin に置くプログラムが要ります' "$work/err" || fail "staff-setup --menu without a program: $(cat "$work/err")"
[ ! -e "$work/new" ] || fail "staff-setup made $work/new after a usage error"
run "$setup_tool" --root "$work/inst" --postcodes fixture --program "$app"
[ "$rc" -eq 0 ] || fail "staff-setup --root inst: exit code $rc: $(cat "$work/err")"
before=$(cd "$work/inst" && find . -printf '%p %s %T@\n' | sort)
run "$setup_tool" --root "$work/inst" --menu
[ "$rc" -eq 0 ] || fail "staff-setup --menu on an installation: exit code $rc: $(cat "$work/err")"
grep -q '^メニューに登録しました: ' "$work/out" || fail "staff-setup --menu said: $(cat "$work/out")"
after=$(cd "$work/inst" && find . -printf '%p %s %T@\n' | sort)
[ "$before" = "$after" ] || fail "the menu entry changed the installation"
entries=("$XDG_DATA_HOME"/applications/staffmaster-*.desktop)
[ -f "${entries[0]}" ] || fail "no menu entry was written"
grep -qx "Exec=\"$work/inst/prgbin/担当者登録\"" "${entries[0]}" || fail "the entry: $(cat "${entries[0]}")"
# An option that makes a tree is no menu-only run: the installation is not empty and is refused.
run "$setup_tool" --root "$work/inst" --demo --menu --program "$app"
[ "$rc" -eq 1 ] || fail "staff-setup --demo --menu on an installation: exit code $rc"
grep -q 'インストール先フォルダが空ではありません' "$work/err" || fail "staff-setup --demo --menu: $(cat "$work/err")"
echo "staff-setup --menu: a menu-only run on an installation, refusals elsewhere"
