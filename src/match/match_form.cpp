#include "match/match_form.h"

#include <algorithm>
#include <initializer_list>

namespace quorvel {

// The timers' intervals and whether they start running; which handler each one runs is the
// wiring's.
MatchForm::MatchForm()
    :
#define MATCH_TIMER(name, interval, enabled, onShow) name(Sched, #name, interval, enabled),
#include "match/match_timers.def"
#undef MATCH_TIMER
      LinksForm(Sched) {
}

void forEachControl(MatchForm& f, const std::function<void(Control&)>& visit) {
  // Gaps of the control arrays (OPForm(5..9), CDcontest(0), Goals(0), ...) have no name.
  auto fn = [&visit](Control& c) {
    if (!c.name.empty()) visit(c);
  };
  auto all = [&fn](auto& arr) {
    for (auto& c : arr) fn(c);
  };
  fn(f.Grass);
  all(f.Goal);
  all(f.Player);
  all(f.Tnum);
  fn(f.Ball);
  all(f.CDdest);
  fn(f.Cdice);
  all(f.Di);
  all(f.CDcontest);
  for (Control* c :
       std::initializer_list<Control*>{&f.CDgo, &f.CDend, &f.CDhelp, &f.cdr, &f.CDhm, &f.Chp})
    fn(*c);
  all(f.Team);
  all(f.Goals);
  all(f.Poses);
  fn(f.TXtim);
  fn(f.Text2);
  fn(f.PicGame);
  all(f.TXgame);
  fn(f.TXstart);
  fn(f.TXver);
  all(f.OpMode);
  fn(f.FrameMode);
  for (Control* c :
       std::initializer_list<Control*>{&f.Hai, &f.Vai, &f.Text3, &f.Text4, &f.TXai, &f.TXq})
    fn(*c);
  all(f.OPForm);
  fn(f.Fra1);
  fn(f.Fra2);
  all(f.Text1);
  fn(f.GreyGreen);
  all(f.CHsub);
  fn(f.TXoner);
  all(f.OpName);
  fn(f.Frame2);
  for (Control* c : std::initializer_list<Control*>{&f.Ch50, &f.ChAuto, &f.Chq, &f.ChtenFIF})
    fn(*c);
  all(f.RainB);
  fn(f.Lablurb);
  all(f.Banner);
  fn(f.Command1);
  fn(f.Pip);
  fn(f.Pdat);
  for (Control* c : f.LinksForm.controls()) fn(*c);
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
