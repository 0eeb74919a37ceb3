// The game's window as a person sees it run, measured against the bare window
// (bare_window.cpp). Started as the game starts (app/main.cpp).
//   quorvel_window_bench --first-paint NS  prints ms from NS (`date +%s%N`) to its first paint
//   quorvel_window_bench --rest SECONDS    wake-ups and processor before Start, then with the
//                                          ball idling, then during the flights of ten kicks
//   quorvel_window_bench --phases SECONDS SCALE  at SCALE: the walk after Start, the ball idling
//                                          for SECONDS, six kicks' flights, the resident memory
//   quorvel_window_bench --pace            wall time against virtual time of the walk after
//                                          Start and of ten kicks' flights
//   quorvel_window_bench --count SCALE     the same phases as --phases with no clock: each tick
//                                          is painted before the next, so that callgrind counts
//                                          the same work in every run (bench/window_count.sh)
#include <QAbstractButton>
#include <QApplication>
#include <QStyleFactory>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <random>
#include <string>

#include "events/events.h"
#include "match/codes.h"
#include "match_window.h"
#include "window_probe.h"

namespace quorvel {
namespace {

using probe::Usage;
constexpr int kPhaseKicks = 6;  // as many as the floor's

class Run {
 public:
  explicit Run(MatchWindow& w, MatchForm& f) : w_(w), f_(f) {}

  // --rest: each phase is timed by one single-shot timer, so the measurement adds a wake-up
  // or two to the game's own.
  void rest(int seconds) {
    later(2000, [this, seconds] {
      const Usage a = probe::usage();
      later(seconds * 1000, [this, a, seconds] {
        probe::report("before Start", a, probe::usage());
        press("CDgo");
        whenStill([this, seconds] {
          const Usage b = probe::usage();
          later(seconds * 1000, [this, b] {
            probe::report("ball idling", b, probe::usage());
            kicks(10, Usage{}, 0);
          });
        });
      });
    });
  }

  // --phases: as the floor's (bare_window.cpp); the walk's end is polled every 50 ms.
  void phases(int seconds) {
    later(1000, [this, seconds] {
      const Usage a = probe::usage();
      press("CDgo");
      poll(
          50, [this] { return !f_.TimPlace.Enabled(); },
          [this, a, seconds] {
            probe::report("the walk after Start", a, probe::usage());
            whenStill([this, seconds] {
              const Usage b = probe::usage();
              later(seconds * 1000, [this, b] {
                probe::report("ball idling", b, probe::usage());
                kicks(kPhaseKicks, Usage{}, 0);
              });
            });
          });
    });
  }

  // --count: the walk, 200 ticks of the ball idling and six kicks, each inside countedPhase(),
  // which is what callgrind counts; prints each phase's ticks.
  void count() {
    while (!w_.windowHandle()->isExposed()) QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    press("CDgo");
    const int walk = probe::countedPhase([this] {
      w_.pump(15);
      return f_.TimPlace.Enabled();
    });
    waitTicks([this] { return still(); });
    int idle = 200;
    probe::countedPhase([this, &idle] {
      w_.pump(15);
      return --idle > 0;
    });
    std::string kicks;  // each counted kick's ticks, and whether a 50/50 contest slid the names
    for (int kick = 0; kick < kPhaseKicks; ++kick) {
      waitTicks([this] { return still(); });
      press("Cdice");
      QCoreApplication::processEvents();
      if (firstFlag() < 0) continue;  // automatic play took it
      bool clicked = false;
      const int ticks = probe::countedPhase([this, &clicked] {
        if (!clicked) {
          clicked = true;
          press(f_.CDdest[firstFlag()].name);
          return true;
        }
        w_.pump(15);
        return f_.KickFlag != -1;
      });
      kicks += " " + std::to_string(ticks) + (f_.ContestWin != kNoContest ? ":1" : ":0");
    }
    std::printf("ticks walk %d idle 200\nkicks%s\n", walk, kicks.c_str());
  }

  // --pace: polled every millisecond, so that the moment a walk or a flight ends is seen.
  void pace() {
    later(1000, [this] {
      press("CDgo");
      const Millis v0 = f_.Sched.now();
      const double w0 = probe::wallMs();
      poll([this] { return !f_.TimPlace.Enabled(); },
           [this, v0, w0] {
             paceLine("the walk after Start", v0, w0);
             flights(10);
           });
    });
  }

 private:
  void later(int ms, std::function<void()> then) { QTimer::singleShot(ms, Qt::PreciseTimer, then); }

  void press(const std::string& name) {
    static_cast<QAbstractButton*>(w_.widgetFor(name))->click();
  }

  // The first flag offered by the die, or -1.
  int firstFlag() const {
    for (int d = 0; d < 8; ++d)
      if (f_.CDdest[d].Visible) return d;
    return -1;
  }

  // A flag offered by the die, clicked; false when none is offered.
  bool kickAnywhere() {
    const int d = firstFlag();
    if (d >= 0) press(f_.CDdest[d].name);
    return d >= 0;
  }

