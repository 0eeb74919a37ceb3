#include "form/scheduler.h"

#include <algorithm>
#include <utility>

namespace quorvel {

Timer::Timer(Scheduler& owner, std::string name, int interval, bool enabled)
    : owner_(owner), name_(std::move(name)), interval_(interval), enabled_(enabled) {
  start_ = owner_.now();
}

void Timer::setEnabled(bool on) {
  if (on == enabled_) return;
  enabled_ = on;
  if (on) {
    start_ = owner_.now();
    fired_ = 0;
  }
}

void Timer::setInterval(int ms) {
  if (ms == interval_) return;
  interval_ = ms;
  if (enabled_) {
    start_ = owner_.now();
    fired_ = 0;
  }
}

Millis Timer::due() const {
  if (!enabled_ || interval_ <= 0) return Scheduler::kNever;
  return start_ + (fired_ + 1) * static_cast<Millis>(interval_);
}

void Scheduler::add(Timer& timer, std::function<void()> handler, OnShow onShow) {
  entries_.push_back(Entry{&timer, std::move(handler), onShow});
}

Scheduler::Entry* Scheduler::dueBy(Millis limit) {
  Entry* best = nullptr;
  Millis bestDue = kNever;
  for (Entry& e : entries_) {
    const Millis d = e.timer->due();
    if (d <= limit && d < bestDue) {
      best = &e;
      bestDue = d;
    }
  }
  return best;
}

Millis Scheduler::nextWake(const Lateness& allowed) const {
  Millis fastDue = kNever, slowDue = kNever, quietDue = kNever;
  for (const Entry& e : entries_) {
    Millis& next = e.onShow == OnShow::changesNothing         ? quietDue
                   : e.timer->Interval() >= allowed.slowTimer ? slowDue
                                                              : fastDue;
    next = std::min(next, e.timer->due());
  }
  Millis wake = slowDue < fastDue && fastDue - slowDue <= allowed.slowTick
                    ? fastDue
                    : std::min(fastDue, slowDue);
  if (quietDue != kNever) wake = std::min(wake, quietDue + allowed.quietTick);
  return wake;
}

bool Scheduler::step(Millis limit) {
  Entry* e = dueBy(limit);
  if (e == nullptr) return false;
  now_ = e->timer->due();
  ++e->timer->fired_;
  ++ticksRun_;
  lastRun_ = e->timer;
  if (e->onShow == OnShow::mayChange) ++shownTicksRun_;
  e->handler();
  return true;
}

bool Scheduler::advance(Millis ms, std::int64_t maxTicks) {
  const Millis target = now_ + (ms > 0 ? ms : 0);
  for (std::int64_t n = 0; n < maxTicks; ++n) {
    if (!step(target)) {
      now_ = target;
      return true;
    }
  }
  return dueBy(target) == nullptr ? (now_ = target, true) : false;
}

}  // namespace quorvel
