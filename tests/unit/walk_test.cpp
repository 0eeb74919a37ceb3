// The walk to the formation squares: how long it lasts, where the ball settles, and the
// formation buttons during it.
#include <gtest/gtest.h>

#include "shape/shape.h"
#include "support.h"

namespace quorvel {
namespace {

TEST(Walk, LastsUntilEverythingIsInPlaceOrTheTimeOut) {
  struct Case {
    const char* what;
    void (*arrange)(MatchForm&);
    int ticks;
    double ballLeft;
  };
  const Case cases[] = {
      {"nothing to move", [](MatchForm&) {}, 1, 7515},
      {"one square diagonally",
       [](MatchForm& f) {
         f.Player[5].Left += 900;
         f.Player[5].Top += 900;
       },
       60, 7515},
      {"the ball one step out of its box", [](MatchForm& f) { f.Ball.Left = 7545; }, 2, 7530},
      {"the ball off the grid", [](MatchForm& f) { f.Ball.Left = 7522.5; }, 1, 7515},
      {"a picture off the grid", [](MatchForm& f) { f.Player[3].Left += 7; }, 1025, 7515},
      {"after a substitution the ball goes to its owner's feet",
       [](MatchForm& f) {
         f.PlaceMode = 23;
         f.Ball.Left = f.Player[9].Left + 900;
         f.Ball.Top = f.Player[9].Top;
       },
       21, 6795 + 600},
  };
  for (const Case& c : cases) {
    // Every player on his square and the ball in its resting box, then `arrange`.
    auto f = test::loadedForm();
    f->TeamTurn = 1;
    f->BallOwner = 9;
    SetPlay(*f);
    for (int i = 1; i <= 22; ++i) {
      f->Player[i].Left = playerLeft(f->PlayerCol[i]);
      f->Player[i].Top = playerTop(f->PlayerRow[i]);
    }
    f->Ball.Left = 7515;
    f->Ball.Top = 5355;
    f->PlaceMode = 34;
    c.arrange(*f);
    int ticks = 0;
    for (; f->TimPlace.Enabled() && ticks < 5000; ++ticks) TimPlace_Timer(*f);
    EXPECT_EQ(ticks, c.ticks) << c.what;
    EXPECT_EQ(f->Ball.Left, c.ballLeft) << c.what;
  }
}

TEST(FormationButtons, EachSideRePlansOnceDuringAWalk) {
  auto f = test::loadedForm();
  test::startMatch(*f, 1);
  f->Sched.advance(300);
  userClick(*f, f->OPForm[3]);  // left "Defend": re-plans at once, shirt 2 to (3, 6)
  EXPECT_EQ(std::pair(f->PlayerCol[2], f->PlayerRow[2]), std::pair(3.0, 6.0));
  EXPECT_EQ(f->PlaceTicks, 0);
  f->Sched.advance(300);
  userClick(*f, f->OPForm[1]);  // a second change of the same walk: the selection only
  EXPECT_TRUE(f->OPForm[1].Value);
  EXPECT_EQ(std::pair(f->PlayerCol[2], f->PlayerRow[2]), std::pair(3.0, 6.0));
  userClick(*f, f->OPForm[11]);  // the right side still has its own re-plan: "Norm"
  EXPECT_EQ(std::pair(f->PlayerCol[13], f->PlayerRow[13]), std::pair(14.0, 3.0));
}

}  // namespace
}  // namespace quorvel
