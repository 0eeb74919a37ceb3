// The form kit: virtual-time timers and the random source.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

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

TEST(Scheduler, TimerFiresEveryIntervalFromItsSwitchOn) {
  Clock c;
  Timer a(c.s, "a", 15, false);
  c.s.add(a, [&] { c.record(a); });
  c.s.advance(10);
  a.setEnabled(true);  // counts from 10
  c.s.advance(40);     // up to 50: 25, 40
  EXPECT_EQ(c.log, (std::vector<std::string>{"a@25", "a@40"}));
  a.setEnabled(true);  // already on: no change of phase
  c.s.advance(15);     // 55
  EXPECT_EQ(c.log.back(), "a@55");
}

TEST(Scheduler, SwitchingOffDropsThePendingTickAndOnRestartsTheCount) {
  Clock c;
  Timer a(c.s, "a", 100, true);
  c.s.add(a, [&] { c.record(a); });
  c.s.advance(90);
  a.setEnabled(false);
  a.setEnabled(true);  // off then on at 90: next tick at 190, not 100
  c.s.advance(150);
  EXPECT_EQ(c.log, (std::vector<std::string>{"a@190"}));
}

TEST(Scheduler, ChangingTheIntervalRestartsTheCountButTheSameIntervalDoesNot) {
  Clock c;
  Timer a(c.s, "a", 100, true);
  c.s.add(a, [&] { c.record(a); });
  c.s.advance(60);
  a.setInterval(100);  // unchanged: still due at 100
  c.s.advance(40);
  ASSERT_EQ(c.log, (std::vector<std::string>{"a@100"}));
  c.s.advance(30);
  a.setInterval(50);  // changed at 130: due at 180
  c.s.advance(60);
  EXPECT_EQ(c.log.back(), "a@180");
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
  c.s.advance(45);
  EXPECT_EQ(c.log, (std::vector<std::string>{"second@15", "first@30", "second@30", "second@45",
                                             "late@45"}));
}

TEST(Scheduler, StepRunsOneTickAtMostUpToTheLimit) {
  Clock c;
  Timer a(c.s, "a", 15, true);
  c.s.add(a, [&] { c.record(a); });
  EXPECT_FALSE(c.s.step(14));
  EXPECT_EQ(c.s.now(), 0);
  EXPECT_TRUE(c.s.step(100));
  EXPECT_EQ(c.s.now(), 15);
  Timer zero(c.s, "zero", 0, true);  // an interval of 0 never fires
  EXPECT_EQ(zero.due(), Scheduler::kNever);
}

TEST(Random, SeedAloneDecidesTheSequence) {
  Random a(1), b(2);
  a.next();
  a.seed(42);
  b.seed(42);
  for (int i = 0; i < 100; ++i) {
    const double r = a.next();
    ASSERT_EQ(r, b.next());
    ASSERT_GE(r, 0.0);
    ASSERT_LT(r, 1.0);
  }
}

TEST(Random, ForcedDrawsComeFirstInOrderAndSurviveAReseed) {
  Random a(9);
  a.force({0.25, 0.5});
  a.seed(3);
  EXPECT_EQ(a.next(), 0.25);
  EXPECT_EQ(a.next(), 0.5);
  Random b(3);
  EXPECT_EQ(a.next(), b.next());
}

TEST(Random, RangesUseTheIntegerPart) {
  Random a(1);
  a.force({0.0, 0.999999, 0.5, 1.0 / 3});
  EXPECT_EQ(randomIn(a, 1, 6), 1);
  EXPECT_EQ(randomIn(a, 1, 6), 6);
  EXPECT_EQ(randomIn(a, 7, 10), 9);
  EXPECT_EQ(randomIn(a, 1, 3), 2);
  std::set<int> seen;
  for (int i = 0; i < 2000; ++i) seen.insert(randomIn(a, 3, 8));
  EXPECT_EQ(seen, (std::set<int>{3, 4, 5, 6, 7, 8}));
}

TEST(Colour, HexReadsBackAndRejectsJunk) {
  EXPECT_EQ(toHex(RGB(252, 0, 10)), "#fc000a");
  EXPECT_EQ(parseHex("#FC000A"), RGB(252, 0, 10));
  EXPECT_FALSE(parseHex("fc000a"));
  EXPECT_FALSE(parseHex("#fc00"));
  EXPECT_FALSE(parseHex("#fc00zz"));
}

}  // namespace
}  // namespace quorvel
