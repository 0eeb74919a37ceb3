// The automation box.
#include "ai/ai.h"

namespace quorvel {

void ChAuto_Click(MatchForm& f) {
  const bool on = f.ChAuto.Value == 0;  // unticked means automatic play is on
  f.ChAuto.Caption = on ? "Automate option" : "Wait for player";
  f.TimAuto.setEnabled(on);
}

}  // namespace quorvel
