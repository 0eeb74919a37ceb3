// The randomised harness: seeded runs keep every promise. QUORVEL_HARNESS_SEEDS=A-B and
// QUORVEL_HARNESS_STEPS=N make the long runs (make soak), and replay a broken promise from the
// seed and step it names.
#include "harness.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace quorvel::harness {
namespace {

TEST(Harness, SeededRunsKeepEveryPromise) {
  unsigned long long first = 1, last = 4, steps = 5000;
  if (const char* seeds = std::getenv("QUORVEL_HARNESS_SEEDS")) {
    ASSERT_EQ(std::sscanf(seeds, "%llu-%llu", &first, &last), 2) << "seeds are A-B: " << seeds;
  }
  if (const char* n = std::getenv("QUORVEL_HARNESS_STEPS")) {
    ASSERT_EQ(std::sscanf(n, "%llu", &steps), 1) << "steps are a whole number: " << n;
  }
  for (unsigned long long seed = first; seed >= first && seed <= last; ++seed) {
    Harness h(seed);
    ASSERT_TRUE(h.run(static_cast<std::int64_t>(steps))) << h.report();
  }
}

}  // namespace
}  // namespace quorvel::harness
