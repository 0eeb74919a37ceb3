// What the page needs from the game: the controls and their state as JSON, each picture's
// description, the match told in words and the order Tab takes, as the window has them, a
// person's input through the window's own entry points, and the form's time kept with the
// browser's clock. The page holds no rule; this file holds no picture.
#include <emscripten/bind.h>
#include <emscripten/emscripten.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <string_view>

#include "events/events.h"
#include "events/pace.h"
#include "match/match_form.h"
#include "ui/announcements.h"
#include "ui/layout.h"
#include "ui/pictures.h"
#include "ui/tab_order.h"

namespace quorvel {

namespace {

// The page's hooks, set by page.js before the game starts.
// NOLINTBEGIN
EM_JS(void, pageShowMessage, (const char* title, const char* text, bool critical),
      { Module.page.showMessage(UTF8ToString(title), UTF8ToString(text), critical); });
EM_JS(bool, pageOpenUrl, (const char* url), { return Module.page.openUrl(UTF8ToString(url)); });
EM_JS(void, pageQuit, (), { Module.page.quit(); });
// NOLINTEND

struct Game {
  std::unique_ptr<MatchForm> form;
  std::unique_ptr<Pace> pace;
  std::unique_ptr<Announcer> announcer;
  std::map<std::string, Control*, std::less<>> byName;
  std::map<std::string, std::string, std::less<>> sent;  // each control's state last sent
};
Game game;

// ---- JSON, as little of it as the page reads ---------------------------------------------

std::string quoted(std::string_view s) {
  std::string out = "\"";
  for (const char c : s) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      constexpr char kHex[] = "0123456789abcdef";
      out += "\\u00";
      out += kHex[(c >> 4) & 0xF];
      out += kHex[c & 0xF];
    } else {
      out += c;
    }
  }
  return out + "\"";
}

// A number for JSON, quickly: the page asks for every control's state at each wake-up. Twips are
// mostly whole; nine digits are more than a pixel on any screen needs.
std::string number(double v) {
  if (v == std::trunc(v) && std::fabs(v) < 1e15) return std::to_string(static_cast<long long>(v));
  char text[32];
  std::snprintf(text, sizeof text, "%.9g", v);
  return text;
}

std::string colour(Colour c) {
  return quoted(toHex(c));
}

std::string rgba(Rgba c) {
  return "[" + std::to_string(c.r) + "," + std::to_string(c.g) + "," + std::to_string(c.b) + "," +
         number(c.a / 255.0) + "]";
}

std::string box(const Box& b) {
  return "[" + number(b.x) + "," + number(b.y) + "," + number(b.width) + "," + number(b.height) +
         "]";
}

std::string point(const Point& p) {
  return "[" + number(p.x) + "," + number(p.y) + "]";
}

// ---- the controls --------------------------------------------------------------------------

bool shownInPage(const MatchForm& f, const Control& c) {
  // A shirt number is painted as part of its player; the die faces are a store, never shown.
  return indexIn(f.Tnum, c) < 0 && indexIn(f.Di, c) < 0;
}

const TextBox* numberOf(MatchForm& f, const Control& c) {
  const int player = indexIn(f.Player, c);
  return player >= 0 ? &f.Tnum[static_cast<std::size_t>(player)] : nullptr;
}

std::string imageOf(const Control& c) {
  if (c.kind == Kind::Picture) return static_cast<const Picture&>(c).Image;
  if (c.kind == Kind::CommandButton) return static_cast<const CommandButton&>(c).Image;
  return "";
}

std::string textStyle(const TextStyle& style) {
  return ",\"px\":" + number(style.px) + ",\"bold\":" + (style.bold ? "true" : "false") +
         ",\"italic\":" + (style.italic ? "true" : "false") +
         ",\"left\":" + (style.align == Align::Left ? "true" : "false");
}

// What never changes: "name": {kind, parent, window, text style, group, picture}.
std::string describeControl(const MatchForm& f, const Control& c) {
  std::string out = quoted(c.name) + ":{\"kind\":" + quoted(kindName(c.kind));
  out += ",\"parent\":" + (c.parent != nullptr ? quoted(c.parent->name) : "null");
  out += ",\"closing\":" + std::string(f.LinksForm.holds(c) ? "true" : "false");
  out += textStyle(textStyleFor(c.name));
  if (c.kind == Kind::OptionButton)
    out += ",\"group\":" + std::to_string(static_cast<const OptionButton&>(c).group);
  if (c.kind == Kind::CommandButton && !imageOf(c).empty())
    out += ",\"bare\":" + std::string(bareButton(imageOf(c)) ? "true" : "false");
  return out + "}";
}

