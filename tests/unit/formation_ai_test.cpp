// The computer's formation choice by IQ, minute, score and the formations on the pitch.
#include <gtest/gtest.h>

#include <string>

#include "shape/shape.h"
#include "support.h"

namespace quorvel {
namespace {

enum { kVaried = 10, kNorm, kCup, kDefend, kAttack };

// Every rule at its edges. IQ 1 and 2 follow the score; IQ 3 acts only in its minutes and draws
// among all but "Varied"; IQ 4 plans by phase; IQ 5 answers the person's formation until minute
// 70, then the score; IQ 6 plans by phase and score.
TEST(FormAI, ChoosesByIqMinuteScoreAndFormation) {
  struct Case {
    int iq;
    double minute;
    int goalDiff;  // the computer's goals minus the person's
    int chosen;
    int from = kCup;  // the computer's formation before the call
    int person = 0;   // the person's formation, 0..4
  };
  // clang-format off
  const Case cases[] = {  // a line for each IQ
      {1, 10, 1, kVaried}, {1, 10, 2, kDefend}, {1, 10, -2, kAttack},
      {2, 10, 0, kVaried}, {2, 10, 1, kDefend}, {2, 10, -1, kAttack},
      {3, 40, 0, kVaried}, {3, 40, 1, kCup}, {3, 41, 0, kCup}, {3, 20, 0, kAttack},
      {3, 80, 0, kAttack},
      {4, 5, 0, kAttack}, {4, 10, 0, kDefend, kDefend}, {4, 25, 0, kNorm},
      {4, 45, 0, kDefend, kDefend}, {4, 40, 0, kAttack}, {4, 60, 0, kAttack},
      {4, 70, 0, kDefend, kDefend}, {4, 71, 0, kCup, kAttack}, {4, 71, -1, kVaried},
      {5, 30, 0, kDefend, kCup, 4}, {5, 30, 0, kAttack, kCup, 3}, {5, 30, 0, kNorm, kCup, 2},
      {5, 70, 0, kCup, kCup, 4}, {5, 70, 0, kCup, kCup, 3},
      {5, 75, -1, kAttack}, {5, 75, -2, kVaried}, {5, 75, 1, kDefend},
      {6, 10, -3, kCup, kAttack}, {6, 30, 0, kAttack, kAttack}, {6, 60, 0, kAttack, kAttack},
      {6, 45, 1, kDefend}, {6, 45, -1, kAttack}, {6, 65, -1, kAttack}, {6, 65, -3, kAttack},
      {6, 72, -3, kVaried}, {6, 72, 2, kDefend}, {6, 72, -2, kAttack}, {6, 72, 1, kCup, kAttack},
      {6, 80, 1, kNorm, kNorm}, {6, 80, 0, kAttack, kNorm},
  };
  // clang-format on
  for (const Case& c : cases) {
    auto f = newMatchForm();
    select(*f, f->OpMode[2]);
    for (int k = 0; k < 5; ++k) {
      f->OPForm[k].Value = k == c.person;
      f->OPForm[10 + k].Value = 10 + k == c.from;
    }
    f->Hai.Value = c.iq;
    f->ClockMin = c.minute;
    f->Goals[1].Text = std::to_string(c.goalDiff < 0 ? -c.goalDiff : 0);
    f->Goals[2].Text = std::to_string(c.goalDiff > 0 ? c.goalDiff : 0);
    f->Rnd.force({0.99});  // a formation drawn at random is the last one, "Attack"
    FormAI(*f);
    EXPECT_EQ(selectedFormation(*f, 2), c.chosen)
        << "IQ " << c.iq << ", minute " << c.minute << ", goals " << c.goalDiff;
  }
}

}  // namespace
}  // namespace quorvel
