#!/bin/sh
# The game's window against its floor (bare_window.cpp), phase by phase, at three scales: first
# in instructions a tick, which callgrind counts the same whatever else the machine does
# (window_count.sh); then as ratios of processor time on the wall clock (the process's own user
# and system time, so that other work on the machine counts little), game and floor runs
# alternating, PAIRS of each per scale (default 1); then the first paint, the resident memory
# and the simulator's speed.
#   xvfb-run -a -s '-screen 0 2000x1300x24' bench/window.sh build [PAIRS]   (make bench-window)
set -eu
build=${1:-build}
pairs=${2:-1}
idle=5  # seconds of the ball idling
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
echo "machine: $(nproc) cores, load average $(cut -d' ' -f1-3 /proc/loadavg) at the start"
"$(dirname "$0")/window_count.sh" "$build"
echo
echo "processor on the wall clock, median of $pairs run(s) each"
for scale in 1.0 0.974 1.5; do
  for _ in $(seq "$pairs"); do
    "$build/bench/quorvel_window_bench" --phases $idle $scale 2>/dev/null >>"$out/game-$scale"
    "$build/bench/quorvel_bare_window" --phases $idle $scale 2>/dev/null >>"$out/floor-$scale"
  done
done
# The median of the values on the lines that start with $2 in file $1.
cpu() { grep "^$2" "$1" | sed 's/.*wake-ups\/s *\([0-9.]*\) % CPU.*/\1/' | sort -n |
  awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }
mb() { grep '^resident MB' "$1" | awk '{ print $3 }' | sort -n | head -1; }
printf '%-24s %6s %9s %9s %7s %9s\n' "% of a core" scale game floor ratio "vs 1.0"
for phase in "the walk after Start" "ball idling" "during kicks' flights"; do
  base=$(cpu "$out/game-1.0" "$phase")
  for scale in 1.0 0.974 1.5; do
    g=$(cpu "$out/game-$scale" "$phase") f=$(cpu "$out/floor-$scale" "$phase")
    echo "$phase|$scale|$g|$f|$base" | awk -F'|' '{ printf "%-24s %6s %8.2f%% %8.2f%% %6.2fx %8.2fx\n", $1, $2, $3, $4, $3 / $4, $3 / $5 }'
  done
done
g=$(mb "$out/game-1.0") f=$(mb "$out/floor-1.0")
echo "resident MB|$g|$f" | awk -F'|' '{ printf "%-24s %6s %8.1f  %8.1f  %6.2fx\n", $1, "1.0", $2, $3, $2 / $3 }'
"$(dirname "$0")/first_paint.sh" "$build" 9 2>/dev/null | tail -1
"$build/tools/quorvel-sim" --matches 2000 --iq 6 2>/dev/null | grep 'per cpu second' |
  sed 's/.*, \([0-9.]*\) matches per cpu second/\1/' |
  awk '{ printf "simulator: %.0f matches a processor second (IQ 6 against the mirror), %.2fx the 1,000 aimed at\n", $1, $1 / 1000 }'
echo "load average $(cut -d' ' -f1-3 /proc/loadavg) at the end"
