// MatchForm: the whole state of the game in one structure: the form variables, the controls as
// plain data and the timers (each listed once, in match_variables.def, match_controls.def and
// match_timers.def) and the closing window. Every procedure of the game is a free function over
// this structure.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <string>
#include <type_traits>

#include "form/basic.h"
#include "form/controls.h"
#include "form/random.h"
#include "form/scheduler.h"
#include "match/codes.h"
#include "match/pitch.h"

namespace quorvel {

// The limits of match/match_variables.def: no limit on what a script may write.
inline constexpr double kAnyLow = -1e9, kAnyHigh = 1e9, kNoOtherValue = -1e9;

struct Message {
  std::string Title;
  std::string Text;  // lines joined by '\r'
  bool critical = false;
};

// What the model asks of the platform. Headless it only records; the window plugs in the
// real browser and message box.
struct Platform {
  std::function<bool(const std::string& url)> openUrl;  // false: no browser could be started
  std::function<void(const Message&)> showMessage;
  std::function<void()> repaint;  // the goal celebration's per-flash window refresh
  std::function<void()> quit;     // the closing window's Exit
};

// A control array of match/match_controls.def reaches the last index of its list of first,
// last pairs.
constexpr std::size_t extentOf(std::initializer_list<int> ranges) {
  return static_cast<std::size_t>(*(ranges.end() - 1)) + 1;
}

// The small second window shown after Exit.
struct LinksFormState {
  explicit LinksFormState(Scheduler& s);
  bool Visible = false;  // shown by Exit
  // Its controls: each with its note in match/match_controls.def.
  // NOLINTBEGIN(bugprone-macro-parentheses)
#define MATCH_CONTROL(kind, member)
#define MATCH_CONTROLS(kind, member, ...)
#define LINKS_CONTROL(kind, member) kind member;
#include "match/match_controls.def"
  // NOLINTEND(bugprone-macro-parentheses)
#undef LINKS_CONTROL
  Timer Timer1;  // 7 s: swaps the adverts while the window is open

 private:
  // The one list, for both kinds of access (written before its users, which need its type).
  template <typename Self>
  static auto controlsOf(Self& self) {
    using Pointer = std::conditional_t<std::is_const_v<Self>, const Control*, Control*>;
    return std::to_array<Pointer>({
#define LINKS_CONTROL(kind, member) &self.member,
#include "match/match_controls.def"
#undef LINKS_CONTROL
    });
  }

 public:
  // Its controls, in layout order.
  auto controls() {
    return controlsOf(*this);
  }
  auto controls() const {
    return controlsOf(*this);
  }
  bool holds(const Control& c) const {
    const auto all = controls();
    return std::find(all.begin(), all.end(), &c) != all.end();
  }
#undef MATCH_CONTROL
#undef MATCH_CONTROLS
};

struct MatchForm {
  MatchForm();
  MatchForm(const MatchForm&) = delete;
  MatchForm& operator=(const MatchForm&) = delete;

  // ---- time, chance, platform ------------------------------------------------------------
  Scheduler Sched;    // virtual milliseconds and the timers due next
  Random Rnd;         // the one random source, draws in [0, 1)
  Platform platform;  // browser, message box, repaint and quit, as the host provides them

  // ---- the form variables: each with its note in match/match_variables.def ----------------
  // The arguments are types, names and template extents, which no parentheses may enclose.
  // NOLINTBEGIN(bugprone-macro-parentheses)
#define MATCH_VAR(type, name, start, lowest, highest, orAlso) type name = start;
#define MATCH_ARRAY(type, extent, name, lowest, highest) std::array<type, extent> name{};
#define MATCH_TABLE(type, rows, columns, name, lowest, highest) \
  std::array<std::array<type, columns>, rows> name{};
  // NOLINTEND(bugprone-macro-parentheses)
#include "match/match_variables.def"
#undef MATCH_VAR
#undef MATCH_ARRAY
#undef MATCH_TABLE

  // ---- the window itself -----------------------------------------------------------------
  Colour BackColor;           // the main window's background
  bool Visible = true;        // false once Exit has closed it
  bool Ended = false;         // the program has been told to end
  std::string ActiveControl;  // name of the control with the keyboard focus
  Message LastMessage;        // the last message box shown
  std::string LastPage;       // the last web page asked for

  // ---- controls: each with its note in match/match_controls.def ---------------------------
  // NOLINTBEGIN(bugprone-macro-parentheses)
#define MATCH_CONTROL(kind, member) kind member;
#define MATCH_CONTROLS(kind, member, ...) std::array<kind, extentOf({__VA_ARGS__})> member;
#define LINKS_CONTROL(kind, member)
  // NOLINTEND(bugprone-macro-parentheses)
#include "match/match_controls.def"
#undef MATCH_CONTROL
#undef MATCH_CONTROLS
#undef LINKS_CONTROL

  // ---- timers, in the order their ticks run when due together: match/match_timers.def ----
#define MATCH_TIMER(name, interval, enabled, onShow) Timer name;
#include "match/match_timers.def"
#undef MATCH_TIMER

  LinksFormState LinksForm;  // the closing window shown after Exit
};

// Every control of both windows, main window first, in layout order.
void forEachControl(MatchForm& f, const std::function<void(Control&)>& visit);

// A value set from code raises the control's handler at once, inside the caller, exactly as
// a person's click does:
//   check box      Value changed            -> its Click
//   option button  selected (was not)       -> siblings cleared, then its Click
//   command button Value = True             -> its Click, then Value back to False
//   scroll bar     Value changed            -> its Change
// Selecting an option button that is already selected raises nothing, so a choice that
// changes nothing never spends a side's one re-plan during a walk. Which handler each control
// raises is bound when the form is made.
void setValue(MatchForm& f, CheckBox& box, int value);
void select(MatchForm& f, OptionButton& button);
void press(MatchForm& f, CommandButton& button);
void setScroll(MatchForm& f, ScrollBar& bar, int value);
void setFocus(MatchForm& f, const Control& c);

// The four centre squares and the kick-off squares.
inline bool isCentreSquare(double col, double row) {
  return (col == 8 || col == 9) && (row == 4 || row == 5);
}

}  // namespace quorvel
