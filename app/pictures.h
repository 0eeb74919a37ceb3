// The game's pictures in the window: what a control shows, turned into the toolkit-free
// description of src/ui/pictures.h and painted by shape_painter.h. A picture is named by the key
// a control's Image holds ("pitch", "die3", ...).
#pragma once

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QRectF>
#include <QString>

#include "form/colour.h"
#include "ui/pictures.h"

namespace quorvel {

inline QColor toQColor(Colour c) {
  return QColor(c.red(), c.green(), c.blue());
}

Rgba toRgba(const QColor& c);

// Draws picture `key` into `r` with `look` (view/form_view.h's lookOf); the empty key draws a
// plain panel, unknown keys nothing.
void drawPicture(QPainter& p, const QString& key, const QRectF& r, const Look& look);
// Draws a button showing picture `key` into `r`: its face and the picture on it.
void drawButton(QPainter& p, const QString& key, const QRectF& r, const Look& look,
                const ButtonState& state);

// A button showing picture `key` at `size` logical pixels of device pixel ratio `ratio`, drawn
// once for each look and state at that size.
QPixmap drawnButton(const QString& key, const QSize& size, qreal ratio, const Look& look,
                    const ButtonState& state);

// The "player" picture at `size` logical pixels of device pixel ratio `ratio`: its side's shirt,
// drawn once for every player that wears it at that size, with this player's number on a copy.
QPixmap drawnPlayer(const QSize& size, qreal ratio, const Look& look);

// The game's icon (quorvel.svg) at the sizes a window manager asks for.
QIcon appIcon();

}  // namespace quorvel
