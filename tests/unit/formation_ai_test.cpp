// The computer's formation choice.
#include <gtest/gtest.h>

#include <set>

#include "shape/shape.h"
#include "support.h"

namespace quorvel {
namespace {

enum { kVaried = 10, kNorm, kCup, kDefend, kAttack };

struct Situation {
  int iq;
  double minute;
  const char* left;  // score box texts
  const char* right;
  int from = kCup;     // the right side's formation before the call
  int personForm = 0;  // the left side's formation
};

std::unique_ptr<MatchForm> vsComputer(const Situation& s) {
  auto f = test::loadedForm();
  select(*f, f->OpMode[2]);
  for (int k = 0; k < 5; ++k) {
    f->OPForm[k].Value = k == s.personForm;
    f->OPForm[10 + k].Value = 10 + k == s.from;
  }
  f->Hai.Value = s.iq;
  f->ClockMin = s.minute;
  f->Goals[1].Text = s.left;
  f->Goals[2].Text = s.right;
  return f;
}

int chosen(const Situation& s) {
  auto f = vsComputer(s);
  FormAI(*f);
  return selectedFormation(*f, 2);
}

TEST(FormAI, OutsideTheGameAgainstTheComputerNothingHappens) {
  for (int mode : {0, 1}) {
    auto f = test::loadedForm();
    select(*f, f->OpMode[mode]);
    f->Hai.Value = 1;
    f->Goals[2].Text = "3";
    f->GoalDiff = 5;
    FormAI(*f);
    EXPECT_EQ(f->GoalDiff, 5);
    EXPECT_EQ(selectedFormation(*f, 2), kCup);
  }
}

TEST(FormAI, LevelsOneAndTwoFollowTheScore) {
  EXPECT_EQ(chosen({1, 10, "0", "1"}), kVaried);
  EXPECT_EQ(chosen({1, 10, "0", "2"}), kDefend);
  EXPECT_EQ(chosen({1, 10, "2", "0"}), kAttack);
  EXPECT_EQ(chosen({2, 10, "0", "0"}), kVaried);
  EXPECT_EQ(chosen({2, 10, "0", "1"}), kDefend);
  EXPECT_EQ(chosen({2, 10, "1", "0"}), kAttack);
}

TEST(FormAI, LevelThreeActsOnlyInItsMinutes) {
  EXPECT_EQ(chosen({3, 40, "1", "1"}), kVaried);
  EXPECT_EQ(chosen({3, 40, "0", "1"}), kCup);
  EXPECT_EQ(chosen({3, 41, "1", "1"}), kCup);
  std::set<int> drawn;
  for (int seed = 1; seed <= 200; ++seed) {
    auto f = vsComputer({3, 20, "0", "0"});
    f->Rnd.seed(static_cast<std::uint64_t>(seed));
    FormAI(*f);
    drawn.insert(selectedFormation(*f, 2));
  }
  EXPECT_EQ(drawn, (std::set<int>{kNorm, kCup, kDefend, kAttack}));  // never "Varied"
}

TEST(FormAI, LevelFourPlansByPhase) {
  EXPECT_EQ(chosen({4, 5, "0", "0"}), kAttack);
  EXPECT_EQ(chosen({4, 10, "0", "0", kDefend}), kDefend);
  EXPECT_EQ(chosen({4, 25, "0", "0"}), kNorm);
  EXPECT_EQ(chosen({4, 45, "0", "0", kDefend}), kDefend);
  EXPECT_EQ(chosen({4, 60, "0", "0"}), kAttack);
  EXPECT_EQ(chosen({4, 70, "0", "0", kDefend}), kDefend);
  EXPECT_EQ(chosen({4, 71, "1", "1"}), kCup);
  EXPECT_EQ(chosen({4, 71, "2", "1"}), kVaried);
}

TEST(FormAI, LevelFiveMirrorsThePersonBeforeMinute70) {
  EXPECT_EQ(chosen({5, 30, "0", "0", kCup, 4}), kDefend);
  EXPECT_EQ(chosen({5, 30, "0", "0", kCup, 3}), kAttack);
  for (int person : {0, 1, 2}) EXPECT_EQ(chosen({5, 30, "0", "0", kCup, person}), kNorm);
  EXPECT_EQ(chosen({5, 70, "0", "0", kCup, 4}), kCup);
  EXPECT_EQ(chosen({5, 75, "1", "0"}), kAttack);
  EXPECT_EQ(chosen({5, 75, "2", "0"}), kVaried);
  EXPECT_EQ(chosen({5, 75, "0", "1"}), kDefend);
}

TEST(FormAI, LevelSixPlansByPhaseAndScore) {
  EXPECT_EQ(chosen({6, 10, "3", "0", kAttack}), kCup);
  EXPECT_EQ(chosen({6, 30, "0", "0", kAttack}), kAttack);
  EXPECT_EQ(chosen({6, 60, "0", "0", kAttack}), kAttack);
  EXPECT_EQ(chosen({6, 45, "0", "1"}), kDefend);
  EXPECT_EQ(chosen({6, 45, "1", "0"}), kAttack);
  EXPECT_EQ(chosen({6, 65, "1", "0"}), kAttack);  // "Norm" first, then "Attack"
  EXPECT_EQ(chosen({6, 65, "3", "0"}), kAttack);
  EXPECT_EQ(chosen({6, 72, "3", "0"}), kVaried);
  EXPECT_EQ(chosen({6, 72, "0", "2"}), kDefend);
  EXPECT_EQ(chosen({6, 80, "0", "1", kNorm}), kNorm);
  EXPECT_EQ(chosen({6, 80, "1", "1", kNorm}), kAttack);
}

TEST(FormAI, ScoreBoxesThatAreNotNumbersCountAsNothing) {
  auto f = vsComputer({2, 10, "", "x3"});
  FormAI(*f);
  EXPECT_EQ(f->GoalDiff, 0);
  EXPECT_EQ(selectedFormation(*f, 2), kVaried);
}

TEST(FormAI, DuringAWalkTheFirstChangeOfACallIsTheOneThatRePlans) {
  // Level 6, minute 65, one goal behind: "Norm" is selected first, then "Attack". The walk
  // re-plans for "Norm" (shirt 2 on (14, 3)); "Attack" only changes the selection.
  auto f = vsComputer({6, 65, "1", "0"});
  f->TeamTurn = 1;
  SetPlay(*f);
  ASSERT_TRUE(f->TimPlace.Enabled());
  f->PlaceTicks = 40;
  FormAI(*f);
  EXPECT_EQ(selectedFormation(*f, 2), kAttack);
  EXPECT_EQ(f->FormChanged[2], 2);
  EXPECT_EQ(f->PlaceTicks, 0);
  EXPECT_EQ(f->PlayerCol[13], 14);
  EXPECT_EQ(f->PlayerRow[13], 3);
  EXPECT_EQ(f->PlayerCol[14], 14);  // "Norm" shirt 3 on (14, 6), not "Attack"'s (13, 6)
}

}  // namespace
}  // namespace quorvel
