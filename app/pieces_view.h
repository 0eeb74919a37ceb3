// The pictures the rules move many times a second, the players and the ball, painted rather
// than each a widget: a move repaints only where the piece was and where it is, and moves no
// widget, so Qt has nothing to work out again about the window's other controls. Where a
// piece stands on the ground (the pitch, a picture that covers its rectangle) the ground paints
// it, so that a move there repaints that one widget and nothing under it; elsewhere (the teams
// waiting below the pitch, a substitute walking on, a shot into a goal) this transparent layer
// over the window does. The layer stands where the pieces' own widgets would: over the ground
// and the goals, under the flags and every control bound after it.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "control_views.h"
#include "view/form_view.h"

namespace quorvel {

class PiecesView : public QWidget {
  Q_OBJECT
 public:
  explicit PiecesView(QWidget* parent);
  ~PiecesView() override;

  // A piece on top of those added before it; a player picture paints its shirt-number box.
  void add(const Picture& picture, const TextBox* number);
  // Shows piece `i` as the view describes it (its rectangle in the parent's pixels, which are
  // this layer's too); its picture is taken anew when the view says it was `redrawn`.
  void show(int i, const ControlView& v, bool redrawn);
  // Pieces on `ground` are painted by it; `hidden` are the parts of it (in this layer's
  // pixels) under a control stacked between it and this layer, where the layer paints them.
  void standOn(PictureView* ground, std::vector<QRect> hidden);

  int count() const { return static_cast<int>(pieces_.size()); }
  const Picture& picture(int i) const;
  // Where piece `i` is painted, in this layer's pixels, and whether it is shown.
  QRect rectOf(int i) const;
  bool shown(int i) const;
  // The topmost piece shown at `p`, or -1.
  int pieceAt(QPoint p) const;

 protected:
  void paintEvent(QPaintEvent* e) override;

 private:
  struct Piece;
  // Marks `r` to be repainted on whichever of the ground and this layer paints it.
  void markDirty(const QRect& r);
  // Paints the pieces shown in `region` of `onto`, whose corner is `corner` of this layer.
  void paintPieces(QPainter& onto, const QRegion& region, QPoint corner);
  // On the ground and under nothing else: painted by the ground alone.
  bool onGround(const QRect& r) const;

  std::vector<std::unique_ptr<Piece>> pieces_;  // bottom to top
  PictureView* ground_ = nullptr;
  std::vector<QRect> hidden_;
};

}  // namespace quorvel
