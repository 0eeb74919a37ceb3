#include "form/random.h"

#include <cmath>

namespace quorvel {

double Random::next() {
  if (!forced_.empty()) {
    double r = forced_.front();
    forced_.pop_front();
    return r;
  }
  return static_cast<double>(engine_() >> 11) * 0x1.0p-53;
}

void Random::seed(std::uint64_t seed) {
  engine_.seed(seed);
}

void Random::mix(std::int64_t value) {
  const std::uint64_t a = engine_();
  const std::uint64_t b = engine_();
  std::seed_seq seq{static_cast<std::uint32_t>(a),
                    static_cast<std::uint32_t>(a >> 32),
                    static_cast<std::uint32_t>(b),
                    static_cast<std::uint32_t>(b >> 32),
                    static_cast<std::uint32_t>(static_cast<std::uint64_t>(value)),
                    static_cast<std::uint32_t>(static_cast<std::uint64_t>(value) >> 32)};
  engine_.seed(seq);
}

void Random::force(const std::vector<double>& draws) {
  forced_.insert(forced_.end(), draws.begin(), draws.end());
}

int randomIn(Random& rnd, int lo, int hi) {
  return static_cast<int>(std::floor(rnd.next() * (hi - lo + 1))) + lo;
}

}  // namespace quorvel
