// The main window: shows the whole MatchForm and forwards the person's input to it. It owns
// the closing window and the one pump that moves the model's virtual time to the wall clock,
// and gives the program its icon once its first frame is up.
// The pump sleeps until the next timer of the game is due, so a game at rest rests.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <memory>
#include <string>

#include "events/pace.h"
#include "form_window.h"
#include "links_window.h"
#include "ui/announcements.h"

class QLabel;

namespace quorvel {

class MatchWindow : public FormWindow {
  Q_OBJECT
 public:
  explicit MatchWindow(MatchForm& f);
  ~MatchWindow() override;

  // From now on the model keeps pace with the wall clock.
  void startClock();
  // Moves virtual time on by `ms` and, if a tick that may change what is on show ran, brings
  // both windows up to date: how tests drive time without a clock.
  void pump(Millis ms);
  // Brings both windows up to date with the model: visibility, widgets, focus.
  void refresh();

  LinksWindow& links() { return *links_; }
  // The line that tells the match in words; assistive technology hears each new text.
  const QLabel& news() const { return *news_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;
  void showEvent(QShowEvent* e) override;
  void resizeEvent(QResizeEvent* e) override;
  void closeEvent(QCloseEvent* e) override;

 private:
  void tick();
  // Brings virtual time up to the wall clock, running the ticks due meanwhile.
  void catchUp();
  // After ticks: brings both windows up to date, unless no tick since the scheduler's count
  // `shownBefore` could have changed what is on show; then only sets the next wake-up.
  void showTicks(std::int64_t shownBefore);
  // Sets the pump to wake when the next ticks must be served (as late as each one may be).
  void schedulePump();
  void showMessage(const Message& m);
  void applyFocus();
  // Tab goes through the controls in the order ui/tab_order.h gives, as in the page.
  void orderTabs();
  // Tells what happened since the last announcement, if anything did.
  void announce();
  void placeNews();

  std::unique_ptr<LinksWindow> links_;
  QTimer pump_;
  QElapsedTimer clock_;  // the wall clock that virtual time follows, from the first show
  Pace pace_;            // virtual time kept to clock_, standing still under a message box
  bool shown_;           // f.Visible as last acted on
  bool linksShown_;
  bool iconSet_ = false;  // the program's icon, set after the first frame
  std::string lastActive_;
  Colour lastBack_;
  Announcer announcer_;
  QLabel* news_;
};

}  // namespace quorvel
