// Match play: set-up and kick-off, the die and the flags, kick resolution, ball travel,
// goals, the clock and the keyboard.
#pragma once

#include "match/match_form.h"

namespace quorvel {

// Set-up and kick-off.
void Form_Load(MatchForm& f);
void Timi_Timer(MatchForm& f);
void CDgo_Click(MatchForm& f);
void SetPlay(MatchForm& f);
// Index of the selected formation button of a side (0..4 for the left, 10..14 for the right).
int selectedFormation(const MatchForm& f, int side);

// The die and the flags.
void Cdice_Click(MatchForm& f);
void Cdice_MouseDown(MatchForm& f);
void ClickDi(MatchForm& f);
void CDhm_Click(MatchForm& f);

// Kick resolution, ball travel, goals, clock.
void CDdest_Click(MatchForm& f, int index);
void Ch50_Click(MatchForm& f);
void TimB_Timer(MatchForm& f);
void TimSc_Timer(MatchForm& f);
void TikTok(MatchForm& f);

// Keyboard: the typed character, whichever control has the focus.
void Form_KeyPress(MatchForm& f, int keyAscii);

// Helpers of our own.
inline int sideOf(int player) {
  return player <= 11 ? 1 : 2;
}
inline int shirtOf(int player) {
  return player <= 11 ? player : player - 11;
}
bool playLeftVsAI(const MatchForm& f);
bool mouseVsKeys(const MatchForm& f);
// Puts the kick-off of `side` in place: owner, ball square, side to play, and the computer's
// turn when the right side kicks off against it.
void setKickOff(MatchForm& f, int side);
// The kick-off after half time or a goal: as setKickOff, and the computer's turn does not
// carry over into the left side's kick-off.
void restartKickOff(MatchForm& f, int side);
// The start-up counter stops at the first Start or "Random Teams", and what it counted is
// mixed into chance.
void mixStartUpCount(MatchForm& f);
// Goals of the right side minus goals of the left side, read from the score boxes.
Integer goalDifference(const MatchForm& f);

// The eight directions of the flags, clockwise from straight up: column and row signs.
inline constexpr int kColSign[8] = {0, 1, 1, 1, 0, -1, -1, -1};
inline constexpr int kRowSign[8] = {-1, -1, 0, 1, 1, 1, 0, -1};
// The square a kick along flag `d` lands on, from the reaches of the last roll.
void flagTarget(const MatchForm& f, int d, double& col, double& row);

// The keypad: the key of flag 0..7 (its layout, up first and then clockwise), and the roll.
inline constexpr int kFlagKeys[8] = {'8', '9', '6', '3', '2', '1', '4', '7'};
inline constexpr int kRollKey = '5';

}  // namespace quorvel
