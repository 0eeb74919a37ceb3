#include "control_views.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>
#include <cmath>

#include "ui/layout.h"
#include "view/form_view.h"

namespace quorvel {

// ---- PictureDrawing ----------------------------------------------------------------------

PictureDrawing::PictureDrawing(const Picture& picture, const TextBox* number)
    : picture_(picture), number_(number) {
  refresh();
}

bool PictureDrawing::refresh() {
  Look look = lookOf(picture_, number_, false);
  const QString key = QString::fromStdString(picture_.Image);
  if (key == key_ && look == look_) return false;
  key_ = key;
  look_ = std::move(look);
  drawn_ = QPixmap();
  return true;
}

bool PictureDrawing::coversItsRect() const {
  return quorvel::coversItsRect(picture_.Image);
}

const QPixmap& PictureDrawing::at(QSize size, qreal ratio) {
  if (!drawn_.isNull() && drawn_.devicePixelRatio() == ratio && drawnSize_ == size) return drawn_;
  drawnSize_ = size;
  // A walking player only moves: the pitch under it is copied, not redrawn.
  if (const PictureKind* kind = pictureKind(key_.toStdString());
      kind != nullptr && kind->drawnOncePerSide) {
    drawn_ = drawnPlayer(size, ratio, look_);
    return drawn_;
  }
  drawn_ = QPixmap(size * ratio);
  drawn_.setDevicePixelRatio(ratio);
  // A picture that covers its rectangle is kept without an alpha channel: painting it again
  // where a piece moved over it is then a plain copy.
  drawn_.fill(coversItsRect() ? Qt::black : Qt::transparent);
  QPainter onto(&drawn_);
  drawPicture(onto, key_, QRectF(QPointF(), QSizeF(size)), look_);
  return drawn_;
}

// ---- PictureView -------------------------------------------------------------------------

PictureView::PictureView(const Picture& picture, QWidget* parent)
    : QWidget(parent), drawing_(picture, nullptr) {
  setObjectName(QString::fromStdString(picture.name));
  // Pictures never fill a system background: what is not drawn shows what lies behind.
  setAttribute(Qt::WA_NoSystemBackground);
  setAttribute(Qt::WA_OpaquePaintEvent, drawing_.coversItsRect());
}

void PictureView::refresh() {
  if (!drawing_.refresh()) return;
  setAttribute(Qt::WA_OpaquePaintEvent, drawing_.coversItsRect());
  update();
}

void PictureView::paintEvent(QPaintEvent* e) {
  QPainter p(this);
  const QPixmap& drawn = drawing_.at(size(), devicePixelRatioF());
  // One rectangle at a time: Qt copies a picture straight only where the clip is a rectangle,
  // and blends it span by span where it is more (the ball and its receiver far apart).
  const QRegion& region = e->region();
  if (region.rectCount() == 1) {
    p.drawPixmap(0, 0, drawn);
    if (paintOver_) paintOver_(p, region);
  } else {
    for (const QRect& r : region) {
      p.setClipRect(r);
      p.drawPixmap(0, 0, drawn);
      if (paintOver_) paintOver_(p, QRegion(r));
    }
    p.setClipping(false);
  }
  if (hasFocus()) drawFocusFrame(p, rect());
}

void ClickTracker::press(QMouseEvent* e) {
  pressed_ = e->button() == Qt::LeftButton;
  e->accept();
}

bool ClickTracker::release(QMouseEvent* e, const QRect& area) {
  const bool click =
      pressed_ && e->button() == Qt::LeftButton && area.contains(e->position().toPoint());
  pressed_ = false;
  e->accept();
  return click;
}

void PictureView::mousePressEvent(QMouseEvent* e) {
  click_.press(e);
}

void PictureView::mouseReleaseEvent(QMouseEvent* e) {
  if (click_.release(e, rect())) emit clicked();
}

void PictureView::setClickable(bool clickable) {
  clickable_ = clickable;
  setFocusPolicy(clickable ? Qt::StrongFocus : Qt::NoFocus);
}

void PictureView::keyPressEvent(QKeyEvent* e) {
  if (clickable_ && isClickKey(e) && !e->isAutoRepeat())
    emit clicked();
  else
    QWidget::keyPressEvent(e);
}

void PictureView::focusInEvent(QFocusEvent* e) {
  update();
  QWidget::focusInEvent(e);
}

void PictureView::focusOutEvent(QFocusEvent* e) {
  update();
  QWidget::focusOutEvent(e);
}

// ---- PictureButton -----------------------------------------------------------------------

PictureButton::PictureButton(const CommandButton& button, QWidget* parent)
    : QAbstractButton(parent), button_(button) {
  setObjectName(QString::fromStdString(button.name));
  // A flag is reached with Tab and the arrow keys; a mouse click does not take the focus,
  // since the flag vanishes when clicked.
  setFocusPolicy(bare() ? Qt::TabFocus : Qt::StrongFocus);
  refresh();
}

bool PictureButton::bare() const {
  return bareButton(button_.Image);
}

void PictureButton::refresh() {
  const QString key = QString::fromStdString(button_.Image);
  const QColor back = toQColor(button_.BackColor);
  if (key == key_ && back == back_) return;
  const bool newPicture = key != key_;
  key_ = key;
  back_ = back;
  update();
  if (newPicture) tellNewName();
}

void PictureButton::tellNewName() {
  // A new face on the die or a flag in a new place: a screen reader reading it hears so.
  if (!QAccessible::isActive()) return;
  QAccessibleEvent changed(this, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&changed);
}

void PictureButton::enterEvent(QEnterEvent* e) {
  hovered_ = true;
  update();
  QAbstractButton::enterEvent(e);
}

void PictureButton::leaveEvent(QEvent* e) {
  hovered_ = false;
  update();
  QAbstractButton::leaveEvent(e);
}

void PictureButton::paintEvent(QPaintEvent*) {
  const Look look = lookOf(button_, nullptr, hovered_ && isEnabled());
  const ButtonState state{isDown(), hasFocus(), isEnabled()};
  QPainter p(this);
  if (bare()) {
    // A flag is small and shows once a roll: drawn straight onto what is under it.
    p.setRenderHint(QPainter::Antialiasing);
    drawButton(p, key_, rect(), look, state);
  } else {
    // The die is shown anew at every roll and every landing, in one of a few looks.
    p.drawPixmap(0, 0, drawnButton(key_, size(), devicePixelRatioF(), look, state));
  }
  if (hasFocus()) drawFocusFrame(p, rect());
}

void PictureButton::keyPressEvent(QKeyEvent* e) {
  // Space clicks any button; Enter clicks ours too, as a picture has no default button.
  if ((e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) && !e->isAutoRepeat())
    click();
  else
    QAbstractButton::keyPressEvent(e);
}

// ---- focus -------------------------------------------------------------------------------

void drawFocusFrame(QPainter& p, const QRectF& r) {
  const double width = std::max(2.0, std::min(r.width(), r.height()) * 0.05);
  const QRectF outer = r.adjusted(width / 2, width / 2, -width / 2, -width / 2);
  const QRectF inner = outer.adjusted(width * 0.75, width * 0.75, -width * 0.75, -width * 0.75);
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  p.setBrush(Qt::NoBrush);
  p.setPen(QPen(QColor(20, 60, 160), width));
  p.drawRect(outer);
  p.setPen(QPen(Qt::white, width / 2));
  p.drawRect(inner);
  p.restore();
}

bool isClickKey(const QKeyEvent* e) {
  return e->key() == Qt::Key_Space || e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter;
}

void ScrollView::paintEvent(QPaintEvent* e) {
  QScrollBar::paintEvent(e);
  if (!hasFocus()) return;
  QPainter p(this);
  drawFocusFrame(p, rect());
}

// ---- TextView ----------------------------------------------------------------------------

void TextView::mouseReleaseEvent(QMouseEvent* e) {
  QLineEdit::mouseReleaseEvent(e);
  if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint())) emit clicked();
}

