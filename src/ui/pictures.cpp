// Every picture of the game as shapes. Each is drawn in the box it fills, its measures named as
// fractions of that box (of its height alone where the picture keeps its shape whatever its
// width: the banners and the site button). Hairlines stay at least a pixel or so wide.
#include "ui/pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "match/pitch.h"
#include "ui/shape_builder.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

constexpr double kPi = std::numbers::pi;

constexpr Rgba kChalk{250, 252, 246};
constexpr Rgba kGold{236, 196, 72};
constexpr Rgba kDeepGreen{18, 64, 30};

// ---- pitch and goals ---------------------------------------------------------------------------

// The markings, in squares of the grid.
constexpr int kHalfColumns = kPitchColumns / 2, kHalfRows = kPitchRows / 2;
constexpr double kCentreCircle = 1.25;  // radius
constexpr double kCentreSpot = 0.07;
constexpr int kPenaltyAreaTop = 2, kPenaltyAreaRows = 4, kPenaltyAreaColumns = 2;
constexpr int kGoalAreaTop = 3, kGoalAreaRows = 2;
constexpr double kMarkingWidth = 0.045;  // of a square's width
constexpr Rgba kMarking{255, 255, 255, 95};
constexpr Rgba kMarkedSpot{255, 255, 255, 150};

void pitch(Drawing& pic, const Box& r) {
  const double margin = r.width * kPitchFrameTwips / kPitchWidth;
  const Box board = inset(r, margin, margin);
  const double cw = board.width / kPitchColumns, ch = board.height / kPitchRows;

  pic.shapes.push_back(rect(r, solid(kChalk)));
  const Rgba light = toRgba(kPitchLight), dark = toRgba(kPitchDark);
  for (int row = 0; row < kPitchRows; ++row) {
    for (int col = 0; col < kPitchColumns; ++col) {
      // Each half is a chessboard of its own; both start with a light corner at the top left.
      const bool isLight = ((col % kHalfColumns) + row) % 2 == 0;
      // Edges from the grid, so that neighbouring squares share them exactly.
      const Box sq = between({board.x + col * cw, board.y + row * ch},
                             {board.x + (col + 1) * cw, board.y + (row + 1) * ch});
      pic.shapes.push_back(rect(sq, solid(isLight ? light : dark)));
    }
  }
  for (Shape& s : pic.shapes) s.crisp = true;  // the squares meet without a seam

  // Faint markings, so that it reads as a football pitch without hiding the squares.
  const Stroke chalk = pen(std::max(1.0, cw * kMarkingWidth), kMarking);
  const Point c{board.x + kHalfColumns * cw, board.y + kHalfRows * ch};
  pic.shapes.push_back(line({c.x, board.y}, {c.x, bottom(board)}, chalk));
  pic.shapes.push_back(ellipse(c, cw * kCentreCircle, ch * kCentreCircle, {}, chalk));
  pic.shapes.push_back(ellipse(c, cw * kCentreSpot, ch * kCentreSpot, solid(kMarkedSpot), chalk));
  for (int side = 0; side < 2; ++side) {
    const double x0 = side == 0 ? board.x : right(board) - kPenaltyAreaColumns * cw;
    pic.shapes.push_back(
        rect({x0, board.y + kPenaltyAreaTop * ch, kPenaltyAreaColumns * cw, kPenaltyAreaRows * ch},
             {}, chalk));
    const double g0 = side == 0 ? board.x : right(board) - cw;
    pic.shapes.push_back(
        rect({g0, board.y + kGoalAreaTop * ch, cw, kGoalAreaRows * ch}, {}, chalk));
  }
}

// The goal seen from above: a back bar and two side bars round a net, open towards the pitch.
constexpr double kPost = 0.16;         // of the width
constexpr double kNetThread = 0.03;    // of the width
constexpr double kMeshesAcross = 3.2;  // diagonal threads across the width
constexpr double kPostOutline = 1.2;   // pixels of dark edge round the white bars
constexpr Rgba kNet{236, 240, 232};
constexpr Rgba kThread{150, 160, 150};
constexpr Rgba kPostEdge{60, 60, 60};
constexpr Rgba kWhite{255, 255, 255};

