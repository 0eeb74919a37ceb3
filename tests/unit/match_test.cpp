// Whole matches played through the handlers and the scheduler, with flags picked at random.
#include <gtest/gtest.h>

#include <random>

#include "turn_support.h"

namespace quorvel {
namespace {

struct Length {
  int tenSeconds, moves;
};

class WholeMatch : public ::testing::TestWithParam<Length> {};

TEST_P(WholeMatch, EndsAt90MinutesAfterEveryMoveKeptTheTurnConsistent) {
  auto match = newMatchForm(11);
  MatchForm& f = *match;
  setValue(f, f.ChtenFIF, GetParam().tenSeconds);
  press(f, f.CDgo);
  std::mt19937 pick(GetParam().moves);  // which flag a player chooses

  int moves = 0, goals = 0;
  bool halfTimeSeen = false;
  while (f.GameEnd.empty()) {
    ASSERT_TRUE(test::runUntil(f, [&f] { return f.DiceReady == 1 && !f.TimPlace.Enabled(); }));
    halfTimeSeen = halfTimeSeen || f.HalfHold == 1;
    ASSERT_EQ(f.BallCol, f.PlayerCol[roundIndex(f.BallOwner)]) << "move " << moves;
    ASSERT_EQ(f.BallRow, f.PlayerRow[roundIndex(f.BallOwner)]) << "move " << moves;
    press(f, f.Cdice);
    ASSERT_EQ(f.DiceReady, -1);
    const auto flags = test::visibleFlags(f);
    ASSERT_FALSE(flags.empty());
    press(f, f.CDdest[flags[pick() % flags.size()]]);
    ++moves;
    const bool shot = f.GoalFlag != -1;
    ASSERT_TRUE(test::land(f));
    goals += shot;
    ASSERT_EQ(f.TeamTurn, sideOf(roundIndex(f.BallOwner))) << "move " << moves;
    const int p1 = std::stoi(f.Poses[1].Text), p2 = std::stoi(f.Poses[2].Text);
    ASSERT_TRUE(p1 + p2 == 99 || p1 + p2 == 100) << f.Poses[1].Text << f.Poses[2].Text;
  }

  EXPECT_EQ(moves, GetParam().moves);
  EXPECT_TRUE(halfTimeSeen);
  EXPECT_EQ(f.TXtim.Text, "90:00");
  EXPECT_EQ(f.TXgame[1].Text, "Over");
  EXPECT_GT(goals, 0) << "random play scores now and then";

  // The last celebration (if any) ends; then the match stays over.
  ASSERT_TRUE(test::runUntil(f, [&f] { return !f.TimSc.Enabled() && !f.TimPlace.Enabled(); }));
  const Single ready = f.DiceReady;
  press(f, f.Cdice);
  EXPECT_EQ(f.DiceReady, ready);
  EXPECT_EQ(std::stoi(f.Goals[1].Text) + std::stoi(f.Goals[2].Text), goals);
}

INSTANTIATE_TEST_SUITE_P(Lengths, WholeMatch, ::testing::Values(Length{0, 360}, Length{1, 540}),
                         [](const auto& info) {
                           return info.param.tenSeconds ? std::string("TenSecondMoves")
                                                        : std::string("FifteenSecondMoves");
                         });

}  // namespace
}  // namespace quorvel
