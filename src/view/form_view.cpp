#include "view/form_view.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>

#include "events/events.h"
#include "ui/accessible_names.h"
#include "ui/pictures.h"
#include "view/tab_order.h"

namespace quorvel {

namespace {

// Room a text box keeps between its text and its edges, in pixels at scale 1.
constexpr double kTextMarginsPx = 6;
// The least a text that does not fit is shrunk to, of its size.
constexpr double kLeastShrink = 0.6;

double snap(double v, double ratio) {
  return std::round(v * ratio) / ratio;
}

struct Twips {
  double left, top;
};

Twips absoluteCorner(const Control& c) {
  Twips t{c.Left, c.Top};
  for (const Control* p = c.parent; p != nullptr; p = p->parent) t.left += p->Left, t.top += p->Top;
  return t;
}

// It and every container of it.
template <typename Test>
bool allTheWayOut(const Control& c, Test test) {
  for (const Control* k = &c; k != nullptr; k = k->parent)
    if (!test(*k)) return false;
  return true;
}

// Whether `c` is one of control array `arr`: a look at its address, not a search, as this is
// asked for every piece at every step.
template <typename Arr>
bool within(const Arr& arr, const Control& c) {
  const std::less<const Control*> before;
  const Control* first = &arr.front();
  const Control* last = &arr.back();
  return !before(&c, first) && !before(last, &c);
}

bool isPiece(const MatchForm& f, const Control& c) {
  return within(f.Player, c) || &c == &f.Ball;
}

// The pictures that turn with the pitch; the pieces, the flags and the board keep upright.
bool turnsWithPitch(const MatchForm& f, const Control& c) {
  return &c == &f.Grass || within(f.Goal, c);
}

// What the rules move about: the pieces, the flags that stand wherever the ball is, and the
// banners that slide out from under the pitch.
bool moves(const MatchForm& f, const Control& c) {
  return isPiece(f, c) || within(f.CDdest, c) || within(f.Banner, c);
}

// The team a control belongs to, by the arrays that hold one per side.
int sideOfControl(const MatchForm& f, const Control& c) {
  if (const int i = indexIn(f.Player, c); i > 0) return i <= 11 ? 1 : 2;
  for (int s = 1; s <= 2; ++s)
    if (indexIn(f.Team, c) == s || indexIn(f.Goals, c) == s || indexIn(f.Poses, c) == s ||
        indexIn(f.CDcontest, c) == s)
      return s;
  // Boxes and swatches 0 and 1 are the left side's, 2 and 3 the right side's.
  if (const int i = std::max(indexIn(f.CHsub, c), indexIn(f.RainB, c)); i >= 0)
    return i < 2 ? 1 : 2;
  if (const int i = indexIn(f.OPForm, c); i >= 0) return i < 10 ? 1 : 2;
  if (&c == &f.Fra1) return 1;
  if (&c == &f.Fra2) return 2;
  return 0;
}

// A text box a person types in (the team names, while they are open); the others only say
// something, and are read as text.
bool typedIn(const MatchForm& f, const Control& c) {
  return indexIn(f.Team, c) >= 0;
}

Role roleOf(const MatchForm& f, const Control& c) {
  switch (c.kind) {
    case Kind::Picture:
      return c.Click ? Role::Button : Role::Graphic;
    case Kind::CommandButton:
      return Role::Button;
    case Kind::CheckBox:
      return Role::CheckBox;
    case Kind::OptionButton:
      return Role::Radio;
    case Kind::TextBox:
      return typedIn(f, c) ? Role::Entry : Role::Text;
    case Kind::ScrollBar:
      return Role::Slider;
    case Kind::Frame:
      return Role::Group;
    case Kind::Label:
      return Role::Label;
  }
  return Role::Graphic;
}

// What a screen reader says of it. A text read as text says what it shows as well.
std::string nameOf(const MatchForm& f, const Control& c, Role role) {
  std::string name = accessibleName(f, c);
  if (role != Role::Text) return name;
  const std::string& shown = captionOf(c);
  if (shown.empty() || shown == name) return name;
  return name.empty() ? shown : name + ": " + shown;
}

// Qt's choice of the button an arrow reaches among `candidates`: the nearest one that way,
// those in line with the one it starts from first.
const ControlView* nearestThatWay(const FormView& view, const ControlView& from,
                                  const std::vector<const ControlView*>& candidates, Arrow a) {
  // Qt's centre of a rectangle: halfway between its first and last pixel, rounded down.
  const auto centre = [](const PixelRect& r) {
    return std::pair<long, long>{std::lround(std::floor(r.x + (r.width - 1) / 2)),
                                 std::lround(std::floor(r.y + (r.height - 1) / 2))};
  };
  const PixelRect target = view.windowRect(*from.control);
  const auto [gx, gy] = centre(target);
  const ControlView* best = nullptr;
  long bestScore = -1;
  for (const ControlView* c : candidates) {
    const PixelRect r = view.windowRect(*c->control);
    const auto [px, py] = centre(r);
    const bool inColumn = r.x < target.right() - 1 && target.x < r.right() - 1;
    const bool inRow = r.y < target.bottom() - 1 && target.y < r.bottom() - 1;
    long score = 0;
    if (inColumn && (a == Arrow::Up || a == Arrow::Down))
      score = (std::labs(py - gy) << 16) + std::labs(px - gx);
    else if (inRow && (a == Arrow::Left || a == Arrow::Right))
      score = (std::labs(px - gx) << 16) + std::labs(py - gy);
    else
      score = (1L << 30) + (py - gy) * (py - gy) + (px - gx) * (px - gx);
    if (score > bestScore && best != nullptr) continue;
    const bool thatWay = (a == Arrow::Up && py < gy) || (a == Arrow::Down && py > gy) ||
                         (a == Arrow::Left && px < gx) || (a == Arrow::Right && px > gx);
    if (thatWay) best = c, bestScore = score;
  }
  return best;
}

}  // namespace

std::string spokenName(const MatchForm& f, const Control& c) {
  return nameOf(f, c, roleOf(f, c));
}

std::string_view roleName(Role r) {
  switch (r) {
    case Role::Button:
      return "button";
    case Role::CheckBox:
      return "check box";
    case Role::Radio:
      return "radio";
    case Role::Entry:
      return "entry";
    case Role::Text:
      return "text";
    case Role::Slider:
      return "slider";
    case Role::Group:
      return "group";
    case Role::Graphic:
      return "graphic";
    case Role::Label:
      return "label";
  }
  return {};
}

Placement fitInto(ClientSize client, double width, double height, double ratio, bool centre) {
  const double naturalW = client.width / kTwipsPerPixel, naturalH = client.height / kTwipsPerPixel;
  Placement p;
  p.scale = std::min(width / naturalW, height / naturalH);
  p.ratio = ratio;
  if (centre) {
    p.x = (width - naturalW * p.scale) / 2;
    p.y = (height - naturalH * p.scale) / 2;
  }
  return p;
}

double fittedPx(double fontPx, double scale, double boxWidth, double textWidth) {
  const double room = boxWidth - kTextMarginsPx * scale;
  if (textWidth <= room || room <= 0) return fontPx;
  return std::max({fontPx * kLeastShrink, fontPx * room / textWidth, std::min(fontPx, kLegiblePx)});
}

std::vector<std::string> presentation(FormView& view) {
  view.look();
  std::vector<std::string> lines;
  for (const ControlView& v : view.controls()) {
    if (!v.shown) continue;
    lines.push_back(v.control->name + "|" + std::string(roleName(v.role)) + "|" + v.name + "|" +
                    (v.enabled ? "1" : "0") + "|" + std::to_string(v.checked));
  }
  std::string tab = "tab|";
  for (const std::string& stop : view.tabStops()) tab += stop + " ";
  lines.push_back(tab);
  lines.push_back("focus|" + view.focus());
  return lines;
}

Look lookOf(const Control& c, const TextBox* number, bool hovered) {
  Look look;
  look.back = toRgba(c.BackColor);
  look.hovered = hovered && c.Enabled;
  look.opensLeft = goalMouth(c.name) == Mouth::OpensLeft;
  if (number != nullptr) {
    look.number = number->Text;
    look.numberInk = toRgba(number->ForeColor);
    look.numberBack = toRgba(number->BackColor);
    if (c.Width > 0 && c.Height > 0)
      look.numberBox = {number->Left / c.Width, number->Top / c.Height, number->Width / c.Width,
                        number->Height / c.Height};
  }
  return look;
}

const TextBox* shirtNumberOf(const MatchForm& f, const Control& c) {
  const int player = indexIn(f.Player, c);
  return player >= 0 ? &f.Tnum[static_cast<std::size_t>(player)] : nullptr;
}

std::string messageLines(std::string_view text) {
  std::string lines(text);
  std::replace(lines.begin(), lines.end(), '\r', '\n');
  return lines;
}

bool FormView::hasOwnView(const MatchForm& f, const Control& c) {
  // A shirt number is painted as part of its player; the die faces are a store, never shown.
  return indexIn(f.Tnum, c) < 0 && indexIn(f.Di, c) < 0;
}

FormView::FormView(MatchForm& f, FormWindowId window) : f_(f), window_(window) {
  auto add = [this](Control& c) {
    ControlView v;
    v.control = &c;
    views_.push_back(std::move(v));
  };
  if (window == FormWindowId::Closing) {
    for (Control* c : f.LinksForm.controls()) add(*c);
    for (const ControlView& v : views_)
      if (takesTabStop(*v.control)) order_.push_back(v.control->name);
  } else {
    // The banners wait under the pitch until they slide out below it, the title on top.
    for (auto banner = f.Banner.rbegin(); banner != f.Banner.rend(); ++banner) add(*banner);
    forEachControl(f, [&](Control& c) {
      if (f.LinksForm.holds(c) || !hasOwnView(f, c) || indexIn(f.Banner, c) >= 0) return;
      add(c);
    });
    order_ = tabOrder(f);
  }
  tabOf_.assign(views_.size(), 0);
  styleOf_.clear();
  for (const ControlView& v : views_) styleOf_.push_back(textStyleFor(v.control->name));
  for (std::size_t i = 0; i < views_.size(); ++i) {
    const auto at = std::find(order_.begin(), order_.end(), views_[i].control->name);
    if (at != order_.end()) tabOf_[i] = static_cast<int>(at - order_.begin()) + 1;
    describeForGood(views_[i]);
    indexOf_[views_[i].control] = i;
  }
  // The first glance lists everything.
  pending_.assign(views_.size(), Changed{true, true, true, true});
  place(placement_);
}

ClientSize FormView::client() const {
  return window_ == FormWindowId::Closing ? kLinksClient : kMatchClient;
}

void FormView::place(const Placement& p) {
  placement_ = p;
  compact_.reset();
  look();
}

void FormView::fit(double width, double height, double ratio) {
  // Both windows change layouts together, where the main window's stored one no longer fits.
  if (fitInto(kMatchClient, width, height).scale >= kLeastDesktopScale) {
    place(fitInto(client(), width, height, ratio, false));
    return;
  }
  compact_ = compactLayout(width, height);
  placement_ = Placement{compact_->pxPerTwip * kTwipsPerPixel, 0, 0, ratio};
  look();
}

PixelRect FormView::compactRect(const Control& c) const {
  const CompactLayout& l = *compact_;
  const double ratio = placement_.ratio;
  const auto snapped = [ratio](double x, double y, double w, double h) {
    const double x0 = snap(x, ratio), y0 = snap(y, ratio);
    return PixelRect{x0, y0, snap(x + w, ratio) - x0, snap(y + h, ratio) - y0};
  };
  const auto fromCells = [&](const CompactRect& r) { return snapped(r.x, r.y, r.width, r.height); };
  if (const auto at = l.inBar.find(c.name); at != l.inBar.end()) return fromCells(at->second);
  if (const auto at = l.inPanel.find(c.name); at != l.inPanel.end()) return fromCells(at->second);
  const bool board = &c == &f_.PicGame || c.parent == &f_.PicGame;
  const double s = l.pxPerTwip * (board ? kBoardGrowth : 1);
  // On the board: its place in it, at the board's scale.
  if (c.parent != nullptr) {
    const PixelRect outer = compactRect(*c.parent);
    return snapped(outer.x + c.Left * s, outer.y + c.Top * s, c.Width * s, c.Height * s);
  }
  if (turnsWithPitch(f_, c)) {
    // Two opposite corners, in whichever order the turn puts them.
    const double ax = l.pitchX(c.Left, c.Top), ay = l.pitchY(c.Left, c.Top);
    const double bx = l.pitchX(c.Left + c.Width, c.Top + c.Height);
    const double by = l.pitchY(c.Left + c.Width, c.Top + c.Height);
    return snapped(std::min(ax, bx), std::min(ay, by), std::fabs(bx - ax), std::fabs(by - ay));
  }
  // Upright about its centre; a flag as large as a finger needs.
  const double cx = l.pitchX(c.Left + c.Width / 2, c.Top + c.Height / 2);
  const double cy = l.pitchY(c.Left + c.Width / 2, c.Top + c.Height / 2);
  const bool flag = within(f_.CDdest, c);
  const double w = flag ? l.flagPx : c.Width * s, h = flag ? l.flagPx : c.Height * s;
  const double x0 = snap(cx - w / 2, ratio), y0 = snap(cy - h / 2, ratio);
  return {x0, y0, snap(w, ratio), snap(h, ratio)};
}

bool FormView::tuckedAway(const Control& c) const {
  if (!compact_) return false;
  const Control* outer = &c;
  while (outer->parent != nullptr) outer = outer->parent;
  if (compact_->zoneOf(outer->name) == Zone::Panel) return !panelOpen_;
  // A piece off the pitch (the teams lined up before the first Start, the substitute on the
  // bench) waits out of sight until it walks on.
  if (!isPiece(f_, c)) return false;
  const double x = c.Left + c.Width / 2, y = c.Top + c.Height / 2;
  return x < kLeftGoalLeft || x > kRightGoalLeft + kGoalWidth || y < kGridTop ||
         y > kGridTop + kPitchRows * kSquareTwips;
}

void FormView::look() {
  for (std::size_t i = 0; i < views_.size(); ++i) note(i);
  lookAtAll_ = true;  // what changed is kept for the next glance, which lists it
}

const ControlView* FormView::find(std::string_view name) const {
  for (const ControlView& v : views_)
    if (v.control->name == name) return &v;
  return nullptr;
}

const ControlView* FormView::find(const Control& c) const {
  const auto at = indexOf_.find(&c);
  return at == indexOf_.end() ? nullptr : &views_[at->second];
}

PixelRect FormView::rectOf(const Control& c, bool moving) const {
  const Placement& p = placement_;
  const double s = p.scale / kTwipsPerPixel;
  auto absolute = [&](const Control& k, bool ownSize) {
    const Twips t = absoluteCorner(k);
    const double x0 = snap(p.x + t.left * s, p.ratio), y0 = snap(p.y + t.top * s, p.ratio);
    // A moving control keeps its size wherever it stands; a fixed one has both edges on the
    // form's grid, so that neighbours never gap or overlap.
    if (ownSize) return PixelRect{x0, y0, snap(k.Width * s, p.ratio), snap(k.Height * s, p.ratio)};
    return PixelRect{x0, y0, snap(p.x + (t.left + k.Width) * s, p.ratio) - x0,
                     snap(p.y + (t.top + k.Height) * s, p.ratio) - y0};
  };
  PixelRect r = absolute(c, moving);
  if (c.parent != nullptr) {
    const PixelRect outer = absolute(*c.parent, false);
    r.x -= outer.x;
    r.y -= outer.y;
  }
  return r;
}

PixelRect FormView::windowRect(const Control& c) const {
  if (compact_) return compactRect(c);
  PixelRect r = rectOf(c, moves(f_, c));
  for (const Control* p = c.parent; p != nullptr; p = p->parent) {
    const PixelRect outer = rectOf(*p, false);
    r.x += outer.x;
    r.y += outer.y;
  }
  return r;
}

bool FormView::tabStop(const Control& c) const {
  return reachable(c) && tabStopWhenReachable(c);
}

bool FormView::tabStopWhenReachable(const Control& c) const {
  if (!takesTabStop(c) || isPiece(f_, c)) return false;
  if (c.kind == Kind::TextBox && static_cast<const TextBox&>(c).Locked) return false;
  // A group of option buttons is one stop: the chosen one.
  if (c.kind == Kind::OptionButton && !static_cast<const OptionButton&>(c).Value) return false;
  // A banner is a stop only once it has come out from under the pitch.
  if (indexIn(f_.Banner, c) >= 0) {
    const Twips grass = absoluteCorner(f_.Grass);
    const double x = c.Left + c.Width / 2, y = c.Top + c.Height / 2;
    if (x >= grass.left && x < grass.left + f_.Grass.Width && y >= grass.top &&
        y < grass.top + f_.Grass.Height)
      return false;
  }
  return true;
}

void FormView::describeForGood(ControlView& v) const {
  const Control& c = *v.control;
  v.parent = c.parent != nullptr ? c.parent->name : std::string();
  v.moves = moves(f_, c);
  v.piece = isPiece(f_, c);
  v.opensLeft = goalMouth(c.name) == Mouth::OpensLeft;
  const TextStyle& style = styleOf_[static_cast<std::size_t>(&v - views_.data())];
  v.bold = style.bold;
  v.italic = style.italic;
  v.alignLeft = style.align == Align::Left;
  v.role = roleOf(f_, c);
  v.side = sideOfControl(f_, c);
  v.group = c.kind == Kind::OptionButton ? static_cast<const OptionButton&>(c).group : 0;
  v.pressable = v.role == Role::Button;
  v.focusable = v.pressable || v.role == Role::CheckBox || v.role == Role::Radio ||
                v.role == Role::Entry || v.role == Role::Slider;
}

namespace {

// Takes `now` into `field`; true when it was not that already.
template <typename T, typename U>
bool take(T& field, const U& now) {
  if (field == now) return false;
  field = now;
  return true;
}

}  // namespace

FormView::Changed FormView::describe(ControlView& v) const {
  const Control& c = *v.control;
  Changed changed;
  // Each property is taken over where it differs, and what it is part of noted as changed:
  // the views are their own record of what was shown, and no copy of them is compared.
  auto restate = [&changed](bool differed) { changed.restated |= differed; };
  restate(
      take(v.shown, allTheWayOut(c, [](const Control& k) { return k.Visible; }) && !tuckedAway(c)));
  if (take(v.enabled, allTheWayOut(c, [](const Control& k) { return k.Enabled; })))
    changed.redrawn = changed.restated = true;
  PixelRect rect;
  if (compact_) {
    rect = compactRect(c);
    if (c.parent != nullptr) {
      const PixelRect outer = compactRect(*c.parent);
      rect.x -= outer.x;
      rect.y -= outer.y;
    }
    restate(take(v.inPanel, c.parent == nullptr && compact_->zoneOf(c.name) == Zone::Panel));
    restate(take(v.turned, turnsWithPitch(f_, c) && compact_->turned));
  } else {
    rect = rectOf(c, v.moves);
    restate(take(v.inPanel, false));
    restate(take(v.turned, false));
  }
  changed.moved = rect.x != v.rect.x || rect.y != v.rect.y;
  changed.redrawn |= rect.width != v.rect.width || rect.height != v.rect.height;
  v.rect = rect;
  // Whether a picture is drawn bare goes with the picture: asked again only when it changes.
  const std::string* image = c.kind == Kind::Picture ? &static_cast<const Picture&>(c).Image
                             : c.kind == Kind::CommandButton
                                 ? &static_cast<const CommandButton&>(c).Image
                                 : nullptr;
  if (image != nullptr && take(v.image, *image)) {
    changed.redrawn = true;
    restate(take(v.bare, c.kind == Kind::CommandButton && !v.image.empty() && bareButton(v.image)));
  }
  if (const int player = indexIn(f_.Player, c); player >= 0 && c.Width > 0 && c.Height > 0) {
    const TextBox& n = f_.Tnum[static_cast<std::size_t>(player)];
    changed.redrawn |=
        take(v.number, ShirtNumber{n.Text, n.ForeColor, n.BackColor, n.Left / c.Width,
                                   n.Top / c.Height, n.Width / c.Width, n.Height / c.Height});
  }
  restate(take(v.caption, captionOf(c)));
  const auto i = static_cast<std::size_t>(&v - views_.data());
  const TextStyle& style = styleOf_[i];
  double fontPx = style.px * placement_.scale;
  // Off the pitch a small screen's text keeps its stored size, as large as its cell allows.
  if (compact_ && compact_->zoneOf(c.parent != nullptr ? c.parent->name : c.name) != Zone::Pitch)
    fontPx = std::min(style.px, 0.6 * v.rect.height);
  if (compact_) fontPx = std::max(fontPx, kLeastCompactTextPx);
  restate(take(v.fontPx, fontPx));
  if (take(v.back, c.BackColor)) changed.redrawn = changed.recoloured = true;
  if (take(v.fore, c.ForeColor)) changed.restated = changed.recoloured = true;
  restate(take(v.tip, c.ToolTipText));
  if (c.kind == Kind::TextBox) restate(take(v.locked, static_cast<const TextBox&>(c).Locked));
  if (c.kind == Kind::ScrollBar) {
    const auto& bar = static_cast<const ScrollBar&>(c);
    restate(take(v.value, bar.Value));
    restate(take(v.min, bar.Min));
    restate(take(v.max, bar.Max));
    restate(take(v.step, bar.SmallChange));
  }
  // A control out of sight is not heard: its name, the dearest thing to make, is made again
  // when it comes back.
  if (v.shown) {
    std::string name = nameOf(f_, c, v.role);
    if (name != v.name) v.name = std::move(name), changed.restated = true;
  }
  restate(take(v.checked, c.kind == Kind::CheckBox ? static_cast<const CheckBox&>(c).Value
                          : c.kind == Kind::OptionButton
                              ? static_cast<int>(static_cast<const OptionButton&>(c).Value)
                              : -1));
  restate(take(v.tab, i < tabOf_.size() && tabOf_[i] > 0 && tabStop(c) && v.shown ? tabOf_[i] : 0));
  return changed;
}

void FormView::note(std::size_t i) {
  Changed& c = pending_[i];
  const Changed now = describe(views_[i]);
  c.moved |= now.moved, c.redrawn |= now.redrawn, c.restated |= now.restated;
  c.recoloured |= now.recoloured;
}

void FormView::collect(std::size_t i, std::vector<Change>& changes) {
  Changed& c = pending_[i];
  if (c.moved || c.redrawn || c.restated)
    changes.push_back({static_cast<int>(i), c.moved, c.redrawn, c.restated, c.recoloured});
  c = Changed{};
}

std::vector<FormView::Change> FormView::glance() {
  std::vector<Change> changes;
  for (std::size_t i = 0; i < views_.size(); ++i) {
    note(i);
    collect(i, changes);
  }
  lookAtAll_ = false;
  for (const std::size_t i : ticked_) isTicked_[i] = false;
  ticked_.clear();
  return changes;
}

void FormView::tickComing(const Timer& t) {
  if (lookAtAll_) return;
  isTicked_.resize(views_.size());
  const bool bounded = tickReach(f_, t, [this](Control& c) {
    const ControlView* v = find(c);
    if (v == nullptr) return;
    const auto i = static_cast<std::size_t>(v - views_.data());
    if (!isTicked_[i]) isTicked_[i] = true, ticked_.push_back(i);
  });
  if (!bounded) lookAtAll_ = true;
}

std::vector<FormView::Change> FormView::glanceAfterTicks() {
  if (lookAtAll_) return glance();
  // In the order of the controls, as a glance at all of them lists them.
  std::sort(ticked_.begin(), ticked_.end());
  std::vector<Change> changes;
  changes.reserve(ticked_.size());
  for (const std::size_t i : ticked_) {
    note(i);
    collect(i, changes);
    isTicked_[i] = false;
  }
  ticked_.clear();
  return changes;
}

std::vector<std::string> FormView::tabStops() const {
  std::vector<const ControlView*> stops;
  for (const ControlView& v : views_)
    if (v.tab > 0) stops.push_back(&v);
  std::sort(stops.begin(), stops.end(),
            [](const ControlView* a, const ControlView* b) { return a->tab < b->tab; });
  std::vector<std::string> names;
  names.reserve(stops.size());
  for (const ControlView* v : stops) names.push_back(v->control->name);
  return names;
}

ArrowMove FormView::arrow(std::string_view from, Arrow a) const {
  const ControlView* v = find(from);
  if (v == nullptr) return {{}, false, true};
  const Control& c = *v->control;
  // Option buttons of a group, and the flags, are a group the arrows move in; from the chosen
  // option the arrow chooses the one it reaches.
  const bool flag = indexIn(f_.CDdest, c) >= 0;
  if (c.kind == Kind::OptionButton || flag) {
    std::vector<const ControlView*> candidates;
    for (const ControlView& k : views_) {
      if (&k == v || !k.shown || !k.enabled) continue;
      const bool sameGroup = c.kind == Kind::OptionButton
                                 ? k.control->kind == Kind::OptionButton && k.group == v->group
                                 : indexIn(f_.CDdest, *k.control) >= 0;
      if (sameGroup) candidates.push_back(&k);
    }
    const ControlView* to = nearestThatWay(*this, *v, candidates, a);
    if (to == nullptr) return {};
    return {to->control->name, !flag && v->checked == 1};
  }
  // On any other button or box the arrows are Tab and Shift+Tab.
  if (c.kind != Kind::CommandButton && c.kind != Kind::CheckBox) return {{}, false, true};
  const std::vector<std::string> stops = tabStops();
  if (stops.empty()) return {};
  const auto at = std::find(stops.begin(), stops.end(), c.name);
  const bool forward = a == Arrow::Right || a == Arrow::Down;
  const std::size_t n = stops.size();
  std::size_t i = 0;
  if (at == stops.end())
    i = forward ? 0 : n - 1;
  else
    i = (static_cast<std::size_t>(at - stops.begin()) + (forward ? 1 : n - 1)) % n;
  return {stops[i], false};
}

std::string FormView::focus() const {
  if (window_ == FormWindowId::Main) return f_.ActiveControl;
  const std::vector<std::string> stops = tabStops();
  return stops.empty() ? std::string() : stops.front();
}

std::string FormView::escape() const {
  // Escape leaves the closing window as its Exit does.
  return window_ == FormWindowId::Closing ? f_.LinksForm.CDend.name : std::string();
}

PixelRect FormView::newsRect() const {
  if (compact_) {
    const CompactRect& n = compact_->news;
    return {n.x, n.y, n.width, n.height};
  }
  const Placement& p = placement_;
  const double s = p.scale / kTwipsPerPixel;
  const double x0 = snap(p.x + kNewsArea.left * s, p.ratio);
  const double y0 = snap(p.y + kNewsArea.top * s, p.ratio);
  return {x0, y0, snap(p.x + (kNewsArea.left + kNewsArea.width) * s, p.ratio) - x0,
          snap(p.y + (kNewsArea.top + kNewsArea.height) * s, p.ratio) - y0};
}

double FormView::newsFontPx() const {
  return compact_ ? std::max(kLeastCompactTextPx, kNewsStyle.px) : kNewsStyle.px * placement_.scale;
}

double FormView::fitted(double fontPx, double boxWidth, double textWidth) const {
  const double px = fittedPx(fontPx, placement_.scale, boxWidth, textWidth);
  return compact_ ? std::max(px, std::min(fontPx, kLeastCompactTextPx)) : px;
}

double FormView::legibleScale() const {
  double smallest = std::numeric_limits<double>::max();
  for (std::size_t i = 0; i < views_.size(); ++i)
    if (!views_[i].piece) smallest = std::min(smallest, styleOf_[i].px);
  return views_.empty() ? 0 : kLegiblePx / smallest;
}

}  // namespace quorvel
