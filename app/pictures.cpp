#include "pictures.h"

#include <QFontMetricsF>
#include <QIconEngine>
#include <QLinearGradient>
#include <QPainterPath>
#include <QPixmap>
#include <QRadialGradient>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <numbers>

#include "ui/layout.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

constexpr double kPi = std::numbers::pi;

const QColor kChalk(250, 252, 246);
const QColor kInk(24, 36, 24);
const QColor kGold(236, 196, 72);
const QColor kDeepGreen(18, 64, 30);

QFont pixelFont(double px, bool bold = false, bool italic = false) {
  QFont f(QStringLiteral("DejaVu Sans"));
  f.setPixelSize(std::max(1, static_cast<int>(std::lround(px))));
  f.setBold(bold);
  f.setItalic(italic);
  return f;
}

// A font of at most `px` pixels, smaller where needed so that every line of `s` fits `width`.
QFont fitted(const QString& s, double width, double px, bool bold = false, bool italic = false) {
  QFont f = pixelFont(px, bold, italic);
  const QFontMetricsF metrics(f);
  double widest = 0;
  for (const QString& line : s.split(QLatin1Char('\n')))
    widest = std::max(widest, metrics.horizontalAdvance(line));
  if (widest > width && widest > 0)
    f.setPixelSize(std::max(1, static_cast<int>(px * width / widest)));
  return f;
}

void text(QPainter& p, const QRectF& r, const QString& s, const QColor& ink, const QFont& font,
          int flags = Qt::AlignCenter) {
  p.setFont(font);
  p.setPen(ink);
  p.drawText(r, flags, s);
}

// A line of text that may be drawn with a soft shadow for legibility on pictures.
void shadowedText(QPainter& p, const QRectF& r, const QString& s, const QColor& ink,
                  const QFont& font, double offset, int flags = Qt::AlignCenter) {
  text(p, r.translated(offset, offset), s, QColor(0, 0, 0, 110), font, flags);
  text(p, r, s, ink, font, flags);
}

QRectF square(const QRectF& r) {
  const double side = std::min(r.width(), r.height());
  return QRectF(r.center().x() - side / 2, r.center().y() - side / 2, side, side);
}

// ---- pitch and goals ---------------------------------------------------------------------

void drawPitch(QPainter& p, const QRectF& r) {
  const double margin = r.width() * kPitchFrameTwips / kPitchWidth;
  const QRectF board = r.adjusted(margin, margin, -margin, -margin);
  const double cw = board.width() / kPitchColumns, ch = board.height() / kPitchRows;

  p.fillRect(r, kChalk);
  const QColor light = toQColor(kPitchLight), dark = toQColor(kPitchDark);
  for (int row = 0; row < kPitchRows; ++row) {
    for (int col = 0; col < kPitchColumns; ++col) {
      // Each half is a chessboard of its own; both start with a light corner at the top left.
      const bool isLight = ((col % (kPitchColumns / 2)) + row) % 2 == 0;
      // Edges from the grid, so that neighbouring squares share them exactly.
      const QRectF sq(QPointF(board.left() + col * cw, board.top() + row * ch),
                      QPointF(board.left() + (col + 1) * cw, board.top() + (row + 1) * ch));
      p.fillRect(sq, isLight ? light : dark);
    }
  }

  // Faint markings, so that it reads as a football pitch without hiding the squares.
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  QPen chalk(QColor(255, 255, 255, 95), std::max(1.0, cw * 0.045));
  p.setPen(chalk);
  p.setBrush(Qt::NoBrush);
  const QPointF centre(board.left() + 8 * cw, board.top() + 4 * ch);
  p.drawLine(QPointF(centre.x(), board.top()), QPointF(centre.x(), board.bottom()));
  p.drawEllipse(centre, cw * 1.25, ch * 1.25);
  p.setBrush(QColor(255, 255, 255, 150));
  p.drawEllipse(centre, cw * 0.07, ch * 0.07);
  p.setBrush(Qt::NoBrush);
  for (int side = 0; side < 2; ++side) {
    const double x0 = side == 0 ? board.left() : board.right() - 2 * cw;
    p.drawRect(QRectF(x0, board.top() + 2 * ch, 2 * cw, 4 * ch));
    const double g0 = side == 0 ? board.left() : board.right() - cw;
    p.drawRect(QRectF(g0, board.top() + 3 * ch, cw, 2 * ch));
  }
  p.restore();
}

