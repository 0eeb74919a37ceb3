// Virtual time. Timers are data; the scheduler decides which tick is due next and runs its
// handler. Nothing here reads the wall clock: the window advances it to the wall clock,
// tests and tools as fast as they like.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace quorvel {

using Millis = std::int64_t;

class Scheduler;

// A periodic timer. It fires every Interval ms from the moment it was last switched on, or
// from the moment its interval changed to another value while on. Switching it off drops the
// pending tick; switching on a running timer, or setting the interval it has, changes nothing.
class Timer {
 public:
  Timer(Scheduler& owner, std::string name, int interval, bool enabled);
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  bool Enabled() const { return enabled_; }
  int Interval() const { return interval_; }
  void setEnabled(bool on);
  void setInterval(int ms);

  const std::string& name() const { return name_; }
  // Virtual time of the next tick; never when off or when the interval is not positive.
  Millis due() const { return due_; }

 private:
  friend class Scheduler;
  Scheduler& owner_;
  std::string name_;
  int interval_;
  bool enabled_;
  Millis due_ = 0;  // the next tick, kept up to date: the scheduler asks every step
  int slot_ = -1;   // its place in the scheduler's table, once registered
  void restart();   // counts again from now: the next tick one interval away, none when off
};

// Whether a timer's ticks can change anything a window shows.
enum class OnShow { mayChange, changesNothing };

// How late a window may serve a tick on the wall clock, so that one wake-up serves several.
// Virtual time still runs every tick at its own moment: the game plays the same.
struct Lateness {
  int slowTimer;     // a timer of this interval (ms) or more is slow
  Millis slowTick;   // a slow tick waits this long for the next tick of a faster timer
  Millis quietTick;  // a tick that changes nothing on show waits this long for any other
};

class Scheduler {
 public:
  static constexpr Millis kNever = std::numeric_limits<Millis>::max();

  Millis now() const { return now_; }

  // Timers are registered in table order; ticks due at the same millisecond run in that order.
  void add(Timer& timer, std::function<void()> handler, OnShow onShow = OnShow::mayChange);

  // Runs every tick due up to and including now() + ms, in time order; time then stands there.
  // A handler that keeps re-arming timers at the same moment is stopped after `maxTicks`
  // ticks in one call; the result tells whether the advance completed.
  bool advance(Millis ms, std::int64_t maxTicks = std::numeric_limits<std::int64_t>::max());

  // Runs the next due tick if it falls at or before `limit`; returns false when there is none
  // (time is then left where it was).
  bool step(Millis limit);

  // Moves time forward without running anything (used only after step() found nothing).
  void setNow(Millis t) {
    if (t > now_) now_ = t;
  }

  std::int64_t ticksRun() const { return ticksRun_; }
  // The timer whose tick ran last; null before the first.
  const Timer* lastRun() const { return lastRun_; }
  // Ticks run by timers that may change what is on show: while this stands still, a window
  // need not look the model over.
  std::int64_t shownTicksRun() const { return shownTicksRun_; }

  // Calls `watcher` with each timer whose tick is about to run, before its handler: a window
  // learns from it what the ticks may have changed. An empty one stops the watching.
  void watch(std::function<void(const Timer&)> watcher) { watcher_ = std::move(watcher); }

  // When a window should next wake to serve the ticks: the earliest moment by which some tick
  // would be later than `allowed` lets it be; kNever when no timer runs. Nothing changes
  // before it but what the person does.
  Millis nextWake(const Lateness& allowed) const;

 private:
  struct Entry {
    Timer* timer;
    std::function<void()> handler;
    OnShow onShow;
  };
  // A running timer's next tick. Ticks due together run in table order: the lower slot first.
  struct Due {
    Millis at;
    std::size_t slot;
    bool operator<(const Due& o) const {
      return at != o.at ? at < o.at : slot < o.slot;  // the first of equals: table order
    }
  };
  Entry* dueBy(Millis limit);
  void dueChanged(std::size_t slot, Millis before, Millis after);  // keeps queue_ in order

  Millis now_ = 0;
  std::int64_t ticksRun_ = 0;
  std::int64_t shownTicksRun_ = 0;
  const Timer* lastRun_ = nullptr;
  std::function<void(const Timer&)> watcher_;
  std::vector<Entry> entries_;
  // The next tick of every timer that will tick (on, with a positive interval), earliest first:
  // the next tick to run is always the front, and most timers are off most of the time.
  std::vector<Due> queue_;
  friend class Timer;
};

}  // namespace quorvel
