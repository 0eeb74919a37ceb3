// What the window measurements read: wake-ups (voluntary context switches of the main thread,
// from /proc/self/status), processor time, and the moment of a window's first complete paint.
#pragma once

#include <sys/resource.h>

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>

namespace quorvel::probe {

struct Usage {
  long long wakeUps = 0;  // voluntary context switches of the main thread
  double cpuMs = 0;       // user and system time of the whole process
  double wallMs = 0;
};

inline double wallMs() {
  using namespace std::chrono;
  return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

inline Usage usage() {
  Usage u;
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind("voluntary_ctxt_switches:", 0) == 0) u.wakeUps = std::stoll(line.substr(24));
  rusage r{};
  getrusage(RUSAGE_SELF, &r);
  u.cpuMs = (r.ru_utime.tv_sec + r.ru_stime.tv_sec) * 1e3 +
            (r.ru_utime.tv_usec + r.ru_stime.tv_usec) / 1e3;
  u.wallMs = wallMs();
  return u;
}

// The process's resident memory (VmRSS), in megabytes.
inline double residentMb() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind("VmRSS:", 0) == 0) return std::stod(line.substr(6)) / 1024;
  return 0;
}

// One line: wake-ups a second and processor per cent between two readings.
inline void report(const char* what, const Usage& a, const Usage& b) {
  const double seconds = (b.wallMs - a.wallMs) / 1000;
  std::printf("%-22s %7.1f wake-ups/s  %5.2f %% CPU  over %.1f s\n", what,
              (b.wakeUps - a.wakeUps) / seconds, (b.cpuMs - a.cpuMs) / 10 / seconds, seconds);
  std::fflush(stdout);
}

// Runs `step` and paints what it changed, again while it returns true; returns how many steps
// ran. What callgrind counts of a phase (bench/window_count.sh: --toggle-collect).
__attribute__((noinline)) inline int countedPhase(const std::function<bool()>& step) {
  int steps = 0;
  for (bool more = true; more; ++steps) {
    more = step();
    QCoreApplication::processEvents();
  }
  return steps;
}

// Milliseconds since the Unix epoch, as `date +%s%N` gives them in nanoseconds.
inline double epochMs() {
  using namespace std::chrono;
  return duration<double, std::milli>(system_clock::now().time_since_epoch()).count();
}

// Prints the milliseconds from `launchedNs` (epoch nanoseconds, taken by whoever started the
// program) to the end of the first paint of `w` that reached the screen, then quits.
inline void quitAfterFirstPaint(QWidget& w, long long launchedNs) {
  struct Watch : QObject {
    QWindow* window;
    long long launched;
    bool seen = false;
    bool eventFilter(QObject*, QEvent* e) override {
      if (e->type() == QEvent::Expose && window->isExposed() && !seen) {
        seen = true;
        // The expose paints and flushes the whole window before this runs.
        QTimer::singleShot(0, [this] {
          std::printf("%.1f\n", epochMs() - launched / 1e6);
          std::fflush(stdout);
          QCoreApplication::quit();
        });
      }
      return false;
    }
  };
  w.winId();
  auto* watch = new Watch;
  watch->setParent(&w);
  watch->window = w.windowHandle();
  watch->launched = launchedNs;
  w.windowHandle()->installEventFilter(watch);
}

}  // namespace quorvel::probe
