// How the stored layout is presented, as plain data a window reads: the two windows' client
// areas, the pitch picture's grid (from match/pitch.h), which way each goal opens, and the text
// style of every control, looked up by the control's name. Positions and texts are set by
// applyLayout (ui.h).
#pragma once

#include <string_view>

#include "match/pitch.h"  // the pitch's grid, which the window draws

namespace quorvel {

// A window's client area in twips (15 to a pixel at scale 1).
struct ClientSize {
  double width;
  double height;
};
inline constexpr ClientSize kMatchClient{18720, 11520};
// The closing window: its pictures and buttons with a margin all round.
inline constexpr ClientSize kLinksClient{6240, 4440};

// Where the main window tells the match in words, as it is announced to assistive
// technology: below the blurb in the column of controls, in kNewsStyle.
struct Area {
  double left, top, width, height;
};
inline constexpr Area kNewsArea{15360, 10440, 3240, 1020};

// Seen from above, a goal opens towards the pitch.
enum class Mouth { OpensRight, OpensLeft };
// The way goal picture `name` opens; any other name opens right.
Mouth goalMouth(std::string_view name);

enum class Align { Centre, Left };

struct TextStyle {
  double px;  // pixel size at scale 1
  bool bold = false;
  bool italic = false;
  Align align = Align::Centre;  // where a text box sets its text
};
// The news line's text: small and slanted, as the keypad hint.
inline constexpr TextStyle kNewsStyle{12, false, true};
// The style of control `name`'s text.
TextStyle textStyleFor(std::string_view name);

}  // namespace quorvel
