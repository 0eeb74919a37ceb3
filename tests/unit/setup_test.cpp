// Window load and Start.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "form_paths.h"
#include "support.h"
#include "ui/ui.h"

namespace quorvel {
namespace {

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

}  // namespace
}  // namespace quorvel
