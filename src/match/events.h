// How controls raise their handlers. A value set from code raises the control's handler at
// once, inside the caller, exactly as a person's click does:
//   check box      Value changed            -> its Click
//   option button  selected (was not)       -> siblings cleared, then its Click
//   command button Value = True             -> its Click, then Value back to False
//   scroll bar     Value changed            -> its Change
// Selecting an option button that is already selected raises nothing, so a choice that
// changes nothing never spends a side's one re-plan during a walk.
#pragma once

#include <string>

#include "match/match_form.h"

namespace quorvel {

void setValue(MatchForm& f, CheckBox& box, int value);
void select(MatchForm& f, OptionButton& button);
void press(MatchForm& f, CommandButton& button);
void setScroll(MatchForm& f, ScrollBar& bar, int value);
void setFocus(MatchForm& f, const Control& c);

// The handlers of a control, found by its identity. Controls without the handler ignore it.
void raiseClick(MatchForm& f, Control& c);
void raiseMouseDown(MatchForm& f, Control& c);

// A person's input. A hidden or disabled control (or one inside a hidden or disabled frame)
// cannot be used: nothing happens.
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

// Index of `c` in the control array `arr`, or -1.
template <typename Arr>
int indexIn(const Arr& arr, const Control& c) {
  for (std::size_t i = 0; i < arr.size(); ++i)
    if (static_cast<const Control*>(&arr[i]) == &c) return static_cast<int>(i);
  return -1;
}

}  // namespace quorvel
