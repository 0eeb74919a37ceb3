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

}  // namespace quorvel
