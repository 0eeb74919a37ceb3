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
      {"nobody nearer: the kicker chases", {}, 0, 9, {}, 9, 0, 7, 7, 0},
      {"an opponent on the square, no dice", {{15, 10, 4}, {10, 10, 5}}, 0, 9, {0.99}, 15, 0, 7, 7,
       1},
      {"team-mates: the lower index", {{6, 10, 5}, {4, 10, 3}}, 1, 9, {}, 4, 0, 7, 7, 0},
      {"dice, rolled again on a tie", {{6, 10, 3}, {14, 10, 5}, {2, 12, 6}}, 0, 9,
       {face(3), face(3), face(2), face(5)}, 14, 22, 2, 5, 0},
      {"dice for the side's lowest index", {{6, 10, 3}, {14, 10, 5}, {4, 11, 4}}, 0, 9,
       {face(6), face(1)}, 4, 11, 6, 1, 0},
      {"rank: the lower place", {{5, 10, 3}, {13, 10, 5}}, 1, 9, {0.99}, 13, 0, 7, 7, 1},
      {"rank: equal places, not the kickers", {{5, 10, 3}, {16, 10, 5}}, 1, 9, {}, 16, 0, 7, 7, 0},
      {"rank: the same the other way", {{5, 10, 3}, {16, 10, 5}}, 1, 20, {}, 5, 0, 7, 7, 0},
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

TEST_F(Kick, FlagsRefuseTheSideThatMayNotUseThem) {
  struct Case {
    int mode, owner, from;
    bool accepted;
  };
  const Case cases[] = {
      {0, 20, 0, true},                                         // Free Mode: all
      {1, 9, 0, true},  {1, 20, 0, false},  {1, 20, 77, true},  // Mouse vs Keys
      {2, 9, 0, true},  {2, 20, 77, false}, {2, 20, 33, true},  // Play Left vs AI
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message()
                 << "mode " << c.mode << " owner " << c.owner << " from " << c.from);
    select(f, f.OpMode[c.mode]);
    f.KickFlag = -1;
    f.ClickFrom = static_cast<Single>(c.from);
    f.TimAI.setEnabled(true);
    kick(f, c.owner, 8, 4, 2, 6);
    EXPECT_EQ(f.KickFlag, c.accepted ? 6 : -1);
    EXPECT_EQ(test::visibleFlags(f).size(), c.accepted ? 0u : 8u);
    EXPECT_EQ(f.ClickFrom, c.accepted ? 0 : c.from);
    EXPECT_EQ(f.TimAI.Enabled(), !c.accepted) << "an accepted kick ends the computer's turn";
  }
}

TEST_F(Kick, APassArrivesOnTheTargetSquareAndAnInterceptionHandsOverTheTurn) {
  select(f, f.OpMode[2]);
  putPlayer(f, 10, 11, 5);
  kick(f, 9, 8, 4, 2, 2);
  const double flagLeft = f.CDdest[2].Left;
  ticks(59);
  EXPECT_EQ(f.KickTicks, 1);
  ticks(1);
  EXPECT_EQ(f.BallOwner, 10);
  EXPECT_EQ(f.Player[10].Left, playerLeft(10));
  EXPECT_EQ(f.Player[10].Top, playerTop(4));
  EXPECT_NEAR(f.Ball.Left, flagLeft, 1e-6);
  EXPECT_EQ(f.DiceReady, 1);
  EXPECT_TRUE(f.TimB.Enabled()) << "the next tick dribbles";
  EXPECT_EQ(f.Poses[1].Text, " 100%");
  EXPECT_EQ(f.AIGo, 0);

  putPlayer(f, 15, 12, 4);
  kick(f, 10, 10, 4, 2, 2);
  f.Vai.Value = 750;  // read when the ball arrives
  test::land(f);
  EXPECT_EQ(f.BallOwner, 15);
  EXPECT_EQ(f.AIGo, 1);
  EXPECT_EQ(f.TimAI.Interval(), 750);
  EXPECT_TRUE(f.TimAI.Enabled());
  EXPECT_EQ(f.Poses[2].Text, " 0%") << "both kicks were the left side's";
}

TEST_F(Kick, AShotCountsForTheSideWhoseGoalItIsNot) {
  struct Case {
    int col, row, die, flag, goalSide;
  };
  const Case cases[] = {{16, 4, 1, 3, 1}, {16, 6, 1, 1, 1}, {15, 5, 2, 2, 1},
                        {1, 3, 1, 5, 2},  {3, 5, 3, 6, 2},  {1, 6, 1, 7, 2}};
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << "flag " << c.flag);
    kick(f, 9, c.col, c.row, c.die, c.flag);
    ASSERT_EQ(f.GoalFlag, c.flag);
    test::land(f);
    EXPECT_EQ(f.GoalSide, c.goalSide);
    EXPECT_TRUE(f.TimSc.Enabled());
    EXPECT_EQ(f.DiceReady, -1) << "no roll until the restart";
    f.TimSc.setEnabled(false);
  }
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

TEST_F(Kick, ShotMarksSurviveOnlyForTheOnlyShot) {
  kick(f, 9, 16, 4, 1, 2);  // two shots offered, one taken
  EXPECT_EQ(f.GoalFlag, 2);
  for (int d = 0; d < 8; ++d) EXPECT_EQ(f.FlagGoal[d], -1);
  kick(f, 9, 16, 4, 1, 4);  // two offered, neither taken
  EXPECT_EQ(f.GoalFlag, -1);
  kick(f, 9, 3, 5, 3, 6);  // the only shot
  EXPECT_EQ(f.FlagGoal[6], 1);
  EXPECT_EQ(f.TargetCol, 0);
  EXPECT_EQ(f.TargetRow, 5);
}

}  // namespace
}  // namespace quorvel
