// The page's layouts for screens too small for the stored one (a phone or a small tablet,
// either way round). The pitch takes what room the screen has, turned a quarter where that
// makes its squares larger; a bar beside or above it holds what a match needs at every moment
// (the die, Start, the clock, the scores, the panel's button) and the news line runs under it;
// everything else stands in a panel that the bar's button opens over the pitch. Where each
// control goes is data: the tables in compact_layout.cpp, in cells of a grid; this file turns
// them into CSS pixels for one screen.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace quorvel {

// A rectangle in CSS pixels.
struct CompactRect {
  double x = 0, y = 0, width = 0, height = 0;
  double right() const { return x + width; }
  double bottom() const { return y + height; }
};

// Below this scale the stored layout's smallest texts fall under 8 pixels: the page lays the
// controls out for the small screen instead.
inline constexpr double kLeastDesktopScale = 0.8;
// A target a finger can hit, and what the layouts give one where the screen allows.
inline constexpr double kLeastTargetPx = 32;
inline constexpr double kTargetPx = 44;
// No text of a small screen's layout is smaller.
inline constexpr double kLeastCompactTextPx = 11;
// The half-time board on a small screen: larger than the pitch's scale makes it, so that its
// words fit.
inline constexpr double kBoardGrowth = 1.3;

// The words on the panel's button, closed and open, and what it is called.
inline constexpr std::string_view kOpenPanel = "Menu", kClosePanel = "Close";
inline constexpr std::string_view kPanelName = "Teams, modes and options";

// Where a control stands on a small screen.
enum class Zone { Pitch, Bar, Panel };

struct CompactLayout {
  bool portrait = false;
  bool turned = false;  // the pitch turned a quarter clockwise: its left-hand goal on top
  // The pitch: the grid with its goals, mapped from twips, `pxPerTwip` to a twip.
  CompactRect pitch;
  double pxPerTwip = 0;
  double flagPx = 0;  // a flag's side, larger than the pitch's scale makes it, for a finger
  CompactRect bar, news, menu;
  // The panel over the pitch, and the height of what it holds (it scrolls where that is more).
  CompactRect panel;
  double panelHeight = 0;
  // The closing window's size; its controls stand in the bar's table, being always in view.
  double closingWidth = 0, closingHeight = 0;
  // Every control of the bar (in the window's pixels) and of the panel (in the panel's), by
  // name; a control that is in neither is on the pitch.
  std::map<std::string, CompactRect, std::less<>> inBar, inPanel;
  // Control `name`'s zone.
  Zone zoneOf(std::string_view name) const;
  // A point of the stored layout's pitch (twips) in the window's pixels.
  double pitchX(double left, double top) const;
  double pitchY(double left, double top) const;
};

// The layout of the main window on a screen of `width` x `height` CSS pixels.
CompactLayout compactLayout(double width, double height);

// The smallest side of a square of the pitch in this layout.
double squarePx(const CompactLayout& layout);

}  // namespace quorvel
