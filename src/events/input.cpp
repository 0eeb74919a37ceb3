// A person's input, the same for the window, the driver, the simulator and the harness.
#include <string>

#include "events/events.h"
#include "match/match.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

// Whether a person can reach the control: the program runs, the control and its frame are shown
// and enabled, and its window is open.
bool takesInput(const MatchForm& f, const Control& c) {
  if (f.Ended || !reachable(c)) return false;
  return f.LinksForm.holds(c) ? f.LinksForm.Visible : f.Visible;
}

}  // namespace

void userClick(MatchForm& f, Control& c) {
  if (!takesInput(f, c)) return;
  switch (c.kind) {
    case Kind::CommandButton: {
      auto& button = static_cast<CommandButton&>(c);
      raise(button.MouseDown);
      press(f, button);
      break;
    }
    case Kind::CheckBox: {
      auto& box = static_cast<CheckBox&>(c);
      setValue(f, box, box.Value == 0 ? 1 : 0);
      break;
    }
    case Kind::OptionButton:
      select(f, static_cast<OptionButton&>(c));
      break;
    default:
      raise(c.Click);
      break;
  }
}

void userPress(MatchForm& f, Control& c) {
  if (!takesInput(f, c) || c.kind != Kind::CommandButton) return;
  raise(static_cast<CommandButton&>(c).MouseDown);
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
