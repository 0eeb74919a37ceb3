// The ball timer: the dribble at the owner's feet, the flight, and the hand-over on arrival.
#include <gtest/gtest.h>

#include "turn_support.h"

namespace quorvel {
namespace {

using test::giveBall;
using test::putPlayer;

class Ball : public test::ClearPitch {};

TEST_F(Ball, APassEndsWithTheReceiverOnTheTargetSquare) {
  putPlayer(f, 10, 11, 5);
  kick(9, 8, 4, 2, 2);
  const double flagLeft = f.CDdest[2].Left, flagTop = f.CDdest[2].Top;
  ticks(59);
  EXPECT_EQ(f.KickFlag, 2);
  EXPECT_EQ(f.KickTicks, 1);
  EXPECT_EQ(f.Poses[1].Text, "Possession");
  ticks(1);

  EXPECT_EQ(f.KickFlag, -1);
  EXPECT_EQ(f.BallOwner, 10);
  EXPECT_EQ(f.Player[10].Left, playerLeft(10));
  EXPECT_EQ(f.Player[10].Top, playerTop(4));
  EXPECT_EQ(f.BallCol, 10);
  EXPECT_EQ(f.BallRow, 4);
  EXPECT_EQ(f.TeamTurn, 1);
  EXPECT_NEAR(f.Ball.Left, flagLeft, 1e-6);
  EXPECT_NEAR(f.Ball.Top, flagTop, 1e-6);
  EXPECT_EQ(f.DiceReady, 1);
  EXPECT_TRUE(f.TimB.Enabled()) << "the next tick dribbles";
  EXPECT_EQ(f.Poses[1].Text, " 100%");
  EXPECT_EQ(f.Poses[2].Text, " 0%");
  EXPECT_EQ(f.TXtim.Text, "00:15");
}

TEST_F(Ball, AnInterceptionHandsTheTurnToTheOtherSide) {
  select(f, f.OpMode[2]);
  putPlayer(f, 15, 10, 4);
  kick(9, 8, 4, 2, 2);
  f.Vai.Value = 750;  // read when the ball arrives
  test::land(f);
  EXPECT_EQ(f.BallOwner, 15);
  EXPECT_EQ(f.TeamTurn, 2);
  EXPECT_EQ(f.AIGo, 1);
  EXPECT_TRUE(f.TimAI.Enabled());
  EXPECT_EQ(f.TimAI.Interval(), 750);
}

TEST_F(Ball, AShotEndsInTheGoalWithNobodyRunning) {
  struct Case {
    int col, row, die, flag, goalSide;
  };
  for (const Case& c : {Case{16, 4, 1, 3, 1}, Case{3, 5, 3, 6, 2}}) {
    kick(9, c.col, c.row, c.die, c.flag);
    const double left = f.Player[9].Left, top = f.Player[9].Top;
    const double flagLeft = f.CDdest[c.flag].Left;
    test::land(f);
    EXPECT_EQ(f.GoalSide, c.goalSide);
    EXPECT_EQ(f.Player[9].Left, left);
    EXPECT_EQ(f.Player[9].Top, top);
    EXPECT_NEAR(f.Ball.Left, flagLeft, 1e-6);
    EXPECT_TRUE(f.TimSc.Enabled());
    EXPECT_FALSE(f.TimB.Enabled());
    EXPECT_FALSE(f.Lablurb.Visible);
    EXPECT_EQ(f.DiceReady, -1) << "no roll until the restart";
    f.TimSc.setEnabled(false);
  }
  EXPECT_EQ(f.TXtim.Text, "00:30") << "a shot is a move too";
}

TEST_F(Ball, AContestSlidesNamesAndScoresTogetherAndBack) {
  putPlayer(f, 6, 10, 3);
  putPlayer(f, 14, 10, 5);
  const double team1 = f.Team[1].Left, team2 = f.Team[2].Left;
  const double goals1 = f.Goals[1].Left, goals2 = f.Goals[2].Left;
  kick(9, 8, 4, 2, 2, {test::face(1), test::face(4)});
  ASSERT_EQ(f.ContestWin, 22);
  ticks(21);
  EXPECT_EQ(f.Team[1].Left, team1 + 315);
  EXPECT_EQ(f.Team[2].Left, team2 - 315);
  EXPECT_EQ(f.Goals[1].Left, goals1 + 315);
  EXPECT_EQ(f.Goals[2].Left, goals2 - 315);
  ticks(22);  // KickTicks 17
  EXPECT_EQ(f.Ch50.ForeColor, f.TXgame[0].ForeColor);
  EXPECT_EQ(f.Team[1].Left, team1);
  ticks(1);
  EXPECT_EQ(f.Ch50.ForeColor, f.GreyGreen.ForeColor);
  test::land(f);
  EXPECT_EQ(f.Team[1].Left, team1);
  EXPECT_EQ(f.Team[2].Left, team2);
  EXPECT_EQ(f.Goals[2].Left, goals2);
  EXPECT_EQ(f.BallOwner, 14);
}

TEST_F(Ball, ASubstituteWalkingOnHoldsTheCountButNotTheBall) {
  kick(9, 8, 4, 2, 2);
  ticks(10);
  const double ballLeft = f.Ball.Left, runnerLeft = f.Player[9].Left;
  f.TimSub.setEnabled(true);
  ticks(5);
  EXPECT_EQ(f.KickTicks, 50);
  EXPECT_EQ(f.Player[9].Left, runnerLeft);
  EXPECT_NEAR(f.Ball.Left, ballLeft + 5 * f.BallStepX, 1e-9);
}

TEST_F(Ball, TheIdleBallTurnsBackAtTheEdgesOfItsBox) {
  giveBall(f, 9, 8, 4);
  const double L = f.Player[9].Left, T = f.Player[9].Top;
  f.KickFlag = -1;
  f.DribbleDx = f.DribbleDy = 0;
  f.Ball.Left = L + 100;
  f.Ball.Top = T + 100;
  f.Player[9].Left += 30;  // knocked off its square: put back
  TimB_Timer(f);
  EXPECT_EQ(f.Ball.Left, L + 100) << "inside the box with no drift it rests";
  EXPECT_EQ(f.Player[9].Left, L);

  // Below and to the left of the box: up at 15, right at 5 (the top is tested first).
  f.Ball.Left = L - 10;
  f.Ball.Top = T + 600;
  f.Rnd.force({test::drawFor(3, 1, 3), test::drawFor(1, 1, 3)});
  TimB_Timer(f);
  EXPECT_EQ(f.DribbleDy, -15);
  EXPECT_EQ(f.DribbleDx, 5);
  EXPECT_EQ(f.Ball.Top, T + 585);
  EXPECT_EQ(f.Ball.Left, L - 5);
}

TEST_F(Ball, PossessionIsRoundedDownSoTheTwoMayMake99) {
  f.KickCount = {0, 0, 2};
  kick(9, 8, 4, 2, 2);
  test::land(f);
  EXPECT_EQ(f.KickCount[1], 1);
  EXPECT_EQ(f.Poses[1].Text, " 33%");
  EXPECT_EQ(f.Poses[2].Text, " 66%");
}

}  // namespace
}  // namespace quorvel
