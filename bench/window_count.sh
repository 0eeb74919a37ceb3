#!/bin/sh
# The game's window against its floor (bare_window.cpp) in instructions, which callgrind counts
# the same whatever else the machine is doing: each phase played with no clock, every tick
# painted before the next (--count), at three scales. Prints instructions a tick of each phase,
# the ratio game / floor and the game's cost against its own at scale 1.0.
#   xvfb-run -a -s '-screen 0 2000x1300x24' bench/window_count.sh build
set -eu
build=${1:-build}
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT

# Instructions of each counted phase of `$1 --count $2`, one line: walk idle flights, then the
# ticks of each (the programs print them).
count() {
  rm -f "$out"/cg*
  ticks=$(valgrind --tool=callgrind --collect-atstart=no \
    --toggle-collect='*countedPhase*' \
    --dump-after='quorvel::probe::countedPhase*' --callgrind-out-file="$out/cg" \
    "$build/bench/$1" --count "$2" 2>/dev/null | grep '^ticks')
  # Dumps 1 and 2 are the walk and the idling, the rest one kick's flight each.
  for f in $(ls "$out"/cg.* | sort -t. -k2 -n); do grep '^totals:' "$f" | cut -d' ' -f2; done |
    awk -v ticks="$ticks" 'NR == 1 { w = $1 } NR == 2 { i = $1 } NR > 2 { k += $1 }
      END { split(ticks, t, " "); print w, i, k, t[3], t[5], t[7] }'
}

echo "instructions a tick, counted by callgrind (each tick painted before the next)"
printf '%-24s %6s %12s %12s %7s %9s\n' phase scale game floor ratio "vs 1.0"
for scale in 1.0 0.974 1.5; do
  echo "$scale $(count quorvel_window_bench "$scale") $(count quorvel_bare_window "$scale")"
done >"$out/counts"
# Each line: scale, the game's walk idle flights and their ticks, the floor's the same.
awk '
  { s[NR] = $1; for (i = 0; i < 3; ++i) { g[NR, i] = $(2 + i) / $(5 + i); f[NR, i] = $(8 + i) / $(11 + i) } }
  END {
    split("the walk after Start|ball idling|during kicks'"'"' flights", name, "|")
    for (i = 0; i < 3; ++i)
      for (n = 1; n <= NR; ++n)
        printf "%-24s %6s %12.0f %12.0f %6.2fx %8.2fx\n", name[i + 1], s[n], g[n, i], f[n, i],
          g[n, i] / f[n, i], g[n, i] / g[1, i]
  }' "$out/counts"
