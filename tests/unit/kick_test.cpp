// A flag is activated: who may activate it, where the kick goes and who will get the ball.
#include <gtest/gtest.h>

#include <cmath>

#include "turn_support.h"

namespace quorvel {
namespace {

using test::giveBall;
using test::putPlayer;
using test::visibleFlags;

class Kick : public test::ClearPitch {};

TEST_F(Kick, TheKickerChasesHisOwnBallWhenNobodyIsNearer) {
  const int cols[8] = {8, 11, 11, 11, 8, 5, 5, 5};
  const int rows[8] = {1, 1, 4, 7, 7, 7, 4, 1};
  for (int d = 0; d < 8; ++d) {
    kick(9, 8, 4, 3, d);
    SCOPED_TRACE(d);
    EXPECT_EQ(f.TargetCol, cols[d]);
    EXPECT_EQ(f.TargetRow, rows[d]);
    EXPECT_EQ(f.Receiver, 9);
    EXPECT_DOUBLE_EQ(f.ReceiverDist, d % 2 ? 3 * std::sqrt(2.0) : 3);
    EXPECT_EQ(f.RunStepX, (8 - cols[d]) * 15);
    EXPECT_EQ(f.RunStepY, (4 - rows[d]) * 15);
  }
}

TEST_F(Kick, AnOpponentOnTheTargetSquareTakesItWithoutAContest) {
  putPlayer(f, 15, 10, 4);
  putPlayer(f, 10, 10, 5);
  kick(9, 8, 4, 2, 2, {0.99});  // the last draw must be left alone
  EXPECT_EQ(f.Receiver, 15);
  EXPECT_EQ(f.ContestWin, 0);
  EXPECT_EQ(f.Rnd.forcedPending(), 1u);
  EXPECT_EQ(f.CDcontest[1].Image, "die7");
}

TEST_F(Kick, TeamMatesAtEqualDistanceGoByIndexInBothModes) {
  for (int rank = 0; rank <= 1; ++rank) {
    setValue(f, f.Ch50, rank);
    putPlayer(f, 6, 10, 5);
    putPlayer(f, 4, 10, 3);
    kick(9, 8, 4, 2, 2);
    EXPECT_EQ(f.Receiver, 4);
    EXPECT_EQ(f.RunStepY, -15);
  }
}

TEST_F(Kick, EqualDistancesAcrossSidesAreSettledByDiceThatNeverTie) {
  putPlayer(f, 6, 10, 3);
  putPlayer(f, 14, 10, 5);
  putPlayer(f, 2, 12, 6);  // further away: not his side's best
  // 3 against 3 is rolled again; 2 against 5 gives it to the right side.
  kick(9, 8, 4, 2, 2, {test::face(3), test::face(3), test::face(2), test::face(5)});
  EXPECT_EQ(f.Rnd.forcedPending(), 0u);
  EXPECT_EQ(f.Receiver, 14);
  EXPECT_EQ(f.ContestWin, 22);
  EXPECT_EQ(f.CDcontest[1].Image, "die2");
  EXPECT_EQ(f.CDcontest[2].Image, "die5");

  putPlayer(f, 4, 11, 4);  // as near as 6: the lower index is his side's best
  kick(9, 8, 4, 2, 2, {test::face(6), test::face(1)});
  EXPECT_EQ(f.Receiver, 4);
  EXPECT_EQ(f.ContestWin, 11);
}

TEST_F(Kick, RankModePrefersTheLowerPlaceThenTheSideNotInPossession) {
  setValue(f, f.Ch50, 1);
  EXPECT_EQ(f.Ch50.Caption, "Rank 50/50 balls");
  putPlayer(f, 5, 10, 3);
  putPlayer(f, 13, 10, 5);  // place 2 beats place 5
  kick(9, 8, 4, 2, 2, {0.99});
  EXPECT_EQ(f.Receiver, 13);
  EXPECT_EQ(f.ContestWin, 0);
  EXPECT_EQ(f.Rnd.forcedPending(), 1u) << "no dice in rank mode";
  f.Rnd.next();

  putPlayer(f, 13, 113, 100);
  putPlayer(f, 16, 10, 5);  // place 5 against place 5
  kick(9, 8, 4, 2, 2);
  EXPECT_EQ(f.Receiver, 16) << "the left side kicks, so the right side wins";
  kick(20, 8, 4, 2, 2);
  EXPECT_EQ(f.Receiver, 5) << "the right side kicks, so the left side wins";

  setValue(f, f.Ch50, 0);
  EXPECT_EQ(f.Ch50.Caption, "Dice 50/50 balls");
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
    kick(c.owner, 8, 4, 2, 6);
    EXPECT_EQ(f.KickFlag, c.accepted ? 6 : -1);
    EXPECT_EQ(visibleFlags(f).size(), c.accepted ? 0u : 8u);
    EXPECT_EQ(f.ClickFrom, c.accepted ? 0 : c.from);
    EXPECT_EQ(f.TimAI.Enabled(), !c.accepted) << "an accepted kick ends the computer's turn";
  }
}

TEST_F(Kick, ShotMarksSurviveOnlyForTheOnlyShot) {
  kick(9, 16, 4, 1, 2);  // two shots offered, one taken
  EXPECT_EQ(f.GoalFlag, 2);
  for (int d = 0; d < 8; ++d) EXPECT_EQ(f.FlagGoal[d], -1);

  kick(9, 16, 4, 1, 4);  // two offered, neither taken
  EXPECT_EQ(f.GoalFlag, -1);
  for (int d = 0; d < 8; ++d) EXPECT_EQ(f.FlagGoal[d], -1);

  kick(9, 3, 5, 3, 6);  // the only shot
  EXPECT_EQ(f.GoalFlag, 6);
  EXPECT_EQ(f.FlagGoal[6], 1);
  EXPECT_EQ(f.TargetCol, 0);
  EXPECT_EQ(f.TargetRow, 5);
}

}  // namespace
}  // namespace quorvel
