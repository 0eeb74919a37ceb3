// Automatic play and the computer's IQ controls.
#include <gtest/gtest.h>

#include <set>

#include "ai/ai.h"
#include "support.h"
#include "turn_support.h"

namespace quorvel {
namespace {

using test::giveBall;

// A match in progress (minute 10) with automatic play switched on.
std::unique_ptr<MatchForm> automated(int side = 1) {
  auto f = test::matchReady(side);
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

TEST(AutomaticPlay, AnOnlyFlagIsPlayedInTheTickOfTheRollAndTheNextRollIsByHand) {
  auto f = automated();
  f->TXgame[0].ForeColor = RGB(1, 2, 3);
  giveBall(*f, 9, 1, 4);
  f->Rnd.force({test::face(6)});
  TimAuto_Timer(*f);
  EXPECT_EQ(f->DiceValue, 6);
  EXPECT_EQ(f->KickFlag, 2) << "the flag to the right, in the same tick";
  EXPECT_EQ(f->FlagCount, 0);
  EXPECT_EQ(f->OnlyFlag, 11);
  EXPECT_EQ(f->AutoHold, 1);
  EXPECT_EQ(f->ChAuto.ForeColor, RGB(1, 2, 3));
  ASSERT_TRUE(test::land(*f));

  f->Sched.advance(500);
  EXPECT_EQ(f->DiceReady, 1) << "the next turn is not rolled automatically";

  giveBall(*f, 9, 1, 1);
  test::roll(*f, 1);  // by hand: three flags
  EXPECT_EQ(test::visibleFlags(*f).size(), 3u);
  EXPECT_EQ(f->AutoHold, 0);
  f->Sched.advance(500);
  EXPECT_EQ(f->KickFlag, -1) << "several flags wait for the player";
  userClick(*f, f->CDdest[2]);
  ASSERT_TRUE(test::land(*f));
  f->Sched.advance(100);
  EXPECT_EQ(f->DiceReady, -1) << "automatic rolling has resumed";
}

TEST(AutomaticPlay, AHandRolledOnlyFlagIsPlayedButNeverTwice) {
  auto f = automated();
  giveBall(*f, 9, 1, 4);
  test::roll(*f, 6);
  EXPECT_EQ(f->AutoHold, 0);
  userClick(*f, f->CDdest[2]);  // the player is quicker than the next tick
  for (int t = 0; t < 3; ++t) TimB_Timer(*f);
  TimAuto_Timer(*f);
  EXPECT_EQ(f->KickTicks, 57) << "the kick in flight is not started again";
  EXPECT_EQ(f->KickFlag, 2);
}

TEST(AutomaticPlay, AfterA5050BallTheRollIsByHand) {
  auto f = automated();
  giveBall(*f, 9, 5, 4);
  f->ContestWin = 22;
  TimAuto_Timer(*f);
  EXPECT_EQ(f->DiceReady, 1);
  test::roll(*f, 3);
  EXPECT_EQ(f->ContestWin, 0);
}

TEST(AutomaticPlay, AgainstTheComputerItRollsForItButTheComputerClicks) {
  auto f = test::loadedForm();
  select(*f, f->OpMode[2]);
  test::startMatch(*f, 2);
  ASSERT_TRUE(test::finishWalk(*f));
  setValue(*f, f->ChAuto, 0);
  f->ClockMin = 31;
  f->Hai.Value = 2;
  giveBall(*f, 20, 1, 4);
  f->Rnd.force({test::face(6)});
  TimAuto_Timer(*f);
  EXPECT_EQ(f->AIGo, 2) << "the roll counts as the computer's";
  EXPECT_EQ(f->KickFlag, -1) << "its click of the computer's flag is refused";
  EXPECT_EQ(f->AutoHold, 1);
  EXPECT_TRUE(f->CDdest[2].Visible);

  ASSERT_TRUE(test::runUntil(*f, [&f] { return f->KickFlag >= 0; }));
  EXPECT_EQ(f->KickFlag, 2) << "the computer plays it";
  EXPECT_TRUE(f->CHsub[2].Visible) << "no substitution after a roll made for it";
}

TEST(ComputerSettings, ARandomIqAlwaysDiffers) {
  auto f = test::loadedForm();
  for (int start = 1; start <= 6; ++start) {
    std::set<int> seen;
    for (int k = 0; k < 100; ++k) {
      setScroll(*f, f->Hai, start);
      userClick(*f, f->TXai);
      EXPECT_NE(f->Hai.Value, start);
      EXPECT_EQ(f->TXai.Text, std::to_string(f->Hai.Value));
      seen.insert(f->Hai.Value);
    }
    EXPECT_EQ(seen.size(), 5u) << "every other IQ can come up from " << start;
  }
}

}  // namespace
}  // namespace quorvel