void drawGoal(QPainter& p, const QRectF& r, bool opensLeft) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  // Seen from above: a back bar and two side bars, open towards the pitch.
  const double post = std::max(1.5, r.width() * 0.16);
  const QRectF net = r.adjusted(post / 2, post / 2, -post / 2, -post / 2);
  p.fillRect(net, QColor(236, 240, 232));
  p.setClipRect(net);
  p.setPen(QPen(QColor(150, 160, 150), std::max(0.6, r.width() * 0.03)));
  const double mesh = r.width() / 3.2;
  for (double d = -r.height(); d < r.height() + r.width(); d += mesh) {
    p.drawLine(QPointF(net.left(), net.top() + d),
               QPointF(net.right(), net.top() + d + net.width()));
    p.drawLine(QPointF(net.left(), net.top() + d + net.width()),
               QPointF(net.right(), net.top() + d));
  }
  p.setClipping(false);

  QPainterPath frame;
  const double back = opensLeft ? net.right() : net.left();
  const double front = opensLeft ? r.left() : r.right();
  frame.moveTo(front, net.top());
  frame.lineTo(back, net.top());
  frame.lineTo(back, net.bottom());
  frame.lineTo(front, net.bottom());
  p.setBrush(Qt::NoBrush);
  p.setPen(QPen(QColor(60, 60, 60), post + 1.2, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
  p.drawPath(frame);
  p.setPen(QPen(Qt::white, post, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
  p.drawPath(frame);
  p.restore();
}

// ---- ball, players, flags ----------------------------------------------------------------

QPolygonF pentagon(const QPointF& c, double radius, double turn) {
  QPolygonF poly;
  for (int k = 0; k < 5; ++k) {
    const double a = turn + k * 2 * kPi / 5;
    poly << QPointF(c.x() + radius * std::cos(a), c.y() + radius * std::sin(a));
  }
  return poly;
}

void drawBall(QPainter& p, const QRectF& area) {
  const QRectF r = square(area);
  const double rad = r.width() / 2 - std::max(0.5, r.width() * 0.03);
  const QPointF c = r.center();
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(0, 0, 0, 60));
  p.drawEllipse(c + QPointF(rad * 0.12, rad * 0.16), rad, rad);
  QRadialGradient shade(c - QPointF(rad * 0.35, rad * 0.4), rad * 1.5);
  shade.setColorAt(0, Qt::white);
  shade.setColorAt(0.6, QColor(238, 238, 234));
  shade.setColorAt(1, QColor(170, 172, 168));
  p.setBrush(shade);
  p.drawEllipse(c, rad, rad);

  QPainterPath clip;
  clip.addEllipse(c, rad, rad);
  p.setClipPath(clip);
  p.setBrush(QColor(28, 28, 32));
  p.drawPolygon(pentagon(c, rad * 0.36, -kPi / 2));
  for (int k = 0; k < 5; ++k) {
    const double a = -kPi / 2 + kPi / 5 + k * 2 * kPi / 5;
    const QPointF at(c.x() + rad * 1.02 * std::cos(a), c.y() + rad * 1.02 * std::sin(a));
    p.drawPolygon(pentagon(at, rad * 0.34, a + kPi / 5));
  }
  p.setClipping(false);
  p.setBrush(Qt::NoBrush);
  p.setPen(QPen(QColor(40, 40, 40), std::max(0.8, rad * 0.09)));
  p.drawEllipse(c, rad, rad);
  p.restore();
}

QPainterPath shirtPath(const QRectF& r) {
  auto pt = [&r](double x, double y) {
    return QPointF(r.left() + x * r.width(), r.top() + y * r.height());
  };
  QPainterPath s;
  s.moveTo(pt(0.37, 0.10));
  s.quadTo(pt(0.50, 0.24), pt(0.63, 0.10));  // collar
  s.lineTo(pt(0.81, 0.15));
  s.lineTo(pt(0.98, 0.37));
  s.lineTo(pt(0.85, 0.48));
  s.lineTo(pt(0.79, 0.41));
  s.lineTo(pt(0.80, 0.91));
  s.quadTo(pt(0.50, 0.95), pt(0.20, 0.91));
  s.lineTo(pt(0.21, 0.41));
  s.lineTo(pt(0.15, 0.48));
  s.lineTo(pt(0.02, 0.37));
  s.lineTo(pt(0.19, 0.15));
  s.closeSubpath();
  return s;
}

QColor outlineFor(const QColor& c) {
  return c.lightness() > 150 ? c.darker(260) : c.darker(190);
}

void drawPlayer(QPainter& p, const QRectF& r, const PictureLook& look) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  const QPainterPath shirt = shirtPath(r);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(0, 0, 0, 70));
  p.drawPath(shirt.translated(r.width() * 0.035, r.height() * 0.045));

  QLinearGradient cloth(r.topLeft(), r.bottomLeft());
  cloth.setColorAt(0, look.back.lighter(118));
  cloth.setColorAt(1, look.back.darker(112));
  p.setBrush(cloth);
  p.setPen(QPen(outlineFor(look.back), std::max(1.0, r.width() * 0.035), Qt::SolidLine,
                Qt::RoundCap, Qt::RoundJoin));
  p.drawPath(shirt);

  // Trim on collar and cuffs in the number's colour: the side's second colour.
  p.setPen(QPen(look.numberInk, std::max(1.0, r.width() * 0.045), Qt::SolidLine, Qt::RoundCap));
  QPainterPath collar;
  collar.moveTo(r.left() + 0.39 * r.width(), r.top() + 0.12 * r.height());
  collar.quadTo(QPointF(r.center().x(), r.top() + 0.24 * r.height()),
                QPointF(r.left() + 0.61 * r.width(), r.top() + 0.12 * r.height()));
  p.setBrush(Qt::NoBrush);
  p.drawPath(collar);

  const QRectF box(r.left() + look.numberBox.left() * r.width(),
                   r.top() + look.numberBox.top() * r.height(), look.numberBox.width() * r.width(),
                   look.numberBox.height() * r.height());
  if (look.numberBack != look.back) {
    p.setPen(Qt::NoPen);
    p.setBrush(look.numberBack);
    p.drawRoundedRect(box, box.height() * 0.2, box.height() * 0.2);
  }
  const QRectF numberArea = box.translated(0, r.height() * 0.06);
  shadowedText(p, numberArea, look.number, look.numberInk, pixelFont(r.height() * 0.40, true),
               std::max(0.6, r.width() * 0.018));
  p.restore();
}

