// quorvel-soak: the randomised harness for long runs. Plays seeded sequences of every kind of
// input, checking the game's promises after every input and timer tick, and stops at the first
// broken one with its seed, step and the steps before it, so that it can be replayed.
#include <atomic>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>
#include <string_view>
#include <thread>

#include "harness.h"

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

bool number(std::string_view s, std::uint64_t& v) {
  const auto r = std::from_chars(s.data(), s.data() + s.size(), v);
  return r.ec == std::errc() && r.ptr == s.data() + s.size();
}

// An argument as a message shows it: shortened, control bytes escaped.
std::string shown(std::string_view s) {
  std::string out;
  for (std::size_t i = 0; i < s.size() && i < 40; ++i) {
    const auto c = static_cast<unsigned char>(s[i]);
    char hex[5];
    std::snprintf(hex, sizeof hex, "\\x%02x", c);
    out += c >= 0x20 && c < 0x7f ? std::string(1, s[i]) : std::string(hex);
  }
  return s.size() > 40 ? out + "..." : out;
}

struct Options {
  std::uint64_t first = 1, last = 10, steps = 100000;
};

enum class Parsed { Run, Help, Bad };

Parsed parse(int argc, char** argv, Options& o) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view a = argv[i];
    if (a == "--help" || a == "-h") return Parsed::Help;
    if (a != "--seeds" && a != "--seed" && a != "--steps") {
      std::fprintf(stderr, "quorvel-soak: unknown option '%s' (--help lists them)\n",
                   shown(a).c_str());
      return Parsed::Bad;
    }
    if (i + 1 >= argc) {
      std::fprintf(stderr, "quorvel-soak: %s needs a value\n", argv[i]);
      return Parsed::Bad;
    }
    const std::string_view v = argv[++i];
    if (a == "--steps") {
      if (number(v, o.steps) && o.steps >= 1 && o.steps <= kMostSteps) continue;
      std::fprintf(stderr, "quorvel-soak: --steps takes a whole number 1..%llu, not '%s'\n",
                   static_cast<unsigned long long>(kMostSteps), shown(v).c_str());
      return Parsed::Bad;
    }
    if (a == "--seed") {
      if (number(v, o.first)) {
        o.last = o.first;
        continue;
      }
      std::fprintf(stderr, "quorvel-soak: --seed takes a whole number 0..%llu, not '%s'\n",
                   static_cast<unsigned long long>(std::numeric_limits<std::uint64_t>::max()),
                   shown(v).c_str());
      return Parsed::Bad;
    }
    const auto dash = v.find('-');
    if (dash != std::string_view::npos && number(v.substr(0, dash), o.first) &&
        number(v.substr(dash + 1), o.last) && o.last >= o.first)
      continue;
    std::fprintf(stderr,
                 "quorvel-soak: --seeds takes A-B, whole numbers 0..%llu with A <= B, not '%s'\n",
                 static_cast<unsigned long long>(std::numeric_limits<std::uint64_t>::max()),
                 shown(v).c_str());
    return Parsed::Bad;
  }
  return Parsed::Run;
}

}  // namespace

int main(int argc, char** argv) {
  Options o;
  switch (parse(argc, argv, o)) {
    case Parsed::Help:
      std::fputs(kUsage, stdout);
      return 0;
    case Parsed::Bad:
      return 2;
    case Parsed::Run:
      break;
  }

  std::atomic<std::uint64_t> seedNow{o.first}, stepNow{0};
  std::atomic<bool> done{false};
  std::thread watchdog([&] {
    std::uint64_t lastStep = 0, lastSeed = 0;
    bool seen = false;
    int still = 0;
    while (!done) {
      std::this_thread::sleep_for(std::chrono::seconds(1));
      if (seen && stepNow == lastStep && seedNow == lastSeed) {
        if (++still >= kHangSeconds) {
          std::fprintf(stderr, "quorvel-soak: seed %llu, step %llu has not returned for %d s\n",
                       static_cast<unsigned long long>(lastSeed),
                       static_cast<unsigned long long>(lastStep + 1), kHangSeconds);
          std::abort();
        }
      } else {
        still = 0;
        seen = true;
        lastStep = stepNow;
        lastSeed = seedNow;
      }
    }
  });

  quorvel::harness::Counts total;
  int status = 0;
  const auto start = std::chrono::steady_clock::now();
  const std::clock_t cpuStart = std::clock();
  // Counted so that the last seed may be 2^64 - 1 without the loop wrapping round.
  for (std::uint64_t seed = o.first;; ++seed) {
    seedNow = seed;
    quorvel::harness::Harness h(seed);
    for (std::uint64_t n = 0; n < o.steps && !h.failed(); ++n) {
      stepNow = n;
      h.takeStep();
    }
    const auto& c = h.counts();
    std::printf(
        "seed %llu: %lld steps, %lld ticks, %lld rolls, %lld goals, %lld subs, %lld matches "
        "started, %lld full times, %lld programs\n",
        static_cast<unsigned long long>(seed), static_cast<long long>(c.steps),
        static_cast<long long>(c.ticks), static_cast<long long>(c.rolls),
        static_cast<long long>(c.goals), static_cast<long long>(c.subs),
        static_cast<long long>(c.starts), static_cast<long long>(c.fullTimes),
        static_cast<long long>(c.programs));
    std::fflush(stdout);
    total.steps += c.steps;
    total.ticks += c.ticks;
    total.rolls += c.rolls;
    total.goals += c.goals;
    total.subs += c.subs;
    total.starts += c.starts;
    total.fullTimes += c.fullTimes;
    if (h.failed()) {
      std::printf("BROKEN PROMISE at %s", h.report().c_str());
      status = 1;
    }
    if (status != 0 || seed == o.last) break;
  }
  // Measured before the watchdog's last second of sleep; the process's CPU time is the
  // harness's own, as the watchdog only sleeps.
  const double wall =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  const double cpu = static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;
  done = true;
  watchdog.join();
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
