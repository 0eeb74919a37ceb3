// The game's stored pictures, drawn as vectors so that they stay crisp at any size and pixel
// ratio. A picture is named by the key a control's Image holds ("pitch", "die3", ...).
#pragma once

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QRectF>
#include <QString>

#include "form/colour.h"

namespace quorvel {

inline QColor toQColor(Colour c) {
  return QColor(c.red(), c.green(), c.blue());
}

// What a picture needs besides its key.
struct PictureLook {
  QColor back;       // the control's BackColor: a shirt's colour, a swatch's colour
  QString number;    // a player's shirt number
  QColor numberInk;  // ... and its colours
  QColor numberBack;
  QRectF numberBox;        // where the number box sits, as fractions of the picture
  bool opensLeft = false;  // a goal whose mouth faces left (the right-hand goal)
  bool hovered = false;    // a clickable picture under the mouse
};

// Draws picture `key` into `r`. Unknown keys draw nothing.
void drawPicture(QPainter& p, const QString& key, const QRectF& r, const PictureLook& look);

// The game's icon: a die on two greens, as in quorvel.svg.
void drawAppIcon(QPainter& p, const QRectF& r);
// The same icon at the sizes a window manager asks for.
QIcon appIcon();

}  // namespace quorvel
