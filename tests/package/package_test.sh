#!/usr/bin/env bash
# The Debian package as an office meets it: made with cpack from the build,
# its control data and contents read with dpkg-deb, unpacked into a
# temporary root, and its staff-setup run from there. The installation it
# makes must pass the program's --check, the program must draw its card under
# a real X server, the menu entry must pass desktop-file-validate, and the
# postcode master must take the postal service's file and refuse a broken one.
#
# Arguments: the build folder, the test fixtures folder, the project's version.
set -euo pipefail
build="$1"
fixtures="$2"
version="$3"

for tool in cpack dpkg-deb xvfb-run desktop-file-validate python3; do
    command -v "$tool" >/dev/null 2>&1 || { echo "FAIL: $tool is missing" >&2; exit 1; }
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }
started=$(date +%s)
step() { echo "[$(( $(date +%s) - started ))s] $*"; }

# --- The package, made from the build ---------------------------------------
step "cpack -G DEB"
cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work/pkg" > "$work/cpack.log" 2>&1 ||
    { cat "$work/cpack.log" >&2; fail "cpack failed"; }
debs=("$work"/pkg/*.deb)
[ "${#debs[@]}" -eq 1 ] && [ -f "${debs[0]}" ] || fail "cpack made no single .deb: ${debs[*]}"
deb="${debs[0]}"
arch=$(dpkg --print-architecture)
[ "$(basename "$deb")" = "staffmaster_${version}-1_${arch}.deb" ] || fail "unexpected package file name $(basename "$deb")"

step "dpkg-deb -I"
dpkg-deb -I "$deb" > "$work/info"
field() { dpkg-deb -f "$deb" "$1"; }
[ "$(field Package)" = staffmaster ] || fail "Package: $(field Package)"
[ "$(field Version)" = "${version}-1" ] || fail "Version: $(field Version), the project's is $version"
depends=$(field Depends)
echo "Depends: $depends"
# Each declared dependency as a whole entry of the comma-separated list.
has_dependency() {
    python3 - "$depends" "$1" <<'PY'
import re, sys
entries = [e.strip() for e in sys.argv[1].split(',')]
want = sys.argv[2]
ok = any(re.fullmatch(re.escape(want) + r'( \([^)]*\))?', e) for e in entries)
sys.exit(0 if ok else 1)
PY
}
for dependency in libqt6core6 libqt6gui6 libqt6widgets6 libqt6sql6 libqt6printsupport6 \
    libqt6sql6-sqlite libqt6sql6-psql libqt6sql6-odbc libsodium23 unzip \
    "fonts-noto-cjk | fonts-ipafont-gothic"; do
    has_dependency "$dependency" || fail "the package does not depend on $dependency"
done
grep -q '^ Description: staff master' "$work/info" || fail "no description: $(cat "$work/info")"

step "dpkg-deb -c"
dpkg-deb -c "$deb" > "$work/contents"
for path in ./usr/lib/staffmaster/担当者登録 ./usr/lib/staffmaster/担当者カード ./usr/lib/staffmaster/staff-setup \
    ./usr/share/doc/staffmaster/copyright ./usr/share/icons/hicolor/256x256/apps/staffmaster.png \
    ./usr/share/icons/hicolor/scalable/apps/staffmaster.svg; do
    grep -q " $path\$" "$work/contents" || fail "the package lacks $path"
done
grep -q ' ./usr/bin/staff-setup -> ../lib/staffmaster/staff-setup$' "$work/contents" ||
    fail "staff-setup is not on the PATH: $(grep bin/ "$work/contents")"

# --- An installation made by the package's own staff-setup ------------------
step "dpkg-deb -x"
root="$work/root"
dpkg-deb -x "$deb" "$root"
lib="$root/usr/lib/staffmaster"

step "staff-setup --root --demo --postcodes (zip) --menu"
inst="$work/inst"
export XDG_DATA_HOME="$work/data-home"
# Without --program: the tool takes the programs that lie beside it.
env -u DISPLAY -u QT_QPA_PLATFORM "$root/usr/bin/staff-setup" --root "$inst" --demo \
    --postcodes "$fixtures/postcodes-all-japan.zip" --menu > "$work/setup.log" 2>&1 ||
    { cat "$work/setup.log" >&2; fail "staff-setup from the package failed"; }
for program in 担当者登録 担当者カード; do
    [ -f "$inst/prgbin/$program" ] && [ ! -L "$inst/prgbin/$program" ] || fail "prgbin/$program is not a copied file"
    [ -x "$inst/prgbin/$program" ] || fail "prgbin/$program is not executable"
    cmp -s "$inst/prgbin/$program" "$lib/$program" || fail "prgbin/$program differs from the packaged one"
done

# The tree runs without the package: the unpacked root goes before the program is started.
rm -rf "$root"

step "担当者登録 --check"
env -u DISPLAY -u QT_QPA_PLATFORM "$inst/prgbin/担当者登録" --check > "$work/check.log" 2>&1 ||
    { cat "$work/check.log" >&2; fail "担当者登録 --check failed on the installation"; }
grep -q '^databases: *ok' "$work/check.log" || fail "the check did not report: $(cat "$work/check.log")"

step "担当者登録 --screenshot under xvfb-run"
env -u QT_QPA_PLATFORM timeout 120 xvfb-run -a "$inst/prgbin/担当者登録" --screenshot "$work/card.png" 00000001 \
    > "$work/run.log" 2>&1 || { cat "$work/run.log" >&2; fail "the program did not take its screenshot"; }
python3 - "$work/card.png" <<'PY'
import struct, sys
data = open(sys.argv[1], 'rb').read()
assert data[:8] == b'\x89PNG\r\n\x1a\n', 'not a PNG file'
width, height = struct.unpack('>II', data[16:24])
assert width >= 600 and height >= 400, f'the card is too small: {width}x{height}'
print(f'card {width}x{height}')
PY

step "desktop-file-validate"
entries=("$XDG_DATA_HOME"/applications/staffmaster-*.desktop)
[ "${#entries[@]}" -eq 1 ] && [ -f "${entries[0]}" ] || fail "no menu entry in $XDG_DATA_HOME/applications"
entry="${entries[0]}"
desktop-file-validate "$entry" > "$work/validate.log" 2>&1 || { cat "$work/validate.log" >&2; fail "invalid menu entry"; }
[ ! -s "$work/validate.log" ] || { cat "$work/validate.log" >&2; fail "desktop-file-validate complained"; }
grep -qx "Exec=\"$inst/prgbin/担当者登録\"" "$entry" || fail "the entry does not start the tree's program: $(grep Exec "$entry")"
grep -qx 'Name=担当者登録' "$entry" || fail "the entry's name"
grep -qx 'Categories=Office;' "$entry" || fail "the entry's categories"
icon=$(sed -n 's/^Icon=//p' "$entry")
[ -s "$icon" ] || fail "the entry's icon $icon is missing"

# --- The postcode master ----------------------------------------------------
postcodes() {
    python3 - "$inst/data/main.accdb" <<'PY'
import sqlite3, sys
c = sqlite3.connect(sys.argv[1])
n = c.execute('SELECT COUNT(*) FROM M郵便番号').fetchone()[0]
town = c.execute("SELECT 住所B FROM M郵便番号 WHERE 郵便番号 = '064-0820'").fetchone()
empty = c.execute("SELECT 住所B FROM M郵便番号 WHERE 郵便番号 = '060-0000'").fetchone()
print(n, town[0] if town else '-', repr(empty[0]) if empty else '-')
PY
}
joined="大通西（２０～２８丁目、南１条西２０～２８丁目、南２条西２０～２８丁目、南３条西２０～２８丁目、南４条西２０～２８丁目）"
[ "$(postcodes)" = "22 $joined ''" ] || fail "the postcodes from the zip: $(postcodes)"

step "staff-setup --update-postcodes (refused, then taken)"
head -c 1500 "$fixtures/postcodes-all-japan.csv" > "$work/cut.csv"
# The package's tool went with its root; unpacked once more for the update.
dpkg-deb -x "$deb" "$root"
set +e
env -u DISPLAY -u QT_QPA_PLATFORM "$root/usr/bin/staff-setup" --root "$inst" --update-postcodes "$work/cut.csv" \
    > "$work/update.log" 2>&1
rc=$?
set -e
[ "$rc" -eq 1 ] || { cat "$work/update.log" >&2; fail "a cut file was not refused (exit code $rc)"; }
grep -q '郵便番号データの形式が違います' "$work/update.log" || fail "no clear message: $(cat "$work/update.log")"
[ "$(postcodes)" = "22 $joined ''" ] || fail "the refused update changed the master: $(postcodes)"
env -u DISPLAY -u QT_QPA_PLATFORM "$root/usr/bin/staff-setup" --root "$inst" --update-postcodes fixture \
    > "$work/update.log" 2>&1 || { cat "$work/update.log" >&2; fail "the update failed"; }
grep -q '^郵便番号を入れ替えています: ' "$work/update.log" || fail "no progress line: $(cat "$work/update.log")"
count=$(postcodes | cut -d' ' -f1)
[ "$count" -gt 1000 ] || fail "the update left $count postcodes"

step "done: $(basename "$deb"), $(stat -c %s "$deb") bytes"
