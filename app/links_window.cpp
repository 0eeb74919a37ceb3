#include "links_window.h"

#include <QCloseEvent>
#include <QMouseEvent>

#include "events/events.h"

namespace quorvel {

namespace {
// The closing window's client area: its pictures and buttons with a margin all round.
constexpr double kClientWidth = 6240;
constexpr double kClientHeight = 4440;
}  // namespace

LinksWindow::LinksWindow(MatchForm& f) : FormWindow(f, kClientWidth, kClientHeight) {
  setWindowTitle(QStringLiteral("Free Quorvel"));
  for (Control* c : f.LinksForm.controls()) {
    QWidget* w = bind(*c);
    if (c->kind == Kind::Picture) w->setCursor(Qt::PointingHandCursor);
  }
}

void LinksWindow::mousePressEvent(QMouseEvent* e) {
  click_.press(e);
}

void LinksWindow::mouseReleaseEvent(QMouseEvent* e) {
  // Only clicks that no picture or button took land here: the window's background.
  if (click_.release(e, rect())) {
    userClickLinksForm(f_);
    emit handled();
  }
}

void LinksWindow::closeEvent(QCloseEvent* e) {
  // Closing it from the title bar is its Exit.
  if (!f_.Ended) {
    userClick(f_, f_.LinksForm.CDend);
    emit handled();
  }
  e->accept();
}

}  // namespace quorvel
