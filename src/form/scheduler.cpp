#include "form/scheduler.h"

#include <algorithm>
#include <utility>

namespace quorvel {

Timer::Timer(Scheduler& owner, std::string name, int interval, bool enabled)
    : owner_(owner), name_(std::move(name)), interval_(interval), enabled_(enabled) {
  start_ = owner_.now();
  reckon();
}

void Timer::setEnabled(bool on) {
  if (on == enabled_) return;
  enabled_ = on;
  if (on) {
    start_ = owner_.now();
    fired_ = 0;
  }
  reckon();
}

void Timer::setInterval(int ms) {
  if (ms == interval_) return;
  interval_ = ms;
  if (enabled_) {
    start_ = owner_.now();
    fired_ = 0;
  }
  reckon();
}

void Timer::reckon() {
  due_ = !enabled_ || interval_ <= 0 ? Scheduler::kNever
                                     : start_ + (fired_ + 1) * static_cast<Millis>(interval_);
  if (slot_ >= 0) owner_.dues_[static_cast<std::size_t>(slot_)] = due_;
}

void Scheduler::add(Timer& timer, std::function<void()> handler, OnShow onShow) {
  timer.slot_ = static_cast<int>(dues_.size());
  entries_.push_back(Entry{&timer, std::move(handler), onShow});
  dues_.push_back(timer.due());
}

Scheduler::Entry* Scheduler::dueBy(Millis limit) {
  std::size_t best = 0;
  for (std::size_t k = 1; k < dues_.size(); ++k)
    if (dues_[k] < dues_[best]) best = k;  // the first of equals: table order
  return !dues_.empty() && dues_[best] <= limit ? &entries_[best] : nullptr;
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
  e->timer->reckon();
  ++ticksRun_;
  lastRun_ = e->timer;
  if (e->onShow == OnShow::mayChange) ++shownTicksRun_;
  if (watcher_) watcher_(*e->timer);
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
