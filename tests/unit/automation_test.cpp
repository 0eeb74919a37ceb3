// Automatic play: which rolls it makes and when it plays an only flag.
#include <gtest/gtest.h>

#include "ai/ai.h"
#include "support.h"

namespace quorvel {
namespace {

using test::giveBall;

// A match in progress (minute 10) with automatic play switched on.
std::unique_ptr<MatchForm> automated() {
  auto f = test::matchReady(1);
  setValue(*f, f->ChAuto, 0);
  EXPECT_TRUE(f->TimAuto.Enabled());
  f->ClockMin = 10;
  return f;
}

TEST(AutomaticPlay, NeverRollsAKickOff) {
  auto f = test::matchReady(1);
  setValue(*f, f->ChAuto, 0);
  f->Sched.advance(1000);
  EXPECT_EQ(f->DiceReady, 1) << "the first roll of the match is made by hand";
  f->ClockMin = 45;  // half time, then after a goal
  for (Single* hold : {&f->HalfHold, &f->GoalHold}) {
    *hold = 1;
    TimAuto_Timer(*f);
    EXPECT_EQ(f->DiceReady, 1);
    *hold = 0;
  }
  TimAuto_Timer(*f);
  EXPECT_EQ(f->DiceReady, -1) << "any other roll is made at once";
}

TEST(AutomaticPlay, AnOnlyFlagIsPlayedAndHoldsTheNextRollUntilARollOffersTwo) {
  auto f = automated();
  giveBall(*f, 9, 1, 4);
  f->Rnd.force({test::face(6)});
  TimAuto_Timer(*f);
  EXPECT_EQ(f->KickFlag, 2) << "the only flag, to the right, in the tick of the roll";
  ASSERT_TRUE(test::land(*f));
  f->Sched.advance(500);
  EXPECT_EQ(f->DiceReady, 1) << "the next roll is by hand";

  giveBall(*f, 9, 12, 4);
  test::roll(*f, 5);  // two flags: a shot to the right and a pass to the left
  EXPECT_EQ(f->AutoHold, 0);
  f->Sched.advance(500);
  EXPECT_EQ(f->KickFlag, -1) << "two flags wait for the player";
  userClick(*f, f->CDdest[6]);
  ASSERT_TRUE(test::land(*f));
  f->Sched.advance(100);
  EXPECT_EQ(f->DiceReady, -1) << "automatic rolling has resumed";
}

TEST(AutomaticPlay, AfterA5050BallTheRollIsByHand) {
  auto f = automated();
  giveBall(*f, 9, 5, 4);
  f->ContestWin = 22;
  TimAuto_Timer(*f);
  EXPECT_EQ(f->DiceReady, 1);
}

}  // namespace
}  // namespace quorvel
