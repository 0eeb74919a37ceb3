// The walk to the formation squares: how long it lasts, where the ball settles, and the
// formation buttons during it.
#include <gtest/gtest.h>

#include "shape/shape.h"
#include "support.h"

namespace quorvel {
namespace {

TEST(Walk, LastsUntilEverythingIsInPlaceOrTheTimeOut) {
  // Player 9 has the ball, his picture on (6795, 5535); the ball rests on (7515, 5355).
  struct Case {
    const char* what;
    double shift;  // player 5's picture moved right and down
    double ballLeft, ballTop;
    int placeMode;  // 23 after a substitution: the ball goes to its owner's feet
    int ticks;
    double ballLeftAfter;
  };
  const Case cases[] = {
      {"nothing to move", 0, 7515, 5355, 34, 1, 7515},
      {"one square diagonally", 900, 7515, 5355, 34, 60, 7515},
      {"the ball one step out of its box", 0, 7545, 5355, 34, 2, 7530},
      {"the ball off the grid", 0, 7522.5, 5355, 34, 1, 7515},
      {"a picture off the grid: the time-out", 7, 7515, 5355, 34, 1025, 7515},
      {"the ball to its owner's feet", 0, 6795 + 900, 5535, 23, 21, 6795 + 600},
  };
  for (const Case& c : cases) {
    auto f = newMatchForm();
    f->TeamTurn = 1;
    f->BallOwner = 9;
    SetPlay(*f);
    for (int i = 1; i <= 22; ++i) {
      f->Player[i].Left = playerLeft(f->PlayerCol[i]) + (i == 5 ? c.shift : 0);
      f->Player[i].Top = playerTop(f->PlayerRow[i]) + (i == 5 ? c.shift : 0);
    }
    f->Ball.Left = c.ballLeft;
    f->Ball.Top = c.ballTop;
    f->PlaceMode = c.placeMode;
    int ticks = 0;
    for (; f->TimPlace.Enabled() && ticks < 5000; ++ticks) TimPlace_Timer(*f);
    EXPECT_EQ(ticks, c.ticks) << c.what;
    EXPECT_EQ(f->Ball.Left, c.ballLeftAfter) << c.what;
  }
}

TEST(FormationButtons, EachSideRePlansOnceDuringAWalk) {
  auto f = newMatchForm();
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

TEST(FormationButtons, TheComputerReconsidersOnTheWalksTick150) {
  auto f = newMatchForm();
  select(*f, f->OpMode[2]);
  f->Hai.Value = 1;
  test::startMatch(*f, 1);
  ASSERT_TRUE(test::runUntil(*f, [&f] { return f->PlaceTicks == 149; }));
  f->Goals[1].Text = "2";  // two goals down, the computer at IQ 1 attacks
  EXPECT_NE(selectedFormation(*f, 2), 14);
  f->Sched.advance(15);
  EXPECT_EQ(selectedFormation(*f, 2), 14);
}

}  // namespace
}  // namespace quorvel
