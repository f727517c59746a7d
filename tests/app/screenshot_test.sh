#!/usr/bin/env bash
# The program started on a demo installation under a real X server renders the
# staff card into a PNG with its Japanese text; the run leaves its start and end
# rows. Arguments: the installation tool and the program.
set -euo pipefail
setup_tool="$1"
program="$2"

if ! command -v xvfb-run >/dev/null 2>&1; then
    echo "xvfb-run is missing (Debian package xvfb)" >&2
    exit 1
fi
if [ -z "$(fc-list :lang=ja 2>/dev/null)" ]; then
    echo "no Japanese font is installed (Debian package fonts-noto-cjk)" >&2
    exit 1
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# The report program of the staff card is built beside the program.
"$setup_tool" --root "$work/demo" --demo --program "$program" \
    --report-program "$(dirname "$program")/担当者カード" --postcodes fixture > "$work/setup.log"

# Unset the offscreen platform of the other tests: this one draws on a real X server.
env -u QT_QPA_PLATFORM timeout 120 xvfb-run -a "$work/demo/prgbin/$(basename "$program")" \
    --screenshot "$work/card.png" 00000001 2> "$work/run.log" || {
    cat "$work/run.log" >&2
    exit 1
}

[ -s "$work/card.png" ] || { echo "no picture was written" >&2; exit 1; }
python3 - "$work/card.png" <<'PY'
import struct, sys, zlib
data = open(sys.argv[1], 'rb').read()
assert data[:8] == b'\x89PNG\r\n\x1a\n', 'not a PNG file'
width, height = struct.unpack('>II', data[16:24])
assert width >= 600 and height >= 400, f'the card is too small: {width}x{height}'
# A card with text on it has many shades; an empty window has a handful.
raw, pos = b'', 8
while pos < len(data):
    length, kind = struct.unpack('>I4s', data[pos:pos + 8])
    if kind == b'IDAT':
        raw += data[pos + 8:pos + 8 + length]
    pos += 12 + length
pixels = zlib.decompress(raw)
shades = len(set(pixels[i:i + 3] for i in range(0, min(len(pixels), 3_000_000), 3)))
assert shades > 50, f'the picture is nearly blank ({shades} shades)'
print(f'card {width}x{height}, {shades} shades')
PY

# The run wrote its start and end rows into the installation's history.
python3 - "$work/demo/conf/usrcnfg.accdb" <<'PY'
import sqlite3, sys
rows = [r[0] for r in sqlite3.connect(sys.argv[1]).execute(
    "SELECT 摘要 FROM プログラム稼動履歴 ORDER BY rowid")]
assert rows and rows[0].startswith('開始 00000001'), rows
assert rows[-1] == '終了', rows
print('history:', rows[0], '...', rows[-1])
PY
