#include "driver.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <istream>
#include <map>
#include <ostream>

#include "ai/ai.h"
#include "events/events.h"
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
  auto r = std::from_chars(s.data(), s.data() + s.size(), out);
  return r.ec == std::errc() && r.ptr == s.data() + s.size();
}

// A generous bound on ticks within one command: a script that advances a day of virtual time
// runs about six million ticks; this stops a timer loop that never lets time move on.
constexpr std::int64_t kTickBudget = 50'000'000;

}  // namespace

Driver::Driver(std::ostream& out, std::ostream& err)
    : out_(out), err_(err), form_(newMatchForm()), paths_(std::make_unique<FormPaths>(*form_)) {}

Driver::Status Driver::fail(int lineNo, const std::string& what) {
  err_ << "line " << lineNo << ": " << what << std::endl;
  return kFailed;
}

Driver::Status Driver::error(int lineNo, const std::string& what) {
  err_ << "line " << lineNo << ": " << what << std::endl;
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

Driver::Status Driver::call(const std::vector<std::string>& w, int lineNo) {
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

Driver::Status Driver::execute(std::string_view line, int lineNo) {
  std::vector<std::string> w;
  std::string reason;
  if (!splitWords(line, w, reason)) return error(lineNo, reason);
  if (w.empty()) return kOk;
  MatchForm& f = *form_;
  const std::string& cmd = w[0];
  auto arity = [&](std::size_t n, const char* usage) -> bool {
    if (w.size() == n) return true;
    reason = std::string("usage: ") + usage;
    return false;
  };

  if (cmd == "seed") {
    std::int64_t n;
    if (!arity(2, "seed N")) return error(lineNo, reason);
    if (!whole(w[1], n)) return error(lineNo, "seed '" + w[1] + "' is not a whole number");
    f.Rnd.seed(static_cast<std::uint64_t>(n));
    return kOk;
  }
  if (cmd == "rnd") {
    if (w.size() < 2) return error(lineNo, "usage: rnd R1 R2 ...");
    std::vector<double> draws;
    for (std::size_t i = 1; i < w.size(); ++i) {
      double r;
      if (!real(w[i], r)) return error(lineNo, "draw '" + w[i] + "' is not a number");
      if (!(r >= 0 && r < 1)) return error(lineNo, "draw " + w[i] + " is out of range [0, 1)");
      draws.push_back(r);
    }
    f.Rnd.force(draws);
    return kOk;
  }
  if (cmd == "click") {
    if (!arity(2, "click CONTROL")) return error(lineNo, reason);
    if (w[1] == "LinksForm") {
      userClickLinksForm(f);
      return kOk;
    }
    Control* c = paths_->control(w[1], &reason);
    if (c == nullptr) return error(lineNo, reason);
    userClick(f, *c);
    return kOk;
  }
  if (cmd == "key") {
    if (!arity(2, "key C")) return error(lineNo, reason);
    if (w[1].size() != 1) return error(lineNo, "key takes one typed character, not '" + w[1] + "'");
    userKey(f, static_cast<unsigned char>(w[1][0]));
    return kOk;
  }
  if (cmd == "advance") {
    std::int64_t ms;
    if (!arity(2, "advance MS")) return error(lineNo, reason);
    if (!whole(w[1], ms) || ms < 0)
      return error(lineNo, "advance needs a whole number of ms >= 0, not '" + w[1] + "'");
    if (!f.Sched.advance(ms, kTickBudget))
      return error(lineNo, "timers kept firing without time moving on");
    return kOk;
  }
  if (cmd == "until") {
    std::int64_t ms;
    if (!arity(4, "until PATH VALUE MS")) return error(lineNo, reason);
    if (!whole(w[3], ms) || ms < 0)
      return error(lineNo, "until needs a whole number of ms >= 0, not '" + w[3] + "'");
    const Millis limit = f.Sched.now() + ms;
    for (std::int64_t n = 0;; ++n) {
      bool same = false;
      if (auto err = paths_->compare(w[1], w[2], same); !err.empty()) return error(lineNo, err);
      if (same) return kOk;
      if (n >= kTickBudget) return error(lineNo, "timers kept firing without time moving on");
      if (!f.Sched.step(limit)) {
        f.Sched.setNow(limit);
        std::string now;
        paths_->get(w[1], now);
        return fail(lineNo,
                    w[1] + " reads '" + now + "', expected '" + w[2] + "' within " + w[3] + " ms");
      }
    }
  }
  if (cmd == "place") {
    int player, col, row;
    if (!arity(4, "place PLAYER COL ROW")) return error(lineNo, reason);
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
  if (cmd == "ball") {
    int player;
    if (!arity(2, "ball PLAYER")) return error(lineNo, reason);
    if (!whole(w[1], player) || player < 1 || player > 22)
      return error(lineNo, "ball: player '" + w[1] + "' is not 1..22");
    f.BallOwner = static_cast<Single>(player);
    f.TeamTurn = static_cast<Single>(sideOf(player));
    f.BallCol = static_cast<Integer>(roundEven(f.PlayerCol[player]));
    f.BallRow = static_cast<Integer>(roundEven(f.PlayerRow[player]));
    f.DiceReady = 1;
    return kOk;
  }
  if (cmd == "call") {
    if (w.size() < 2) return error(lineNo, "usage: call PROC [ARG]");
    return call(w, lineNo);
  }
  if (cmd == "set") {
    if (!arity(3, "set PATH VALUE")) return error(lineNo, reason);
    if (auto err = paths_->set(w[1], w[2]); !err.empty()) return error(lineNo, err);
    return kOk;
  }
  if (cmd == "get") {
    if (!arity(2, "get PATH")) return error(lineNo, reason);
    std::string value;
    if (auto err = paths_->get(w[1], value); !err.empty()) return error(lineNo, err);
    out_ << value << std::endl;
    return kOk;
  }
  if (cmd == "expect") {
    if (!arity(3, "expect PATH VALUE")) return error(lineNo, reason);
    bool same = false;
    if (auto err = paths_->compare(w[1], w[2], same); !err.empty()) return error(lineNo, err);
    if (same) return kOk;
    std::string now;
    paths_->get(w[1], now);
    return fail(lineNo, w[1] + " reads '" + now + "', expected '" + w[2] + "'");
  }
  if (cmd == "dump") {
    if (!arity(1, "dump")) return error(lineNo, reason);
    out_ << paths_->dump() << std::endl;
    return kOk;
  }
  return error(lineNo, "unknown command '" + cmd + "'");
}

}  // namespace quorvel