TextView::Shown TextView::shownNow() const {
  return {text(),
          font(),
          palette().cacheKey(),
          size(),
          devicePixelRatioF(),
          isEnabled(),
          hasFrame(),
          alignment(),
          isReadOnly(),
          underMouse(),
          cursorPosition(),
          selectionStart(),
          static_cast<int>(selectedText().size())};
}

void TextView::setAway(bool away) {
  if (away == away_) return;
  away_ = away;
  update();
}

const QPixmap& TextView::picture(const QColor& under) {
  if (shown_.isNull() || shownNow() != shownFor_) copyShown();
  if (over_.isNull() || overOf_ != shown_.cacheKey() || under_ != under) {
    over_ = QPixmap(shown_.size());
    over_.setDevicePixelRatio(shown_.devicePixelRatio());
    over_.fill(under);
    QPainter p(&over_);
    p.drawPixmap(0, 0, shown_);
    overOf_ = shown_.cacheKey();
    under_ = under;
  }
  return over_;
}

void TextView::paintEvent(QPaintEvent* e) {
  if (away_ && !drawing_) return;
  // Typing shows a cursor: drawn as Qt draws it.
  if (drawing_ || hasFocus()) {
    QLineEdit::paintEvent(e);
    return;
  }
  if (!shown_.isNull() && shownNow() == shownFor_) {
    QPainter p(this);
    p.drawPixmap(0, 0, shown_);
    return;
  }
  QLineEdit::paintEvent(e);
  // Painted again as it was: drawn into the copy once this paint is over (a widget cannot draw
  // itself twice at once). A box painted once, as most are at the first frame, gets none.
  const Shown now = shownNow();
  if (now == lastPainted_ && !copyAsked_) {
    copyAsked_ = true;
    QMetaObject::invokeMethod(this, &TextView::copyShown, Qt::QueuedConnection);
  }
  lastPainted_ = now;
}

