// The computer's choice of flag: aim squares, who gets the ball, scores, bonuses, luck, the
// miss, and the click.
#include <gtest/gtest.h>

#include <vector>

#include "ai/ai.h"
#include "support.h"
#include "turn_support.h"

namespace quorvel {
namespace {

using test::clearPitch;
using test::putPlayer;

constexpr double kNoMiss = 0.99;  // no miss draw hits with this
const std::vector<double> kNoMisses(5, kNoMiss);

std::vector<double> draws(std::vector<double> luck, const std::vector<double>& miss = kNoMisses) {
  luck.insert(luck.end(), miss.begin(), miss.end());
  return luck;
}

class FlagChoiceTest : public ::testing::Test {
 protected:
  std::unique_ptr<MatchForm> form = testing::matchReady(2);
  MatchForm& f = *form;

  void SetUp() override {
    clearPitch(f);
    f.ClockMin = 10;
    f.GoalDiff = 0;
  }

  // The computer's player `owner` on (col, row) rolls `die`.
  void rollAt(int col, int row, int die, int owner = 20) {
    test::giveBall(f, owner, col, row);
    f.Rnd.force({test::face(die)});
    ClickDi(f);
  }

  FlagChoice weigh(double iq, const std::vector<double>& forced) {
    f.AIIQ = iq;
    f.Rnd.force(forced);
    return weighFlags(f);
  }
};

TEST_F(FlagChoiceTest, TheComputersOwnPlayersAroundTheBallMakeTheLeftKickWin) {
  rollAt(9, 4, 1);
  const int squares[8][2] = {{9, 3}, {10, 3}, {10, 4}, {10, 5}, {9, 5}, {8, 5}, {8, 4}, {8, 3}};
  const int mates[8] = {13, 14, 15, 16, 17, 18, 19, 21};
  for (int d = 0; d < 8; ++d) putPlayer(f, mates[d], squares[d][0], squares[d][1]);

  // Direction 6 at its lowest factor, every other at its highest: 6 still wins.
  std::vector<double> luck(8, 0.999);
  luck[6] = 0.0;
  const FlagChoice c = weigh(6, draws(luck));
  for (int d = 0; d < 8; ++d) {
    EXPECT_EQ(c.AimCol[d], squares[d][0]) << d;
    EXPECT_EQ(c.AimRow[d], squares[d][1]) << d;
    EXPECT_EQ(c.AimNearest[d], mates[d]) << d;
    EXPECT_EQ(c.AimSide[d], 1) << d;
  }
  const double worth[8] = {5000, 3000, 2000, 3000, 5000, 8000 + 6000, 12000 + 6000, 8000};
  for (int d = 0; d < 8; ++d) EXPECT_EQ(c.AimValue[d], worth[d] * (d == 6 ? 80 : 99) / 100) << d;
  EXPECT_EQ(f.AIFlag, 6);
  EXPECT_EQ(f.ClickFrom, 33);
  EXPECT_EQ(f.Rnd.forcedPending(), 0u) << "one luck draw per flag, then five miss draws";
}

TEST_F(FlagChoiceTest, AShotIntoTheLeftHandGoalWinsAtTheTopIqsButNotAlwaysBelow) {
  rollAt(3, 5, 3);  // left along row 5 ends in the goal mouth
  putPlayer(f, 15, 3, 2);
  putPlayer(f, 16, 6, 2);
  putPlayer(f, 17, 6, 5);
  putPlayer(f, 18, 6, 8);
  putPlayer(f, 19, 3, 8);
  ASSERT_EQ(f.FlagGoal[6], 1);
  ASSERT_EQ(test::visibleFlags(f), (std::vector<int>{0, 1, 2, 3, 4, 6}));

  for (int iq : {4, 5, 6}) {
    std::vector<double> luck(6, 0.999);
    luck[5] = 0.0;  // the shot's own draw, at the bottom of the range
    weigh(iq, draws(luck));
    EXPECT_EQ(f.AIFlag, 6) << "IQ " << iq;
  }
  for (int iq : {1, 2}) {
    std::vector<double> luck(6, 0.999);
    luck[5] = 0.0;
    const FlagChoice c = weigh(iq, draws(luck));
    EXPECT_NE(f.AIFlag, 6) << "IQ " << iq;
    EXPECT_GT(c.AimValue[roundIndex(f.AIFlag)], c.AimValue[6]);
  }
}

TEST_F(FlagChoiceTest, AShotIntoItsOwnGoalIsTheLastResort) {
  rollAt(16, 4, 1);  // right is a shot into the right-hand goal, down-right too
  putPlayer(f, 5, 16, 3);
  putPlayer(f, 6, 16, 5);
  putPlayer(f, 7, 15, 3);
  putPlayer(f, 8, 15, 5);
  ASSERT_EQ(test::visibleFlags(f), (std::vector<int>{0, 2, 3, 4, 5, 6, 7}));
  const FlagChoice c = weigh(6, draws(std::vector<double>(7, 0.5)));
  EXPECT_EQ(c.AimValue[2], 1 * 90 / 100.0);
  EXPECT_EQ(c.AimValue[3], 1 * 90 / 100.0);
  EXPECT_EQ(f.AIFlag, 6) << "(15, 4) is contested, worth more than any ball the person gets";
}

TEST_F(FlagChoiceTest, ASquareAsNearToBothSidesIsContestedAndGoesToTheLowerIndex) {
  rollAt(5, 4, 1);
  putPlayer(f, 3, 4, 3);   // one square above (4, 4)
  putPlayer(f, 15, 4, 5);  // one square below it
  putPlayer(f, 4, 5, 3);   // (5, 3): a left player on it, the owner one square away
  putPlayer(f, 18, 7, 4);  // as near to (6, 4) as the owner: the same side, no contest
  const FlagChoice c = weigh(2, draws(std::vector<double>(8, 0.5)));

  EXPECT_EQ(c.AimTie[6], 1);
  EXPECT_EQ(c.AimNearest[6], 3);
  EXPECT_EQ(c.AimSide[6], -1);
  EXPECT_EQ(c.AimScore[6], 500);
  EXPECT_EQ(c.AimBonus[6], 5 * 100 * 2) << "factor 100 for a contested square";

  EXPECT_EQ(c.AimTie[0], 0) << "the left player stands on (5, 3)";
  EXPECT_EQ(c.AimNearest[0], 4);
  EXPECT_EQ(c.AimScore[0], 20);
  EXPECT_EQ(c.AimBonus[0], 0) << "no bonus for a ball the person gets";

  EXPECT_EQ(c.AimTie[2], 0) << "owner and player 18 are both the computer's";
  EXPECT_EQ(c.AimNearest[2], 18);
  EXPECT_EQ(c.AimScore[2], 2000);
}

TEST_F(FlagChoiceTest, TheLatePushRaisesTheBonusWhenTheComputerIsNotWinning) {
  struct Case {
    double minute;
    int goalDiff;
    bool contested;
    double bonus;
  };
  const Case cases[] = {
      {60, -1, false, 10000 + 4 * 5000}, {60, 0, false, 10000 + 3 * 5000}, {60, 1, false, 10000},
      {60, -1, true, 1000 + 2 * 5000},   {60, 0, true, 1000 + 1 * 5000},   {50, -1, false, 10000},
      {51, -1, false, 10000 + 4 * 2750}, {40, -2, false, 10000},
  };
  for (const Case& k : cases) {
    clearPitch(f);
    rollAt(5, 4, 1);
    if (k.contested) {
      putPlayer(f, 3, 4, 3);
      putPlayer(f, 15, 4, 5);
    } else {
      putPlayer(f, 15, 4, 4);
    }
    f.ClockMin = k.minute;
    f.GoalDiff = static_cast<Integer>(k.goalDiff);
    const FlagChoice c = weigh(2, draws(std::vector<double>(8, 0.5)));
    EXPECT_EQ(c.LatePush, k.minute > 40 ? (k.minute - 40) * 250 : 0);
    EXPECT_EQ(c.AimBonus[6], k.bonus) << k.minute << " " << k.goalDiff << " " << k.contested;
  }
}

TEST_F(FlagChoiceTest, ScoresAreReplacedBesideTheGoalAndForBackPasses) {
  // A roll of 1 inwards from the bottom touch line beside the left-hand goal.
  for (int iq : {3, 4}) {
    clearPitch(f);
    rollAt(2, 8, 1);
    putPlayer(f, 15, 2, 7);
    EXPECT_EQ(weigh(iq, draws(std::vector<double>(5, 0.5))).AimScore[0], iq > 3 ? 10000 : 5000);
  }
  clearPitch(f);
  rollAt(3, 1, 1);  // and from the top touch line, contested
  putPlayer(f, 6, 2, 2);
  putPlayer(f, 15, 4, 2);
  EXPECT_EQ(weigh(1, draws(std::vector<double>(5, 0.5))).AimScore[4], 800);

  clearPitch(f);
  rollAt(10, 4, 2);
  putPlayer(f, 15, 12, 4);  // a pass back into the middle before its own goal
  putPlayer(f, 16, 12, 2);  // up-right lands on row 2: no replacement
  for (int iq = 1; iq <= 6; ++iq) {
    const FlagChoice c = weigh(iq, draws(std::vector<double>(8, 0.5)));
    EXPECT_EQ(c.AimScore[2], 2200 - 150 * iq);
    EXPECT_EQ(c.AimScore[1], 3000);
  }
}

TEST_F(FlagChoiceTest, TheLuckFactorNarrowsWithTheIq) {
  rollAt(1, 4, 6);  // only the flag to the right, onto (7, 4)
  putPlayer(f, 15, 7, 4);
  ASSERT_EQ(test::visibleFlags(f), (std::vector<int>{2}));
  struct Case {
    int iq;
    double r, percent;
  };
  const Case cases[] = {{6, 0, 80}, {6, 0.999, 99},    {5, 0, 50},   {5, 0.999, 99},
                        {4, 0, 33}, {4, 0.999, 99},    {3, 0, 7},    {3, 0.999, 99},
                        {2, 0, 1},  {2, 0.999, 99},    {2, 0.5, 50}, {1, 0.5, 49.5},
                        {1, 0, 0},  {1, 0.999, 98.901}};
  for (const Case& k : cases) {
    const FlagChoice c = weigh(k.iq, draws({k.r}));
    const double worth = 2000 + 2 * 1000 * k.iq;
    EXPECT_DOUBLE_EQ(c.AimValue[2], worth * k.percent / 100) << k.iq << " " << k.r;
    EXPECT_EQ(f.AIFlag, 2) << "the only flag is chosen whatever its value";
  }
}

TEST_F(FlagChoiceTest, EqualValuesKeepTheLowerDirection) {
  rollAt(9, 4, 1);
  const int squares[8][2] = {{9, 3}, {10, 3}, {10, 4}, {10, 5}, {9, 5}, {8, 5}, {8, 4}, {8, 3}};
  for (int d = 0; d < 8; ++d) putPlayer(f, 2 + d, squares[d][0], squares[d][1]);  // the person's
  // Down-left and up-left score 50 each, the most of all.
  weigh(6, draws(std::vector<double>(8, 0.5)));
  EXPECT_EQ(f.AIFlag, 5);
  std::vector<double> luck(8, 0.5);
  luck[7] = 0.9;
  weigh(6, draws(luck));
  EXPECT_EQ(f.AIFlag, 7);
}

TEST_F(FlagChoiceTest, TheMissUsesTheDrawOfItsOwnIqAndSparesGoalsAndHiddenFlags) {
  rollAt(1, 4, 1);  // down-left and left are both shots; up-left is off the pitch
  ASSERT_EQ(test::visibleFlags(f), (std::vector<int>{0, 1, 2, 3, 4, 5, 6}));
  const std::vector<double> luck(7, 0.5);
  auto missAt = [](int iq, int direction) {
    std::vector<double> m(5, kNoMiss);
    m[5 - iq] = 0.0;
    m.insert(m.begin() + (5 - iq) + 1, test::drawFor(direction, 0, 7));  // right after the hit
    return m;
  };
  // A marker behind the choice's own draws shows how many it made.
  auto marked = [](std::vector<double> v) {
    v.push_back(0.123);
    return v;
  };
  for (int iq = 1; iq <= 5; ++iq) {
    FlagChoice c = weigh(iq, marked(draws(luck, missAt(iq, 0))));
    EXPECT_EQ(c.best, 5) << "two equal shots: the lower direction";
    EXPECT_EQ(c.miss, 0) << "IQ " << iq;
    EXPECT_EQ(f.AIFlag, 0) << "IQ " << iq;
    EXPECT_EQ(f.Rnd.next(), 0.123) << "seven luck draws, five miss draws, one direction";

    weigh(iq, draws(luck, missAt(iq, 6)));
    EXPECT_EQ(f.AIFlag, 5) << "a miss onto a flag worth 50000 or more is dropped";
    weigh(iq, draws(luck, missAt(iq, 7)));
    EXPECT_EQ(f.AIFlag, 5) << "a miss onto a hidden flag is dropped";
  }
  // A hit on another IQ's draw counts for nothing and draws no direction.
  const FlagChoice c = weigh(3, marked(draws(luck, {0.0, 0.0, kNoMiss, 0.0, 0.0})));
  EXPECT_EQ(c.miss, -1);
  EXPECT_EQ(f.AIFlag, 5);
  EXPECT_EQ(f.Rnd.next(), 0.123);
  // IQ 6 never misses.
  EXPECT_EQ(weigh(6, marked(draws(luck, std::vector<double>(5, 0.0)))).miss, -1);
  EXPECT_EQ(f.Rnd.next(), 0.123);
}

TEST_F(FlagChoiceTest, TheComputerClicksItsChoiceOrWithChpOnlyShowsIt) {
  select(f, f.OpMode[2]);
  rollAt(9, 4, 1);
  putPlayer(f, 19, 8, 4);
  f.AIGo = 2;
  f.TimAI.setEnabled(true);

  f.Chp.Value = 1;
  f.AIIQ = 6;
  f.Rnd.force(draws(std::vector<double>(8, 0.5)));
  chooseFlag(f);
  EXPECT_EQ(f.CDhm.Caption, "6");
  EXPECT_FALSE(f.TimAI.Enabled());
  EXPECT_EQ(f.KickFlag, -1) << "nothing clicked";
  EXPECT_EQ(f.AIGo, 2);
  EXPECT_TRUE(f.CDdest[6].Visible);

  press(f, f.CDhm);  // the person lets the computer's choice go
  EXPECT_EQ(f.KickFlag, 6);
  EXPECT_EQ(f.Receiver, 19);

  clearPitch(f);
  rollAt(9, 4, 1);
  for (int row = 3; row <= 5; ++row) putPlayer(f, row - 1, 8, row);  // the left kicks are lost
  putPlayer(f, 19, 10, 4);
  f.Chp.Value = 0;
  f.AIGo = 2;
  f.TimAI.setEnabled(true);
  f.Rnd.force(draws(std::vector<double>(8, 0.5)));
  chooseFlag(f);
  EXPECT_EQ(f.CDhm.Caption, "1");
  EXPECT_EQ(f.KickFlag, 1) << "accepted as the computer's click";
  EXPECT_EQ(f.Receiver, 19);
  EXPECT_EQ(f.AIGo, 0);
  EXPECT_EQ(f.ClickFrom, 0);
  EXPECT_FALSE(f.TimAI.Enabled());
}

}  // namespace
}  // namespace quorvel
