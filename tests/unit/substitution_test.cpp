// Substitutions: who may leave and the clicks refused. The exchange itself is told by the
// substitution_by_box scenario.
#include <gtest/gtest.h>

#include <tuple>

#include "shape/shape.h"
#include "support.h"

namespace quorvel {
namespace {

TEST(MakeSub, BeforeTheFirstStartThereIsNobodyToTakeOff) {
  auto idle = newMatchForm();
  MakeSub(*idle);
  EXPECT_EQ(idle->SubOff, 0);
}

// Every refusal still clears the box, "Quickplay" and automatic play and leaves the box on
// show for a later turn; only the rolled die says why.
TEST(SubBox, RefusedClicksStartNothing) {
  struct Case {
    const char* what;
    int side, box;
    void (*arrange)(MatchForm&);
    bool blanksContest, showsHint;
  };
  const Case cases[] = {
      {"before Start", 1, 0, [](MatchForm& f) { f.GameOn = kNoMatchYet; }, false, false},
      {"during a substitution", 1, 0, [](MatchForm& f) { f.SubTicks = 300; }, false, false},
      {"while walking", 1, 0, [](MatchForm& f) { f.TimPlace.setEnabled(true); }, true, false},
      {"after the roll", 1, 0, [](MatchForm& f) { test::roll(f, 3); }, true, true},
      {"after full time", 1, 0, [](MatchForm& f) { f.GameEnd = "ended"; }, true, false},
      {"other side's box", 1, 3, [](MatchForm&) {}, true, false},
      {"other side's box", 2, 1, [](MatchForm&) {}, true, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    auto m = test::matchReady(c.side);
    MatchForm& f = *m;
    c.arrange(f);
    setValue(f, f.ChAuto, 0);
    setValue(f, f.Chq, 1);
    f.CDcontest[1].Image = f.CDcontest[2].Image = f.Di[4].Image;
    userClick(f, f.CHsub[c.box]);
    EXPECT_EQ(
        std::tuple(f.TimSub.Enabled(), f.CHsub[c.box].Visible, f.CHsub[c.box].Value, f.Chq.Value,
                   f.ChAuto.Value, f.CDcontest[2].Image == f.Di[7].Image, f.TXoner.Visible),
        std::tuple(false, true, 0, 0, 1, c.blanksContest, c.showsHint));
  }
}

}  // namespace
}  // namespace quorvel
