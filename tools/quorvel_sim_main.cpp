// quorvel-sim: plays whole matches headless, as fast as the machine allows, and prints the
// results and the throughput. The same seed gives the same results, whatever --jobs says.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "options.h"
#include "sim.h"

namespace {

using quorvel::options::Parsed;
using quorvel::options::shown;
using quorvel::sim::LeftPlayer;
using quorvel::sim::Mode;

const char* const kUsage =
    "usage: quorvel-sim [options]\n"
    "  --matches N     matches to play (per pairing of IQs), 1..1000000, default 100\n"
    "  --seed S        seed of the run, 0..2^64-1; match k is seeded from (S, k), default 1\n"
    "  --first K       index of the first match, 0..2^63-1, default 0 (--first 17 --matches 1\n"
    "                  replays match 17 alone)\n"
    "  --mode M        free | keys | ai (default): the mode the matches are played in\n"
    "  --iq LIST       the computer's IQ (right side), 1..6; a list such as 1-6 or 2,4,6\n"
    "  --left P        random | mirror (default): the left side rolls and picks a random\n"
    "                  flag, or the computer's own choice mirrored to the left\n"
    "  --left-iq LIST  the mirrored computer's IQ, as --iq; default the same as --iq\n"
    "  --jobs J        threads to spread the matches over, 0..256, default 1; 0 = every core\n"
    "  --list          print every match's score\n"
    "  --ten-seconds   \"10/15 secs\" ticked: 10-second moves, 540 a match\n"
    "  --rank          50/50 balls go to rank instead of a dice contest\n"
    "  --walk          \"Quickplay\" off: the players walk to their squares\n"
    "  --random-teams  \"Random Teams\" pressed before Start\n"
    "  --auto          automatic play on\n"
    "  --help          print this and exit\n"
    "In free and keys mode the right side plays the computer's flag choice through the mouse or\n"
    "the keys; in ai mode the computer plays it with its own timer. Unless told otherwise each\n"
    "match is played with \"Quickplay\" on and automatic play off.\n";

// Each match keeps its result until the run is tallied: a million is about 64 MB.
constexpr std::uint64_t kMostMatches = 1'000'000;
// More threads than any machine has cores only slow the run down.
constexpr std::uint64_t kMostJobs = 256;
// Match indices stay clear of wrapping round, whatever --matches says.
constexpr std::uint64_t kLastFirst = std::numeric_limits<std::int64_t>::max();

// The options that switch one of the match's settings from its default.
struct Switch {
  std::string_view name;
  bool quorvel::sim::Settings::*setting;
  bool value;
};
const Switch kSwitches[] = {{"--ten-seconds", &quorvel::sim::Settings::tenSeconds, true},
                            {"--rank", &quorvel::sim::Settings::rank, true},
                            {"--walk", &quorvel::sim::Settings::quickplay, false},
                            {"--random-teams", &quorvel::sim::Settings::randomTeams, true},
                            {"--auto", &quorvel::sim::Settings::autoPlay, true}};

struct Options {
  quorvel::sim::Settings settings;  // the switches above; mode and IQs are set per cell
  long matches = 100;
  std::uint64_t seed = 1;
  std::uint64_t first = 0;
  Mode mode = Mode::AI;
  LeftPlayer left = LeftPlayer::Mirror;
  std::vector<int> iqs{6}, leftIqs;
  int jobs = 1;
  bool list = false;
};

constexpr const char* kTool = "quorvel-sim";

bool wholeNumber(const char* option, std::string_view text, std::uint64_t lo, std::uint64_t hi,
                 std::uint64_t& v) {
  return quorvel::options::wholeNumber(kTool, option, text, lo, hi, v);
}

bool oneOf(const char* option, std::string_view text,
           std::initializer_list<std::string_view> words) {
  if (std::find(words.begin(), words.end(), text) != words.end()) return true;
  std::string list;
  for (auto w = words.begin(); w != words.end(); ++w)
    list += (w == words.begin() ? "" : w + 1 == words.end() ? " or " : ", ") + std::string(*w);
  std::fprintf(stderr, "quorvel-sim: %s takes %s, not '%s'\n", option, list.c_str(),
               shown(text).c_str());
  return false;
}

bool iqList(const char* option, const char* text, std::vector<int>& iqs) {
  if (quorvel::sim::parseIqList(text, iqs)) return true;
  std::fprintf(stderr, "quorvel-sim: %s takes IQs 1..6 as a list such as 1-6 or 2,4,6, not '%s'\n",
               option, shown(text).c_str());
  return false;
}

Parsed parse(int argc, char** argv, Options& o) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view a = argv[i];
    if (a == "--list") {
      o.list = true;
      continue;
    }
    if (a == "--help" || a == "-h") return Parsed::Help;
    const auto sw = std::find_if(std::begin(kSwitches), std::end(kSwitches),
                                 [&](const Switch& k) { return k.name == a; });
    if (sw != std::end(kSwitches)) {
      o.settings.*(sw->setting) = sw->value;
      continue;
    }
    static const char* const kTakingValues[] = {"--matches", "--seed", "--first", "--jobs",
                                                "--mode",    "--left", "--iq",    "--left-iq"};
    if (std::find(std::begin(kTakingValues), std::end(kTakingValues), a) == std::end(kTakingValues))
      return quorvel::options::unknownOption(kTool, a);
    const char* opt = argv[i];
    const char* value = quorvel::options::valueOf(kTool, argc, argv, i);
    if (value == nullptr) return Parsed::Bad;
    const std::string_view v = value;
    std::uint64_t n = 0;
    bool ok = true;
    if (a == "--matches") {
      ok = wholeNumber(opt, v, 1, kMostMatches, n);
      o.matches = static_cast<long>(n);
    } else if (a == "--seed") {
      ok = wholeNumber(opt, v, 0, std::numeric_limits<std::uint64_t>::max(), o.seed);
    } else if (a == "--first") {
      ok = wholeNumber(opt, v, 0, kLastFirst, o.first);
    } else if (a == "--jobs") {
      ok = wholeNumber(opt, v, 0, kMostJobs, n);
      o.jobs = n == 0 ? static_cast<int>(std::max(1u, std::thread::hardware_concurrency()))
                      : static_cast<int>(n);
    } else if (a == "--mode") {
      ok = oneOf(opt, v, {"free", "keys", "ai"});
      o.mode = v == "free" ? Mode::Free : v == "keys" ? Mode::Keys : Mode::AI;
    } else if (a == "--left") {
      ok = oneOf(opt, v, {"random", "mirror"});
      o.left = v == "random" ? LeftPlayer::Random : LeftPlayer::Mirror;
    } else {
      ok = iqList(opt, value, a == "--iq" ? o.iqs : o.leftIqs);
    }
    if (!ok) return Parsed::Bad;
  }
  if (o.leftIqs.empty()) o.leftIqs = o.iqs;
  if (o.left == LeftPlayer::Random) o.leftIqs = {0};
  return Parsed::Run;
}

