// The computer's choice of flag: every direction is weighed by who would get the ball, how far
// towards the left-hand goal it goes and where it lands; a luck factor blurs the values, more
// the lower the IQ, and a rare miss overrides the choice.
#include <algorithm>
#include <string>

#include "ai/ai.h"
#include "match/codes.h"
#include "match/match.h"
#include "match/match_form.h"

namespace quorvel {

namespace {

// Scores by direction: the person's player nearest, the computer's nearest, contested. The
// leftward kicks, towards the goal the computer attacks, score highest in each column.
constexpr double kPersonScore[8] = {20, 30, 10, 30, 20, 50, 40, 50};
constexpr double kComputerScore[8] = {5000, 3000, 2000, 3000, 5000, 8000, 12000, 8000};
constexpr double kContestedScore[8] = {400, 300, 200, 300, 400, 600, 500, 600};

void aimSquares(const MatchForm& f, FlagChoice& c) {
  for (int d = 0; d < 8; ++d) flagTarget(f, d, c.AimCol[d], c.AimRow[d]);
}

// The player who would get the ball, lowest index first among equals; the square is contested
// when the nearest players include both sides. Squares are whole numbers, so the squared
// distances order and tie the players exactly as the distances do, without a square root.
void nearestPlayers(const MatchForm& f, FlagChoice& c) {
  for (int d = 0; d < 8; ++d) {
    double best = -1;  // the nearest squared distance so far; none yet
    for (int p = 1; p <= 22; ++p) {
      const double dr = c.AimRow[d] - f.PlayerRow[p];
      const double dc = c.AimCol[d] - f.PlayerCol[p];
      const double dist = dr * dr + dc * dc;
      if (best < 0) {
        c.AimNearest[d] = static_cast<Integer>(p);
        best = dist;
        c.AimSide[d] = p < 12 ? -1 : 1;
      } else if (dist == best) {
        if ((p < 12 && c.AimNearest[d] > 11) || (p > 11 && c.AimNearest[d] < 12)) c.AimTie[d] = 1;
      } else if (dist < best) {
        c.AimTie[d] = 0;
        c.AimNearest[d] = static_cast<Integer>(p);
        best = dist;
        c.AimSide[d] = p < 12 ? -1 : 1;
      }
    }
  }
}

// A roll of 1 from a touch line one square inwards, beside the goal the computer attacks.
bool besideTargetGoalOffTheLine(const FlagChoice& c, int d) {
  return c.AimCol[d] < 4 && ((d == 0 && c.AimRow[d] == 7) || (d == 4 && c.AimRow[d] == 2));
}

// Steps of the positional bonus (times the factor and the IQ) for a square the computer would
// keep; 0 outside the area in front of the left-hand goal.
double bonusSteps(double col, double row) {
  if (row == 4 || row == 5) {
    if (col < 4) return 3;
    if (col == 4) return 5;
    if (col == 5) return 4;
    if (col == 6) return 3;
    if (col == 7) return 2;
    if (col == 8) return 1;
    return 0;
  }
  if ((row == 3 || row == 6) && (col == 1 || col == 2)) return 3;
  if ((row == 2 || row == 7) && (col == 2 || col == 3)) return 5;
  if ((row == 1 || row == 8) && (col == 3 || col == 4)) return 4;
  return 0;
}

void scoresAndBonuses(const MatchForm& f, FlagChoice& c) {
  const double iq = f.AIIQ;
  c.LatePush = f.ClockMin > 40 ? (f.ClockMin - 40) * 250 : 0;
  for (int d = 0; d < 8; ++d) {
    const bool contested = c.AimTie[d] == 1;
    const bool computers = !contested && c.AimSide[d] == 1;
    if (contested) {
      c.AimScore[d] = besideTargetGoalOffTheLine(c, d) ? 800 : kContestedScore[d];
    } else if (computers) {
      c.AimScore[d] = kComputerScore[d];
      if (iq > 3 && besideTargetGoalOffTheLine(c, d)) c.AimScore[d] = 10000;
      // A back pass into the middle in front of its own goal.
      if (d >= 1 && d <= 3 && c.AimCol[d] > 10 && (c.AimRow[d] == 4 || c.AimRow[d] == 5))
        c.AimScore[d] = 2200 - 150 * iq;
    } else {
      c.AimScore[d] = kPersonScore[d];
    }

    if (!contested && !computers) continue;  // no bonus for a ball the person gets
    const double factor = computers ? 1000 : 100;
    c.AimBonus[d] = bonusSteps(c.AimCol[d], c.AimRow[d]) * factor * iq;
    // Late in the match the computer pushes harder when it is not winning.
    if (f.ClockMin > 50 && c.AimBonus[d] > 0) {
      if (f.GoalDiff < 0) c.AimBonus[d] += (computers ? 4 : 2) * c.LatePush;
      if (f.GoalDiff == 0) c.AimBonus[d] += (computers ? 3 : 1) * c.LatePush;
    }
  }
}

// The luck factor in percent: the higher the IQ, the narrower the blur. IQ 1 keeps the
// fraction.
double luckPercent(Random& rnd, double iq) {
  const double r = rnd.next();
  const int level = static_cast<int>(std::clamp(roundEven(iq), 1.0, 6.0));
  switch (level) {
    case 6:
      return intPart(r * 20) + 80;
    case 5:
      return intPart(r * 50) + 50;
    case 4:
      return intPart(r * 67) + 33;
    case 3:
      return intPart(r * 93) + 7;
    case 2:
      return intPart(r * 99) + 1;
    default:
      return r * 99;
  }
}

}  // namespace

FlagChoice weighFlags(MatchForm& f) {
  FlagChoice c;
  aimSquares(f, c);
  nearestPlayers(f, c);
  scoresAndBonuses(f, c);

  for (int d = 0; d < 8; ++d) {
    c.AimValue[d] = c.AimScore[d];
    if (f.FlagGoal[d] == 1 && d >= 1 && d <= 3) c.AimValue[d] = 1;        // into its own goal
    if (f.FlagGoal[d] == 1 && d >= 5 && d <= 7) c.AimValue[d] = 1000000;  // a goal
  }

  for (int d = 0; d < 8; ++d) {
    if (!f.CDdest[d].Visible) continue;  // hidden flags draw no luck
    c.AimValue[d] += c.AimBonus[d];
    c.AimValue[d] = c.AimValue[d] * luckPercent(f.Rnd, f.AIIQ) / 100;
  }

  f.AIFlag = -1;
  double best = 0;
  for (int d = 0; d < 8; ++d) {
    if (!f.CDdest[d].Visible) {
      c.AimValue[d] = 0;
      continue;
    }
    if (best == 0 || c.AimValue[d] > best) {  // equal values keep the lower direction
      f.AIFlag = static_cast<Single>(d);
      best = c.AimValue[d];
    }
  }
  c.best = roundIndex(f.AIFlag);

  // The miss: one draw per IQ, always all five, so that the sequence of draws does not depend
  // on the IQ; only the current IQ's draw counts, and a hit draws the direction at once.
  f.ClickFrom = kFromComputer;
  constexpr int kMissOdds[5] = {50, 24, 18, 12, 6};  // IQ 5, 4, 3, 2, 1
  for (int k = 0; k < 5; ++k) {
    const bool hit = intPart(f.Rnd.next() * kMissOdds[k]) == 0;
    if (hit && f.AIIQ == 5 - k) c.miss = static_cast<int>(intPart(f.Rnd.next() * 8));
  }
  if (c.miss >= 0 && f.CDdest[c.miss].Visible && c.AimValue[c.miss] < 50000)
    f.AIFlag = static_cast<Single>(c.miss);
  return c;
}

FlagChoice chooseFlag(MatchForm& f) {
  FlagChoice c = weighFlags(f);
  const int k = roundIndex(f.AIFlag);
  f.CDhm.Caption = std::to_string(k);
  if (f.Chp.Value == 1) {
    // The manual step: the choice waits on CDhm for a person's click.
    f.TimAI.setEnabled(false);
    return c;
  }
  if (k >= 0 && k < 8) press(f, f.CDdest[k]);
  return c;
}

}  // namespace quorvel