// What the rules may change: geometry first, then what the control shows.
std::string stateOf(MatchForm& f, const Control& c) {
  std::string out = "{\"at\":[" + number(c.Left) + "," + number(c.Top) + "," + number(c.Width) +
                    "," + number(c.Height) + "]";
  out += ",\"visible\":" + std::string(c.Visible ? "true" : "false");
  out += ",\"enabled\":" + std::string(c.Enabled ? "true" : "false");
  out += ",\"back\":" + colour(c.BackColor) + ",\"fore\":" + colour(c.ForeColor);
  out += ",\"tip\":" + quoted(c.ToolTipText) + ",\"text\":" + quoted(captionOf(c));
  out += ",\"image\":" + quoted(imageOf(c));
  switch (c.kind) {
    case Kind::CheckBox:
      out += ",\"value\":" + std::to_string(static_cast<const CheckBox&>(c).Value);
      break;
    case Kind::OptionButton:
      out += ",\"value\":" + std::string(static_cast<const OptionButton&>(c).Value ? "1" : "0");
      break;
    case Kind::TextBox:
      out += ",\"locked\":" + std::string(static_cast<const TextBox&>(c).Locked ? "true" : "false");
      break;
    case Kind::ScrollBar: {
      const auto& bar = static_cast<const ScrollBar&>(c);
      out += ",\"value\":" + std::to_string(bar.Value) + ",\"min\":" + std::to_string(bar.Min) +
             ",\"max\":" + std::to_string(bar.Max) + ",\"step\":" + std::to_string(bar.SmallChange);
      break;
    }
    default:
      break;
  }
  // A player's shirt number is part of its picture.
  if (const TextBox* n = numberOf(f, c))
    out += ",\"number\":[" + quoted(n->Text) + "," + colour(n->ForeColor) + "," +
           colour(n->BackColor) + "," + number(n->Left) + "," + number(n->Top) + "," +
           number(n->Width) + "," + number(n->Height) + "]";
  return out + "}";
}

// The match told in words, where the window tells it: an entry of the page's own beside the
// controls, shown from the first announcement on, left-aligned as the window's.
constexpr std::string_view kNews = "news";

std::string describeNews() {
  TextStyle style = kNewsStyle;
  style.align = Align::Left;
  return quoted(kNews) + ":{\"kind\":\"news\",\"parent\":null,\"closing\":false" +
         textStyle(style) + "}";
}

// Its state as a control's: the latest announcement as its text, in the window's own ink.
std::string newsState() {
  const std::string& said = game.announcer->latest();
  return "{\"at\":[" + number(kNewsArea.left) + "," + number(kNewsArea.top) + "," +
         number(kNewsArea.width) + "," + number(kNewsArea.height) +
         "],\"visible\":" + (said.empty() ? "false" : "true") +
         ",\"enabled\":true,\"back\":\"\",\"fore\":\"\",\"tip\":\"\",\"text\":" + quoted(said) +
         ",\"image\":\"\"}";
}

std::string fill(const Fill& f) {
  std::string out = "{\"kind\":" + std::to_string(static_cast<int>(f.kind)) +
                    ",\"colour\":" + rgba(f.colour) + ",\"from\":" + point(f.from) +
                    ",\"to\":" + point(f.to) + ",\"radius\":" + number(f.radius) + ",\"stops\":[";
  for (std::size_t i = 0; i < f.stops.size(); ++i)
    out += (i > 0 ? ",[" : "[") + number(f.stops[i].at) + "," + rgba(f.stops[i].colour) + "]";
  return out + "]}";
}

