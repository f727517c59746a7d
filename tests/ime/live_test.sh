#!/usr/bin/env bash
# Types case "plain" (姓: yamada, Space, Enter) through the real input method
# (ibus with the mozc engine, on Xvfb, keys from xdotool) into the recorder and
# checks that 姓 ends as 山田 and that the reading やまだ came as a preedit
# before the commit of 山田.
#
#   live_test.sh PATH/TO/ime_recorder
#
# Exit status 77 (skipped) when the input method, xdotool, Xvfb or D-Bus are
# not installed or the session cannot start here; the reason is printed.
# Run as root, the case is typed as the plain system user "imerec" (mozc does
# not run as root), made when missing.
set -uo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
recorder="${1:-}"

skip() {
    echo "skipped: $*"
    exit 77
}

[ -x "$recorder" ] || {
    echo "usage: live_test.sh PATH/TO/ime_recorder"
    exit 2
}
missing=()
for command in ibus-daemon ibus xdotool Xvfb dbus-launch setsid python3; do
    command -v "$command" >/dev/null 2>&1 || missing+=("$command")
done
[ -x /usr/lib/ibus-mozc/ibus-engine-mozc ] || missing+=("ibus-engine-mozc (package ibus-mozc)")
[ -x /usr/lib/mozc/mozc_server ] || missing+=("mozc_server (package mozc-server)")
[ ${#missing[@]} -eq 0 ] || skip "the real input method session needs ${missing[*]} (scripts/ime-record.sh installs them)"

# A little slower than a recording: other tests may be running beside this one.
export IME_KEY_DELAY="${IME_KEY_DELAY:-0.3}" IME_STEP_DELAY="${IME_STEP_DELAY:-1.2}"

work="$(mktemp -d "${TMPDIR:-/tmp}/ime-live.XXXXXX")"
trap 'rm -rf "$work"' EXIT
cp "$recorder" "$here/session.sh" "$here/cases.sh" "$work/"
mkdir "$work/out"
run=(bash "$work/session.sh" --recorder "$work/ime_recorder" --out "$work/out" plain)
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
[ "$status" = 0 ] || {
    echo "FAILED: the session ended with $status"
    exit 1
}

python3 - "$work/out/plain.json" <<'EOF'
import json
import sys

with open(sys.argv[1], encoding="utf-8") as stream:
    log = json.load(stream)
events = [e for e in log["events"] if e.get("field") == "姓" and e["type"] == "InputMethod"]
final = {f["field"]: f["textAfter"] for f in log["final"]}
preedit = next((i for i, e in enumerate(events) if e["preedit"] == "やまだ"), None)
commit = next((i for i, e in enumerate(events) if e["commit"] == "山田"), None)
problems = []
if final.get("姓") != "山田":
    problems.append(f"姓 ends as {final.get('姓')!r}, not '山田'")
if preedit is None:
    problems.append("no preedit やまだ in 姓")
if commit is None:
    problems.append("no commit of 山田 in 姓")
if preedit is not None and commit is not None and preedit > commit:
    problems.append("the preedit やまだ came after the commit")
if problems:
    print("FAILED: " + "; ".join(problems))
    for e in log["events"]:
        print("  ", json.dumps(e, ensure_ascii=False))
    sys.exit(1)
print("passed: 姓 = 山田, preedit やまだ before the commit of 山田 "
      f"({len(log['events'])} events through {log['recorder']['inputMethod']})")
EOF
