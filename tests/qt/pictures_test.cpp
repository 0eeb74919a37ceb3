// The pictures in Qt: colours shaded exactly as Qt shades them, shapes painted where the
// description puts them, and the one icon.
#include "pictures.h"

#include <QImage>
#include <QPainter>
#include <QtTest>

using namespace quorvel;

class PicturesTest : public QObject {
  Q_OBJECT

 private slots:
  // The description shades shirts and button faces itself; the window has always shown Qt's.
  void shadesAreQtsOwn() {
    int compared = 0;
    for (int r = 0; r < 256; r += 15)
      for (int g = 0; g < 256; g += 17)
        for (int b = 0; b < 256; b += 5) {
          const QColor q(r, g, b);
          const Rgba c{static_cast<std::uint8_t>(r), static_cast<std::uint8_t>(g),
                       static_cast<std::uint8_t>(b)};
          QCOMPARE(lightness(c), q.lightness());
          for (int percent : {104, 106, 112, 118, 140, 150, 190, 260}) {
            const Rgba up = lighter(c, percent), down = darker(c, percent);
            QCOMPARE(qRgb(up.r, up.g, up.b), q.lighter(percent).rgb());
            QCOMPARE(qRgb(down.r, down.g, down.b), q.darker(percent).rgb());
            ++compared;
          }
        }
    QVERIFY(compared > 100000);
  }

  // A three drawn through the painter: dark pips on the diagonal, white where a five has more.
  void thePainterDrawsTheDescription() {
    QImage image(100, 100, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter p(&image);
    drawPicture(p, QStringLiteral("die3"), QRectF(0, 0, 100, 100), {});
    p.end();
    // The die fills its box less a margin of 4: pips at 26 %, 50 % and 74 % of its side.
    auto at = [&](double u, double v) { return image.pixelColor(4 + u * 92, 4 + v * 92); };
    QVERIFY(at(0.74, 0.26).lightness() < 80);
    QVERIFY(at(0.5, 0.5).lightness() < 80);
    QVERIFY(at(0.26, 0.74).lightness() < 80);
    QVERIFY(at(0.26, 0.26).lightness() > 200);
    QVERIFY(at(0.74, 0.74).lightness() > 200);
    QCOMPARE(image.pixelColor(1, 1).alpha(), 0);  // the rounded corner leaves the box bare
  }

  // The icon is quorvel.svg, built into the program: a resource left out draws nothing.
  void theIconIsTheSvg() {
    const QImage icon = appIcon().pixmap(64, 64).toImage();
    QCOMPARE(icon.size(), QSize(64, 64));
    QVERIFY(icon.pixelColor(32, 32).alpha() == 255);
  }
};

QTEST_MAIN(PicturesTest)
#include "pictures_test.moc"
