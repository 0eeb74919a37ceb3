// MatchForm: the whole state of the game in one structure: the form variables (listed once, in
// match_variables.def), the controls as plain data, the timers and the closing window. Every
// procedure of the game is a free function over this structure.
#pragma once

#include <algorithm>
#include <array>
#include <functional>
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

// The small second window shown after Exit.
struct LinksFormState {
  explicit LinksFormState(Scheduler& s) : Timer1(s, "LinksForm.Timer1", 7000, false) {}
  bool Visible = false;        // shown by Exit
  Picture Picture1, Picture2;  // the two adverts, one visible at a time; a click opens a page
  CommandButton Command1;      // the game's web site
  CommandButton CDend;         // Exit: ends the program
  Timer Timer1;                // 7 s: swaps the adverts while the window is open

  // Its controls, in layout order.
  std::array<Control*, 4> controls() { return controlsOf(*this); }
  std::array<const Control*, 4> controls() const { return controlsOf(*this); }
  bool holds(const Control& c) const {
    const auto all = controls();
    return std::find(all.begin(), all.end(), &c) != all.end();
  }

 private:
  // The one list, for both kinds of access.
  template <typename Self>
  static auto controlsOf(Self& self)
      -> std::array<std::conditional_t<std::is_const_v<Self>, const Control*, Control*>, 4> {
    return {&self.Picture1, &self.Picture2, &self.Command1, &self.CDend};
  }
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

  // ---- controls: every one a member, arrays indexed as the game numbers them ----------------
  Picture Grass;                              // the pitch
  std::array<Picture, 2> Goal;                // 0 the right-hand goal, 1 the left-hand goal
  std::array<Picture, 23> Player;             // (1..22) players; 0 the spare off the pitch
  std::array<TextBox, 23> Tnum;               // (0..22) shirt numbers inside the players
  Picture Ball;                               // the ball
  std::array<CommandButton, 10> CDdest;       // (0..7) the flags of the eight directions
  CommandButton Cdice;                        // the die: roll
  std::array<Picture, 8> Di;                  // (0..7) die faces: 0 blank, 1..6, 7 contest blank
  std::array<CommandButton, 3> CDcontest;     // (1..2) the 50/50 dice; a click renames the team
  CommandButton CDgo, CDend, CDhelp;          // Start, Exit, Help
  CommandButton cdr;                          // Random Teams
  CommandButton CDhm;                         // plays the computer's shown flag (with Chp)
  CheckBox Chp;                               // 1: the computer only shows its flag choice
  std::array<TextBox, 3> Team, Goals, Poses;  // (1..2) name, score, possession per side
  TextBox TXtim, Text2;                       // the match clock and its caption
  Picture PicGame;                            // the half-time and full-time board
  std::array<TextBox, 2> TXgame;              // (0..1) the board's two words
  TextBox TXstart, TXver;                     // the keypad hint and the version
  std::array<OptionButton, 3> OpMode;         // (0..2) Free Mode, Mouse vs Keys, Play Left vs AI
  Frame FrameMode;                            // holds OpMode, Hai, Vai, Text3 and Text4
  ScrollBar Hai, Vai;                         // the computer's IQ 1..6 and its thinking time in ms
  TextBox Text3, Text4, TXai, TXq;            // Hai's and Vai's values, IQ caption, hidden readout
  std::array<OptionButton, 15> OPForm;        // formations: 0..4 left, 10..14 right
  Frame Fra1, Fra2;                           // the left and the right formation panel
  std::array<TextBox, 3> Text1;               // (0..2) the panels' "Form:" captions
  TextBox GreyGreen;                          // holds the dimmed text colour
  std::array<CheckBox, 4> CHsub;              // (0..3) substitution boxes, 0..1 left, 2..3 right
  TextBox TXoner;                             // the "Make Sub BEFORE rolling" warning
  std::array<OptionButton, 2> OpName;         // (0..1) new names from clubs or nations
  Frame Frame2;                               // holds OpName
  CheckBox Ch50;                              // 50/50 balls: 0 settled by dice, 1 by rank
  CheckBox ChAuto;                // 0: automatic play of a single offered flag (ticked means off)
  CheckBox Chq;                   // 1: Quickplay, players jump to their squares
  CheckBox ChtenFIF;              // clock: 0 fifteen, 1 ten seconds a move
  std::array<Picture, 4> RainB;   // (0..3) colour swatches, 0..1 left, 2..3 right
  Label Lablurb;                  // the blurb under the controls
  std::array<Picture, 2> Banner;  // (0..1) the closing banners, links when clicked
  CommandButton Command1;         // the maker's web site
  Picture Pip, Pdat;              // hidden spares

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
