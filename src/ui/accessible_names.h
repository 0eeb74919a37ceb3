// The words a screen reader speaks for the window's controls: what each control is, the
// directions of the flags and the squares they reach. The window's accessible names come from
// here, and so will the page's labels.
#pragma once

#include <string>
#include <string_view>

#include "match/match_form.h"

namespace quorvel {

// Flag direction 0..7, clockwise from straight up: "Up", "Up-right", "Right", ...
std::string_view directionName(int d);
// A square of the pitch: "column 9 row 3".
std::string squareName(double col, double row);
// "Left team" or "Right team" for side 1 or 2.
std::string_view sideName(int side);
// What flag d offers after the last roll: "Up-right, to column 9 row 3", or "Right, a shot at
// goal".
std::string flagName(const MatchForm& f, int d);
// "Rovers number 7" for player 1..22, by the name its team plays under now.
std::string playerName(const MatchForm& f, int player);

// What holds the players and the ball, where a view groups them.
inline constexpr std::string_view kPiecesName = "Players and ball";

// The name control `c` reports to assistive technology: its caption where its caption says
// what it is, else what it is and, for a picture, what it shows now. Empty for a control that
// shows nothing and cannot be used (a blank box).
std::string accessibleName(const MatchForm& f, const Control& c);

}  // namespace quorvel