std::string shape(const Shape& s) {
  std::string out = "{\"kind\":" + std::to_string(static_cast<int>(s.kind)) +
                    ",\"box\":" + box(s.box) + ",\"radius\":" + number(s.radius);
  if (s.kind == ShapeKind::Path) {
    out += ",\"path\":[";
    for (std::size_t i = 0; i < s.path.size(); ++i) {
      const PathStep& p = s.path[i];
      out += (i > 0 ? ",[" : "[") + std::to_string(static_cast<int>(p.step)) + "," + point(p.to) +
             "," + point(p.control) + "]";
    }
    out += "]";
  }
  if (s.kind == ShapeKind::Text) {
    const Text& t = s.text;
    out += ",\"text\":{\"string\":" + quoted(t.string) + ",\"size\":" + number(t.size) +
           ",\"bold\":" + (t.bold ? "true" : "false") +
           ",\"italic\":" + (t.italic ? "true" : "false") +
           ",\"h\":" + std::to_string(static_cast<int>(t.h)) +
           ",\"v\":" + std::to_string(static_cast<int>(t.v)) +
           ",\"fitWidth\":" + number(t.fitWidth) + ",\"spacing\":" + number(t.spacing) + "}";
  }
  out += ",\"fill\":" + fill(s.fill);
  out += ",\"stroke\":{\"width\":" + number(s.stroke.width) +
         ",\"colour\":" + rgba(s.stroke.colour) +
         ",\"cap\":" + std::to_string(static_cast<int>(s.stroke.cap)) +
         ",\"join\":" + std::to_string(static_cast<int>(s.stroke.join)) + "}";
  out += ",\"crisp\":" + std::string(s.crisp ? "true" : "false");
  out += ",\"clip\":" + std::to_string(static_cast<int>(s.clip)) + ",\"clipBox\":" + box(s.clipBox);
  out += ",\"pivot\":" + point(s.pivot) + ",\"degrees\":" + number(s.degrees);
  return out + "}";
}

Control* find(const std::string& name) {
  const auto it = game.byName.find(name);
  return it == game.byName.end() ? nullptr : it->second;
}

// ---- what page.js calls --------------------------------------------------------------------

void start(double wallMs) {
  game.form = newMatchForm(std::random_device{}());
  MatchForm& f = *game.form;
  game.pace = std::make_unique<Pace>(f);
  game.announcer = std::make_unique<Announcer>(f);
  f.platform.showMessage = [](const Message& m) {
    game.pace->hold();  // released by the page when the box is closed
    pageShowMessage(m.Title.c_str(), m.Text.c_str(), m.critical);
  };
  f.platform.openUrl = [](const std::string& url) { return pageOpenUrl(url.c_str()); };
  f.platform.quit = [] { pageQuit(); };
  forEachControl(f, [](Control& c) { game.byName[c.name] = &c; });
  game.pace->start(static_cast<Millis>(wallMs));
}

// Every control the page shows, in the order the window stacks them (later ones on top).
std::string controls() {
  MatchForm& f = *game.form;
  std::string out = "{";
  forEachControl(f, [&](Control& c) {
    if (!shownInPage(f, c)) return;
    out += (out.size() > 1 ? "," : "") + describeControl(f, c);
  });
  return out + "," + describeNews() + "}";
}

// The form, and each control whose state changed since the last call (all of them at first),
// the news among them.
std::string state() {
  MatchForm& f = *game.form;
  game.announcer->update(f);
  std::string out = "{\"visible\":" + std::string(f.Visible ? "true" : "false") +
                    ",\"closing\":" + (f.LinksForm.Visible ? "true" : "false") +
                    ",\"ended\":" + (f.Ended ? "true" : "false") +
                    ",\"back\":" + colour(f.BackColor) + ",\"focus\":" + quoted(f.ActiveControl) +
                    ",\"controls\":{";
  bool first = true;
  auto send = [&](std::string_view name, std::string now) {
    std::string& last = game.sent[std::string(name)];
    if (now == last) return;
    out += (first ? "" : ",") + quoted(name) + ":" + now;
    first = false;
    last = std::move(now);
  };
  forEachControl(f, [&](Control& c) {
    if (shownInPage(f, c)) send(c.name, stateOf(f, c));
  });
  send(kNews, newsState());
  return out + "}}";
}

