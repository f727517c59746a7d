#!/usr/bin/env bash
# Installs what is missing, builds, and runs the benchmarks beside a
# throwaway PostgreSQL server, so that each runs on the desktop engine and on
# the server. At the end one table sums up every path: engine, the program's
# time, the raw engine's time for the same work, and their ratio.
#
#   scripts/bench.sh [BENCHMARK-ARG...]   e.g. --benchmark_filter=Postcode
#
# Each benchmark runs three times unless the arguments say how often
# (--benchmark_repetitions=N); the summary gives the median of the runs, since
# a single run on the server swings by tens of percent.
#
# The results of each program are kept as JSON in $STAFF_BENCH_OUT (default
# <build>/bench-results).
set -euo pipefail

repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${STAFF_BUILD_DIR:-$repo/build}"
export STAFF_BUILD_DIR="$build"
out="${STAFF_BENCH_OUT:-$build/bench-results}"

bash "$repo/scripts/install-deps.sh"
bash "$repo/scripts/build.sh"

export QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"
mkdir -p "$out"
programs=(staff-bench search-bench card-bench start-bench employee-bench report-bench)
for name in "${programs[@]}"; do
    if [ ! -x "$build/bench/$name" ]; then
        echo "bench: the build did not produce $build/bench/$name" >&2
        exit 1
    fi
done

args=("$@")
case " $* " in
*" --benchmark_repetitions="*) ;;
*) args+=(--benchmark_repetitions=3) ;;
esac

# One server for all programs: each makes its own databases on it.
export STAFF_BENCH_PROGRAMS="${programs[*]}" STAFF_BENCH_BUILD="$build" STAFF_BENCH_RESULTS="$out"
status=0
bash "$repo/scripts/with-postgres.sh" bash -c '
    status=0
    for name in $STAFF_BENCH_PROGRAMS; do
        echo "== $name"
        rm -f "$STAFF_BENCH_RESULTS/$name.json"
        "$STAFF_BENCH_BUILD/bench/$name" --benchmark_out="$STAFF_BENCH_RESULTS/$name.json" \
            --benchmark_out_format=json "$@" || status=1
    done
    exit $status' bench "${args[@]}" || status=$?

python3 - "$out" "${programs[@]}" <<'PY'
import json, os, re, statistics, sys

folder, programs = sys.argv[1], sys.argv[2:]
scale = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}  # to milliseconds

def split(name):
    """(path, engine, side) of a benchmark name, side "Raw" or "Program"."""
    m = re.fullmatch(r"(.+)/(Sqlite|Postgres)/(Raw|Program)", name)
    if m:
        return m.group(1), m.group(2), m.group(3)
    m = re.fullmatch(r"(.+)_(Raw|Program)", name)          # older names: the desktop engine
    if m:
        return m.group(1), "Sqlite", m.group(2)
    m = re.fullmatch(r"BM_(Raw|ReportProgram)(.+)", name)  # the report program's runs
    if m:
        return "Report" + m.group(2), "Sqlite", "Raw" if m.group(1) == "Raw" else "Program"
    return name, "-", "Program"

rows, order = {}, []
for program in programs:
    path = os.path.join(folder, program + ".json")
    if not os.path.exists(path) or os.path.getsize(path) == 0:  # none of its benchmarks ran
        continue
    try:
        with open(path) as f:
            data = json.load(f)
    except ValueError:
        print(f"bench: {program} left no readable results in {path}", file=sys.stderr)
        continue
    for b in data.get("benchmarks", []):
        if b.get("run_type", "iteration") != "iteration" or b.get("error_occurred"):
            continue
        where, engine, side = split(b["name"].split("/real_time")[0].split("/iterations:")[0])
        key = (program, where, engine)
        if key not in rows:
            rows[key] = {}
            order.append(key)
        rows[key].setdefault(side, []).append(b["real_time"] * scale[b["time_unit"]])
        if "ratio_to_raw" in b:
            rows[key].setdefault("ratio", []).append(b["ratio_to_raw"])

def ms(v):
    return "-" if v is None else (f"{v:.3f}" if v < 10 else f"{v:.1f}")

print()
print("Summary (times per run in milliseconds, the median of the repetitions; ratio = program / raw)")
print(f"{'program':<15} {'path':<26} {'engine':<9} {'program':>10} {'raw':>10} {'ratio':>7} {'runs':>5}")
for key in order:
    program, where, engine = key
    r = {side: statistics.median(values) for side, values in rows[key].items()}
    ratio = r["Program"] / r["Raw"] if r.get("Raw") and r.get("Program") else r.get("ratio")
    runs = len(rows[key].get("Program", []))
    print(f"{program:<15} {where:<26} {engine:<9} {ms(r.get('Program')):>10} {ms(r.get('Raw')):>10} "
          f"{'-' if ratio is None else f'{ratio:.2f}':>7} {runs:>5}")
PY
exit "$status"
