// Window load, Start and SetPlay.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "form_paths.h"
#include "support.h"
#include "ui/ui.h"

namespace quorvel {
namespace {

// A draw that lands on offset k of a range of n values.
double pick(int k, int n) {
  return (k + 0.5) / n;
}

TEST(Load, TheStartUpCounterWraps) {
  auto f = newMatchForm();
  f->Sched.advance(45);
  EXPECT_EQ(f->TimiCount, 3);
  f->TimiCount = 32759;
  f->Sched.advance(15);
  EXPECT_EQ(f->TimiCount, 32760);
  f->Sched.advance(15);
  EXPECT_EQ(f->TimiCount, -32760);
}

TEST(Load, WhileWaitingForStartTicksThatShowNothingChangeNothingButTheirCount) {
  auto f = newMatchForm(7);
  const auto shown = [&f] {  // everything but the count itself
    std::string all = FormPaths(*f).dump();
    const std::size_t at = all.find("\"TimiCount\":");
    return all.erase(at, all.find(',', at) - at);
  };
  int quiet = 0;
  for (std::string before = shown(); f->Sched.now() < 2100;) {
    const std::int64_t showing = f->Sched.shownTicksRun();
    ASSERT_TRUE(f->Sched.step(Scheduler::kNever));
    std::string after = shown();
    if (f->Sched.shownTicksRun() == showing) {
      ++quiet;
      ASSERT_EQ(after, before) << "at " << f->Sched.now();
    }
    before = std::move(after);
  }
  EXPECT_EQ(quiet, 140);
  EXPECT_EQ(f->Sched.shownTicksRun(), 2);  // the team panel's, once a second
}

TEST(Start, TheMatchCountWrapsAfter9999AndTheNextMatchCountsAsAFirst) {
  auto f = newMatchForm();
  f->GameCount = 9998;
  f->Rnd.force({0.9});
  CDgo_Click(*f);
  EXPECT_EQ(f->GameCount, 9999);
  f->Rnd.force({0.9, 0.9});  // 2, then the first-match draw 3 -> left
  CDgo_Click(*f);
  EXPECT_EQ(f->GameCount, 1);
  EXPECT_EQ(f->KickOffSide, kLeftSide);
  EXPECT_EQ(f->Rnd.forcedPending(), 0u);
  f->Rnd.force({0.9});  // a later match draws once: 2
  CDgo_Click(*f);
  EXPECT_EQ(f->GameCount, 2);
  EXPECT_EQ(f->KickOffSide, kRightSide);
}

// ---- SetPlay ---------------------------------------------------------------------------------

void useFormations(MatchForm& f, int left, int right) {
  for (int k = 0; k < 5; ++k) {
    f.OPForm[k].Value = k == left;
    f.OPForm[10 + k].Value = k == right;
  }
}

std::pair<int, int> square(const MatchForm& f, int i) {
  return {static_cast<int>(f.PlayerCol[i]), static_cast<int>(f.PlayerRow[i])};
}

TEST(SetPlay, VariedRedrawsOverItsOwnSideAndFallsBackWhenARowIsFull) {
  auto f = newMatchForm();
  useFormations(*f, 0, 1);
  f->TeamTurn = kRightSide;
  // Player 3 (row 2) still stands on (5, 2): a draw of column 5 hits himself and is redrawn.
  // Players 4..8 and 10 take all six squares, columns 3..8, of player 2's row 1: he falls back
  // to a free square of the left half.
  f->PlayerCol[3] = 5, f->PlayerRow[3] = 2;
  const int blockers[6] = {4, 5, 6, 7, 8, 10};
  for (int k = 0; k < 6; ++k) f->PlayerCol[blockers[k]] = 3 + k, f->PlayerRow[blockers[k]] = 1;
  f->Rnd.force({0.0, pick(2, 6), pick(3, 6)});  // fallback pick; player 3: 5 (taken), then 6
  SetPlay(*f);
  const auto [c2, r2] = square(*f, 2);
  EXPECT_TRUE(c2 >= 1 && c2 <= 8);
  EXPECT_EQ(square(*f, 3), std::make_pair(6, 2));
  for (int i = 1; i <= 11; ++i)
    if (i != 2) {
      EXPECT_NE(square(*f, i), std::make_pair(c2, r2));
    }
}

}  // namespace
}  // namespace quorvel