const char* modeName(Mode m) {
  return m == Mode::Free ? "free" : m == Mode::Keys ? "keys" : "ai";
}

double percent(long part, long whole) {
  return whole > 0 ? 100.0 * static_cast<double>(part) / static_cast<double>(whole) : 0.0;
}

void printSummary(const quorvel::sim::Tally& t) {
  const double n = static_cast<double>(t.matches);
  std::printf("              left    right\n");
  std::printf("wins     %8ld %8ld   (%.1f%% / %.1f%%)\n", t.wins[1], t.wins[2],
              percent(t.wins[1], t.matches), percent(t.wins[2], t.matches));
  std::printf("draws    %8ld            (%.1f%%)\n", t.draws, percent(t.draws, t.matches));
  std::printf("goals    %8ld %8ld   (%.2f / %.2f a match)\n", t.goals[1], t.goals[2],
              static_cast<double>(t.goals[1]) / n, static_cast<double>(t.goals[2]) / n);
  std::printf("subs     %8ld %8ld\n", t.subs[1], t.subs[2]);
  std::printf("kicks a match %.1f, virtual minutes a match %.2f\n",
              static_cast<double>(t.kicks) / n, t.virtualMinutes / n);
}

// The IQ table: for every pairing, the computer's (right side's) results against the left.
void printTable(const Options& o, const std::vector<std::vector<quorvel::sim::Tally>>& cells) {
  const bool mirror = o.left == LeftPlayer::Mirror;
  std::printf(
      "\nThe computer (right, rows: its IQ) against %s,\n%ld matches a cell; the computer's "
      "wins / draws / losses in per cent, then goals a match for : against\n",
      mirror ? "the mirrored computer (left, columns: its IQ)" : "random play (left)", o.matches);
  std::printf("IQ ");
  for (int l : o.leftIqs) {
    if (mirror)
      std::printf("| left %d                      ", l);
    else
      std::printf("| random                      ");
  }
  std::printf("\n");
  for (std::size_t r = 0; r < o.iqs.size(); ++r) {
    std::printf("%2d ", o.iqs[r]);
    for (std::size_t c = 0; c < o.leftIqs.size(); ++c) {
      const auto& t = cells[r][c];
      const double n = static_cast<double>(t.matches);
      std::printf("| %4.1f/%4.1f/%4.1f %4.2f:%4.2f  ", percent(t.wins[2], t.matches),
                  percent(t.draws, t.matches), percent(t.wins[1], t.matches),
                  static_cast<double>(t.goals[2]) / n, static_cast<double>(t.goals[1]) / n);
    }
    std::printf("\n");
  }
}

