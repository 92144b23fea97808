#!/usr/bin/env bash
# Runs every fuzz target to a number of executions (default 10^7) and prints
# executions, coverage and findings per target. Builds with clang in
# build-fuzz/ first. Usage: bench/fuzz.sh [RUNS] [TARGET...]; NETINFO_FUZZ_ARGS
# adds libFuzzer options, e.g. -max_total_time=1500 for a slow target.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
runs="${1:-10000000}"; shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(config graph_profile settings netdev netlink report_args)
build="$root/build-fuzz"
CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DNETINFO_FUZZ=ON -DNETINFO_BUILD_TESTS=OFF -DNETINFO_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --parallel "$(nproc)" --target "${targets[@]/#/fuzz_}"
for name in "${targets[@]}"; do
    log="$build/fuzz-$name.log"
    status=ok
    dict="$root/fuzz/$name.dict"
    [ -f "$dict" ] || dict="$root/fuzz/xml.dict"
    "$build/bin/fuzz_$name" -runs="$runs" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -dict="$dict" ${NETINFO_FUZZ_ARGS:-} -artifact_prefix="$build/fuzz-$name-" "$build/fuzz/corpus/$name" \
        >"$log" 2>&1 || status="FINDING (see $log)"
    execs=$(grep -oE 'stat::number_of_executed_units: *[0-9]+' "$log" | grep -oE '[0-9]+$' || echo "?")
    cov=$(grep -oE 'cov: [0-9]+ ft: [0-9]+' "$log" | tail -n 1 || echo "cov: ?")
    echo "fuzz_$name: $execs execs, $cov, $status"
done
