// The automation box, automatic play, and the small controls around the computer: its IQ,
// a random IQ, the match length box and "Quickplay".
#include <string>

#include "ai/ai.h"
#include "match/codes.h"
#include "match/match.h"
#include "match/match_form.h"

namespace quorvel {

void ChAuto_Click(MatchForm& f) {
  const bool on = f.ChAuto.Value == 0;  // unticked means automatic play is on
  f.ChAuto.Caption = on ? "Automate option" : "Wait for player";
  f.TimAuto.setEnabled(on);
}

void TimAuto_Timer(MatchForm& f) {
  if (f.ChAuto.Value != 0) return;
  // A kick-off (of the match, the second half or after a goal) is always rolled by hand.
  if ((f.ClockMin == 0 && f.ClockSec == 0) || f.GoalHold == 1 || f.HalfHold == 1) return;

  // ClickDi refuses while anything walks or after this turn's roll, so this rolls as soon as
  // a roll is allowed. After an automatic click, or a 50/50 contest, the next roll is by hand.
  if (f.AutoHold == 0 && f.ContestWin == kNoContest && f.Cdice.Enabled) ClickDi(f);

  if (f.FlagCount == 1 && f.OnlyFlag != kNoOnlyFlag && f.ContestWin == kNoContest &&
      f.AutoHold == 0) {
    const int only = roundIndex(f.OnlyFlag);
    // The count outlives its roll; a flag already played by hand is not played again.
    if (only < 0 || only > 7 || !f.CDdest[only].Visible) return;
    press(f, f.CDdest[only]);
    f.FlagCount = 0;
    f.ChAuto.ForeColor = f.TXgame[0].ForeColor;
    f.OnlyFlag = kNoOnlyFlag;
    f.AutoHold = 1;
  }
}

void Hai_Change(MatchForm& f) {
  const int iq = f.Hai.Value;
  f.TXai.Text = std::to_string(iq);
  // The next names come from nations at even IQs, from clubs at odd ones.
  if (iq == 2 || iq == 4 || iq == 6)
    select(f, f.OpName[1]);
  else
    select(f, f.OpName[0]);
}

void TXai_Click(MatchForm& f) {
  int iq = randomIn(f.Rnd, 1, 6);
  while (iq == f.Hai.Value) iq = randomIn(f.Rnd, 1, 6);
  setScroll(f, f.Hai, iq);
}

void ChtenFIF_Click(MatchForm& f) {
  // A competition match (10-second moves) is played against the smartest computer.
  if (f.ChtenFIF.Value == 1) setScroll(f, f.Hai, 6);
}

void Chq_Click(MatchForm&) {
  // "Quickplay" is only read when the players are placed.
}

}  // namespace quorvel
