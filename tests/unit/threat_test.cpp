// Threat counts: how many outfield players stand where they endanger the other side's goal.
#include <gtest/gtest.h>

#include <random>

#include "ai/ai.h"
#include "support.h"
#include "turn_support.h"

namespace quorvel {
namespace {

using test::putPlayer;

// Everybody on the two centre columns, where no count looks: the left side's players on
// column 8, the right side's on column 9.
void parkAll(MatchForm& f) {
  for (int i = 0; i <= 22; ++i) putPlayer(f, i, i <= 11 ? 8 : 9, 1 + i % 8);
}

// Threat's funnel in front of the right-hand goal, written out square by square.
bool inFunnel(int col, int row) {
  switch (row) {
    case 4:
    case 5:
      return col >= 11;
    case 3:
    case 6:
      return col == 15 || col == 16;
    case 2:
    case 7:
      return col == 14 || col == 15;
    default:
      return col == 13 || col == 14;
  }
}

TEST(Threat, CountsTheFunnelSquareBySquare) {
  auto f = testing::loadedForm();
  for (int row = 1; row <= 8; ++row)
    for (int col = 1; col <= 16; ++col) {
      parkAll(*f);
      putPlayer(*f, 5, col, row);
      putPlayer(*f, 16, 17 - col, row);  // his mirror image on the other side
      EXPECT_EQ(Threat(*f), inFunnel(col, row) ? 1 : 0) << col << "," << row;
      EXPECT_EQ(ThreatAI(*f), inFunnel(col, row) ? 1 : 0) << 17 - col << "," << row;
      EXPECT_EQ(Terror(*f), col > 10 ? 1 : 0) << col;
      EXPECT_EQ(TerrorAI(*f), col > 10 ? 1 : 0) << 17 - col;
    }
}

TEST(Threat, NeverCountsKeepersOrTheOtherSide) {
  auto f = testing::loadedForm();
  parkAll(*f);
  putPlayer(*f, 1, 12, 4);   // left keeper deep in the funnel
  putPlayer(*f, 12, 3, 4);   // right keeper in front of the left-hand goal
  putPlayer(*f, 0, 12, 5);   // the substitute's piece
  putPlayer(*f, 15, 12, 4);  // a right player where Threat looks
  putPlayer(*f, 3, 3, 5);    // a left player where ThreatAI looks
  EXPECT_EQ(Threat(*f), 0);
  EXPECT_EQ(Terror(*f), 0);
  EXPECT_EQ(ThreatAI(*f), 0);
  EXPECT_EQ(TerrorAI(*f), 0);
}

TEST(Threat, WholeSidesAreExactMirrors) {
  auto f = testing::loadedForm();
  std::mt19937 gen(7);
  std::uniform_int_distribution<int> colOf(1, 16), rowOf(1, 8);
  for (int round = 0; round < 200; ++round) {
    for (int i = 1; i <= 11; ++i) {
      const int col = colOf(gen), row = rowOf(gen);
      putPlayer(*f, i, col, row);
      putPlayer(*f, i + 11, 17 - col, row);
    }
    EXPECT_EQ(Threat(*f), ThreatAI(*f));
    EXPECT_EQ(Terror(*f), TerrorAI(*f));
  }
}

TEST(Threat, SetUpsCountEveryOutfieldPlayer) {
  auto f = testing::loadedForm();
  parkAll(*f);
  for (int i = 2; i <= 11; ++i) putPlayer(*f, i, 11 + i % 2, 4 + i % 2);
  for (int i = 13; i <= 22; ++i) putPlayer(*f, i, 6, i % 8 + 1);
  EXPECT_EQ(Threat(*f), 10);
  EXPECT_EQ(Terror(*f), 10);
  EXPECT_EQ(TerrorAI(*f), 10);
  EXPECT_EQ(ThreatAI(*f), 2) << "column 6 is in front of the goal only in rows 4 and 5";
}

}  // namespace
}  // namespace quorvel
