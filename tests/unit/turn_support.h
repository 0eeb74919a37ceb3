// Set-ups for the tests of a turn: players put on chosen squares, dictated dice, ticks run
// until a kick or a celebration is over.
#pragma once

#include <memory>
#include <vector>

#include "events/events.h"
#include "match/match.h"
#include "support.h"

namespace quorvel::test {

// The draw that makes a random lo..hi come out as `value`.
inline double drawFor(int value, int lo, int hi) {
  return (value - lo + 0.5) / (hi - lo + 1);
}
inline double face(int n) {
  return drawFor(n, 1, 6);
}

// Runs due ticks, one at a time, until `done` holds; false if it does not within `ms`.
template <typename Done>
bool runUntil(MatchForm& f, Done done, Millis ms = 60000) {
  const Millis limit = f.Sched.now() + ms;
  while (!done())
    if (!f.Sched.step(limit)) return false;
  return true;
}

inline void putPlayer(MatchForm& f, int i, double col, double row) {
  f.PlayerCol[i] = col;
  f.PlayerRow[i] = row;
  f.Player[i].Left = playerLeft(col);
  f.Player[i].Top = playerTop(row);
}

// Everybody far off the pitch, out of reach of every kick, so that a test decides alone who
// stands near the target.
inline void clearPitch(MatchForm& f) {
  for (int i = 1; i <= 22; ++i) putPlayer(f, i, 100 + i, 100);
}

// Gives the ball to `owner` on (col, row) and the turn to his side, ready to roll.
inline void giveBall(MatchForm& f, int owner, int col, int row) {
  putPlayer(f, owner, col, row);
  f.BallOwner = static_cast<Single>(owner);
  f.TeamTurn = static_cast<Single>(sideOf(owner));
  f.BallCol = static_cast<Integer>(col);
  f.BallRow = static_cast<Integer>(row);
  f.DiceReady = 1;
}

// Rolls `n` by the die button (its click alone, as a key would).
inline void roll(MatchForm& f, int n) {
  f.Rnd.force({face(n)});
  press(f, f.Cdice);
}

// `owner` on (col, row) rolls `die` and activates `flag`; `more` are the draws after the die
// (contest dice). The roll goes straight to ClickDi, as the computer's does.
inline void kick(MatchForm& f, int owner, int col, int row, int die, int flag,
                 const std::vector<double>& more = {}) {
  giveBall(f, owner, col, row);
  f.Rnd.force({face(die)});
  f.Rnd.force(more);
  ClickDi(f);
  press(f, f.CDdest[flag]);
}

inline std::vector<int> visibleFlags(const MatchForm& f) {
  std::vector<int> v;
  for (int d = 0; d < 8; ++d)
    if (f.CDdest[d].Visible) v.push_back(d);
  return v;
}

// Flies the kick in the air to its end.
inline bool land(MatchForm& f) {
  return runUntil(f, [&f] { return f.KickFlag == -1; });
}

// A match under way with everybody cleared off the pitch; each test places whom it needs.
class ClearPitch : public ::testing::Test {
 protected:
  std::unique_ptr<MatchForm> match = matchReady(1);
  MatchForm& f = *match;

  void SetUp() override { clearPitch(f); }
  void kick(int owner, int col, int row, int die, int flag, std::vector<double> more = {}) {
    test::kick(f, owner, col, row, die, flag, more);
  }
  void ticks(int n) { f.Sched.advance(n * 15); }
};

}  // namespace quorvel::test
