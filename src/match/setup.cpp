// Window load, the start-up counter, Start and the one placement routine, SetPlay.
#include <string>
#include <vector>

#include "ai/ai.h"
#include "match/codes.h"
#include "match/match.h"
#include "match/match_form.h"
#include "match/pitch.h"
#include "ui/ui.h"

namespace quorvel {

bool playLeftVsAI(const MatchForm& f) {
  return f.OpMode[2].Value;
}
bool mouseVsKeys(const MatchForm& f) {
  return f.OpMode[1].Value;
}

namespace {

void writeShirtNumbers(MatchForm& f) {
  for (int i = 1; i <= 22; ++i) f.Tnum[i].Text = std::to_string(shirtOf(i));
}

}  // namespace

void setKickOff(MatchForm& f, int side) {
  if (side == 1) {
    f.TeamTurn = kLeftSide;
    f.BallOwner = 9;
    f.BallCol = 8;
    f.BallRow = 5;
  } else {
    f.TeamTurn = kRightSide;
    f.BallOwner = 20;
    f.BallCol = 9;
    f.BallRow = 4;
    if (playLeftVsAI(f)) startComputerTurn(f);
  }
}

void restartKickOff(MatchForm& f, int side) {
  // The computer's turn ends with the half or the goal; the left side kicks off by hand.
  if (side == 1 && playLeftVsAI(f)) stopComputerTurn(f);
  setKickOff(f, side);
}

void Form_Load(MatchForm& f) {
  f.TXai.Text = std::to_string(f.Hai.Value);
  f.PicGame.Left = kBoardLeft;
  f.PicGame.Top = kBoardTop;
  // Swatch colours: red, white, cyan, blue; and their levels (component = level x 42).
  const Integer red[4] = {252, 252, 0, 0}, green[4] = {0, 252, 252, 0},
                blue[4] = {0, 252, 252, 252};
  const Integer redStep[4] = {6, 6, 0, 0}, greenStep[4] = {0, 6, 6, 0}, blueStep[4] = {0, 6, 6, 6};
  for (int i = 0; i < 4; ++i) {
    f.ColRed[i] = red[i];
    f.ColGreen[i] = green[i];
    f.ColBlue[i] = blue[i];
    f.RedStep[i] = redStep[i];
    f.GreenStep[i] = greenStep[i];
    f.BlueStep[i] = blueStep[i];
  }
  writeShirtNumbers(f);
  f.DiceReady = kDiceRolled;
  Rainbow(f);
  setValue(f, f.ChAuto, 1);
  f.Ball.Left = kKickOffBallLeft;
  f.Ball.Top = kKickOffBallTop;
  f.Goal[1].Left = kLeftGoalLeft;
  f.Goal[1].Top = kGoalTop;
  f.Goal[0].Left = kRightGoalLeft;
  f.Goal[0].Top = kGoalTop;
}

void Timi_Timer(MatchForm& f) {
  int next = f.TimiCount + 1;
  if (next > 32760) next = -32760;
  f.TimiCount = static_cast<Integer>(next);
}

void mixStartUpCount(MatchForm& f) {
  if (!f.Timi.Enabled()) return;
  f.Timi.setEnabled(false);
  f.Rnd.mix(f.TimiCount);
}

void CDgo_Click(MatchForm& f) {
  if (f.Banner[0].Top < kBannerRestTop[0]) f.TimBan.setEnabled(true);
  f.ChtenFIF.Enabled = false;
  writeShirtNumbers(f);
  f.ClockMin = 0;
  f.ClockSec = 0;
  f.Goals[1].Text = "0";
  f.Goals[2].Text = "0";
  f.GameEnd.clear();
  f.PicGame.Visible = false;
  f.CHsub[1].Visible = true;
  f.CHsub[2].Visible = true;
  f.GameOn = kGameOn;
  for (int iq = 1; iq <= 6; ++iq) {
    f.SubMinute[1][iq] = 30;
    f.SubMinute[2][iq] = iq == 1 ? 100 : 60;
  }
  f.CDgo.Enabled = false;
  f.CDgo.BackColor = f.BackColor;
  f.PlaceMode = kPlaceKickOff;
  f.KickFlag = -1;
  f.CheerTicks = 0;
  // The last goal of the finished match may still be celebrated: it ends with its match, so
  // that it never counts on the new match's board nor restarts the new match's play.
  f.TimSc.setEnabled(false);
  f.Lablurb.Visible = true;
  mixStartUpCount(f);
  f.GameCount = f.GameCount + 1;
  if (f.GameCount > 9999) f.GameCount = 1;
  f.KickOffSide = static_cast<Integer>(randomIn(f.Rnd, 1, 2));
  if (f.GameCount == 1) {
    const int side = randomIn(f.Rnd, 1, 3);
    f.KickOffSide = static_cast<Integer>(side == 3 ? 1 : side);
  }
  setKickOff(f, f.KickOffSide);
  SetPlay(f);
  f.DiceReady = kDiceReady;
  f.Cdice.BackColor = RGB(255, 255, 255);
  f.cdr.Enabled = true;
  setFocus(f, f.cdr);
  f.GoalFlag = -1;
}

// ---- SetPlay ---------------------------------------------------------------------------------

namespace {

void putOn(MatchForm& f, int i, int col, int row) {
  f.PlayerCol[i] = col;
  f.PlayerRow[i] = row;
}

// A square is taken for player i when any player of i's side (i included) stands on it.
bool sideOccupies(const MatchForm& f, int i, int col, int row) {
  const int first = sideOf(i) == 1 ? 1 : 12;
  for (int j = first; j < first + 11; ++j)
    if (f.PlayerCol[j] == col && f.PlayerRow[j] == row) return true;
  return false;
}

// "Varied": redraw until the square is free of the player's own side. When every candidate is
// taken (six team-mates in one row) the draw falls back to a uniform choice among the free
// squares of the player's own half, so it always ends.
void variedDraw(MatchForm& f, int i) {
  struct Range {
    int colLo, colHi, rowLo, rowHi;
    bool colFirst;
  };
  Range r;
  if (i <= 8)
    r = {3, 8, i - 1, i - 1, true};
  else if (i == 10)
    r = {3, 8, 8, 8, true};
  else if (i == 11)
    r = {9, 10, 2, 7, true};
  else if (i <= 19)
    r = {9, 14, i - 12, i - 12, true};
  else if (i == 21)
    r = {9, 14, 8, 8, true};
  else
    r = {7, 8, 2, 7, true};  // player 22

  bool anyFree = false;
  for (int c = r.colLo; c <= r.colHi && !anyFree; ++c)
    for (int w = r.rowLo; w <= r.rowHi && !anyFree; ++w) anyFree = !sideOccupies(f, i, c, w);

  if (!anyFree) {
    std::vector<std::pair<int, int>> free;
    const int c0 = sideOf(i) == 1 ? 1 : 9;
    for (int c = c0; c < c0 + 8; ++c)
      for (int w = 1; w <= 8; ++w)
        if (!sideOccupies(f, i, c, w)) free.emplace_back(c, w);
    const auto& sq =
        free[static_cast<std::size_t>(randomIn(f.Rnd, 0, static_cast<int>(free.size()) - 1))];
    putOn(f, i, sq.first, sq.second);
    return;
  }

  int col, row;
  do {
    const bool right = i >= 12 && i != 22;
    // The right side's row players draw 14 - random 0..5: the same squares, counted from 14.
    col = right ? 14 - randomIn(f.Rnd, 0, 5) : randomIn(f.Rnd, r.colLo, r.colHi);
    row = r.rowLo == r.rowHi ? r.rowLo : randomIn(f.Rnd, r.rowLo, r.rowHi);
  } while (sideOccupies(f, i, col, row));
  putOn(f, i, col, row);
}

// One table entry: a column and a row, each fixed or drawn. Columns are drawn before rows.
struct Spot {
  int col, colSpan, row, rowSpan;  // value = base + random 0..span-1
  bool colDown;                    // column = base - random 0..colSpan-1
};

int drawPart(Random& rnd, int base, int span, bool down) {
  if (span <= 1) return base;
  const int k = randomIn(rnd, 0, span - 1);
  return down ? base - k : base + k;
}

constexpr Spot fixed(int c, int r) {
  return {c, 1, r, 1, false};
}
constexpr Spot colUp(int c, int span, int r) {
  return {c, span, r, 1, false};
}
constexpr Spot colDown(int c, int span, int r) {
  return {c, span, r, 1, true};
}
constexpr Spot rowRand(int c, int r, int span) {
  return {c, 1, r, span, false};
}
constexpr Spot both(int c, int cs, int r, int rs, bool down = false) {
  return {c, cs, r, rs, down};
}

// Shirts 2..8, 10, 11 of the four fixed formations, left and right.
constexpr int kShirts[9] = {2, 3, 4, 5, 6, 7, 8, 10, 11};
const Spot kTables[4][2][9] = {
    // Norm
    {{fixed(3, 3), fixed(3, 6), fixed(5, 2), fixed(5, 7), fixed(7, 3), fixed(7, 6),
      rowRand(10, 2, 6), fixed(11, 2), fixed(11, 7)},
     {fixed(14, 3), fixed(14, 6), fixed(12, 2), fixed(12, 7), fixed(10, 3), fixed(10, 6),
      rowRand(7, 2, 6), fixed(6, 2), fixed(6, 7)}},
    // Cup
    {{fixed(5, 3), fixed(5, 6), fixed(4, 2), fixed(4, 7), fixed(6, 4), fixed(6, 5),
      rowRand(7, 2, 6), both(10, 2, 2, 2), both(10, 2, 6, 2)},
     {fixed(12, 3), fixed(12, 6), fixed(13, 2), fixed(13, 7), fixed(11, 4), fixed(11, 5),
      rowRand(10, 2, 6), both(7, 2, 2, 2, true), both(7, 2, 6, 2, true)}},
    // Defend
    {{fixed(3, 6), fixed(3, 3), colUp(3, 6, 2), fixed(6, 4), fixed(6, 5), colUp(3, 6, 7),
      rowRand(10, 2, 6), colUp(3, 6, 7), colUp(3, 6, 2)},
     {fixed(14, 3), fixed(14, 6), colDown(14, 6, 7), fixed(11, 5), fixed(11, 4), colDown(14, 6, 2),
      rowRand(10, 2, 6), colDown(14, 6, 2), colDown(14, 6, 7)}},
    // Attack
    {{fixed(4, 6), fixed(4, 3), fixed(6, 4), both(6, 4, 2, 6), fixed(6, 5), rowRand(10, 2, 6),
      both(8, 2, 2, 6), both(8, 2, 2, 6), rowRand(11, 2, 6)},
     {fixed(13, 3), fixed(13, 6), fixed(11, 4), both(10, 4, 2, 6, true), fixed(11, 5),
      rowRand(7, 2, 6), both(9, 2, 2, 6, true), both(9, 2, 2, 6, true), rowRand(6, 2, 6)}},
};

void placeFormation(MatchForm& f, int side, int formation) {
  for (int k = 0; k < 9; ++k) {
    const Spot& s = kTables[formation - 1][side - 1][k];
    const int col = drawPart(f.Rnd, s.col, s.colSpan, s.colDown);
    const int row = drawPart(f.Rnd, s.row, s.rowSpan, false);
    putOn(f, side == 1 ? kShirts[k] : kShirts[k] + 11, col, row);
  }
}

bool isForwardToPlay(const MatchForm& f, int i) {
  return (i == 9 && f.TeamTurn == kLeftSide) || (i == 20 && f.TeamTurn == kRightSide);
}

// One scan of the clash rules; returns true when it moved somebody.
bool resolveOneClash(MatchForm& f) {
  for (int i = 1; i <= 22; ++i) {
    for (int j = 1; j <= 22; ++j) {
      if (i == j) continue;
      if (isForwardToPlay(f, i) && isCentreSquare(f.PlayerCol[j], f.PlayerRow[j])) {
        int row, col;
        do {
          row = randomIn(f.Rnd, 2, 7);
          col = randomIn(f.Rnd, 7, 10);
        } while (col == 8 || col == 9 || row == 4 || row == 5);
        putOn(f, j, col, row);
        return true;
      }
      if (f.PlayerCol[i] == f.PlayerCol[j] && f.PlayerRow[i] == f.PlayerRow[j]) {
        int mover = shirtOf(i) > shirtOf(j) ? i : j;
        if (isForwardToPlay(f, j)) mover = i;
        if (isForwardToPlay(f, i)) mover = j;
        const int row = randomIn(f.Rnd, 2, 7);
        const int col = randomIn(f.Rnd, 7, 10);
        putOn(f, mover, col, row);
        return true;
      }
    }
  }
  return false;
}

}  // namespace

int selectedFormation(const MatchForm& f, int side) {
  const int base = side == 1 ? 0 : 10;
  for (int k = 0; k < 5; ++k)
    if (f.OPForm[base + k].Value) return base + k;
  return base;
}

void SetPlay(MatchForm& f) {
  putOn(f, 1, 1, 4);
  putOn(f, 12, 16, 5);

  const bool variedLeft = selectedFormation(f, 1) == 0;
  const bool variedRight = selectedFormation(f, 2) == 10;
  for (int i = 2; i <= 22; ++i) {
    if (i == 9 || i == 12 || i == 20) continue;
    if (i <= 11 ? variedLeft : variedRight) variedDraw(f, i);
  }

  if (!variedLeft) placeFormation(f, 1, selectedFormation(f, 1));
  if (!variedRight) placeFormation(f, 2, selectedFormation(f, 2) - 10);

  if (f.TeamTurn == kLeftSide) {
    putOn(f, 9, 8, 5);
  } else {
    const int col = randomIn(f.Rnd, 5, 10);
    putOn(f, 9, col, randomIn(f.Rnd, 2, 7));
  }
  if (f.TeamTurn == kRightSide) {
    putOn(f, 20, 9, 4);
  } else {
    const int col = 12 - randomIn(f.Rnd, 0, 5);
    putOn(f, 20, col, randomIn(f.Rnd, 2, 7));
  }

  while (resolveOneClash(f)) {
  }

  f.PlaceTicks = 0;
  f.TimPlace.setEnabled(true);

  if (f.SubTicks == 0 && f.Chq.Value == 1) {
    for (int i = 1; i <= 22; ++i) {
      f.Player[i].Left = playerLeft(f.PlayerCol[i]);
      f.Player[i].Top = playerTop(f.PlayerRow[i]);
      f.Player[i].Visible = true;
    }
  }
}

}  // namespace quorvel
