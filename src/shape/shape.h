// Team shape: the walk to formation squares, substitutions, the computer's formation choice.
#pragma once

#include "match/match_form.h"

namespace quorvel {

void TimPlace_Timer(MatchForm& f);
void OPForm_Click(MatchForm& f, int index);
void CHsub_Click(MatchForm& f, int index);
void MakeSub(MatchForm& f);
void TimSub_Timer(MatchForm& f);
// Every entry (box, key, computer) starts a substitution the same way: the box is used up,
// its substitute's number noted, the exchange begun.
void startSubstitution(MatchForm& f, int box);
Single subNumberOfBox(int index);  // 12 for boxes 0 and 3, 13 for boxes 1 and 2
// From the moment TimSub is switched on until the re-forming walk has ended, including the
// first 15 ms before its first tick has counted SubTicks up.
bool substitutionUnderWay(const MatchForm& f);
void FormAI(MatchForm& f);

}  // namespace quorvel
