#include "sim.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <random>
#include <thread>

#include "ai/ai.h"
#include "events/events.h"
#include "match/codes.h"
#include "match/match.h"
#include "shape/shape.h"
#include "ui/ui.h"

namespace quorvel::sim {

namespace {

// A match takes ten to fifteen virtual minutes; one that is still going after six hours is stuck.
constexpr Millis kMatchLimitMs = 6LL * 3600 * 1000;

bool anyFlagShown(const MatchForm& f) {
  for (int d = 0; d < 8; ++d)
    if (f.CDdest[d].Visible) return true;
  return false;
}

// Nothing moves that a roll or a flag would have to wait for.
bool still(const MatchForm& f) {
  return f.GameEnd.empty() && f.KickFlag == -1 && !f.TimPlace.Enabled() && !f.TimSub.Enabled() &&
         !f.TimSc.Enabled();
}

bool over(const MatchForm& f) {
  // The move that reaches 90:00 may be a goal: its celebration still counts it.
  return !f.GameEnd.empty() && !f.TimSc.Enabled();
}

// The people at the controls: they act at once whenever the form waits for them. The left side
// is always a person; the right side is one too except in "Play Left vs AI".
class People {
 public:
  People(const Settings& s, std::uint64_t seed, const MomentObserver& seen)
      : s_(s), seen_(seen), rng_(seed ^ 0x5bd1e995u) {}

  // True when an action changed the state of the turn.
  bool act(MatchForm& f) {
    if (!still(f)) return false;
    const int side = f.TeamTurn == kRightSide ? 2 : 1;
    if (side == 2 && s_.mode == Mode::AI) return false;  // the computer's own timer plays
    const Single ready = f.DiceReady;
    const Integer kickFlag = f.KickFlag;
    if (f.DiceReady == kDiceReady) {
      if (side == 1) chooseFormation(f);
      roll(f, side);
    } else if (anyFlagShown(f))
      kick(f, side, choose(f, side));
    return f.DiceReady != ready || f.KickFlag != kickFlag;
  }

  // The mirrored computer also picks its formation the computer's way: before Start and
  // before each of its rolls (a person cannot reach the buttons' re-plan inside a walk).
  void chooseFormation(MatchForm& f) {
    if (s_.left != LeftPlayer::Mirror) return;
    const int k = mirroredFormation(f, s_.leftIq);
    if (k >= 0 && !f.OPForm[k].Value) click(f, f.OPForm[k]);
  }

 private:
  // "Mouse vs Keys" gives the right side the keys; everyone else uses the mouse.
  bool keys(int side) const { return side == 2 && s_.mode == Mode::Keys; }

  void click(MatchForm& f, Control& c) {
    userClick(f, c);
    if (seen_) seen_(f, "click " + c.name);
  }

  void key(MatchForm& f, int keyAscii) {
    userKey(f, keyAscii);
    if (seen_) seen_(f, std::string("key ") + static_cast<char>(keyAscii));
  }

  void roll(MatchForm& f, int side) {
    if (keys(side))
      key(f, kRollKey);
    else
      click(f, f.Cdice);
  }

  void kick(MatchForm& f, int side, int d) {
    if (d < 0 || d > 7) return;
    if (keys(side))
      key(f, kFlagKeys[d]);
    else
      click(f, f.CDdest[d]);
  }

  int choose(MatchForm& f, int side) {
    if (side == 2) return computerFlag(f, s_.iq);
    if (s_.left == LeftPlayer::Mirror) return mirroredFlag(f, s_.leftIq);
    int shown[8], n = 0;
    for (int d = 0; d < 8; ++d)
      if (f.CDdest[d].Visible) shown[n++] = d;
    return shown[pick(n)];
  }

  // 0..n-1, each as likely: Lemire's multiply-and-reject, the draw GCC's library makes for
  // this engine, written out so that every standard library deals the same hand.
  int pick(int n) {
    const std::uint64_t range = static_cast<std::uint64_t>(n);
    unsigned __int128 product = static_cast<unsigned __int128>(rng_()) * range;
    if (static_cast<std::uint64_t>(product) < range) {
      const std::uint64_t threshold = -range % range;
      while (static_cast<std::uint64_t>(product) < threshold)
        product = static_cast<unsigned __int128>(rng_()) * range;
    }
    return static_cast<int>(product >> 64);
  }

