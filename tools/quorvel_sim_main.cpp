// quorvel-sim: plays whole matches headless, as fast as the machine allows, and prints the
// results and the throughput. The same seed gives the same results, whatever --jobs says.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <thread>
#include <vector>

#include "sim.h"

namespace {

using quorvel::sim::LeftPlayer;
using quorvel::sim::Mode;

const char* const kUsage =
    "usage: quorvel-sim [options]\n"
    "  --matches N     matches to play (per pairing of IQs), default 100\n"
    "  --seed S        seed of the run; match k is seeded from (S, k), default 1\n"
    "  --first K       index of the first match, default 0 (--first 17 --matches 1 replays\n"
    "                  match 17 alone)\n"
    "  --mode M        free | keys | ai (default): the mode the matches are played in\n"
    "  --iq LIST       the computer's IQ (right side), 1..6; a list such as 1-6 or 2,4,6\n"
    "  --left P        random | mirror (default): the left side rolls and picks a random\n"
    "                  flag, or the computer's own choice mirrored to the left\n"
    "  --left-iq LIST  the mirrored computer's IQ, as --iq; default the same as --iq\n"
    "  --jobs J        threads to spread the matches over, default 1; 0 = every core\n"
    "  --list          print every match's score\n"
    "In free and keys mode the right side plays the computer's flag choice through the mouse or\n"
    "the keys; in ai mode the computer plays it with its own timer. Each match is played with\n"
    "\"Quickplay\" on and automatic play off.\n";

struct Options {
  long matches = 100;
  std::uint64_t seed = 1;
  std::uint64_t first = 0;
  Mode mode = Mode::AI;
  LeftPlayer left = LeftPlayer::Mirror;
  std::vector<int> iqs{6}, leftIqs;
  int jobs = 1;
  bool list = false;
};

bool wholeNumber(const char* s, long long lo, long long& v) {
  char* end = nullptr;
  v = std::strtoll(s, &end, 10);
  return end != s && *end == '\0' && v >= lo;
}

bool parse(int argc, char** argv, Options& o) {
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    if (a == "--list") {
      o.list = true;
      continue;
    }
    if (a == "--help" || a == "-h") return false;
    if (i + 1 >= argc) return false;
    const char* v = argv[++i];
    long long n = 0;
    if (a == "--matches" && wholeNumber(v, 1, n)) {
      o.matches = static_cast<long>(n);
    } else if (a == "--seed" && wholeNumber(v, 0, n)) {
      o.seed = static_cast<std::uint64_t>(n);
    } else if (a == "--first" && wholeNumber(v, 0, n)) {
      o.first = static_cast<std::uint64_t>(n);
    } else if (a == "--jobs" && wholeNumber(v, 0, n)) {
      o.jobs = n == 0 ? static_cast<int>(std::max(1u, std::thread::hardware_concurrency()))
                      : static_cast<int>(n);
    } else if (a == "--mode" && std::strcmp(v, "free") == 0) {
      o.mode = Mode::Free;
    } else if (a == "--mode" && std::strcmp(v, "keys") == 0) {
      o.mode = Mode::Keys;
    } else if (a == "--mode" && std::strcmp(v, "ai") == 0) {
      o.mode = Mode::AI;
    } else if (a == "--left" && std::strcmp(v, "random") == 0) {
      o.left = LeftPlayer::Random;
    } else if (a == "--left" && std::strcmp(v, "mirror") == 0) {
      o.left = LeftPlayer::Mirror;
    } else if (a == "--iq" && quorvel::sim::parseIqList(v, o.iqs)) {
    } else if (a == "--left-iq" && quorvel::sim::parseIqList(v, o.leftIqs)) {
    } else {
      std::fprintf(stderr, "quorvel-sim: bad option %s %s\n", a.c_str(), v);
      return false;
    }
  }
  if (o.leftIqs.empty()) o.leftIqs = o.iqs;
  if (o.left == LeftPlayer::Random) o.leftIqs = {0};
  return true;
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

}  // namespace

int main(int argc, char** argv) {
  Options o;
  if (!parse(argc, argv, o)) {
    std::fputs(kUsage, stderr);
    return 2;
  }

  std::vector<std::vector<quorvel::sim::Tally>> cells(
      o.iqs.size(), std::vector<quorvel::sim::Tally>(o.leftIqs.size()));
  quorvel::sim::Tally all;
  long unfinished = 0;
  const auto start = std::chrono::steady_clock::now();
  const std::clock_t cpuStart = std::clock();
  for (std::size_t r = 0; r < o.iqs.size(); ++r) {
    for (std::size_t c = 0; c < o.leftIqs.size(); ++c) {
      quorvel::sim::Settings s;
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
  const double wall =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  const double cpu = static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;

  std::printf("quorvel-sim: %ld matches, mode %s, computer IQ", all.matches, modeName(o.mode));
  for (int iq : o.iqs) std::printf(" %d", iq);
  if (o.left == LeftPlayer::Random) {
    std::printf(", left random");
  } else {
    std::printf(", left mirror IQ");
    for (int iq : o.leftIqs) std::printf(" %d", iq);
  }
  std::printf(", seed %llu, jobs %d\n", static_cast<unsigned long long>(o.seed), o.jobs);
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
