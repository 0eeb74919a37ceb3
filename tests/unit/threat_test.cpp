// Threat counts: how many outfield players stand where they endanger the other side's goal.
#include <gtest/gtest.h>

#include "ai/ai.h"
#include "support.h"
#include "turn_support.h"

namespace quorvel {
namespace {

using test::putPlayer;

// Threat's funnel in front of the right-hand goal, written out row by row.
bool inFunnel(int col, int row) {
  if (row == 4 || row == 5) return col >= 11;
  if (row == 3 || row == 6) return col == 15 || col == 16;
  if (row == 2 || row == 7) return col == 14 || col == 15;
  return col == 13 || col == 14;
}

// Everybody on the centre columns, where no count looks.
void parkAll(MatchForm& f) {
  for (int i = 0; i <= 22; ++i) putPlayer(f, i, i <= 11 ? 8 : 9, 1 + i % 8);
}

TEST(Threat, EachSideIsCountedOnTheMirrorImageOfTheOther) {
  auto f = test::loadedForm();
  for (int row = 1; row <= 8; ++row)
    for (int col = 1; col <= 16; ++col) {
      parkAll(*f);
      putPlayer(*f, 5, col, row);
      putPlayer(*f, 16, 17 - col, row);
      const int expected = inFunnel(col, row) ? 1 : 0;
      EXPECT_EQ(Threat(*f), expected) << col << "," << row;
      EXPECT_EQ(ThreatAI(*f), expected) << 17 - col << "," << row;
      EXPECT_EQ(Terror(*f), col > 10 ? 1 : 0) << col;
      EXPECT_EQ(TerrorAI(*f), col > 10 ? 1 : 0) << 17 - col;
    }
}

TEST(Threat, KeepersTheSubstituteAndTheOtherSideAreNeverCounted) {
  auto f = test::loadedForm();
  parkAll(*f);
  putPlayer(*f, 1, 12, 4);
  putPlayer(*f, 12, 3, 4);
  putPlayer(*f, 0, 12, 5);
  putPlayer(*f, 15, 12, 4);
  putPlayer(*f, 3, 3, 5);
  EXPECT_EQ(Threat(*f) + Terror(*f) + ThreatAI(*f) + TerrorAI(*f), 0);
  for (int i = 2; i <= 11; ++i) putPlayer(*f, i, 11 + i % 2, 4 + i % 2);
  EXPECT_EQ(Threat(*f), 10) << "every outfield player counts once";
}

}  // namespace
}  // namespace quorvel
