#include "match/match_form.h"

#include <algorithm>
#include <initializer_list>
#include <string>

namespace quorvel {

namespace {

// Runs `visit(i)` for each index of a control array that holds a control: the list's first,
// last pairs.
template <typename Visit>
void eachIndex(std::initializer_list<int> ranges, Visit visit) {
  for (const int* r = ranges.begin(); r + 1 < ranges.end(); r += 2)
    for (int i = r[0]; i <= r[1]; ++i) visit(i);
}

}  // namespace

LinksFormState::LinksFormState(Scheduler& s) : Timer1(s, "LinksForm.Timer1", 7000, false) {
#define MATCH_CONTROL(kind, member)
#define MATCH_CONTROLS(kind, member, ...)
#define LINKS_CONTROL(kind, member) member.name = "LinksForm." #member;
#include "match/match_controls.def"
#undef MATCH_CONTROL
#undef MATCH_CONTROLS
#undef LINKS_CONTROL
}

// Each control gets its name; the timers their intervals and whether they start running.
// Which handler each one runs is the wiring's.
MatchForm::MatchForm()
    :
#define MATCH_TIMER(name, interval, enabled, onShow) name(Sched, #name, interval, enabled),
#include "match/match_timers.def"
#undef MATCH_TIMER
      LinksForm(Sched) {
#define MATCH_CONTROL(kind, member) member.name = #member;
#define MATCH_CONTROLS(kind, member, ...) \
  eachIndex({__VA_ARGS__},                \
            [this](int i) { member[i].name = #member "(" + std::to_string(i) + ")"; });
#define LINKS_CONTROL(kind, member)
#include "match/match_controls.def"
#undef MATCH_CONTROL
#undef MATCH_CONTROLS
#undef LINKS_CONTROL
}

void forEachControl(MatchForm& f, const std::function<void(Control&)>& visit) {
#define MATCH_CONTROL(kind, member) visit(f.member);
#define MATCH_CONTROLS(kind, member, ...) \
  eachIndex({__VA_ARGS__}, [&](int i) { visit(f.member[i]); });
#define LINKS_CONTROL(kind, member) visit(f.LinksForm.member);
#include "match/match_controls.def"
#undef MATCH_CONTROL
#undef MATCH_CONTROLS
#undef LINKS_CONTROL
}

namespace {

template <typename Arr>
void clearGroup(Arr& arr, const OptionButton& keep) {
  for (auto& b : arr)
    if (&b != &keep && b.group == keep.group) b.Value = false;
}

}  // namespace

void setValue(MatchForm& /*f*/, CheckBox& box, int value) {
  if (box.Value == value) return;
  box.Value = value;
  raise(box.Click);
}

void select(MatchForm& f, OptionButton& button) {
  if (button.Value) return;
  clearGroup(f.OpMode, button);
  clearGroup(f.OPForm, button);
  clearGroup(f.OpName, button);
  button.Value = true;
  raise(button.Click);
}

void press(MatchForm& /*f*/, CommandButton& button) {
  button.Value = true;
  raise(button.Click);
  button.Value = false;
}

void setScroll(MatchForm& /*f*/, ScrollBar& bar, int value) {
  value = std::clamp(value, std::min(bar.Min, bar.Max), std::max(bar.Min, bar.Max));
  if (bar.Value == value) return;
  bar.Value = value;
  raise(bar.Change);
}

void setFocus(MatchForm& f, const Control& c) {
  f.ActiveControl = c.name;
}

}  // namespace quorvel
