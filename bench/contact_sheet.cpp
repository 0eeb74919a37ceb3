// A contact sheet of "Random Teams": twelve seeded draws, each shown as the window shows it
// after Start (the name boxes, the swatches, the shirts and keepers on the pitch), one PNG.
//   QT_QPA_PLATFORM=offscreen quorvel_contact_sheet docs/contact-sheet.png
// With --colour-blind, the same draws side by side as the typical eye and as red-, green- and
// blue-blind eyes see them (the simulation the colour draw is judged by):
//   QT_QPA_PLATFORM=offscreen quorvel_contact_sheet --colour-blind
//   docs/contact-sheet-colour-blind.png
#include <QApplication>
#include <QPainter>
#include <QStyleFactory>
#include <cstdio>
#include <cstring>
#include <unordered_map>

#include "events/events.h"
#include "match_window.h"

namespace {

constexpr int kDraws = 12;
const QRect kPart(0, 0, 1000, 615);  // the team panels and the pitch, at scale 1

struct Draw {
  QImage picture;
  QString caption;
};

Draw drawTeams(int seed) {
  auto f = quorvel::newMatchForm(1);
  quorvel::userClick(*f, f->cdr);  // the first click reseeds from the start-up count
  f->Rnd.seed(static_cast<std::uint64_t>(seed));
  quorvel::userClick(*f, f->cdr);
  quorvel::userClick(*f, f->CDgo);
  while (f->TimPlace.Enabled()) f->Sched.step(f->Sched.now() + 60000);
  quorvel::MatchWindow w(*f);
  w.resize(w.naturalSize());
  w.refresh();
  return {
      w.grab(kPart).toImage().convertToFormat(QImage::Format_RGB32),
      QStringLiteral("seed %1: %2 - %3")
          .arg(seed)
          .arg(QString::fromStdString(f->Team[1].Text), QString::fromStdString(f->Team[2].Text))};
}

QImage seenBy(const QImage& picture, quorvel::Vision v) {
  QImage out = picture;
  std::unordered_map<QRgb, QRgb> seen;  // a picture has few colours; the model is not free
  for (int y = 0; y < out.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(out.scanLine(y));
    for (int x = 0; x < out.width(); ++x) {
      auto [at, fresh] = seen.try_emplace(line[x]);
      if (fresh) {
        const quorvel::Colour c =
            quorvel::simulate(quorvel::RGB(qRed(line[x]), qGreen(line[x]), qBlue(line[x])), v);
        at->second = qRgb(c.red(), c.green(), c.blue());
      }
      line[x] = at->second;
    }
  }
  return out;
}

// Three draws a row, at half size.
QImage sheet() {
  constexpr int kColumns = 3;
  const QSize tile = kPart.size() / 2;
  QImage out(tile.width() * kColumns, (tile.height() + 20) * (kDraws / kColumns),
             QImage::Format_RGB32);
  out.fill(QColor(223, 230, 218));
  QPainter p(&out);
  p.setRenderHint(QPainter::SmoothPixmapTransform);
  p.setPen(QColor(24, 36, 24));
  for (int k = 0; k < kDraws; ++k) {
    const Draw d = drawTeams(k + 1);
    const QPoint at((k % kColumns) * tile.width(), (k / kColumns) * (tile.height() + 20));
    p.drawImage(QRect(at, tile), d.picture);
    p.drawText(QRect(at + QPoint(0, tile.height()), QSize(tile.width(), 20)), Qt::AlignCenter,
               d.caption);
  }
  return out;
}

// One draw a row, once for each eye, at two fifths of the size.
QImage colourBlindSheet() {
  const QSize tile = kPart.size() * 2 / 5;
  const int columns = static_cast<int>(quorvel::kVisions.size()), head = 24, foot = 20;
  QImage out(tile.width() * columns, head + (tile.height() + foot) * kDraws, QImage::Format_RGB32);
  out.fill(QColor(223, 230, 218));
  QPainter p(&out);
  p.setRenderHint(QPainter::SmoothPixmapTransform);
  p.setPen(QColor(24, 36, 24));
  for (int c = 0; c < columns; ++c)
    p.drawText(QRect(c * tile.width(), 0, tile.width(), head), Qt::AlignCenter,
               QString::fromUtf8(quorvel::visionName(quorvel::kVisions[c])));
  for (int k = 0; k < kDraws; ++k) {
    const Draw d = drawTeams(k + 1);
    const int top = head + k * (tile.height() + foot);
    for (int c = 0; c < columns; ++c) {
      const QPoint at(c * tile.width(), top);
      p.drawImage(QRect(at, tile), seenBy(d.picture, quorvel::kVisions[c]));
      if (c == 0)
        p.drawText(QRect(at + QPoint(0, tile.height()), QSize(tile.width() * columns, foot)),
                   Qt::AlignCenter, d.caption);
    }
  }
  return out;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  const bool colourBlind = argc == 3 && std::strcmp(argv[1], "--colour-blind") == 0;
  if (argc != 2 && !colourBlind) {
    std::fprintf(stderr, "usage: %s [--colour-blind] OUT.png\n", argv[0]);
    return 2;
  }
  const QImage out = colourBlind ? colourBlindSheet() : sheet();
  return out.save(QString::fromLocal8Bit(argv[argc - 1])) ? 0 : 1;
}