  const Settings& s_;
  const MomentObserver& seen_;
  std::mt19937_64 rng_;  // the random player's own hand, apart from the game's dice
};

void prepare(MatchForm& f, const Settings& s) {
  const int mode = s.mode == Mode::Free ? 0 : s.mode == Mode::Keys ? 1 : 2;
  userClick(f, f.OpMode[mode]);
  if (s.tenSeconds) userClick(f, f.ChtenFIF);  // before the IQ: ticking it sets IQ 6
  userScroll(f, f.Hai, s.iq);
  userScroll(f, f.Vai, f.Vai.Min);  // the computer decides at its quickest
  if (s.rank) userClick(f, f.Ch50);
  if ((f.Chq.Value == 1) != s.quickplay) userClick(f, f.Chq);
  if (s.randomTeams) userClick(f, f.cdr);
  if (s.autoPlay) userClick(f, f.ChAuto);  // unticked: automatic play on
  // Every match is played as a later match of a run, so that the kick-off is a fair draw
  // rather than the first match's two chances in three for the left side.
  f.GameCount = 1;
}

std::uint64_t splitmix(std::uint64_t x) {
  x += 0x9e3779b97f4a7c15ULL;
  x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
  x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
  return x ^ (x >> 31);
}

}  // namespace

std::uint64_t matchSeed(std::uint64_t seed, std::uint64_t index) {
  return splitmix(splitmix(seed) ^ index);
}

int mirrorDirection(int d) {
  return (8 - d) % 8;  // 0 and 4 stay; 1<->7, 2<->6, 3<->5
}

int computerFlag(MatchForm& f, int iq) {
  f.AIIQ = iq;
  weighFlags(f);
  return roundIndex(f.AIFlag);
}

int mirroredFlag(MatchForm& f, int iq) {
  const auto col = f.PlayerCol, row = f.PlayerRow;
  const Integer ballCol = f.BallCol, goalDiff = f.GoalDiff;
  const auto dx = f.FlagDx, dy = f.FlagDy, goal = f.FlagGoal;
  const double aiIq = f.AIIQ;
  const Single clickFrom = f.ClickFrom, aiFlag = f.AIFlag;
  bool shown[8];
  for (int d = 0; d < 8; ++d) shown[d] = f.CDdest[d].Visible;

  // The left side becomes the right side in the mirror, and the other way round.
  for (int i = 1; i <= 11; ++i) {
    f.PlayerCol[i + 11] = 17 - col[i];
    f.PlayerRow[i + 11] = row[i];
    f.PlayerCol[i] = 17 - col[i + 11];
    f.PlayerRow[i] = row[i + 11];
  }
  f.BallCol = static_cast<Integer>(17 - ballCol);
  for (int d = 0; d < 8; ++d) {
    const int m = mirrorDirection(d);
    f.FlagDx[m] = dx[d];
    f.FlagDy[m] = dy[d];
    f.FlagGoal[m] = goal[d];
    f.CDdest[m].Visible = shown[d];
  }
  // The score from the left side's view: its goals minus the right side's.
  f.GoalDiff = static_cast<Integer>(-goalDifference(f));
  f.AIIQ = iq;

  weighFlags(f);
  const int choice = mirrorDirection(roundIndex(f.AIFlag));

  f.PlayerCol = col;
  f.PlayerRow = row;
  f.BallCol = ballCol;
  f.GoalDiff = goalDiff;
  f.FlagDx = dx;
  f.FlagDy = dy;
  f.FlagGoal = goal;
  for (int d = 0; d < 8; ++d) f.CDdest[d].Visible = shown[d];
  f.AIIQ = aiIq;
  f.ClickFrom = clickFrom;
  f.AIFlag = aiFlag;
  return choice;
}

int mirroredFormation(MatchForm& f, int iq) {
  // Its selections raise the buttons' handler, which would re-plan a walk in the mirror.
  if (!playLeftVsAI(f) || f.TimPlace.Enabled()) return -1;
  bool selected[15];
  for (int i = 0; i < 15; ++i) selected[i] = f.OPForm[i].Value;
  const int hai = f.Hai.Value;
  const Integer goalDiff = f.GoalDiff;

  for (int i = 0; i < 5; ++i) std::swap(f.OPForm[i].Value, f.OPForm[i + 10].Value);
  std::swap(f.Goals[1].Text, f.Goals[2].Text);
  f.Hai.Value = iq;
  FormAI(f);
  const int choice = selectedFormation(f, 2) - 10;

  for (int i = 0; i < 15; ++i) f.OPForm[i].Value = selected[i];
  std::swap(f.Goals[1].Text, f.Goals[2].Text);
  f.Hai.Value = hai;
  f.GoalDiff = goalDiff;
  Rainbow(f);  // the buttons were painted in the mirror
  return choice;
}

MatchResult playMatch(const Settings& setup, std::uint64_t seed,
                      const std::function<void(MatchForm&)>& atEnd,
                      const MomentObserver& onMoment) {
  MatchResult r;
  r.seed = seed;
  auto form = newMatchForm(seed);
  MatchForm& f = *form;
  prepare(f, setup);
  People people(setup, seed, onMoment);
  people.chooseFormation(f);
  userClick(f, f.CDgo);
  if (onMoment) onMoment(f, "click CDgo");

  bool exchange = false;
  while (!over(f)) {
    if (f.Sched.now() > kMatchLimitMs) break;
    if (!people.act(f)) {
      if (!f.Sched.step(f.Sched.now() + kMatchLimitMs)) break;
      if (onMoment) onMoment(f, f.Sched.lastRun()->name());
    }
    if (f.TimSub.Enabled() != exchange) {
      exchange = !exchange;
      if (exchange) ++r.subs[f.TeamTurn == kRightSide ? 2 : 1];
    }
  }
  r.finished = over(f);
  r.goals[1] = static_cast<int>(textValue(f.Goals[1].Text));
  r.goals[2] = static_cast<int>(textValue(f.Goals[2].Text));
  r.kicks = static_cast<long>(f.KickCount[1] + f.KickCount[2]);
  r.virtualMs = f.Sched.now();
  r.ticks = f.Sched.ticksRun();
  if (atEnd) atEnd(f);
  return r;
}

std::vector<MatchResult> playMatches(const Settings& setup, std::uint64_t seed, std::uint64_t first,
                                     std::uint64_t count, int jobs) {
  std::vector<MatchResult> results(count);
  std::atomic<std::uint64_t> next{0};
  auto work = [&] {
    for (std::uint64_t k; (k = next.fetch_add(1)) < count;)
      results[k] = playMatch(setup, matchSeed(seed, first + k));
  };
  const int threads = static_cast<int>(std::clamp<std::uint64_t>(
      static_cast<std::uint64_t>(std::max(jobs, 1)), 1, std::max<std::uint64_t>(count, 1)));
  std::vector<std::thread> pool;
  for (int t = 1; t < threads; ++t) pool.emplace_back(work);
  work();
  for (auto& t : pool) t.join();
  return results;
}

Tally tally(const std::vector<MatchResult>& results) {
  Tally t;
  for (const MatchResult& r : results) {
    ++t.matches;
    if (!r.finished) ++t.unfinished;
    if (r.goals[1] > r.goals[2])
      ++t.wins[1];
    else if (r.goals[2] > r.goals[1])
      ++t.wins[2];
    else
      ++t.draws;
    for (int s = 1; s <= 2; ++s) {
      t.goals[s] += r.goals[s];
      t.subs[s] += r.subs[s];
    }
    t.kicks += r.kicks;
    t.virtualMinutes += static_cast<double>(r.virtualMs) / 60000.0;
    t.ticks += r.ticks;
  }
  return t;
}

bool parseIqList(const std::string& text, std::vector<int>& iqs) {
  iqs.clear();
  std::size_t i = 0;
  auto number = [&](int& v) {
    const auto res = std::from_chars(text.data() + i, text.data() + text.size(), v);
    if (res.ec != std::errc() || v < 1 || v > 6) return false;
    i = static_cast<std::size_t>(res.ptr - text.data());
    return true;
  };
  while (i < text.size()) {
    int lo, hi;
    if (!number(lo)) return false;
    hi = lo;
    if (i < text.size() && text[i] == '-') {
      ++i;
      if (!number(hi) || hi < lo) return false;
    }
    for (int v = lo; v <= hi; ++v) iqs.push_back(v);
    if (i < text.size() && text[i++] != ',') return false;
    if (i == text.size() && text.back() == ',') return false;
  }
  return !iqs.empty();
}

}  // namespace quorvel::sim
