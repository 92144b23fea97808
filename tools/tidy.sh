#!/usr/bin/env bash
# Runs clang-tidy with the project's .clang-tidy over every source file of a
# configured build (default build/, which needs compile_commands.json).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/tools/install-deps.sh" checks
build="${1:-$root/build}"
cd "$root"
[ -f "$build/compile_commands.json" ] || cmake -S "$root" -B "$build" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >/dev/null
mapfile -t files < <(git ls-files '*.cpp')
printf '%s\n' "${files[@]}" | xargs -P "$(nproc)" -n 4 clang-tidy -p "$build" --quiet 2>/dev/null \
    | grep -E 'warning:|error:' | sort -u > "$build/tidy.log" || true
if [ -s "$build/tidy.log" ]; then
    cat "$build/tidy.log"
    echo "clang-tidy: $(wc -l < "$build/tidy.log") findings" >&2
    exit 1
fi
echo "clang-tidy: ${#files[@]} files clean"
