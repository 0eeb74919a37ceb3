// The floor the game's window is measured against: what a careful Qt programmer would write to
// show the same pitch. One widget paints the whole scene from pictures drawn once at the
// window's size (the pitch, a shirt of each side, the ball), and each move repaints only the
// rectangles the moving pieces left and entered.
//   quorvel_bare_window --first-paint NS        prints ms from NS (`date +%s%N`) to its first paint
//   quorvel_bare_window --rest SECONDS          prints its wake-ups and processor at rest
//   quorvel_bare_window --phases SECONDS SCALE  the walk of 22 players, then the ball idling for
//                                               SECONDS, then six kicks' flights, at SCALE
//   quorvel_bare_window --count SCALE           the same with no clock, 200 ticks of idling:
//                                               what callgrind counts (bench/window_count.sh)
#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>
#include <QStyleFactory>
#include <QTimer>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "match/pitch.h"
#include "pictures.h"
#include "ui/layout.h"
#include "window_probe.h"

namespace {

using quorvel::probe::Usage;
constexpr double kTwipsPerPixel = 15;
constexpr int kTickMs = 15;
constexpr int kFlightTicks = 60;
constexpr int kKicks = 6;

class Pitch : public QWidget {
 public:
  explicit Pitch(double scale) : s_(scale / kTwipsPerPixel) {
    resize(static_cast<int>(std::lround(quorvel::kMatchClient.width * s_)),
           static_cast<int>(std::lround(quorvel::kMatchClient.height * s_)));
    setAttribute(Qt::WA_OpaquePaintEvent);
    // The players wait in two rows below the pitch, as the game's do.
    for (int i = 1; i <= 22; ++i)
      piece_[i] = QPointF(quorvel::playerLeft(1) + ((i - 1) % 11) * 1305, i <= 11 ? 9300 : 10320);
    piece_[0] = QPointF(quorvel::kKickOffBallLeft, quorvel::kKickOffBallTop);
  }

  // Moves piece `i` (0 the ball, 1..22 the players) and repaints where it was and where it is.
  void move(int i, QPointF to) {
    const QRect before = rectOf(i);
    piece_[i] = to;
    update(before | rectOf(i));
  }
  QPointF at(int i) const { return piece_[i]; }

 protected:
  void resizeEvent(QResizeEvent*) override { drawOnce(); }
  void paintEvent(QPaintEvent* e) override {
    QPainter p(this);
    const QRect dirty = e->rect();
    p.drawPixmap(dirty, scene_, dirty);
    for (int i = 1; i <= 22; ++i)
      if (rectOf(i).intersects(dirty)) p.drawPixmap(rectOf(i).topLeft(), shirt_[i <= 11 ? 0 : 1]);
    if (rectOf(0).intersects(dirty)) p.drawPixmap(rectOf(0).topLeft(), ball_);
  }

 private:
  QRect rectOf(int i) const {
    const double side = i == 0 ? quorvel::kBallTwips : quorvel::kPlayerTwips;
    const int px = static_cast<int>(std::lround(side * s_));
    return QRect(static_cast<int>(std::lround(piece_[i].x() * s_)),
                 static_cast<int>(std::lround(piece_[i].y() * s_)), px, px);
  }
  QPixmap drawn(QSize size, const std::function<void(QPainter&)>& draw) {
    QPixmap pm(size);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    draw(p);
    return pm;
  }
  void drawOnce() {
    scene_ = drawn(size(), [this](QPainter& p) {
      p.fillRect(rect(), QColor(223, 230, 218));
      const double left = quorvel::kGridLeft - quorvel::kPitchFrameTwips;
      const double top = quorvel::kGridTop - quorvel::kPitchFrameTwips;
      quorvel::drawPicture(
          p, QStringLiteral("pitch"),
          QRectF(left * s_, top * s_, quorvel::kPitchWidth * s_, quorvel::kPitchHeight * s_),
          quorvel::Look{});
    });
    const QSize player = rectOf(1).size(), ball = rectOf(0).size();
    const QColor colours[2] = {QColor(252, 0, 0), QColor(0, 0, 252)};
    for (int side = 0; side < 2; ++side)
      shirt_[side] = drawn(player, [&](QPainter& p) {
        quorvel::Look look;
        look.back = quorvel::toRgba(colours[side]);
        quorvel::drawPicture(p, QStringLiteral("player"), QRectF(QPointF(), player), look);
      });
    ball_ = drawn(ball, [&](QPainter& p) {
      quorvel::drawPicture(p, QStringLiteral("ball"), QRectF(QPointF(), ball), {});
    });
  }

