// Shared set-ups for the unit tests: a match under way, players on chosen squares, the ball at
// a chosen player's feet, dictated dice, ticks run until a walk or a kick is over.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "events/events.h"
#include "match/match.h"
#include "match/match_form.h"

namespace quorvel::test {

// The draw that makes the die show n.
inline double face(int n) {
  return (n - 0.5) / 6;
}

// Presses Start of a first match with the kick-off forced to `side` (1 left, 2 right).
inline void startMatch(MatchForm& f, int side) {
  f.Rnd.force({0.0, side == 1 ? 0.0 : 0.5});  // the second draw decides
  userClick(f, f.CDgo);
}

// Runs due ticks, one at a time, until `done` holds; false if it does not within `ms`.
template <typename Done>
bool runUntil(MatchForm& f, Done done, Millis ms = 60000) {
  const Millis limit = f.Sched.now() + ms;
  while (!done())
    if (!f.Sched.step(limit)) return false;
  return true;
}
inline bool finishWalk(MatchForm& f) {
  return runUntil(f, [&f] { return !f.TimPlace.Enabled(); });
}
inline bool land(MatchForm& f) {
  return runUntil(f, [&f] { return f.KickFlag == -1; });
}

// A match started by `side` whose walk has ended: the side to play may roll.
inline std::unique_ptr<MatchForm> matchReady(int side, std::uint64_t seed = 1) {
  auto f = newMatchForm(seed);
  startMatch(*f, side);
  EXPECT_TRUE(finishWalk(*f));
  return f;
}

inline void putPlayer(MatchForm& f, int i, double col, double row) {
  f.PlayerCol[i] = col;
  f.PlayerRow[i] = row;
  f.Player[i].Left = playerLeft(col);
  f.Player[i].Top = playerTop(row);
}

// Everybody off the pitch, out of reach of every kick: a test places whom it needs.
inline void clearPitch(MatchForm& f) {
  for (int i = 1; i <= 22; ++i) putPlayer(f, i, 100 + i, 100);
}

// Gives the ball to `owner` on (col, row) and the turn to his side, ready to roll; a kick
// still in flight is over.
inline void giveBall(MatchForm& f, int owner, int col, int row) {
  putPlayer(f, owner, col, row);
  f.BallOwner = static_cast<Single>(owner);
  f.TeamTurn = static_cast<Single>(sideOf(owner));
  f.BallCol = static_cast<Integer>(col);
  f.BallRow = static_cast<Integer>(row);
  f.DiceReady = kDiceReady;
  f.KickFlag = -1;
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

// The first flag on show, clockwise from up; -1 for none.
inline int firstFlag(const MatchForm& f) {
  for (int d = 0; d < 8; ++d)
    if (f.CDdest[d].Visible) return d;
  return -1;
}

// A match under way, kicked off by the left side, its walk over; giveBall moves the ball.
class MatchUnderWay : public ::testing::Test {
 protected:
  std::unique_ptr<MatchForm> match = matchReady(1);
  MatchForm& f = *match;
};

}  // namespace quorvel::test
