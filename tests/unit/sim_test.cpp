// The simulator: matches reproduce from their seed on any number of threads, and the mirrored
// computer plays exactly the computer's choices seen in a mirror.
#include "sim.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <utility>

#include "ai/ai.h"
#include "events/events.h"
#include "match/match.h"
#include "shape/shape.h"
#include "support.h"

namespace quorvel::sim {
namespace {

TEST(Sim, MatchesReproduceFromTheirSeedOnAnyNumberOfThreads) {
  Settings s;
  s.iq = 3;
  const auto one = playMatches(s, 7, 10, 3, 1);
  const auto three = playMatches(s, 7, 10, 3, 3);
  ASSERT_EQ(three.size(), 3u);
  for (std::size_t k = 0; k < one.size(); ++k) {
    const MatchResult alone = playMatch(s, matchSeed(7, 10 + k));
    for (const MatchResult* r : {&one[k], &three[k]}) {
      EXPECT_EQ(r->seed, alone.seed);
      EXPECT_EQ(r->ticks, alone.ticks);
    }
  }
  EXPECT_NE(matchSeed(7, 0), matchSeed(7, 1));
}

// Puts the players on distinct random squares, gives the ball to `owner` and rolls `die`.
void randomPosition(MatchForm& f, std::mt19937& rng, int owner, int die) {
  std::set<std::pair<int, int>> taken;
  for (int i = 1; i <= 22; ++i) {
    int c, r;
    do {
      c = std::uniform_int_distribution<int>(1, 16)(rng);
      r = std::uniform_int_distribution<int>(1, 8)(rng);
    } while (!taken.insert({c, r}).second);
    test::putPlayer(f, i, c, r);
  }
  test::giveBall(f, owner, static_cast<int>(f.PlayerCol[owner]),
                 static_cast<int>(f.PlayerRow[owner]));
  f.Rnd.force({test::face(die)});
  ClickDi(f);
}

// The same position seen in the mirror: columns c <-> 17 - c, the sides exchanged.
void mirrorPosition(const MatchForm& from, MatchForm& to, int owner, int die) {
  for (int i = 1; i <= 22; ++i) {
    const int j = i <= 11 ? i + 11 : i - 11;
    test::putPlayer(to, j, 17 - from.PlayerCol[i], from.PlayerRow[i]);
  }
  const int mirrorOwner = owner <= 11 ? owner + 11 : owner - 11;
  test::giveBall(to, mirrorOwner, static_cast<int>(to.PlayerCol[mirrorOwner]),
                 static_cast<int>(to.PlayerRow[mirrorOwner]));
  to.Rnd.force({test::face(die)});
  ClickDi(to);
}

TEST(Sim, TheMirroredChoiceIsTheComputersChoiceInTheMirror) {
  std::mt19937 rng(2024);
  for (int round = 0; round < 300; ++round) {
    auto left = test::matchReady(1);
    auto right = test::matchReady(2);
    const int owner = std::uniform_int_distribution<int>(2, 11)(rng);
    const int die = std::uniform_int_distribution<int>(1, 6)(rng);
    const int iq = 1 + round % 6;
    randomPosition(*left, rng, owner, die);
    mirrorPosition(*left, *right, owner, die);
    left->ClockMin = right->ClockMin = 30 + round % 60;
    left->Goals[1].Text = "2";  // the left side leads: in the mirror the right side does
    left->Goals[2].Text = "1";
    right->GoalDiff = 1;
    for (int d = 0; d < 8; ++d)
      ASSERT_EQ(left->CDdest[d].Visible, right->CDdest[mirrorDirection(d)].Visible);

    const auto cols = left->PlayerCol;
    const Single aiFlag = left->AIFlag;
    const Integer goalDiff = left->GoalDiff;
    const auto shown = test::visibleFlags(*left);
    left->Rnd.seed(round);
    right->Rnd.seed(round);
    const int mirrored = mirroredFlag(*left, iq);
    const int computers = computerFlag(*right, iq);
    EXPECT_EQ(mirrored, mirrorDirection(computers)) << "round " << round << ", IQ " << iq;
    // The form is left as it was, apart from the draws made.
    EXPECT_EQ(left->PlayerCol, cols);
    EXPECT_EQ(test::visibleFlags(*left), shown);
    EXPECT_EQ(left->GoalDiff, goalDiff);
    EXPECT_EQ(left->AIFlag, aiFlag);
  }
}

TEST(Sim, IqListsAreReadStrictly) {
  std::vector<int> v;
  EXPECT_TRUE(parseIqList("1-6", v));
  EXPECT_EQ(v, (std::vector<int>{1, 2, 3, 4, 5, 6}));
  EXPECT_TRUE(parseIqList("2,4-5", v));
  EXPECT_EQ(v, (std::vector<int>{2, 4, 5}));
  for (const char* bad : {"", "0", "7", "3-1", "1,", "a", "1-", "2,,3", "1-7"})
    EXPECT_FALSE(parseIqList(bad, v)) << bad;
}

}  // namespace
}  // namespace quorvel::sim
