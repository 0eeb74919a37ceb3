// The computer's choice of formation in the game against it: fixed rules by IQ, score and
// minute. Every rule that holds makes its selection in turn and the last one stands; each
// selection that changes the formation raises the button's handler, so during a walk the first
// change of a call is the one that re-plans.
#include "match/match.h"
#include "match/match_form.h"
#include "shape/shape.h"

namespace quorvel {

namespace {

enum Formation { kVaried = 10, kNorm = 11, kCup = 12, kDefend = 13, kAttack = 14 };

void choose(MatchForm& f, int button) {
  select(f, f.OPForm[button]);
}

void chooseRandom(MatchForm& f) {
  choose(f, 11 + static_cast<int>(intPart(f.Rnd.next() * 4)));
}

}  // namespace

void FormAI(MatchForm& f) {
  if (!playLeftVsAI(f)) return;
  f.GoalDiff = goalDifference(f);
  const int d = f.GoalDiff;
  const double t = f.ClockMin;

  switch (f.Hai.Value) {
    case 1:
      if (d >= -1 && d <= 1) choose(f, kVaried);
      if (d >= 2) choose(f, kDefend);
      if (d <= -2) choose(f, kAttack);
      break;
    case 2:
      if (d == 0) choose(f, kVaried);
      if (d > 0) choose(f, kDefend);
      if (d < 0) choose(f, kAttack);
      break;
    case 3:
      if (t == 0) chooseRandom(f);
      if (t == 20) chooseRandom(f);
      if (t == 40 && d == 0) choose(f, kVaried);
      if (t == 60) chooseRandom(f);
      if (t == 80) chooseRandom(f);
      break;
    case 4:
      if (t < 10) choose(f, kAttack);
      if (t > 10 && t < 40) choose(f, kNorm);
      if (t == 40) chooseRandom(f);
      if (t > 50 && t < 70) choose(f, kAttack);
      if (t > 70 && d >= 0) choose(f, kCup);
      if (t > 70 && d < 0) choose(f, kVaried);
      break;
    case 5: {
      const bool defends = f.OPForm[3].Value, attacks = f.OPForm[4].Value;
      if (t < 70 && defends) choose(f, kAttack);
      if (t < 70 && attacks) choose(f, kDefend);
      if (t < 70 && !defends && !attacks) choose(f, kNorm);
      if (t > 70 && (d == 0 || d == -1)) choose(f, kAttack);
      if (t > 70 && d <= -2) choose(f, kVaried);
      if (t > 70 && d >= 1) choose(f, kDefend);
      break;
    }
    case 6: {
      const bool middle = t > 30 && t<60, late = t> 60 && t < 80;
      if (t < 30) choose(f, kCup);
      if (middle && d > 0) choose(f, kDefend);
      if (middle && d < 0) choose(f, kAttack);
      if (middle && d == 0) choose(f, kCup);
      if (late && d <= -3) choose(f, kVaried);
      if (late && d == -2) choose(f, kAttack);
      if (late && d == -1) choose(f, kNorm);
      if (late && (d == 0 || d == 1)) choose(f, kCup);
      if (late && d >= 2) choose(f, kDefend);
      if (t > 60 && t < 70 && d <= -1) choose(f, kAttack);
      if (t > 77 && d <= 0) choose(f, kAttack);
      break;
    }
    default:
      break;
  }
}

}  // namespace quorvel
