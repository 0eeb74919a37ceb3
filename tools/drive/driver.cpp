#include "driver.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <istream>
#include <limits>
#include <map>
#include <ostream>

#include "ai/ai.h"
#include "events/events.h"
#include "match/codes.h"
#include "match/match.h"
#include "shape/shape.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

// "#rrggbb" standing as a word of its own is a colour value; any other '#' starts a comment.
bool colourWordAt(std::string_view line, std::size_t i) {
  if (i + 7 > line.size()) return false;
  for (std::size_t k = i + 1; k < i + 7; ++k)
    if (!std::isxdigit(static_cast<unsigned char>(line[k]))) return false;
  return i + 7 == line.size() || line[i + 7] == ' ' || line[i + 7] == '\t' || line[i + 7] == '\r';
}

}  // namespace

bool splitWords(std::string_view line, std::vector<std::string>& words, std::string& reason) {
  words.clear();
  std::size_t i = 0;
  while (i < line.size()) {
    const char ch = line[i];
    if (ch == ' ' || ch == '\t' || ch == '\r') {
      ++i;
    } else if (ch == '#' && !colourWordAt(line, i)) {
      break;
    } else if (ch == '"') {
      const auto close = line.find('"', i + 1);
      if (close == std::string_view::npos) {
        reason = "unclosed quote";
        return false;
      }
      words.emplace_back(line.substr(i + 1, close - i - 1));
      i = close + 1;
    } else {
      std::size_t j = i;
      while (j < line.size() && line[j] != ' ' && line[j] != '\t' && line[j] != '\r' &&
             (line[j] != '#' || j == i))
        ++j;
      words.emplace_back(line.substr(i, j - i));
      i = j;
    }
  }
  return true;
}

namespace {

template <typename T>
bool whole(const std::string& s, T& out) {
  auto r = std::from_chars(s.data(), s.data() + s.size(), out);
  return r.ec == std::errc() && r.ptr == s.data() + s.size();
}

bool real(const std::string& s, double& out) {
  return parseReal(s, out);
}

// A generous bound on ticks within one command: a script that advances a day of virtual time
// runs about six million ticks; this stops a timer loop that never lets time move on.
constexpr std::int64_t kTickBudget = 50'000'000;

// The longest wait one `advance` or `until` may ask for: a week of virtual time stays within the
// tick budget, and the clock far from overflowing however many waits a script makes.
constexpr std::int64_t kLongestWait = 7LL * 24 * 60 * 60 * 1000;

std::string waitTooLong(const char* cmd, const std::string& ms) {
  return std::string(cmd) + ": " + ms + " ms is longer than the longest wait, " +
         std::to_string(kLongestWait) + " ms (a week)";
}

// What a script wrote, as a message may show it: bytes other than printable ASCII escaped as
// \xNN, and a long text cut in the middle, so that a binary file or a megabyte line can neither
// flood nor drive the terminal.
std::string printable(std::string_view text) {
  constexpr std::size_t kHead = 160, kTail = 60;
  auto escaped = [](std::string_view part) {
    std::string out;
    for (const char ch : part) {
      const auto c = static_cast<unsigned char>(ch);
      if (c >= 0x20 && c < 0x7f) {
        out += ch;
      } else {
        static const char kHex[] = "0123456789abcdef";
        out += {'\\', 'x', kHex[c >> 4], kHex[c & 15]};
      }
    }
    return out;
  };
  if (text.size() <= kHead + kTail) return escaped(text);
  return escaped(text.substr(0, kHead)) + "...(" + std::to_string(text.size() - kHead - kTail) +
         " bytes left out)..." + escaped(text.substr(text.size() - kTail));
}

}  // namespace

Driver::Driver(std::ostream& out, std::ostream& err)
    : out_(out), err_(err), form_(newMatchForm()), paths_(std::make_unique<FormPaths>(*form_)) {}

Driver::Status Driver::fail(int lineNo, const std::string& what) {
  err_ << "line " << lineNo << ": " << printable(what) << std::endl;
  return kFailed;
}

