// The form kit: virtual-time timers and their pace, the random source and numbers in text boxes.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "events/events.h"
#include "events/pace.h"
#include "form/basic.h"
#include "form/colour.h"
#include "form/random.h"
#include "form/scheduler.h"

namespace quorvel {
namespace {

struct Clock {
  Scheduler s;
  std::vector<std::string> log;
  void record(Timer& t) { log.push_back(t.name() + "@" + std::to_string(s.now())); }
};

TEST(Scheduler, TimersCountFromTheirSwitchOnOrTheirLastChangeOfInterval) {
  Clock c;
  Timer a(c.s, "a", 15, false), b(c.s, "b", 100, true);
  c.s.add(a, [&] { c.record(a); });
  c.s.add(b, [&] { c.record(b); });
  c.s.advance(10);
  a.setEnabled(true);  // counts from 10
  c.s.advance(50);
  a.setEnabled(true);  // at 60, already on: no change of phase
  b.setInterval(100);  // unchanged: still due at 100
  c.s.advance(12);
  a.setEnabled(false);  // off then on at 72: next tick at 87, not 85
  a.setEnabled(true);
  c.s.advance(38);
  b.setInterval(50);  // changed at 110: due at 160, not 150, and its old tick at 200 is gone
  c.s.advance(100);
  EXPECT_EQ(c.log, (std::vector<std::string>{"a@25", "a@40", "a@55", "a@70", "a@87", "b@100",
                                             "a@102", "a@117", "a@132", "a@147", "b@160", "a@162",
                                             "a@177", "a@192", "a@207", "b@210"}));
}

TEST(Scheduler, TicksDueTogetherRunInTableOrderAndHandlersSeeTheirOwnTime) {
  Clock c;
  Timer first(c.s, "first", 30, true), second(c.s, "second", 15, true),
      late(c.s, "late", 15, false);
  c.s.add(first, [&] {
    c.record(first);
    late.setEnabled(true);  // switched on inside a handler: counts from now (30)
  });
  c.s.add(second, [&] { c.record(second); });
  c.s.add(late, [&] { c.record(late); });
  EXPECT_FALSE(c.s.step(14));  // a step runs one tick at most, up to its limit
  EXPECT_TRUE(c.s.step(100));
  EXPECT_EQ(c.s.now(), 15);
  c.s.advance(30);
  EXPECT_EQ(c.log, (std::vector<std::string>{"second@15", "first@30", "second@30", "second@45",
                                             "late@45"}));
  Timer zero(c.s, "zero", 0, true);  // an interval of 0 never fires
  EXPECT_EQ(zero.due(), Scheduler::kNever);
}

TEST(Scheduler, AWindowWakesOnceForTicksCloseTogetherAndNeverJustForQuietOnes) {
  Clock c;
  Timer fast(c.s, "fast", 15, true), slow(c.s, "slow", 1000, true), quiet(c.s, "quiet", 15, true);
  c.s.add(fast, [] {});
  c.s.add(slow, [] {});
  c.s.add(
      quiet, [] {}, OnShow::changesNothing);
  c.s.advance(990);  // fast and quiet next at 1005, slow at 1000
  EXPECT_EQ(c.s.ticksRun(), 132);
  EXPECT_EQ(c.s.shownTicksRun(), 66);
  const auto wake = [&c](int slowTimer, Millis slowTick, Millis quietTick = 1000) {
    return c.s.nextWake({slowTimer, slowTick, quietTick});
  };
  EXPECT_EQ(wake(100, 5), 1005);
  EXPECT_EQ(wake(100, 4), 1000);    // too long to wait
  EXPECT_EQ(wake(1000, 15), 1005);  // an interval of `slowTimer` is slow
  EXPECT_EQ(wake(1001, 15), 1000);  // both fast: the earliest
  fast.setEnabled(false);
  EXPECT_EQ(wake(100, 15), 1000);  // nothing to wait for: on time
  slow.setEnabled(false);
  EXPECT_EQ(wake(100, 15), 2005);  // the quiet one waits as long as it may
  EXPECT_EQ(wake(100, 15, 0), 1005);
  c.s.advance(1010);  // its ticks run all the same
  EXPECT_EQ(c.s.ticksRun(), 132 + 67);
  EXPECT_EQ(c.s.shownTicksRun(), 66);
  quiet.setEnabled(false);
  EXPECT_EQ(wake(100, 15), Scheduler::kNever);
}

TEST(Colour, ContrastAndDifferenceMatchTheirReferences) {
  EXPECT_NEAR(contrastRatio(RGB(0, 0, 0), RGB(255, 255, 255)), 21, 1e-9);
  EXPECT_NEAR(contrastRatio(RGB(255, 255, 255), RGB(119, 119, 119)), 4.478, 1e-3);
  EXPECT_NEAR(contrastRatio(RGB(0, 0, 255), RGB(0, 255, 255)), 6.853, 1e-3);
  const Lab white = toLab(RGB(255, 255, 255)), red = toLab(RGB(255, 0, 0));
  EXPECT_NEAR(white.L, 100, 1e-3);
  EXPECT_NEAR(red.L, 53.23, 0.01);
  EXPECT_NEAR(red.a, 80.11, 0.01);
  EXPECT_NEAR(red.b, 67.22, 0.01);
  // CIEDE2000 test pairs of Sharma, Wu and Dalal (2005).
  const struct {
    Lab x, y;
    double dE;
  } pairs[] = {
      {{50, 2.6772, -79.7751}, {50, 0, -82.7485}, 2.0425},
      {{50, 0, 0}, {50, -1, 2}, 2.3669},
      {{50, 2.5, 0}, {73, 25, -18}, 27.1492},
      {{50, 2.5, 0}, {56, -27, -3}, 31.9030},
      {{60.2574, -34.0099, 36.2677}, {60.4626, -34.1751, 39.4387}, 1.2644},
      {{2.0776, 0.0795, -1.1350}, {0.9033, -0.0636, -0.5514}, 0.9082},
  };
  for (const auto& p : pairs) {
    EXPECT_NEAR(deltaE(p.x, p.y), p.dE, 1e-4);
    EXPECT_NEAR(deltaE(p.y, p.x), p.dE, 1e-4);
  }
}

// Full-severity protanopia, deuteranopia and tritanopia (Machado et al. 2009, in linear light):
// greys stay as they are, and the primary each deficiency loses becomes its known look-alike.
TEST(Colour, ColourBlindEyesSeeTheirModelsLookAlikes) {
  for (Vision v : kVisions) EXPECT_EQ(simulate(RGB(119, 119, 119), v), RGB(119, 119, 119));
  EXPECT_EQ(simulate(RGB(255, 0, 0), Vision::Protanopia), RGB(109, 95, 0));
  EXPECT_EQ(simulate(RGB(0, 255, 0), Vision::Deuteranopia), RGB(239, 214, 58));
  EXPECT_EQ(simulate(RGB(0, 0, 255), Vision::Tritanopia), RGB(0, 107, 150));
  EXPECT_EQ(simulate(RGB(255, 0, 0), Vision::Typical), RGB(255, 0, 0));
}

// A window keeps the form's time with its wall clock: every wake-up it asks for serves a tick, the
// game runs exactly the wall time that passed, stands still while a message box is up, and skips a
// long stall instead of replaying it.
TEST(Pace, VirtualTimeKeepsToTheWallClockButNotThroughAMessageBoxOrAStall) {
  auto f = newMatchForm();
  Pace pace(*f);
  EXPECT_EQ(pace.nextWakeIn(0), -1);  // not started
  Millis wall = 1000;
  pace.start(wall);
  userClick(*f, f->CDgo);  // the players walk on: fast timers run
  int idle = 0;
  for (int i = 0; i < 300; ++i) {
    const Millis in = pace.nextWakeIn(wall);
    ASSERT_GE(in, 0);
    wall += in;
    const std::int64_t ticks = f->Sched.ticksRun();
    pace.wake(wall);
    idle += f->Sched.ticksRun() == ticks ? 1 : 0;
  }
  EXPECT_EQ(idle, 0);
  EXPECT_EQ(f->Sched.now(), wall - 1000);
  const Millis stood = f->Sched.now();
  pace.hold();
  EXPECT_EQ(pace.nextWakeIn(wall), -1);
  pace.catchUp(wall + 3000);
  EXPECT_EQ(f->Sched.now(), stood);
  pace.release(wall += 3000);
  pace.catchUp(wall += 10);
  EXPECT_EQ(f->Sched.now(), stood + 10);
  pace.catchUp(wall += 3600000);
  EXPECT_EQ(f->Sched.now(), stood + 10 + kLongestCatchUp);
}

// Text boxes show a number as std::to_chars writes it, whatever the library: the
// shortest text that reads back, fixed or scientific, a whole number written exactly.
TEST(Numbers, TextBoxesWriteWhatToCharsWritesAndReadTheirLeadingNumber) {
  auto expected = [](auto v) {
    char text[64];
    return v == 0 ? std::string("0") : std::string(text, std::to_chars(text, text + 64, v).ptr);
  };
  std::mt19937_64 bits(7);
  std::vector<double> doubles = {1e23, 2e22, 5e-324, 1.7976931348623157e308, 0.1, 123456, -12.5};
  std::vector<float> singles = {12.1f, 3.4028235e38f, 1e-45f, 268435456.0f, 0.3f};
  for (int e = -1074; e < 1024; ++e) doubles.push_back(std::ldexp(1.0, e));
  for (int e = -149; e < 128; ++e) singles.push_back(std::ldexp(1.0f, e));
  for (int i = 0; i < 2500; ++i) {
    const std::uint64_t u = bits();
    double d;
    std::memcpy(&d, &u, sizeof d);
    const auto high = static_cast<std::uint32_t>(u >> 32);
    float s;
    std::memcpy(&s, &high, sizeof s);
    if (std::isfinite(d)) doubles.push_back(d);
    if (std::isfinite(s)) singles.push_back(s);
    doubles.push_back(static_cast<double>(u >> 11) * 0x1.0p-53);
    singles.push_back(static_cast<float>(u % 200000) / 10);
  }
  for (double d : doubles) ASSERT_EQ(plainNumber(d), expected(d)) << d;
  for (float s : singles) ASSERT_EQ(plainNumber(s), expected(s)) << s;
  EXPECT_EQ(textValue("  -12.5 goals"), -12.5);
  EXPECT_EQ(textValue("+3"), 3);
  EXPECT_EQ(textValue("0.1"), 0.1);
  EXPECT_EQ(textValue("12,5"), 12);
  EXPECT_EQ(textValue("x1"), 0);
  EXPECT_EQ(textValue("-"), 0);
  EXPECT_EQ(textValue(std::string(400, '9')), 0);  // too large: 0
  // A script's number: all of the text, as std::from_chars reads it, and finite.
  for (const char* text : {"1e5", "-0.25", "1.", ".5", "12.5e-3", "-0", "1e-310", "00012"}) {
    double got = 7, read = 7;
    std::from_chars(text, text + std::strlen(text), read);
    EXPECT_TRUE(parseReal(text, got) && got == read) << text;
  }
  for (const char* text : {" 1", "+1", "5x", "", "1e999", "-", "1e-400", "nan", "inf", "0x10"}) {
    double got = 7;
    EXPECT_FALSE(parseReal(text, got)) << text;
    EXPECT_EQ(got, 7) << text;
  }
  float single = 0;
  EXPECT_FALSE(parseReal("3.5e38", single));
}

}  // namespace
}  // namespace quorvel
