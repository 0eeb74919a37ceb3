// Keyboard play: digits kick, 5 rolls, minus substitutes, each only where its mode allows.
#include <gtest/gtest.h>

#include <tuple>

#include "shape/shape.h"
#include "support.h"

namespace quorvel {
namespace {

enum State { kPlaying, kFirstBoxUsed, kFullTime, kAutomatic };

TEST(Keys, WhatAKeyDoesByModeSideAndState) {
  struct Case {
    int mode, side;  // mode 0 Free, 1 Mouse vs Keys, 2 Play Left vs AI
    const char* keys;
    bool rolls;
    int kick, box;  // the flag played and the Sub box used, or -1
    State state = kPlaying;
  };
  // clang-format off
  const Case cases[] = {
      {0, 1, "5", true, -1, -1}, {0, 2, "56", true, 2, -1}, {0, 1, "53", true, 3, -1},
      {0, 1, "52", true, 4, -1}, {0, 1, "51", true, 5, -1}, {0, 1, "54", true, 6, -1},
      {0, 1, "58", true, -1, -1},  // up is off the pitch
      {0, 1, "0a", false, -1, -1}, {0, 1, "-", false, -1, 0}, {0, 2, "-", false, -1, 2},
      {0, 1, "5-", true, -1, -1},  {0, 1, "--", false, -1, 0},  // not while one comes on
      {0, 1, "-", false, -1, 1, kFirstBoxUsed}, {0, 2, "-", false, -1, 3, kFirstBoxUsed},
      {0, 1, "-", false, -1, -1, kAutomatic},  // the first press only stops automatic play
      {0, 1, "--", false, -1, 0, kAutomatic},
      {1, 1, "5-", false, -1, -1}, {1, 2, "54", true, 6, -1},
      {2, 1, "-", false, -1, 0}, {2, 2, "5-", false, -1, -1},
      {0, 1, "5-", false, -1, -1, kFullTime},
  };
  // clang-format on
  for (const Case& c : cases) {
    auto m = newMatchForm();
    MatchForm& f = *m;
    select(f, f.OpMode[c.mode]);
    test::startMatch(f, c.side);
    ASSERT_TRUE(test::finishWalk(f));
    test::giveBall(f, c.side == 1 ? 9 : 20, 8, 1);  // the top row: nothing upwards
    const int first = c.side == 1 ? 0 : 2;
    if (c.state == kFirstBoxUsed) f.CHsub[first].Visible = false;
    if (c.state == kFullTime) f.GameEnd = "ended";
    if (c.state == kAutomatic) setValue(f, f.ChAuto, 0);
    f.Rnd.force({test::face(1)});
    for (const char* k = c.keys; *k; ++k) userKey(f, *k);
    int box = -1;
    for (int b = 0; b < 4; ++b)
      if (!f.CHsub[b].Visible && !(c.state == kFirstBoxUsed && b == first)) box = b;
    EXPECT_EQ(
        std::tuple(f.DiceReady == kDiceRolled, f.KickFlag, box, f.TimSub.Enabled(), f.ChAuto.Value),
        std::tuple(c.rolls, c.kick, c.box, c.box >= 0, 1))
        << "mode " << c.mode << ", side " << c.side << ", keys " << c.keys << ", state " << c.state;
  }
}

}  // namespace
}  // namespace quorvel
