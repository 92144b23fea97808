#!/usr/bin/env bash
# Formats every C++ file with the project's .clang-format; --check only lists
# the files that differ and fails if there are any.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/tools/install-deps.sh" checks
cd "$root"
mapfile -t files < <(git ls-files '*.cpp' '*.h')
if [ "${1:-}" = "--check" ]; then
    bad=()
    for file in "${files[@]}"; do
        clang-format "$file" | cmp -s - "$file" || bad+=("$file")
    done
    if [ ${#bad[@]} -gt 0 ]; then
        printf 'Not formatted (run tools/format.sh):\n'; printf '  %s\n' "${bad[@]}"
        exit 1
    fi
    echo "format: ${#files[@]} files clean"
else
    clang-format -i "${files[@]}"
fi
