// Handlers whose rules are still being written: they do nothing yet.
#include "ai/ai.h"
#include "match/match.h"
#include "shape/shape.h"

namespace quorvel {

void TimAI_Timer(MatchForm&) {}
void TimAuto_Timer(MatchForm&) {}
void Hai_Change(MatchForm&) {}
void TXai_Click(MatchForm&) {}
void ChtenFIF_Click(MatchForm&) {}
void Chq_Click(MatchForm&) {}

}  // namespace quorvel
