// The ball timer: the ball jiggles at its owner's feet, or flies a kick in 60 steps while the
// receiver runs to meet it, and on arrival hands the ball over or starts the goal.
#include <string>

#include "ai/ai.h"
#include "match/codes.h"
#include "match/match.h"
#include "match/match_form.h"
#include "match/pitch.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

// 5, 10 or 15 twips a tick.
int dribbleSpeed(MatchForm& f) {
  return randomIn(f.Rnd, 1, 3) * 5;
}

void idleTick(MatchForm& f) {
  const int p = roundIndex(f.BallOwner);
  Picture& owner = f.Player[p];
  Picture& ball = f.Ball;
  // Turn back, at a new speed, whenever the ball's corner leaves the owner's box.
  if (ball.Top < owner.Top) f.DribbleDy = static_cast<Integer>(dribbleSpeed(f));
  if (owner.Top + 570 < ball.Top) f.DribbleDy = static_cast<Integer>(-dribbleSpeed(f));
  if (ball.Left < owner.Left) f.DribbleDx = static_cast<Integer>(dribbleSpeed(f));
  if (owner.Left + 540 < ball.Left) f.DribbleDx = static_cast<Integer>(-dribbleSpeed(f));
  ball.Top += f.DribbleDy;
  ball.Left += f.DribbleDx;
  owner.Left = playerLeft(f.PlayerCol[p]);
  owner.Top = playerTop(f.PlayerRow[p]);
}

// After a 50/50 contest the two names and the two scores slide towards each other and back,
// and the 50/50 box is highlighted until the last 16 steps.
void contestAnimation(MatchForm& f) {
  int step = 0;
  if (f.KickTicks > 38) step = 15;
  if (f.KickTicks > 16 && f.KickTicks < 38) step = -15;
  f.Team[1].Left += step;
  f.Team[2].Left -= step;
  f.Goals[1].Left += step;
  f.Goals[2].Left -= step;
  f.Ch50.ForeColor = f.KickTicks > 16 ? f.TXgame[0].ForeColor : f.GreyGreen.ForeColor;
}

// A whole number as the game writes a percentage: one leading character for the sign.
std::string signedText(int n) {
  return (n < 0 ? "-" : " ") + std::to_string(n < 0 ? -n : n);
}

void updatePossession(MatchForm& f) {
  const double k1 = f.KickCount[1], k2 = f.KickCount[2];
  const int p1 = static_cast<int>(intPart(k1 * 100 / (k2 + k1)));
  const int p2 = static_cast<int>(intPart(k2 * 100 / (k1 + k2)));
  f.Poses[1].Text = signedText(p1) + "%";
  f.Poses[2].Text = signedText(p2) + "%";
}

void completeKick(MatchForm& f) {
  const int kicker = roundIndex(f.TeamTurn);
  f.KickCount[kicker] += 1;
  updatePossession(f);

  if (f.GoalFlag > -1) {
    f.GoalSide = static_cast<Integer>(f.GoalFlag > 4 ? 2 : 1);
    f.TimSc.setEnabled(true);
    f.Lablurb.Visible = false;
    f.KickFlag = -1;
    f.TimB.setEnabled(false);
    TikTok(f);
    return;
  }

  f.KickFlag = -1;
  f.BallOwner = f.Receiver;
  const int owner = f.Receiver;
  f.PlayerCol[owner] = f.TargetCol;
  f.PlayerRow[owner] = f.TargetRow;
  f.BallCol = static_cast<Integer>(roundEven(f.TargetCol));
  f.BallRow = static_cast<Integer>(roundEven(f.TargetRow));
  f.DiceReady = kDiceReady;
  f.Cdice.BackColor = RGB(255, 255, 255);
  setFocus(f, f.Cdice);
  if (f.BallOwner > 11) {
    f.TeamTurn = kRightSide;
    if (playLeftVsAI(f)) startComputerTurn(f);
  }
  if (f.BallOwner < 12) f.TeamTurn = kLeftSide;
  Rainbow(f);
  TikTok(f);
  // The ball timer stays on: its next tick dribbles at the new owner's feet.
}

void flightTick(MatchForm& f) {
  if (f.GameOn == kNoMatchYet) return;
  f.Ball.Top += f.BallStepY;
  f.Ball.Left += f.BallStepX;
  // A substitute walking on holds the count and the receiver; the ball keeps flying.
  if (f.TimSub.Enabled()) return;
  if (f.GoalFlag == -1) {
    f.Player[f.Receiver].Top -= f.RunStepY;
    f.Player[f.Receiver].Left -= f.RunStepX;
  }
  f.KickTicks -= 1;
  if (f.ContestWin != kNoContest) contestAnimation(f);
  if (f.KickTicks < 1) completeKick(f);
}

}  // namespace

void TimB_Timer(MatchForm& f) {
  if (f.KickFlag == -1)
    idleTick(f);
  else
    flightTick(f);
}

}  // namespace quorvel
