// The match clock: moves of 10 or 15 seconds, half time at 45:00, full time at 90:00.
#include <gtest/gtest.h>

#include <string>

#include "turn_support.h"

namespace quorvel {
namespace {

class Clock : public ::testing::Test {
 protected:
  std::unique_ptr<MatchForm> match = test::matchReady(1);
  MatchForm& f = *match;
};

TEST_F(Clock, FifteenSecondMovesMakeFourAMinute) {
  const char* shown[] = {"00:15", "00:30", "00:45", "01:00", "01:15"};
  const double sec[] = {0.15, 0.3, 0.45, 0, 0.15};
  for (int i = 0; i < 5; ++i) {
    TikTok(f);
    EXPECT_EQ(f.TXtim.Text, shown[i]);
    EXPECT_EQ(f.ClockSec, sec[i]) << "stored exactly as seconds / 100";
  }
  EXPECT_EQ(f.ClockMin, 1);
}

TEST_F(Clock, TenSecondMovesMakeSixAMinute) {
  f.ChtenFIF.Value = 1;
  const char* shown[] = {"00:10", "00:20", "00:30", "00:40", "00:50", "01:00"};
  const double sec[] = {0.1, 0.2, 0.3, 0.4, 0.5, 0};
  for (int i = 0; i < 6; ++i) {
    TikTok(f);
    EXPECT_EQ(f.TXtim.Text, shown[i]);
    EXPECT_EQ(f.ClockSec, sec[i]);
  }
}

TEST(ClockHalfTime, ComesAtExactly45MinutesWithTheOtherSidesKickOff) {
  for (const bool tenSeconds : {false, true}) {
    SCOPED_TRACE(tenSeconds ? "10-second moves" : "15-second moves");
    auto other = test::matchReady(2);
    MatchForm& f = *other;
    f.ChtenFIF.Value = tenSeconds ? 1 : 0;
    test::giveBall(f, 15, 3, 3);  // whoever has the ball
    for (int i = 0; i < (tenSeconds ? 269 : 179); ++i) TikTok(f);
    EXPECT_EQ(f.TXtim.Text, "44:" + std::string(tenSeconds ? "50" : "45"));
    EXPECT_FALSE(f.PicGame.Visible);
    EXPECT_EQ(f.HalfHold, 0);
    TikTok(f);
    EXPECT_EQ(f.TXtim.Text, "45:00");
    EXPECT_TRUE(f.PicGame.Visible);
    EXPECT_EQ(f.TXgame[0].Text, "Half");
    EXPECT_EQ(f.TXgame[1].Text, "Time");
    EXPECT_EQ(f.HalfHold, 1);
    EXPECT_EQ(f.KickOffSide, 1);
    EXPECT_EQ(f.BallOwner, 9);
    EXPECT_EQ(f.TeamTurn, 1);
    EXPECT_EQ(f.BallCol, 8);
    EXPECT_EQ(f.BallRow, 5);
    EXPECT_EQ(f.PlayerCol[9], 8);
    EXPECT_EQ(f.PlaceMode, 34);
    EXPECT_TRUE(f.TimPlace.Enabled());
    EXPECT_TRUE(f.GameEnd.empty());
    f.HalfHold = 0;
    TikTok(f);
    EXPECT_EQ(f.HalfHold, 0) << "the next move is play again";
  }
}

TEST_F(Clock, AgainstTheComputerHalfTimeHandsItTheTurnOrTakesItAway) {
  select(f, f.OpMode[2]);
  f.Vai.Value = 300;
  f.ClockMin = 44;
  f.ClockSec = 0.45;
  TikTok(f);  // the left side kicked off the match: the computer kicks off now
  EXPECT_EQ(f.KickOffSide, 2);
  EXPECT_EQ(f.BallOwner, 20);
  EXPECT_EQ(f.AIGo, 1);
  EXPECT_TRUE(f.TimAI.Enabled());
  EXPECT_EQ(f.TimAI.Interval(), 300);

  f.KickOffSide = 2;  // and the other way round
  f.ClockMin = 44;
  f.ClockSec = 0.45;
  TikTok(f);
  EXPECT_EQ(f.BallOwner, 9);
  EXPECT_EQ(f.AIGo, 0);
  EXPECT_FALSE(f.TimAI.Enabled());
}

TEST_F(Clock, NinetyMinutesEndTheMatch) {
  f.CDgo.Enabled = false;
  f.ChtenFIF.Enabled = false;
  ASSERT_TRUE(f.OpName[1].Value);
  f.ClockMin = 89;
  f.ClockSec = 0.45;
  TikTok(f);
  EXPECT_EQ(f.TXtim.Text, "90:00");
  EXPECT_EQ(f.GameEnd, "ended");
  EXPECT_TRUE(f.PicGame.Visible);
  EXPECT_EQ(f.TXgame[0].Text, "Game");
  EXPECT_EQ(f.TXgame[1].Text, "Over");
  EXPECT_TRUE(f.CDgo.Enabled);
  EXPECT_TRUE(f.ChtenFIF.Enabled);
  EXPECT_TRUE(f.OpName[0].Value) << "the next match takes its names from the other source";
  EXPECT_FALSE(f.OpName[1].Value);

  f.DiceReady = 1;
  test::roll(f, 4);
  EXPECT_EQ(f.DiceReady, 1) << "no roll after full time";
  EXPECT_EQ(f.Rnd.forcedPending(), 1u);
}

}  // namespace
}  // namespace quorvel
