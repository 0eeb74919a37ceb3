// The window in the states a player sees, one PNG each, so that two builds can be compared pixel
// by pixel (`compare -metric AE a.png b.png diff.png`):
//   QT_QPA_PLATFORM=offscreen quorvel_window_shots DIR
// At scale 1 and 1.5: the window at load, after Start (the players on their squares), with the
// flags offered (one under the mouse, one pressed), after a goal, and the closing window with
// each of its pictures; at 1, 0.974 and 1.5 the teams walking on, a substitute walking on and
// the names and scores sliding after a 50/50 contest.
// Then a sheet of every picture key at three sizes on fractional corners.
#include <QApplication>
#include <QDir>
#include <QEnterEvent>
#include <QPainter>
#include <cstdio>
#include <memory>

#include "events/events.h"
#include "match/codes.h"
#include "match_window.h"
#include "pictures.h"
#include "sim.h"

namespace {

QString dir;

void save(const QImage& image, const QString& name) {
  const QString path = dir + QLatin1Char('/') + name + QStringLiteral(".png");
  if (!image.save(path)) std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
}

void shoot(quorvel::MatchWindow& w, const QString& name) {
  w.refresh();
  save(w.grab().toImage(), name);
}

struct Game {
  explicit Game(double scale)
      : f(quorvel::newMatchForm(3)), w(std::make_unique<quorvel::MatchWindow>(*f)) {
    const QSize natural = w->naturalSize();
    w->resize(static_cast<int>(natural.width() * scale),
              static_cast<int>(natural.height() * scale));
    w->show();
    w->refresh();
  }
  // Start, the left side kicking off, as every shot's match begins.
  void start() {
    f->Rnd.force({0.0, 0.0});
    quorvel::userClick(*f, f->CDgo);
  }
  std::unique_ptr<quorvel::MatchForm> f;
  std::unique_ptr<quorvel::MatchWindow> w;
};

void windowStates(double scale, const QString& tag) {
  Game g(scale);
  auto& f = *g.f;
  auto& w = *g.w;
  shoot(w, tag + QStringLiteral("-load"));
  g.start();
  for (int tick = 0; tick < 4000 && f.TimPlace.Enabled(); ++tick) w.pump(15);
  w.pump(2000);
  shoot(w, tag + QStringLiteral("-started"));

  quorvel::userClick(f, f.Cdice);
  auto offered = [&f] {
    for (const auto& flag : f.CDdest)
      if (flag.Visible) return true;
    return false;
  };
  for (int tick = 0; tick < 400 && !offered(); ++tick) w.pump(15);
  shoot(w, tag + QStringLiteral("-flags"));
  int first = -1;
  for (int d = 0; d < 8; ++d) {
    if (!f.CDdest[d].Visible) continue;
    auto* button = qobject_cast<QAbstractButton*>(w.widgetFor(f.CDdest[d].name));
    if (first < 0) {
      first = d;
      QEnterEvent enter(QPointF(4, 4), QPointF(4, 4), QPointF(4, 4));
      QApplication::sendEvent(button, &enter);
    } else {
      button->setDown(true);
      break;
    }
  }
  save(w.grab().toImage(), tag + QStringLiteral("-flags-touched"));

  quorvel::userClick(f, f.CDend);
  w.pump(15);
  w.refresh();
  save(w.links().grab().toImage(), tag + QStringLiteral("-closing-a"));
  f.LinksForm.Picture1.Visible = !f.LinksForm.Picture1.Visible;
  f.LinksForm.Picture2.Visible = !f.LinksForm.Picture2.Visible;
  w.refresh();
  save(w.links().grab().toImage(), tag + QStringLiteral("-closing-b"));
}

// Pieces half on the pitch and half off it: the teams walking on after Start, then a
// substitute walking on.
void movingStates(double scale, const QString& tag) {
  Game g(scale);
  auto& f = *g.f;
  auto& w = *g.w;
  g.start();
  w.pump(40 * 15);
  shoot(w, tag + QStringLiteral("-walking"));
  for (int tick = 0; tick < 4000 && f.TimPlace.Enabled(); ++tick) w.pump(15);
  for (int box : {0, 2}) quorvel::userClick(f, f.CHsub[box]);  // the side to play's is taken
  w.pump(100 * 15);
  shoot(w, tag + QStringLiteral("-substitute"));
}

// The names and scores halfway through the slide after a 50/50 contest: the first kick of
// the match that is one, taken with the first flag the die offers.
void contest(double scale, const QString& tag) {
  Game g(scale);
  auto& f = *g.f;
  auto& w = *g.w;
  g.start();
  auto still = [&f] {
    return !f.TimPlace.Enabled() && f.KickFlag == -1 && !f.TimSc.Enabled() && !f.TimSub.Enabled() &&
           f.DiceReady == quorvel::kDiceReady;
  };
  for (int kick = 0; kick < 60; ++kick) {
    for (int tick = 0; tick < 4000 && !still(); ++tick) w.pump(15);
    quorvel::userClick(f, f.Cdice);
    w.refresh();
    for (int tick = 0; tick < 400 && f.KickFlag == -1; ++tick) {
      w.pump(15);
      for (auto& flag : f.CDdest)
        if (flag.Visible && f.KickFlag == -1) {
          quorvel::userClick(f, flag);
          w.refresh();
        }
    }
    if (f.ContestWin == quorvel::kNoContest) continue;
    // As a person sees it between two ticks: no refresh of every control before the shot.
    for (int tick = 0; tick < 20; ++tick) w.pump(15);
    save(w.grab().toImage(), tag + QStringLiteral("-contest"));
    return;
  }
  std::fprintf(stderr, "no 50/50 contest in 60 kicks at scale %g\n", scale);
}

// The first goal of a match between two computers, shown as the window shows it.
void goal(double scale, const QString& tag) {
  bool taken = false;
  quorvel::sim::playMatch({}, 7, nullptr, [&](quorvel::MatchForm& f, std::string_view) {
    if (taken || (f.Goals[1].Text == "0" && f.Goals[2].Text == "0")) return;
    taken = true;
    quorvel::MatchWindow w(f);
    const QSize natural = w.naturalSize();
    w.resize(static_cast<int>(natural.width() * scale), static_cast<int>(natural.height() * scale));
    w.show();
    shoot(w, tag + QStringLiteral("-goal"));
  });
}

void sheet() {
  const char* keys[] = {"pitch",   "goal",         "ball",        "player",  "flag",
                        "swatch",  "die0",         "die1",        "die2",    "die3",
                        "die4",    "die5",         "die6",        "die7",    "site",
                        "advert1", "banner-title", "banner-site", "advert2", ""};
  const QSizeF sizes[] = {{19, 17}, {61, 60}, {143.5, 97.25}};
  QImage out(1400, 1000, QImage::Format_ARGB32_Premultiplied);
  out.fill(QColor(223, 230, 218));
  QPainter p(&out);
  double x = 2.5, y = 3.25, rowHeight = 0;
  for (const char* key : keys) {
    for (const QSizeF& size : sizes) {
      for (int variant = 0; variant < 2; ++variant) {
        if (x + size.width() > out.width()) x = 2.5, y += rowHeight + 3, rowHeight = 0;
        quorvel::Look look;
        look.back = quorvel::toRgba(variant == 0 ? QColor(200, 30, 77) : QColor(240, 240, 120));
        look.number = variant == 0 ? "7" : "10";
        look.numberInk =
            quorvel::toRgba(variant == 0 ? QColor(255, 255, 255) : QColor(20, 20, 120));
        look.numberBack = variant == 0 ? look.back : quorvel::toRgba(QColor(255, 255, 255));
        look.numberBox = {0.15, 0.25, 0.67, 0.47};
        look.opensLeft = variant == 1;
        look.hovered = variant == 1;
        quorvel::drawPicture(p, QString::fromLatin1(key), QRectF(QPointF(x, y), size), look);
        x += size.width() + 3.25;
        rowHeight = std::max(rowHeight, size.height());
      }
    }
  }
  save(out, QStringLiteral("sheet"));
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: quorvel_window_shots DIR\n");
    return 2;
  }
  dir = QString::fromLocal8Bit(argv[1]);
  QDir().mkpath(dir);
  windowStates(1.0, QStringLiteral("s1"));
  windowStates(1.5, QStringLiteral("s1.5"));
  for (double scale : {1.0, 0.974, 1.5})
    movingStates(scale, QStringLiteral("s") + QString::number(scale));
  for (double scale : {1.0, 0.974, 1.5})
    contest(scale, QStringLiteral("s") + QString::number(scale));
  goal(1.0, QStringLiteral("s1"));
  goal(1.5, QStringLiteral("s1.5"));
  sheet();
  return 0;
}
