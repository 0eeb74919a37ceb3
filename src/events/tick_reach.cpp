// What a timer's coming tick may change on show, so that a window looks over only those
// controls. Only the ticks that run many times a second are bounded; any other tick may run
// the rules at large (a roll, a kick, a restart) and may change anything.
#include "events/events.h"
#include "match/codes.h"
#include "match/match.h"
#include "match/pitch.h"

namespace quorvel {

bool tickReach(MatchForm& f, const Timer& t, const std::function<void(Control&)>& visit) {
  if (&t == &f.Timi) return true;  // the start-up count changes nothing on show
  if (&t == &f.TimBan) {
    // The banners slide up to where they rest, and stay: this timer runs all match long.
    for (int i = 0; i < 2; ++i)
      if (f.Banner[i].Top < kBannerRestTop[i] ||
          (f.Chq.Value == 1 && f.Banner[i].Top != kBannerRestTop[i]))
        visit(f.Banner[i]);
    return true;
  }
  if (&t == &f.TimB) {
    if (f.KickFlag == -1) {  // the idle ball dribbles at its owner's feet
      visit(f.Ball);
      // ... who is put back on his square, where he nearly always stands already.
      const int p = roundIndex(f.BallOwner);
      if (f.Player[p].Left != playerLeft(f.PlayerCol[p]) ||
          f.Player[p].Top != playerTop(f.PlayerRow[p]))
        visit(f.Player[p]);
      return true;
    }
    if (f.KickTicks - 1 < 1) return false;  // the kick ends: the ball changes hands
    visit(f.Ball);
    visit(f.Player[f.Receiver]);
    if (f.ContestWin != kNoContest) {  // a 50/50 contest's names and scores slide
      for (int side = 1; side <= 2; ++side) visit(f.Team[side]), visit(f.Goals[side]);
      visit(f.Ch50);
    }
    return true;
  }
  if (&t == &f.TimPlace) {
    // Against the computer the walk may change its formation, which repaints the panels.
    if (playLeftVsAI(f)) return false;
    for (int i = 1; i <= 22; ++i) visit(f.Player[i]);
    visit(f.Ball);
    visit(f.TXstart);
    return true;
  }
  return false;
}

}  // namespace quorvel