void goal(Drawing& pic, const Box& r, bool opensLeft) {
  const double post = std::max(1.5, r.width * kPost);
  const Box net = inset(r, post / 2, post / 2);
  pic.shapes.push_back(rect(net, solid(kNet)));
  const Stroke thread = pen(std::max(0.6, r.width * kNetThread), kThread);
  const double mesh = r.width / kMeshesAcross;
  for (double d = -r.height; d < r.height + r.width; d += mesh) {
    for (const Shape& s : {line({net.x, net.y + d}, {right(net), net.y + d + net.width}, thread),
                           line({net.x, net.y + d + net.width}, {right(net), net.y + d}, thread)}) {
      pic.shapes.push_back(s);
      pic.shapes.back().clip = ClipKind::Rect;
      pic.shapes.back().clipBox = net;
    }
  }
  const double back = opensLeft ? right(net) : net.x;
  const double front = opensLeft ? r.x : right(r);
  const std::vector<PathStep> frame = {{Step::Move, {front, net.y}, {}},
                                       {Step::Line, {back, net.y}, {}},
                                       {Step::Line, {back, bottom(net)}, {}},
                                       {Step::Line, {front, bottom(net)}, {}}};
  pic.shapes.push_back(
      path(frame, {}, pen(post + kPostOutline, kPostEdge, Cap::Flat, Join::Miter)));
  pic.shapes.push_back(path(frame, {}, pen(post, kWhite, Cap::Flat, Join::Miter)));
}

// ---- ball, players, flags ----------------------------------------------------------------------

std::array<Point, 5> pentagon(Point c, double radius, double turnedBy) {
  std::array<Point, 5> corners{};
  for (int k = 0; k < 5; ++k) {
    const double a = turnedBy + k * 2 * kPi / 5;
    corners[k] = {c.x + radius * std::cos(a), c.y + radius * std::sin(a)};
  }
  return corners;
}

// The ball, in its radius: a shaded sphere with a black patch on top and five round its edge.
constexpr double kBallMargin = 0.03;  // of the width, between the ball and its box
constexpr double kPatch = 0.36, kEdgePatch = 0.34, kEdgePatchDistance = 1.02;
constexpr double kBallOutline = 0.09;
constexpr Point kBallShadow{0.12, 0.16};  // offset
constexpr Point kBallLight{0.35, 0.4};    // where the light falls, up and left of the centre
constexpr double kBallShade = 1.5;        // the shading's reach

void ball(Drawing& pic, const Box& area) {
  const Box r = square(area);
  const double rad = r.width / 2 - std::max(0.5, r.width * kBallMargin);
  const Point c = centre(r);
  pic.shapes.push_back(ellipse({c.x + rad * kBallShadow.x, c.y + rad * kBallShadow.y}, rad, rad,
                               solid({0, 0, 0, 60})));
  pic.shapes.push_back(
      ellipse(c, rad, rad,
              radial({c.x - rad * kBallLight.x, c.y - rad * kBallLight.y}, rad * kBallShade,
                     {{0, kWhite}, {0.6, {238, 238, 234}}, {1, {170, 172, 168}}})));
  const std::size_t first = pic.shapes.size();
  const Fill patch = solid({28, 28, 32});
  pic.shapes.push_back(polygon(pentagon(c, rad * kPatch, -kPi / 2), patch));
  for (int k = 0; k < 5; ++k) {
    const double a = -kPi / 2 + kPi / 5 + k * 2 * kPi / 5;
    const Point at{c.x + rad * kEdgePatchDistance * std::cos(a),
                   c.y + rad * kEdgePatchDistance * std::sin(a)};
    pic.shapes.push_back(polygon(pentagon(at, rad * kEdgePatch, a + kPi / 5), patch));
  }
  for (std::size_t k = first; k < pic.shapes.size(); ++k) {
    pic.shapes[k].clip = ClipKind::Ellipse;
    pic.shapes[k].clipBox = around(c, rad, rad);
  }
  pic.shapes.push_back(
      ellipse(c, rad, rad, {}, pen(std::max(0.8, rad * kBallOutline), {40, 40, 40})));
}

