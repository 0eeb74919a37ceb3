#include "ui/shape_builder.h"

namespace quorvel {

namespace {

constexpr Rgba kShadow{0, 0, 0, 110};  // under a text that must read on a picture

Shape shape(ShapeKind kind, const Box& box, Fill fill, Stroke stroke) {
  Shape s;
  s.kind = kind;
  s.box = box;
  s.fill = std::move(fill);
  s.stroke = stroke;
  return s;
}

}  // namespace

Fill solid(Rgba c) {
  Fill f;
  f.kind = FillKind::Solid;
  f.colour = c;
  return f;
}
Fill linear(Point from, Point to, std::vector<Stop> stops) {
  Fill f;
  f.kind = FillKind::Linear;
  f.from = from;
  f.to = to;
  f.stops = std::move(stops);
  return f;
}
Fill radial(Point centre, double radius, std::vector<Stop> stops) {
  Fill f;
  f.kind = FillKind::Radial;
  f.from = centre;
  f.radius = radius;
  f.stops = std::move(stops);
  return f;
}
Fill downwards(const Box& b, Rgba top, Rgba foot) {
  return linear({b.x, b.y}, {b.x, bottom(b)}, {{0, top}, {1, foot}});
}
Stroke pen(double width, Rgba colour, Cap cap, Join join) {
  return {width, colour, cap, join};
}

Shape rect(const Box& b, Fill fill, Stroke stroke) {
  return shape(ShapeKind::Rect, b, std::move(fill), stroke);
}
Shape roundedRect(const Box& b, double radius, Fill fill, Stroke stroke) {
  Shape s = shape(ShapeKind::RoundedRect, b, std::move(fill), stroke);
  s.radius = radius;
  return s;
}
Shape ellipse(Point c, double rx, double ry, Fill fill, Stroke stroke) {
  return shape(ShapeKind::Ellipse, around(c, rx, ry), std::move(fill), stroke);
}
Shape path(std::vector<PathStep> steps, Fill fill, Stroke stroke) {
  Shape s = shape(ShapeKind::Path, {}, std::move(fill), stroke);
  s.path = std::move(steps);
  return s;
}
Shape line(Point from, Point to, Stroke stroke) {
  return path({{Step::Move, from, {}}, {Step::Line, to, {}}}, {}, stroke);
}

Shape text(const Box& b, std::string words, Rgba ink, const Type& type) {
  Shape s = shape(ShapeKind::Text, b, solid(ink), {});
  s.text = {std::move(words),
            type.size,
            type.bold,
            type.italic,
            type.h,
            type.v,
            std::max(0.0, type.fitWidth),
            type.spacing};
  if (type.fitWidth != kNoFit && type.fitWidth <= 0) s.text.size = 1;  // no room: the smallest
  return s;
}
void shadowedText(Drawing& pic, const Box& b, const std::string& words, Rgba ink, const Type& type,
                  double offset) {
  pic.shapes.push_back(text(translated(b, offset, offset), words, kShadow, type));
  pic.shapes.push_back(text(b, words, ink, type));
}

void turn(Drawing& pic, std::size_t first, Point pivot, double degrees) {
  for (std::size_t k = first; k < pic.shapes.size(); ++k) {
    pic.shapes[k].pivot = pivot;
    pic.shapes[k].degrees = degrees;
  }
}

}  // namespace quorvel
