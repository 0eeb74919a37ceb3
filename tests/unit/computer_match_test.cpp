// Whole matches against the computer, the person's side played by random flags: every IQ
// plays to full time, and the top IQ beats random play.
#include <gtest/gtest.h>

#include <cstdio>
#include <random>

#include "ai/ai.h"
#include "support.h"

namespace quorvel {
namespace {

struct Result {
  int person = 0, computer = 0;  // goals
  bool fullTime = false;
};

// Rolls and picks a random flag whenever the left side may; as quick as the ticks allow.
void personPlays(MatchForm& f, std::mt19937_64& person) {
  if (f.TeamTurn != 1 || f.TimPlace.Enabled() || f.TimSc.Enabled() || f.KickFlag != -1) return;
  if (f.DiceReady == 1) {
    userClick(f, f.Cdice);
    return;
  }
  int offered[8], n = 0;
  for (int d = 0; d < 8; ++d)
    if (f.CDdest[d].Visible) offered[n++] = d;
  if (n > 0) userClick(f, f.CDdest[offered[std::uniform_int_distribution<int>(0, n - 1)(person)]]);
}

Result playMatch(int iq, std::uint64_t seed) {
  auto form = test::loadedForm(seed);
  MatchForm& f = *form;
  select(f, f.OpMode[2]);
  setScroll(f, f.Hai, iq);
  std::mt19937_64 person(seed * 1000003 + static_cast<std::uint64_t>(iq));
  userClick(f, f.CDgo);
  const Millis limit = f.Sched.now() + 4 * 3600 * 1000;  // far more than a match needs
  while (f.GameEnd.empty() && f.Sched.step(limit)) personPlays(f, person);
  Result r;
  r.fullTime = f.GameEnd == "ended" && f.ClockMin == 90;
  r.person = static_cast<int>(textValue(f.Goals[1].Text));
  r.computer = static_cast<int>(textValue(f.Goals[2].Text));
  return r;
}

struct Tally {
  int won = 0, drawn = 0, lost = 0, scored = 0, conceded = 0, unfinished = 0;
  void add(const Result& r) {
    if (!r.fullTime) ++unfinished;
    won += r.computer > r.person;
    drawn += r.computer == r.person;
    lost += r.computer < r.person;
    scored += r.computer;
    conceded += r.person;
  }
};

Tally series(int iq, int matches, std::uint64_t firstSeed) {
  Tally t;
  for (int m = 0; m < matches; ++m) t.add(playMatch(iq, firstSeed + static_cast<std::uint64_t>(m)));
  return t;
}

TEST(ComputerMatch, EveryIqPlaysToFullTime) {
  for (int iq = 1; iq <= 6; ++iq) {
    const Result r = playMatch(iq, 100 + static_cast<std::uint64_t>(iq));
    EXPECT_TRUE(r.fullTime) << "IQ " << iq;
  }
}

TEST(ComputerMatch, TheTopIqBeatsRandomPlay) {
  const Tally t = series(6, 30, 1);
  EXPECT_EQ(t.unfinished, 0);
  EXPECT_GT(t.won, t.lost) << t.won << " won, " << t.drawn << " drawn, " << t.lost << " lost";
}

// The strength table, for the README: run with --gtest_also_run_disabled_tests.
TEST(ComputerMatch, DISABLED_StrengthByIq) {
  constexpr int kMatches = 100;
  std::printf("IQ  matches  won  drawn  lost  goals for  goals against\n");
  for (int iq = 1; iq <= 6; ++iq) {
    const Tally t = series(iq, kMatches, 1000);
    EXPECT_EQ(t.unfinished, 0) << "IQ " << iq;
    std::printf("%2d  %7d  %3d  %5d  %4d  %9d  %13d\n", iq, kMatches, t.won, t.drawn, t.lost,
                t.scored, t.conceded);
  }
}

}  // namespace
}  // namespace quorvel
