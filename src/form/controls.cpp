#include "form/controls.h"

namespace quorvel {

const char* kindName(Kind k) {
  switch (k) {
    case Kind::Picture:
      return "picture";
    case Kind::TextBox:
      return "text box";
    case Kind::CommandButton:
      return "command button";
    case Kind::CheckBox:
      return "check box";
    case Kind::OptionButton:
      return "option button";
    case Kind::ScrollBar:
      return "scroll bar";
    case Kind::Frame:
      return "frame";
    case Kind::Label:
      return "label";
  }
  return "control";
}

bool reachable(const Control& c) {
  for (const Control* p = &c; p != nullptr; p = p->parent)
    if (!p->Visible || !p->Enabled) return false;
  return true;
}

}  // namespace quorvel
