// The goal celebration and the restart by the side that conceded.
#include <gtest/gtest.h>

#include <utility>

#include "support.h"

namespace quorvel {
namespace {

class Goal : public test::MatchUnderWay {
 protected:
  int repaints = 0;  // the window is asked to show every flash at once
  void SetUp() override {
    f.platform.repaint = [this] { ++repaints; };
  }
  // `shooter` shoots from beside the right-hand goal (flag 2) or the left-hand one (flag 6)
  // and the ball arrives; the celebration is about to begin.
  void shoot(int shooter, bool intoRightGoal) {
    test::kick(f, shooter, intoRightGoal ? 16 : 1, 4, 1, intoRightGoal ? 2 : 6);
    ASSERT_TRUE(test::land(f));
    ASSERT_TRUE(f.TimSc.Enabled());
  }
  void celebrate() {
    ASSERT_TRUE(test::runUntil(f, [this] { return !f.TimSc.Enabled(); }));
  }
  void flash() { f.Sched.advance(250); }
};

TEST_F(Goal, TheGoalMouthDecidesWhoScoresNotTheShooterAndTheScoreIsReadFromItsBox) {
  f.Goals[1].Text = "3";
  f.Goals[2].Text = "";  // no number reads as 0
  shoot(20, true);       // a right player into the right-hand goal
  celebrate();
  EXPECT_EQ(repaints, 12);
  EXPECT_EQ(f.Goals[1].Text, "4");
  EXPECT_EQ(f.BallOwner, 20);

  test::finishWalk(f);
  shoot(9, false);  // a left player into his own goal
  celebrate();
  EXPECT_EQ(f.Goals[2].Text, "1");
  EXPECT_EQ(f.GoalDiff, -3);
  EXPECT_EQ(f.BallOwner, 9);
  EXPECT_EQ(f.TeamTurn, 1);
  EXPECT_EQ(std::pair(f.PlayerCol[9], f.PlayerRow[9]), std::pair(8.0, 5.0));
}

TEST_F(Goal, TheFlashCarriesItsPhaseIntoTheNextGoal) {
  const Colour main = f.RainB[0].BackColor, second = f.RainB[1].BackColor;
  shoot(9, true);
  flash();
  EXPECT_EQ(f.Player[5].BackColor, main);
  celebrate();
  EXPECT_EQ(f.CheerFlip, 1) << "eleven flashes leave it turned";

  test::finishWalk(f);
  shoot(9, true);
  flash();
  EXPECT_EQ(f.Player[5].BackColor, second);
}

TEST_F(Goal, AgainstTheComputerItsKickOffStartsItsTurn) {
  select(f, f.OpMode[2]);
  f.Vai.Value = 1250;
  shoot(9, true);
  celebrate();
  EXPECT_EQ(f.AIGo, 1);
  EXPECT_TRUE(f.TimAI.Enabled());
  EXPECT_EQ(f.TimAI.Interval(), 1250);

  test::finishWalk(f);
  shoot(9, false);  // as if the left side had the ball again
  for (int t = 1; t <= 11; ++t) flash();
  f.AIGo = 1;  // the computer's turn is pending when the left side must kick off
  f.TimAI.setEnabled(true);
  flash();
  EXPECT_EQ(f.BallOwner, 9);
  EXPECT_EQ(f.AIGo, 0);
  EXPECT_FALSE(f.TimAI.Enabled());
}

}  // namespace
}  // namespace quorvel
