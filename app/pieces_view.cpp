#include "pieces_view.h"

#include <QAccessible>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

namespace quorvel {

struct PiecesView::Piece {
  Piece(const Picture& p, const TextBox* n, int i)
      : picture(p), number(n), index(i), drawing(p, n) {}
  const Picture& picture;
  const TextBox* number;
  int index;  // in pieces_
  PictureDrawing drawing;
  // What is on screen: where, and whether it is shown.
  QRect rect;
  bool visible = false;
};

PiecesView::PiecesView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("Pieces"));
  // Clicks go to what lies under the layer; the window keeps a piece's from reaching it.
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAttribute(Qt::WA_NoSystemBackground);
  setFocusPolicy(Qt::NoFocus);
}

PiecesView::~PiecesView() = default;

void PiecesView::add(const Picture& picture, const TextBox* number) {
  pieces_.push_back(std::make_unique<Piece>(picture, number, count()));
}

void PiecesView::show(int i, const ControlView& v, bool redrawn) {
  Piece& p = *pieces_.at(static_cast<std::size_t>(i));
  const QRect rect(static_cast<int>(v.rect.x), static_cast<int>(v.rect.y),
                   static_cast<int>(v.rect.width), static_cast<int>(v.rect.height));
  const bool visible = v.shown;
  const bool moved = rect != p.rect;
  if (!(redrawn && p.drawing.refresh()) && !moved && visible == p.visible) return;
  // A step of a few pixels repaints the one rectangle round where it was and where it is.
  if (p.visible && visible && p.rect.intersects(rect)) {
    markDirty(p.rect | rect);
  } else {
    if (p.visible) markDirty(p.rect);
    if (visible) markDirty(rect);
  }
  p.rect = rect;
  p.visible = visible;
  if (moved && QAccessible::isActive()) {
    QAccessibleEvent event(this, QAccessible::LocationChanged);
    event.setChild(p.index);
    QAccessible::updateAccessibility(&event);
  }
}

void PiecesView::standOn(PictureView* ground, std::vector<QRect> hidden) {
  ground_ = ground;
  hidden_ = std::move(hidden);
  ground_->setPaintOver(
      [this](QPainter& p, const QRegion& region) { paintPieces(p, region, ground_->pos()); });
  update();
  ground_->update();
}

bool PiecesView::onGround(const QRect& r) const {
  if (ground_ == nullptr || !ground_->geometry().contains(r)) return false;
  for (const QRect& h : hidden_)
    if (h.intersects(r)) return false;
  return true;
}

void PiecesView::markDirty(const QRect& r) {
  if (ground_ != nullptr && ground_->geometry().intersects(r))
    ground_->update(r.translated(-ground_->pos()));
  if (!onGround(r)) update(r);
}

const Picture& PiecesView::picture(int i) const {
  return pieces_.at(static_cast<std::size_t>(i))->picture;
}

QRect PiecesView::rectOf(int i) const {
  return pieces_.at(static_cast<std::size_t>(i))->rect;
}

bool PiecesView::shown(int i) const {
  return pieces_.at(static_cast<std::size_t>(i))->visible;
}

int PiecesView::pieceAt(QPoint at) const {
  for (int i = count() - 1; i >= 0; --i)
    if (shown(i) && rectOf(i).contains(at)) return i;
  return -1;
}

void PiecesView::paintEvent(QPaintEvent* e) {
  // Qt asks the layer whenever anything under it is repainted: most often the ground, which
  // has painted its pieces itself.
  if (onGround(e->rect())) return;
  // Or the window's ground, under no piece at all.
  if (std::none_of(pieces_.begin(), pieces_.end(), [e](const std::unique_ptr<Piece>& p) {
        return p->visible && p->rect.intersects(e->rect());
      }))
    return;
  QRegion region = e->region();
  if (ground_ != nullptr) {
    QRegion hidden;
    for (const QRect& h : hidden_) hidden += h;
    region = region.subtracted(ground_->geometry()).united(region.intersected(hidden));
  }
  QPainter p(this);
  // A rectangle at a time, as the ground paints: a clip of one rectangle is a plain blend.
  const bool clipped = region.rectCount() > 1 || region != e->region();
  for (const QRect& r : region) {
    if (clipped) p.setClipRect(r);
    paintPieces(p, QRegion(r), QPoint());
  }
}

void PiecesView::paintPieces(QPainter& onto, const QRegion& region, QPoint corner) {
  const qreal ratio = onto.device()->devicePixelRatioF();
  for (auto& piece : pieces_) {
    const QRect at = piece->rect.translated(-corner);
    if (piece->visible && region.intersects(at))
      onto.drawPixmap(at.topLeft(), piece->drawing.at(at.size(), ratio));
  }
}

}  // namespace quorvel
