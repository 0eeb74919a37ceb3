// The goal celebration: the score read from its box, every flash shown at once.
#include <gtest/gtest.h>

#include "support.h"

namespace quorvel {
namespace {

using Goal = test::MatchUnderWay;

// A right player shoots into the right-hand goal, his own: the left side scores.
TEST_F(Goal, TheScoreIsReadFromItsBoxAndEveryFlashIsShownAtOnce) {
  int repaints = 0;  // the window is asked to show every flash at once
  f.platform.repaint = [&repaints] { ++repaints; };
  f.Goals[1].Text = "3";
  f.Goals[2].Text = "";  // no number reads as 0
  test::kick(f, 20, 16, 4, 1, 2);
  ASSERT_TRUE(test::land(f));
  ASSERT_TRUE(f.TimSc.Enabled());
  ASSERT_TRUE(test::runUntil(f, [this] { return !f.TimSc.Enabled(); }));
  EXPECT_EQ(repaints, 12);
  EXPECT_EQ(f.Goals[1].Text, "4");
  EXPECT_EQ(f.Goals[2].Text, "");
  EXPECT_EQ(f.GoalDiff, -4);
}

}  // namespace
}  // namespace quorvel
