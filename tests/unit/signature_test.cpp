// The behaviour signature: one number that pins down everything a fixed set of seeded whole
// matches produce (every mode, every IQ against every IQ and against random play, both match
// lengths, both 50/50 rules, with and without "Quickplay", random teams and automatic play).
// Any change of behaviour changes it. A change made on purpose updates kSignature and says
// "Signature: N" in its commit message.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "form_paths.h"
#include "sim.h"

namespace quorvel {
namespace {

constexpr std::uint64_t kSignature = 17326896760652639683ULL;

// FNV-1a, 64 bits.
void mix(std::uint64_t& h, std::string_view bytes) {
  for (unsigned char c : bytes) h = (h ^ c) * 0x100000001b3ULL;
}

std::vector<sim::Settings> signatureMatches() {
  using sim::LeftPlayer;
  using sim::Mode;
  std::vector<sim::Settings> all;
  for (int iq = 1; iq <= 6; ++iq) {
    for (int left = 1; left <= 6; ++left) {
      sim::Settings s{Mode::AI, iq, LeftPlayer::Mirror, left};
      s.tenSeconds = (iq + left) % 2 == 1;
      s.rank = (iq * left) % 3 == 0;
      s.quickplay = left != iq;
      s.randomTeams = left == 1;
      s.autoPlay = iq == left + 1;
      all.push_back(s);
    }
    sim::Settings random{Mode::AI, iq, LeftPlayer::Random, 0};
    random.tenSeconds = iq % 2 == 0;
    random.rank = iq > 3;
    random.quickplay = iq != 2;
    random.randomTeams = iq == 5;
    random.autoPlay = iq % 3 == 0;
    all.push_back(random);
  }
  for (Mode mode : {Mode::Free, Mode::Keys}) {
    for (LeftPlayer left : {LeftPlayer::Random, LeftPlayer::Mirror}) {
      sim::Settings s{mode, 4, left, 5};
      s.tenSeconds = left == LeftPlayer::Mirror;
      s.rank = mode == Mode::Keys;
      s.quickplay = left == LeftPlayer::Random;
      s.randomTeams = true;
      s.autoPlay = mode == Mode::Free;
      all.push_back(s);
    }
  }
  return all;
}

TEST(Signature, SeededMatchesProduceExactlyWhatTheyAlwaysHave) {
  std::uint64_t h = 0xcbf29ce484222325ULL;
  std::uint64_t index = 0;
  for (const sim::Settings& s : signatureMatches()) {
    const auto r = sim::playMatch(s, sim::matchSeed(2026, index++), [&h](MatchForm& f) {
      mix(h, FormPaths(f).dump());       // every variable and every property of every control
      const double next = f.Rnd.next();  // where the random source stands
      char bytes[sizeof next];
      std::memcpy(bytes, &next, sizeof next);
      mix(h, std::string_view(bytes, sizeof bytes));
    });
    ASSERT_TRUE(r.finished) << "match " << index - 1;
  }
  EXPECT_EQ(h, kSignature) << "Signature: " << h;
}

}  // namespace
}  // namespace quorvel
