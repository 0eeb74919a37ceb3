// A flag is activated: the kick is settled at once (target square, receiver, 50/50 contest)
// and the ball timer is left to fly it there.
#include <array>
#include <cmath>

#include "ai/ai.h"
#include "match/codes.h"
#include "match/match.h"
#include "match/match_form.h"
#include "match/pitch.h"

namespace quorvel {

void flagTarget(const MatchForm& f, int d, double& col, double& row) {
  col = f.BallCol + kColSign[d] * f.FlagDx[d];
  row = f.BallRow + kRowSign[d] * f.FlagDy[d];
}

namespace {

bool rankMode(const MatchForm& f) {
  return f.Ch50.Value == 1;
}

// Roll one contest die per side, again while they agree, and show both faces.
void diceContest(MatchForm& f, const std::array<int, 3>& best) {
  std::array<int, 3> die{};
  do {
    die[1] = randomIn(f.Rnd, 1, 6);
    die[2] = randomIn(f.Rnd, 1, 6);
  } while (die[1] == die[2]);
  f.CDcontest[1].Image = f.Di[die[1]].Image;
  f.CDcontest[2].Image = f.Di[die[2]].Image;
  const int winner = die[1] > die[2] ? 1 : 2;
  f.Receiver = static_cast<Integer>(best[winner]);
  f.ContestWin = winner == 1 ? kLeftWonContest : kRightWonContest;
}

}  // namespace

void CDdest_Click(MatchForm& f, int index) {
  // The right side plays from the keys in "Mouse vs Keys" and is the computer in "Play Left
  // vs AI"; its flags refuse any other origin.
  if (mouseVsKeys(f) && f.TeamTurn == kRightSide && f.ClickFrom != kFromKeypad) return;
  if (playLeftVsAI(f) && f.TeamTurn == kRightSide && f.ClickFrom != kFromComputer) return;

  // The ball timer must not see a half-prepared kick.
  f.TimB.setEnabled(false);
  f.KickTicks = 60;
  f.KickFlag = static_cast<Integer>(index);
  f.BallStepY = (f.CDdest[index].Top - f.Ball.Top) / f.KickTicks;
  f.BallStepX = (f.CDdest[index].Left - f.Ball.Left) / f.KickTicks;

  for (int d = 0; d < 8; ++d) f.CDdest[d].Visible = false;
  if (f.FlagGoal[index] == 1) f.GoalFlag = static_cast<Integer>(index);
  bool otherShot = false;
  for (int d = 0; d < 8; ++d) otherShot = otherShot || (d != index && f.FlagGoal[d] == 1);
  if (otherShot) f.FlagGoal.fill(-1);

  flagTarget(f, index, f.TargetCol, f.TargetRow);

  // The nearest player gets the ball; the first one met wins a tie. In rank mode a small rank
  // term decides ties: lower place first, then the side not in possession.
  std::array<double, 23> dist{};
  f.ReceiverDist = 20;
  f.Receiver = 0;
  for (int i = 1; i <= 22; ++i) {
    dist[i] = std::sqrt((f.TargetCol - f.PlayerCol[i]) * (f.TargetCol - f.PlayerCol[i]) +
                        (f.TargetRow - f.PlayerRow[i]) * (f.TargetRow - f.PlayerRow[i]));
    double rank = shirtOf(i) / 100.0;
    if (sideOf(i) == roundIndex(f.TeamTurn)) rank += 0.001;
    if (rankMode(f)) dist[i] += rank;
    if (dist[i] < f.ReceiverDist) {
      f.Receiver = static_cast<Integer>(i);
      f.ReceiverDist = dist[i];
    }
  }

  if (!rankMode(f)) {
    std::array<int, 3> best{};
    std::array<double, 3> bestDist{0, 20, 20};
    for (int i = 1; i <= 22; ++i) {
      const int s = sideOf(i);
      if (dist[i] < bestDist[s]) {
        best[s] = i;
        bestDist[s] = dist[i];
      }
    }
    if (bestDist[1] == bestDist[2]) diceContest(f, best);
  }

  f.RunStepY = (f.PlayerRow[f.Receiver] * kSquareTwips - f.TargetRow * kSquareTwips) / f.KickTicks;
  f.RunStepX = (f.PlayerCol[f.Receiver] * kSquareTwips - f.TargetCol * kSquareTwips) / f.KickTicks;

  f.TimB.setEnabled(true);
  f.ClickFrom = kFromMouse;
  stopComputerTurn(f);
  setFocus(f, f.Cdice);
}

void Ch50_Click(MatchForm& f) {
  f.Ch50.Caption = f.Ch50.Value == 0 ? "Dice 50/50 balls" : "Rank 50/50 balls";
}

}  // namespace quorvel
