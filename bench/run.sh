#!/bin/sh
# Runs every benchmark binary found in the build's bench directory and prints
# the final line of each (name: median ..., p90 ..., floor ..., ratio ...).
#   bench/run.sh [build-dir]   (default: build)
set -u
build=${1:-build}
dir=$build/bench
if [ ! -d "$dir" ]; then
    echo "run.sh: no $dir; build the project first" >&2
    exit 1
fi
status=0
found=0
for bench in "$dir"/bench_*; do
    [ -f "$bench" ] && [ -x "$bench" ] || continue
    found=1
    out=$(QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} "$bench" 2>/dev/null)
    rc=$?
    lines=$(printf '%s\n' "$out" | grep -E '^[A-Za-z0-9_]+: median ')
    if [ -n "$lines" ]; then
        printf '%s\n' "$lines"
    else
        # Benchmarks without the common line still show their last one.
        printf '%s: %s\n' "$(basename "$bench")" "$(printf '%s\n' "$out" | tail -n 1)"
    fi
    if [ "$rc" -ne 0 ]; then
        echo "run.sh: $(basename "$bench") exited with $rc" >&2
        status=1
    fi
done
[ "$found" -eq 1 ] || { echo "run.sh: no benchmark binaries in $dir" >&2; exit 1; }
exit $status