  // Ticks, each painted, until `done` (outside what is counted).
  void waitTicks(const std::function<bool()>& done) {
    while (!done()) {
      w_.pump(15);
      QCoreApplication::processEvents();
    }
  }

  bool still() const {
    return !f_.TimPlace.Enabled() && f_.KickFlag == -1 && !f_.TimSc.Enabled() &&
           !f_.TimSub.Enabled() && f_.DiceReady == kDiceReady;
  }

  // Checks four times a second, outside the measured phases.
  void whenStill(std::function<void()> then) {
    if (still()) return then();
    later(250, [this, then] { whenStill(then); });
  }

  void poll(std::function<bool()> done, std::function<void()> then) { poll(1, done, then); }
  void poll(int ms, std::function<bool()> done, std::function<void()> then) {
    if (done()) return then();
    later(ms, [this, ms, done, then] { poll(ms, done, then); });
  }

  // A roll and a kick; the flight is measured from the click to its 900 ms end.
  void kicks(int left, Usage sum, double seconds) {
    if (left == 0) {
      const double ms = seconds * 1000;
      Usage start{0, 0, 0}, end{sum.wakeUps, sum.cpuMs, ms};
      probe::report("during kicks' flights", start, end);
      std::printf("resident MB %.1f\n", probe::residentMb());
      QCoreApplication::quit();
      return;
    }
    whenStill([this, left, sum, seconds] {
      press("Cdice");
      later(300, [this, left, sum, seconds] {
        const Usage a = probe::usage();
        if (!kickAnywhere()) return kicks(left, sum, seconds);  // automatic play took it
        later(900, [this, a, left, sum, seconds] {
          const Usage b = probe::usage();
          Usage total{sum.wakeUps + b.wakeUps - a.wakeUps, sum.cpuMs + b.cpuMs - a.cpuMs, 0};
          kicks(left - 1, total, seconds + (b.wallMs - a.wallMs) / 1000);
        });
      });
    });
  }

  void flights(int left) {
    if (left == 0) return QCoreApplication::quit();
    whenStill([this, left] {
      press("Cdice");
      later(300, [this, left] {
        const double w0 = probe::wallMs();
        if (!kickAnywhere()) return flights(left);
        const Millis v0 = f_.Sched.now();
        poll([this] { return f_.KickFlag == -1; },  // the ball has arrived
             [this, v0, w0, left] {
               paceLine("a kick's flight", v0, w0);
               flights(left - 1);
             });
      });
    });
  }

  // Timer ticks fall on multiples of 15 ms from the click; the last one ended the motion.
  // (The ball's timer runs between kicks too: the ball jiggles at its owner's feet.)
  void paceLine(const char* what, Millis v0, double w0) {
    const double wall = probe::wallMs() - w0;
    const double virt = std::floor((f_.Sched.now() - v0) / 15.0) * 15;
    std::printf("%-22s %6.0f ms virtual  %7.1f ms wall  %+5.2f %%\n", what, virt, wall,
                (wall / virt - 1) * 100);
    std::fflush(stdout);
  }

  MatchWindow& w_;
  MatchForm& f_;
};

}  // namespace
}  // namespace quorvel

int main(int argc, char** argv) {
  const double entered = quorvel::probe::epochMs();
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("quorvel"));
  QApplication::setDesktopFileName(QStringLiteral("quorvel"));
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));

  const double appReady = quorvel::probe::epochMs();
  const std::string mode = argc >= 2 ? argv[1] : "";
  // Counted runs play the same match every time.
  auto form = quorvel::newMatchForm(mode == "--count" ? 1 : std::random_device{}());
  const double formReady = quorvel::probe::epochMs();
  quorvel::MatchWindow window(*form);
  const double windowReady = quorvel::probe::epochMs();
  quorvel::Run run(window, *form);
  if (mode == "--first-paint" && argc == 3)
    quorvel::probe::quitAfterFirstPaint(window, std::stoll(argv[2]));
  else if (mode == "--rest" && argc == 3)
    run.rest(std::stoi(argv[2]));
  else if (mode == "--pace")
    run.pace();
  else if (mode == "--count" && argc == 3) {
    window.resize(window.naturalSize() * std::stod(argv[2]));
    window.show();
    run.count();
    return 0;
  } else if (mode == "--phases" && argc == 4) {
    // The size the floor takes at this scale; the screen must hold it.
    window.resize(window.naturalSize() * std::stod(argv[3]));
    run.phases(std::stoi(argv[2]));
  } else {
    std::fprintf(stderr,
                 "usage: %s --first-paint NS | --rest SECONDS | --pace | --phases SECONDS SCALE\n",
                 argv[0]);
    return 2;
  }
  window.show();
  window.startClock();
  if (mode == "--first-paint")  // where the time before the first paint goes
    std::fprintf(stderr, "main %.1f  QApplication %.1f  form %.1f  window %.1f  shown %.1f\n",
                 entered - std::stoll(argv[2]) / 1e6, appReady - entered, formReady - appReady,
                 windowReady - formReady, quorvel::probe::epochMs() - windowReady);
  return QApplication::exec();
}
