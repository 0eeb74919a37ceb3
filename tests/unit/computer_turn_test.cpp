// The computer's substitutions by IQ, clock, pitch and score.
#include <gtest/gtest.h>

#include "ai/ai.h"
#include "support.h"

namespace quorvel {
namespace {

using test::putPlayer;

// Everybody on the centre columns, where no count looks.
void parkAll(MatchForm& f) {
  for (int i = 0; i <= 22; ++i) putPlayer(f, i, i <= 11 ? 8 : 9, 1 + i % 8);
}

// Left players on (12, 4) stand in front of the computer's goal and in its third, on (12, 1)
// in its third only; right players mirror that on (4, 4) and (5, 1).
struct Crowd {
  int leftFront = 0, leftDeep = 0, rightFront = 0, rightDeep = 0;
};

struct Situation {
  int iq;
  double minute;
  int goalDiff;
  bool box2, box3;
  Crowd crowd;
  int box;  // the box the computer substitutes through; -1 when it rolls instead
};

// One tick of the computer, its turn and roll to come; the box it used, or -1 when it rolled.
int firstTick(const Situation& s) {
  auto f = newMatchForm();
  select(*f, f->OpMode[2]);
  test::startMatch(*f, 2);
  EXPECT_TRUE(test::finishWalk(*f));
  parkAll(*f);
  int left = 2, right = 13;
  for (int k = 0; k < s.crowd.leftFront; ++k) putPlayer(*f, left++, 12, 4);
  for (int k = 0; k < s.crowd.leftDeep; ++k) putPlayer(*f, left++, 12, 1);
  for (int k = 0; k < s.crowd.rightFront; ++k) putPlayer(*f, right++, 4, 4);
  for (int k = 0; k < s.crowd.rightDeep; ++k) putPlayer(*f, right++, 5, 1);
  f->Hai.Value = s.iq;
  f->ClockMin = s.minute;
  f->GoalDiff = static_cast<Integer>(s.goalDiff);
  f->CHsub[2].Visible = s.box2;
  f->CHsub[3].Visible = s.box3;
  TimAI_Timer(*f);
  const int box = s.box2 && !f->CHsub[2].Visible ? 2 : s.box3 && !f->CHsub[3].Visible ? 3 : -1;
  EXPECT_EQ(f->TimSub.Enabled(), box >= 0);
  EXPECT_EQ(f->AIGo, box >= 0 ? 1 : 2) << "a substitution or the roll, never both";
  return box;
}

TEST(ComputerTurn, SubstitutionRulesByIqClockPitchAndScore) {
  // IQ 1 and 2 go by the clock alone, IQ 1 never through its second box; IQ 3 to 6 read the
  // thirds, the danger zones and the score; IQ 6 also by the score alone: behind in minutes 66
  // to 74, not winning from minute 81. None around half time (from minute 35 by the clock, 37
  // by the pitch, to 50) nor from minute 89.
  // clang-format off
  const Situation cases[] = {  // a line or two for each IQ
      {1, 29, 0, true, true, {}, -1}, {1, 30, 0, true, true, {}, 2},
      {1, 80, -3, false, true, {}, -1}, {1, 34, 0, true, true, {}, 2},
      {1, 51, 0, true, true, {}, 2}, {1, 89, 0, true, true, {}, -1},
      {2, 31, 0, true, true, {0, 0, 5, 5}, 2}, {2, 59, 0, false, true, {}, -1},
      {2, 60, 5, false, true, {}, 3}, {2, 35, 0, true, true, {}, -1},
      {2, 50, 0, true, true, {}, -1},
      {3, 30, 0, true, true, {0, 2, 0, 0}, 2}, {3, 30, 0, true, true, {0, 2, 0, 1}, -1},
      {3, 60, 0, false, true, {0, 3, 0, 0}, 3}, {3, 60, 1, false, true, {0, 3, 0, 0}, -1},
      {3, 59, 0, false, true, {0, 3, 0, 0}, -1}, {3, 50, 0, true, true, {2, 2, 0, 0}, -1},
      {4, 30, 0, true, true, {0, 1, 0, 0}, 2}, {4, 30, 0, true, true, {1, 0, 1, 0}, -1},
      {4, 60, 0, false, true, {1, 0, 0, 0}, 3}, {4, 60, 1, false, true, {1, 0, 0, 0}, -1},
      {4, 36, 0, true, true, {2, 2, 0, 0}, 2}, {4, 37, 0, true, true, {2, 2, 0, 0}, -1},
      {5, 30, 0, true, true, {1, 0, 1, 0}, 2}, {5, 30, 1, true, true, {1, 0, 0, 0}, -1},
      {5, 60, 1, true, true, {2, 0, 0, 0}, 3}, {5, 60, 1, true, true, {2, 0, 1, 0}, -1},
      {6, 30, 5, true, true, {1, 0, 0, 0}, 2}, {6, 30, 0, true, true, {1, 0, 1, 0}, -1},
      {6, 60, 0, false, true, {1, 0, 1, 0}, 3}, {6, 60, 1, false, true, {1, 0, 1, 0}, -1},
      {6, 70, -1, true, true, {0, 0, 1, 0}, 3}, {6, 65, -1, false, true, {}, -1},
      {6, 75, -1, false, true, {}, -1}, {6, 70, 0, false, true, {}, -1},
      {6, 81, 0, true, false, {}, 2}, {6, 80, 0, true, false, {}, -1},
      {6, 81, 1, true, false, {}, -1}, {6, 88, -2, true, true, {}, 2},
      {6, 89, -2, true, true, {2, 2, 0, 0}, -1},
  };
  // clang-format on

  for (const Situation& s : cases)
    EXPECT_EQ(firstTick(s), s.box) << "IQ " << s.iq << ", minute " << s.minute << ", goals "
                                   << s.goalDiff << ", boxes " << s.box2 << s.box3;
}

}  // namespace
}  // namespace quorvel
