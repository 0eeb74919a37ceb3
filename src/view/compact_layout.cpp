#include "view/compact_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

#include "match/pitch.h"

namespace quorvel {

namespace {

// A control's cells in a grid: its first column and row, and how many of each it spans; a
// square one (a die) is as large a square as they hold, centred in them.
struct Slot {
  std::string_view name;
  int col, row, cols = 1, rows = 1;
  bool square = false;
};

// The panel's button, which is no control of the form: the page draws it where the bar says.
constexpr std::string_view kMenu = "menu";

// The bar above a portrait pitch, eight columns by two rows: the die, each side's 50/50 die
// beside its score, the clock with its caption under it, Start and the panel's button.
constexpr Slot kPortraitBar[] = {
    {"Cdice", 0, 0, 2, 2, true}, {"CDcontest(1)", 2, 0, 1, 1, true},
    {"Goals(1)", 3, 0},          {"TXtim", 4, 0, 2, 1},
    {"Goals(2)", 6, 0},          {"CDcontest(2)", 7, 0, 1, 1, true},
    {"CDgo", 2, 1, 2, 1},        {"Text2", 4, 1, 2, 1},
    {kMenu, 6, 1, 2, 1},
};
constexpr int kPortraitBarCols = 8, kPortraitBarRows = 2;

// The bar beside a landscape pitch, two columns by eight rows, the same controls top down.
constexpr Slot kLandscapeBar[] = {
    {"Goals(1)", 0, 0},
    {"Goals(2)", 1, 0},
    {"Text2", 0, 1, 2, 1},
    {"TXtim", 0, 2, 2, 1},
    {"Cdice", 0, 3, 2, 2, true},
    {"CDcontest(1)", 0, 5, 1, 1, true},
    {"CDcontest(2)", 1, 5, 1, 1, true},
    {"CDgo", 0, 6, 2, 1},
    {kMenu, 0, 7, 2, 1},
};
constexpr int kLandscapeBarCols = 2, kLandscapeBarRows = 8;

// The panel's blocks, each eight columns wide; a frame's cells hold what stands in it.
constexpr int kBlockCols = 8;
constexpr Slot kLeftTeam[] = {
    {"Team(1)", 0, 0, 6, 1},   {"RainB(0)", 6, 0},        {"RainB(1)", 7, 0},
    {"Poses(1)", 0, 1, 4, 1},  {"CHsub(1)", 4, 1, 2, 1},  {"CHsub(0)", 6, 1, 2, 1},
    {"Fra1", 0, 2, 8, 2},      {"Text1(0)", 0, 2, 2, 1},  {"OPForm(0)", 2, 2, 2, 1},
    {"OPForm(1)", 4, 2, 2, 1}, {"OPForm(2)", 6, 2, 2, 1}, {"Text1(2)", 0, 3, 2, 1},
    {"OPForm(3)", 2, 3, 2, 1}, {"OPForm(4)", 4, 3, 2, 1}, {"GreyGreen", 6, 3, 2, 1},
};
constexpr Slot kRightTeam[] = {
    {"Team(2)", 0, 0, 6, 1},    {"RainB(3)", 6, 0},         {"RainB(2)", 7, 0},
    {"Poses(2)", 0, 1, 4, 1},   {"CHsub(2)", 4, 1, 2, 1},   {"CHsub(3)", 6, 1, 2, 1},
    {"Fra2", 0, 2, 8, 2},       {"Text1(1)", 0, 2, 2, 1},   {"OPForm(10)", 2, 2, 2, 1},
    {"OPForm(11)", 4, 2, 2, 1}, {"OPForm(12)", 6, 2, 2, 1}, {"OPForm(13)", 2, 3, 2, 1},
    {"OPForm(14)", 4, 3, 2, 1},
};
constexpr Slot kModes[] = {
    {"FrameMode", 0, 0, 8, 4},
    {"OpMode(0)", 0, 0, 4, 1},
    {"OpMode(1)", 4, 0, 4, 1},
    {"OpMode(2)", 0, 1, 8, 1},
    {"Hai", 0, 2, 5, 1},
    {"Text3", 5, 2, 3, 1},
    {"Vai", 0, 3, 5, 1},
    {"Text4", 5, 3, 3, 1},
    {"TXai", 0, 4, 4, 1},
    {"CDhm", 4, 4, 2, 1},
    {"Chp", 6, 4},
    {"TXq", 7, 4},
};
constexpr Slot kOptions[] = {
    {"Ch50", 0, 0, 4, 1},
    {"ChAuto", 4, 0, 4, 1},
    {"ChtenFIF", 0, 1, 4, 1},
    {"Chq", 4, 1, 4, 1},
};
constexpr Slot kNames[] = {
    {"TXoner", 0, 0, 8, 1},    {"cdr", 0, 1, 4, 1},       {"Frame2", 4, 1, 4, 1},
    {"OpName(0)", 4, 1, 2, 1}, {"OpName(1)", 6, 1, 2, 1},
};
// Pip and Pdat, never shown, keep the cells beside the second banner.
constexpr Slot kHelpAndLinks[] = {
    {"CDhelp", 0, 0, 4, 1},
    {"CDend", 4, 0, 4, 1},
    {"Command1", 0, 1, 5, 1},
    {"TXver", 5, 1, 3, 1},
    {"Banner(0)", 0, 2, 8, 1},
    {"Banner(1)", 1, 3, 6, 1},
    {"Pip", 0, 3},
    {"Pdat", 7, 3},
    {"TXstart", 0, 4, 8, 1},
    {"Lablurb", 0, 5, 8, 2},
};
struct Block {
  std::span<const Slot> slots;
  int rows;
};
constexpr std::array<Block, 6> kBlocks{
    {{kLeftTeam, 4}, {kRightTeam, 4}, {kModes, 5}, {kOptions, 2}, {kNames, 2}, {kHelpAndLinks, 7}}};

// Room at the screen's edges and between blocks; each control keeps a pixel from its cell's
// edges, so that neighbours never touch.
constexpr double kMargin = 4;
constexpr double kBlockGap = 8;
constexpr double kInset = 1;
// What stands in a frame keeps clear of its border.
constexpr double kFrameInset = 2;
// The least width of a column of the panel's blocks.
constexpr double kPanelColumnPx = 280;
// The news line under the pitch: two lines of its type.
constexpr double kNewsPx = 36;
// The stored layout's pitch, with its goals.
constexpr double kPitchLeft = kLeftGoalLeft, kPitchTop = kGridTop - kPitchFrameTwips;
constexpr double kPitchTwipsWide = kRightGoalLeft + kGoalWidth - kLeftGoalLeft;
constexpr double kPitchTwipsHigh = kPitchHeight;

CompactRect cell(double x0, double y0, double cw, double rh, const Slot& s) {
  CompactRect r{x0 + s.col * cw + kInset, y0 + s.row * rh + kInset, s.cols * cw - 2 * kInset,
                s.rows * rh - 2 * kInset};
  if (s.square) {
    const double side = std::min(r.width, r.height);
    r = {r.x + (r.width - side) / 2, r.y + (r.height - side) / 2, side, side};
  }
  return r;
}

template <typename Slots>
void fillBar(CompactLayout& l, const Slots& slots, double x0, double y0, double cw, double rh) {
  for (const Slot& s : slots) {
    const CompactRect r = cell(x0, y0, cw, rh, s);
    if (s.name == kMenu)
      l.menu = r;
    else
      l.inBar.emplace(s.name, r);
  }
}

// The pitch as large as `area` allows, turned or not, centred in it.
void fitPitch(CompactLayout& l, const CompactRect& area, bool mayTurn) {
  const double flat = std::min(area.width / kPitchTwipsWide, area.height / kPitchTwipsHigh);
  const double turned = std::min(area.width / kPitchTwipsHigh, area.height / kPitchTwipsWide);
  l.turned = mayTurn && turned > flat;
  l.pxPerTwip = std::max(flat, mayTurn ? turned : 0);
  const double w = (l.turned ? kPitchTwipsHigh : kPitchTwipsWide) * l.pxPerTwip;
  const double h = (l.turned ? kPitchTwipsWide : kPitchTwipsHigh) * l.pxPerTwip;
  l.pitch = {std::round(area.x + (area.width - w) / 2), std::round(area.y + (area.height - h) / 2),
             w, h};
  // As large as a finger needs, never larger than a square, so that neighbours never meet.
  const double square = kSquareTwips * l.pxPerTwip;
  l.flagPx = std::floor(std::max(kLeastTargetPx, std::min(kTargetPx, square - 2)));
}

// The panel's blocks in as many columns as its width takes, each column as short as can be.
void fillPanel(CompactLayout& l) {
  const double usable = l.panel.width - 2 * kMargin;
  const int columns = std::clamp(static_cast<int>((usable + kBlockGap) / kPanelColumnPx), 1, 3);
  // The split of the blocks, in order, into `columns` runs whose longest is shortest.
  const int n = static_cast<int>(kBlocks.size());
  std::vector<int> bestCuts;
  int bestRows = 1 << 30;
  const auto rowsOf = [](int from, int to) {
    int r = 0;
    for (int b = from; b < to; ++b) r += kBlocks[static_cast<std::size_t>(b)].rows;
    return r;
  };
  for (int mask = 0; mask < (1 << (n - 1)); ++mask) {
    std::vector<int> cuts{0};
    for (int b = 1; b < n; ++b)
      if ((mask >> (b - 1)) & 1) cuts.push_back(b);
    if (static_cast<int>(cuts.size()) != columns) continue;
    cuts.push_back(n);
    int longest = 0;
    for (std::size_t c = 0; c + 1 < cuts.size(); ++c)
      longest = std::max(longest, rowsOf(cuts[c], cuts[c + 1]) * 100 +
                                      (cuts[c + 1] - cuts[c] - 1) * static_cast<int>(kBlockGap));
    if (longest < bestRows) bestRows = longest, bestCuts = cuts;
  }
  int tallest = 0, mostGaps = 0;
  for (std::size_t c = 0; c + 1 < bestCuts.size(); ++c) {
    tallest = std::max(tallest, rowsOf(bestCuts[c], bestCuts[c + 1]));
    mostGaps = std::max(mostGaps, bestCuts[c + 1] - bestCuts[c] - 1);
  }
  const double columnWidth = (usable - (columns - 1) * kBlockGap) / columns;
  const double cw = columnWidth / kBlockCols;
  const double fits = (l.panel.height - 2 * kMargin - mostGaps * kBlockGap) / tallest;
  const double least = kLeastTargetPx + 2 * (kInset + kFrameInset);
  const double rh = std::clamp(fits, least, kTargetPx + 2 * kInset);
  for (std::size_t c = 0; c + 1 < bestCuts.size(); ++c) {
    const double x0 = kMargin + static_cast<double>(c) * (columnWidth + kBlockGap);
    double y0 = kMargin;
    for (int b = bestCuts[c]; b < bestCuts[c + 1]; ++b) {
      const Block& block = kBlocks[static_cast<std::size_t>(b)];
      // A frame (the tables list it before what stands in it) and its cells.
      CompactRect frame;
      for (const Slot& s : block.slots) {
        CompactRect r = cell(x0, y0, cw, rh, s);
        const bool inFrame = r.x >= frame.x && r.y >= frame.y && r.right() <= frame.right() &&
                             r.bottom() <= frame.bottom();
        if (s.name.starts_with("Fra"))
          frame = r;
        else if (inFrame) {
          r = {r.x + kFrameInset, r.y + kFrameInset, r.width - 2 * kFrameInset,
               r.height - 2 * kFrameInset};
        }
        l.inPanel.emplace(s.name, r);
      }
      y0 += block.rows * rh + kBlockGap;
    }
  }
  l.panelHeight = 2 * kMargin + tallest * rh + mostGaps * kBlockGap;
}

// The closing window: its advert as large as fits, the two buttons in a row under it.
void fillClosing(CompactLayout& l, double width, double height) {
  constexpr double kMost = 480, kAdvert = 3600.0 / 6000, kButtons = kTargetPx + 2 * kInset;
  const double w = std::min(width - 4 * kMargin, kMost);
  const double advertHigh =
      std::min((w - 2 * kMargin) * kAdvert, height - 4 * kMargin - 3 * kMargin - kButtons);
  const double advertWide = advertHigh / kAdvert;
  const CompactRect advert{(w - advertWide) / 2, kMargin, advertWide, advertHigh};
  l.inBar.emplace("LinksForm.Picture1", advert);
  l.inBar.emplace("LinksForm.Picture2", advert);
  const double y = advert.bottom() + kMargin, site = std::round((w - 2 * kMargin) * 0.68);
  l.inBar.emplace("LinksForm.Command1", CompactRect{kMargin, y, site - kInset, kButtons});
  l.inBar.emplace("LinksForm.CDend", CompactRect{kMargin + site + kInset, y,
                                                 w - 2 * kMargin - site - kInset, kButtons});
  l.closingWidth = w;
  l.closingHeight = y + kButtons + kMargin;
}

}  // namespace

Zone CompactLayout::zoneOf(std::string_view name) const {
  if (inBar.find(name) != inBar.end()) return Zone::Bar;
  if (inPanel.find(name) != inPanel.end()) return Zone::Panel;
  return Zone::Pitch;
}

double CompactLayout::pitchX(double left, double top) const {
  return pitch.x + (turned ? kPitchTop + kPitchTwipsHigh - top : left - kPitchLeft) * pxPerTwip;
}

double CompactLayout::pitchY(double left, double top) const {
  return pitch.y + (turned ? left - kPitchLeft : top - kPitchTop) * pxPerTwip;
}

double squarePx(const CompactLayout& layout) {
  return kSquareTwips * layout.pxPerTwip;
}

CompactLayout compactLayout(double width, double height) {
  CompactLayout l;
  l.portrait = height > width;
  CompactRect area;
  if (l.portrait) {
    const double cw = (width - 2 * kMargin) / kPortraitBarCols;
    const double rh = std::clamp(cw, kLeastTargetPx + 2 * kInset, kTargetPx + 2 * kInset);
    l.bar = {kMargin, kMargin, width - 2 * kMargin, rh * kPortraitBarRows};
    fillBar(l, kPortraitBar, l.bar.x, l.bar.y, cw, rh);
    area = {0, l.bar.bottom() + kMargin, width, height - l.bar.bottom() - 2 * kMargin - kNewsPx};
    l.panel = {0, l.bar.bottom() + kMargin, width, height - l.bar.bottom() - kMargin};
  } else {
    const double rh =
        std::clamp((height - 2 * kMargin) / kLandscapeBarRows, kLeastTargetPx + 2 * kInset, 48.0);
    const double cw = std::max(rh, 56.0);
    l.bar = {width - kMargin - cw * kLandscapeBarCols, kMargin, cw * kLandscapeBarCols,
             rh * kLandscapeBarRows};
    fillBar(l, kLandscapeBar, l.bar.x, l.bar.y, cw, rh);
    area = {0, 0, l.bar.x - kMargin, height - kNewsPx - kMargin};
    l.panel = {0, 0, l.bar.x - kMargin, height};
  }
  fitPitch(l, area, l.portrait);
  l.news = {l.pitch.x, area.bottom() + kMargin / 2, l.pitch.width, kNewsPx};
  fillPanel(l);
  fillClosing(l, width, height);
  return l;
}

}  // namespace quorvel
