// Keyboard play: the digit keys kick in eight directions, 5 rolls, minus substitutes. The
// window hands every typed character here, whichever control has the focus.
#include "match/codes.h"
#include "match/match.h"
#include "match/match_form.h"
#include "shape/shape.h"

namespace quorvel {

namespace {

constexpr int kMinus = '-';

// The side to play's two substitution boxes, in the order the key tries them.
constexpr int kBoxes[3][2] = {{}, {0, 1}, {2, 3}};

void substituteByKey(MatchForm& f) {
  // The first press while automatic play runs only stops it.
  if (f.ChAuto.Value == 0) {
    setValue(f, f.ChAuto, 1);
    return;
  }
  if (f.KickTicks > 0 || f.DiceReady == kDiceRolled) return;
  if (f.TeamTurn != kLeftSide && f.TeamTurn != kRightSide) return;
  for (int box : kBoxes[roundIndex(f.TeamTurn)]) {
    if (f.CHsub[box].Visible) return startSubstitution(f, box);
  }
}

}  // namespace

void Form_KeyPress(MatchForm& f, int keyAscii) {
  if (substitutionUnderWay(f) || f.TimPlace.Enabled() || !f.GameEnd.empty()) return;
  if (mouseVsKeys(f)) {
    if (f.TeamTurn == kLeftSide) return;  // the left side plays with the mouse
    // Once the right side has pressed any key, its flags take the mouse too until the next kick.
    if (f.TeamTurn == kRightSide) f.ClickFrom = kFromKeypad;
  }
  if (playLeftVsAI(f) && f.TeamTurn == kRightSide) return;

  if (keyAscii == kMinus) return substituteByKey(f);
  for (int d = 0; d < 8; ++d)
    if (f.CDdest[d].Visible && keyAscii == kFlagKeys[d]) press(f, f.CDdest[d]);
  if (keyAscii == kRollKey && f.Cdice.Enabled) press(f, f.Cdice);
}

}  // namespace quorvel
