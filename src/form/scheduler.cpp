#include "form/scheduler.h"

#include <algorithm>
#include <utility>

namespace quorvel {

Timer::Timer(Scheduler& owner, std::string name, int interval, bool enabled)
    : owner_(owner), name_(std::move(name)), interval_(interval), enabled_(enabled) {
  restart();
}

void Timer::setEnabled(bool on) {
  if (on == enabled_) return;
  enabled_ = on;
  restart();
}

void Timer::setInterval(int ms) {
  if (ms == interval_) return;
  interval_ = ms;
  restart();
}

void Timer::restart() {
  const Millis before = due_;
  due_ = enabled_ && interval_ > 0 ? owner_.now() + interval_ : Scheduler::kNever;
  if (slot_ >= 0) owner_.dueChanged(static_cast<std::size_t>(slot_), before, due_);
}

void Scheduler::add(Timer& timer, std::function<void()> handler, OnShow onShow) {
  timer.slot_ = static_cast<int>(entries_.size());
  entries_.push_back(Entry{&timer, std::move(handler), onShow});
  dueChanged(entries_.size() - 1, kNever, timer.due());
}

void Scheduler::dueChanged(std::size_t slot, Millis before, Millis after) {
  if (before != kNever)
    queue_.erase(std::lower_bound(queue_.begin(), queue_.end(), Due{before, slot}));
  if (after != kNever) {
    const Due due{after, slot};
    queue_.insert(std::lower_bound(queue_.begin(), queue_.end(), due), due);
  }
}

Scheduler::Entry* Scheduler::dueBy(Millis limit) {
  return !queue_.empty() && queue_.front().at <= limit ? &entries_[queue_.front().slot] : nullptr;
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
  Timer& t = *e->timer;
  now_ = t.due_;
  t.due_ += t.interval_;  // the count goes on: the next tick one interval later
  // It was the front of the queue; it moves back past the ticks that come before its next.
  queue_.front().at = t.due_;
  for (auto k = queue_.begin(); k + 1 != queue_.end() && k[1] < k[0]; ++k) std::iter_swap(k, k + 1);
  ++ticksRun_;
  lastRun_ = &t;
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
