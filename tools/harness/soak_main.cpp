// quorvel-soak: the randomised harness for long runs. Plays seeded sequences of every kind of
// input, checking the game's promises after every input and timer tick, and stops at the first
// broken one with its seed, step and the steps before it, so that it can be replayed.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "harness.h"

namespace {

const char* const kUsage =
    "usage: quorvel-soak [--seeds A-B | --seed S] [--steps N]\n"
    "  --seeds A-B   run the seeds A to B, one after the other (default 1-10)\n"
    "  --steps N     steps for each seed (default 100000)\n"
    "A step is one input (a click on any control, a key, a scroll, an edit) or an advance of\n"
    "virtual time, short or long.\n";

// A step that runs for minutes is a handler that never returns: say where, then stop.
constexpr int kHangSeconds = 120;

bool number(const std::string& s, long long& v) {
  char* end = nullptr;
  v = std::strtoll(s.c_str(), &end, 10);
  return !s.empty() && *end == '\0' && v >= 0;
}

}  // namespace

int main(int argc, char** argv) {
  long long first = 1, last = 10, steps = 100000;
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    const std::string v = i + 1 < argc ? argv[i + 1] : "";
    ++i;
    if (a == "--steps" && number(v, steps)) continue;
    if (a == "--seed" && number(v, first)) {
      last = first;
      continue;
    }
    const auto dash = v.find('-');
    if (a == "--seeds" && dash != std::string::npos && number(v.substr(0, dash), first) &&
        number(v.substr(dash + 1), last) && last >= first)
      continue;
    std::fputs(kUsage, stderr);
    return 2;
  }

  std::atomic<long long> seedNow{first}, stepNow{0};
  std::atomic<bool> done{false};
  std::thread watchdog([&] {
    long long lastStep = -1, lastSeed = -1;
    int still = 0;
    while (!done) {
      std::this_thread::sleep_for(std::chrono::seconds(1));
      if (stepNow == lastStep && seedNow == lastSeed) {
        if (++still >= kHangSeconds) {
          std::fprintf(stderr, "quorvel-soak: seed %lld, step %lld has not returned for %d s\n",
                       lastSeed, lastStep + 1, kHangSeconds);
          std::abort();
        }
      } else {
        still = 0;
        lastStep = stepNow;
        lastSeed = seedNow;
      }
    }
  });

  quorvel::harness::Counts total;
  int status = 0;
  const auto start = std::chrono::steady_clock::now();
  for (long long seed = first; seed <= last && status == 0; ++seed) {
    seedNow = seed;
    quorvel::harness::Harness h(static_cast<std::uint64_t>(seed));
    for (long long n = 0; n < steps && !h.failed(); ++n) {
      stepNow = n;
      h.takeStep();
    }
    const auto& c = h.counts();
    std::printf(
        "seed %lld: %lld steps, %lld ticks, %lld rolls, %lld goals, %lld subs, %lld matches "
        "started, %lld full times, %lld programs\n",
        seed, static_cast<long long>(c.steps), static_cast<long long>(c.ticks),
        static_cast<long long>(c.rolls), static_cast<long long>(c.goals),
        static_cast<long long>(c.subs), static_cast<long long>(c.starts),
        static_cast<long long>(c.fullTimes), static_cast<long long>(c.programs));
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
  }
  done = true;
  watchdog.join();
  const double wall =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::printf(
      "total: %lld steps, %lld ticks, %lld rolls, %lld goals, %lld subs, %lld matches started, "
      "%lld full times; %s (%.1f s)\n",
      static_cast<long long>(total.steps), static_cast<long long>(total.ticks),
      static_cast<long long>(total.rolls), static_cast<long long>(total.goals),
      static_cast<long long>(total.subs), static_cast<long long>(total.starts),
      static_cast<long long>(total.fullTimes), status == 0 ? "every promise kept" : "BROKEN", wall);
  return status;
}
