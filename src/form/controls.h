// The toolkit-free controls of a window: just the properties the rules read and write.
// Positions and sizes are twips; a control inside a container (a frame, or a picture that
// holds a text box) is positioned relative to that container.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "form/colour.h"
#include "form/control_properties.def"

namespace quorvel {

enum class Kind {
#define QUORVEL_KIND_ENUM(kind, words) kind,
  QUORVEL_CONTROL_KINDS(QUORVEL_KIND_ENUM)
#undef QUORVEL_KIND_ENUM
};

// A property of the table, as a member with its start value.
#define QUORVEL_MEMBER(type, member, script, value, start) type member = start;

struct Control {
  explicit Control(Kind k) : kind(k) {}
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  Kind kind;
  std::string name;           // "Player(3)", "Cdice": the control's path in scripts
  Control* parent = nullptr;  // the frame or picture that holds it; null for the window
  QUORVEL_COMMON_PROPERTIES(QUORVEL_MEMBER)
  // The handler a click raises, bound when the form is made; empty: the control has none.
  std::function<void()> Click;
};

struct Picture : Control {
  Picture() : Control(Kind::Picture) {}
  QUORVEL_Picture_PROPERTIES(QUORVEL_MEMBER)
};

struct TextBox : Control {
  TextBox() : Control(Kind::TextBox) {}
  QUORVEL_TextBox_PROPERTIES(QUORVEL_MEMBER)
};

struct CommandButton : Control {
  CommandButton() : Control(Kind::CommandButton) {}
  QUORVEL_CommandButton_PROPERTIES(
      QUORVEL_MEMBER) std::function<void()> MouseDown;  // raised by a mouse press, before the click
};

struct CheckBox : Control {
  CheckBox() : Control(Kind::CheckBox) {}
  QUORVEL_CheckBox_PROPERTIES(QUORVEL_MEMBER)
};

struct OptionButton : Control {
  OptionButton() : Control(Kind::OptionButton) {}
  QUORVEL_OptionButton_PROPERTIES(QUORVEL_MEMBER) int group =
      0;  // buttons of one group exclude each other
};

struct ScrollBar : Control {
  ScrollBar() : Control(Kind::ScrollBar) {}
  QUORVEL_ScrollBar_PROPERTIES(
      QUORVEL_MEMBER) std::function<void()> Change;  // raised whenever Value changes
};

struct Frame : Control {
  Frame() : Control(Kind::Frame) {}
  QUORVEL_Frame_PROPERTIES(QUORVEL_MEMBER)
};

struct Label : Control {
  Label() : Control(Kind::Label) {}
  QUORVEL_Label_PROPERTIES(QUORVEL_MEMBER)
};

#undef QUORVEL_MEMBER

const char* kindName(Kind k);

// Visible and enabled, and so is every container around it: a person can reach it.
bool reachable(const Control& c);

// Runs a bound handler; an unbound one does nothing.
inline void raise(const std::function<void()>& handler) {
  if (handler) handler();
}

// Index of `c` in the control array `arr`, or -1. Asked of every control at every look at the
// screen: found from where `c` stands in memory, then checked, rather than searched for.
template <typename Arr>
int indexIn(const Arr& arr, const Control& c) {
  if (arr.size() == 0) return -1;
  const auto at = reinterpret_cast<std::uintptr_t>(&c);
  const auto first = reinterpret_cast<std::uintptr_t>(static_cast<const Control*>(&arr[0]));
  if (at < first) return -1;
  const std::size_t i = (at - first) / sizeof(arr[0]);
  return i < arr.size() && static_cast<const Control*>(&arr[i]) == &c ? static_cast<int>(i) : -1;
}

// The words a control shows: a caption, or a text box's text; empty for a picture or a scroll
// bar.
const std::string& captionOf(const Control& c);

}  // namespace quorvel
