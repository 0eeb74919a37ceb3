// The order Tab takes through the main window's controls, for every view alike. It starts
// where the window opens, at Start: Start, Help, the die, the flags (clockwise from straight
// up) and the two 50/50 dice; then the left team's panel and the right team's; then the rest of
// the column of controls beside the pitch, so that Exit comes last. Within each, rows top to
// bottom and left to right, a frame's controls together where the frame stands.
#pragma once

#include <string>
#include <vector>

#include "match/match_form.h"

namespace quorvel {

// Whether Tab may stop at control `c`: buttons, boxes and bars, and a picture that answers a
// click. A view may pass over one it cannot focus now (disabled, hidden, an option not chosen).
bool takesTabStop(const Control& c);

// The names of the main window's tab stops, in the order Tab reaches them, from the places the
// controls have when the form is made.
std::vector<std::string> tabOrder(MatchForm& f);

}  // namespace quorvel
