// The computer's choice of flag: goals, its own goal, the bonus squares, ties, the miss, Chp.
#include <gtest/gtest.h>

#include <vector>

#include "ai/ai.h"
#include "support.h"

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

class FlagChoiceTest : public test::MatchUnderWay {
 protected:
  // Only the computer's player 20 on the pitch, on (col, row); he rolls `die`.
  void rollAt(int col, int row, int die) {
    test::clearPitch(f);
    test::giveBall(f, 20, col, row);
    f.Rnd.force({test::face(die)});
    ClickDi(f);
  }
  FlagChoice weigh(double iq, const std::vector<double>& forced) {
    f.AIIQ = iq;
    f.Rnd.force(forced);
    return weighFlags(f);
  }
};

TEST_F(FlagChoiceTest, AGoalWinsUnlessLowIqLuckSinksItAndAnOwnGoalIsAvoided) {
  rollAt(3, 5, 3);  // the kick to the left ends in the goal mouth
  putPlayer(f, 15, 3, 2);
  ASSERT_EQ(test::visibleFlags(f), (std::vector<int>{0, 1, 2, 3, 4, 6}));
  std::vector<double> luck(6, 0.999);
  luck[5] = 0.0;  // the shot's own draw
  for (int iq = 1; iq <= 6; ++iq) {
    weigh(iq, draws(luck));
    EXPECT_EQ(f.AIFlag == 6, iq >= 3) << "IQ " << iq;
  }
  rollAt(14, 4, 3);  // to the right into its own goal; the person's players on the other aims
  const int aims[5][2] = {{14, 1}, {14, 7}, {11, 7}, {11, 4}, {11, 1}};
  for (int k = 0; k < 5; ++k) putPlayer(f, 2 + k, aims[k][0], aims[k][1]);
  ASSERT_EQ(test::visibleFlags(f), (std::vector<int>{0, 2, 4, 5, 6, 7}));
  weigh(6, draws(std::vector<double>(6, 0.999)));
  EXPECT_NE(f.AIFlag, 2);
}

TEST_F(FlagChoiceTest, EqualValuesKeepTheLowerDirection) {
  rollAt(9, 4, 1);  // the person's players on all eight squares around
  const int around[8][2] = {{9, 3}, {10, 3}, {10, 4}, {10, 5}, {9, 5}, {8, 5}, {8, 4}, {8, 3}};
  for (int d = 0; d < 8; ++d) putPlayer(f, 2 + d, around[d][0], around[d][1]);
  weigh(6, even(8));  // down-left and up-left both score 50, the most
  EXPECT_EQ(f.AIFlag, 5);
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
    weigh(iq, marked);
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

TEST_F(FlagChoiceTest, WithChpTheChoiceIsShownAndWaitsForItsButton) {
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
}

}  // namespace
}  // namespace quorvel