// A shirt seen from the front, in fractions of its box: collar, right shoulder and sleeve, hem,
// left sleeve and shoulder.
constexpr std::array<PathStep, 13> kShirt = {{
    {Step::Move, {0.37, 0.10}, {}},
    {Step::Quad, {0.63, 0.10}, {0.50, 0.24}},
    {Step::Line, {0.81, 0.15}, {}},
    {Step::Line, {0.98, 0.37}, {}},
    {Step::Line, {0.85, 0.48}, {}},
    {Step::Line, {0.79, 0.41}, {}},
    {Step::Line, {0.80, 0.91}, {}},
    {Step::Quad, {0.20, 0.91}, {0.50, 0.95}},
    {Step::Line, {0.21, 0.41}, {}},
    {Step::Line, {0.15, 0.48}, {}},
    {Step::Line, {0.02, 0.37}, {}},
    {Step::Line, {0.19, 0.15}, {}},
    {Step::Close, {}, {}},
}};
// The trim along the collar, in the number's colour.
constexpr std::array<PathStep, 2> kCollar = {{
    {Step::Move, {0.39, 0.12}, {}},
    {Step::Quad, {0.61, 0.12}, {0.50, 0.24}},
}};
constexpr Point kShirtShadow{0.035, 0.045};         // offset, of the width and the height
constexpr double kShirtOutline = 0.035;             // of the width
constexpr double kCollarTrim = 0.045;               // of the width
constexpr int kClothLight = 118, kClothDark = 112;  // per cent, top and foot of the shirt
constexpr double kNumberSize = 0.40;                // of the height
constexpr double kNumberDrop = 0.06;                // of the height: the number sits low in its box
constexpr double kNumberShadow = 0.018;             // of the width
constexpr double kNumberCorner = 0.2;               // of the number box's height

// A dark outline for a light shirt, a darker one for a dark shirt.
Rgba outlineFor(Rgba c) {
  return lightness(c) > 150 ? darker(c, 260) : darker(c, 190);
}

void shirt(Drawing& pic, const Box& r, const Look& look) {
  const double w = r.width, h = r.height;
  pic.shapes.push_back(
      path(placed(kShirt, r, w * kShirtShadow.x, h * kShirtShadow.y), solid({0, 0, 0, 70})));
  pic.shapes.push_back(
      path(placed(kShirt, r),
           downwards(r, lighter(look.back, kClothLight), darker(look.back, kClothDark)),
           pen(std::max(1.0, w * kShirtOutline), outlineFor(look.back), Cap::Round, Join::Round)));
  pic.shapes.push_back(path(placed(kCollar, r), {},
                            pen(std::max(1.0, w * kCollarTrim), look.numberInk, Cap::Round)));
}

void shirtNumber(Drawing& pic, const Box& r, const Look& look) {
  const double w = r.width, h = r.height;
  const Box box{r.x + look.numberBox.x * w, r.y + look.numberBox.y * h, look.numberBox.width * w,
                look.numberBox.height * h};
  if (look.numberBack != look.back)
    pic.shapes.push_back(roundedRect(box, box.height * kNumberCorner, solid(look.numberBack)));
  shadowedText(pic, translated(box, 0, h * kNumberDrop), look.number, look.numberInk,
               {.size = h * kNumberSize, .bold = true}, std::max(0.6, w * kNumberShadow));
}

void player(Drawing& pic, const Box& r, const Look& look) {
  shirt(pic, r, look);
  shirtNumber(pic, r, look);
}

// A chequered flag on a pole: 4 x 3 cells on a cloth that waves once across.
constexpr int kCellsAcross = 4, kCellsDown = 3;
constexpr std::size_t kEdgePoints = 8;  // along each long side of the cloth's outline
constexpr double kPoleX = 0.2, kPoleTop = 0.08, kPoleFoot = 0.95, kPoleWidth = 0.075;
constexpr double kClothRight = 0.96, kClothTop = 0.1, kClothFoot = 0.6, kWave = 0.05;
constexpr double kClothEdge = 0.035;
constexpr double kKnobY = 0.07, kKnob = 0.065;
constexpr double kGlow = 0.6;  // the glow round a flag under the mouse

