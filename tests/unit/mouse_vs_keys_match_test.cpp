// A whole match in "Mouse vs Keys" through the driver's commands: the left side plays with
// clicks, the right side with keys, and each side makes both its substitutions on the way.
#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>

#include "driver.h"
#include "shape/shape.h"
#include "turn_support.h"

namespace quorvel {
namespace {

constexpr char kFlagKey[8] = {'8', '9', '6', '3', '2', '1', '4', '7'};

TEST(MouseVsKeysMatch, ClicksForTheLeftAndKeysForTheRightPlayToTheFinalWhistle) {
  std::ostringstream out, err;
  Driver d(out, err);
  MatchForm& f = d.form();
  int line = 0;
  auto say = [&](const std::string& command) {
    EXPECT_EQ(d.execute(command, ++line), Driver::kOk) << command << ": " << err.str();
  };
  say("seed 12");
  say("click OpMode(1)");
  say("click CDgo");
  std::mt19937 pick(12);  // which flag each side chooses, and how the right side rolls

  int moves = 0, mouseRefused = 0;
  while (f.GameEnd.empty()) {
    ASSERT_TRUE(test::runUntil(
        f, [&f] { return f.DiceReady == 1 && !f.TimPlace.Enabled() && !substitutionUnderWay(f); }));
    const bool left = f.TeamTurn == 1;
    // Each side substitutes on its first turn after minute 20 and after minute 50.
    const int firstBox = left ? 0 : 2, secondBox = left ? 1 : 3;
    const int used = !f.CHsub[firstBox].Visible + !f.CHsub[secondBox].Visible;
    if (used < 2 && f.ClockMin > 20 + 30 * used) {
      say(left ? "click CHsub(" + std::to_string(used == 0 ? firstBox : secondBox) + ")" : "key -");
      ASSERT_TRUE(f.TimSub.Enabled()) << "minute " << f.ClockMin;
      continue;
    }

    if (left) {
      say("key 5");  // the keys belong to the other side
      ASSERT_EQ(f.DiceReady, 1);
      say("click Cdice");
    } else {
      say(pick() % 2 ? "key 5" : "click Cdice");
    }
    ASSERT_EQ(f.DiceReady, -1);
    const auto flags = test::visibleFlags(f);
    const int flag = flags[pick() % flags.size()];
    if (left) {
      say("click CDdest(" + std::to_string(flag) + ")");
    } else {
      if (f.ClickFrom != 77) {  // rolled by the mouse: no key pressed on this turn yet
        say("click CDdest(" + std::to_string(flag) + ")");
        ASSERT_EQ(f.KickFlag, -1);
        ++mouseRefused;
      }
      say(std::string("key ") + kFlagKey[flag]);
    }
    ASSERT_EQ(f.KickFlag, flag) << "move " << moves;
    ++moves;
    ASSERT_TRUE(test::land(f));
  }

  EXPECT_EQ(moves, 360);
  EXPECT_GT(mouseRefused, 0);
  for (int box = 0; box < 4; ++box) EXPECT_FALSE(f.CHsub[box].Visible) << box;
  say("expect TXgame(0).Text Game");
  say("expect TXgame(1).Text Over");
  say("expect TXtim.Text 90:00");
}

}  // namespace
}  // namespace quorvel
