// The team panel timer: once a second it locks names and colours when the match is under way
// and both sides have been named, keeps the team colours painted, and in the game against the
// computer lets it reconsider its formation and keeps its formation buttons out of reach.
#include "match/codes.h"
#include "match/match.h"
#include "shape/shape.h"
#include "ui/ui.h"

namespace quorvel {

void TimTeam_Timer(MatchForm& f) {
  // A goal celebration flashes the scorers' colours; repainting now would cut it short. The
  // restart after the goal switches this timer on again.
  if (f.TimSc.Enabled()) {
    f.TimTeam.setEnabled(false);
    return;
  }
  const bool named = f.Team[1].Text != "Team 1" && f.Team[2].Text != "Team 2";
  f.EditLock = f.ClockMin > 4 && named ? kNamesLocked : kNamesOpen;
  const bool locked = f.EditLock == kNamesLocked;
  for (int s = 1; s <= 2; ++s) {
    f.Team[s].Locked = locked;
    f.CDcontest[s].ToolTipText =
        locked ? "50/50 dice" : "50/50 dice; click for new colours and name of this team";
  }
  for (auto& swatch : f.RainB)
    swatch.ToolTipText =
        locked ? "Team colours are fixed for this match" : "Click to change this team colour";
  Rainbow(f);
  f.Fra2.Enabled = !playLeftVsAI(f);
  FormAI(f);
}

}  // namespace quorvel
