#!/usr/bin/env bash
# Installs what is missing, builds the application with its plug-in and data,
# and runs it. Arguments go to the application (--screenshot, --quit-after).
# Without a display it runs headless and saves a screenshot.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/tools/install-deps.sh"

build="${NETINFO_BUILD_DIR:-$root/build}"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" --parallel "$(nproc)" --target netinfo netinfo-recorder netinfo-report
exec "$build/bin/netinfo" "$@"
