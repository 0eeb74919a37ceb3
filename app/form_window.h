// A top-level window that shows the controls of one window of the form, as the view of the
// form (view/form_view.h) describes them: each control gets a widget at the rectangle the view
// gives, with the name, role and Tab stop it gives, and the arrows and Enter do what it says;
// the person's use of a widget goes to the model, and syncFromModel() shows what the view
// lists as changed.
#pragma once

#include <QPixmap>
#include <QWidget>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "control_views.h"
#include "match/match_form.h"
#include "pieces_view.h"
#include "view/form_view.h"

namespace quorvel {

class FormWindow : public QWidget {
  Q_OBJECT
 public:
  FormWindow(MatchForm& f, FormWindowId window);
  ~FormWindow() override;

  // Creates the widget that shows `c`.
  QWidget* bind(Control& c);
  // Shows picture `p`, which the rules move many times a second, on the layer of pieces
  // (pieces_view.h) on top of the pieces bound before; the layer stands over every control
  // bound before the first piece. A player picture paints its shirt-number box `number`.
  void bindPiece(Picture& p, const TextBox* number);
  // The pieces standing on picture `ground`, which covers its rectangle, are painted by it.
  void standPiecesOn(const Picture& ground);

  // Shows what the view lists as changed since its last glance, at every control. Focus moves
  // that Qt makes on its own while widgets are hidden or disabled here are not taken for the
  // person's.
  void syncFromModel();
  // After ticks alone: shows what the view lists as changed among what the ticks may change.
  void syncTicked();

  QWidget* widgetFor(const std::string& name) const;
  // The layer the pieces are painted on; null before the first piece is bound.
  const PiecesView* pieces() const { return pieces_; }
  double scale() const { return view_.placement().scale; }
  // Where the view puts control `c`, in its container's pixels (the window's for one without).
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
  // The view this window draws.
  const FormView& view() const { return view_; }
  FormView& view() { return view_; }

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
  // Shows the changes listed; `ticking` when ticks alone made them.
  void showChanges(const std::vector<FormView::Change>& changes, bool ticking);
  void showChange(Binding& b, const FormView::Change& change);
  void showToggle(Binding& b);
  void showTextBox(Binding& b, const FormView::Change& change);
  void showScrollBar(Binding& b);
  // Names the widget for assistive technology where its own text does not say what it is.
  void nameForAssistiveTech(Binding& b);
  void place(Binding& b);
  // Where the view puts `b`'s control, in its container's pixels.
  static QRect shownRect(const Binding& b);
  // Whether text box `b` is painted by the window at `to`, its widget staying put.
  bool slides(Binding& b, const QRect& to);
  // Paints text box `box` at `to` as `picture` / leaves it to its widget again.
  void slide(const QWidget* box, const QPixmap& picture, QRect to);
  void unslide(const QWidget* box);
  void applyFont(Binding& b);
  void relayout();
  void showPiecesOnGround();
  void forward(Control& c);
  // Tab stops on the widget where the view says it does now.
  void applyTabStop(Binding& b);
  // An arrow or Enter on widget `watched` does what the view says; true when it did something.
  bool keyAsTheViewSays(QObject* watched, QEvent* e);
  // A mouse event on `watched` that lands on a piece painted over it: the piece takes it.
  bool onAPieceAbove(QObject* watched, QEvent* e) const;

  FormView view_;
  std::unique_ptr<ScaledStyle> style_;
  std::vector<std::unique_ptr<Binding>> bindings_;
  std::map<std::string, QWidget*> byName_;
  // What shows each view, by its index in the view: its binding, or its piece of the layer.
  struct Shows {
    Binding* binding = nullptr;
    int piece = -1;
  };
  std::vector<Shows> showsView_;
  Shows& showsOf(const ControlView& v) {
    return showsView_[static_cast<std::size_t>(&v - view_.controls().data())];
  }
  PiecesView* pieces_ = nullptr;   // owned as a child widget
  PictureView* ground_ = nullptr;  // ... the picture that paints those on it
  bool syncing_ = false;
  bool ticking_ = false;  // showing what ticks alone changed
  // The text boxes painted away from their widgets: where, and how they look.
  struct Slid {
    const QWidget* box;
    QPixmap picture;
    QRect rect;
  };
  std::vector<Slid> slid_;
};

}  // namespace quorvel