Driver::Status Driver::error(int lineNo, const std::string& what) {
  err_ << "line " << lineNo << ": " << printable(what) << std::endl;
  return kError;
}

Driver::Status Driver::run(std::istream& in) {
  std::string line;
  int lineNo = 0;
  while (std::getline(in, line)) {
    ++lineNo;
    if (Status s = execute(line, lineNo); s != kOk) return s;
  }
  return kOk;
}

namespace {

// The procedures a script may call: plain ones, the four counts (printed), and the two that take
// an argument within a range.
const std::map<std::string, void (*)(MatchForm&), std::less<>> kProcedures = {
    {"SetPlay", SetPlay}, {"ClickDi", ClickDi}, {"TikTok", TikTok},   {"Rainbow", Rainbow},
    {"FormAI", FormAI},   {"MakeSub", MakeSub}, {"Quorvel", Quorvel}, {"Webbit", Webbit}};
const std::map<std::string, Integer (*)(const MatchForm&), std::less<>> kCounts = {
    {"Threat", Threat}, {"ThreatAI", ThreatAI}, {"Terror", Terror}, {"TerrorAI", TerrorAI}};
struct WithArgument {
  int (*proc)(MatchForm&, int);
  int lo, hi;
};
const std::map<std::string, WithArgument, std::less<>> kWithArgument = {{"Docol", {Docol, 0, 3}},
                                                                        {"Namer", {Namer, 1, 2}}};

}  // namespace

Driver::Status Driver::call(const Words& w, int lineNo) {
  MatchForm& f = *form_;
  const std::string& proc = w[1];
  if (auto p = kWithArgument.find(proc); p != kWithArgument.end()) {
    const WithArgument& a = p->second;
    int arg;
    if (w.size() != 3 || !whole(w[2], arg))
      return error(lineNo, "call " + proc + " takes one whole number");
    if (arg < a.lo || arg > a.hi)
      return error(lineNo, "call " + proc + ": " + w[2] + " is out of range " +
                               std::to_string(a.lo) + ".." + std::to_string(a.hi));
    a.proc(f, arg);
    return kOk;
  }
  const auto plain = kProcedures.find(proc);
  const auto count = kCounts.find(proc);
  if (plain == kProcedures.end() && count == kCounts.end())
    return error(lineNo, "unknown procedure '" + proc + "'");
  if (w.size() != 2) return error(lineNo, "call " + proc + " takes no argument");
  if (count != kCounts.end())
    out_ << count->second(f) << std::endl;
  else
    plain->second(f);
  return kOk;
}

// ---- commands --------------------------------------------------------------------------------

const std::vector<std::pair<std::string_view, Driver::Command>>& Driver::commands() {
  constexpr std::size_t kAny = std::numeric_limits<std::size_t>::max();
  static const std::vector<std::pair<std::string_view, Command>> kCommands = {
      {"seed", {2, 2, "seed N", &Driver::seed}},
      {"rnd", {2, kAny, "rnd R1 R2 ...", &Driver::rnd}},
      {"click", {2, 2, "click CONTROL", &Driver::click}},
      {"press", {2, 2, "press CONTROL", &Driver::press}},
      {"scroll", {3, 3, "scroll BAR VALUE", &Driver::scroll}},
      {"type", {3, 3, "type BOX TEXT", &Driver::type}},
      {"browser", {2, 2, "browser fails | browser works", &Driver::browser}},
      {"key", {2, 2, "key C", &Driver::key}},
      {"advance", {2, 2, "advance MS", &Driver::advance}},
      {"until", {4, 4, "until PATH VALUE MS", &Driver::until}},
      {"place", {4, 4, "place PLAYER COL ROW", &Driver::place}},
      {"ball", {2, 2, "ball PLAYER", &Driver::ball}},
      {"call", {2, kAny, "call PROC [ARG]", &Driver::call}},
      {"set", {3, 3, "set PATH VALUE", &Driver::set}},
      {"get", {2, 2, "get PATH", &Driver::get}},
      {"expect", {3, 3, "expect PATH VALUE", &Driver::expect}},
      {"dump", {1, 1, "dump", &Driver::dump}},
  };
  return kCommands;
}

