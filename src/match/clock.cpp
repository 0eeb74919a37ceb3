// The match clock: every completed kick is a move of 10 or 15 seconds; 45:00 is half time,
// 90:00 the end of the match.
#include <cmath>
#include <string>

#include "match/codes.h"
#include "match/match.h"
#include "match/match_form.h"

namespace quorvel {

namespace {

// Two digits at least, as the clock shows minutes and seconds.
std::string twoDigits(double v) {
  const long n = std::lround(v);
  std::string s = std::to_string(n < 0 ? -n : n);
  if (s.size() < 2) s.insert(0, 2 - s.size(), '0');
  return n < 0 ? "-" + s : s;
}

void fullTime(MatchForm& f) {
  f.PicGame.Visible = true;
  f.GameEnd = "ended";
  f.TXgame[0].Text = "Game";
  f.TXgame[1].Text = "Over";
  f.ChtenFIF.Enabled = true;
  f.CDgo.Enabled = true;
  // The next match draws its names from the other source.
  if (f.OpName[0].Value)
    select(f, f.OpName[1]);
  else
    select(f, f.OpName[0]);
}

void halfTime(MatchForm& f) {
  f.PlaceMode = kPlaceKickOff;
  const bool leftKickedOff = f.KickOffSide == static_cast<Integer>(kLeftSide);
  f.KickOffSide = static_cast<Integer>(leftKickedOff ? kRightSide : kLeftSide);
  restartKickOff(f, f.KickOffSide);
  SetPlay(f);
  f.HalfHold = 1;
  f.TXgame[0].Text = "Half";
  f.TXgame[1].Text = "Time";
  f.PicGame.Visible = true;
}

}  // namespace

void TikTok(MatchForm& f) {
  // Seconds are counted whole and stored as seconds / 100, so that the carry at 60 and the
  // tests for 45:00 and 90:00 are exact and ClockSec reads 0.15, 0.3, ... without drift.
  const int move = f.ChtenFIF.Value == 1 ? 10 : 15;
  int seconds = static_cast<int>(std::lround(f.ClockSec * 100)) + move;
  if (seconds >= 60) {
    seconds -= 60;
    f.ClockMin = f.ClockMin + 1;
  }
  f.ClockSec = seconds / 100.0;
  f.TXtim.Text = twoDigits(f.ClockMin) + ":" + twoDigits(f.ClockSec * 100);

  if (f.ClockMin >= 90) fullTime(f);
  if (f.ClockMin == 45 && f.ClockSec == 0) halfTime(f);
}

}  // namespace quorvel
