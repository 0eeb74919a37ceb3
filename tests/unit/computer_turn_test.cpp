// The computer's turn: one thing a tick, substitutions by IQ, score and clock, the roll, and
// the choice on a later tick.
#include <gtest/gtest.h>

#include "ai/ai.h"
#include "support.h"
#include "turn_support.h"

namespace quorvel {
namespace {

using test::putPlayer;

// The right side to play against the computer, the kick-off walk over, the roll not made.
std::unique_ptr<MatchForm> computerToPlay() {
  auto f = testing::loadedForm();
  select(*f, f->OpMode[2]);
  testing::startMatch(*f, 2);
  EXPECT_TRUE(testing::finishWalk(*f));
  EXPECT_EQ(f->AIGo, 1);
  EXPECT_TRUE(f->TimAI.Enabled());
  return f;
}

// Who stands where the counts look. Left players go to (12, 4): in front of the computer's
// goal and in its third; or to (12, 1): in its third only. Right players mirror that on
// (4, 4) and (5, 1). Everybody else stands on the centre columns, where no count looks.
struct Crowd {
  int leftFront = 0, leftDeep = 0, rightFront = 0, rightDeep = 0;
};

void arrange(MatchForm& f, const Crowd& c) {
  for (int i = 1; i <= 22; ++i) putPlayer(f, i, i <= 11 ? 8 : 9, 1 + i % 8);
  int left = 2, right = 13;
  for (int k = 0; k < c.leftFront; ++k) putPlayer(f, left++, 12, 4);
  for (int k = 0; k < c.leftDeep; ++k) putPlayer(f, left++, 12, 1);
  for (int k = 0; k < c.rightFront; ++k) putPlayer(f, right++, 4, 4);
  for (int k = 0; k < c.rightDeep; ++k) putPlayer(f, right++, 5, 1);
}

struct Situation {
  int iq;
  double minute;
  int goalDiff;
  bool box2, box3;
  Crowd crowd;
  int box;  // the box the computer substitutes through; -1 when it rolls instead
};

// One tick of the computer on `s`; returns the box it used, or -1 when it rolled.
int firstTick(const Situation& s) {
  auto f = computerToPlay();
  arrange(*f, s.crowd);
  f->Hai.Value = s.iq;
  f->ClockMin = s.minute;
  f->GoalDiff = static_cast<Integer>(s.goalDiff);
  f->CHsub[2].Visible = s.box2;
  f->CHsub[3].Visible = s.box3;
  TimAI_Timer(*f);
  const bool hid2 = s.box2 && !f->CHsub[2].Visible, hid3 = s.box3 && !f->CHsub[3].Visible;
  if (!hid2 && !hid3) {
    EXPECT_EQ(f->AIGo, 2) << "no substitution: the roll";
    EXPECT_FALSE(f->TimSub.Enabled());
    return -1;
  }
  EXPECT_FALSE(hid2 && hid3) << "at most one substitution a tick";
  EXPECT_TRUE(f->TimSub.Enabled());
  EXPECT_EQ(f->AIGo, 1) << "no roll on the tick of a substitution";
  EXPECT_EQ(f->SubNumber, hid2 ? 13 : 12);
  EXPECT_GE(f->SubOff, 13);
  EXPECT_NE(f->SubOff, f->BallOwner);
  return hid2 ? 2 : 3;
}

void expectBoxes(const std::vector<Situation>& cases) {
  for (const Situation& s : cases)
    EXPECT_EQ(firstTick(s), s.box) << "IQ " << s.iq << ", minute " << s.minute << ", goals "
                                   << s.goalDiff << ", boxes " << s.box2 << s.box3;
}

TEST(ComputerTurn, TheLowIqsSubstituteByTheClockAlone) {
  expectBoxes({
      {1, 29, 0, true, true, {}, -1},
      {1, 30, 0, true, true, {}, 2},
      {1, 80, -3, false, true, {}, -1},  // IQ 1 never uses its second box
      {2, 31, 0, true, true, {}, 2},
      {2, 31, 0, false, true, {}, -1},  // the second box waits for minute 60
      {2, 59, 0, false, true, {}, -1},
      {2, 60, 5, false, true, {}, 3},
      {2, 30, 0, true, true, {0, 0, 5, 5}, 2},  // the pitch does not matter
  });
}

TEST(ComputerTurn, TheHigherIqsReadThePitchAndTheScore) {
  expectBoxes({
      {3, 30, 0, true, true, {0, 2, 0, 0}, 2},
      {3, 30, 0, true, true, {0, 2, 0, 1}, -1},
      {3, 60, 0, false, true, {0, 3, 0, 0}, 3},
      {3, 60, 1, false, true, {0, 3, 0, 0}, -1},
      {3, 59, 0, false, true, {0, 3, 0, 0}, -1},
      {4, 30, 0, true, true, {0, 1, 0, 0}, 2},
      {4, 30, 0, true, true, {1, 0, 1, 0}, -1},
      {4, 60, 0, false, true, {1, 0, 0, 0}, 3},
      {4, 60, 1, false, true, {1, 0, 0, 0}, -1},
      {5, 30, 0, true, true, {1, 0, 1, 0}, 2},
      {5, 30, 1, true, true, {1, 0, 0, 0}, -1},
      {5, 60, 1, true, true, {2, 0, 0, 0}, 3},
      {5, 60, 1, true, true, {2, 0, 1, 0}, -1},
      {6, 30, 5, true, true, {1, 0, 0, 0}, 2},
      {6, 30, 0, true, true, {1, 0, 1, 0}, -1},
      {6, 60, 0, false, true, {1, 0, 1, 0}, 3},
      {6, 60, 1, false, true, {1, 0, 1, 0}, -1},
  });
}

TEST(ComputerTurn, IqSixAddsTwoRulesByTheScoreAlone) {
  expectBoxes({
      {6, 70, -1, true, true, {0, 0, 1, 0}, 3},  // the first two rules fail, the third fires
      {6, 66, -1, false, true, {}, 3},
      {6, 65, -1, false, true, {}, -1},
      {6, 75, -1, false, true, {}, -1},
      {6, 70, 0, false, true, {}, -1},
      {6, 81, 0, true, false, {}, 2},
      {6, 88, -2, true, true, {}, 2},  // the last minute that substitutes
      {6, 80, 0, true, false, {}, -1},
      {6, 81, 1, true, false, {}, -1},
  });
}

TEST(ComputerTurn, NoSubstitutionAroundHalfTimeOrAtTheEnd) {
  for (int iq = 1; iq <= 6; ++iq) {
    // Everything that could make each IQ substitute through its first box.
    const Crowd crowd{2, 2, 0, 0};
    const int quietFrom = iq <= 2 ? 35 : 37;
    for (double minute : {34.0, 36.0, 51.0, 60.0, 88.0})
      EXPECT_EQ(firstTick({iq, minute, -1, true, true, crowd, 0}) >= 0,
                minute < quietFrom || minute > 50)
          << "IQ " << iq << ", minute " << minute;
    for (double minute = quietFrom; minute <= 50; ++minute)
      EXPECT_EQ(firstTick({iq, minute, -1, true, true, crowd, 0}), -1)
          << "IQ " << iq << ", minute " << minute;
    for (double minute : {89.0, 90.0})
      EXPECT_EQ(firstTick({iq, minute, -1, true, true, crowd, 0}), -1)
          << "IQ " << iq << ", minute " << minute;
  }
}

TEST(ComputerTurn, AtIqTwoTheFirstTickSubstitutesThenTheComputerWaitsThenRolls) {
  auto f = computerToPlay();
  f->Hai.Value = 2;
  f->ClockMin = 31;
  const Millis start = f->Sched.now();
  bool sawExchange = false, sawWalk = false;
  ASSERT_TRUE(test::runUntil(*f, [&] {
    sawExchange = sawExchange || f->TimSub.Enabled();
    sawWalk = sawWalk || (sawExchange && f->TimPlace.Enabled());
    if (f->TimSub.Enabled() || f->TimPlace.Enabled()) {
      EXPECT_EQ(f->AIGo, 1);
    }
    return f->AIGo == 2;
  }));
  EXPECT_TRUE(sawExchange);
  EXPECT_TRUE(sawWalk) << "the re-forming walk ran before the roll";
  EXPECT_FALSE(f->CHsub[2].Visible);
  EXPECT_TRUE(f->CHsub[3].Visible) << "box 3 is not used before minute 60";
  EXPECT_EQ(f->SubTicks, 0) << "the substitution is over";
  int wearing13 = 0;
  for (int i = 13; i <= 22; ++i) wearing13 += f->Tnum[i].Text == "13";
  EXPECT_EQ(wearing13, 1);
  EXPECT_GT(f->Sched.now() - start, 300 * 15) << "the exchange alone takes 300 ticks";
  EXPECT_EQ(f->DiceReady, -1);
}

TEST(ComputerTurn, OneThingATickAndOnlyOnItsOwnTurn) {
  auto f = computerToPlay();
  f->Hai.Value = 5;
  f->ThreatCount = 9;  // a mark: the counts are not taken on a tick that does nothing

  f->TeamTurn = 1;
  TimAI_Timer(*f);
  EXPECT_EQ(f->AIIQ, 5);
  EXPECT_EQ(f->ThreatCount, 9);
  EXPECT_EQ(f->AIGo, 1);
  EXPECT_EQ(f->DiceReady, 1);

  f->TeamTurn = 2;
  f->TimPlace.setEnabled(true);
  TimAI_Timer(*f);
  f->TimPlace.setEnabled(false);
  f->TimSub.setEnabled(true);
  TimAI_Timer(*f);
  f->TimSub.setEnabled(false);
  EXPECT_EQ(f->ThreatCount, 9) << "waits while anything walks";
  EXPECT_EQ(f->DiceReady, 1);

  TimAI_Timer(*f);
  EXPECT_NE(f->ThreatCount, 9);
  EXPECT_EQ(f->AIGo, 2);
  EXPECT_EQ(f->KickFlag, -1) << "the roll and the choice fall on different ticks";
  EXPECT_FALSE(test::visibleFlags(*f).empty());

  TimAI_Timer(*f);
  EXPECT_GE(f->KickFlag, 0);
  EXPECT_EQ(f->KickFlag, f->AIFlag);
  EXPECT_EQ(f->AIGo, 0);
  EXPECT_FALSE(f->TimAI.Enabled());
}

TEST(ComputerTurn, ARefusedRollIsTriedAgain) {
  auto f = computerToPlay();
  f->GameEnd = "ended";
  TimAI_Timer(*f);
  TimAI_Timer(*f);
  EXPECT_EQ(f->AIGo, 1);
  EXPECT_EQ(f->DiceReady, 1);
  f->GameEnd.clear();
  TimAI_Timer(*f);
  EXPECT_EQ(f->AIGo, 2);
}

TEST(ComputerTurn, IqThreeShowsTheThirdsDifference) {
  auto f = computerToPlay();
  arrange(*f, {0, 0, 1, 0});
  f->TXq.Text = "mark";
  f->ClockMin = 20;
  f->Hai.Value = 4;
  TimAI_Timer(*f);
  EXPECT_EQ(f->TXq.Text, "mark") << "only at IQ 3";

  auto g = computerToPlay();
  arrange(*g, {0, 0, 1, 0});
  g->Hai.Value = 3;
  g->ClockMin = 40;
  g->TXq.Text = "mark";
  TimAI_Timer(*g);
  EXPECT_EQ(g->TXq.Text, "mark") << "not around half time";
  g->DiceReady = 1;
  g->AIGo = 1;
  g->ClockMin = 20;
  TimAI_Timer(*g);
  EXPECT_EQ(g->TXq.Text, "-1") << "written also when no rule fires";
  EXPECT_EQ(g->AIGo, 2);
}

TEST(ComputerTurn, ARollMadeForItElsewhereSkipsItsSubstitutions) {
  auto f = computerToPlay();
  f->Hai.Value = 2;
  f->ClockMin = 31;
  ClickDi(*f);  // as automatic play would, before the computer's own tick
  ASSERT_EQ(f->AIGo, 2);
  TimAI_Timer(*f);
  EXPECT_TRUE(f->CHsub[2].Visible);
  EXPECT_FALSE(f->TimSub.Enabled());
  EXPECT_GE(f->KickFlag, 0) << "straight to the flag";
}

}  // namespace
}  // namespace quorvel