void drawFlag(QPainter& p, const QRectF& r, bool hovered) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  if (hovered) {
    QRadialGradient glow(r.center(), r.width() * 0.6);
    glow.setColorAt(0, QColor(255, 240, 120, 200));
    glow.setColorAt(1, QColor(255, 240, 120, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(glow);
    p.drawEllipse(r.center(), r.width() * 0.6, r.height() * 0.6);
  }
  const double w = r.width(), h = r.height();
  const double poleX = r.left() + 0.2 * w;
  p.setPen(QPen(QColor(50, 40, 30), std::max(1.0, w * 0.075), Qt::SolidLine, Qt::RoundCap));
  p.drawLine(QPointF(poleX, r.top() + 0.08 * h), QPointF(poleX, r.top() + 0.95 * h));

  // A 4 x 3 chequered cloth, gently waving.
  const double x0 = poleX, x1 = r.left() + 0.96 * w, y0 = r.top() + 0.1 * h, y1 = r.top() + 0.6 * h;
  auto at = [&](double u, double v) {
    const double x = x0 + u * (x1 - x0);
    return QPointF(x, y0 + v * (y1 - y0) + std::sin(u * 2 * kPi) * 0.05 * h);
  };
  p.setPen(Qt::NoPen);
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 3; ++j) {
      QPolygonF cell;
      const double u0 = i / 4.0, u1 = (i + 1) / 4.0, v0 = j / 3.0, v1 = (j + 1) / 3.0;
      cell << at(u0, v0) << at(u1, v0) << at(u1, v1) << at(u0, v1);
      p.setBrush((i + j) % 2 == 0 ? QColor(20, 20, 20) : QColor(250, 250, 250));
      p.drawPolygon(cell);
    }
  }
  QPolygonF edge;
  for (int k = 0; k <= 8; ++k) edge << at(k / 8.0, 0);
  for (int k = 8; k >= 0; --k) edge << at(k / 8.0, 1);
  p.setBrush(Qt::NoBrush);
  p.setPen(QPen(QColor(30, 30, 30), std::max(0.7, w * 0.035)));
  p.drawPolygon(edge);
  p.setPen(Qt::NoPen);
  p.setBrush(kGold);
  p.drawEllipse(QPointF(poleX, r.top() + 0.07 * h), w * 0.065, w * 0.065);
  p.restore();
}

