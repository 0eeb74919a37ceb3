// Widgets of our own for the controls Qt has no match for: pictures that we paint, picture
// buttons (the die, the flags), and a text box that reports clicks.
#pragma once

#include <QAbstractButton>
#include <QLineEdit>
#include <QPixmap>
#include <QProxyStyle>
#include <QScrollBar>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "form/controls.h"
#include "pictures.h"

class QKeyEvent;
class QStyleOptionFrame;
class QMouseEvent;
class QPainter;

namespace quorvel {

// A left-button press and release inside the same widget: a click as a person means it. Both
// events are accepted, so that a click never falls through to the widget behind.
class ClickTracker {
 public:
  void press(QMouseEvent* e);
  // True when this release completes a click inside `area`.
  bool release(QMouseEvent* e, const QRect& area);

 private:
  bool pressed_ = false;
};

// What a picture control shows, drawn once per look and size. `number` is the shirt-number box
// a player picture holds, drawn as part of the piece.
class PictureDrawing {
 public:
  PictureDrawing(const Picture& picture, const TextBox* number);

  // Takes over what the model shows now, when the view says its look changed; true when the
  // picture looks different.
  bool refresh();
  // The picture at `size` logical pixels and device pixel ratio `ratio`, drawn again only when
  // the look, the size or the ratio changed.
  const QPixmap& at(QSize size, qreal ratio);
  // Every pixel of its rectangle is covered: nothing under it need be painted.
  bool coversItsRect() const;

 private:
  const Picture& picture_;
  const TextBox* number_;
  QString key_;  // the picture drawn, and its look
  Look look_;
  QPixmap drawn_;    // the picture at the last size and pixel ratio; empty when stale
  QSize drawnSize_;  // ... that size, in logical pixels
};

// A picture control, painted from its PictureDrawing.
class PictureView : public QWidget {
  Q_OBJECT
 public:
  PictureView(const Picture& picture, QWidget* parent);

  // Takes over what the model shows now, when the view says its look changed; repaints only
  // when it looks different.
  void refresh();

  // A picture that does something when clicked (a colour swatch, a banner) is a button to
  // the keyboard too: it takes the focus, shows it, and Space or Enter clicks it.
  void setClickable(bool clickable);
  bool clickable() const { return clickable_; }
  void click() { emit clicked(); }
  // Paints more over the picture, in the region being painted (the pieces on the pitch).
  void setPaintOver(std::function<void(QPainter&, const QRegion&)> paint) {
    paintOver_ = std::move(paint);
  }

 signals:
  void clicked();

 protected:
  void paintEvent(QPaintEvent*) override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  void focusInEvent(QFocusEvent* e) override;
  void focusOutEvent(QFocusEvent* e) override;

 private:
  PictureDrawing drawing_;
  ClickTracker click_;
  bool clickable_ = false;
  std::function<void(QPainter&, const QRegion&)> paintOver_;
};

// A command button that shows a picture (the die, a flag, the web-site button).
class PictureButton : public QAbstractButton {
  Q_OBJECT
 public:
  PictureButton(const CommandButton& button, QWidget* parent);
  void refresh();

 protected:
  void paintEvent(QPaintEvent*) override;
  void keyPressEvent(QKeyEvent* e) override;
  void enterEvent(QEnterEvent* e) override;
  void leaveEvent(QEvent* e) override;

 private:
  bool bare() const;  // drawn without a button face (the flags)
  void tellNewName();
  const CommandButton& button_;
  QString key_;  // the picture drawn, on the colour drawn
  QColor back_;
  bool hovered_ = false;
};

// A text box; a click on it reaches the model (a locked box can still be clicked).
class TextView : public QLineEdit {
  Q_OBJECT
 public:
  using QLineEdit::QLineEdit;

  // While it slides (the names and scores after a 50/50) the window paints it where it is,
  // from picture(); the widget stays where it stood and paints nothing.
  void setAway(bool away);
  bool away() const { return away_; }
  // The box as it looks now over a ground of colour `under`, drawn again only when either
  // changed: an opaque picture, which Qt copies rather than blends.
  const QPixmap& picture(const QColor& under);

 signals:
  void clicked();

 protected:
  void mouseReleaseEvent(QMouseEvent* e) override;
  // A box without the focus (the names and scores, the clock) is drawn once for each text,
  // look and size and then copied: a 50/50 contest slides the names and scores a step at every
  // tick, with nothing in them changed.
  void paintEvent(QPaintEvent* e) override;

 private:
  struct Shown {
    QString text;
    QFont font;
    qint64 palette = 0;
    QSize size;
    qreal ratio = 0;
    bool enabled = false, frame = false;
    Qt::Alignment alignment;
    bool readOnly = false, hovered = false;
    int cursor = 0, selectionStart = 0, selected = 0;  // which part of a long text shows
    bool operator==(const Shown&) const = default;
  };
  Shown shownNow() const;
  void copyShown();
  Shown shownFor_;     // what the copy shows
  Shown lastPainted_;  // what the last paint without the copy showed
  QPixmap shown_;
  bool drawing_ = false;    // drawing into shown_
  bool copyAsked_ = false;  // once this paint is over
  bool away_ = false;
  QPixmap over_;  // shown_ over ...
  QColor under_;  // ... this colour
  qint64 overOf_ = 0;
};

// A scroll bar that shows when it has the keyboard focus (Fusion draws no sign of it).
class ScrollView : public QScrollBar {
  Q_OBJECT
 public:
  using QScrollBar::QScrollBar;

 protected:
  void paintEvent(QPaintEvent* e) override;
};

// The keyboard focus on a control we paint ourselves: a ring in two tones, seen on the pitch's
// greens, on any team colour and on the window's grey, just inside `r`.
void drawFocusFrame(QPainter& p, const QRectF& r);
// Space and Enter: the keys that click a focused picture.
bool isClickKey(const QKeyEvent* e);

// Fusion, with the indicators and scroll bars grown with the window's scale, so that a check
// box keeps its proportions when the window is maximised, and the focus drawn to be seen.
class ScaledStyle : public QProxyStyle {
 public:
  ScaledStyle();
  void setScale(double scale) { scale_ = scale; }
  int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                  const QWidget* widget = nullptr) const override;
  // The keyboard focus in our ring, on every kind of control: Fusion's own is a faint line.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget = nullptr) const override;

 private:
  // A text box's panel and frame as Fusion draws them, drawn once for each look and size: a
  // text box that slides (the names and scores after a 50/50) is then a copy, not a drawing.
  struct PanelKey {
    qint64 palette;
    int width, height, state, lineWidth;
    qreal ratio;
    auto operator<=>(const PanelKey&) const = default;
  };
  void drawPanel(const QStyleOptionFrame& frame, QPainter* painter, const QWidget* widget) const;

  double scale_ = 1;
  mutable std::map<PanelKey, QPixmap> panels_;
};

}  // namespace quorvel
