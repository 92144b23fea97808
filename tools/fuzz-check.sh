#!/usr/bin/env bash
# Builds the fuzz targets with clang in build-fuzz/ and runs each for 30 s
# (the ctest label "fuzz"). A finding fails the run; its input is left in
# build-fuzz/fuzz/ to be kept under tests/fuzz/<target>/.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/tools/install-deps.sh" checks
build="${NETINFO_FUZZ_BUILD_DIR:-$root/build-fuzz}"
CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DNETINFO_FUZZ=ON -DNETINFO_BUILD_TESTS=OFF -DNETINFO_BUILD_BENCH=OFF >/dev/null
mapfile -t targets < <(sed -n 's/^foreach(name \(.*\))$/\1/p' "$root/fuzz/CMakeLists.txt" | tr ' ' '\n')
cmake --build "$build" --parallel "$(nproc)" --target "${targets[@]/#/fuzz_}"
cd "$build"
ctest -L fuzz --output-on-failure
