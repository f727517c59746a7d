#!/usr/bin/env bash
# The house rules that a look at the sources can check: dialogs only in the
# platform's ui seam, the database engine only in the platform's data layer.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

status=0
report() {
    echo "$1:"
    echo "$2" | sed 's/^/  /'
    status=1
}

dialogs=$(grep -rlE 'QMessageBox|QFileDialog|QPrintDialog' src tools schema bench | grep -v '^src/platform/ui/' || true)
[ -z "$dialogs" ] || report "dialogs outside src/platform/ui" "$dialogs"

engine=$(grep -rlE 'QSql(Database|Query|Record|Error|Driver)' src tools schema | grep -v '^src/platform/db/' || true)
[ -z "$engine" ] || report "the database engine outside src/platform/db" "$engine"

signals=$(grep -rlE 'SIGNAL\(|SLOT\(' src tools || true)
[ -z "$signals" ] || report "string-based connections" "$signals"

# A Latin-1 string can hold no Japanese text: such a comparison never matches.
latin=$(grep -rnP 'QLatin1(String|Char)\("[^"]*[^\x00-\x7F]' src tools schema bench tests || true)
[ -z "$latin" ] || report "non-ASCII text in a Latin-1 string" "$latin"

# Lower layers never include higher ones:
# platform <- toolkit <- shell <- numbers/access/link/client <- startup/search/staff/report <- app.
rank() {
    case "$1" in
    platform) echo 0 ;; toolkit) echo 1 ;; shell) echo 2 ;;
    numbers | access | link | client) echo 3 ;;
    startup | search | staff | report) echo 4 ;; app) echo 5 ;; *) echo -1 ;;
    esac
}
upward=""
for file in $(find src -name '*.cpp' -o -name '*.h'); do
    own=$(rank "$(echo "$file" | cut -d/ -f2)")
    while IFS= read -r included; do
        [ -n "$included" ] || continue
        theirs=$(rank "$included")
        if [ "$theirs" -gt "$own" ]; then
            upward+="$file includes $included/"$'\n'
        fi
    done < <(sed -n 's|^#include "\([a-z]*\)/.*|\1|p' "$file")
done
[ -z "$upward" ] || report "includes of a higher layer" "$upward"

if [ $status -eq 0 ]; then
    echo "layering: 0 findings"
fi
exit $status
