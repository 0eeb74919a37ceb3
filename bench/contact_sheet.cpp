// A contact sheet of "Random Teams": twelve seeded draws, each shown as the window shows it
// after Start (the name boxes, the swatches, the shirts and keepers on the pitch), one PNG.
//   QT_QPA_PLATFORM=offscreen quorvel_contact_sheet docs/contact-sheet.png
#include <QApplication>
#include <QPainter>
#include <QStyleFactory>
#include <cstdio>

#include "events/events.h"
#include "match_window.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s OUT.png\n", argv[0]);
    return 2;
  }
  constexpr int kColumns = 3, kRows = 4;
  const QRect part(0, 0, 1000, 615);  // the team panels and the pitch, at scale 1
  const QSize tile = part.size() / 2;
  QImage sheet(tile.width() * kColumns, (tile.height() + 20) * kRows, QImage::Format_RGB32);
  sheet.fill(QColor(223, 230, 218));
  QPainter p(&sheet);
  p.setRenderHint(QPainter::SmoothPixmapTransform);
  for (int k = 0; k < kColumns * kRows; ++k) {
    const int seed = k + 1;
    auto f = quorvel::newMatchForm(1);
    quorvel::userClick(*f, f->cdr);  // the first click reseeds from the start-up count
    f->Rnd.seed(static_cast<std::uint64_t>(seed));
    quorvel::userClick(*f, f->cdr);
    quorvel::userClick(*f, f->CDgo);
    while (f->TimPlace.Enabled()) f->Sched.step(f->Sched.now() + 60000);
    quorvel::MatchWindow w(*f);
    w.resize(w.naturalSize());
    w.refresh();
    const QPoint at((k % kColumns) * tile.width(), (k / kColumns) * (tile.height() + 20));
    p.drawPixmap(QRect(at, tile), w.grab(part));
    p.setPen(QColor(24, 36, 24));
    p.drawText(
        QRect(at + QPoint(0, tile.height()), QSize(tile.width(), 20)), Qt::AlignCenter,
        QStringLiteral("seed %1: %2 - %3")
            .arg(seed)
            .arg(QString::fromStdString(f->Team[1].Text), QString::fromStdString(f->Team[2].Text)));
  }
  p.end();
  return sheet.save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
}
