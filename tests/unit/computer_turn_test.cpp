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
  auto f = test::loadedForm();
  select(*f, f->OpMode[2]);
  test::startMatch(*f, 2);
  EXPECT_TRUE(test::finishWalk(*f));
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

TEST(ComputerTurn, SubstitutionRulesByIqClockPitchAndScore) {
  expectBoxes({
      // IQ 1 and 2: the clock alone; IQ 1 never uses its second box.
      {1, 29, 0, true, true, {}, -1},
      {1, 30, 0, true, true, {}, 2},
      {1, 80, -3, false, true, {}, -1},
      {2, 31, 0, true, true, {0, 0, 5, 5}, 2},
      {2, 31, 0, false, true, {}, -1},
      {2, 60, 5, false, true, {}, 3},
      // IQ 3 to 6: the thirds, the danger zones and the score.
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
      // IQ 6 by the score alone: behind in minutes 66 to 74, not winning from minute 81.
      {6, 70, -1, true, true, {0, 0, 1, 0}, 3},
      {6, 65, -1, false, true, {}, -1},
      {6, 75, -1, false, true, {}, -1},
      {6, 70, 0, false, true, {}, -1},
      {6, 81, 0, true, false, {}, 2},
      {6, 88, -2, true, true, {}, 2},
      {6, 80, 0, true, false, {}, -1},
      {6, 81, 1, true, false, {}, -1},
  });
}

TEST(ComputerTurn, NoSubstitutionAroundHalfTimeOrAtTheEnd) {
  const Crowd crowd{2, 2, 0, 0};  // enough for every IQ's first rule
  for (int iq = 1; iq <= 6; ++iq) {
    const int quietFrom = iq <= 2 ? 35 : 37;
    for (double minute = 30; minute <= 90; ++minute) {
      const bool quiet = (minute >= quietFrom && minute <= 50) || minute >= 89;
      EXPECT_EQ(firstTick({iq, minute, -1, true, true, crowd, 0}), quiet ? -1 : 2)
          << "IQ " << iq << ", minute " << minute;
    }
  }
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

  f->GameEnd = "ended";
  TimAI_Timer(*f);
  EXPECT_EQ(f->AIGo, 1) << "a refused roll is tried again on the next tick";
  f->GameEnd.clear();
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

TEST(ComputerTurn, IqThreeShowsTheThirdsDifferenceWhereItsRulesApply) {
  for (int iq : {3, 4})
    for (double minute : {20.0, 40.0}) {
      auto f = computerToPlay();
      arrange(*f, {0, 0, 1, 0});
      f->Hai.Value = iq;
      f->ClockMin = minute;
      f->TXq.Text = "mark";
      TimAI_Timer(*f);
      EXPECT_EQ(f->TXq.Text, iq == 3 && minute == 20 ? "-1" : "mark") << iq << " " << minute;
      EXPECT_EQ(f->AIGo, 2) << "written also when no rule fires";
    }
}

}  // namespace
}  // namespace quorvel
