// The computer opponent and automatic play.
#pragma once

#include <array>

#include "match/match_form.h"

namespace quorvel {

Integer Threat(const MatchForm& f);
Integer ThreatAI(const MatchForm& f);
Integer Terror(const MatchForm& f);
Integer TerrorAI(const MatchForm& f);

// The computer's turn: it is to roll, and its timer runs at the speed Vai sets; or it is over.
void startComputerTurn(MatchForm& f);
void stopComputerTurn(MatchForm& f);
void TimAI_Timer(MatchForm& f);
// A mode chosen during a match hands the right side's turn to the computer, or back.
void OpMode_Click(MatchForm& f, int index);
void ChAuto_Click(MatchForm& f);
void TimAuto_Timer(MatchForm& f);
void Hai_Change(MatchForm& f);
void TXai_Click(MatchForm& f);
void ChtenFIF_Click(MatchForm& f);
void Chq_Click(MatchForm& f);

// The working values of one flag choice of the computer, per direction 0..7, kept so that the
// weighing can be checked and shown.
struct FlagChoice {
  std::array<double, 8> AimCol{}, AimRow{};
  std::array<Integer, 8> AimNearest{};
  std::array<double, 8> AimSide{};  // -1 the person's player is nearest, +1 the computer's
  std::array<Integer, 8> AimTie{};  // 1: both sides nearest at the same distance
  std::array<double, 8> AimScore{}, AimBonus{}, AimValue{};
  double LatePush = 0;
  int best = -1;  // the highest value, before any miss
  int miss = -1;  // the miss direction drawn, if any (it may be refused)
};

// Weighs the eight directions of the last roll and picks one: sets AIFlag (and ClickFrom to
// the computer's origin). Makes the luck and miss draws; clicks nothing.
FlagChoice weighFlags(MatchForm& f);

// The computer's flag: weighs, shows the choice on CDhm and clicks it, or with Chp ticked
// only shows it and stops the computer's timer.
FlagChoice chooseFlag(MatchForm& f);

}  // namespace quorvel