// ---- dice --------------------------------------------------------------------------------

void drawDie(QPainter& p, const QRectF& area, int face, bool dimmed) {
  const QRectF r = square(area).adjusted(area.width() * 0.04, area.width() * 0.04,
                                         -area.width() * 0.04, -area.width() * 0.04);
  const double s = r.width();
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(0, 0, 0, 55));
  p.drawRoundedRect(r.translated(s * 0.03, s * 0.04), s * 0.18, s * 0.18);
  QLinearGradient body(r.topLeft(), r.bottomRight());
  body.setColorAt(0, dimmed ? QColor(184, 188, 180) : QColor(255, 255, 255));
  body.setColorAt(1, dimmed ? QColor(150, 154, 146) : QColor(226, 228, 222));
  p.setBrush(body);
  p.setPen(QPen(dimmed ? QColor(120, 124, 116) : QColor(70, 74, 70), std::max(1.0, s * 0.035)));
  p.drawRoundedRect(r, s * 0.18, s * 0.18);

  constexpr double lo = 0.26, mid = 0.5, hi = 0.74;
  std::array<QPointF, 6> spots{};
  int n = 0;
  auto spot = [&](double x, double y) { spots[n++] = QPointF(x, y); };
  switch (face) {
    case 1:
      spot(mid, mid);
      break;
    case 2:
      spot(hi, lo), spot(lo, hi);
      break;
    case 3:
      spot(hi, lo), spot(mid, mid), spot(lo, hi);
      break;
    case 4:
      spot(lo, lo), spot(hi, lo), spot(lo, hi), spot(hi, hi);
      break;
    case 5:
      spot(lo, lo), spot(hi, lo), spot(mid, mid), spot(lo, hi), spot(hi, hi);
      break;
    case 6:
      spot(lo, lo), spot(lo, mid), spot(lo, hi), spot(hi, lo), spot(hi, mid), spot(hi, hi);
      break;
    default:
      break;
  }
  p.setPen(Qt::NoPen);
  for (int k = 0; k < n; ++k) {
    const QPointF c(r.left() + spots[k].x() * s, r.top() + spots[k].y() * s);
    QRadialGradient pip(c - QPointF(s * 0.02, s * 0.02), s * 0.1);
    pip.setColorAt(0, QColor(70, 70, 76));
    pip.setColorAt(1, QColor(12, 12, 16));
    p.setBrush(pip);
    p.drawEllipse(c, s * 0.085, s * 0.085);
  }
  p.restore();
}

// ---- swatch ------------------------------------------------------------------------------

