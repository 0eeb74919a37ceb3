#include "links_window.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include "events/events.h"
#include "ui/layout.h"

namespace quorvel {

LinksWindow::LinksWindow(MatchForm& f) : FormWindow(f, FormWindowId::Closing) {
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

void LinksWindow::keyPressEvent(QKeyEvent* e) {
  // Escape presses what the view says it presses: the Exit.
  auto* exit = qobject_cast<QAbstractButton*>(widgetFor(view().escape()));
  if (e->key() == Qt::Key_Escape && exit != nullptr)
    exit->click();
  else
    FormWindow::keyPressEvent(e);
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
