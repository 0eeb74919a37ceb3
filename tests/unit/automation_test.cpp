// Automatic play and the controls around the computer: its IQ, a random IQ, the match length.
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
  auto f = testing::matchReady(side);
  setValue(*f, f->ChAuto, 0);
  EXPECT_TRUE(f->TimAuto.Enabled());
  f->ClockMin = 10;
  return f;
}

TEST(AutomaticPlay, NeverRollsAKickOff) {
  auto f = testing::matchReady(1);
  setValue(*f, f->ChAuto, 0);
  f->Sched.advance(1000);
  EXPECT_EQ(f->DiceReady, 1) << "the first roll of the match is made by hand";

  f->ClockSec = 0.15;
  for (Single* hold : {&f->GoalHold, &f->HalfHold}) {
    *hold = 1;
    TimAuto_Timer(*f);
    EXPECT_EQ(f->DiceReady, 1);
    *hold = 0;
  }
  f->ClockMin = 45;
  f->ClockSec = 0;
  f->HalfHold = 1;
  TimAuto_Timer(*f);
  EXPECT_EQ(f->DiceReady, 1) << "the second half's kick-off";

  f->HalfHold = 0;
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

  auto g = automated();
  setValue(*g, g->ChAuto, 1);
  EXPECT_EQ(g->ChAuto.Caption, "Wait for player");
  TimAuto_Timer(*g);  // a tick that was already due
  EXPECT_EQ(g->DiceReady, 1) << "ticked: no automatic play";
}

TEST(AutomaticPlay, AgainstTheComputerItRollsForItButTheComputerClicks) {
  auto f = testing::loadedForm();
  select(*f, f->OpMode[2]);
  testing::startMatch(*f, 2);
  ASSERT_TRUE(testing::finishWalk(*f));
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

TEST(ComputerSettings, TheIqShowsAndPicksTheNameSource) {
  auto f = testing::loadedForm();
  for (int iq : {1, 2, 3, 4, 5, 6, 3}) {
    setScroll(*f, f->Hai, iq);
    EXPECT_EQ(f->TXai.Text, std::to_string(iq));
    EXPECT_EQ(f->OpName[1].Value, iq % 2 == 0) << iq;
    EXPECT_EQ(f->OpName[0].Value, iq % 2 == 1) << iq;
  }
}

TEST(ComputerSettings, ARandomIqAlwaysDiffers) {
  auto f = testing::loadedForm();
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
  setScroll(*f, f->Hai, 2);
  f->Rnd.force({test::drawFor(2, 1, 6), test::drawFor(2, 1, 6), test::drawFor(5, 1, 6)});
  userClick(*f, f->TXai);
  EXPECT_EQ(f->Hai.Value, 5) << "the old IQ is drawn again";
  EXPECT_TRUE(f->OpName[0].Value);
}

TEST(ComputerSettings, TheCompetitionBoxSetsTheTopIq) {
  auto f = testing::loadedForm();
  setScroll(*f, f->Hai, 3);
  userClick(*f, f->ChtenFIF);
  EXPECT_EQ(f->ChtenFIF.Value, 1);
  EXPECT_EQ(f->Hai.Value, 6);
  EXPECT_EQ(f->TXai.Text, "6");
  EXPECT_TRUE(f->OpName[1].Value);

  setScroll(*f, f->Hai, 5);
  userClick(*f, f->ChtenFIF);
  EXPECT_EQ(f->ChtenFIF.Value, 0);
  EXPECT_EQ(f->Hai.Value, 5) << "unticking changes nothing";
}

}  // namespace
}  // namespace quorvel