void drawSwatch(QPainter& p, const QRectF& r, const QColor& back) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  // The icon is an outline; the swatch's own colour shows through everywhere else.
  p.fillRect(r, back);
  const double line = std::max(1.0, r.width() * 0.06);
  p.setBrush(Qt::NoBrush);
  p.setPen(QPen(QColor(30, 30, 30), line));
  p.drawRect(r.adjusted(line / 2, line / 2, -line / 2, -line / 2));
  const QRectF icon =
      r.adjusted(r.width() * 0.2, r.height() * 0.2, -r.width() * 0.2, -r.height() * 0.2);
  const QPainterPath shirt = shirtPath(icon);
  p.setPen(
      QPen(QColor(255, 255, 255, 220), line * 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.drawPath(shirt);
  p.setPen(QPen(QColor(20, 20, 20), line * 0.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.drawPath(shirt);
  p.restore();
}

// ---- banners, link pictures, adverts -----------------------------------------------------

void drawTitleBanner(QPainter& p, const QRectF& r) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  const double h = r.height();
  QLinearGradient bg(r.topLeft(), r.bottomLeft());
  bg.setColorAt(0, QColor(34, 110, 52));
  bg.setColorAt(1, kDeepGreen);
  p.setBrush(bg);
  p.setPen(QPen(kGold, std::max(1.0, h * 0.05)));
  const QRectF box = r.adjusted(h * 0.03, h * 0.03, -h * 0.03, -h * 0.03);
  p.drawRoundedRect(box, h * 0.22, h * 0.22);
  drawBall(p, QRectF(r.left() + h * 0.2, r.top() + h * 0.18, h * 0.64, h * 0.64));
  drawDie(p, QRectF(r.right() - h * 0.86, r.top() + h * 0.16, h * 0.68, h * 0.68), 5, false);
  const QRectF words = box.adjusted(h, 0, -h, 0);
  const QString name = QStringLiteral("FREE QUORVEL");
  QFont title = fitted(name, words.width() * 0.9, h * 0.5, true);
  title.setLetterSpacing(QFont::PercentageSpacing, 108);
  shadowedText(p, words.adjusted(0, -h * 0.12, 0, -h * 0.12), name, QColor(255, 250, 230), title,
               std::max(1.0, h * 0.03));
  const QString motto = QStringLiteral("soccer with a die  \u2022  play it online");
  text(p, words.adjusted(0, h * 0.58, 0, 0), motto, kGold,
       fitted(motto, words.width(), h * 0.19, false, true), Qt::AlignHCenter | Qt::AlignTop);
  p.restore();
}

void drawGlobe(QPainter& p, const QPointF& c, double rad, const QColor& ink) {
  p.save();
  p.setBrush(QColor(120, 190, 235));
  p.setPen(QPen(ink, std::max(0.8, rad * 0.12)));
  p.drawEllipse(c, rad, rad);
  p.setBrush(Qt::NoBrush);
  p.drawEllipse(c, rad * 0.45, rad);
  p.drawLine(QPointF(c.x() - rad, c.y()), QPointF(c.x() + rad, c.y()));
  p.drawLine(QPointF(c.x(), c.y() - rad), QPointF(c.x(), c.y() + rad));
  p.restore();
}

void drawSiteBanner(QPainter& p, const QRectF& r) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  const double h = r.height();
  QLinearGradient bg(r.topLeft(), r.bottomLeft());
  bg.setColorAt(0, QColor(255, 248, 222));
  bg.setColorAt(1, QColor(240, 226, 176));
  p.setBrush(bg);
  p.setPen(QPen(kDeepGreen, std::max(1.0, h * 0.05)));
  p.drawRoundedRect(r.adjusted(h * 0.03, h * 0.03, -h * 0.03, -h * 0.03), h * 0.22, h * 0.22);
  drawGlobe(p, QPointF(r.left() + h * 0.55, r.center().y()), h * 0.3, kDeepGreen);
  const QRectF words = r.adjusted(h * 1.0, 0, -h * 0.3, 0);
  const QString line = QStringLiteral("More free games on the Quorvel site");
  text(p, words, line, kDeepGreen, fitted(line, words.width(), h * 0.3, true));
  p.restore();
}

void drawSiteButton(QPainter& p, const QRectF& r) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  const double h = r.height();
  drawGlobe(p, QPointF(r.left() + h * 0.55, r.center().y()), h * 0.3, kDeepGreen);
  const QRectF words = r.adjusted(h * 1.0, 0, -h * 0.2, 0);
  const QString line = QStringLiteral("Quorvel on the web");
  text(p, words, line, kDeepGreen, fitted(line, words.width(), h * 0.34, true));
  p.restore();
}

