// Draws a picture's shapes (src/ui/shapes.h) with QPainter.
#pragma once

#include <QPainter>
#include <QRectF>

#include "ui/shapes.h"

namespace quorvel {

inline Box toBox(const QRectF& r) {
  return {r.x(), r.y(), r.width(), r.height()};
}

void paintPicture(QPainter& p, const Drawing& picture);

}  // namespace quorvel
