#!/bin/sh
# First complete paint of the game's window against a bare Qt window showing the same pitch:
# PAIRS interleaved runs of each (default 9), then the medians and their ratio.
#   xvfb-run -a -s '-screen 0 1600x1000x24' bench/first_paint.sh build [PAIRS]
set -eu
build=${1:-build}
pairs=${2:-9}
game=$(mktemp) floor=$(mktemp)
trap 'rm -f "$game" "$floor"' EXIT
for _ in $(seq "$pairs"); do
  "$build/bench/quorvel_window_bench" --first-paint "$(date +%s%N)" >>"$game"
  "$build/bench/quorvel_bare_window" --first-paint "$(date +%s%N)" >>"$floor"
done
median() { sort -n "$1" | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }
g=$(median "$game") f=$(median "$floor")
echo "game  ms: $(tr '\n' ' ' <"$game")"
echo "floor ms: $(tr '\n' ' ' <"$floor")"
echo "median game $g ms, floor $f ms, ratio $(echo "$g $f" | awk '{ printf "%.2f", $1 / $2 }')"
