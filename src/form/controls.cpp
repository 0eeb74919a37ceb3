#include "form/controls.h"

namespace quorvel {

const char* kindName(Kind k) {
  switch (k) {
#define QUORVEL_KIND_NAME(kind, words) \
  case Kind::kind:                     \
    return words;
    QUORVEL_CONTROL_KINDS(QUORVEL_KIND_NAME)
#undef QUORVEL_KIND_NAME
  }
  return "control";
}

bool reachable(const Control& c) {
  for (const Control* p = &c; p != nullptr; p = p->parent)
    if (!p->Visible || !p->Enabled) return false;
  return true;
}

const std::string& captionOf(const Control& c) {
  static const std::string none;
  switch (c.kind) {
    case Kind::CommandButton:
      return static_cast<const CommandButton&>(c).Caption;
    case Kind::CheckBox:
      return static_cast<const CheckBox&>(c).Caption;
    case Kind::OptionButton:
      return static_cast<const OptionButton&>(c).Caption;
    case Kind::Frame:
      return static_cast<const Frame&>(c).Caption;
    case Kind::Label:
      return static_cast<const Label&>(c).Caption;
    case Kind::TextBox:
      return static_cast<const TextBox&>(c).Text;
    default:
      return none;
  }
}

}  // namespace quorvel
