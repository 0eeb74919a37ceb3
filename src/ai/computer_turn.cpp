// The computer's turn: each tick of its timer does at most one thing. It waits while anything
// walks, may bring on a substitute before its roll, rolls, and on a later tick chooses and
// clicks a flag.
#include <string>

#include "ai/ai.h"
#include "match/codes.h"
#include "match/match.h"
#include "shape/shape.h"

namespace quorvel {

namespace {

// Box 2 brings on number 13, box 3 number 12.
constexpr int kFirstBox = 2;
constexpr int kSecondBox = 3;

bool boxOpen(const MatchForm& f, int box) {
  return f.CHsub[box].Visible;
}

// Whether the clock has reached the IQ's first (element 1) or second (element 2) minute.
bool minuteReached(const MatchForm& f, int element, int iq) {
  return iq >= 1 && iq <= 6 && f.ClockMin >= f.SubMinute[element][iq];
}

// The IQ as a whole number when it is one; rules for IQ n apply only at exactly n.
int wholeIq(double iq) {
  return iq == static_cast<int>(iq) ? static_cast<int>(iq) : 0;
}

// Before the counts: the lower IQs substitute by the clock alone.
int earlyRule(const MatchForm& f, int iq) {
  if (iq != 1 && iq != 2) return -1;
  if (boxOpen(f, kFirstBox) && minuteReached(f, 1, iq)) return kFirstBox;
  if (iq == 2 && boxOpen(f, kSecondBox) && minuteReached(f, 2, iq)) return kSecondBox;
  return -1;
}

// After the counts: the higher IQs read the pitch and the score.
int lateRule(const MatchForm& f, int iq) {
  const bool first = boxOpen(f, kFirstBox) && minuteReached(f, 1, iq);
  const bool second = boxOpen(f, kSecondBox) && minuteReached(f, 2, iq);
  const bool notWinning = f.GoalDiff < 1;
  switch (iq) {
    case 3:
      if (first && f.TerrorDiff > 1) return kFirstBox;
      if (second && notWinning && f.TerrorDiff > 2) return kSecondBox;
      break;
    case 4:
      if (first && f.TerrorDiff > 0) return kFirstBox;
      if (second && notWinning && f.ThreatDiff > 0) return kSecondBox;
      break;
    case 5:
      if (first && notWinning && f.ThreatCount > 0) return kFirstBox;
      if (second && f.ThreatDiff > 1) return kSecondBox;
      break;
    case 6:
      if (first && f.ThreatDiff > 0) return kFirstBox;
      if (second && notWinning && f.ThreatCount > 0) return kSecondBox;
      if (boxOpen(f, kSecondBox) && f.ClockMin > 65 && f.ClockMin < 75 && f.GoalDiff < 0)
        return kSecondBox;
      if (boxOpen(f, kFirstBox) && f.ClockMin > 80 && f.GoalDiff <= 0) return kFirstBox;
      break;
  }
  return -1;
}

bool between(double v, double lo, double hi) {
  return v >= lo && v <= hi;
}

}  // namespace

void startComputerTurn(MatchForm& f) {
  f.AIGo = 1;
  f.TimAI.setInterval(f.Vai.Value);
  f.TimAI.setEnabled(true);
}

void stopComputerTurn(MatchForm& f) {
  f.TimAI.setEnabled(false);
  f.AIGo = 0;
}

void OpMode_Click(MatchForm& f, int /*index*/) {
  // Another mode: the person takes the turn back, and the computer does nothing more.
  if (!playLeftVsAI(f)) {
    if (f.TimAI.Enabled() || f.AIGo != 0) stopComputerTurn(f);
    return;
  }
  // Against the computer, the right side's turn becomes its own at the step it has reached.
  // A kick in flight and a goal's celebration hand the ball on themselves when they end.
  if (f.GameOn == kNoMatchYet || !f.GameEnd.empty() || f.TeamTurn != kRightSide) return;
  if (f.KickFlag != -1 || f.TimSc.Enabled()) return;
  startComputerTurn(f);
  if (f.DiceReady == kDiceRolled) f.AIGo = 2;  // rolled already: it goes on to choose a flag
}

void TimAI_Timer(MatchForm& f) {
  f.AIIQ = f.Hai.Value;
  if (f.TeamTurn == kLeftSide) return;
  if (f.TimPlace.Enabled() || f.TimSub.Enabled()) return;

  const int iq = wholeIq(f.AIIQ);
  // Substitutions only before the roll, and never around half time or at the very end.
  const bool beforeRoll = f.AIGo == 1;
  if (beforeRoll && f.ClockMin < 89 && !between(f.ClockMin, 35, 50)) {
    if (const int box = earlyRule(f, iq); box >= 0) return startSubstitution(f, box);
  }

  f.TerrorAICount = TerrorAI(f);
  f.TerrorCount = Terror(f);
  f.TerrorDiff = static_cast<Integer>(f.TerrorCount - f.TerrorAICount);
  f.ThreatAICount = ThreatAI(f);
  f.ThreatCount = Threat(f);
  f.ThreatDiff = static_cast<Integer>(f.ThreatCount - f.ThreatAICount);

  if (beforeRoll && f.ClockMin < 89 && !between(f.ClockMin, 37, 50)) {
    if (iq == 3) f.TXq.Text = std::to_string(f.TerrorDiff);
    if (const int box = lateRule(f, iq); box >= 0) return startSubstitution(f, box);
  }

  if (f.AIGo == 1) {
    ClickDi(f);  // a refused roll leaves AIGo at 1 and the next tick tries again
    return;
  }
  // Nothing to choose from (no roll on show): wait rather than click a flag that is not there.
  bool offered = false;
  for (int d = 0; d < 8; ++d) offered = offered || f.CDdest[d].Visible;
  if (offered) chooseFlag(f);
}

}  // namespace quorvel
