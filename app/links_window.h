// The closing window shown after Exit: one of two pictures that link to the maker's pages, a
// button to the web site and the Exit that ends the program.
#pragma once

#include "control_views.h"
#include "form_window.h"

namespace quorvel {

class LinksWindow : public FormWindow {
  Q_OBJECT
 public:
  explicit LinksWindow(MatchForm& f);

 protected:
  void mousePressEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;  // Escape closes it, as its Exit does

 private:
  ClickTracker click_;  // on the background
};

}  // namespace quorvel