void flag(Drawing& pic, const Box& r, bool hovered) {
  const double w = r.width, h = r.height;
  if (hovered) {
    const Point c = centre(r);
    pic.shapes.push_back(
        ellipse(c, w * kGlow, h * kGlow,
                radial(c, w * kGlow, {{0, {255, 240, 120, 200}}, {1, {255, 240, 120, 0}}})));
  }
  const double poleX = r.x + kPoleX * w;
  pic.shapes.push_back(line({poleX, r.y + kPoleTop * h}, {poleX, r.y + kPoleFoot * h},
                            pen(std::max(1.0, w * kPoleWidth), {50, 40, 30}, Cap::Round)));

  const double x0 = poleX, x1 = r.x + kClothRight * w, y0 = r.y + kClothTop * h,
               y1 = r.y + kClothFoot * h;
  auto at = [&](double u, double v) {
    const double x = x0 + u * (x1 - x0);
    return Point{x, y0 + v * (y1 - y0) + std::sin(u * 2 * kPi) * kWave * h};
  };
  for (int i = 0; i < kCellsAcross; ++i) {
    for (int j = 0; j < kCellsDown; ++j) {
      const double u0 = i / double(kCellsAcross), u1 = (i + 1) / double(kCellsAcross);
      const double v0 = j / double(kCellsDown), v1 = (j + 1) / double(kCellsDown);
      const Rgba ink = (i + j) % 2 == 0 ? Rgba{20, 20, 20} : Rgba{250, 250, 250};
      pic.shapes.push_back(polygon(
          std::array<Point, 4>{at(u0, v0), at(u1, v0), at(u1, v1), at(u0, v1)}, solid(ink)));
    }
  }
  std::array<Point, 2 * (kEdgePoints + 1)> edge{};
  for (std::size_t k = 0; k <= kEdgePoints; ++k) {
    const double u = static_cast<double>(k) / static_cast<double>(kEdgePoints);
    edge[k] = at(u, 0);
    edge[2 * kEdgePoints + 1 - k] = at(u, 1);
  }
  pic.shapes.push_back(polygon(edge, {}, pen(std::max(0.7, w * kClothEdge), {30, 30, 30})));
  pic.shapes.push_back(ellipse({poleX, r.y + kKnobY * h}, w * kKnob, w * kKnob, solid(kGold)));
}

// ---- dice --------------------------------------------------------------------------------------

// Where a face's pips lie, in fractions of the die: near, middle and far.
constexpr double kNear = 0.26, kMiddle = 0.5, kFar = 0.74;
struct Face {
  int pips;
  std::array<Point, 6> at;
};
constexpr std::array<Face, 7> kFaces = {{
    {0, {}},
    {1, {{{kMiddle, kMiddle}}}},
    {2, {{{kFar, kNear}, {kNear, kFar}}}},
    {3, {{{kFar, kNear}, {kMiddle, kMiddle}, {kNear, kFar}}}},
    {4, {{{kNear, kNear}, {kFar, kNear}, {kNear, kFar}, {kFar, kFar}}}},
    {5, {{{kNear, kNear}, {kFar, kNear}, {kMiddle, kMiddle}, {kNear, kFar}, {kFar, kFar}}}},
    {6,
     {{{kNear, kNear},
       {kNear, kMiddle},
       {kNear, kFar},
       {kFar, kNear},
       {kFar, kMiddle},
       {kFar, kFar}}}},
}};
constexpr double kDieMargin = 0.04;  // of the box's width, round the die
constexpr double kDieCorner = 0.18;  // of the die's side
constexpr double kDieEdge = 0.035;
constexpr Point kDieShadow{0.03, 0.04};
constexpr double kPip = 0.085, kPipShade = 0.1, kPipLight = 0.02;

struct DieColours {
  Rgba top, foot, edge;
};
constexpr DieColours kBright{{255, 255, 255}, {226, 228, 222}, {70, 74, 70}};
constexpr DieColours kDimmed{{184, 188, 180}, {150, 154, 146}, {120, 124, 116}};

// The square a die stands in within `area`.
Box dieSquare(const Box& area) {
  const double margin = area.width * kDieMargin;
  return inset(square(area), margin, margin);
}

// The die without its pips, standing in square `r`.
void dieBody(Drawing& pic, const Box& r, bool dimmed) {
  const double s = r.width;
  const DieColours& colours = dimmed ? kDimmed : kBright;
  pic.shapes.push_back(roundedRect(translated(r, s * kDieShadow.x, s * kDieShadow.y),
                                   s * kDieCorner, solid({0, 0, 0, 55})));
  pic.shapes.push_back(
      roundedRect(r, s * kDieCorner,
                  linear({r.x, r.y}, {right(r), bottom(r)}, {{0, colours.top}, {1, colours.foot}}),
                  pen(std::max(1.0, s * kDieEdge), colours.edge)));
}

void diePips(Drawing& pic, const Box& r, int face) {
  const double s = r.width;
  const Face& f = kFaces[face];
  for (int k = 0; k < f.pips; ++k) {
    const Point c{r.x + f.at[k].x * s, r.y + f.at[k].y * s};
    pic.shapes.push_back(ellipse(c, s * kPip, s * kPip,
                                 radial({c.x - s * kPipLight, c.y - s * kPipLight}, s * kPipShade,
                                        {{0, {70, 70, 76}}, {1, {12, 12, 16}}})));
  }
}

