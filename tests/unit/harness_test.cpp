// The randomised harness: seeded runs keep every promise. QUORVEL_HARNESS_STEPS sets the steps
// per seed (quorvel-soak makes the long runs).
#include "harness.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quorvel::harness {
namespace {

TEST(Harness, SeededRunsKeepEveryPromiseAndReplayExactly) {
  const char* env = std::getenv("QUORVEL_HARNESS_STEPS");
  const std::int64_t steps = env != nullptr && std::atoll(env) > 0 ? std::atoll(env) : 5000;
  for (std::uint64_t seed = 1; seed <= 4; ++seed) {
    Harness h(seed);
    EXPECT_TRUE(h.run(steps)) << h.report();
  }
  Harness a(11), b(11);
  a.run(1500);
  b.run(1500);
  EXPECT_EQ(a.recent(), b.recent());
  EXPECT_EQ(a.form().Sched.now(), b.form().Sched.now());
}

}  // namespace
}  // namespace quorvel::harness
