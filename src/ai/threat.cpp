// How many outfield players of a side stand where they endanger the other side's goal. The
// computer's twins look at the mirror image: column c on one side is column 17 - c on the other.
#include "ai/ai.h"
#include "match/pitch.h"

namespace quorvel {

namespace {

// The funnel in front of the right-hand goal: the two central rows from column 11 on, and
// beside them a band two columns wide that steps one column back with each row outwards.
bool inFrontOfRightGoal(double col, double row) {
  if (row == 4 || row == 5) return col > 10;
  if (row == 3 || row == 6) return col == 15 || col == 16;
  if (row == 2 || row == 7) return col == 14 || col == 15;
  if (row == 1 || row == 8) return col == 13 || col == 14;
  return false;
}

template <typename Zone>
Integer countOutfield(const MatchForm& f, int side, Zone inZone) {
  const int first = side == 1 ? 2 : 13;  // the keepers are never counted
  Integer n = 0;
  for (int i = first; i < first + 10; ++i)
    if (inZone(f.PlayerCol[i], f.PlayerRow[i])) ++n;
  return n;
}

bool inFrontOfLeftGoal(double col, double row) {
  return inFrontOfRightGoal(kPitchColumns + 1 - col, row);
}

}  // namespace

Integer Threat(const MatchForm& f) {
  return countOutfield(f, 1, inFrontOfRightGoal);
}

Integer ThreatAI(const MatchForm& f) {
  return countOutfield(f, 2, inFrontOfLeftGoal);
}

Integer Terror(const MatchForm& f) {
  return countOutfield(f, 1, [](double col, double) { return col > 10; });
}

Integer TerrorAI(const MatchForm& f) {
  return countOutfield(f, 2, [](double col, double) { return col < 7; });
}

}  // namespace quorvel
