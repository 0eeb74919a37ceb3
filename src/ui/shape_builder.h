// The words the pictures are built from: boxes moved and cut, fills and pens, and the shapes of
// shapes.h made from them. For the pictures of this folder only.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "ui/shapes.h"

namespace quorvel {

// ---- boxes -------------------------------------------------------------------------------------

// The same rectangle with each edge moved (as a rectangle's adjusted() does).
inline Box adjusted(const Box& b, double left, double top, double right, double bottom) {
  return {b.x + left, b.y + top, b.width + right - left, b.height + bottom - top};
}
inline Box inset(const Box& b, double dx, double dy) {
  return adjusted(b, dx, dy, -dx, -dy);
}
inline Box translated(const Box& b, double dx, double dy) {
  return {b.x + dx, b.y + dy, b.width, b.height};
}
inline Box between(Point topLeft, Point bottomRight) {
  return {topLeft.x, topLeft.y, bottomRight.x - topLeft.x, bottomRight.y - topLeft.y};
}
inline Point centre(const Box& b) {
  return {b.x + b.width / 2, b.y + b.height / 2};
}
inline double right(const Box& b) {
  return b.x + b.width;
}
inline double bottom(const Box& b) {
  return b.y + b.height;
}
// The largest square centred in `b`.
inline Box square(const Box& b) {
  const double side = std::min(b.width, b.height);
  const Point c = centre(b);
  return {c.x - side / 2, c.y - side / 2, side, side};
}
// The box of the ellipse with centre `c` and radii `rx`, `ry`.
inline Box around(Point c, double rx, double ry) {
  return {c.x - rx, c.y - ry, 2 * rx, 2 * ry};
}

// ---- fills and pens ----------------------------------------------------------------------------

Fill solid(Rgba c);
Fill linear(Point from, Point to, std::vector<Stop> stops);
Fill radial(Point centre, double radius, std::vector<Stop> stops);
// From the top of `b` to its bottom.
Fill downwards(const Box& b, Rgba top, Rgba foot);
Stroke pen(double width, Rgba colour, Cap cap = Cap::Square, Join join = Join::Bevel);

// ---- shapes ------------------------------------------------------------------------------------

Shape rect(const Box& b, Fill fill, Stroke stroke = {});
Shape roundedRect(const Box& b, double radius, Fill fill, Stroke stroke = {});
Shape ellipse(Point c, double rx, double ry, Fill fill, Stroke stroke = {});
Shape path(std::vector<PathStep> steps, Fill fill, Stroke stroke = {});
Shape line(Point from, Point to, Stroke stroke);

template <std::size_t N>
Shape polygon(const std::array<Point, N>& corners, Fill fill, Stroke stroke = {}) {
  std::vector<PathStep> steps;
  steps.reserve(N + 1);
  for (const Point& p : corners) steps.push_back({steps.empty() ? Step::Move : Step::Line, p, {}});
  steps.push_back({Step::Close, {}, {}});
  return path(std::move(steps), std::move(fill), stroke);
}

inline constexpr double kNoFit = -std::numeric_limits<double>::infinity();

// How a text is set: `fitWidth` left at kNoFit never shrinks it, a width of 0 or less leaves
// no room and sets it at the smallest size.
struct Type {
  double size;
  bool bold = false;
  bool italic = false;
  double fitWidth = kNoFit;
  HAlign h = HAlign::Centre;
  VAlign v = VAlign::Centre;
  double spacing = 100;
};
Shape text(const Box& b, std::string words, Rgba ink, const Type& type);
// A text with a soft shadow `offset` below and right of it, to read on a busy picture.
void shadowedText(Drawing& pic, const Box& b, const std::string& words, Rgba ink, const Type& type,
                  double offset);

// Moves every shape from `first` on to turn `degrees` about `pivot`.
void turn(Drawing& pic, std::size_t first, Point pivot, double degrees);

// A path given in fractions of a box, placed in `b` and moved by (dx, dy).
template <std::size_t N>
std::vector<PathStep> placed(const std::array<PathStep, N>& steps, const Box& b, double dx = 0,
                             double dy = 0) {
  auto at = [&](Point p) { return Point{b.x + p.x * b.width + dx, b.y + p.y * b.height + dy}; };
  std::vector<PathStep> out;
  out.reserve(N);
  for (const PathStep& s : steps) out.push_back({s.step, at(s.to), at(s.control)});
  return out;
}

}  // namespace quorvel