// Picture `name` as shapes for a box of `width` x `height` CSS pixels.
std::string drawing(const std::string& name, double width, double height, bool hovered, bool down,
                    bool focused) {
  MatchForm& f = *game.form;
  const Control* c = find(name);
  if (c == nullptr) return "{\"opacity\":1,\"shapes\":[]}";
  Look look;
  look.back = toRgba(c->BackColor);
  look.hovered = hovered && c->Enabled;
  look.opensLeft = goalMouth(c->name) == Mouth::OpensLeft;
  if (const TextBox* n = numberOf(f, *c); n != nullptr && c->Width > 0 && c->Height > 0) {
    look.number = n->Text;
    look.numberInk = toRgba(n->ForeColor);
    look.numberBack = toRgba(n->BackColor);
    look.numberBox = {n->Left / c->Width, n->Top / c->Height, n->Width / c->Width,
                      n->Height / c->Height};
  }
  const Box room{0, 0, width, height};
  const Drawing d = c->kind == Kind::CommandButton
                        ? describeButton(imageOf(*c), look, {down, focused, c->Enabled}, room)
                        : describePicture(imageOf(*c), look, room);
  std::string out = "{\"opacity\":" + number(d.opacity) + ",\"shapes\":[";
  for (std::size_t i = 0; i < d.shapes.size(); ++i) out += (i > 0 ? "," : "") + shape(d.shapes[i]);
  return out + "]}";
}

// The main window's tab stops in Tab's order, as a JSON list of names.
std::string tabOrderNames() {
  std::string out = "[";
  for (const std::string& name : tabOrder(*game.form))
    out += (out.size() > 1 ? "," : "") + quoted(name);
  return out + "]";
}

// Brings the game up to the wall clock, telling what happened until then, as the window does
// before a person's input lands.
void catchUp(double wallMs) {
  game.pace->catchUp(static_cast<Millis>(wallMs));
  game.announcer->update(*game.form);
}

// A person's input, through the window's own entry points, at the moment it happened.
void click(const std::string& name, double wallMs) {
  catchUp(wallMs);
  if (Control* c = find(name)) userClick(*game.form, *c);
}
void clickClosing(double wallMs) {
  catchUp(wallMs);
  userClickLinksForm(*game.form);
}
void key(int keyAscii, double wallMs) {
  catchUp(wallMs);
  userKey(*game.form, keyAscii);
}
bool edit(const std::string& name, const std::string& text, double wallMs) {
  catchUp(wallMs);
  Control* c = find(name);
  return c != nullptr && c->kind == Kind::TextBox &&
         userEdit(*game.form, static_cast<TextBox&>(*c), text);
}
void scroll(const std::string& name, int value, double wallMs) {
  catchUp(wallMs);
  Control* c = find(name);
  if (c != nullptr && c->kind == Kind::ScrollBar)
    userScroll(*game.form, static_cast<ScrollBar&>(*c), value);
}
// The person moved the keyboard focus to control `name`.
void focus(const std::string& name) {
  if (find(name) != nullptr) game.form->ActiveControl = name;
}

// Time: wake at `wallMs`; true when what is on show may have changed or there is news.
bool wake(double wallMs) {
  const bool ticked = game.pace->wake(static_cast<Millis>(wallMs));
  return !game.announcer->update(*game.form).empty() || ticked;
}
// Milliseconds until the next wake-up, -1 for none until the person acts.
double nextWakeIn(double wallMs) {
  return static_cast<double>(game.pace->nextWakeIn(static_cast<Millis>(wallMs)));
}
// The game's own clock, in virtual milliseconds (for measuring the page's pace).
double virtualTime() {
  return static_cast<double>(game.form->Sched.now());
}
// The message box was closed: the game goes on from where it stood.
void messageClosed(double wallMs) {
  game.pace->release(static_cast<Millis>(wallMs));
}

}  // namespace

EMSCRIPTEN_BINDINGS(quorvel) {
  emscripten::function("start", &start);
  emscripten::function("controls", &controls);
  emscripten::function("state", &state);
  emscripten::function("drawing", &drawing);
  emscripten::function("click", &click);
  emscripten::function("clickClosing", &clickClosing);
  emscripten::function("key", &key);
  emscripten::function("edit", &edit);
  emscripten::function("scroll", &scroll);
  emscripten::function("focus", &focus);
  emscripten::function("wake", &wake);
  emscripten::function("nextWakeIn", &nextWakeIn);
  emscripten::function("messageClosed", &messageClosed);
  emscripten::function("virtualTime", &virtualTime);
  emscripten::function("tabOrder", &tabOrderNames);
}

}  // namespace quorvel
