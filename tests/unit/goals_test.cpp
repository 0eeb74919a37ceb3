// The goal celebration and the restart by the side that conceded.
#include <gtest/gtest.h>

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
};

TEST_F(Goal, TheScoreIsReadFromItsBoxAndEveryFlashIsShownAtOnce) {
  f.Goals[1].Text = "3";
  f.Goals[2].Text = "";  // no number reads as 0
  shoot(20, true);       // a right player into the right-hand goal
  celebrate();
  EXPECT_EQ(repaints, 12);
  EXPECT_EQ(f.Goals[1].Text, "4");
  EXPECT_EQ(f.Goals[2].Text, "");
  EXPECT_EQ(f.GoalDiff, -4);
}

}  // namespace
}  // namespace quorvel
