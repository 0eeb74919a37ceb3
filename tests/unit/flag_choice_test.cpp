// The computer's choice of flag: who gets the ball, scores, bonuses, luck, the miss, the click.
#include <gtest/gtest.h>

#include <vector>

#include "ai/ai.h"
#include "support.h"
#include "turn_support.h"

namespace quorvel {
namespace {

using test::putPlayer;

// Luck draws, one per offered flag, then the five miss draws (none hits with 0.99).
std::vector<double> draws(std::vector<double> luck, std::vector<double> miss = {}) {
  if (miss.empty()) miss.assign(5, 0.99);
  luck.insert(luck.end(), miss.begin(), miss.end());
  return luck;
}
std::vector<double> even(int flags) {
  return draws(std::vector<double>(static_cast<std::size_t>(flags), 0.5));
}

const int kAround[8][2] = {{9, 3}, {10, 3}, {10, 4}, {10, 5}, {9, 5}, {8, 5}, {8, 4}, {8, 3}};

class FlagChoiceTest : public ::testing::Test {
 protected:
  std::unique_ptr<MatchForm> form = test::matchReady(2);
  MatchForm& f = *form;

  // Only the computer's player 20 on the pitch, on (col, row); he rolls `die`.
  void rollAt(int col, int row, int die) {
    test::clearPitch(f);
    test::giveBall(f, 20, col, row);
    f.Rnd.force({test::face(die)});
    ClickDi(f);
  }
  FlagChoice weigh(double iq, const std::vector<double>& forced, double minute = 10,
                   int goalDiff = 0) {
    f.AIIQ = iq;
    f.ClockMin = minute;
    f.GoalDiff = static_cast<Integer>(goalDiff);
    f.Rnd.force(forced);
    return weighFlags(f);
  }
};

TEST_F(FlagChoiceTest, WithItsOwnPlayersAllAroundTheLeftKickAlwaysWinsAtIqSix) {
  rollAt(9, 4, 1);
  const int mates[8] = {13, 14, 15, 16, 17, 18, 19, 21};
  for (int d = 0; d < 8; ++d) putPlayer(f, mates[d], kAround[d][0], kAround[d][1]);
  std::vector<double> luck(8, 0.999);
  luck[6] = 0.0;  // the left kick at its lowest factor, every other at its highest
  const FlagChoice c = weigh(6, draws(luck));
  const double worth[8] = {5000, 3000, 2000, 3000, 5000, 8000 + 6000, 12000 + 6000, 8000};
  for (int d = 0; d < 8; ++d) {
    EXPECT_EQ(c.AimNearest[d], mates[d]) << d;
    EXPECT_EQ(c.AimValue[d], worth[d] * (d == 6 ? 80 : 99) / 100) << d;
  }
  EXPECT_EQ(f.AIFlag, 6);
  EXPECT_EQ(f.ClickFrom, 33);
  EXPECT_EQ(f.Rnd.forcedPending(), 0u);
}

TEST_F(FlagChoiceTest, AShotIntoTheLeftHandGoalWinsUnlessTheLuckOfIqOneOrTwoSinksIt) {
  rollAt(3, 5, 3);  // the kick to the left ends in the goal mouth
  putPlayer(f, 15, 3, 2);
  ASSERT_EQ(test::visibleFlags(f), (std::vector<int>{0, 1, 2, 3, 4, 6}));
  std::vector<double> luck(6, 0.999);
  luck[5] = 0.0;  // the shot's own draw
  for (int iq = 1; iq <= 6; ++iq) {
    weigh(iq, draws(luck));
    EXPECT_EQ(f.AIFlag == 6, iq >= 3) << "IQ " << iq;
  }
}

TEST_F(FlagChoiceTest, TheBonusDependsOnWhoGetsTheBallAndGrowsLateWhenNotWinning) {
  struct Case {
    bool contested;
    double minute;
    int goalDiff;
    double bonus;
  };
  const Case cases[] = {
      {false, 60, -1, 10000 + 4 * 5000},
      {false, 60, 0, 10000 + 3 * 5000},
      {false, 60, 1, 10000},
      {false, 50, -1, 10000},
      {false, 51, -1, 10000 + 4 * 2750},
      {true, 60, -1, 1000 + 2 * 5000},
      {true, 60, 0, 1000 + 1 * 5000},
      {true, 10, 0, 1000},
  };
  for (const Case& k : cases) {
    rollAt(5, 4, 1);  // left onto (4, 4), one square from the owner
    if (k.contested) {
      putPlayer(f, 3, 4, 3);
      putPlayer(f, 15, 4, 5);
    } else {
      putPlayer(f, 15, 4, 4);
    }
    const FlagChoice c = weigh(2, even(8), k.minute, k.goalDiff);
    EXPECT_EQ(c.AimBonus[6], k.bonus) << k.contested << " " << k.minute << " " << k.goalDiff;
    EXPECT_EQ(c.AimTie[6], k.contested ? 1 : 0);
    EXPECT_EQ(c.AimNearest[6], k.contested ? 3 : 15) << "the lower index among equals";
    EXPECT_EQ(c.AimScore[6], k.contested ? 500 : 12000);
  }
  rollAt(5, 4, 1);  // a contest at one square, then a player standing on it
  putPlayer(f, 3, 4, 3);
  putPlayer(f, 15, 4, 5);
  putPlayer(f, 16, 4, 4);
  EXPECT_EQ(weigh(2, even(8)).AimTie[6], 0);
  rollAt(5, 4, 1);
  putPlayer(f, 4, 4, 4);
  const FlagChoice c = weigh(6, even(8), 80, -3);
  EXPECT_EQ(c.AimScore[6], 40);
  EXPECT_EQ(c.AimBonus[6], 0) << "no bonus for a ball the person gets";
}

TEST_F(FlagChoiceTest, TheBonusSquaresLieInFrontOfTheLeftHandGoal) {
  struct Ball {
    int col, row;
    double steps[8];  // bonus per direction, in units of 1000 x IQ
  };
  const Ball balls[] = {{3, 4, {0, 0, 5, 5, 3, 3, 3, 3}},
                        {6, 4, {0, 0, 2, 2, 3, 4, 4, 0}},
                        {2, 7, {3, 0, 5, 4, 0, 0, 0, 3}}};
  for (const Ball& b : balls) {
    rollAt(b.col, b.row, 1);  // only the owner near: every square is the computer's
    const FlagChoice c = weigh(3, even(static_cast<int>(test::visibleFlags(f).size())));
    for (int d : test::visibleFlags(f))
      EXPECT_EQ(c.AimBonus[d], b.steps[d] * 3000) << b.col << "," << b.row << " d" << d;
  }
}

TEST_F(FlagChoiceTest, ScoresAreReplacedBesideTheTargetGoalAndForBackPasses) {
  for (int iq : {3, 4}) {
    rollAt(2, 8, 1);  // up from the bottom touch line, one square inwards
    putPlayer(f, 15, 2, 7);
    EXPECT_EQ(weigh(iq, even(5)).AimScore[0], iq > 3 ? 10000 : 5000);
  }
  rollAt(3, 1, 1);  // down from the top touch line, contested
  putPlayer(f, 6, 2, 2);
  EXPECT_EQ(weigh(1, even(5)).AimScore[4], 800);

  rollAt(10, 4, 2);
  putPlayer(f, 15, 12, 4);  // back into the middle in front of its own goal
  for (int iq = 1; iq <= 6; ++iq) EXPECT_EQ(weigh(iq, even(8)).AimScore[2], 2200 - 150 * iq);
}

TEST_F(FlagChoiceTest, TheLuckFactorNarrowsWithTheIq) {
  rollAt(1, 4, 6);  // only the flag to the right, onto (7, 4)
  putPlayer(f, 15, 7, 4);
  const double cases[][3] = {{6, 0, 80}, {6, 0.999, 99}, {5, 0, 50},     {5, 0.999, 99},
                             {4, 0, 33}, {4, 0.999, 99}, {3, 0, 7},      {3, 0.999, 99},
                             {2, 0, 1},  {2, 0.5, 50},   {1, 0.5, 49.5}, {1, 0, 0}};
  for (const auto& k : cases) {
    const FlagChoice c = weigh(k[0], draws({k[1]}));
    EXPECT_DOUBLE_EQ(c.AimValue[2], (2000 + 2000 * k[0]) * k[2] / 100) << k[0] << " " << k[1];
    EXPECT_EQ(f.AIFlag, 2) << "the only flag, whatever its value";
  }
}

TEST_F(FlagChoiceTest, EqualValuesKeepTheLowerDirection) {
  rollAt(9, 4, 1);
  for (int d = 0; d < 8; ++d) putPlayer(f, 2 + d, kAround[d][0], kAround[d][1]);
  weigh(6, even(8));  // down-left and up-left both score 50, the most
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
  // The miss draws, the current IQ's hitting, its direction right after; then a marker that
  // shows how many draws the choice made.
  auto missAt = [&luck](int iq, int direction) {
    std::vector<double> m(5, 0.99);
    m[5 - iq] = 0.0;
    m.insert(m.begin() + (6 - iq), test::drawFor(direction, 0, 7));
    return draws(luck, m);
  };
  for (int iq = 1; iq <= 5; ++iq) {
    std::vector<double> marked = missAt(iq, 0);
    marked.push_back(0.123);
    const FlagChoice c = weigh(iq, marked);
    EXPECT_EQ(c.best, 5) << "two equal shots: the lower direction";
    EXPECT_EQ(f.AIFlag, 0) << "IQ " << iq;
    EXPECT_EQ(f.Rnd.next(), 0.123);
    weigh(iq, missAt(iq, 6));
    EXPECT_EQ(f.AIFlag, 5) << "a miss onto a flag worth 50000 or more is dropped";
    weigh(iq, missAt(iq, 7));
    EXPECT_EQ(f.AIFlag, 5) << "a miss onto a hidden flag is dropped";
  }
  // Hits on the draws of other IQs count for nothing and draw no direction; IQ 6 never misses.
  EXPECT_EQ(weigh(3, draws(luck, {0.0, 0.0, 0.99, 0.0, 0.0, 0.123})).miss, -1);
  EXPECT_EQ(f.Rnd.next(), 0.123);
  EXPECT_EQ(weigh(6, draws(luck, {0.0, 0.0, 0.0, 0.0, 0.0, 0.123})).miss, -1);
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
  f.Rnd.force(even(8));
  chooseFlag(f);
  EXPECT_EQ(f.CDhm.Caption, "6");
  EXPECT_FALSE(f.TimAI.Enabled());
  EXPECT_EQ(f.KickFlag, -1) << "nothing clicked";
  press(f, f.CDhm);
  EXPECT_EQ(f.KickFlag, 6) << "the shown choice, played by its button";

  rollAt(9, 4, 1);
  putPlayer(f, 19, 8, 4);
  f.Chp.Value = 0;
  f.AIGo = 2;
  f.TimAI.setEnabled(true);
  f.Rnd.force(even(8));
  chooseFlag(f);
  EXPECT_EQ(f.KickFlag, 6) << "accepted as the computer's click";
  EXPECT_EQ(f.Receiver, 19);
  EXPECT_EQ(f.AIGo, 0);
  EXPECT_FALSE(f.TimAI.Enabled());
}

}  // namespace
}  // namespace quorvel
