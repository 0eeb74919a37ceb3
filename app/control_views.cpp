#include "control_views.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleFactory>
#include <cmath>

#include "ui/layout.h"

namespace quorvel {

namespace {

// Pictures that cover every pixel of their rectangle: Qt need paint nothing under them.
bool coversItsRect(const std::string& image) {
  return image == "pitch" || image == "swatch" || image == "advert1" || image == "advert2";
}

}  // namespace

// ---- PictureView -------------------------------------------------------------------------

PictureView::PictureView(const Picture& picture, const TextBox* number, QWidget* parent)
    : QWidget(parent),
      picture_(picture),
      number_(number),
      opensLeft_(goalMouth(picture.name) == Mouth::OpensLeft) {
  setObjectName(QString::fromStdString(picture.name));
  // Pictures never fill a system background: what is not drawn shows what lies behind.
  setAttribute(Qt::WA_NoSystemBackground);
  refresh();
}

void PictureView::refresh() {
  // This runs for every picture after every tick: compare the model's own values first.
  Shown now{picture_.Image, picture_.BackColor, {}};
  if (number_ != nullptr)
    now.number = {number_->Text,   number_->ForeColor.rgb, number_->BackColor.rgb,
                  number_->Left,   number_->Top,           number_->Width,
                  number_->Height, picture_.Width,         picture_.Height};
  if (taken_ && now == shown_) return;
  taken_ = true;
  shown_ = now;

  PictureLook look;
  look.back = toQColor(picture_.BackColor);
  if (number_ != nullptr) {
    look.number = QString::fromStdString(number_->Text);
    look.numberInk = toQColor(number_->ForeColor);
    look.numberBack = toQColor(number_->BackColor);
    if (picture_.Width > 0 && picture_.Height > 0)
      look.numberBox = QRectF(number_->Left / picture_.Width, number_->Top / picture_.Height,
                              number_->Width / picture_.Width, number_->Height / picture_.Height);
  }
  look.opensLeft = opensLeft_;
  const QString key = QString::fromStdString(picture_.Image);
  const bool same = key == key_ && look.back == look_.back && look.number == look_.number &&
                    look.numberInk == look_.numberInk && look.numberBack == look_.numberBack &&
                    look.numberBox == look_.numberBox;
  if (same) return;
  setAttribute(Qt::WA_OpaquePaintEvent, coversItsRect(picture_.Image));
  key_ = key;
  look_ = look;
  drawn_ = QPixmap();
  update();
}

void PictureView::resizeEvent(QResizeEvent* e) {
  drawn_ = QPixmap();
  QWidget::resizeEvent(e);
}

void PictureView::paintEvent(QPaintEvent*) {
  // Drawn once per look and size: a walking player only moves, so the pitch under it is
  // copied, not redrawn.
  const qreal ratio = devicePixelRatioF();
  if (drawn_.isNull() || drawn_.devicePixelRatio() != ratio) {
    drawn_ = QPixmap(size() * ratio);
    drawn_.setDevicePixelRatio(ratio);
    drawn_.fill(Qt::transparent);
    QPainter onto(&drawn_);
    draw(onto);
  }
  QPainter p(this);
  p.drawPixmap(0, 0, drawn_);
}

void PictureView::draw(QPainter& p) const {
  drawPicture(p, key_, rect(), look_);
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

// ---- PictureButton -----------------------------------------------------------------------

PictureButton::PictureButton(const CommandButton& button, QWidget* parent)
    : QAbstractButton(parent), button_(button) {
  setObjectName(QString::fromStdString(button.name));
  // A flag vanishes when clicked; taking the focus would only hand it on to a stranger.
  setFocusPolicy(bare() ? Qt::NoFocus : Qt::StrongFocus);
  refresh();
}

bool PictureButton::bare() const {
  return bareButton(button_.Image);
}

void PictureButton::refresh() {
  if (taken_ && button_.Image == image_ && button_.BackColor == shownBack_) return;
  taken_ = true;
  image_ = button_.Image;
  shownBack_ = button_.BackColor;
  const QString key = QString::fromStdString(button_.Image);
  const QColor back = toQColor(button_.BackColor);
  if (key == key_ && back == back_) return;
  key_ = key;
  back_ = back;
  update();
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
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  PictureLook look;
  look.back = back_;
  look.hovered = hovered_ && isEnabled();
  drawButton(p, key_, rect(), look, {isDown(), hasFocus(), isEnabled()});
}

// ---- TextView ----------------------------------------------------------------------------

void TextView::mouseReleaseEvent(QMouseEvent* e) {
  QLineEdit::mouseReleaseEvent(e);
  if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint())) emit clicked();
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

}  // namespace quorvel
