#!/bin/sh
# Runs the benchmark binaries of a build and prints the final line of each
# (name: median ..., p90 ..., floor ..., ratio ...) with the figure's goal.
#   bench/run.sh [build-dir] [bench_name...]   (default: build, every bench)
# The kill loop and the soak take minutes; name the others to leave them out.
set -u
build=${1:-build}
[ $# -gt 0 ] && shift
dir=$build/bench
if [ ! -d "$dir" ]; then
    echo "run.sh: no $dir; build the project first" >&2
    exit 1
fi

# The goal each figure is held to, by the name its line starts with.
goal() {
    case $1 in
    tick_handler_*) echo "goal <= 40 us" ;;
    tick_end_to_end_*) echo "goal <= 150 us" ;;
    bench_graph) echo "goal <= 100 us" ;;
    sampler_cpu_per_s) echo "goal <= 10 us per second" ;;
    ledger_*_sum) echo "goal <= 1000 us" ;;
    start_*) echo "goal median <= 120000 us, worst <= 250000 us" ;;
    bench_killloop) echo "goal: loss <= the commit interval, no integrity failure" ;;
    bench_soak) echo "goal: no crash, RSS grows only by what is kept on purpose" ;;
    *) echo "" ;;
    esac
}

if [ $# -gt 0 ]; then
    benches=$(for name in "$@"; do printf '%s/%s\n' "$dir" "$name"; done)
else
    benches=$(ls "$dir"/bench_* 2>/dev/null)
fi
status=0
found=0
for bench in $benches; do
    [ -f "$bench" ] && [ -x "$bench" ] || continue
    found=1
    out=$(QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} "$bench" 2>/dev/null)
    rc=$?
    lines=$(printf '%s\n' "$out" | grep -E '^[A-Za-z0-9_]+: (median|worst) ')
    [ -n "$lines" ] || lines="$(basename "$bench"): $(printf '%s\n' "$out" | tail -n 1)"
    printf '%s\n' "$lines" | while IFS= read -r line; do
        printf '%s   [%s]\n' "$line" "$(goal "${line%%:*}")"
    done
    if [ "$rc" -ne 0 ]; then
        echo "run.sh: $(basename "$bench") exited with $rc" >&2
        status=1
    fi
done
[ "$found" -eq 1 ] || { echo "run.sh: no benchmark binaries in $dir" >&2; exit 1; }
exit $status
