// The die: who may roll in each mode, the roll itself and the flags it offers, and the button
// that plays the computer's shown choice.
#include <array>

#include "match/codes.h"
#include "match/match.h"
#include "match/match_form.h"
#include "match/pitch.h"

namespace quorvel {

void Cdice_Click(MatchForm& f) {
  f.TXoner.Visible = false;
  // In "Mouse vs Keys" a mouse click raises the press first, which rolls for the left side;
  // the click itself (or a key) rolls only for the right side.
  if (mouseVsKeys(f)) {
    if (f.TeamTurn == kRightSide) ClickDi(f);
  } else if (playLeftVsAI(f)) {
    if (f.TeamTurn == kLeftSide) ClickDi(f);  // the computer rolls for itself
  } else {
    ClickDi(f);
  }
  setFocus(f, f.Cdice);
}

void Cdice_MouseDown(MatchForm& f) {
  if (mouseVsKeys(f) && f.TeamTurn == kLeftSide) ClickDi(f);
}

namespace {

bool isUp(int d) {
  return kRowSign[d] < 0;
}
bool isDown(int d) {
  return kRowSign[d] > 0;
}
bool isLeft(int d) {
  return kColSign[d] < 0;
}
bool isRight(int d) {
  return kColSign[d] > 0;
}

// Works out the reach of every direction for a roll of `die`: shots into a goal mouth keep
// their full reach, other kicks that would leave the pitch are shortened and marked.
std::array<bool, 8> measureDirections(MatchForm& f, int die) {
  std::array<bool, 8> cutShort{};
  const int col = f.BallCol, row = f.BallRow;
  for (int d = 0; d < 8; ++d) {
    int dx = die, dy = die;
    if (d == 0 || d == 4) dx = 0;
    if (d == 2 || d == 6) dy = 0;

    const int targetRow = isUp(d) ? row - die : isDown(d) ? row + die : row;
    const bool mouthRow = isMouthRow(targetRow);
    // The kicking side is not asked: an own goal is offered like any other shot.
    if ((isRight(d) && mouthRow && col + die == kRightMouthColumn) ||
        (isLeft(d) && mouthRow && col - die == kLeftMouthColumn))
      f.FlagGoal[d] = 1;

    if (f.FlagGoal[d] != 1) {
      if (isUp(d) && row - dy < 1) {
        dy = row - 1;
        cutShort[d] = true;
      }
      if (isDown(d) && row + dy > kPitchRows) {
        dy = kPitchRows - row;
        cutShort[d] = true;
      }
      if (isLeft(d) && col - dx < 1) {
        dx = col - 1;
        cutShort[d] = true;
      }
      if (isRight(d) && col + dx > kPitchColumns) {
        dx = kPitchColumns - col;
        cutShort[d] = true;
      }
    }
    f.FlagDx[d] = static_cast<Integer>(dx);
    f.FlagDy[d] = static_cast<Integer>(dy);
  }
  return cutShort;
}

// Straight flags are centred in their square; diagonal ones sit kDiagonalFlag twips from the
// owner's picture corner, a little further right and down.
constexpr double kStraightFlag = (kSquareTwips - kFlagTwips) / 2;
constexpr double kDiagonalFlag = 250;

void placeFlags(MatchForm& f) {
  const Picture& owner = f.Player[roundIndex(f.BallOwner)];
  const double L = owner.Left, T = owner.Top;
  const double l = L - kPlayerInset, t = T - kPlayerInset;  // the owner's square's corner
  const double sq = kSquareTwips, in = kStraightFlag, out = kDiagonalFlag;
  const auto& dx = f.FlagDx;
  const auto& dy = f.FlagDy;
  const double left[8] = {l + in, L + dx[1] * sq + out, l + dx[2] * sq + in, L + dx[3] * sq + out,
                          l + in, L - dx[5] * sq + out, l - dx[6] * sq + in, L - dx[7] * sq + out};
  const double top[8] = {t - dy[0] * sq + in, T - dy[1] * sq + out, t + in, T + dy[3] * sq + out,
                         t + dy[4] * sq + in, T + dy[5] * sq + out, t + in, T - dy[7] * sq + out};
  for (int d = 0; d < 8; ++d) {
    f.CDdest[d].Left = left[d];
    f.CDdest[d].Top = top[d];
    f.CDdest[d].Visible = true;
  }
}

}  // namespace

void ClickDi(MatchForm& f) {
  if (f.GameOn == kNoMatchYet) return;
  // While a kick flies the die stays rolled, and an attempt leaves the kick's contest alone:
  // its names and scores slide back only while it lasts, and its landing tells it.
  if (f.KickFlag != -1) return;
  // Any roll attempt clears the last contest, even one refused below.
  f.CDcontest[1].Image = f.Di[7].Image;
  f.CDcontest[2].Image = f.Di[7].Image;
  f.ContestWin = kNoContest;
  // The die waits while players walk to their places and while a substitute walks on.
  if (f.TimPlace.Enabled() || f.TimSub.Enabled()) return;
  if (f.DiceReady == kDiceRolled || !f.GameEnd.empty()) return;

  f.PicGame.Visible = false;
  f.FormChanged[1] = 0;
  f.FormChanged[2] = 0;
  f.GoalHold = 0;
  f.HalfHold = 0;
  f.GoalSide = 0;
  f.GoalFlag = -1;

  f.DiceValue = static_cast<Integer>(randomIn(f.Rnd, 1, 6));
  f.Cdice.Image = f.Di[f.DiceValue].Image;

  for (int d = 0; d < 8; ++d) f.FlagGoal[d] = -1;
  const std::array<bool, 8> cutShort = measureDirections(f, f.DiceValue);

  f.DiceReady = kDiceRolled;
  f.Cdice.BackColor = RGB(0, 0, 0);

  placeFlags(f);
  for (int d = 0; d < 8; ++d)
    if ((f.FlagDx[d] == 0 && f.FlagDy[d] == 0) || cutShort[d]) f.CDdest[d].Visible = false;
  for (int d = 0; d < 8; ++d) {
    if (f.FlagGoal[d] != 1) continue;
    f.CDdest[d].Visible = true;
    // A shot's flag stands just off the end of the pitch, in front of the goal.
    if (isRight(d)) f.CDdest[d].Left = kPitchRight;
    if (isLeft(d)) f.CDdest[d].Left = kGridLeft - kFlagTwips;
  }

  f.OnlyFlag = kNoOnlyFlag;
  f.FlagCount = 0;
  for (int d = 0; d < 8; ++d) {
    if (!f.CDdest[d].Visible) continue;
    f.FlagCount = f.FlagCount + 1;
    f.OnlyFlag = static_cast<Single>(d);
  }
  // A real choice lets automatic play act again; a forced move leaves its hold alone.
  if (f.FlagCount > 1) {
    f.AutoHold = 0;
    f.OnlyFlag = kNoOnlyFlag;
  }
  if (f.AIGo == 1) f.AIGo = 2;
}

void CDhm_Click(MatchForm& f) {
  const int k = roundIndex(f.AIFlag);
  // While the computer is still choosing (AIFlag -1) there is nothing to play.
  if (k < 0 || k > 7) return;
  press(f, f.CDdest[k]);
}

}  // namespace quorvel
