// The goal celebration: the scorers flash their two colours for eleven ticks, then the goal
// is counted and the side that conceded kicks off.
#include <string>

#include "match/codes.h"
#include "match/match.h"
#include "match/match_form.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

void flashScorers(MatchForm& f) {
  const bool left = f.GoalSide == 1;
  Colour first = f.RainB[left ? 0 : 3].BackColor;
  Colour second = f.RainB[left ? 1 : 2].BackColor;
  if (f.CheerFlip == 0) {
    f.CheerFlip = 1;
  } else {
    f.CheerFlip = 0;
    std::swap(first, second);
  }
  const int from = left ? 1 : 12;
  for (int k = from; k < from + 11; ++k) {
    f.Player[k].BackColor = first;
    f.Tnum[k].BackColor = first;
    f.Tnum[k].ForeColor = second;
  }
}

void restartAfterGoal(MatchForm& f) {
  f.BackColor = f.cdr.BackColor;
  f.CheerTicks = 0;

  const int scorer = f.GoalSide == 1 ? 1 : 2;
  TextBox& score = f.Goals[scorer];
  score.Text = plainNumber(textValue(score.Text) + 1);
  f.GoalDiff = goalDifference(f);

  f.GoalHold = 1;
  f.TimSc.setEnabled(false);
  f.Lablurb.Visible = true;

  // The side that conceded kicks off.
  const int side = scorer == 1 ? 2 : 1;
  restartKickOff(f, side);

  f.GoalFlag = -1;
  f.GoalSide = 0;
  for (int i = 0; i < 8; ++i) {
    f.FlagGoal[i] = -1;
    f.CDdest[i].Visible = false;
  }
  Rainbow(f);
  f.PlaceMode = kPlaceKickOff;
  SetPlay(f);
  f.TimB.setEnabled(true);
  f.TimTeam.setEnabled(true);
  f.DiceReady = kDiceReady;
  f.Cdice.BackColor = RGB(255, 255, 255);
  f.Cdice.Image = f.Di[0].Image;
  setFocus(f, f.Cdice);
}

}  // namespace

Integer goalDifference(const MatchForm& f) {
  return static_cast<Integer>(roundEven(textValue(f.Goals[2].Text) - textValue(f.Goals[1].Text)));
}

void TimSc_Timer(MatchForm& f) {
  f.CheerTicks = static_cast<Integer>(f.CheerTicks + 1);
  if (f.CheerTicks < 12) flashScorers(f);
  // The window shows each flash at once.
  if (f.platform.repaint) f.platform.repaint();
  if (f.CheerTicks >= 12) restartAfterGoal(f);
}

}  // namespace quorvel
