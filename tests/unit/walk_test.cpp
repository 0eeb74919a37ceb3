// The walk to the formation squares and the formation buttons.
#include <gtest/gtest.h>

#include "shape/shape.h"
#include "support.h"

namespace quorvel {
namespace {

using test::finishWalk;
using test::loadedForm;
using test::onSquare;
using test::startMatch;

// Every player already on his square, the ball in its resting box: the walk is ready to end.
std::unique_ptr<MatchForm> standingStill() {
  auto f = loadedForm();
  f->TeamTurn = 1;
  f->BallOwner = 9;
  SetPlay(*f);
  for (int i = 1; i <= 22; ++i) {
    f->Player[i].Left = playerLeft(f->PlayerCol[i]);
    f->Player[i].Top = playerTop(f->PlayerRow[i]);
  }
  f->PlaceMode = 34;
  return f;
}

int ticksToFinish(MatchForm& f) {
  int ticks = 0;
  while (f.TimPlace.Enabled() && ticks < 5000) {
    TimPlace_Timer(f);
    ++ticks;
  }
  return ticks;
}

TEST(Walk, FromTheLineUpEveryPictureEndsExactlyOnItsSquare) {
  for (int side : {1, 2}) {
    auto f = loadedForm(static_cast<std::uint64_t>(side));
    startMatch(*f, side);
    ASSERT_TRUE(finishWalk(*f));
    for (int i = 1; i <= 22; ++i) EXPECT_TRUE(onSquare(*f, i)) << "player " << i;
    const int owner = side == 1 ? 9 : 20;
    EXPECT_EQ(f->BallCol, f->PlayerCol[owner]);
    EXPECT_EQ(f->BallRow, f->PlayerRow[owner]);
    EXPECT_GE(f->Ball.Left, 7500);
    EXPECT_LE(f->Ball.Left, 7530);
    EXPECT_TRUE(f->TimB.Enabled());
    EXPECT_TRUE(f->TimTeam.Enabled());
    EXPECT_FALSE(f->TXstart.Visible);
    // About 0.9 s a square: the longest walk from below the pitch is well under 20 s.
    EXPECT_LT(f->Sched.now(), 20000);
  }
}

TEST(Walk, EndsOnTheFirstTickWhenNothingHasToMove) {
  auto f = standingStill();
  EXPECT_EQ(ticksToFinish(*f), 1);
  EXPECT_EQ(f->PlaceTicks, 1);
}

TEST(Walk, ADiagonalStepOfOneSquareTakesSixtyTicks) {
  auto f = standingStill();
  f->Player[5].Left += 900;
  f->Player[5].Top += 900;
  EXPECT_EQ(ticksToFinish(*f), 60);
  EXPECT_TRUE(onSquare(*f, 5));
}

TEST(Walk, TheBallSettlesInItsBoxAndItsLastStepDelaysTheEnd) {
  auto f = standingStill();
  f->Ball.Left = 7545;
  EXPECT_EQ(ticksToFinish(*f), 2);  // one step to 7530, then a tick without a step
  EXPECT_EQ(f->Ball.Left, 7530);

  auto g = standingStill();
  g->Ball.Left = 7522.5;  // snapped to the 15-twip grid first: 7515, inside the box
  EXPECT_EQ(ticksToFinish(*g), 1);
  EXPECT_EQ(g->Ball.Left, 7515);
}

TEST(Walk, AfterASubstitutionTheBallTrailsItsOwner) {
  auto f = standingStill();
  f->PlaceMode = 23;
  f->SubTicks = 300;
  f->SubOff = 5;
  const Picture& owner = f->Player[9];
  f->Ball.Left = owner.Left + 900;
  f->Ball.Top = owner.Top;
  ticksToFinish(*f);
  EXPECT_GE(f->Ball.Left, owner.Left + 300);
  EXPECT_LE(f->Ball.Left, owner.Left + 600);
  EXPECT_GE(f->Ball.Top, owner.Top + 300);
  EXPECT_LE(f->Ball.Top, owner.Top + 600);
  EXPECT_EQ(f->SubTicks, 0);  // completion ends the substitution
  EXPECT_EQ(f->SubOff, 0);
}

TEST(Walk, APictureOffTheGridEndsByTheTimeOutOnly) {
  auto f = standingStill();
  f->Player[3].Left += 7;
  f->BallCol = 2;  // the time-out leaves the ball's square alone
  EXPECT_EQ(ticksToFinish(*f), 1025);
  EXPECT_EQ(f->BallCol, 2);
  EXPECT_TRUE(f->TimB.Enabled());
  EXPECT_TRUE(f->TXstart.Visible);
}

TEST(Walk, TheComputerReconsidersItsFormationOnlyAtTick150InItsOwnMode) {
  // FormAI is observable through GoalDiff, which it recomputes from the score boxes.
  auto f = standingStill();
  f->Player[5].Left += 3 * 900;  // a walk of 180 ticks
  f->Goals[2].Text = "2";
  for (int t = 0; t < 170; ++t) TimPlace_Timer(*f);
  EXPECT_EQ(f->GoalDiff, 0);  // Free Mode: never called

  auto g = standingStill();
  g->OpMode[0].Value = false;
  g->OpMode[2].Value = true;
  g->Player[5].Left += 3 * 900;
  g->Goals[2].Text = "2";
  for (int t = 0; t < 149; ++t) TimPlace_Timer(*g);
  g->GoalDiff = 9;
  TimPlace_Timer(*g);
  EXPECT_NE(g->GoalDiff, 9) << "tick 150 calls the computer's formation choice";
}

TEST(FormationButtons, EachSideRePlansOnceDuringAWalkAndAgainOnlyAfterARoll) {
  auto f = loadedForm();
  startMatch(*f, 1);
  ASSERT_TRUE(f->TimPlace.Enabled());
  f->Sched.advance(300);
  userClick(*f, f->OPForm[3]);  // left "Defend": re-plans at once
  EXPECT_EQ(f->PlaceTicks, 0);
  EXPECT_EQ(f->FormChanged[1], 1);
  EXPECT_EQ(f->PlayerCol[2], 3);
  EXPECT_EQ(f->PlayerRow[2], 6);
  f->Sched.advance(300);
  userClick(*f, f->OPForm[1]);  // second change of the same walk: selection only
  EXPECT_TRUE(f->OPForm[1].Value);
  EXPECT_FALSE(f->OPForm[3].Value);
  EXPECT_NE(f->PlaceTicks, 0);
  EXPECT_EQ(f->PlayerRow[2], 6) << "targets unchanged";
  userClick(*f, f->OPForm[11]);  // the right side still has its re-plan
  EXPECT_EQ(f->PlaceTicks, 0);
  EXPECT_EQ(f->FormChanged[2], 2);
  EXPECT_EQ(f->PlayerCol[13], 14);  // right "Norm" shirt 2 on (14, 3)
  EXPECT_EQ(f->PlayerRow[13], 3);
}

TEST(FormationButtons, OutsideAWalkOnlyTheSelectionAndColoursChange) {
  auto f = test::matchReady(1);
  const double before = f->PlayerCol[2];
  userClick(*f, f->OPForm[4]);
  EXPECT_TRUE(f->OPForm[4].Value);
  EXPECT_FALSE(f->TimPlace.Enabled());
  EXPECT_EQ(f->PlayerCol[2], before);
  EXPECT_EQ(f->OPForm[4].BackColor, f->RainB[0].BackColor);  // selected: drawn like a player
  EXPECT_EQ(f->OPForm[0].BackColor, f->RainB[1].BackColor);
  EXPECT_EQ(selectedFormation(*f, 1), 4);
}

TEST(FormationButtons, ReselectingTheSelectedButtonRunsNothing) {
  auto f = loadedForm();
  startMatch(*f, 1);
  userClick(*f, f->OPForm[0]);  // "Varied" is already selected
  EXPECT_EQ(f->FormChanged[1], 0);
}

}  // namespace
}  // namespace quorvel
