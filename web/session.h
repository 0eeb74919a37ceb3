// The page's game and its time, as a person's input and the browser's clock reach them: the one
// way in for the page and for a replay of what the page was given. Every call can be written
// to a journal, so that a replay under Node, with no browser, reaches the very same state.
#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <map>
#include <memory>
#include <string>

#include "events/pace.h"
#include "match/match_form.h"
#include "ui/announcements.h"

namespace quorvel {

class Session {
 public:
  // What the platform does for the game; a message box holds the game's time until it closes.
  std::function<void(const Message&)> showMessage = [](const Message&) {};
  std::function<bool(const std::string& url)> openUrl = [](const std::string&) { return false; };
  std::function<void()> quit = [] {};

  // A new match from `seed` at wall time `wallMs`; `journal` keeps every later call.
  void start(std::uint64_t seed, double wallMs, bool journal);

  // A person's input, each at the moment it happened, after the game has caught up to it.
  void click(const std::string& name, double wallMs);
  void clickClosing(double wallMs);
  void key(int keyAscii, double wallMs);
  bool edit(const std::string& name, const std::string& text, double wallMs);
  void scroll(const std::string& name, int value, double wallMs);
  void focusOn(const std::string& name);
  void messageClosed(double wallMs);
  // A wake-up: true when what is on show may have changed or there is news.
  bool wake(double wallMs);

  Control* find(const std::string& name) const;
  // Every call since start, one a line (start's own line first).
  const std::string& journal() const { return journal_; }
  // How many calls since start were not wake-ups: what may change more than a tick can.
  std::uint64_t inputs() const { return inputs_; }

  std::unique_ptr<MatchForm> form;
  std::unique_ptr<Pace> pace;
  std::unique_ptr<Announcer> announcer;

 private:
  void catchUp(Millis wall);
  template <typename... Words>
  void note(char what, const Words&... words);

  std::map<std::string, Control*, std::less<>> byName_;
  bool journaling_ = false;
  std::string journal_;
  std::uint64_t inputs_ = 0;
};

// Plays `journal` into a new session whose pages open as the journal says they did. Returns
// false, with the line, on a line it cannot read.
bool replay(Session& s, std::istream& journal, std::string& bad);

}  // namespace quorvel
