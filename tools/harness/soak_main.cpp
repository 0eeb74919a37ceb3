// quorvel-soak: the randomised harness for long runs. Plays seeded sequences of every kind of
// input, checking the game's promises after every input and timer tick, and stops at the first
// broken one with its seed, step and the steps before it, so that it can be replayed.
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <string_view>
#include <thread>

#include "harness.h"
#include "options.h"

namespace {

const char* const kUsage =
    "usage: quorvel-soak [--seeds A-B | --seed S] [--steps N]\n"
    "  --seeds A-B   run the seeds A to B, one after the other (default 1-10); 0..2^64-1\n"
    "  --seed S      run the seed S alone\n"
    "  --steps N     steps for each seed, 1..1000000000000 (default 100000)\n"
    "  --help        print this and exit\n"
    "A step is one input (a click on any control, a key, a scroll, an edit) or an advance of\n"
    "virtual time, short or long.\n";

// A step that runs for minutes is a handler that never returns: say where, then stop.
constexpr int kHangSeconds = 120;
// Far more steps than any run can take (a run does some ten thousand a second).
constexpr std::uint64_t kMostSteps = 1'000'000'000'000;
constexpr std::uint64_t kLastSeed = std::numeric_limits<std::uint64_t>::max();

using quorvel::options::Parsed;
using quorvel::options::shown;
constexpr const char* kTool = "quorvel-soak";

struct Options {
  std::uint64_t first = 1, last = 10, steps = 100000;
};

Parsed parse(int argc, char** argv, Options& o) {
  using quorvel::options::wholeNumber;
  for (int i = 1; i < argc; ++i) {
    const std::string_view a = argv[i];
    if (a == "--help" || a == "-h") return Parsed::Help;
    if (a != "--seeds" && a != "--seed" && a != "--steps")
      return quorvel::options::unknownOption(kTool, a);
    const char* value = quorvel::options::valueOf(kTool, argc, argv, i);
    if (value == nullptr) return Parsed::Bad;
    const std::string_view v = value;
    if (a == "--steps") {
      if (wholeNumber(kTool, "--steps", v, 1, kMostSteps, o.steps)) continue;
      return Parsed::Bad;
    }
    if (a == "--seed") {
      if (!wholeNumber(kTool, "--seed", v, 0, kLastSeed, o.first)) return Parsed::Bad;
      o.last = o.first;
      continue;
    }
    const auto dash = v.find('-');
    if (dash != std::string_view::npos && quorvel::options::whole(v.substr(0, dash), o.first) &&
        quorvel::options::whole(v.substr(dash + 1), o.last) && o.last >= o.first)
      continue;
    std::fprintf(stderr, "%s: --seeds takes A-B, whole numbers 0..%llu with A <= B, not '%s'\n",
                 kTool, static_cast<unsigned long long>(kLastSeed), shown(v).c_str());
    return Parsed::Bad;
  }
  return Parsed::Run;
}

// Stops the run, saying where, when one step has not returned for kHangSeconds: a handler
// that never returns.
class Watchdog {
 public:
  explicit Watchdog(std::uint64_t firstSeed) : seed_(firstSeed), thread_([this] { watch(); }) {}
  ~Watchdog() {
    done_ = true;
    thread_.join();
  }
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  void at(std::uint64_t seed, std::uint64_t step) {
    seed_ = seed;
    step_ = step;
  }

 private:
  void watch() {
    std::uint64_t lastStep = 0, lastSeed = 0;
    bool seen = false;
    int still = 0;
    while (!done_) {
      std::this_thread::sleep_for(std::chrono::seconds(1));
      if (seen && step_ == lastStep && seed_ == lastSeed) {
        if (++still >= kHangSeconds) {
          std::fprintf(stderr, "%s: seed %llu, step %llu has not returned for %d s\n", kTool,
                       static_cast<unsigned long long>(lastSeed),
                       static_cast<unsigned long long>(lastStep + 1), kHangSeconds);
          std::abort();
        }
      } else {
        still = 0;
        seen = true;
        lastStep = step_;
        lastSeed = seed_;
      }
    }
  }

  std::atomic<std::uint64_t> seed_, step_{0};
  std::atomic<bool> done_{false};
  std::thread thread_;
};

void add(quorvel::harness::Counts& total, const quorvel::harness::Counts& c) {
  total.steps += c.steps;
  total.ticks += c.ticks;
  total.rolls += c.rolls;
  total.goals += c.goals;
  total.subs += c.subs;
  total.starts += c.starts;
  total.fullTimes += c.fullTimes;
}

void printSeed(std::uint64_t seed, const quorvel::harness::Counts& c) {
  std::printf(
      "seed %llu: %lld steps, %lld ticks, %lld rolls, %lld goals, %lld subs, %lld matches "
      "started, %lld full times, %lld programs\n",
      static_cast<unsigned long long>(seed), static_cast<long long>(c.steps),
      static_cast<long long>(c.ticks), static_cast<long long>(c.rolls),
      static_cast<long long>(c.goals), static_cast<long long>(c.subs),
      static_cast<long long>(c.starts), static_cast<long long>(c.fullTimes),
      static_cast<long long>(c.programs));
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  Options o;
  if (const int status = quorvel::options::stopStatus(parse(argc, argv, o), kUsage); status >= 0)
    return status;

  quorvel::harness::Counts total;
  int status = 0;
  double wall = 0, cpu = 0;
  {
    Watchdog watchdog(o.first);
    const auto start = std::chrono::steady_clock::now();
    const std::clock_t cpuStart = std::clock();
    // Counted so that the last seed may be 2^64 - 1 without the loop wrapping round.
    for (std::uint64_t seed = o.first;; ++seed) {
      quorvel::harness::Harness h(seed);
      for (std::uint64_t n = 0; n < o.steps && !h.failed(); ++n) {
        watchdog.at(seed, n);
        h.takeStep();
      }
      printSeed(seed, h.counts());
      add(total, h.counts());
      if (h.failed()) {
        std::printf("BROKEN PROMISE at %s", h.report().c_str());
        status = 1;
      }
      if (status != 0 || seed == o.last) break;
    }
    // Measured before the watchdog's last second of sleep; the process's CPU time is the
    // harness's own, as the watchdog only sleeps.
    wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    cpu = static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;
  }
  std::printf(
      "total: %lld steps, %lld ticks, %lld rolls, %lld goals, %lld subs, %lld matches started, "
      "%lld full times; %s (%.1f s cpu, %.1f s wall)\n",
      static_cast<long long>(total.steps), static_cast<long long>(total.ticks),
      static_cast<long long>(total.rolls), static_cast<long long>(total.goals),
      static_cast<long long>(total.subs), static_cast<long long>(total.starts),
      static_cast<long long>(total.fullTimes), status == 0 ? "every promise kept" : "BROKEN", cpu,
      wall);
  return status;
}
