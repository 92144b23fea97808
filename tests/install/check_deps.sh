#!/usr/bin/env bash
# tools/install-deps.sh with dpkg-query, apt-get and sudo stood in for: apt-get
# runs only for what is missing, so a start with everything present works
# while another program holds the package database.
set -euo pipefail
script="$1/tools/install-deps.sh"
fake="$(mktemp -d)"
trap 'rm -rf "$fake"' EXIT
cat >"$fake/dpkg-query" <<'SH'
#!/bin/sh
for last; do :; done
[ "$last" = "${NETINFO_FAKE_MISSING:-}" ] && exit 1
printf 'install ok installed'
SH
printf '#!/bin/sh\necho "$*" >>"%s/apt-calls"\n' "$fake" >"$fake/apt-get"
printf '#!/bin/sh\nexec "$@"\n' >"$fake/sudo"
chmod +x "$fake"/*

# missing package | expected apt-get calls
while IFS='|' read -r missing expected; do
    rm -f "$fake/apt-calls"
    NETINFO_FAKE_MISSING="$missing" PATH="$fake:$PATH" bash "$script" >/dev/null
    calls="$(cat "$fake/apt-calls" 2>/dev/null || true)"
    calls="${calls//$'\n'/;}"
    if [ "$calls" != "$expected" ]; then
        echo "missing '$missing': apt-get was called with '$calls', expected '$expected'" >&2
        exit 1
    fi
done <<'ROWS'
|
cmake|update -q;install -y -q --no-install-recommends cmake
ROWS