// Plays every pairing of IQs into `cells`; the sum of them all into `all`. Returns how many
// matches did not finish.
long playCells(const Options& o, std::vector<std::vector<quorvel::sim::Tally>>& cells,
               quorvel::sim::Tally& all) {
  long unfinished = 0;
  for (std::size_t r = 0; r < o.iqs.size(); ++r) {
    for (std::size_t c = 0; c < o.leftIqs.size(); ++c) {
      quorvel::sim::Settings s = o.settings;
      s.mode = o.mode;
      s.iq = o.iqs[r];
      s.left = o.left;
      s.leftIq = o.left == LeftPlayer::Mirror ? o.leftIqs[c] : 0;
      // Every pairing plays the same seeds: the cells differ by the IQs alone.
      const auto results = quorvel::sim::playMatches(s, o.seed, o.first,
                                                     static_cast<std::uint64_t>(o.matches), o.jobs);
      if (o.list) {
        for (std::size_t k = 0; k < results.size(); ++k)
          std::printf("match %llu (iq %d, left %d, seed %llu): %d - %d%s\n",
                      static_cast<unsigned long long>(o.first + k), s.iq, s.leftIq,
                      static_cast<unsigned long long>(results[k].seed), results[k].goals[1],
                      results[k].goals[2], results[k].finished ? "" : "  UNFINISHED");
      }
      for (const auto& res : results)
        if (!res.finished) {
          ++unfinished;
          std::fprintf(stderr, "quorvel-sim: match seed %llu did not finish\n",
                       static_cast<unsigned long long>(res.seed));
        }
      cells[r][c] = quorvel::sim::tally(results);
      const auto& t = cells[r][c];
      all.matches += t.matches;
      all.kicks += t.kicks;
      all.virtualMinutes += t.virtualMinutes;
      all.ticks += t.ticks;
      for (int side = 1; side <= 2; ++side) {
        all.wins[side] += t.wins[side];
        all.goals[side] += t.goals[side];
        all.subs[side] += t.subs[side];
      }
      all.draws += t.draws;
    }
  }
  return unfinished;
}

// One line that says what was run.
void printRun(const Options& o, long matches) {
  std::printf("quorvel-sim: %ld matches, mode %s, computer IQ", matches, modeName(o.mode));
  for (int iq : o.iqs) std::printf(" %d", iq);
  if (o.left == LeftPlayer::Random) {
    std::printf(", left random");
  } else {
    std::printf(", left mirror IQ");
    for (int iq : o.leftIqs) std::printf(" %d", iq);
  }
  for (const auto& k : kSwitches)
    if (o.settings.*(k.setting) == k.value) std::printf(", %s", k.name.data() + 2);
  std::printf(", seed %llu, jobs %d\n", static_cast<unsigned long long>(o.seed), o.jobs);
}

}  // namespace

int main(int argc, char** argv) {
  Options o;
  if (const int status = quorvel::options::stopStatus(parse(argc, argv, o), kUsage); status >= 0)
    return status;

  std::vector<std::vector<quorvel::sim::Tally>> cells(
      o.iqs.size(), std::vector<quorvel::sim::Tally>(o.leftIqs.size()));
  quorvel::sim::Tally all;
  const auto start = std::chrono::steady_clock::now();
  const std::clock_t cpuStart = std::clock();
  const long unfinished = playCells(o, cells, all);
  const double wall =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  const double cpu = static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;

  printRun(o, all.matches);
  printSummary(all);
  if (o.left == LeftPlayer::Mirror || o.iqs.size() > 1) printTable(o, cells);
  std::printf(
      "\nthroughput: %.1f matches/s, %.0f virtual minutes per wall second, %.2f M ticks/s "
      "(%.2f s wall)\n",
      static_cast<double>(all.matches) / wall, all.virtualMinutes / wall,
      static_cast<double>(all.ticks) / wall / 1e6, wall);
  // On a busy machine the wall clock counts other programs' time too.
  std::printf("cpu: %.2f s, %.1f matches per cpu second\n", cpu,
              cpu > 0 ? static_cast<double>(all.matches) / cpu : 0.0);
  if (unfinished > 0) {
    std::fprintf(stderr, "quorvel-sim: %ld matches did not finish\n", unfinished);
    return 1;
  }
  return 0;
}
