#include "pictures.h"

#include <QIconEngine>
#include <QPixmap>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <functional>
#include <map>
#include <memory>

#include "shape_painter.h"

namespace quorvel {

Rgba toRgba(const QColor& c) {
  return {static_cast<std::uint8_t>(c.red()), static_cast<std::uint8_t>(c.green()),
          static_cast<std::uint8_t>(c.blue()), static_cast<std::uint8_t>(c.alpha())};
}

void drawPicture(QPainter& p, const QString& key, const QRectF& r, const Look& look) {
  paintPicture(p, describePicture(key.toStdString(), look, toBox(r)));
}

void drawButton(QPainter& p, const QString& key, const QRectF& r, const Look& look,
                const ButtonState& state) {
  paintPicture(p, describeButton(key.toStdString(), look, state, toBox(r)));
}

namespace {

// What `draw` paints on a transparent pixmap of `size` logical pixels at `ratio`, painted once
// and kept under `cacheKey`.
QPixmap drawnOnce(const QString& cacheKey, const QSize& size, qreal ratio,
                  const std::function<void(QPainter&)>& draw) {
  QPixmap drawn;
  if (!QPixmapCache::find(cacheKey, &drawn)) {
    drawn = QPixmap(size * ratio);
    drawn.setDevicePixelRatio(ratio);
    drawn.fill(Qt::transparent);
    QPainter p(&drawn);
    draw(p);
    p.end();
    QPixmapCache::insert(cacheKey, drawn);
  }
  return drawn;
}

// What picture `key` on its button is kept under, for each look and state at each size.
QString buttonKey(const QString& key, const QSize& size, qreal ratio, const Look& look,
                  const ButtonState& state) {
  const auto rgba = [](Rgba c) { return qRgba(c.r, c.g, c.b, c.a); };
  const Box& n = look.numberBox;
  return QStringLiteral("button %1 %2 %3 %4 %5 %6,%7,%8,%9 %10%11%12%13%14 %15x%16 %17")
      .arg(key)
      .arg(rgba(look.back))
      .arg(QString::fromStdString(look.number))
      .arg(rgba(look.numberInk))
      .arg(rgba(look.numberBack))
      .arg(n.x)
      .arg(n.y)
      .arg(n.width)
      .arg(n.height)
      .arg(look.opensLeft)
      .arg(look.hovered)
      .arg(state.down)
      .arg(state.focused)
      .arg(state.enabled)
      .arg(size.width())
      .arg(size.height())
      .arg(ratio);
}

// Picture `key` on its button, drawn once for each look and state at each size.
QPixmap cachedButton(const QString& key, const QSize& size, qreal ratio, const Look& look,
                     const ButtonState& state) {
  return drawnOnce(buttonKey(key, size, ratio, look, state), size, ratio, [&](QPainter& p) {
    p.setRenderHint(QPainter::Antialiasing);
    drawButton(p, key, QRectF(QPointF(), QSizeF(size)), look, state);
  });
}

}  // namespace

QPixmap drawnButton(const QString& key, const QSize& size, qreal ratio, const Look& look,
                    const ButtonState& state) {
  const int face = dieFaceOf(key.toStdString());
  if (face == 0) return cachedButton(key, size, ratio, look, state);
  // A die: the blank die is the same at every roll, so each face is its pips on a copy of it,
  // kept too: the die and the 50/50 dice are shown again at every landing.
  const QString cacheKey = buttonKey(key, size, ratio, look, state);
  QPixmap drawn;
  if (QPixmapCache::find(cacheKey, &drawn)) return drawn;
  drawn = cachedButton(QStringLiteral("die0"), size, ratio, look, state).copy();
  drawn.setDevicePixelRatio(ratio);
  QPainter p(&drawn);
  paintPicture(p, describeDiePips(face, state, toBox(QRectF(QPointF(), QSizeF(size)))));
  p.end();
  QPixmapCache::insert(cacheKey, drawn);
  return drawn;
}

QPixmap drawnPlayer(const QSize& size, qreal ratio, const Look& look) {
  const Look& described = look;
  const auto rgba = [](Rgba c) { return qRgba(c.r, c.g, c.b, c.a); };
  const Box box = toBox(QRectF(QPointF(), QSizeF(size)));
  const QString key = QStringLiteral("shirt %1 %2 %3x%4 %5")
                          .arg(rgba(look.back))
                          .arg(rgba(look.numberInk))
                          .arg(size.width())
                          .arg(size.height())
                          .arg(ratio);
  const QPixmap shirt = drawnOnce(
      key, size, ratio, [&](QPainter& p) { paintPicture(p, describeShirt(described, box)); });
  QPixmap drawn = shirt.copy();
  drawn.setDevicePixelRatio(ratio);
  QPainter p(&drawn);
  paintPicture(p, describeShirtNumber(described, box));
  return drawn;
}

namespace {

// Draws the icon at a size only when a window first asks for that size: a window that is never
// shown never draws it.
class AppIconEngine : public QIconEngine {
 public:
  void paint(QPainter* p, const QRect& r, QIcon::Mode, QIcon::State) override {
    renderer_->render(p, r);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override {
    QPixmap& drawn = (*drawn_)[{size.width(), size.height()}];
    if (drawn.isNull()) {
      drawn = QPixmap(size);
      drawn.fill(Qt::transparent);
      QPainter p(&drawn);
      renderer_->render(&p, QRectF(QPointF(), size));
    }
    return drawn;
  }
  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    QList<QSize> sizes;
    for (int side : {16, 24, 32, 48, 64, 128, 256}) sizes.append(QSize(side, side));
    return sizes;
  }
  QIconEngine* clone() const override { return new AppIconEngine(*this); }

 private:
  std::shared_ptr<QSvgRenderer> renderer_ =
      std::make_shared<QSvgRenderer>(QStringLiteral(":/quorvel.svg"));
  std::shared_ptr<std::map<std::pair<int, int>, QPixmap>> drawn_ =
      std::make_shared<std::map<std::pair<int, int>, QPixmap>>();
};

}  // namespace

QIcon appIcon() {
  return QIcon(new AppIconEngine);
}

}  // namespace quorvel
