// The computer opponent and automatic play.
#pragma once

#include "match/match_form.h"

namespace quorvel {

Integer Threat(const MatchForm& f);
Integer ThreatAI(const MatchForm& f);
Integer Terror(const MatchForm& f);
Integer TerrorAI(const MatchForm& f);

void TimAI_Timer(MatchForm& f);
void ChAuto_Click(MatchForm& f);
void TimAuto_Timer(MatchForm& f);
void Hai_Change(MatchForm& f);
void TXai_Click(MatchForm& f);
void ChtenFIF_Click(MatchForm& f);
void Chq_Click(MatchForm& f);

}  // namespace quorvel