void drawChessboard(QPainter& p, const QRectF& r, const QColor& a, const QColor& b) {
  const double s = r.width() / 8;
  for (int i = 0; i < 8; ++i)
    for (int j = 0; j < 8; ++j)
      p.fillRect(QRectF(QPointF(r.left() + i * s, r.top() + j * s),
                        QPointF(r.left() + (i + 1) * s, r.top() + (j + 1) * s)),
                 (i + j) % 2 == 0 ? a : b);
}

void drawCoin(QPainter& p, const QPointF& c, double rad) {
  p.save();
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(0, 0, 0, 80));
  p.drawEllipse(c + QPointF(rad * 0.1, rad * 0.14), rad, rad);
  QRadialGradient gold(c - QPointF(rad * 0.4, rad * 0.4), rad * 1.6);
  gold.setColorAt(0, QColor(255, 236, 150));
  gold.setColorAt(0.5, QColor(222, 176, 60));
  gold.setColorAt(1, QColor(150, 104, 20));
  p.setBrush(gold);
  p.setPen(QPen(QColor(130, 90, 20), std::max(1.0, rad * 0.06)));
  p.drawEllipse(c, rad, rad);
  p.setBrush(Qt::NoBrush);
  p.setPen(QPen(QColor(170, 120, 30), std::max(0.8, rad * 0.05)));
  p.drawEllipse(c, rad * 0.8, rad * 0.8);
  text(p, QRectF(c.x() - rad, c.y() - rad, 2 * rad, 2 * rad), QStringLiteral("Q"),
       QColor(130, 88, 16), pixelFont(rad * 1.05, true));
  p.restore();
}

void drawAdvertBoards(QPainter& p, const QRectF& r) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  const double h = r.height();
  QLinearGradient bg(r.topLeft(), r.bottomLeft());
  bg.setColorAt(0, QColor(44, 86, 54));
  bg.setColorAt(1, QColor(20, 48, 28));
  p.fillRect(r, bg);
  const double side = std::min(r.width() * 0.42, h * 0.66);
  const double gap = side * 0.04;
  const QRectF left(r.center().x() - side - gap / 2, r.top() + h * 0.08, side, side);
  const QRectF right(r.center().x() + gap / 2, left.top(), side, side);
  for (const QRectF& board : {left, right}) {
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 90));
    p.drawRect(board.translated(side * 0.02, side * 0.03));
    drawChessboard(p, board, QColor(238, 224, 190), QColor(150, 100, 60));
    p.setPen(QPen(QColor(90, 60, 30), std::max(1.0, side * 0.012)));
    p.setBrush(Qt::NoBrush);
    p.drawRect(board);
  }
  // The coin waits on the kick-off spot, where the boards meet.
  drawCoin(p, QPointF(r.center().x(), left.top() + side * 0.5), side * 0.1);
  const QString caption =
      QStringLiteral("Two chessboards, a coin and a die:\nplay Quorvel on your table");
  text(p, QRectF(r.left(), left.bottom(), r.width(), r.bottom() - left.bottom()), caption,
       QColor(255, 248, 225), fitted(caption, r.width() * 0.92, h * 0.065, true));
  p.restore();
}

