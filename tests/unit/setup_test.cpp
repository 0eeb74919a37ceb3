// Window load, Start and SetPlay.
#include <gtest/gtest.h>

#include <set>
#include <utility>
#include <vector>

#include "support.h"
#include "ui/ui.h"

namespace quorvel {
namespace {

using test::loadedForm;
using test::startMatch;

// A draw that lands on offset k of a range of n values.
double pick(int k, int n) {
  return (k + 0.5) / n;
}

TEST(Load, TickingTheAutomationBoxRaisesItsClickSoAutomaticPlayIsOff) {
  auto f = loadedForm();
  EXPECT_EQ(f->ChAuto.Value, 1);
  EXPECT_EQ(f->ChAuto.Caption, "Wait for player");
  EXPECT_FALSE(f->TimAuto.Enabled());
  EXPECT_EQ(f->DiceReady, -1);
  EXPECT_EQ(f->Tnum[12].Text, "1");
}

TEST(Load, StartUpCounterWrapsToMinus32760) {
  auto f = loadedForm();
  f->Sched.advance(45);
  EXPECT_EQ(f->TimiCount, 3);
  f->TimiCount = 32760;
  f->Sched.advance(15);
  EXPECT_EQ(f->TimiCount, -32760);
}

// The rest of Start is read off by the start_and_walk scenario.
TEST(Start, ClearsWhatTheLastMatchLeftAndStopsTheStartUpCounter) {
  auto f = loadedForm();
  f->Goals[1].Text = "3";
  f->GameEnd = "ended";
  f->PicGame.Visible = true;
  f->CHsub[1].Visible = false;
  f->ClockMin = 90;
  startMatch(*f, 1);
  EXPECT_EQ(f->Goals[1].Text, "0");
  EXPECT_EQ(f->GameEnd, "");
  EXPECT_FALSE(f->PicGame.Visible);
  EXPECT_TRUE(f->CHsub[1].Visible);
  EXPECT_EQ(f->ClockMin, 0);
  EXPECT_EQ(f->SubMinute[2][1], 100);
  EXPECT_EQ(f->SubMinute[2][6], 60);
  EXPECT_FALSE(f->Timi.Enabled());
}

TEST(Start, KickOffPutsTheBallWithTheForwardOfTheSideToPlay) {
  for (int side : {1, 2}) {
    auto f = loadedForm();
    startMatch(*f, side);
    EXPECT_EQ(f->KickOffSide, side);
    EXPECT_EQ(f->TeamTurn, side);
    EXPECT_EQ(f->BallOwner, side == 1 ? 9 : 20);
    EXPECT_EQ(f->BallCol, side == 1 ? 8 : 9);
    EXPECT_EQ(f->BallRow, side == 1 ? 5 : 4);
    const int forward = side == 1 ? 9 : 20;
    EXPECT_EQ(f->PlayerCol[forward], f->BallCol);
    EXPECT_EQ(f->PlayerRow[forward], f->BallRow);
  }
}

TEST(Start, TheComputerTakesARightSideKickOffAtOnceAndIgnoresALeftOne) {
  auto right = loadedForm();
  select(*right, right->OpMode[2]);
  right->Vai.Value = 750;
  startMatch(*right, 2);
  EXPECT_EQ(right->AIGo, 1);
  EXPECT_TRUE(right->TimAI.Enabled());
  EXPECT_EQ(right->TimAI.Interval(), 750);

  auto left = loadedForm();
  select(*left, left->OpMode[2]);
  startMatch(*left, 1);
  EXPECT_EQ(left->AIGo, 0);
  EXPECT_FALSE(left->TimAI.Enabled());
  EXPECT_EQ(left->TimAI.Interval(), 250);
}

TEST(Start, TheFirstMatchFavoursTheLeftSideTwoToOneAndLaterMatchesNot) {
  int leftFirst = 0, leftSecond = 0;
  const int runs = 3000;
  for (int seed = 1; seed <= runs; ++seed) {
    auto f = loadedForm(static_cast<std::uint64_t>(seed));
    CDgo_Click(*f);
    leftFirst += f->KickOffSide == 1;
    CDgo_Click(*f);
    leftSecond += f->KickOffSide == 1;
  }
  EXPECT_NEAR(leftFirst / double(runs), 2.0 / 3, 0.03);
  EXPECT_NEAR(leftSecond / double(runs), 0.5, 0.03);
}

TEST(Start, TheMatchCountWrapsAfter9999AndTheNextMatchCountsAsAFirst) {
  auto f = loadedForm();
  f->GameCount = 9999;
  f->Rnd.force({0.9, 0.9});  // 2, then the first-match draw 3 -> left
  CDgo_Click(*f);
  EXPECT_EQ(f->GameCount, 1);
  EXPECT_EQ(f->KickOffSide, 1);
  EXPECT_EQ(f->Rnd.forcedPending(), 0u);
  f->Rnd.force({0.9});  // a later match draws once: 2
  CDgo_Click(*f);
  EXPECT_EQ(f->GameCount, 2);
  EXPECT_EQ(f->KickOffSide, 2);
}

// ---- SetPlay ---------------------------------------------------------------------------------

void useFormations(MatchForm& f, int left, int right) {
  for (int k = 0; k < 5; ++k) {
    f.OPForm[k].Value = k == left;
    f.OPForm[10 + k].Value = k == right;
  }
}

std::pair<int, int> square(const MatchForm& f, int i) {
  return {static_cast<int>(f.PlayerCol[i]), static_cast<int>(f.PlayerRow[i])};
}

TEST(SetPlay, EveryFormationAndTurnKeepsTheKickOffRulesOverManySeeds) {
  for (int seed = 1; seed <= 120; ++seed) {
    auto f = loadedForm(static_cast<std::uint64_t>(seed));
    for (int left = 0; left < 5; ++left) {
      for (int right = 0; right < 5; ++right) {
        for (int turn : {1, 2}) {
          useFormations(*f, left, right);
          f->TeamTurn = static_cast<Single>(turn);
          SetPlay(*f);
          SCOPED_TRACE(::testing::Message()
                       << "seed " << seed << " forms " << left << "/" << right << " turn " << turn);
          ASSERT_EQ(square(*f, 1), std::make_pair(1, 4));
          ASSERT_EQ(square(*f, 12), std::make_pair(16, 5));
          const int forward = turn == 1 ? 9 : 20;
          ASSERT_EQ(square(*f, forward), turn == 1 ? std::make_pair(8, 5) : std::make_pair(9, 4));
          std::set<std::pair<int, int>> taken;
          for (int i = 1; i <= 22; ++i) {
            const auto [c, r] = square(*f, i);
            ASSERT_TRUE(c >= 1 && c <= 16 && r >= 1 && r <= 8) << "player " << i;
            ASSERT_TRUE(taken.insert({c, r}).second) << "player " << i << " shares a square";
            if (i != forward) {
              ASSERT_FALSE(isCentreSquare(c, r)) << "player " << i << " in the centre";
            }
          }
        }
      }
    }
  }
}

using Squares = std::vector<std::pair<int, std::pair<int, int>>>;

void expectSquares(const MatchForm& f, const Squares& expected) {
  EXPECT_EQ(f.Rnd.forcedPending(), 0u) << "draws left over";
  for (const auto& [player, sq] : expected) EXPECT_EQ(square(f, player), sq) << "player " << player;
}

TEST(SetPlay, AttackTablesWithEveryDrawAccountedFor) {
  auto f = loadedForm();
  useFormations(*f, 4, 4);
  f->TeamTurn = 1;
  f->Rnd.force({pick(3, 4), pick(5, 6), pick(0, 6), pick(0, 2), pick(1, 6),  // left 5 7 8
                pick(1, 2), pick(4, 6), pick(5, 6),                          // left 10 11
                pick(3, 4), pick(5, 6), pick(1, 6), pick(1, 2), pick(0, 6),  // right 5 7 8
                pick(0, 2), pick(0, 6), pick(4, 6),                          // right 10 11
                pick(0, 6), pick(2, 6)});                                    // right forward
  SetPlay(*f);
  expectSquares(*f, {{2, {4, 6}},
                     {3, {4, 3}},
                     {4, {6, 4}},
                     {5, {9, 7}},
                     {6, {6, 5}},
                     {7, {10, 2}},
                     {8, {8, 3}},
                     {10, {9, 6}},
                     {11, {11, 7}},
                     {13, {13, 3}},
                     {14, {13, 6}},
                     {15, {11, 4}},
                     {16, {7, 7}},
                     {17, {11, 5}},
                     {18, {7, 3}},
                     {19, {8, 2}},
                     {21, {9, 2}},
                     {22, {6, 6}},
                     {20, {12, 4}}});
}

TEST(SetPlay, CupAndNormTablesWithEveryDrawAccountedFor) {
  auto f = loadedForm();
  useFormations(*f, 2, 1);
  f->TeamTurn = 1;
  f->Rnd.force({pick(2, 6), pick(1, 2), pick(1, 2), pick(1, 2), pick(1, 2),  // left 8 10 11
                pick(4, 6),                                                  // right 8
                pick(1, 6), pick(2, 6)});                                    // right forward
  SetPlay(*f);
  expectSquares(*f, {{2, {5, 3}},
                     {3, {5, 6}},
                     {4, {4, 2}},
                     {5, {4, 7}},
                     {6, {6, 4}},
                     {7, {6, 5}},
                     {8, {7, 4}},
                     {10, {11, 3}},
                     {11, {11, 7}},
                     {13, {14, 3}},
                     {14, {14, 6}},
                     {15, {12, 2}},
                     {16, {12, 7}},
                     {17, {10, 3}},
                     {18, {10, 6}},
                     {19, {7, 6}},
                     {21, {6, 2}},
                     {22, {6, 7}},
                     {20, {11, 4}}});
}

TEST(SetPlay, DefendTablesWithEveryDrawAccountedFor) {
  auto f = loadedForm();
  useFormations(*f, 3, 3);
  f->TeamTurn = 1;
  f->Rnd.force({pick(2, 6), pick(1, 6), pick(1, 6), pick(4, 6), pick(5, 6),  // left 4 7 8 10 11
                pick(0, 6), pick(1, 6), pick(4, 6), pick(2, 6), pick(3, 6),  // right 4 7 8 10 11
                pick(3, 6), pick(0, 6)});                                    // right forward
  SetPlay(*f);
  EXPECT_EQ(f->Rnd.forcedPending(), 0u);
  const std::vector<std::pair<int, std::pair<int, int>>> expected = {
      {2, {3, 6}},   {3, {3, 3}},   {4, {5, 2}},   {5, {6, 4}},   {6, {6, 5}},
      {7, {4, 7}},   {8, {10, 3}},  {9, {8, 5}},   {10, {7, 7}},  {11, {8, 2}},
      {13, {14, 3}}, {14, {14, 6}}, {15, {14, 7}}, {16, {11, 5}}, {17, {11, 4}},
      {18, {13, 2}}, {19, {10, 6}}, {20, {9, 2}},  {21, {12, 2}}, {22, {11, 7}}};
  for (const auto& [player, sq] : expected)
    EXPECT_EQ(square(*f, player), sq) << "player " << player;
}

TEST(SetPlay, ClashesMoveTheHigherShirtAndTheCentreIsClearedForTheKickOff) {
  // Left "Norm", right "Cup", right side to play. Right shirt 11 (player 22) is drawn onto left
  // shirt 7's square (7, 6): the higher shirt moves, by chance onto the centre square (8, 5),
  // from which the scan of the kick-off forward clears it: first (7, 4) is refused, then (7, 7).
  auto f = loadedForm();
  useFormations(*f, 1, 2);
  f->TeamTurn = 2;
  f->Rnd.force({pick(0, 6),                // left 8 row 2
                pick(5, 6),                // right 8 row 7
                pick(1, 2), pick(1, 2),    // right 10: col 6, row 3
                pick(0, 2), pick(0, 2),    // right 11: col 7, row 6
                pick(0, 6), pick(3, 6),    // left forward: (5, 5)
                pick(3, 6), pick(1, 4),    // the clash: player 22 to row 5, column 8
                pick(2, 6), pick(0, 4),    // clearing: row 4, column 7: refused
                pick(5, 6), pick(0, 4)});  // row 7, column 7
  SetPlay(*f);
  EXPECT_EQ(f->Rnd.forcedPending(), 0u);
  EXPECT_EQ(square(*f, 7), std::make_pair(7, 6));
  EXPECT_EQ(square(*f, 21), std::make_pair(6, 3));
  EXPECT_EQ(square(*f, 22), std::make_pair(7, 7));
  EXPECT_EQ(square(*f, 9), std::make_pair(5, 5));
  EXPECT_EQ(square(*f, 19), std::make_pair(10, 7));
  EXPECT_EQ(square(*f, 20), std::make_pair(9, 4));
}

TEST(SetPlay, EqualShirtNumbersMoveTheRightSidePlayer) {
  // Left "Norm" shirt 8 and right "Defend" shirt 8 both stand on column 10; both drawn to row 4.
  auto f = loadedForm();
  useFormations(*f, 1, 3);
  f->TeamTurn = 1;
  f->Rnd.force({pick(2, 6),                                                  // left 8: (10, 4)
                pick(0, 6), pick(1, 6), pick(2, 6), pick(2, 6), pick(4, 6),  // right 4 7 8 10 11
                pick(0, 6), pick(5, 6),    // right forward (12, 7)
                pick(4, 6), pick(3, 4)});  // mover: row 6, col 10
  SetPlay(*f);
  EXPECT_EQ(f->Rnd.forcedPending(), 0u);
  EXPECT_EQ(square(*f, 8), std::make_pair(10, 4));
  EXPECT_EQ(square(*f, 19), std::make_pair(10, 6));
}

TEST(SetPlay, TheKickOffForwardNeverMovesInAClash) {
  // Right "Attack" shirt 5 (player 16) drawn onto (9, 4), the right forward's kick-off square.
  auto f = loadedForm();
  useFormations(*f, 1, 4);
  f->TeamTurn = 2;
  f->Rnd.force({pick(0, 6),                // left 8: (10, 2)
                pick(1, 4), pick(2, 6),    // right 5: (9, 4)
                pick(0, 6),                // right 7: (7, 2)
                pick(0, 2), pick(1, 6),    // right 8: (9, 3)
                pick(1, 2), pick(5, 6),    // right 10: (8, 7)
                pick(3, 6),                // right 11: (6, 5)
                pick(1, 6), pick(0, 6),    // left forward: (6, 2)
                pick(4, 6), pick(3, 4)});  // player 16 moves: row 6, col 10
  SetPlay(*f);
  EXPECT_EQ(f->Rnd.forcedPending(), 0u);
  EXPECT_EQ(square(*f, 20), std::make_pair(9, 4));
  EXPECT_EQ(square(*f, 16), std::make_pair(10, 6));
  EXPECT_EQ(square(*f, 9), std::make_pair(6, 2));
}

TEST(SetPlay, VariedRedrawsOverItsOwnSideAndFallsBackWhenARowIsFull) {
  auto f = loadedForm();
  useFormations(*f, 0, 1);
  f->TeamTurn = 2;
  // Player 3 (row 2) still stands on (5, 2): a draw of column 5 hits himself and is redrawn.
  f->PlayerCol[3] = 5;
  f->PlayerRow[3] = 2;
  // Players 4..8 and 10 block row 1 of player 2's candidates 3..8... except that player 2 is
  // handled first, so all six squares of his row are taken: he falls back to a free square of
  // the left half.
  const int blockers[6] = {4, 5, 6, 7, 8, 10};
  for (int k = 0; k < 6; ++k) {
    f->PlayerCol[blockers[k]] = 3 + k;
    f->PlayerRow[blockers[k]] = 1;
  }
  f->Rnd.force({0.0, pick(2, 6), pick(3, 6)});  // fallback pick; player 3: 5 (taken), then 6
  SetPlay(*f);
  const auto [c2, r2] = square(*f, 2);
  EXPECT_TRUE(c2 >= 1 && c2 <= 8);
  EXPECT_EQ(square(*f, 3), std::make_pair(6, 2));
  for (int i = 1; i <= 11; ++i)
    if (i != 2) {
      EXPECT_NE(square(*f, i), std::make_pair(c2, r2));
    }
}

TEST(SetPlay, VariedDrawsCoverTheirRangesAndStayInTheirBands) {
  std::set<int> right13Cols, left11Cols, left11Rows, right22Cols;
  for (int seed = 1; seed <= 200; ++seed) {
    auto f = loadedForm(static_cast<std::uint64_t>(seed));
    useFormations(*f, 0, 0);
    f->TeamTurn = 1;
    f->Rnd.seed(static_cast<std::uint64_t>(seed));
    SetPlay(*f);
    right13Cols.insert(static_cast<int>(f->PlayerCol[13]));
    if (f->PlayerRow[13] == 1) {
      EXPECT_GE(f->PlayerCol[13], 9);
    }
    left11Cols.insert(static_cast<int>(f->PlayerCol[11]));
    left11Rows.insert(static_cast<int>(f->PlayerRow[11]));
    right22Cols.insert(static_cast<int>(f->PlayerCol[22]));
  }
  // Clash moves may add columns 7..10; the drawn ranges must all be reached.
  for (int c = 9; c <= 14; ++c) EXPECT_TRUE(right13Cols.count(c)) << c;
  EXPECT_TRUE(left11Cols.count(9) && left11Cols.count(10));
  for (int r = 2; r <= 7; ++r) EXPECT_TRUE(left11Rows.count(r)) << r;
  EXPECT_TRUE(right22Cols.count(7));
}

TEST(SetPlay, QuickplayPutsPicturesOnTheirSquaresExceptDuringASubstitution) {
  auto f = loadedForm();
  f->Chq.Value = 1;
  f->TeamTurn = 2;
  SetPlay(*f);
  for (int i = 1; i <= 22; ++i) EXPECT_TRUE(test::onSquare(*f, i)) << i;
  EXPECT_TRUE(f->TimPlace.Enabled());

  auto g = loadedForm();
  g->Chq.Value = 1;
  g->SubTicks = 300;
  g->TeamTurn = 1;
  SetPlay(*g);
  EXPECT_EQ(g->Player[5].Top, 9300);  // still in the line-up below the pitch
}

}  // namespace
}  // namespace quorvel
