#!/bin/sh
# CPU and memory of a long-running program left idle: starts it, waits for
# start-up to settle, then reads the CPU time of all its threads (the
# scheduler's nanosecond counters, not the 10 ms ticks of time(1)) over the
# window, and its resident memory.
#   bench/footprint.sh [-s settle] [-w window] name command [args...]
# Prints: name: cpu X us/s, cpu Y s/min, rss A kB after settle, max rss B kB
set -u
settle=5
window=60
while getopts s:w: opt; do
    case $opt in
    s) settle=$OPTARG ;;
    w) window=$OPTARG ;;
    *) exit 2 ;;
    esac
done
shift $((OPTIND - 1))
[ $# -ge 2 ] || { echo "usage: $0 [-s settle] [-w window] name command [args...]" >&2; exit 2; }
name=$1
shift

# Nanoseconds on CPU of every live thread of the process.
cpu_ns() {
    total=0
    for f in /proc/"$1"/task/*/schedstat; do
        read -r ns _ <"$f" 2>/dev/null || continue
        total=$((total + ns))
    done
    echo "$total"
}

"$@" >/dev/null 2>&1 &
pid=$!
sleep "$settle"
if ! kill -0 "$pid" 2>/dev/null; then
    echo "footprint.sh: $name ended during start-up" >&2
    exit 1
fi
rss=$(awk '/^VmRSS/ {print $2}' /proc/"$pid"/status)
start=$(cpu_ns "$pid")
sleep "$window"
end=$(cpu_ns "$pid")
hwm=$(awk '/^VmHWM/ {print $2}' /proc/"$pid"/status)
kill -TERM "$pid"
wait "$pid" 2>/dev/null
used=$((end - start))
awk -v n="$name" -v u="$used" -v w="$window" -v r="$rss" -v h="$hwm" 'BEGIN {
    printf "%s: cpu %.1f us/s, cpu %.4f s/min, rss %d kB after start, max rss %d kB\n",
        n, u / 1000 / w, u / 1e9 / w * 60, r, h }'
