// The match clock: moves of 15 or 10 seconds, stored exactly; half time at 45:00 exactly. The
// stories of half time and full time are told by their scenarios.
#include <gtest/gtest.h>

#include <string>

#include "support.h"

namespace quorvel {
namespace {

TEST(Clock, MovesOf15Or10SecondsReach45MinutesExactly) {
  struct Case {
    int tenSeconds, moves;
    const char* shown;
    double min, sec;
    bool halfTime;
  };
  const Case cases[] = {
      {0, 1, "00:15", 0, 0.15, false},    {0, 2, "00:30", 0, 0.3, false},
      {0, 4, "01:00", 1, 0, false},       {0, 5, "01:15", 1, 0.15, false},
      {0, 179, "44:45", 44, 0.45, false}, {0, 180, "45:00", 45, 0, true},
      {1, 1, "00:10", 0, 0.1, false},     {1, 5, "00:50", 0, 0.5, false},
      {1, 6, "01:00", 1, 0, false},       {1, 269, "44:50", 44, 0.5, false},
      {1, 270, "45:00", 45, 0, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.moves << " moves, ten " << c.tenSeconds);
    auto f = test::matchReady(2);
    f->ChtenFIF.Value = c.tenSeconds;
    for (int i = 0; i < c.moves; ++i) {
      f->HalfHold = 0;
      TikTok(*f);
    }
    EXPECT_EQ(f->TXtim.Text, c.shown);
    EXPECT_EQ(f->ClockMin, c.min);
    EXPECT_EQ(f->ClockSec, c.sec) << "stored exactly as seconds / 100";
    EXPECT_EQ(f->HalfHold, c.halfTime ? 1 : 0);
    EXPECT_EQ(f->PicGame.Visible, c.halfTime);
    EXPECT_EQ(f->BallOwner, c.halfTime ? 9 : 20) << "half time: the other side kicks off";
  }
}

}  // namespace
}  // namespace quorvel
