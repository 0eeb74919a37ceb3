// The floor the game's window is measured against: a bare Qt window of the game's size that
// paints the same pitch, and one 15 ms timer that does nothing.
//   quorvel_bare_window --first-paint NS   prints ms from NS (`date +%s%N`) to its first paint
//   quorvel_bare_window --rest SECONDS     prints its wake-ups and processor at rest
#include <QApplication>
#include <QPainter>
#include <QStyleFactory>
#include <QTimer>
#include <cstring>
#include <string>

#include "pictures.h"
#include "window_probe.h"

namespace {

// The pitch where the game shows it, at scale 1.
class Pitch : public QWidget {
 public:
  Pitch() { resize(1248, 768); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.fillRect(rect(), QColor(223, 230, 218));
    quorvel::drawPicture(p, QStringLiteral("pitch"), QRectF(31, 127, 962, 482),
                         quorvel::PictureLook{});
  }
};

}  // namespace

int main(int argc, char** argv) {
  const double entered = quorvel::probe::epochMs();
  QApplication app(argc, argv);
  const double appReady = quorvel::probe::epochMs();
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  Pitch w;
  long long ticks = 0;
  QTimer timer;
  timer.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
  timer.start(15);

  if (argc == 3 && std::strcmp(argv[1], "--first-paint") == 0) {
    quorvel::probe::quitAfterFirstPaint(w, std::stoll(argv[2]));
  } else if (argc == 3 && std::strcmp(argv[1], "--rest") == 0) {
    const int seconds = std::stoi(argv[2]);
    QTimer::singleShot(2000, [seconds] {
      const auto start = quorvel::probe::usage();
      QTimer::singleShot(seconds * 1000, [start] {
        quorvel::probe::report("bare window at rest", start, quorvel::probe::usage());
        QCoreApplication::quit();
      });
    });
  } else {
    std::fprintf(stderr, "usage: %s --first-paint NS | --rest SECONDS\n", argv[0]);
    return 2;
  }
  w.show();
  if (argc == 3 && std::strcmp(argv[1], "--first-paint") == 0)
    std::fprintf(stderr, "main %.1f  QApplication %.1f  window and show %.1f\n",
                 entered - std::stoll(argv[2]) / 1e6, appReady - entered,
                 quorvel::probe::epochMs() - appReady);
  return QApplication::exec();
}
