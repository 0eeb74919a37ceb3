// quorvel-soak: the randomised harness for long runs. Plays seeded sequences of every kind of
// input, checking the game's promises after every input and timer tick, and stops at the first
// broken one with its seed, step and the steps before it, so that it can be replayed.
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <limits>
#include <string_view>

#include "harness.h"
#include "options.h"

namespace {

const char* const kUsage =
    "usage: quorvel-soak [--seeds A-B] [--steps N]\n"
    "  --seeds A-B   run the seeds A to B, one after the other (default 1-10); 0..2^64-1\n"
    "  --steps N     steps for each seed, 1..1000000000000 (default 100000)\n"
    "  --help        print this and exit\n"
    "A step is one input (a click on any control, a key, a scroll, an edit) or an advance of\n"
    "virtual time, short or long.\n";

constexpr const char* kTool = "quorvel-soak";
constexpr std::uint64_t kMostSteps = 1'000'000'000'000;
constexpr std::uint64_t kLastSeed = std::numeric_limits<std::uint64_t>::max();

struct Options {
  std::uint64_t first = 1, last = 10, steps = 100000;
};

quorvel::options::Parsed parse(int argc, char** argv, Options& o) {
  namespace opt = quorvel::options;
  for (int i = 1; i < argc; ++i) {
    const std::string_view a = argv[i];
    if (a == "--help" || a == "-h") return opt::Parsed::Help;
    if (a != "--seeds" && a != "--steps") return opt::unknownOption(kTool, a);
    const char* value = opt::valueOf(kTool, argc, argv, i);
    if (value == nullptr) return opt::Parsed::Bad;
    const std::string_view v = value;
    const auto dash = v.find('-');
    if (a == "--steps" ? opt::wholeNumber(kTool, "--steps", v, 1, kMostSteps, o.steps)
                       : dash != std::string_view::npos && opt::whole(v.substr(0, dash), o.first) &&
                             opt::whole(v.substr(dash + 1), o.last) && o.last >= o.first)
      continue;
    if (a == "--seeds")
      std::fprintf(stderr, "%s: --seeds takes A-B, whole numbers 0..%llu with A <= B, not '%s'\n",
                   kTool, static_cast<unsigned long long>(kLastSeed), opt::shown(v).c_str());
    return opt::Parsed::Bad;
  }
  return opt::Parsed::Run;
}

}  // namespace

int main(int argc, char** argv) {
  Options o;
  if (const int status = quorvel::options::stopStatus(parse(argc, argv, o), kUsage); status >= 0)
    return status;
  const std::clock_t start = std::clock();
  // Counted so that the last seed may be 2^64 - 1 without the loop wrapping round.
  for (std::uint64_t seed = o.first;; ++seed) {
    quorvel::harness::Harness h(seed);
    if (!h.run(static_cast<std::int64_t>(o.steps))) {
      std::printf("BROKEN PROMISE at %s", h.report().c_str());
      return 1;
    }
    std::printf("seed %llu: %llu steps, every promise kept\n",
                static_cast<unsigned long long>(seed), static_cast<unsigned long long>(o.steps));
    if (seed == o.last) break;
  }
  std::printf("every promise kept (%.1f s cpu)\n",
              static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
  return 0;
}
