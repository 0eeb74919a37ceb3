// A flag is activated: who may activate it, who gets the ball, and the flight to the receiver
// or into a goal.
#include <gtest/gtest.h>

#include <cmath>

#include "support.h"

namespace quorvel {
namespace {

using test::face;
using test::kick;
using test::putPlayer;

class Kick : public test::MatchUnderWay {
 protected:
  void SetUp() override { test::clearPitch(f); }
  void ticks(int n) { f.Sched.advance(n * 15); }
};

// The kicker on (8, 4) rolls a 2 and kicks right, to (10, 4).
TEST_F(Kick, TheNearestPlayerGetsTheBallAndEqualSidesGoToDiceOrRank) {
  struct Placed {
    int player, col, row;
  };
  struct Case {
    const char* what;
    std::vector<Placed> placed;
    int rank, kicker;
    std::vector<double> draws;              // after the die
    int receiver, contestWin, left, right;  // contest dice shown, 7 when none
    std::size_t pending;
  };
  // clang-format off
  const Case cases[] = {
      {"nobody nearer: the kicker chases", {}, 0, 9, {}, 9, kNoContest, 7, 7, 0},
      {"an opponent on the square, no dice", {{15, 10, 4}, {10, 10, 5}}, 0, 9, {0.99}, 15,
       kNoContest, 7, 7, 1},
      {"team-mates: the lower index", {{6, 10, 5}, {4, 10, 3}}, 1, 9, {}, 4, kNoContest, 7, 7, 0},
      {"dice, rolled again on a tie", {{6, 10, 3}, {14, 10, 5}, {2, 12, 6}}, 0, 9,
       {face(3), face(3), face(2), face(5)}, 14, kRightWonContest, 2, 5, 0},
      {"dice for the side's lowest index", {{6, 10, 3}, {14, 10, 5}, {4, 11, 4}}, 0, 9,
       {face(6), face(1)}, 4, kLeftWonContest, 6, 1, 0},
      {"rank: the lower place", {{5, 10, 3}, {13, 10, 5}}, 1, 9, {0.99}, 13, kNoContest, 7, 7, 1},
      {"rank: equal places, not the kickers", {{5, 10, 3}, {16, 10, 5}}, 1, 9, {}, 16,
       kNoContest, 7, 7, 0},
      {"rank: the same the other way", {{5, 10, 3}, {16, 10, 5}}, 1, 20, {}, 5, kNoContest, 7, 7,
       0},
  };
  // clang-format on
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    test::clearPitch(f);
    setValue(f, f.Ch50, c.rank);
    for (const Placed& p : c.placed) putPlayer(f, p.player, p.col, p.row);
    kick(f, c.kicker, 8, 4, 2, 2, c.draws);
    EXPECT_EQ(f.Receiver, c.receiver);
    EXPECT_EQ(f.ContestWin, c.contestWin);
    EXPECT_EQ(f.CDcontest[1].Image, "die" + std::to_string(c.left));
    EXPECT_EQ(f.CDcontest[2].Image, "die" + std::to_string(c.right));
    EXPECT_EQ(f.Rnd.forcedPending(), c.pending) << "draws taken";
    while (f.Rnd.forcedPending() > 0) f.Rnd.next();
  }
  // The longest kick: the kicker chases it over six diagonal squares.
  test::clearPitch(f);
  setValue(f, f.Ch50, 0);
  kick(f, 9, 2, 2, 6, 3);
  EXPECT_EQ(f.Receiver, 9);
  EXPECT_DOUBLE_EQ(f.ReceiverDist, 6 * std::sqrt(2.0));
}

TEST_F(Kick, ASubstituteWalkingOnHoldsTheCountButNotTheBall) {
  kick(f, 9, 8, 4, 2, 2);
  ticks(10);
  const double ballLeft = f.Ball.Left, runnerLeft = f.Player[9].Left;
  f.TimSub.setEnabled(true);
  ticks(5);
  EXPECT_EQ(f.KickTicks, 50);
  EXPECT_EQ(f.Player[9].Left, runnerLeft);
  EXPECT_NEAR(f.Ball.Left, ballLeft + 5 * f.BallStepX, 1e-9);
}

}  // namespace
}  // namespace quorvel