const Driver::Command* Driver::command(std::string_view name) {
  for (const auto& [word, c] : commands())
    if (word == name) return &c;
  return nullptr;
}

std::vector<std::string> Driver::usages() {
  std::vector<std::string> all;
  for (const auto& entry : commands()) all.emplace_back(entry.second.usage);
  return all;
}

Driver::Status Driver::execute(std::string_view line, int lineNo) {
  Words w;
  std::string reason;
  if (!splitWords(line, w, reason)) return error(lineNo, reason);
  if (w.empty()) return kOk;
  const Command* c = command(w[0]);
  if (c == nullptr) return error(lineNo, "unknown command '" + w[0] + "'");
  if (w.size() < c->minWords || w.size() > c->maxWords)
    return error(lineNo, std::string("usage: ") + c->usage);
  return (this->*c->handler)(w, lineNo);
}

Driver::Status Driver::seed(const Words& w, int lineNo) {
  std::int64_t n;
  if (!whole(w[1], n)) return error(lineNo, "seed '" + w[1] + "' is not a whole number");
  form_->Rnd.seed(static_cast<std::uint64_t>(n));
  return kOk;
}

Driver::Status Driver::rnd(const Words& w, int lineNo) {
  std::vector<double> draws;
  for (std::size_t i = 1; i < w.size(); ++i) {
    double r;
    if (!real(w[i], r)) return error(lineNo, "draw '" + w[i] + "' is not a number");
    if (!(r >= 0 && r < 1)) return error(lineNo, "draw " + w[i] + " is out of range [0, 1)");
    draws.push_back(r);
  }
  form_->Rnd.force(draws);
  return kOk;
}

Driver::Status Driver::click(const Words& w, int lineNo) {
  if (w[1] == "LinksForm") {
    userClickLinksForm(*form_);
    return kOk;
  }
  std::string reason;
  Control* c = paths_->control(w[1], &reason);
  if (c == nullptr) return error(lineNo, reason);
  userClick(*form_, *c);
  return kOk;
}

Driver::Status Driver::press(const Words& w, int lineNo) {
  std::string reason;
  Control* c = paths_->control(w[1], &reason);
  if (c == nullptr) return error(lineNo, reason);
  userPress(*form_, *c);
  return kOk;
}

// A drag of the bar's thumb to VALUE: its change handler runs when the value changes.
Driver::Status Driver::scroll(const Words& w, int lineNo) {
  std::string reason;
  Control* c = paths_->control(w[1], &reason);
  if (c == nullptr) return error(lineNo, reason);
  if (c->kind != Kind::ScrollBar) return error(lineNo, "'" + w[1] + "' is not a scroll bar");
  auto& bar = static_cast<ScrollBar&>(*c);
  const int lo = std::min(bar.Min, bar.Max), hi = std::max(bar.Min, bar.Max);
  int value;
  if (!whole(w[2], value) || value < lo || value > hi)
    return error(lineNo, "scroll: value '" + w[2] + "' is not " + std::to_string(lo) + ".." +
                             std::to_string(hi));
  userScroll(*form_, bar, value);
  return kOk;
}

// A person's typing replaces the box's text; a locked, hidden or disabled box keeps its own.
Driver::Status Driver::type(const Words& w, int lineNo) {
  std::string reason;
  Control* c = paths_->control(w[1], &reason);
  if (c == nullptr) return error(lineNo, reason);
  if (c->kind != Kind::TextBox) return error(lineNo, "'" + w[1] + "' is not a text box");
  userEdit(*form_, static_cast<TextBox&>(*c), w[2]);
  return kOk;
}

// Whether the pages the game opens reach a browser (the headless default) or none can start.
Driver::Status Driver::browser(const Words& w, int lineNo) {
  if (w[1] == "fails")
    form_->platform.openUrl = [](const std::string&) { return false; };
  else if (w[1] == "works")
    form_->platform.openUrl = nullptr;
  else
    return error(lineNo, "usage: browser fails | browser works");
  return kOk;
}