void TextView::copyShown() {
  copyAsked_ = false;
  const Shown now = shownNow();
  shown_ = QPixmap(now.size * now.ratio);
  shown_.setDevicePixelRatio(now.ratio);
  shown_.fill(Qt::transparent);
  drawing_ = true;
  render(&shown_, QPoint(), QRegion(), RenderFlags());
  drawing_ = false;
  shownFor_ = now;
}

// ---- ScaledStyle -------------------------------------------------------------------------

ScaledStyle::ScaledStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

int ScaledStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                             const QWidget* widget) const {
  const int base = QProxyStyle::pixelMetric(metric, option, widget);
  switch (metric) {
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
      // Tighter than Fusion's: the substitution boxes share a narrow strip.
      return std::max(1, static_cast<int>(std::lround(3 * scale_)));
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
    case PM_ScrollBarExtent:
    case PM_ScrollBarSliderMin:
      return std::max(1, static_cast<int>(std::lround(base * scale_)));
    default:
      return base;
  }
}

void ScaledStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
  if (element == PE_PanelLineEdit) {
    if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option))
      return drawPanel(*frame, painter, widget);
  }
  if (element != PE_FrameFocusRect)
    return QProxyStyle::drawPrimitive(element, option, painter, widget);
  // Around a check box's or an option button's caption, just outside its letters.
  drawFocusFrame(*painter, QRectF(option->rect).adjusted(-2, -1, 2, 1));
}

void ScaledStyle::drawPanel(const QStyleOptionFrame& frame, QPainter* painter,
                            const QWidget* widget) const {
  const qreal ratio = painter->device()->devicePixelRatio();
  const PanelKey key{frame.palette.cacheKey(),      frame.rect.width(), frame.rect.height(),
                     static_cast<int>(frame.state), frame.lineWidth,    ratio};
  auto it = panels_.find(key);
  if (it == panels_.end()) {
    // Every look a text box has had at every size it has had: a handful.
    if (panels_.size() > 256) panels_.clear();
    QPixmap panel(frame.rect.size() * ratio);
    panel.setDevicePixelRatio(ratio);
    panel.fill(Qt::transparent);
    QPainter onto(&panel);
    QStyleOptionFrame at = frame;
    at.rect.moveTopLeft(QPoint(0, 0));
    QProxyStyle::drawPrimitive(PE_PanelLineEdit, &at, &onto, widget);
    onto.end();
    it = panels_.emplace(key, std::move(panel)).first;
  }
  painter->drawPixmap(frame.rect.topLeft(), it->second);
}

void ScaledStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  QProxyStyle::drawControl(element, option, painter, widget);
  if (element == CE_PushButton && (option->state & State_HasFocus))
    drawFocusFrame(*painter, QRectF(option->rect));
}

}  // namespace quorvel