void die(Drawing& pic, const Box& area, int face, bool dimmed) {
  const Box r = dieSquare(area);
  dieBody(pic, r, dimmed);
  diePips(pic, r, face);
}

// ---- swatch ------------------------------------------------------------------------------------

constexpr double kSwatchLine = 0.06;  // of the width
constexpr double kSwatchIcon = 0.2;   // the shirt's margin, of the width and the height

void swatch(Drawing& pic, const Box& r, Rgba back) {
  // The icon is an outline; the swatch's own colour shows through everywhere else.
  pic.shapes.push_back(rect(r, solid(back)));
  const double line = std::max(1.0, r.width * kSwatchLine);
  pic.shapes.push_back(rect(inset(r, line / 2, line / 2), {}, pen(line, {30, 30, 30})));
  const Box icon = inset(r, r.width * kSwatchIcon, r.height * kSwatchIcon);
  pic.shapes.push_back(path(placed(kShirt, icon), {},
                            pen(line * 1.8, {255, 255, 255, 220}, Cap::Round, Join::Round)));
  pic.shapes.push_back(
      path(placed(kShirt, icon), {}, pen(line * 0.8, {20, 20, 20}, Cap::Round, Join::Round)));
}

// ---- banners, the site button, adverts -----------------------------------------------------
// Measured in the picture's height, so that they keep their shape at any width.

constexpr double kBannerInset = 0.03, kBannerCorner = 0.22, kBannerEdge = 0.05;

struct TitleBanner {
  Box ball{0.2, 0.18, 0.64, 0.64};  // from the left
  Box die{0.86, 0.16, 0.68, 0.68};  // x from the right
  int dieFace = 5;
  double words = 1.0;  // the words' margin at either end
  const char* name = "FREE QUORVEL";
  double nameSize = 0.5, nameFit = 0.9, nameRise = 0.12, nameShadow = 0.03, nameSpacing = 108;
  const char* motto = "soccer with a die  \u2022  play it online";
  double mottoTop = 0.58, mottoSize = 0.19;
  Rgba top{34, 110, 52}, foot = kDeepGreen, edge = kGold, ink{255, 250, 230}, mottoInk = kGold;
};
constexpr TitleBanner kTitle;

void titleBanner(Drawing& pic, const Box& r) {
  const TitleBanner& t = kTitle;
  const double h = r.height;
  const Box box = inset(r, h * kBannerInset, h * kBannerInset);
  pic.shapes.push_back(roundedRect(box, h * kBannerCorner, downwards(r, t.top, t.foot),
                                   pen(std::max(1.0, h * kBannerEdge), t.edge)));
  ball(pic, {r.x + h * t.ball.x, r.y + h * t.ball.y, h * t.ball.width, h * t.ball.height});
  die(pic, {right(r) - h * t.die.x, r.y + h * t.die.y, h * t.die.width, h * t.die.height},
      t.dieFace, false);
  const Box words = adjusted(box, h * t.words, 0, -h * t.words, 0);
  shadowedText(pic, adjusted(words, 0, -h * t.nameRise, 0, -h * t.nameRise), t.name, t.ink,
               {.size = h * t.nameSize,
                .bold = true,
                .fitWidth = words.width * t.nameFit,
                .spacing = t.nameSpacing},
               std::max(1.0, h * t.nameShadow));
  pic.shapes.push_back(
      text(adjusted(words, 0, h * t.mottoTop, 0, 0), t.motto, t.mottoInk,
           {.size = h * t.mottoSize, .italic = true, .fitWidth = words.width, .v = VAlign::Top}));
}

constexpr double kGlobeX = 0.55, kGlobe = 0.3, kGlobeLine = 0.12, kGlobeNarrow = 0.45;

void globe(Drawing& pic, Point c, double rad, Rgba ink) {
  const Stroke outline = pen(std::max(0.8, rad * kGlobeLine), ink);
  pic.shapes.push_back(ellipse(c, rad, rad, solid({120, 190, 235}), outline));
  pic.shapes.push_back(ellipse(c, rad * kGlobeNarrow, rad, {}, outline));
  pic.shapes.push_back(line({c.x - rad, c.y}, {c.x + rad, c.y}, outline));
  pic.shapes.push_back(line({c.x, c.y - rad}, {c.x, c.y + rad}, outline));
}

