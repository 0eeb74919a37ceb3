#!/bin/sh
# The game's window against its floor (bare_window.cpp) in instructions, which callgrind counts
# the same whatever else the machine is doing: each phase played with no clock, every tick
# painted before the next (--count), at three scales. Prints the instructions a tick of each
# phase, the ratio game / floor and the game against itself at scale 1.0. A kick's flight
# counts from the click on its flag; one whose 50/50 contest slides the names and scores is a
# phase of its own, which the floor does not have. Last, the instructions to the first frame.
#   xvfb-run -a -s '-screen 0 2000x1300x24' bench/window_count.sh build
set -eu
build=${1:-build}
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT

# One line for `$1 --count $2`: instructions and ticks of the walk, the idling, the plain
# flights and the 50/50 flights.
count() {
  rm -f "$out"/cg*
  valgrind --tool=callgrind --collect-atstart=no --toggle-collect='*countedPhase*' \
    --dump-after='quorvel::probe::countedPhase*' --callgrind-out-file="$out/cg" \
    "$build/bench/$1" --count "$2" 2>/dev/null >"$out/ticks"
  # Dump 1 is the walk, 2 the idling, each one after a kick's flight.
  for f in $(ls "$out"/cg.* | sort -t. -k2 -n); do grep '^totals:' "$f" | cut -d' ' -f2; done |
    awk -v ticks="$(tr '\n' ' ' <"$out/ticks")" '
      { cost[NR] = $1 }
      END {
        n = split(ticks, t, " ")  # ticks walk W idle I kicks T:C ...
        printf "%d %d %d %d", cost[1], t[3], cost[2], t[5]
        for (k = 7; k <= n; ++k) {
          split(t[k], kick, ":")
          c[kick[2]] += cost[k - 4]; s[kick[2]] += kick[1]
        }
        printf " %d %d %d %d\n", c[0], s[0], c[1], s[1]
      }'
}

for scale in 1.0 0.974 1.5; do
  echo "$scale $(count quorvel_window_bench "$scale") $(count quorvel_bare_window "$scale")"
done >"$out/counts"
echo "instructions a tick, counted by callgrind (each tick painted before the next)"
printf '%-26s %6s %10s %10s %7s %7s\n' phase scale game floor ratio "vs 1.0"
# Each line: the scale, then the game's and the floor's instructions and ticks of each phase.
awk '
  function each(cost, ticks) { return ticks > 0 ? cost / ticks : 0 }
  {
    s[NR] = $1
    for (i = 0; i < 4; ++i) {
      g[NR, i] = each($(2 + 2 * i), $(3 + 2 * i))
      f[NR, i] = each($(10 + 2 * i), $(11 + 2 * i))
    }
  }
  END {
    split("the walk after Start|ball idling|kicks'"'"' flights|a 50/50 kick'"'"'s flight", name, "|")
    for (i = 0; i < 4; ++i)
      for (n = 1; n <= NR; ++n) {
        if (g[n, i] == 0) continue
        printf "%-26s %6s %10.0f", name[i + 1], s[n], g[n, i]
        if (f[n, i] > 0) printf " %10.0f %6.2fx", f[n, i], g[n, i] / f[n, i]
        else printf " %10s %7s", "-", "-"
        printf " %6.2fx\n", (g[1, i] > 0 ? g[n, i] / g[1, i] : 0)
      }
  }' "$out/counts"

# The instructions from the start of the program to its first complete frame.
first() {
  rm -f "$out"/fp*
  valgrind --tool=callgrind --dump-before='QCoreApplication::quit*' \
    --callgrind-out-file="$out/fp" "$build/bench/$1" --first-paint 0 >/dev/null 2>&1
  grep '^totals:' "$out/fp.1" | cut -d' ' -f2
}
g=$(first quorvel_window_bench) f=$(first quorvel_bare_window)
echo "$g $f" | awk '{ printf "%-26s %6s %9.1fM %9.1fM %6.2fx\n", "to the first frame", "1.0", $1 / 1e6, $2 / 1e6, $1 / $2 }'
