// Shared set-ups for the unit tests: a loaded form, a started match, a finished walk.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "events/events.h"
#include "match/match.h"
#include "match/match_form.h"

namespace quorvel::test {

inline std::unique_ptr<MatchForm> loadedForm(std::uint64_t seed = 1) {
  return newMatchForm(seed);
}

// Presses Start with the kick-off forced to `side` (1 left, 2 right).
inline void startMatch(MatchForm& f, int side) {
  const bool firstMatch = f.GameCount == 0 || f.GameCount == 9999;
  if (firstMatch)
    f.Rnd.force({0.0, side == 1 ? 0.0 : 0.5});  // second draw decides
  else
    f.Rnd.force({side == 1 ? 0.0 : 0.5});
  userClick(f, f.CDgo);
}

// Runs ticks until the placement walk has ended; false if it is still going at `limitMs`.
inline bool finishWalk(MatchForm& f, Millis limitMs = 30000) {
  const Millis limit = f.Sched.now() + limitMs;
  while (f.TimPlace.Enabled())
    if (!f.Sched.step(limit)) return false;
  return true;
}

// A match started by `side` whose walk has ended: the side to play may roll.
inline std::unique_ptr<MatchForm> matchReady(int side, std::uint64_t seed = 1) {
  auto f = loadedForm(seed);
  startMatch(*f, side);
  EXPECT_TRUE(finishWalk(*f));
  return f;
}

inline bool onSquare(const MatchForm& f, int player) {
  return f.Player[player].Left == playerLeft(f.PlayerCol[player]) &&
         f.Player[player].Top == playerTop(f.PlayerRow[player]);
}

}  // namespace quorvel::test