void drawAdvertDie(QPainter& p, const QRectF& r) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  const double h = r.height();
  QLinearGradient bg(r.topLeft(), r.bottomRight());
  bg.setColorAt(0, QColor(250, 244, 222));
  bg.setColorAt(1, QColor(226, 210, 160));
  p.fillRect(r, bg);
  const double s = h * 0.5;
  p.translate(r.left() + r.width() * 0.27, r.top() + h * 0.42);
  p.rotate(-12);
  drawDie(p, QRectF(-s / 2, -s / 2, s, s), 6, false);
  p.rotate(12);
  p.translate(s * 0.5, s * 0.45);
  p.rotate(18);
  drawDie(p, QRectF(-s * 0.3, -s * 0.3, s * 0.6, s * 0.6), 3, false);
  p.resetTransform();
  p.restore();
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  const QRectF words(r.left() + r.width() * 0.5, r.top() + h * 0.12, r.width() * 0.46, h * 0.6);
  const QString shout = QStringLiteral("Roll.\nKick.\nScore!");
  text(p, words, shout, kDeepGreen, fitted(shout, words.width(), h * 0.13, true),
       Qt::AlignLeft | Qt::AlignVCenter);
  const QString more = QStringLiteral("The rules of Quorvel, free to read online");
  text(p, QRectF(r.left(), r.top() + h * 0.78, r.width(), h * 0.18), more, QColor(90, 60, 20),
       fitted(more, r.width() * 0.92, h * 0.06, false, true));
  p.restore();
}

}  // namespace

void drawPicture(QPainter& p, const QString& key, const QRectF& r, const PictureLook& look) {
  if (key == QLatin1String("pitch")) return drawPitch(p, r);
  if (key == QLatin1String("goal")) return drawGoal(p, r, look.opensLeft);
  if (key == QLatin1String("ball")) return drawBall(p, r);
  if (key == QLatin1String("player")) return drawPlayer(p, r, look);
  if (key == QLatin1String("flag")) return drawFlag(p, r, look.hovered);
  if (key == QLatin1String("swatch")) return drawSwatch(p, r, look.back);
  if (key == QLatin1String("banner-title")) return drawTitleBanner(p, r);
  if (key == QLatin1String("banner-site")) return drawSiteBanner(p, r);
  if (key == QLatin1String("site")) return drawSiteButton(p, r);
  if (key == QLatin1String("advert1")) return drawAdvertBoards(p, r);
  if (key == QLatin1String("advert2")) return drawAdvertDie(p, r);
  if (key.size() == 4 && key.startsWith(QLatin1String("die"))) {
    const int face = key.back().digitValue();  // die0 blank, die1..6 faces, die7 dimmed blank
    return drawDie(p, r, face >= 1 && face <= 6 ? face : 0, face == 7);
  }
}

void drawAppIcon(QPainter& p, const QRectF& r) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  const double s = std::min(r.width(), r.height());
  const QRectF box(r.left(), r.top(), s, s);
  QPainterPath clip;
  clip.addRoundedRect(box, s * 0.18, s * 0.18);
  p.setClipPath(clip);
  const double c = s / 4;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j)
      p.fillRect(QRectF(box.left() + i * c, box.top() + j * c, c, c),
                 (i + j) % 2 == 0 ? toQColor(kPitchLight) : toQColor(kPitchDark));
  p.setClipping(false);
  drawDie(p, QRectF(box.left() + s * 0.16, box.top() + s * 0.16, s * 0.68, s * 0.68), 5, false);
  p.restore();
}

namespace {

// Draws the icon at a size only when a window first asks for that size: a window that is never
// shown never draws it.
class AppIconEngine : public QIconEngine {
 public:
  void paint(QPainter* p, const QRect& r, QIcon::Mode, QIcon::State) override {
    drawAppIcon(*p, r);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override {
    QPixmap& drawn = (*drawn_)[{size.width(), size.height()}];
    if (drawn.isNull()) {
      drawn = QPixmap(size);
      drawn.fill(Qt::transparent);
      QPainter p(&drawn);
      drawAppIcon(p, QRectF(QPointF(), size));
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
  std::shared_ptr<std::map<std::pair<int, int>, QPixmap>> drawn_ =
      std::make_shared<std::map<std::pair<int, int>, QPixmap>>();
};

}  // namespace

QIcon appIcon() {
  return QIcon(new AppIconEngine);
}

}  // namespace quorvel
