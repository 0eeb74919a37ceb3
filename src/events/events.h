// The wiring, above the rules: which handler every timer and every control runs, the loaded
// form, and a person's input as the window, the driver, the simulator and the harness all
// deliver it. Nothing below this folder includes it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "match/match_form.h"

namespace quorvel {

// A new form: its timer table and control handlers bound, its layout applied and the
// window-load procedure run (virtual time 0).
std::unique_ptr<MatchForm> newMatchForm(std::uint64_t seed = 1);

// A person's input. A hidden or disabled control (or one inside a hidden or disabled frame)
// cannot be used, and each window takes input only while it is open: nothing happens.
// A mouse click on a command button raises its press, then its click.
void userClick(MatchForm& f, Control& c);
// A mouse press on a control whose release does not follow on it: only the press's handler
// runs (Cdice's MouseDown), not the click.
void userPress(MatchForm& f, Control& c);
void userKey(MatchForm& f, int keyAscii);
// A click on the closing window's background (not on one of its pictures or buttons).
void userClickLinksForm(MatchForm& f);
// Returns false when the box cannot be edited (locked, hidden or disabled).
bool userEdit(MatchForm& f, TextBox& box, const std::string& text);
void userScroll(MatchForm& f, ScrollBar& bar, int value);

// What the coming tick of timer `t` may change on show, judged from the form as it stands just
// before the tick: true once `visit` has been given every control the tick may write; false
// when the tick may change anything at all. A window that must look over the whole form after
// every such tick can look over only these after the others.
bool tickReach(MatchForm& f, const Timer& t, const std::function<void(Control&)>& visit);

}  // namespace quorvel
