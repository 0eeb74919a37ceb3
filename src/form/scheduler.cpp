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
  due_ = enabled_ && interval_ > 0 ? owner_.now() + interval_ : Scheduler::kNever;
  if (slot_ >= 0) owner_.dueChanged(static_cast<std::size_t>(slot_), due_);
}

void Scheduler::add(Timer& timer, std::function<void()> handler, OnShow onShow) {
  timer.slot_ = static_cast<int>(dues_.size());
  entries_.push_back(Entry{&timer, std::move(handler), onShow});
  dues_.push_back(kNever);
  dueChanged(dues_.size() - 1, timer.due());
}

void Scheduler::dueChanged(std::size_t slot, Millis due) {
  const bool wasRunning = dues_[slot] != kNever, runs = due != kNever;
  dues_[slot] = due;
  if (wasRunning == runs) return;
  const auto at = std::lower_bound(running_.begin(), running_.end(), slot);
  if (runs)
    running_.insert(at, slot);
  else
    running_.erase(at);
}

Scheduler::Entry* Scheduler::dueBy(Millis limit) {
  if (running_.empty()) return nullptr;
  std::size_t best = running_.front();
  for (std::size_t k : running_)
    if (dues_[k] < dues_[best]) best = k;  // the first of equals: table order
  return dues_[best] <= limit ? &entries_[best] : nullptr;
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
  dues_[static_cast<std::size_t>(t.slot_)] = t.due_;
  ++ticksRun_;
  lastRun_ = &t;
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
