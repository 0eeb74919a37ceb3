// What the page needs from the game: what changed on screen since the last glance, as the view
// of the form (src/view/) describes it for both fronts, each picture's description, the match
// told in words, a person's input through the window's own entry points, and the form's time
// kept with the browser's clock. The page holds no rule and no presentation decision; this
// file holds no picture.
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
#include "form_paths.h"
#include "match/match_form.h"
#include "session.h"
#include "ui/announcements.h"
#include "ui/layout.h"
#include "ui/pictures.h"
#include "view/form_view.h"

namespace quorvel {

namespace {

// The page's hooks, set by page.js before the game starts.
// NOLINTBEGIN
EM_JS(void, pageShowMessage, (const char* title, const char* text, bool critical),
      { Module.page.showMessage(UTF8ToString(title), UTF8ToString(text), critical); });
EM_JS(bool, pageOpenUrl, (const char* url), { return Module.page.openUrl(UTF8ToString(url)); });
EM_JS(void, pageQuit, (), { Module.page.quit(); });
// A test that replays the page's inputs asks, before the page loads, for their journal.
EM_JS(bool, pageKeepsJournal, (), { return Boolean(globalThis.quorvelJournal); });
// NOLINTEND

struct Game : Session {
  std::unique_ptr<FormView> main, closing;
  std::string newsSent;  // the news as last sent
  bool formSent = false;
  bool shown = false, closingShown = false, ended = false;  // the windows as last sent
  Colour back;
  std::string focus;
  std::uint64_t inputsSent = 0;  // the session's count of inputs at the last glance
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

// ---- the view ------------------------------------------------------------------------------

std::string flag(bool b) {
  return b ? "true" : "false";
}

std::string rect(const PixelRect& r) {
  return "[" + number(r.x) + "," + number(r.y) + "," + number(r.width) + "," + number(r.height) +
         "]";
}

// What the page draws of a control, as the view says it; `whole` with what never changes.
std::string viewOf(const ControlView& v, bool closing, bool whole) {
  const Control& c = *v.control;
  std::string out = "{\"rect\":" + rect(v.rect);
  if (whole) {
    out += ",\"kind\":" + quoted(kindName(c.kind)) + ",\"parent\":" + quoted(v.parent) +
           ",\"closing\":" + flag(closing) + ",\"piece\":" + flag(v.piece) +
           ",\"bare\":" + flag(v.bare);
    // The pitch, on which the pieces standing wholly on it are painted, as the window does.
    out += ",\"ground\":" + flag(&c == &game.form->Grass);
  }
  out += ",\"shown\":" + flag(v.shown) + ",\"enabled\":" + flag(v.enabled);
  out += ",\"image\":" + quoted(v.image) + ",\"caption\":" + quoted(v.caption);
  out += ",\"px\":" + number(v.fontPx) + ",\"bold\":" + flag(v.bold) +
         ",\"italic\":" + flag(v.italic) + ",\"left\":" + flag(v.alignLeft);
  out +=
      ",\"back\":" + colour(v.back) + ",\"fore\":" + colour(v.fore) + ",\"tip\":" + quoted(v.tip);
  out += ",\"locked\":" + flag(v.locked);
  if (c.kind == Kind::ScrollBar)
    out += ",\"value\":" + std::to_string(v.value) + ",\"min\":" + std::to_string(v.min) +
           ",\"max\":" + std::to_string(v.max) + ",\"step\":" + std::to_string(v.step);
  out += ",\"role\":" + quoted(roleName(v.role)) + ",\"name\":" + quoted(v.name) +
         ",\"checked\":" + std::to_string(v.checked) + ",\"side\":" + std::to_string(v.side) +
         ",\"tab\":" + std::to_string(v.tab) + ",\"pressable\":" + flag(v.pressable) +
         ",\"focusable\":" + flag(v.focusable) + ",\"panel\":" + flag(v.inPanel) +
         ",\"turned\":" + flag(v.turned);
  return out + "}";
}

// Each change of `view` since its last glance: the whole control at first, only its place
// when it only moved. After ticks alone, only what they may have changed is looked at.
void appendChanges(FormView& view, bool closing, bool first, bool ticksAlone, std::string& out) {
  for (const FormView::Change& ch : ticksAlone ? view.glanceAfterTicks() : view.glance()) {
    const ControlView& v = view.controls()[static_cast<std::size_t>(ch.index)];
    out += (out.back() == '{' ? "" : ",") + quoted(v.control->name) + ":";
    if (!ch.redrawn && !ch.restated)
      out += "{\"rect\":" + rect(v.rect) + "}";
    else
      out += viewOf(v, closing, first);
    if (ch.redrawn && !first) out.insert(out.size() - 1, ",\"redrawn\":true");
  }
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

// ---- what page.js calls --------------------------------------------------------------------

void start(double wallMs) {
  game.showMessage = [](const Message& m) {
    pageShowMessage(m.Title.c_str(), messageLines(m.Text).c_str(), m.critical);
  };
  game.openUrl = [](const std::string& url) { return pageOpenUrl(url.c_str()); };
  game.quit = [] { pageQuit(); };
  game.start(std::random_device{}(), wallMs, pageKeepsJournal());
  game.main = std::make_unique<FormView>(*game.form, FormWindowId::Main);
  game.closing = std::make_unique<FormView>(*game.form, FormWindowId::Closing);
  game.form->Sched.watch([](const Timer& t) {
    game.main->tickComing(t);
    game.closing->tickComing(t);
  });
}

// The panel's button: its caption and whether the panel is open.
std::string panelState() {
  const bool open = game.main->panelOpen();
  return "\"open\":" + flag(open) + ",\"menuCaption\":" + quoted(open ? kClosePanel : kOpenPanel);
}

// The page is `width` x `height` CSS pixels at `ratio` device pixels to one: both windows as
// the view lays them out for that size (the stored layout at the largest scale at which the
// main window fits, the closing one at the same scale; or a small screen's). Their sizes in CSS
// pixels, the news line's place and type, and on a small screen the panel's button and the
// panel.
std::string layout(double width, double height, double ratio) {
  game.main->fit(width, height, ratio);
  const CompactLayout* compact = game.main->compact();
  if (compact != nullptr)
    game.closing->fit(width, height, ratio);
  else
    game.closing->place(game.main->placement());
  const auto size = [&](ClientSize c) {
    const double scale = game.main->placement().scale;
    return "[" + number(c.width / kTwipsPerPixel * scale) + "," +
           number(c.height / kTwipsPerPixel * scale) + "]";
  };
  const auto pair = [](double w, double h) { return "[" + number(w) + "," + number(h) + "]"; };
  const std::string main = compact != nullptr ? pair(width, height) : size(kMatchClient);
  const std::string closing =
      compact != nullptr ? pair(compact->closingWidth, compact->closingHeight) : size(kLinksClient);
  std::string out =
      "{\"main\":" + main + ",\"closing\":" + closing + ",\"news\":" + rect(game.main->newsRect()) +
      ",\"newsPx\":" + number(game.main->newsFontPx()) +
      ",\"newsItalic\":" + flag(kNewsStyle.italic) + ",\"newsBold\":" + flag(kNewsStyle.bold) +
      ",\"compact\":" + flag(compact != nullptr);
  if (compact != nullptr) {
    const auto cells = [](const CompactRect& r) {
      return rect(PixelRect{r.x, r.y, r.width, r.height});
    };
    out += ",\"menu\":" + cells(compact->menu) + ",\"panel\":" + cells(compact->panel) +
           ",\"panelHeight\":" + number(compact->panelHeight) +
           ",\"panelName\":" + quoted(kPanelName) +
           ",\"menuPx\":" + number(textStyleFor(game.form->CDgo.name).px);
  }
  return out + "," + panelState() + "}";
}

// A tap on the panel's button: the panel opens or closes.
std::string togglePanel() {
  game.main->openPanel(!game.main->panelOpen());
  return "{" + panelState() + "}";
}

// What changed on screen since the last call (everything at the first): the windows, the
// focus, the news, and each control whose view changed.
std::string changes() {
  MatchForm& f = *game.form;
  game.announcer->update(f);
  const bool first = !game.formSent;
  // The controls first: where the focus is in the closing window depends on what is on show.
  std::string controls = "{";
  const bool ticksAlone = game.inputs() == game.inputsSent;
  game.inputsSent = game.inputs();
  appendChanges(*game.main, false, first, ticksAlone, controls);
  appendChanges(*game.closing, true, first, ticksAlone, controls);
  std::string out = "{";
  auto field = [&](std::string_view name, const std::string& value) {
    out += (out.size() > 1 ? "," : "") + quoted(name) + ":" + value;
  };
  if (first || f.Visible != game.shown) field("visible", flag(game.shown = f.Visible));
  if (first || f.LinksForm.Visible != game.closingShown)
    field("closing", flag(game.closingShown = f.LinksForm.Visible));
  if (first || f.Ended != game.ended) field("ended", flag(game.ended = f.Ended));
  if (first || f.BackColor != game.back) field("back", colour(game.back = f.BackColor));
  const std::string focus = (f.LinksForm.Visible ? game.closing : game.main)->focus();
  if (first || focus != game.focus) field("focus", quoted(game.focus = focus));
  if (const std::string& said = game.announcer->latest(); first || said != game.newsSent)
    field("news", quoted(game.newsSent = said));
  field("controls", controls + "}");
  game.formSent = true;
  return out + "}";
}

// Picture `name` as shapes for a box of `width` x `height` CSS pixels.
std::string drawing(const std::string& name, double width, double height, bool hovered, bool down,
                    bool focused) {
  const ControlView* v = game.main->find(name);
  if (v == nullptr) v = game.closing->find(name);
  if (v == nullptr) return "{\"opacity\":1,\"shapes\":[]}";
  const Look look = lookOf(*v->control, shirtNumberOf(*game.form, *v->control), hovered);
  const Box room{0, 0, width, height};
  const Drawing d = v->control->kind == Kind::CommandButton
                        ? describeButton(v->image, look, {down, focused, v->enabled}, room)
                        : describePicture(v->image, look, room);
  std::string out = "{\"opacity\":" + number(d.opacity) + ",\"shapes\":[";
  for (std::size_t i = 0; i < d.shapes.size(); ++i) out += (i > 0 ? "," : "") + shape(d.shapes[i]);
  return out + "]}";
}

// Where arrow `arrow` (0 up, 1 down, 2 left, 3 right) takes the focus from control `name`:
// {"to": name, "press": true when the control it reaches is pressed too}.
std::string arrow(const std::string& name, int arrow) {
  FormView& view = game.main->find(name) != nullptr ? *game.main : *game.closing;
  const ArrowMove move = view.arrow(name, static_cast<Arrow>(arrow));
  return "{\"to\":" + quoted(move.to) + ",\"press\":" + flag(move.press) +
         ",\"own\":" + flag(move.own) + "}";
}

// What Escape presses where the focus is: in the closing window, its Exit.
std::string escapeTarget() {
  return game.form->LinksForm.Visible ? game.closing->escape() : game.main->escape();
}

// What a person meets in the window on show, in the lines both fronts' tests compare.
std::string presentationNow() {
  std::string out = "[";
  for (const std::string& line :
       presentation(game.form->LinksForm.Visible ? *game.closing : *game.main))
    out += (out.size() > 1 ? "," : "") + quoted(line);
  return out + "]";
}

// The size a text `textWidth` pixels wide is shown at in a box `boxWidth` pixels wide.
double fitText(double fontPx, double boxWidth, double textWidth) {
  return game.main->fitted(fontPx, boxWidth, textWidth);
}

// A person's input and the time, through the session that can journal them.
void click(const std::string& name, double wallMs) {
  game.click(name, wallMs);
}
void clickClosing(double wallMs) {
  game.clickClosing(wallMs);
}
void key(int keyAscii, double wallMs) {
  game.key(keyAscii, wallMs);
}
bool edit(const std::string& name, const std::string& text, double wallMs) {
  return game.edit(name, text, wallMs);
}
void scroll(const std::string& name, int value, double wallMs) {
  game.scroll(name, value, wallMs);
}
// The person moved the keyboard focus to control `name`.
void focus(const std::string& name) {
  game.focusOn(name);
}
// Time: wake at `wallMs`; true when what is on show may have changed or there is news.
bool wake(double wallMs) {
  return game.wake(wallMs);
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
  game.messageClosed(wallMs);
}

// For a test: every input since start, and the whole state as the headless driver dumps it.
std::string journal() {
  return game.journal();
}
std::string dump() {
  return FormPaths(*game.form).dump();
}

}  // namespace

EMSCRIPTEN_BINDINGS(quorvel) {
  emscripten::function("start", &start);
  emscripten::function("layout", &layout);
  emscripten::function("changes", &changes);
  emscripten::function("togglePanel", &togglePanel);
  emscripten::function("arrow", &arrow);
  emscripten::function("escapeTarget", &escapeTarget);
  emscripten::function("fitText", &fitText);
  emscripten::function("presentation", &presentationNow);
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
  emscripten::function("journal", &journal);
  emscripten::function("dump", &dump);
}

}  // namespace quorvel
