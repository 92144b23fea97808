#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test headless.
#   NETINFO_SANITIZE=1   build in build-asan with AddressSanitizer and UBSan
#   NETINFO_TSAN=1       build in build-tsan with ThreadSanitizer and run the suites
#                        with threads of their own: SDK, recorder, host, faults
#   NETINFO_WERROR=1     treat compiler warnings as errors (CI)
#   NETINFO_BUILD_DIR    build directory (default: build or build-asan)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/tools/install-deps.sh"

options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DNETINFO_WERROR="$([ "${NETINFO_WERROR:-0}" = "1" ] && echo ON || echo OFF)")
default_build="$root/build"
if [ "${NETINFO_SANITIZE:-0}" = "1" ]; then
    options+=(-DNETINFO_SANITIZE=ON)
    default_build="$root/build-asan"
    export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=1}"
    export LSAN_OPTIONS="${LSAN_OPTIONS:-suppressions=$root/tools/lsan.supp:print_suppressions=0}"
    export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"
fi
only=()
if [ "${NETINFO_TSAN:-0}" = "1" ]; then
    options+=(-DNETINFO_TSAN=ON -DNETINFO_BUILD_BENCH=OFF)
    default_build="$root/build-tsan"
    export TSAN_OPTIONS="${TSAN_OPTIONS:-halt_on_error=1:die_after_fork=0:second_deadlock_stack=1:suppressions=$root/tools/tsan.supp}"
    only=(-R 'tst_(sdk|sdklinux|recorder|core|connection|host_app|plugin_logic|faults)')
fi
build="${NETINFO_BUILD_DIR:-$default_build}"

cmake -S "$root" -B "$build" -G Ninja "${options[@]}"
cmake --build "$build" --parallel "$(nproc)"
cd "$build"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure --parallel "$(nproc)" "${only[@]}"
