#include "view/tab_order.h"

#include <algorithm>

#include "view/form_view.h"

namespace quorvel {

namespace {

struct Rect {
  double left, top, width, height;
  bool operator==(const Rect&) const = default;
};

struct TabStop {
  const Control* c;
  Rect block, own;  // its outermost frame's place (or its own), and its own
};

Rect absolute(const Control& c) {
  Rect r{c.Left, c.Top, c.Width, c.Height};
  for (const Control* p = c.parent; p != nullptr; p = p->parent) {
    r.left += p->Left;
    r.top += p->Top;
  }
  return r;
}

// Rows: a stop whose top lies in the upper half of the row's first stop joins that row.
void readingOrder(std::vector<TabStop>& stops, Rect TabStop::*rect) {
  std::stable_sort(stops.begin(), stops.end(), [rect](const TabStop& a, const TabStop& b) {
    return (a.*rect).top < (b.*rect).top;
  });
  for (auto row = stops.begin(); row != stops.end();) {
    const Rect lead = (*row).*rect;
    auto end = std::find_if(row, stops.end(), [&](const TabStop& s) {
      return (s.*rect).top >= lead.top + lead.height / 2;
    });
    std::stable_sort(row, end, [rect](const TabStop& a, const TabStop& b) {
      return (a.*rect).left < (b.*rect).left;
    });
    row = end;
  }
}

// A panel's blocks in reading order, and within a frame its own controls in reading order.
void appendInOrder(std::vector<TabStop>& panel, std::vector<std::string>& order) {
  readingOrder(panel, &TabStop::block);
  for (auto first = panel.begin(); first != panel.end();) {
    auto last = std::find_if(first, panel.end(),
                             [&](const TabStop& s) { return !(s.block == first->block); });
    std::vector<TabStop> block(first, last);
    readingOrder(block, &TabStop::own);
    for (const TabStop& s : block) order.push_back(s.c->name);
    first = last;
  }
}

}  // namespace

bool takesTabStop(const Control& c) {
  switch (c.kind) {
    case Kind::Frame:
    case Kind::Label:
      return false;
    case Kind::Picture:
      return static_cast<bool>(c.Click);
    default:
      return true;
  }
}

std::vector<std::string> tabOrder(MatchForm& f) {
  const Rect pitch = absolute(f.Grass);
  enum Panel { kLeft, kRight, kColumnTop, kColumn, kPanels };
  std::vector<TabStop> panels[kPanels];
  forEachControl(f, [&](Control& c) {
    if (f.LinksForm.holds(c) || !takesTabStop(c)) return;
    // The flags stand wherever the ball is: see below.
    if (!FormView::hasOwnView(f, c) || indexIn(f.CDdest, c) >= 0) return;
    const Control* outer = &c;
    while (outer->parent != nullptr) outer = outer->parent;
    const TabStop stop{&c, absolute(*outer), absolute(c)};
    const double x = stop.block.left;
    const Panel panel = x < pitch.left + pitch.width / 2 ? kLeft
                        : x < pitch.left + pitch.width   ? kRight
                        : stop.block.top < pitch.top     ? kColumnTop
                                                         : kColumn;
    panels[panel].push_back(stop);
  });
  std::vector<std::string> order;
  appendInOrder(panels[kColumnTop], order);
  // The flags go clockwise from straight up, after the die that offers them.
  auto die = std::find(order.begin(), order.end(), f.Cdice.name);
  if (die != order.end()) ++die;
  std::vector<std::string> flags;
  for (const auto& flag : f.CDdest) flags.push_back(flag.name);
  order.insert(die, flags.begin(), flags.end());
  for (const Panel panel : {kLeft, kRight, kColumn}) appendInOrder(panels[panel], order);
  return order;
}

}  // namespace quorvel
