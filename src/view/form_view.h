// What is on screen, once for the window and the page. From the form and the size of a window
// in pixels it describes every control as a person meets it: its pixel rectangle, whether it is
// shown and whether it is painted as a piece, what it shows and in what type, whether Tab stops
// on it and where, what assistive technology calls it and what state it reports, and what the
// arrows, Space and Enter do on it. At each glance it lists what changed since the last, so
// that neither front compares anything itself. The fronts only draw what it says.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "match/match_form.h"
#include "ui/layout.h"
#include "ui/pictures.h"
#include "view/compact_layout.h"

namespace quorvel {

// Twips to a pixel at scale 1.
inline constexpr double kTwipsPerPixel = 15;
// No text is drawn smaller than this many pixels, the least that stays legible.
inline constexpr double kLegiblePx = 9;

// Where a form stands in a window: its scale, the top-left corner of the area it fills in the
// window's pixels, and the device pixels to a pixel, on which every edge is snapped.
struct Placement {
  double scale = 1;
  double x = 0, y = 0;
  double ratio = 1;
};
// The largest scale at which `client` fits a window of `width` x `height` pixels, keeping its
// proportions; centred in the window when `centre`, else at its top-left corner.
Placement fitInto(ClientSize client, double width, double height, double ratio = 1,
                  bool centre = true);

struct PixelRect {
  double x = 0, y = 0, width = 0, height = 0;
  double right() const { return x + width; }
  double bottom() const { return y + height; }
  bool operator==(const PixelRect&) const = default;
};

// What assistive technology is told a control is.
enum class Role { Button, CheckBox, Radio, Entry, Text, Slider, Group, Graphic, Label };
// Its name in the words the fronts share: "button", "check box", "radio", "entry", "text",
// "slider", "group", "graphic", "label".
std::string_view roleName(Role r);

enum class Arrow { Up, Down, Left, Right };

// Which window of the form a control belongs to.
enum class FormWindowId { Main, Closing };

// A player picture's shirt number, painted as part of the piece.
struct ShirtNumber {
  std::string text;
  Colour ink, back;
  double left = 0, top = 0, width = 0, height = 0;  // fractions of the picture's size
  bool operator==(const ShirtNumber&) const = default;
};

// One control as a person meets it.
struct ControlView {
  Control* control = nullptr;
  std::string parent;    // the name of the control it stands in, empty for the window
  bool moves = false;    // the rules move it about: its pixel size is its own wherever it stands
  bool piece = false;    // a player or the ball: painted, with no control of its own
  bool inPanel = false;  // on a small screen, in the panel: its rect is in the panel's pixels
  bool turned = false;   // a picture drawn turned a quarter clockwise to fill its rect
  // What is seen.
  bool shown = false;      // it and every container of it are visible
  bool enabled = false;    // it and every container of it are enabled
  PixelRect rect;          // in its container's pixels (the window's for one without)
  std::string image;       // the picture it shows, by its key; empty for none
  bool bare = false;       // a picture button drawn without a face (a flag)
  bool opensLeft = false;  // a goal whose mouth faces left
  ShirtNumber number;      // a player's shirt number
  std::string caption;     // the words it shows (a caption or a text box's text)
  double fontPx = 0;       // its text's size in pixels at this scale, before any fitting
  bool bold = false, italic = false, alignLeft = false;
  Colour back, fore;
  std::string tip;
  bool locked = false;                        // a text box the person may not type in now
  int value = 0, min = 0, max = 0, step = 0;  // a scroll bar's
  // What is heard and pressed.
  Role role = Role::Graphic;
  std::string name;        // what assistive technology calls it
  int checked = -1;        // a check box or option button: 1 ticked or chosen, 0 not; else -1
  int side = 0;            // the team it belongs to: 1 left, 2 right, 0 neither
  int group = 0;           // option buttons of one group: the arrows move among them
  bool focusable = false;  // it can take the keyboard focus (a button, box, entry or slider)
  int tab = 0;             // its place in Tab's order now, from 1; 0: Tab passes over it
  bool pressable = false;  // Space and Enter press it (the toolkit's own buttons do already)
};

// Where an arrow key takes the keyboard focus from a control, and whether the control it
// reaches is pressed too (an option button of a group, from the chosen one).
struct ArrowMove {
  std::string to;      // empty: the focus stays where it is
  bool press = false;  // the control reached is pressed too
  bool own = false;    // the arrow is the control's own (a text box's, a scroll bar's) or nothing
};

// The view of one window of the form. Controls are listed in the order they are stacked, later
// ones on top; a container comes before what it holds.
class FormView {
 public:
  FormView(MatchForm& f, FormWindowId window);

  // The window's size changed: every rectangle anew. The next glance lists what moved.
  void place(const Placement& p);
  // A page of `width` x `height` CSS pixels: the stored layout where it fits, else the layout
  // for a small screen (compact_layout.h).
  void fit(double width, double height, double ratio);
  // The small screen's layout in use; null for the stored one.
  const CompactLayout* compact() const { return compact_ ? &*compact_ : nullptr; }
  // On a small screen, whether the panel is open; opening or closing it is the next glance's.
  bool panelOpen() const { return panelOpen_; }
  void openPanel(bool open) {
    panelOpen_ = open;
    lookAtAll_ = true;
  }
  const Placement& placement() const { return placement_; }
  const MatchForm& form() const { return f_; }
  ClientSize client() const;

  const std::vector<ControlView>& controls() const { return views_; }
  const ControlView* find(std::string_view name) const;
  const ControlView* find(const Control& c) const;
  // A control that has a view of its own (not a shirt number, not a stored die face).
  static bool hasOwnView(const MatchForm& f, const Control& c);

