// The pictures' description: every picture the layout shows is drawn within its box, a die shows
// its face, a player's number sits on the shirt, each goal opens onto the pitch.
#include "ui/pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "events/events.h"

namespace quorvel {
namespace {

constexpr double kTwipsPerPixel = 15;

// The corners and path points of where a shape may paint (its clip, if it has one) on the
// screen, turned as the shape says.
std::vector<Point> pointsOf(const Shape& s) {
  std::vector<Point> at;
  if (s.kind == ShapeKind::Path && s.clip == ClipKind::None) {
    for (const PathStep& p : s.path) {
      if (p.step == Step::Close) continue;
      at.push_back(p.to);
      if (p.step == Step::Quad) at.push_back(p.control);
    }
  } else {
    const Box& b = s.clip == ClipKind::None ? s.box : s.clipBox;
    at = {{b.x, b.y}, {b.x + b.width, b.y}, {b.x, b.y + b.height}, {b.x + b.width, b.y + b.height}};
  }
  const double a = s.degrees * std::numbers::pi / 180;
  for (Point& p : at)
    p = {s.pivot.x + p.x * std::cos(a) - p.y * std::sin(a),
         s.pivot.y + p.x * std::sin(a) + p.y * std::cos(a)};
  return at;
}

Box boundsOf(const std::vector<Shape>& shapes) {
  double x0 = 1e300, y0 = 1e300, x1 = -1e300, y1 = -1e300;
  for (const Shape& s : shapes)
    for (const Point& p : pointsOf(s)) {
      x0 = std::min(x0, p.x), y0 = std::min(y0, p.y);
      x1 = std::max(x1, p.x), y1 = std::max(y1, p.y);
    }
  return {x0, y0, x1 - x0, y1 - y0};
}

bool within(const Box& inner, const Box& outer, double slack = 1e-9) {
  return inner.x >= outer.x - slack && inner.y >= outer.y - slack &&
         inner.x + inner.width <= outer.x + outer.width + slack &&
         inner.y + inner.height <= outer.y + outer.height + slack;
}

// Each picture of the layout, at scale 1 and at an odd scale on a fractional corner, is drawn
// inside its box: only shadows and a flag's glow may spill, by less than a quarter of the box.
TEST(Pictures, EveryPictureOfTheLayoutIsDrawnInItsBox) {
  auto f = newMatchForm(1);
  int seen = 0;
  forEachControl(*f, [&](Control& c) {
    const std::string* key = nullptr;
    if (c.kind == Kind::Picture) key = &static_cast<Picture&>(c).Image;
    if (c.kind == Kind::CommandButton) key = &static_cast<CommandButton&>(c).Image;
    if (key == nullptr || (key->empty() && c.kind == Kind::CommandButton)) return;
    for (double scale : {1.0, 1.37}) {
      const Box box{3.25, 7.5, c.Width / kTwipsPerPixel * scale, c.Height / kTwipsPerPixel * scale};
      Look look;
      look.number = "10";
      look.numberBox = {0.15, 0.25, 0.67, 0.47};
      look.hovered = true;
      const Drawing d = c.kind == Kind::Picture ? describePicture(*key, look, box)
                                                : describeButton(*key, look, {}, box);
      ASSERT_FALSE(d.shapes.empty()) << c.name << " shows '" << *key << "'";
      const Box spill{box.x - box.width / 4, box.y - box.height / 4, box.width * 1.5,
                      box.height * 1.5};
      EXPECT_TRUE(within(boundsOf(d.shapes), spill)) << c.name << " '" << *key << "'";
      ++seen;
    }
  });
  EXPECT_GT(seen, 50);
}

TEST(Pictures, ADieShowsItsFaceAndTheDimmedBlankIsDarker) {
  const Box box{2, 3, 96, 80};
  Rgba bright{};
  for (int face = 0; face <= 7; ++face) {
    const Drawing d = describePicture("die" + std::to_string(face), {}, box);
    ASSERT_GE(d.shapes.size(), 2U);
    const Shape& body = d.shapes[1];  // under it, its shadow
    std::vector<Point> pips;
    for (std::size_t k = 2; k < d.shapes.size(); ++k) {
      const Box& b = d.shapes[k].box;
      EXPECT_TRUE(within(b, body.box));
      pips.push_back({b.x + b.width / 2, b.y + b.height / 2});
    }
    ASSERT_EQ(static_cast<int>(pips.size()), face >= 1 && face <= 6 ? face : 0) << face;
    // A die's face looks the same turned half round, and no two pips share a place.
    const Point c{body.box.x + body.box.width / 2, body.box.y + body.box.height / 2};
    for (const Point& p : pips) {
      const auto opposite = std::count_if(pips.begin(), pips.end(), [&](const Point& q) {
        return std::abs(q.x + p.x - 2 * c.x) < 1e-6 && std::abs(q.y + p.y - 2 * c.y) < 1e-6;
      });
      EXPECT_EQ(opposite, 1) << face;
      EXPECT_EQ(std::count_if(pips.begin(), pips.end(),
                              [&](const Point& q) { return std::hypot(q.x - p.x, q.y - p.y) < 1; }),
                1);
    }
    if (face == 0) bright = body.fill.stops.front().colour;
    if (face == 7) {
      EXPECT_LT(lightness(body.fill.stops.front().colour), lightness(bright));
    }
  }
  // The window draws the die on its button as the blank die, kept, with the pips over it: the
  // two layers are the whole button in every state, pressed and faded too.
  for (const ButtonState state :
       {ButtonState{}, ButtonState{true, true, true}, ButtonState{false, false, false}})
    for (int face = 1; face <= 6; ++face) {
      const Drawing whole = describeButton("die" + std::to_string(face), {}, state, box);
      const Drawing blank = describeButton("die0", {}, state, box);
      const Drawing pips = describeDiePips(face, state, box);
      ASSERT_EQ(whole.shapes.size(), blank.shapes.size() + pips.shapes.size()) << face;
      for (std::size_t k = 0; k < whole.shapes.size(); ++k) {
        const Shape& layered =
            k < blank.shapes.size() ? blank.shapes[k] : pips.shapes[k - blank.shapes.size()];
        EXPECT_EQ(whole.shapes[k].box, layered.box) << face << " shape " << k;
      }
      EXPECT_EQ(pips.opacity, whole.opacity);
    }
}

// The number box of the layout, on the shirt: the number sits inside the shirt's outline, in its
// ink; the box gets its own colour only where it differs from the shirt's.
TEST(Pictures, APlayersNumberSitsOnTheShirt) {
  auto f = newMatchForm(1);
  const Picture& p = f->Player[7];
  const TextBox& t = f->Tnum[7];
  const Box box{0.5, 0.5, p.Width / kTwipsPerPixel, p.Height / kTwipsPerPixel};
  Look look;
  look.back = {200, 30, 77};
  look.number = "7";
  look.numberInk = {255, 255, 255};
  look.numberBox = {t.Left / p.Width, t.Top / p.Height, t.Width / p.Width, t.Height / p.Height};
  for (const Rgba numberBack : {look.back, Rgba{255, 255, 255}}) {
    look.numberBack = numberBack;
    const Drawing d = describePicture("player", look, box);
    const Shape& shirt = d.shapes[1];  // after its shadow
    ASSERT_EQ(shirt.kind, ShapeKind::Path);
    const Box outline = boundsOf({shirt});
    const Shape& number = d.shapes.back();
    ASSERT_EQ(number.kind, ShapeKind::Text);
    EXPECT_EQ(number.text.string, "7");
    EXPECT_EQ(number.fill.colour, look.numberInk);
    EXPECT_TRUE(within(number.box, outline));
    const bool boxed = std::any_of(d.shapes.begin(), d.shapes.end(),
                                   [](const Shape& s) { return s.kind == ShapeKind::RoundedRect; });
    EXPECT_EQ(boxed, numberBack != look.back);
  }
}

// Each goal's mouth faces the pitch: the left-hand goal's bars end at its right edge, the
// right-hand goal's at its left edge.
TEST(Pictures, EachGoalOpensOntoThePitch) {
  const Box box{10.5, 4, 30, 120};
  Look right;
  right.opensLeft = true;
  EXPECT_EQ(describePicture("goal", {}, box).shapes.back().path.front().to.x, box.x + box.width);
  EXPECT_EQ(describePicture("goal", right, box).shapes.back().path.front().to.x, box.x);
}

}  // namespace
}  // namespace quorvel
