// The roll: which flags a roll offers, where they stand, and who may roll when.
#include <gtest/gtest.h>

#include <algorithm>

#include "support.h"

namespace quorvel {
namespace {

using test::giveBall;
using test::roll;
using test::visibleFlags;

class Roll : public test::MatchUnderWay {
 protected:
  std::vector<int> offer(int owner, int col, int row, int die) {
    giveBall(f, owner, col, row);
    roll(f, die);
    return visibleFlags(f);
  }
};

// A kick that would leave the pitch is not offered, but one into a goal mouth is a shot, for
// either side into either goal.
TEST_F(Roll, OffersTheDirectionsThatStayOnThePitchOrReachAGoalMouth) {
  struct Case {
    int owner, col, row, die;
    std::vector<int> flags, shots;
  };
  // clang-format off
  const Case cases[] = {
      {9, 1, 1, 1, {2, 3, 4}, {}}, {9, 1, 4, 6, {2}, {}}, {9, 16, 8, 4, {0, 6, 7}, {}},
      {9, 8, 4, 3, {0, 1, 2, 3, 4, 5, 6, 7}, {}}, {9, 10, 2, 2, {2, 3, 4, 5, 6}, {}},
      {9, 16, 4, 1, {0, 2, 3, 4, 5, 6, 7}, {2, 3}},  // row 3 beside the goal is off
      {9, 3, 5, 3, {0, 1, 2, 3, 4, 6}, {6}},         // rows 2 and 8 beside it too
      {5, 2, 4, 2, {0, 1, 2, 3, 4, 6}, {6}},         // his own goal is offered too
  };
  // clang-format on
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << "(" << c.col << ", " << c.row << ") rolls " << c.die);
    f.DiceReady = 1;
    EXPECT_EQ(offer(c.owner, c.col, c.row, c.die), c.flags);
    EXPECT_EQ(f.FlagCount, static_cast<Single>(c.flags.size()));
    for (int d = 0; d < 8; ++d) {
      const bool shot = std::count(c.shots.begin(), c.shots.end(), d) > 0;
      EXPECT_EQ(f.FlagGoal[d], shot ? 1 : -1) << d;
      if (shot) {
        EXPECT_EQ(f.CDdest[d].Left, d < 4 ? 14880 : 75) << d;
      }
    }
  }
  // A withdrawn direction keeps its shortened reach (the last case: up-left from (2, 4)).
  EXPECT_EQ(f.FlagDx[7], 1);
  EXPECT_EQ(f.FlagDy[7], 2);
}

TEST_F(Roll, FlagsStandOnTheirSquares) {
  // Straight flags are centred (247.5 inside the square's corner), diagonal ones 265 inside.
  offer(9, 8, 4, 2);
  const int cols[8] = {8, 10, 10, 10, 8, 6, 6, 6}, rows[8] = {2, 2, 4, 6, 6, 6, 4, 2};
  for (int d = 0; d < 8; ++d) {
    const double inset = d % 2 == 0 ? 247.5 : 265;
    EXPECT_EQ(f.CDdest[d].Left, 480.0 + (cols[d] - 1) * 900 + inset) << "flag " << d;
    EXPECT_EQ(f.CDdest[d].Top, 1920.0 + (rows[d] - 1) * 900 + inset) << "flag " << d;
  }
}

TEST_F(Roll, CountsTheOfferAndReleasesAutomaticPlayOnlyForAChoice) {
  f.AutoHold = 1;
  f.AIGo = 1;
  offer(9, 1, 4, 6);
  EXPECT_EQ(f.FlagCount, 1);
  EXPECT_EQ(f.OnlyFlag, 2);
  EXPECT_EQ(f.AutoHold, 1);
  EXPECT_EQ(f.AIGo, 2) << "the computer has rolled and must choose";
  EXPECT_EQ(f.Cdice.Image, "die6");

  f.DiceReady = 1;
  EXPECT_EQ(offer(9, 12, 4, 5), (std::vector<int>{2, 6}));  // a shot or back: a choice
  EXPECT_EQ(f.OnlyFlag, 11);
  EXPECT_EQ(f.AutoHold, 0);
}

TEST_F(Roll, UntimelyRollsChangeNothingButTheContestDice) {
  auto refused = [this](const char* why) {
    SCOPED_TRACE(why);
    const auto flags = visibleFlags(f);
    const Single ready = f.DiceReady;
    f.CDcontest[1].Image = "die4";
    f.ContestWin = 22;
    roll(f, 6);
    EXPECT_EQ(f.Rnd.forcedPending(), 1u) << "no draw may be made";
    f.Rnd.next();
    EXPECT_EQ(visibleFlags(f), flags);
    EXPECT_EQ(f.DiceReady, ready);
    EXPECT_EQ(f.CDcontest[1].Image, "die7");
    EXPECT_EQ(f.ContestWin, 0);
  };
  offer(9, 8, 4, 2);
  refused("second roll");
  f.DiceReady = 1;
  f.TimPlace.setEnabled(true);
  refused("players walking");
  f.TimPlace.setEnabled(false);
  f.TimSub.setEnabled(true);
  refused("substitute walking on");
  f.TimSub.setEnabled(false);
  f.GameEnd = "ended";
  refused("after full time");
}

// Who may roll: the mouse press and the click of the die, by mode and side.
TEST_F(Roll, TheDieButtonRollsForTheSidesEachModeAllows) {
  struct Case {
    int mode, owner;
    bool byMouse, rolls;
  };
  const Case cases[] = {
      {0, 9, false, true},   {0, 20, true, true},   // Free Mode: anyone, either way
      {1, 9, true, true},    {1, 9, false, false},  // Mouse vs Keys: left by mouse only,
      {1, 20, false, true},  {1, 20, true, true},   // right by key (or the click part)
      {2, 9, true, true},    {2, 20, true, false},  // Play Left vs AI: never the computer's
      {2, 20, false, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message()
                 << "mode " << c.mode << " owner " << c.owner << " mouse " << c.byMouse);
    select(f, f.OpMode[c.mode]);
    giveBall(f, c.owner, 8, 4);
    f.TXoner.Visible = true;
    f.Rnd.force({test::face(1)});
    if (c.byMouse)
      userClick(f, f.Cdice);
    else
      press(f, f.Cdice);
    EXPECT_EQ(f.DiceReady, c.rolls ? -1 : 1);
    EXPECT_EQ(f.Rnd.forcedPending(), c.rolls ? 0u : 1u) << "one roll, never two";
    EXPECT_FALSE(f.TXoner.Visible);
    EXPECT_EQ(f.ActiveControl, "Cdice");
    if (!c.rolls) f.Rnd.next();
  }
}

}  // namespace
}  // namespace quorvel
