// The randomised harness: a short seeded run keeps every promise, and each promise it checks
// is really caught when the state breaks it. QUORVEL_HARNESS_STEPS sets the steps per seed
// (quorvel-soak makes the long runs).
#include "harness.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

#include "match/events.h"
#include "match/match.h"
#include "shape/shape.h"
#include "support.h"

namespace quorvel::harness {
namespace {

std::int64_t stepsPerSeed() {
  if (const char* env = std::getenv("QUORVEL_HARNESS_STEPS")) {
    const long long n = std::atoll(env);
    if (n > 0) return n;
  }
  return 5000;
}

TEST(Harness, SeededRunsKeepEveryPromiseAndPlayMatches) {
  Counts total;
  for (std::uint64_t seed = 1; seed <= 4; ++seed) {
    Harness h(seed);
    EXPECT_TRUE(h.run(stepsPerSeed())) << h.report();
    total.rolls += h.counts().rolls;
    total.goals += h.counts().goals;
    total.subs += h.counts().subs;
    total.starts += h.counts().starts;
  }
  // A harness that never gets a match going checks nothing.
  EXPECT_GT(total.starts, 0);
  EXPECT_GT(total.rolls, 100);
  EXPECT_GT(total.goals, 0);
  EXPECT_GT(total.subs, 0);
}

TEST(Harness, TheSameSeedReplaysTheSameRun) {
  Harness a(11), b(11);
  a.run(1500);
  b.run(1500);
  EXPECT_EQ(a.recent(), b.recent());
  EXPECT_EQ(a.counts().ticks, b.counts().ticks);
  EXPECT_EQ(a.counts().rolls, b.counts().rolls);
  EXPECT_EQ(a.form().Sched.now(), b.form().Sched.now());
}

// A harness whose form has a match under way, the players standing still, the left side to
// roll, and every promise kept so far.
class HarnessChecks : public ::testing::Test {
 protected:
  void SetUp() override {
    MatchForm& f = h.form();
    test::startMatch(f, 1);
    ASSERT_TRUE(test::finishWalk(f));
    ASSERT_TRUE(h.checkNow()) << h.report();
  }
  void expectCaught(const std::string& words) {
    EXPECT_FALSE(h.checkNow());
    EXPECT_NE(h.fault().what.find(words), std::string::npos) << h.fault().what;
  }
  Harness h{5};
};

TEST_F(HarnessChecks, TheSideToPlayMustBeTheBallOwners) {
  h.form().TeamTurn = 2;
  expectCaught("side to play");
}

TEST_F(HarnessChecks, ARollMustStartFromTheOwnersSquare) {
  MatchForm& f = h.form();
  f.BallCol = static_cast<Integer>(f.PlayerCol[9] == 16 ? 15 : f.PlayerCol[9] + 1);
  ClickDi(f);
  expectCaught("roll was accepted with the ball on");
}

TEST_F(HarnessChecks, NoRollWhileASubstituteWalksOn) {
  MatchForm& f = h.form();
  f.SubOff = 4;
  f.TimSub.setEnabled(true);
  f.DiceReady = -1;  // as if the die had taken a roll now
  expectCaught("while a substitute walks on");
}

TEST_F(HarnessChecks, SetPlayMustLeaveEverySquareToOnePlayer) {
  MatchForm& f = h.form();
  SetPlay(f);
  f.PlayerCol[5] = f.PlayerCol[6];
  f.PlayerRow[5] = f.PlayerRow[6];
  expectCaught("same square");
}

TEST_F(HarnessChecks, TheClockMustNotGoBackNorPass90) {
  MatchForm& f = h.form();
  f.ClockMin = 30;
  ASSERT_TRUE(h.checkNow());
  f.ClockMin = 29;
  expectCaught("clock went from 30:00 to 29:00");

  Harness late(6);
  test::startMatch(late.form(), 2);
  late.form().ClockMin = 90;
  late.form().ClockSec = 0.15;
  EXPECT_FALSE(late.checkNow());
  EXPECT_NE(late.fault().what.find("90:15"), std::string::npos) << late.fault().what;
}

TEST_F(HarnessChecks, AGoalMustComeFromAnArrivedShot) {
  MatchForm& f = h.form();
  f.Goals[1].Text = "1";
  expectCaught("side 1's score went from 0 to 1 with 0 shot(s)");
}

TEST_F(HarnessChecks, AnArrivedShotCountsOnceForItsSide) {
  MatchForm& f = h.form();
  f.GoalSide = 2;
  f.TimSc.setEnabled(true);
  ASSERT_TRUE(h.checkNow()) << h.report();
  f.Goals[1].Text = "1";  // the shot was the right side's
  expectCaught("side 1's score");
}

TEST_F(HarnessChecks, ASideMakesAtMostTwoSubstitutions) {
  MatchForm& f = h.form();
  for (int n = 1; n <= 3; ++n) {
    f.SubOff = static_cast<Single>(2 + n);
    f.TimSub.setEnabled(true);
    const bool kept = h.checkNow();
    EXPECT_EQ(kept, n <= 2) << "substitution " << n;
    f.TimSub.setEnabled(false);
    if (kept) {
      ASSERT_TRUE(h.checkNow());
    }
  }
  EXPECT_NE(h.fault().what.find("third substitution"), std::string::npos);
}

TEST_F(HarnessChecks, TeamColoursMustStayReadable) {
  MatchForm& f = h.form();
  std::set<std::uint32_t> seen;
  for (int n = 0; n < 600; ++n) {
    Control* draws[] = {&f.RainB[n % 4], &f.CDcontest[1 + n % 2], &f.cdr};
    userClick(f, *draws[n % 3]);
    ASSERT_TRUE(h.checkNow()) << h.report();
    seen.insert(f.RainB[n % 4].BackColor.rgb);
  }
  EXPECT_GT(seen.size(), 40u) << "the draw should offer a real variety";

  const struct {
    int swatch;
    Colour colour;
    const char* words;
  } breaches[] = {
      {1, RGB(252, 84, 84), "side 1's colours"},      // pink numbers on red shirts
      {0, RGB(42, 126, 42), "melts into the grass"},  // reads on white, not on the pitch
      {3, RGB(210, 0, 0), "main colours"},            // two red teams
  };
  for (const auto& b : breaches) {
    Harness fresh(7);
    MatchForm& g = fresh.form();
    g.ColRed[b.swatch] = static_cast<Integer>(b.colour.red());
    g.ColGreen[b.swatch] = static_cast<Integer>(b.colour.green());
    g.ColBlue[b.swatch] = static_cast<Integer>(b.colour.blue());
    EXPECT_FALSE(fresh.checkNow()) << b.words;
    EXPECT_NE(fresh.fault().what.find(b.words), std::string::npos) << fresh.fault().what;
  }
}

TEST_F(HarnessChecks, ATimerThatKeepsFiringIsCaught) {
  MatchForm& f = h.form();
  f.TimB.setInterval(1);  // far faster than any timer of the game
  h.advance(1000);
  EXPECT_TRUE(h.failed());
  EXPECT_NE(h.fault().what.find("timer ticks kept coming"), std::string::npos) << h.fault().what;
}

}  // namespace
}  // namespace quorvel::harness
