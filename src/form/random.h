// The one source of chance: uniform draws in [0, 1), reseedable, with a queue of forced
// draws so that tests and scripts can dictate exactly what the dice show.
#pragma once

#include <cstdint>
#include <deque>
#include <random>
#include <vector>

namespace quorvel {

class Random {
 public:
  explicit Random(std::uint64_t seed = 1) : engine_(seed) {}

  // Next draw: the oldest forced draw if any, else the generator's.
  double next();

  // Restart the generator from `seed`; draws from here on depend on the seed alone.
  // Forced draws still pending are kept.
  void seed(std::uint64_t seed);

  // Stir `value` into the current state without restarting the sequence: mixing the same
  // value twice gives different draws each time.
  void mix(std::int64_t value);

  void force(const std::vector<double>& draws);
  std::size_t forcedPending() const { return forced_.size(); }

 private:
  std::mt19937_64 engine_;
  std::deque<double> forced_;
};

// Int(r * (hi - lo + 1)) + lo with a fresh draw r.
int randomIn(Random& rnd, int lo, int hi);

}  // namespace quorvel
