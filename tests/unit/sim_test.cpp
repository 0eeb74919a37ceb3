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

// The players on `squares` (player i on squares[i - 1]), the ball at `owner`'s feet, `die` rolled.
void setUp(MatchForm& f, const std::vector<std::pair<int, int>>& squares, int owner, int die) {
  for (int i = 1; i <= 22; ++i) test::putPlayer(f, i, squares[i - 1].first, squares[i - 1].second);
  test::giveBall(f, owner, squares[owner - 1].first, squares[owner - 1].second);
  f.Rnd.force({test::face(die)});
  ClickDi(f);
}

TEST(Sim, TheMirroredChoiceIsTheComputersChoiceInTheMirror) {
  std::mt19937 rng(2024);
  auto draw = [&rng](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
  for (int round = 0; round < 300; ++round) {
    auto left = test::matchReady(1);
    auto right = test::matchReady(2);
    const int owner = draw(2, 11), die = draw(1, 6), iq = 1 + round % 6;
    // Distinct random squares; in the mirror, columns c <-> 17 - c and the sides exchanged.
    std::set<std::pair<int, int>> taken;
    std::vector<std::pair<int, int>> squares, mirrored(22);
    while (squares.size() < 22) {
      const std::pair<int, int> sq{draw(1, 16), draw(1, 8)};
      if (taken.insert(sq).second) squares.push_back(sq);
    }
    for (int i = 0; i < 22; ++i)
      mirrored[(i + 11) % 22] = {17 - squares[i].first, squares[i].second};
    setUp(*left, squares, owner, die);
    setUp(*right, mirrored, owner + 11, die);
    left->ClockMin = right->ClockMin = 30 + round % 60;
    left->Goals[1].Text = "2";  // the left side leads: in the mirror the right side does
    left->Goals[2].Text = "1";
    right->GoalDiff = 1;
    for (int d = 0; d < 8; ++d)
      ASSERT_EQ(left->CDdest[d].Visible, right->CDdest[mirrorDirection(d)].Visible);

    const auto cols = left->PlayerCol;
    const Single aiFlag = left->AIFlag;
    left->Rnd.seed(round);
    right->Rnd.seed(round);
    const int mirroredChoice = mirroredFlag(*left, iq);
    EXPECT_EQ(mirroredChoice, mirrorDirection(computerFlag(*right, iq)))
        << "round " << round << ", IQ " << iq;
    // The form is left as it was, apart from the draws made.
    EXPECT_EQ(left->PlayerCol, cols);
    EXPECT_EQ(left->GoalDiff, 0);
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