  double s_;  // pixels per twip
  std::array<QPointF, 23> piece_;
  QPixmap scene_, shirt_[2], ball_;
};

// The phases, each driven by one 15 ms timer, as the game's are.
class Phases {
 public:
  // `seconds` of idling; 0: counted, with no clock.
  Phases(Pitch& w, int seconds) : w_(w), seconds_(seconds), counted_(seconds == 0) {
    tick_.setTimerType(Qt::PreciseTimer);
    tick_.setInterval(kTickMs);
    QObject::connect(&tick_, &QTimer::timeout, [this] { step_(); });
  }

  void start() {
    QTimer::singleShot(1000, [this] { walk(); });
  }

 private:
  // Each player walks a step of 15 twips a tick on each axis to a square of his half.
  void walk() {
    std::array<QPointF, 23> target;
    for (int i = 1; i <= 22; ++i) {
      const int col = i <= 11 ? 1 + below(8) : 9 + below(8);
      target[i] = QPointF(quorvel::playerLeft(col), quorvel::playerTop(1 + below(8)));
    }
    const Usage a = quorvel::probe::usage();
    run(
        [this, target] {
          bool walking = false;
          for (int i = 1; i <= 22; ++i) {
            QPointF p = w_.at(i);
            const QPointF d = target[i] - p;
            if (d.isNull()) continue;
            walking = true;
            p += QPointF(d.x() > 0   ? kStep
                         : d.x() < 0 ? -kStep
                                     : 0,
                         d.y() > 0   ? kStep
                         : d.y() < 0 ? -kStep
                                     : 0);
            w_.move(i, p);
          }
          return walking;
        },
        [this, a] {
          report("the walk after Start", a, quorvel::probe::usage());
          idle();
        });
  }

  // The ball jiggles inside its owner's box at 5, 10 or 15 twips a tick.
  void idle() {
    const QPointF owner = w_.at(9);
    w_.move(0, owner + QPointF(270, 270));
    const Usage a = quorvel::probe::usage();
    int ticks = counted_ ? kCountedIdleTicks : seconds_ * 1000 / kTickMs;
    run(
        [this, owner, ticks]() mutable {
          QPointF b = w_.at(0);
          if (b.y() < owner.y()) dy_ = speed();
          if (owner.y() + 570 < b.y()) dy_ = -speed();
          if (b.x() < owner.x()) dx_ = speed();
          if (owner.x() + 540 < b.x()) dx_ = -speed();
          w_.move(0, b + QPointF(dx_, dy_));
          return --ticks > 0;
        },
        [this, a] {
          report("ball idling", a, quorvel::probe::usage());
          kicks(kKicks, Usage{}, 0);
        });
  }

