#include "events/pace.h"

#include <algorithm>

namespace quorvel {

void Pace::start(Millis wall) {
  started_ = true;
  lastWall_ = wall;
  lastServed_ = wall - kShortestSleep;
}

void Pace::catchUp(Millis wall) {
  if (!started_) return;
  const Millis ms = std::min(wall - lastWall_, kLongestCatchUp);
  lastWall_ = wall;
  if (held_ > 0 || f_.Ended || ms <= 0) return;
  f_.Sched.advance(ms);
}

bool Pace::wake(Millis wall) {
  const std::int64_t before = f_.Sched.ticksRun();
  const std::int64_t shownBefore = f_.Sched.shownTicksRun();
  catchUp(wall);
  // Spaced from when the served tick was due, not from when the wake-up came, so that a late
  // wake-up does not push every later tick of a flight or a walk later still.
  if (f_.Sched.ticksRun() != before) lastServed_ = armedAt_;
  return f_.Sched.shownTicksRun() != shownBefore;
}

Millis Pace::nextWakeIn(Millis wall) {
  const Millis due = f_.Sched.nextWake(kAllowedLateness);
  if (!started_ || held_ > 0 || f_.Ended || due == Scheduler::kNever) return -1;
  armedAt_ = std::max(lastWall_ + (due - f_.Sched.now()), lastServed_ + kShortestSleep);
  return std::clamp<Millis>(armedAt_ - wall, 0, kLongestCatchUp);
}

void Pace::release(Millis wall) {
  if (held_ > 0) --held_;
  // The game stood still while the box was up; it goes on from where it was.
  lastWall_ = wall;
}

}  // namespace quorvel
