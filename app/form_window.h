// A top-level window that shows the controls of one form of the model. Each control gets a
// widget, placed from its twips and scaled with the window (letterboxed, so proportions hold);
// the person's use of a widget goes to the model, and syncFromModel() copies back what changed.
#pragma once

#include <QWidget>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "control_views.h"
#include "match/match_form.h"
#include "pieces_view.h"

namespace quorvel {

class FormWindow : public QWidget {
  Q_OBJECT
 public:
  // `clientWidth` x `clientHeight` twips is the form's client area; 15 twips are one pixel at
  // scale 1.
  FormWindow(MatchForm& f, double clientWidth, double clientHeight);
  ~FormWindow() override;

  // How a control's pixel rectangle follows its twips. A fixed control has both edges
  // rounded from the form's grid, so that neighbours never gap or overlap; a moving one has its
  // left and top edges rounded and its size taken from its own size, so that its size (and the
  // picture drawn at that size) stays the same wherever it stands.
  enum class Motion { Fixed, Moves };

  // Creates the widget that shows `c`.
  QWidget* bind(Control& c, Motion motion = Motion::Fixed);
  // Shows picture `p`, which the rules move many times a second, on the layer of pieces
  // (pieces_view.h) on top of the pieces bound before; the layer stands over every control
  // bound before the first piece. A player picture paints its shirt-number box `number`.
  void bindPiece(Picture& p, const TextBox* number);
  // The pieces standing on picture `ground`, which covers its rectangle, are painted by it.
  void standPiecesOn(const Picture& ground);

  // Copies every change of the model onto the widgets. Focus moves that Qt makes on its own
  // while widgets are hidden or disabled here are not taken for the person's.
  void syncFromModel();
  // Notes that the model may have changed `c` (a player's shirt number counts as its player),
  // and copies the changes of every control so noted onto its widget.
  void touch(const Control& c);
  void syncTouched();

  QWidget* widgetFor(const std::string& name) const;
  // The layer the pieces are painted on; null before the first piece is bound.
  const PiecesView* pieces() const { return pieces_; }
  double scale() const { return scale_; }
  // Where control `c` appears, in this window's pixels.
  QRect pixelRect(const Control& c) const;
  // The letterboxed area the whole form fills.
  QRectF formArea() const;
  QSize naturalSize() const;  // the size at scale 1
  // Fits the form to the window's size as it is now: its scale and where it stands. Widgets
  // bound after it are made at that scale, with their fonts at the sizes they will show.
  void fit();
  // The smallest scale at which every text of the bound widgets is still legible.
  double legibleScale() const;
  // What assistive technology calls widget `w` or control `c`: its name in the game's words.
  QString accessibleNameOf(const QWidget* w) const;
  QString accessibleNameOf(const Control& c) const;

 signals:
  // The person is about to do something that reaches the model.
  void aboutToHandle();
  // The person did something that reached the model; the owner brings every view up to date.
  void handled();

 protected:
  void resizeEvent(QResizeEvent* e) override;
  void paintEvent(QPaintEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;

  MatchForm& f_;

 private:
  struct Binding;
  QWidget* makeWidget(Control& c, QWidget* parent);
  QWidget* makeTextView(TextBox& box, QWidget* parent);
  QWidget* makeScrollBar(ScrollBar& bar, QWidget* parent);
  void sync(Binding& b);
  void syncCommon(Binding& b, bool fresh);
  void syncButton(Binding& b, bool fresh);
  void syncToggle(Binding& b, bool fresh);
  void syncTextBox(Binding& b, bool fresh);
  void syncScrollBar(Binding& b, bool fresh);
  // True, with the new text taken into `b`, when the control's caption is not the one shown.
  static bool captionChanged(Binding& b, bool fresh);
  // Names the widget for assistive technology where its own text does not say what it is,
  // and makes a picture that can be clicked a button to the keyboard.
  void makeAccessible(Binding& b);
  void nameForAssistiveTech(Binding& b);
  void place(Binding& b);
  void applyFont(Binding& b);
  void relayout();
  void showPiecesOnGround();
  void forward(Control& c);
  QRect pixelRect(const Control& c, Motion motion) const;
  // A mouse event on `watched` that lands on a piece painted over it: the piece takes it.
  bool onAPieceAbove(QObject* watched, QEvent* e) const;

  double width_, height_;  // twips
  double scale_ = 1;
  QPointF origin_;  // pixels of the form's top-left corner
  std::unique_ptr<ScaledStyle> style_;
  std::vector<std::unique_ptr<Binding>> bindings_;
  std::map<std::string, QWidget*> byName_;
  std::unordered_map<const Control*, Binding*> byControl_;
  std::vector<Binding*> touched_;
  PiecesView* pieces_ = nullptr;   // owned as a child widget
  PictureView* ground_ = nullptr;  // ... the picture that paints those on it
  bool syncing_ = false;
};

}  // namespace quorvel
