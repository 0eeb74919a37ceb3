// A form's virtual time kept in step with a wall clock, as a window keeps it: the ticks are
// served when due, several close together by one wake-up, a long stall is skipped rather than
// replayed, and time stands still while a message box waits for the person.
#pragma once

#include "match/match_form.h"

namespace quorvel {

// After a long stall (a suspended laptop) the game resumes instead of replaying hours of ticks.
inline constexpr Millis kLongestCatchUp = 5000;
// Ticks due within this much of each other are served by one wake-up, at most that much late
// on the wall clock. It is short beside the game's fastest timers (15 ms), whose phases differ
// (the ball's and a kick's), so that a flight still ends on time. Virtual time still runs
// every tick at its own moment, so the game plays exactly the same.
inline constexpr Millis kShortestSleep = 4;
// A slow timer's tick (the team panel's second, the computer's think) waits for the next
// tick of a fast one, so that the two share a wake-up: nobody sees it 15 ms late. A tick that
// changes nothing on show (the start-up count, all through the wait for Start) needs no
// wake-up of its own: it runs at the next wake-up for anything else, or as soon as a click or
// a key brings virtual time up to the wall clock, before the game sees the input.
inline constexpr Lateness kAllowedLateness{.slowTimer = 100, .slowTick = 15, .quietTick = 1000};
static_assert(kAllowedLateness.quietTick < kLongestCatchUp, "a quiet tick's wait is no stall");

// Wall-clock times are milliseconds on any clock that only goes forward.
class Pace {
 public:
  explicit Pace(MatchForm& f) : f_(f) {}

  // Virtual time starts to follow the wall clock, now at `wall`.
  void start(Millis wall);
  // Brings virtual time up to the wall clock: before a person's input lands, and at a wake-up.
  void catchUp(Millis wall);
  // The wake-up the last nextWakeIn asked for: catches up; true when a tick ran that may have
  // changed what is on show.
  bool wake(Millis wall);
  // How long from `wall` until the next wake-up; -1 when none is needed until the person acts.
  Millis nextWakeIn(Millis wall);
  // A message box is up: the game stands still until it goes.
  void hold() { ++held_; }
  void release(Millis wall);

 private:
  MatchForm& f_;
  bool started_ = false;
  int held_ = 0;
  Millis lastWall_ = 0;                  // the wall time that virtual now() stands for
  Millis lastServed_ = -kShortestSleep;  // when the last tick served was due on the wall clock
  Millis armedAt_ = 0;                   // when the wake-up asked for is due
};

}  // namespace quorvel