// A globe at the left and one line of words to its right.
struct SiteLink {
  const char* words;
  double size;    // the words' largest size
  double margin;  // right of the words
  bool framed;    // on a banner of its own
};
constexpr SiteLink kSiteBanner{"More free games on the Quorvel site", 0.3, 0.3, true};
constexpr SiteLink kSiteButton{"Quorvel on the web", 0.34, 0.2, false};
constexpr double kSiteWordsLeft = 1.0;
constexpr Rgba kParchmentTop{255, 248, 222}, kParchmentFoot{240, 226, 176};

void siteLink(Drawing& pic, const Box& r, const SiteLink& link) {
  const double h = r.height;
  if (link.framed)
    pic.shapes.push_back(roundedRect(inset(r, h * kBannerInset, h * kBannerInset),
                                     h * kBannerCorner, downwards(r, kParchmentTop, kParchmentFoot),
                                     pen(std::max(1.0, h * kBannerEdge), kDeepGreen)));
  globe(pic, {r.x + h * kGlobeX, centre(r).y}, h * kGlobe, kDeepGreen);
  const Box words = adjusted(r, h * kSiteWordsLeft, 0, -h * link.margin, 0);
  pic.shapes.push_back(text(words, link.words, kDeepGreen,
                            {.size = h * link.size, .bold = true, .fitWidth = words.width}));
}

// Two chessboards side by side on a green, the coin where they meet, a caption below.
constexpr double kBoardOfWidth = 0.42, kBoardOfHeight = 0.66;  // the boards' side: the smaller
constexpr double kBoardGap = 0.04, kBoardTop = 0.08, kBoardEdge = 0.012;
constexpr Point kBoardShadow{0.02, 0.03};
constexpr int kBoardSquares = 8;
constexpr Rgba kBoardLight{238, 224, 190}, kBoardDark{150, 100, 60};
constexpr double kCoin = 0.1;  // of a board's side
constexpr const char* kBoardsCaption =
    "Two chessboards, a coin and a die:\nplay Quorvel on your table";
constexpr double kCaptionSize = 0.065, kCaptionFit = 0.92;

void coin(Drawing& pic, Point c, double rad) {
  pic.shapes.push_back(
      ellipse({c.x + rad * 0.1, c.y + rad * 0.14}, rad, rad, solid({0, 0, 0, 80})));
  pic.shapes.push_back(
      ellipse(c, rad, rad,
              radial({c.x - rad * 0.4, c.y - rad * 0.4}, rad * 1.6,
                     {{0, {255, 236, 150}}, {0.5, {222, 176, 60}}, {1, {150, 104, 20}}}),
              pen(std::max(1.0, rad * 0.06), {130, 90, 20})));
  pic.shapes.push_back(
      ellipse(c, rad * 0.8, rad * 0.8, {}, pen(std::max(0.8, rad * 0.05), {170, 120, 30})));
  pic.shapes.push_back(
      text(around(c, rad, rad), "Q", {130, 88, 16}, {.size = rad * 1.05, .bold = true}));
}

void boardsAdvert(Drawing& pic, const Box& r) {
  const double h = r.height;
  pic.shapes.push_back(rect(r, downwards(r, {44, 86, 54}, {20, 48, 28})));
  const double side = std::min(r.width * kBoardOfWidth, h * kBoardOfHeight);
  const double gap = side * kBoardGap;
  const double middle = centre(r).x;
  const Box left{middle - side - gap / 2, r.y + h * kBoardTop, side, side};
  const Box right{middle + gap / 2, left.y, side, side};
  for (const Box& board : {left, right}) {
    pic.shapes.push_back(rect(translated(board, side * kBoardShadow.x, side * kBoardShadow.y),
                              solid({0, 0, 0, 90})));
    const double s = board.width / kBoardSquares;
    for (int i = 0; i < kBoardSquares; ++i)
      for (int j = 0; j < kBoardSquares; ++j)
        pic.shapes.push_back(rect(between({board.x + i * s, board.y + j * s},
                                          {board.x + (i + 1) * s, board.y + (j + 1) * s}),
                                  solid((i + j) % 2 == 0 ? kBoardLight : kBoardDark)));
    pic.shapes.push_back(rect(board, {}, pen(std::max(1.0, side * kBoardEdge), {90, 60, 30})));
  }
  // The coin waits on the kick-off spot, where the boards meet.
  coin(pic, {middle, left.y + side * 0.5}, side * kCoin);
  pic.shapes.push_back(
      text({r.x, bottom(left), r.width, bottom(r) - bottom(left)}, kBoardsCaption, {255, 248, 225},
           {.size = h * kCaptionSize, .bold = true, .fitWidth = r.width * kCaptionFit}));
}

