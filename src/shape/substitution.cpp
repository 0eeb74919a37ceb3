// Substitutions: the "Sub" boxes, the exchange at the top edge of the pitch under TimSub, and
// its hand-over to the re-forming walk (whose completion ends the substitution).
#include "match/codes.h"
#include "match/match.h"
#include "match/match_form.h"
#include "match/pitch.h"
#include "shape/shape.h"

namespace quorvel {

namespace {

constexpr int kExchangeTicks = 300;

bool boxOfOtherSide(const MatchForm& f, int index) {
  return (f.TeamTurn == kLeftSide && (index == 2 || index == 3)) ||
         (f.TeamTurn == kRightSide && (index == 0 || index == 1));
}

}  // namespace

// Boxes 0 and 3 bring on number 12, boxes 1 and 2 number 13.
Single subNumberOfBox(int index) {
  return index == 0 || index == 3 ? 12.0f : 13.0f;
}

bool substitutionUnderWay(const MatchForm& f) {
  return f.SubTicks > 0 || f.TimSub.Enabled();
}

void startSubstitution(MatchForm& f, int box) {
  f.SubNumber = subNumberOfBox(box);
  f.CHsub[box].Visible = false;
  MakeSub(f);
  f.TimSub.setEnabled(true);
}

void CHsub_Click(MatchForm& f, int index) {
  CheckBox& box = f.CHsub[index];
  // A person's click always ticks the box, because it never stays ticked; so a click that
  // arrives with the box clear was raised by our own unticking below, nested inside the
  // person's click. That inner call does nothing: the outer one goes on and does it all once.
  if (box.Value == 0) return;
  setValue(f, box, 0);

  setValue(f, f.Chq, 0);
  setValue(f, f.ChAuto, 1);  // automatic play off: "Wait for player"
  if (f.GameOn == kNoMatchYet || substitutionUnderWay(f)) return;

  f.CDcontest[1].Image = f.Di[7].Image;
  f.CDcontest[2].Image = f.Di[7].Image;

  if (f.TimPlace.Enabled()) return;
  if (f.DiceReady == kDiceRolled) {
    f.TXoner.Visible = true;  // the one refusal the player is told about
    return;
  }
  if (!f.GameEnd.empty()) return;
  if (boxOfOtherSide(f, index)) return;

  startSubstitution(f, index);
}

void MakeSub(MatchForm& f) {
  // Without a side to play (before the first Start) there is nobody to take off.
  if (f.TeamTurn != kLeftSide && f.TeamTurn != kRightSide) return;
  // The ten outfield players of the side, never the one with the ball.
  const int first = f.TeamTurn == kLeftSide ? 2 : 13;
  do {
    f.SubOff = static_cast<Single>(intPart(f.Rnd.next() * 10) + first);
  } while (f.SubOff == f.BallOwner);

  Picture& sub = f.Player[0];
  TextBox& number = f.Tnum[0];
  const bool left = f.SubOff < 12;
  const Colour main = f.RainB[left ? 0 : 3].BackColor;
  const Colour second = f.RainB[left ? 1 : 2].BackColor;
  sub.BackColor = main;
  number.ForeColor = second;
  number.BackColor = main;

  f.PlaceMode = kPlaceAfterSub;  // the re-forming walk keeps the ball at its owner's feet
  number.Text = plainNumber(f.SubNumber);
  sub.Top = kBenchTop;
  sub.Left = kBenchLeft;
  sub.Visible = true;
  // The computer may pick another formation now; the re-forming at the end will use it.
  FormAI(f);
}

void TimSub_Timer(MatchForm& f) {
  f.SubTicks = static_cast<Integer>(f.SubTicks + 1);
  Picture& leaving = f.Player[roundIndex(f.SubOff)];
  Picture& sub = f.Player[0];

  // The exchange lasts a fixed time, whatever the distance: the leaving player heads for the
  // bench point upwards and sideways only and need not reach it.
  if (f.SubTicks < kExchangeTicks) {
    if (leaving.Top > kBenchTop) leaving.Top -= kStepTwips;
    if (leaving.Left > kBenchLeft) leaving.Left -= kStepTwips;
    if (leaving.Left < kBenchLeft) leaving.Left += kStepTwips;
    sub.Top += kStepTwips;
    return;
  }

  // The leaving player's piece becomes the substitute: same index, colours and place in the
  // formation, the new number. SubTicks stays up until the re-forming walk has ended.
  f.TimSub.setEnabled(false);
  leaving.Top = sub.Top;
  leaving.Left = sub.Left;
  sub.Visible = false;
  f.Tnum[roundIndex(f.SubOff)].Text = plainNumber(f.SubNumber);
  FormAI(f);
  SetPlay(f);
}

}  // namespace quorvel
