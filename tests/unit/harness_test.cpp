// The randomised harness: seeded runs keep every promise, and each promise is really caught
// when the state breaks it. QUORVEL_HARNESS_STEPS sets the steps per seed (quorvel-soak makes
// the long runs).
#include "harness.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>

#include "events/events.h"
#include "match/match.h"
#include "support.h"

namespace quorvel::harness {
namespace {

TEST(Harness, SeededRunsKeepEveryPromiseAndReplayExactly) {
  const char* env = std::getenv("QUORVEL_HARNESS_STEPS");
  const std::int64_t steps = env != nullptr && std::atoll(env) > 0 ? std::atoll(env) : 5000;
  Counts total;
  for (std::uint64_t seed = 1; seed <= 4; ++seed) {
    Harness h(seed);
    EXPECT_TRUE(h.run(steps)) << h.report();
    total.rolls += h.counts().rolls;
    total.goals += h.counts().goals;
    total.subs += h.counts().subs;
    total.starts += h.counts().starts;
    total.modeChanges += h.counts().modeChanges;
  }
  // A harness that never gets a match going checks nothing.
  EXPECT_GT(total.starts, 0);
  EXPECT_GT(total.rolls, 100);
  EXPECT_GT(total.goals, 0);
  EXPECT_GT(total.subs, 0);
  EXPECT_GT(total.modeChanges, 0);

  Harness a(11), b(11);
  a.run(1500);
  b.run(1500);
  EXPECT_EQ(a.recent(), b.recent());
  EXPECT_EQ(a.form().Sched.now(), b.form().Sched.now());
}

struct Broken {
  const char* words;  // what the report must say
  std::function<void(MatchForm&, Harness&)> breakIt;
};

TEST(Harness, EveryPromiseIsCaughtWhenTheStateBreaksIt) {
  auto paint = [](MatchForm& f, int swatch, Colour c) {
    f.ColRed[swatch] = static_cast<Integer>(c.red());
    f.ColGreen[swatch] = static_cast<Integer>(c.green());
    f.ColBlue[swatch] = static_cast<Integer>(c.blue());
  };
  auto placed = [](MatchForm& f, int i, int col, int row) {
    SetPlay(f);
    f.PlayerCol[i] = col;
    f.PlayerRow[i] = row;
  };
  const Broken cases[] = {
      {"side to play", [](MatchForm& f, Harness&) { f.TeamTurn = 2; }},
      {"roll was accepted with the ball on",
       [](MatchForm& f, Harness&) {
         f.BallCol = static_cast<Integer>(f.PlayerCol[9] == 16 ? 15 : f.PlayerCol[9] + 1);
         ClickDi(f);
       }},
      {"while a substitute walks on",
       [](MatchForm& f, Harness&) {
         f.SubOff = 4;
         f.TimSub.setEnabled(true);
         f.DiceReady = -1;  // as if the die had taken a roll now
       }},
      {"same square",
       [](MatchForm& f, Harness&) {
         SetPlay(f);
         f.PlayerCol[5] = f.PlayerCol[6], f.PlayerRow[5] = f.PlayerRow[6];
       }},
      {"keepers", [&](MatchForm& f, Harness&) { placed(f, 12, 15, 5); }},
      {"forward to kick off", [&](MatchForm& f, Harness&) { placed(f, 9, 8, 4); }},
      {"in the centre", [&](MatchForm& f, Harness&) { placed(f, 15, 9, 5); }},
      {"clock went from 30:00 to 29:00",
       [](MatchForm& f, Harness& h) {
         f.ClockMin = 30;
         ASSERT_TRUE(h.checkNow());
         f.ClockMin = 29;
       }},
      {"90:15", [](MatchForm& f, Harness&) { f.ClockMin = 90, f.ClockSec = 0.15f; }},
      {"side 1's score went from 0 to 1 with 0 shot(s)",
       [](MatchForm& f, Harness&) { f.Goals[1].Text = "1"; }},
      {"side 1's score",  // an arrived shot of the right side's counts for the right side
       [](MatchForm& f, Harness& h) {
         f.GoalSide = 2;
         f.TimSc.setEnabled(true);
         ASSERT_TRUE(h.checkNow());
         f.Goals[1].Text = "1";
       }},
      {"third substitution",
       [](MatchForm& f, Harness& h) {
         for (int n = 1; n <= 3; ++n) {
           f.SubOff = static_cast<Single>(2 + n);
           f.TimSub.setEnabled(true);
           if (n == 3) return;
           EXPECT_TRUE(h.checkNow());
           f.TimSub.setEnabled(false);
           EXPECT_TRUE(h.checkNow());
         }
       }},
      {"possession reads",
       [](MatchForm& f, Harness&) {
         f.KickCount = {0, 1, 2};
         f.Poses[1].Text = " 33%", f.Poses[2].Text = " 33%";
       }},
      {"drawn from one entry twice",
       [](MatchForm& f, Harness&) {
         f.HeadPick = {0, 7, 7};
       }},
      {"side 1's colours", [&](MatchForm& f, Harness&) { paint(f, 1, RGB(252, 84, 84)); }},
      {"melts into the grass", [&](MatchForm& f, Harness&) { paint(f, 0, RGB(42, 126, 42)); }},
      {"main colours", [&](MatchForm& f, Harness&) { paint(f, 3, RGB(210, 0, 0)); }},
      {"timer ticks kept coming",
       [](MatchForm& f, Harness& h) {
         f.TimB.setInterval(1);  // far faster than any timer of the game
         h.advance(1000);
       }},
  };
  for (const Broken& c : cases) {
    SCOPED_TRACE(c.words);
    Harness h(5);
    MatchForm& f = h.form();
    test::startMatch(f, 1);
    ASSERT_TRUE(test::finishWalk(f));
    f.TailPick = {0, 3, 9}, f.HeadPick = {0, 4, 5};
    ASSERT_TRUE(h.checkNow()) << h.report();
    c.breakIt(f, h);
    EXPECT_FALSE(h.checkNow());
    EXPECT_NE(h.fault().what.find(c.words), std::string::npos) << h.fault().what;
  }
}

// The colour draw keeps the colour promise even when a thousand draws in a row are refused
// and the fallback decides (the seeded runs click every kind of colour draw).
TEST(Harness, TeamColourDrawsKeepThePromise) {
  Harness h(5);
  MatchForm& f = h.form();
  std::vector<double> green;  // levels (0, 5, 0) and no kit colour: refused every time
  for (int k = 0; k < 1000; ++k) green.insert(green.end(), {0.0, 0.99, 0.0, 0.99});
  f.Rnd.force(green);
  userClick(f, f.RainB[0]);
  EXPECT_EQ(f.Rnd.forcedPending(), 0u);
  EXPECT_TRUE(h.checkNow()) << h.report();
}

}  // namespace
}  // namespace quorvel::harness