// Two dice tumbling on the left, a shout on the right, a line below.
struct DiceAdvert {
  Point big{0.27, 0.42};  // the big die's centre: x of the width, y of the height
  double bigSide = 0.5;   // of the height
  double bigTurn = -12;
  Point small{0.5, 0.45};  // the small die's centre from the big one's, in big sides
  double smallSide = 0.6;  // of the big side
  double smallTurn = 18;
  Box shout{0.5, 0.12, 0.46, 0.6};  // of the width and the height
  const char* shoutWords = "Roll.\nKick.\nScore!";
  double shoutSize = 0.13;
  Box more{0, 0.78, 1, 0.18};
  const char* moreWords = "The rules of Quorvel, free to read online";
  double moreSize = 0.06, moreFit = 0.92;
};
constexpr DiceAdvert kDiceAdvert;

void diceAdvert(Drawing& pic, const Box& r) {
  const DiceAdvert& a = kDiceAdvert;
  const double w = r.width, h = r.height;
  pic.shapes.push_back(rect(
      r, linear({r.x, r.y}, {right(r), bottom(r)}, {{0, {250, 244, 222}}, {1, {226, 210, 160}}})));
  const double s = h * a.bigSide;
  const Point big{r.x + w * a.big.x, r.y + h * a.big.y};
  std::size_t first = pic.shapes.size();
  die(pic, {-s / 2, -s / 2, s, s}, 6, false);
  turn(pic, first, big, a.bigTurn);
  first = pic.shapes.size();
  const double half = s * (a.smallSide / 2);
  die(pic, {-half, -half, s * a.smallSide, s * a.smallSide}, 3, false);
  turn(pic, first, {big.x + s * a.small.x, big.y + s * a.small.y}, a.smallTurn);
  const Box shout{r.x + w * a.shout.x, r.y + h * a.shout.y, w * a.shout.width, h * a.shout.height};
  pic.shapes.push_back(
      text(shout, a.shoutWords, kDeepGreen,
           {.size = h * a.shoutSize, .bold = true, .fitWidth = shout.width, .h = HAlign::Left}));
  pic.shapes.push_back(text(
      {r.x + w * a.more.x, r.y + h * a.more.y, w * a.more.width, h * a.more.height}, a.moreWords,
      {90, 60, 20}, {.size = h * a.moreSize, .italic = true, .fitWidth = w * a.moreFit}));
}

// A control without a picture: its own colour with a soft edge.
constexpr double kPanelCorner = 4;
constexpr int kPanelEdge = 140;  // per cent darker

void panel(Drawing& pic, const Box& r, Rgba back) {
  pic.shapes.push_back(
      roundedRect(inset(r, 0.5, 0.5), kPanelCorner, solid(back), pen(1, darker(back, kPanelEdge))));
}

// The face of a button that shows a picture, and where the picture goes on it.
constexpr double kFaceEdge = 0.03, kFaceCorner = 0.12, kFaceInset = 0.08;  // of the shorter side
constexpr int kPressed = 112, kHovered = 104, kFaceShade = 106, kFaceOutline = 150;  // per cent
constexpr Rgba kFocusRing{40, 110, 200};
constexpr double kDisabledOpacity = 0.55;

// A die for the table: face `Face` (0 blank), dimmed or not.
template <int Face, bool Dimmed = false>
void dieWith(Drawing& pic, const Box& box, const Look&) {
  die(pic, box, Face, Dimmed);
}