  // A control whose view changed since the last glance, and how.
  struct Change {
    int index;        // in controls()
    bool moved;       // its rectangle's place
    bool redrawn;     // its picture's look or size: a picture drawn anew
    bool restated;    // anything else: its text, state, name, Tab stop, ...
    bool recoloured;  // of those, its back or fore colour
  };
  // Looks at the form again: what changed since the last glance (everything at the first).
  std::vector<Change> glance();
  // A tick of timer `t` is about to run: what it may change is what the next glance after
  // ticks alone looks at (every control when the tick may change anything).
  void tickComing(const Timer& t);
  // A glance when nothing but ticks has happened to the form since the last glance: at what
  // those ticks may have changed, as tickComing() heard of them. Cheaper than a glance at every
  // control while the ball idles; the same list.
  std::vector<Change> glanceAfterTicks();
  // Whether the next glance after ticks will look at every control: a tick since the last
  // glance may have changed anything, or the view was looked over whole.
  bool looksAtAllNext() const { return lookAtAll_; }
  // The form may change anywhere before the next glance (a glance was taken halfway through
  // a tick): that glance looks at every control.
  void expectAnything() { lookAtAll_ = true; }

  // Describes every control anew, as the form is now, leaving the glances' record alone: what a
  // front that keeps its own record of what it showed asks for before it reads the view.
  void look();
  // Whether Tab stops on control `c` now, in its place in the order; and whether it would if
  // it and its containers were visible and enabled (which a toolkit checks by itself).
  bool tabStop(const Control& c) const;
  bool tabStopWhenReachable(const Control& c) const;

  // The Tab stops as they are now, in Tab's order.
  std::vector<std::string> tabStops() const;
  // What arrow `a` does on control `from`, as things stand now.
  ArrowMove arrow(std::string_view from, Arrow a) const;
  // Where the keyboard focus is in this window: where the game has it, or in the closing
  // window its first Tab stop.
  std::string focus() const;
  // What Escape presses in this window; empty for nothing.
  std::string escape() const;

  // Where the main window tells the match in words, and the size of its type.
  PixelRect newsRect() const;
  double newsFontPx() const;

  // Where control `c` appears in the window's own pixels, whatever it stands in.
  PixelRect windowRect(const Control& c) const;
  // The smallest scale at which every text of the window stays legible.
  double legibleScale() const;
  // The size a text `textWidth` pixels wide at `fontPx` is shown at in a box `boxWidth` wide.
  double fitted(double fontPx, double boxWidth, double textWidth) const;

 private:
  // What a control is for good: its container, role, side, group, type, ...; once.
  void describeForGood(ControlView& v) const;
  // What of a view changed, as a glance lists it.
  struct Changed {
    bool moved = false, redrawn = false, restated = false, recoloured = false;
  };
  // What may change: everything else, taken over; what of it changed.
  Changed describe(ControlView& v) const;
  // Describes view `i` anew, keeping what changed for the next glance; lists that and forgets it.
  void note(std::size_t i);
  void collect(std::size_t i, std::vector<Change>& changes);
  PixelRect rectOf(const Control& c, bool moving) const;
  // On a small screen: where `c` stands in its zone's pixels (the panel's or the window's).
  PixelRect compactRect(const Control& c) const;
  // On a small screen: whether `c` is hidden by where it stands (a closed panel, off the pitch).
  bool tuckedAway(const Control& c) const;

  MatchForm& f_;
  FormWindowId window_;
  Placement placement_;
  std::optional<CompactLayout> compact_;
  bool panelOpen_ = false;
  std::vector<ControlView> views_;
  std::vector<std::string> order_;  // every control that may take a Tab stop, in Tab's order
  std::vector<TextStyle> styleOf_;  // each view's type, which its control keeps for good
  std::vector<int> tabOf_;          // its place in order_ for each view, from 1; 0 for none
  std::unordered_map<const Control*, std::size_t> indexOf_;  // each view's index by control
  std::vector<Changed> pending_;  // what changed in each view since the last glance listed it
  // What the ticks since the last glance may have changed: the views' indices, and each
  // view's mark of being among them; everything when lookAtAll_.
  std::vector<std::size_t> ticked_;
  std::vector<bool> isTicked_;
  bool lookAtAll_ = true;
};

// What a person meets in the window as the view last saw it, as the fronts' tests compare it:
// a line "name|role|spoken name|enabled|checked" for each control on show, in the view's
// order, then "tab|" and the Tab stops in order, space-separated, and "focus|" and the control
// the game gives the keyboard focus.
std::vector<std::string> presentation(FormView& view);

// What assistive technology calls control `c` as the form is now: the game's own words for it,
// and for a text read as text what it shows as well.
std::string spokenName(const MatchForm& f, const Control& c);

// What picture control `c` shows besides its key, `number` being the shirt-number box a player
// picture holds (null for any other); the mouse over it shows only where it can be used.
Look lookOf(const Control& c, const TextBox* number, bool hovered);
// Player picture `c`'s shirt-number box; null for any other control.
const TextBox* shirtNumberOf(const MatchForm& f, const Control& c);

// A text `textWidth` pixels wide at `fontPx` in a box `boxWidth` pixels wide, at `scale`: the
// size it is shown at, smaller rather than cut off, but never below what stays legible.
double fittedPx(double fontPx, double scale, double boxWidth, double textWidth);

// A message box's text as both fronts show it: each line on a line of its own.
std::string messageLines(std::string_view text);

// Whether a typed character reaches the game, whichever control has the focus.
constexpr bool reachesGame(std::uint32_t ch) {
  return ch > 0 && ch < 256;
}

}  // namespace quorvel