Driver::Status Driver::key(const Words& w, int lineNo) {
  if (w[1].size() != 1) return error(lineNo, "key takes one typed character, not '" + w[1] + "'");
  userKey(*form_, static_cast<unsigned char>(w[1][0]));
  return kOk;
}

Driver::Status Driver::advance(const Words& w, int lineNo) {
  std::int64_t ms;
  if (!whole(w[1], ms) || ms < 0)
    return error(lineNo, "advance needs a whole number of ms >= 0, not '" + w[1] + "'");
  if (ms > kLongestWait) return error(lineNo, waitTooLong("advance", w[1]));
  if (!form_->Sched.advance(ms, kTickBudget))
    return error(lineNo, "timers kept firing without time moving on");
  return kOk;
}

Driver::Status Driver::until(const Words& w, int lineNo) {
  std::int64_t ms;
  if (!whole(w[3], ms) || ms < 0)
    return error(lineNo, "until needs a whole number of ms >= 0, not '" + w[3] + "'");
  if (ms > kLongestWait) return error(lineNo, waitTooLong("until", w[3]));
  Scheduler& sched = form_->Sched;
  const Millis limit = sched.now() + ms;
  for (std::int64_t n = 0;; ++n) {
    bool same = false;
    if (auto err = paths_->compare(w[1], w[2], same); !err.empty()) return error(lineNo, err);
    if (same) return kOk;
    if (n >= kTickBudget) return error(lineNo, "timers kept firing without time moving on");
    if (!sched.step(limit)) {
      sched.setNow(limit);
      std::string now;
      paths_->get(w[1], now);
      return fail(lineNo,
                  w[1] + " reads '" + now + "', expected '" + w[2] + "' within " + w[3] + " ms");
    }
  }
}

Driver::Status Driver::place(const Words& w, int lineNo) {
  MatchForm& f = *form_;
  int player, col, row;
  if (!whole(w[1], player) || player < 1 || player > 22)
    return error(lineNo, "place: player '" + w[1] + "' is not 1..22");
  if (!whole(w[2], col) || col < 1 || col > 16 || !whole(w[3], row) || row < 1 || row > 8)
    return error(lineNo, "place: square (" + w[2] + ", " + w[3] + ") is not on the pitch");
  f.PlayerCol[player] = col;
  f.PlayerRow[player] = row;
  f.Player[player].Left = playerLeft(col);
  f.Player[player].Top = playerTop(row);
  return kOk;
}

Driver::Status Driver::ball(const Words& w, int lineNo) {
  MatchForm& f = *form_;
  int player;
  if (!whole(w[1], player) || player < 1 || player > 22)
    return error(lineNo, "ball: player '" + w[1] + "' is not 1..22");
  f.BallOwner = static_cast<Single>(player);
  f.TeamTurn = static_cast<Single>(sideOf(player));
  f.BallCol = static_cast<Integer>(roundEven(f.PlayerCol[player]));
  f.BallRow = static_cast<Integer>(roundEven(f.PlayerRow[player]));
  f.DiceReady = kDiceReady;
  return kOk;
}

Driver::Status Driver::set(const Words& w, int lineNo) {
  if (auto err = paths_->set(w[1], w[2]); !err.empty()) return error(lineNo, err);
  return kOk;
}

Driver::Status Driver::get(const Words& w, int lineNo) {
  std::string value;
  if (auto err = paths_->get(w[1], value); !err.empty()) return error(lineNo, err);
  out_ << value << std::endl;
  return kOk;
}

Driver::Status Driver::expect(const Words& w, int lineNo) {
  bool same = false;
  if (auto err = paths_->compare(w[1], w[2], same); !err.empty()) return error(lineNo, err);
  if (same) return kOk;
  std::string now;
  paths_->get(w[1], now);
  return fail(lineNo, w[1] + " reads '" + now + "', expected '" + w[2] + "'");
}

Driver::Status Driver::dump(const Words&, int) {
  out_ << paths_->dump() << std::endl;
  return kOk;
}

}  // namespace quorvel