  // The ball flies 60 ticks to a square while the receiver runs to meet it.
  void kicks(int left, Usage sum, double seconds) {
    if (left == 0 && counted_) {
      // The walk, the idling, then each kick.
      std::printf("ticks walk %d idle %d\nkicks", ticks_[0], ticks_[1]);
      for (std::size_t i = 2; i < ticks_.size(); ++i) std::printf(" %d:0", ticks_[i]);
      std::printf("\n");
      QCoreApplication::quit();
      return;
    }
    if (left == 0) {
      report("during kicks' flights", Usage{0, 0, 0},
             Usage{sum.wakeUps, sum.cpuMs, seconds * 1000});
      std::printf("resident MB %.1f\n", quorvel::probe::residentMb());
      QCoreApplication::quit();
      return;
    }
    QTimer::singleShot(300, [this, left, sum, seconds] {
      const int receiver = 2 + below(20);
      const QPointF to(quorvel::playerLeft(1 + below(16)), quorvel::playerTop(1 + below(8)));
      const QPointF ballStep = (to - w_.at(0)) / kFlightTicks;
      const QPointF runStep = (to - w_.at(receiver)) / kFlightTicks;
      const Usage a = quorvel::probe::usage();
      int ticks = kFlightTicks;
      run(
          [this, receiver, ballStep, runStep, ticks]() mutable {
            w_.move(0, w_.at(0) + ballStep);
            w_.move(receiver, w_.at(receiver) + runStep);
            return --ticks > 0;
          },
          [this, a, left, sum, seconds] {
            const Usage b = quorvel::probe::usage();
            const Usage total{sum.wakeUps + b.wakeUps - a.wakeUps, sum.cpuMs + b.cpuMs - a.cpuMs,
                              0};
            kicks(left - 1, total, seconds + (b.wallMs - a.wallMs) / 1000);
          });
    });
  }

  void report(const char* what, const Usage& a, const Usage& b) const {
    if (!counted_) quorvel::probe::report(what, a, b);
  }

  // Runs `step` every tick while it returns true, then `then`.
  void run(std::function<bool()> step, std::function<void()> then) {
    if (counted_) {
      ticks_.push_back(quorvel::probe::countedPhase(step));
      QTimer::singleShot(0, then);
      return;
    }
    step_ = [this, step, then] {
      if (step()) return;
      tick_.stop();
      then();
    };
    tick_.start();
  }

  int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng_); }
  double speed() { return (1 + below(3)) * 5.0; }

  static constexpr double kStep = quorvel::kStepTwips;
  static constexpr int kCountedIdleTicks = 200;
  Pitch& w_;
  int seconds_;
  bool counted_;
  std::vector<int> ticks_;  // of each counted phase so far
  QTimer tick_;
  std::function<void()> step_;
  std::mt19937 rng_{1};
  double dx_ = 5, dy_ = 5;
};

}  // namespace

int main(int argc, char** argv) {
  const double entered = quorvel::probe::epochMs();
  QApplication app(argc, argv);
  const double appReady = quorvel::probe::epochMs();
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  const std::string mode = argc >= 2 ? argv[1] : "";
  const double scale = mode == "--phases" && argc == 4  ? std::stod(argv[3])
                       : mode == "--count" && argc == 3 ? std::stod(argv[2])
                                                        : 1;
  Pitch w(scale);
  long long ticks = 0;
  QTimer timer;
  timer.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
  Phases phases(w, mode == "--phases" && argc == 4 ? std::stoi(argv[2]) : 0);

  if (mode == "--first-paint" && argc == 3) {
    quorvel::probe::quitAfterFirstPaint(w, std::stoll(argv[2]));
    timer.start(kTickMs);
  } else if (mode == "--rest" && argc == 3) {
    timer.start(kTickMs);
    const int seconds = std::stoi(argv[2]);
    QTimer::singleShot(2000, [seconds] {
      const auto start = quorvel::probe::usage();
      QTimer::singleShot(seconds * 1000, [start] {
        quorvel::probe::report("bare window at rest", start, quorvel::probe::usage());
        QCoreApplication::quit();
      });
    });
  } else if ((mode == "--phases" && argc == 4) || (mode == "--count" && argc == 3)) {
    phases.start();
  } else {
    std::fprintf(
        stderr,
        "usage: %s --first-paint NS | --rest SECONDS | --phases SECONDS SCALE | --count SCALE\n",
        argv[0]);
    return 2;
  }
  w.show();
  if (mode == "--first-paint")
    std::fprintf(stderr, "main %.1f  QApplication %.1f  window and show %.1f\n",
                 entered - std::stoll(argv[2]) / 1e6, appReady - entered,
                 quorvel::probe::epochMs() - appReady);
  return QApplication::exec();
}