constexpr PictureKind kPictureKinds[] = {
    {.key = "",
     .describe = [](Drawing& pic, const Box& box,
                    const Look& look) { panel(pic, box, look.back); }},
    {.key = "pitch",
     .describe = [](Drawing& pic, const Box& box, const Look&) { pitch(pic, box); },
     .coversItsRect = true},
    {.key = "goal",
     .describe = [](Drawing& pic, const Box& box,
                    const Look& look) { goal(pic, box, look.opensLeft); }},
    {.key = "ball", .describe = [](Drawing& pic, const Box& box, const Look&) { ball(pic, box); }},
    {.key = "player", .describe = player, .drawnOncePerSide = true},
    {.key = "flag",
     .describe = [](Drawing& pic, const Box& box,
                    const Look& look) { flag(pic, box, look.hovered); },
     .bare = true},
    {.key = "swatch",
     .describe = [](Drawing& pic, const Box& box,
                    const Look& look) { swatch(pic, box, look.back); },
     .coversItsRect = true},
    {.key = "banner-title",
     .describe = [](Drawing& pic, const Box& box, const Look&) { titleBanner(pic, box); }},
    {.key = "banner-site",
     .describe = [](Drawing& pic, const Box& box,
                    const Look&) { siteLink(pic, box, kSiteBanner); }},
    {.key = "site",
     .describe = [](Drawing& pic, const Box& box,
                    const Look&) { siteLink(pic, box, kSiteButton); }},
    {.key = "advert1",
     .describe = [](Drawing& pic, const Box& box, const Look&) { boardsAdvert(pic, box); },
     .coversItsRect = true},
    {.key = "advert2",
     .describe = [](Drawing& pic, const Box& box, const Look&) { diceAdvert(pic, box); },
     .coversItsRect = true},
    {.key = "die0", .describe = dieWith<0>},
    {.key = "die1", .describe = dieWith<1>, .dieFace = 1},
    {.key = "die2", .describe = dieWith<2>, .dieFace = 2},
    {.key = "die3", .describe = dieWith<3>, .dieFace = 3},
    {.key = "die4", .describe = dieWith<4>, .dieFace = 4},
    {.key = "die5", .describe = dieWith<5>, .dieFace = 5},
    {.key = "die6", .describe = dieWith<6>, .dieFace = 6},
    {.key = "die7", .describe = dieWith<0, true>},  // the 50/50 dice at rest
};

}  // namespace

const PictureKind* pictureKind(std::string_view key) {
  for (const PictureKind& kind : kPictureKinds)
    if (kind.key == key) return &kind;
  return nullptr;
}

bool coversItsRect(std::string_view key) {
  const PictureKind* kind = pictureKind(key);
  return kind != nullptr && kind->coversItsRect;
}

int dieFaceOf(std::string_view key) {
  const PictureKind* kind = pictureKind(key);
  return kind != nullptr ? kind->dieFace : 0;
}

Drawing describePicture(std::string_view key, const Look& look, const Box& box) {
  Drawing pic;
  if (const PictureKind* kind = pictureKind(key)) kind->describe(pic, box, look);
  return pic;
}

Drawing describeShirt(const Look& look, const Box& box) {
  Drawing pic;
  shirt(pic, box, look);
  return pic;
}

Drawing describeShirtNumber(const Look& look, const Box& box) {
  Drawing pic;
  shirtNumber(pic, box, look);
  return pic;
}

bool bareButton(std::string_view key) {
  const PictureKind* kind = pictureKind(key);
  return kind != nullptr && kind->bare;
}

namespace {

double faceEdge(const Box& box) {
  return std::max(1.0, std::min(box.width, box.height) * kFaceEdge);
}

// Where a button's picture stands on its face: pressed, it sinks by the face's edge.
Box artOnFace(const Box& box, const ButtonState& state) {
  const double shorter = std::min(box.width, box.height);
  const Box art = inset(box, shorter * kFaceInset, shorter * kFaceInset);
  return state.down ? translated(art, 0, faceEdge(box)) : art;
}

}  // namespace

Drawing describeDiePips(int face, const ButtonState& state, const Box& box) {
  Drawing pic;
  diePips(pic, dieSquare(artOnFace(box, state)), face);
  if (!state.enabled) pic.opacity = kDisabledOpacity;
  return pic;
}

Drawing describeButton(std::string_view key, const Look& look, const ButtonState& state,
                       const Box& box) {
  if (bareButton(key)) {
    Drawing pic = describePicture(key, look, state.down ? translated(box, 0.5, 0.5) : box);
    if (!state.enabled) pic.opacity = kDisabledOpacity;
    return pic;
  }
  const double shorter = std::min(box.width, box.height);
  const double edge = faceEdge(box);
  Rgba face = look.back;
  if (state.down)
    face = darker(face, kPressed);
  else if (look.hovered)
    face = lighter(face, kHovered);
  Drawing pic = describePicture(key, look, artOnFace(box, state));
  pic.shapes.insert(
      pic.shapes.begin(),
      roundedRect(inset(box, edge / 2, edge / 2), shorter * kFaceCorner,
                  downwards(box, lighter(face, kFaceShade), darker(face, kFaceShade)),
                  pen(edge, state.focused ? kFocusRing : darker(face, kFaceOutline))));
  if (!state.enabled) pic.opacity = kDisabledOpacity;
  return pic;
}

}  // namespace quorvel
