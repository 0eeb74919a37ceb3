#include "shape_painter.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainterPath>
#include <QRadialGradient>
#include <cmath>

namespace quorvel {

namespace {

QColor qColor(Rgba c) {
  return QColor(c.r, c.g, c.b, c.a);
}

QRectF toQRectF(const Box& b) {
  return QRectF(b.x, b.y, b.width, b.height);
}

QBrush brushFor(const Fill& f) {
  QGradient gradient;
  switch (f.kind) {
    case FillKind::None:
      return Qt::NoBrush;
    case FillKind::Solid:
      return qColor(f.colour);
    case FillKind::Linear:
      gradient = QLinearGradient(QPointF(f.from.x, f.from.y), QPointF(f.to.x, f.to.y));
      break;
    case FillKind::Radial:
      gradient = QRadialGradient(QPointF(f.from.x, f.from.y), f.radius);
      break;
  }
  for (const Stop& s : f.stops) gradient.setColorAt(s.at, qColor(s.colour));
  return gradient;
}

QPen penFor(const Stroke& s) {
  if (s.width <= 0) return Qt::NoPen;
  constexpr Qt::PenCapStyle kCaps[] = {Qt::FlatCap, Qt::SquareCap, Qt::RoundCap};
  constexpr Qt::PenJoinStyle kJoins[] = {Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin};
  return QPen(qColor(s.colour), s.width, Qt::SolidLine, kCaps[static_cast<int>(s.cap)],
              kJoins[static_cast<int>(s.join)]);
}

QPainterPath toPath(const std::vector<PathStep>& steps) {
  QPainterPath path;
  for (const PathStep& s : steps) {
    const QPointF to(s.to.x, s.to.y);
    switch (s.step) {
      case Step::Move:
        path.moveTo(to);
        break;
      case Step::Line:
        path.lineTo(to);
        break;
      case Step::Quad:
        path.quadTo(QPointF(s.control.x, s.control.y), to);
        break;
      case Step::Close:
        path.closeSubpath();
        break;
    }
  }
  return path;
}

// The font of a text: its size in whole pixels, shrunk where the widest line must fit.
QFont fontFor(const Text& t, const QString& words) {
  QFont f(QString::fromLatin1(kPictureFont));
  f.setPixelSize(std::max(1, static_cast<int>(std::lround(t.size))));
  f.setBold(t.bold);
  f.setItalic(t.italic);
  if (t.fitWidth > 0) {
    const QFontMetricsF metrics(f);
    double widest = 0;
    for (const QString& line : words.split(QLatin1Char('\n')))
      widest = std::max(widest, metrics.horizontalAdvance(line));
    if (widest > t.fitWidth && widest > 0)
      f.setPixelSize(std::max(1, static_cast<int>(t.size * t.fitWidth / widest)));
  }
  if (t.spacing != 100) f.setLetterSpacing(QFont::PercentageSpacing, t.spacing);
  return f;
}

int alignmentFor(const Text& t) {
  constexpr Qt::AlignmentFlag kAcross[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
  constexpr Qt::AlignmentFlag kDown[] = {Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
  return kAcross[static_cast<int>(t.h)] | kDown[static_cast<int>(t.v)];
}

void paintShape(QPainter& p, const Shape& s) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing, !s.crisp);
  if (s.pivot.x != 0 || s.pivot.y != 0) p.translate(s.pivot.x, s.pivot.y);
  if (s.degrees != 0) p.rotate(s.degrees);
  if (s.clip == ClipKind::Rect) p.setClipRect(toQRectF(s.clipBox));
  if (s.clip == ClipKind::Ellipse) {
    QPainterPath clip;
    clip.addEllipse(toQRectF(s.clipBox));
    p.setClipPath(clip);
  }
  const QRectF box = toQRectF(s.box);
  p.setBrush(brushFor(s.fill));
  p.setPen(penFor(s.stroke));
  switch (s.kind) {
    case ShapeKind::Rect:
      if (s.stroke.width <= 0)
        p.fillRect(box, p.brush());
      else
        p.drawRect(box);
      break;
    case ShapeKind::RoundedRect:
      p.drawRoundedRect(box, s.radius, s.radius);
      break;
    case ShapeKind::Ellipse:
      p.drawEllipse(box);
      break;
    case ShapeKind::Path:
      p.drawPath(toPath(s.path));
      break;
    case ShapeKind::Text: {
      const QString words = QString::fromStdString(s.text.string);
      p.setFont(fontFor(s.text, words));
      p.setPen(qColor(s.fill.colour));
      p.drawText(box, alignmentFor(s.text), words);
      break;
    }
  }
  p.restore();
}

}  // namespace

void paintPicture(QPainter& p, const Drawing& picture) {
  p.save();
  if (picture.opacity != 1) p.setOpacity(picture.opacity);
  for (const Shape& s : picture.shapes) paintShape(p, s);
  p.restore();
}

}  // namespace quorvel
