#include "session.h"

#include <sstream>

#include "events/events.h"
#include "view/form_view.h"

namespace quorvel {

namespace {

// The browser's clock in whole milliseconds, as the game's time takes it.
Millis whole(double wallMs) {
  return static_cast<Millis>(wallMs);
}

}  // namespace

// A line of the journal: its letter, then its words. A text goes last, after its length, so
// that it may hold anything.
template <typename... Words>
void Session::note(char what, const Words&... words) {
  if (what != 'w') ++inputs_;
  if (!journaling_) return;
  journal_ += what;
  ((journal_ += ' ', journal_ += words), ...);
  journal_ += '\n';
}

void Session::start(std::uint64_t seed, double wallMs, bool journal) {
  journaling_ = journal;
  journal_.clear();
  note('s', std::to_string(seed), std::to_string(whole(wallMs)));
  form = newMatchForm(seed);
  MatchForm& f = *form;
  pace = std::make_unique<Pace>(f);
  announcer = std::make_unique<Announcer>(f);
  f.platform.showMessage = [this](const Message& m) {
    pace->hold();  // released when the person closes the box
    showMessage(m);
  };
  f.platform.openUrl = [this](const std::string& url) {
    const bool opened = openUrl(url);
    note('u', std::string(opened ? "1" : "0"));  // the browser's answer, which the game heeds
    return opened;
  };
  f.platform.quit = [this] { quit(); };
  byName_.clear();
  forEachControl(f, [this](Control& c) { byName_[c.name] = &c; });
  pace->start(whole(wallMs));
}

Control* Session::find(const std::string& name) const {
  const auto it = byName_.find(name);
  return it == byName_.end() ? nullptr : it->second;
}

// Brings the game up to the wall clock, telling what happened until then, as the window does
// before a person's input lands.
void Session::catchUp(Millis wall) {
  pace->catchUp(wall);
  announcer->update(*form);
}

void Session::click(const std::string& name, double wallMs) {
  note('c', std::to_string(whole(wallMs)), name);
  catchUp(whole(wallMs));
  if (Control* c = find(name)) userClick(*form, *c);
}

void Session::clickClosing(double wallMs) {
  note('l', std::to_string(whole(wallMs)));
  catchUp(whole(wallMs));
  userClickLinksForm(*form);
}

void Session::key(int keyAscii, double wallMs) {
  note('k', std::to_string(whole(wallMs)), std::to_string(keyAscii));
  if (!reachesGame(static_cast<std::uint32_t>(keyAscii))) return;
  catchUp(whole(wallMs));
  userKey(*form, keyAscii);
}

bool Session::edit(const std::string& name, const std::string& text, double wallMs) {
  note('e', std::to_string(whole(wallMs)), name, std::to_string(text.size()), text);
  catchUp(whole(wallMs));
  Control* c = find(name);
  return c != nullptr && c->kind == Kind::TextBox &&
         userEdit(*form, static_cast<TextBox&>(*c), text);
}

void Session::scroll(const std::string& name, int value, double wallMs) {
  note('r', std::to_string(whole(wallMs)), name, std::to_string(value));
  catchUp(whole(wallMs));
  Control* c = find(name);
  if (c != nullptr && c->kind == Kind::ScrollBar)
    userScroll(*form, static_cast<ScrollBar&>(*c), value);
}

void Session::focusOn(const std::string& name) {
  note('f', name);
  if (find(name) != nullptr) form->ActiveControl = name;
}

void Session::messageClosed(double wallMs) {
  note('m', std::to_string(whole(wallMs)));
  pace->release(whole(wallMs));
}

bool Session::wake(double wallMs) {
  note('w', std::to_string(whole(wallMs)));
  const bool ticked = pace->wake(whole(wallMs));
  return !announcer->update(*form).empty() || ticked;
}

bool replay(Session& s, std::istream& in, std::string& bad) {
  // A page opened (or not) in the middle of an input: its answer is the journal's next line.
  s.openUrl = [&in](const std::string&) {
    char what = 0;
    int opened = 0;
    return in >> what >> opened && what == 'u' && opened == 1;
  };
  char what = 0;
  for (int entry = 1; in >> what; ++entry) {
    std::uint64_t seed = 0;
    double wall = 0;
    std::string name;
    int number = 0;
    std::size_t length = 0;
    if (what != 'f' && what != 's') in >> wall;
    bool read = what == 's' || s.form != nullptr;  // a journal starts with its match
    if (!read) what = 0;
    switch (what) {
      case 's':
        read = static_cast<bool>(in >> seed >> wall);
        s.start(seed, wall, false);
        break;
      case 'c':
        read = static_cast<bool>(in >> name);
        s.click(name, wall);
        break;
      case 'l':
        s.clickClosing(wall);
        break;
      case 'k':
        read = static_cast<bool>(in >> number);
        s.key(number, wall);
        break;
      case 'e': {
        read = static_cast<bool>(in >> name >> length) && in.get() == ' ';
        std::string text(length, '\0');
        read = read && in.read(text.data(), static_cast<std::streamsize>(length));
        s.edit(name, text, wall);
        break;
      }
      case 'r':
        read = static_cast<bool>(in >> name >> number);
        s.scroll(name, number, wall);
        break;
      case 'f':
        read = static_cast<bool>(in >> name);
        s.focusOn(name);
        break;
      case 'm':
        s.messageClosed(wall);
        break;
      case 'w':
        s.wake(wall);
        break;
      default:
        read = false;
    }
    if (!read || !in) {
      bad = "entry " + std::to_string(entry) + " cannot be read";
      return false;
    }
  }
  return true;
}

}  // namespace quorvel
