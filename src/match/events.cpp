#include "match/events.h"

#include <algorithm>

#include "ai/ai.h"
#include "match/match.h"
#include "shape/shape.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

template <typename Arr>
void clearGroup(Arr& arr, const OptionButton& keep) {
  for (auto& b : arr)
    if (&b != &keep && b.group == keep.group) b.Value = false;
}

}  // namespace

void setValue(MatchForm& f, CheckBox& box, int value) {
  if (box.Value == value) return;
  box.Value = value;
  raiseClick(f, box);
}

void select(MatchForm& f, OptionButton& button) {
  if (button.Value) return;
  clearGroup(f.OpMode, button);
  clearGroup(f.OPForm, button);
  clearGroup(f.OpName, button);
  button.Value = true;
  raiseClick(f, button);
}

void press(MatchForm& f, CommandButton& button) {
  button.Value = true;
  raiseClick(f, button);
  button.Value = false;
}

void setScroll(MatchForm& f, ScrollBar& bar, int value) {
  value = std::clamp(value, std::min(bar.Min, bar.Max), std::max(bar.Min, bar.Max));
  if (bar.Value == value) return;
  bar.Value = value;
  if (&bar == &f.Hai) Hai_Change(f);
}

void setFocus(MatchForm& f, const Control& c) {
  f.ActiveControl = c.name;
}

void raiseClick(MatchForm& f, Control& c) {
  int i;
  if (&c == &f.CDgo) return CDgo_Click(f);
  if (&c == &f.Cdice) return Cdice_Click(f);
  if ((i = indexIn(f.CDdest, c)) >= 0) return i < 8 ? CDdest_Click(f, i) : void();
  if (&c == &f.CDhm) return CDhm_Click(f);
  if (&c == &f.Ch50) return Ch50_Click(f);
  if ((i = indexIn(f.OPForm, c)) >= 0) return OPForm_Click(f, i);
  if ((i = indexIn(f.CHsub, c)) >= 0) return CHsub_Click(f, i);
  if (&c == &f.ChAuto) return ChAuto_Click(f);
  if (&c == &f.ChtenFIF) return ChtenFIF_Click(f);
  if (&c == &f.Chq) return Chq_Click(f);
  if (&c == &f.TXai) return TXai_Click(f);
  if ((i = indexIn(f.RainB, c)) >= 0) return RainB_Click(f, i);
  if ((i = indexIn(f.CDcontest, c)) >= 1) return CDcontest_Click(f, i);
  if (&c == &f.cdr) return cdr_Click(f);
  if (&c == &f.CDhelp) return CDhelp_Click(f);
  if (&c == &f.CDend) return CDend_Click(f);
  if ((i = indexIn(f.Banner, c)) >= 0) return Banner_Click(f, i);
  if (&c == &f.Command1) return Command1_Click(f);
  if (&c == &f.LinksForm.Picture1) return LinksForm_Picture1_Click(f);
  if (&c == &f.LinksForm.Picture2) return LinksForm_Picture2_Click(f);
  if (&c == &f.LinksForm.Command1) return LinksForm_Command1_Click(f);
  if (&c == &f.LinksForm.CDend) return LinksForm_CDend_Click(f);
}

void raiseMouseDown(MatchForm& f, Control& c) {
  if (&c == &f.Cdice) Cdice_MouseDown(f);
}

namespace {

bool onLinksForm(const MatchForm& f, const Control& c) {
  return &c == &f.LinksForm.Picture1 || &c == &f.LinksForm.Picture2 ||
         &c == &f.LinksForm.Command1 || &c == &f.LinksForm.CDend;
}

// Whether a person can reach the control: the program runs, the control and its frame are shown
// and enabled, and its window is open.
bool takesInput(const MatchForm& f, const Control& c) {
  if (f.Ended || !reachable(c)) return false;
  return onLinksForm(f, c) ? f.LinksForm.Visible : f.Visible;
}

}  // namespace

void userClick(MatchForm& f, Control& c) {
  if (!takesInput(f, c)) return;
  switch (c.kind) {
    case Kind::CommandButton:
      raiseMouseDown(f, c);
      press(f, static_cast<CommandButton&>(c));
      break;
    case Kind::CheckBox: {
      auto& box = static_cast<CheckBox&>(c);
      setValue(f, box, box.Value == 0 ? 1 : 0);
      break;
    }
    case Kind::OptionButton:
      select(f, static_cast<OptionButton&>(c));
      break;
    default:
      raiseClick(f, c);
      break;
  }
}

void userPress(MatchForm& f, Control& c) {
  if (takesInput(f, c)) raiseMouseDown(f, c);
}

void userClickLinksForm(MatchForm& f) {
  if (f.Ended || !f.LinksForm.Visible) return;
  LinksForm_Click(f);
}

void userKey(MatchForm& f, int keyAscii) {
  if (f.Ended || !f.Visible) return;
  Form_KeyPress(f, keyAscii);
}

bool userEdit(MatchForm& f, TextBox& box, const std::string& text) {
  if (f.Ended || !f.Visible || box.Locked || !reachable(box)) return false;
  box.Text = text;
  return true;
}

void userScroll(MatchForm& f, ScrollBar& bar, int value) {
  if (f.Ended || !f.Visible || !reachable(bar)) return;
  setScroll(f, bar, value);
}

}  // namespace quorvel
