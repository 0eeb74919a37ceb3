// The players' walk to the squares SetPlay chose, and the formation buttons.
#include <cmath>

#include "match/codes.h"
#include "match/match.h"
#include "match/pitch.h"
#include "shape/shape.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

// One step towards `target` on one axis; reads the position afresh each test.
void stepToward(double& pos, double target) {
  if (target > pos) pos += kStepTwips;
  if (target < pos) pos -= kStepTwips;
}

void finishWalk(MatchForm& f) {
  f.TimPlace.setEnabled(false);
  f.TimB.setEnabled(true);
  f.TimTeam.setEnabled(true);
}

}  // namespace

void TimPlace_Timer(MatchForm& f) {
  f.TimB.setEnabled(false);

  for (int i = 1; i <= 22; ++i) {
    Picture& p = f.Player[i];
    const double tl = playerLeft(f.PlayerCol[i]);
    const double tt = playerTop(f.PlayerRow[i]);
    stepToward(p.Left, tl);
    stepToward(p.Top, tt);
  }

  Picture& ball = f.Ball;
  ball.Left = std::floor(ball.Left / kStepTwips) * kStepTwips;
  ball.Top = std::floor(ball.Top / kStepTwips) * kStepTwips;

  bool ballStep = false;
  auto nudge = [&ballStep](double& v, double by) {
    v += by;
    ballStep = true;
  };
  if (f.PlaceMode != kPlaceAfterSub) {
    // The ball comes to rest within a step of the kick-off spot.
    if (ball.Left < kKickOffBallLeft - kStepTwips) nudge(ball.Left, kStepTwips);
    if (ball.Left > kKickOffBallLeft + kStepTwips) nudge(ball.Left, -kStepTwips);
    if (ball.Top < kKickOffBallTop - kStepTwips) nudge(ball.Top, kStepTwips);
    if (ball.Top > kKickOffBallTop + kStepTwips) nudge(ball.Top, -kStepTwips);
  } else {
    // The ball trails its owner into the box kNear to kFar twips right of and below its corner.
    constexpr double kNear = 300, kFar = 600;
    const Picture& owner = f.Player[roundIndex(f.BallOwner)];
    if (owner.Left + kNear > ball.Left) nudge(ball.Left, kStepTwips);
    if (owner.Left + kFar < ball.Left) nudge(ball.Left, -kStepTwips);
    if (owner.Top + kNear > ball.Top) nudge(ball.Top, kStepTwips);
    if (owner.Top + kFar < ball.Top) nudge(ball.Top, -kStepTwips);
  }

  f.PlaceTicks = static_cast<Integer>(f.PlaceTicks + 1);
  if (playLeftVsAI(f) && f.PlaceTicks == 150) FormAI(f);

  // A picture off the grain of kStepTwips would never arrive; the time-out ends such a walk.
  if (!ballStep && f.PlaceTicks > 1024) finishWalk(f);

  int arrived = 0;
  for (int i = 1; i <= 22; ++i) {
    if (f.Player[i].Left == playerLeft(f.PlayerCol[i])) ++arrived;
    if (f.Player[i].Top == playerTop(f.PlayerRow[i])) ++arrived;
  }
  if (arrived == 44 && !ballStep) {
    finishWalk(f);
    f.SubTicks = 0;
    f.SubOff = 0;
    const int owner = roundIndex(f.BallOwner);
    f.BallCol = static_cast<Integer>(roundEven(f.PlayerCol[owner]));
    f.BallRow = static_cast<Integer>(roundEven(f.PlayerRow[owner]));
    f.TXstart.Visible = false;
  }
}

void OPForm_Click(MatchForm& f, int index) {
  Rainbow(f);
  if (!f.TimPlace.Enabled()) return;
  const int side = index < 10 ? 1 : 2;
  if (f.FormChanged[side] == 0) SetPlay(f);
  f.FormChanged[side] = static_cast<Single>(side);
}

}  // namespace quorvel
