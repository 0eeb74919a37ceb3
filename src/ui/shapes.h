// A picture as plain data: a list of shapes that any painter draws the same way.
// Coordinates are the painter's pixels (x right, y down), for the box the picture was described
// for. Shapes are painted in order, each filled, then stroked (miter limit 2), inside its clip,
// moved to its pivot and turned if it says so. A gradient's stops run from 0 to 1 along
// `from`-`to` (linear) or out from `from` to `radius` (radial), the end colours padding beyond.
// A text is set in its box by its alignment, one line per '\n'; Text says how it fits a width.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorvel {

struct Rgba {
  std::uint8_t r = 0, g = 0, b = 0, a = 255;
  friend constexpr bool operator==(Rgba, Rgba) = default;
};

struct Point {
  double x = 0, y = 0;
};

// A rectangle: its top-left corner and its size.
struct Box {
  double x = 0, y = 0, width = 0, height = 0;
  friend constexpr bool operator==(const Box&, const Box&) = default;
};

struct Stop {
  double at = 0;  // 0 at the gradient's start, 1 at its end
  Rgba colour;
};

enum class FillKind { None, Solid, Linear, Radial };

struct Fill {
  FillKind kind = FillKind::None;
  Rgba colour;        // Solid, and a Text's ink
  Point from;         // Linear: where stop 0 lies; Radial: the centre (stop 0)
  Point to;           // Linear: where stop 1 lies
  double radius = 0;  // Radial: where stop 1 lies
  std::vector<Stop> stops;
};

enum class Cap { Flat, Square, Round };  // Flat ends at the end point; Square goes half a width on
enum class Join { Miter, Bevel, Round };

// A line along the shape's edge, centred on it; width 0 draws none.
struct Stroke {
  double width = 0;
  Rgba colour;
  Cap cap = Cap::Square;
  Join join = Join::Bevel;
};

enum class Step { Move, Line, Quad, Close };

// One step of a path: to `to`, along a quadratic curve pulled towards `control` for Quad.
struct PathStep {
  Step step = Step::Line;
  Point to;
  Point control;
};

enum class HAlign { Left, Centre, Right };
enum class VAlign { Top, Centre, Bottom };

inline constexpr const char* kPictureFont = "DejaVu Sans";

// The font's pixel size is `size` rounded to a whole pixel (at least 1). When `fitWidth` is more
// than 0 and the widest line at that size is wider than it, the size becomes
// size * fitWidth / widest, rounded down (at least 1). Then each letter's advance is widened to
// `spacing` per cent (100 leaves it). Lines follow each other at the font's line spacing; the
// block of lines is aligned in the box as a whole, each line by `h` within it.
struct Text {
  std::string string;  // UTF-8
  double size = 0;
  bool bold = false;
  bool italic = false;
  HAlign h = HAlign::Centre;
  VAlign v = VAlign::Centre;
  double fitWidth = 0;
  double spacing = 100;
};

enum class ShapeKind { Rect, RoundedRect, Ellipse, Path, Text };
enum class ClipKind { None, Rect, Ellipse };

struct Shape {
  ShapeKind kind = ShapeKind::Rect;
  Box box;                     // Rect, RoundedRect, Ellipse (its bounding box), Text (its room)
  double radius = 0;           // RoundedRect: its corners' radius
  std::vector<PathStep> path;  // Path; a Move starts a new part, Close ends one
  Text text;                   // Text, drawn in fill.colour
  Fill fill;
  Stroke stroke;
  bool crisp = false;  // edges on whole pixels, not anti-aliased (squares that meet)
  ClipKind clip = ClipKind::None;
  Box clipBox;         // where the shape may paint: a rectangle or the ellipse in it
  Point pivot;         // the shape's (and its clip's) origin: (0, 0) leaves it
  double degrees = 0;  // turned about the pivot, clockwise on the screen
};

struct Drawing {
  std::vector<Shape> shapes;
  double opacity = 1;  // of each shape as it is painted (a disabled button is faded)
};

}  // namespace quorvel
