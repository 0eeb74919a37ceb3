#include "match_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QRadioButton>
#include <QScreen>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <vector>

#include "events/events.h"
#include "pictures.h"
#include "ui/layout.h"
#include "view/tab_order.h"

namespace quorvel {

MatchWindow::MatchWindow(MatchForm& f)
    : FormWindow(f, FormWindowId::Main),
      pace_(f),
      shown_(f.Visible),
      linksShown_(f.LinksForm.Visible),
      lastBack_(f.BackColor),
      announcer_(f),
      news_(new QLabel(this)) {
  setWindowTitle(QStringLiteral("Free Quorvel"));
  // At the natural size, or as large as fits on the screen, keeping proportions: known before
  // the controls are made, so that each font is made once, at the size it shows.
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    const QSize room = screen->availableGeometry().size() * 0.95;
    resize(naturalSize().scaled(naturalSize().boundedTo(room), Qt::KeepAspectRatio));
  }
  fit();

  // Containers first, so that what they hold can be placed inside them; then the rest in the
  // view's order, which stacks the banners under the pitch until they slide out below it.
  for (const ControlView& v : view().controls())
    if (v.control->kind == Kind::Frame) bind(*v.control);
  for (const ControlView& v : view().controls()) {
    Control& c = *v.control;
    if (c.kind == Kind::Frame) continue;
    // The players and the ball move many times a second: they are painted, not widgets.
    if (v.piece) {
      bindPiece(static_cast<Picture&>(c), shirtNumberOf(f, c));
      continue;
    }
    QWidget* w = bind(c);
    if (v.role == Role::Button && c.kind == Kind::Picture) w->setCursor(Qt::PointingHandCursor);
  }
  // The pitch covers its whole rectangle (an opaque picture), so nothing under it is painted.
  standPiecesOn(f.Grass);

  links_ = std::make_unique<LinksWindow>(f);
  connect(this, &FormWindow::handled, this, &MatchWindow::refresh);
  connect(links_.get(), &FormWindow::handled, this, &MatchWindow::refresh);
  // Input lands at the moment it happens, not at the last tick the pump ran.
  connect(this, &FormWindow::aboutToHandle, this, &MatchWindow::catchUp);
  connect(links_.get(), &FormWindow::aboutToHandle, this, &MatchWindow::catchUp);

  f.platform.openUrl = [](const std::string& url) {
    return QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
  };
  f.platform.showMessage = [this](const Message& m) { showMessage(m); };
  f.platform.repaint = [this] {
    syncFromModel();
    // Halfway through a tick: what the rest of it changes is looked at once it has run.
    view().expectAnything();
    if (isVisible()) repaint();
  };
  f.platform.quit = [] { QCoreApplication::quit(); };

  // Every typed character reaches the model whichever widget has the focus: watch the
  // window's keyboard input before Qt hands it to the focused widget.
  winId();
  windowHandle()->installEventFilter(this);

  // Each tick says what it may change on show; after ticks the view looks only at that.
  f.Sched.watch([this](const Timer& t) { view().tickComing(t); });

  pump_.setTimerType(Qt::PreciseTimer);
  pump_.setSingleShot(true);
  connect(&pump_, &QTimer::timeout, this, &MatchWindow::tick);

  orderTabs();
  news_->setObjectName(QStringLiteral("News"));
  news_->setWordWrap(true);
  news_->setMargin(2);
  news_->hide();
  news_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  news_->setAccessibleDescription(QStringLiteral("What happens in the match"));

  // Never so small that a label is hard to read.
  const double smallest = legibleScale();
  setMinimumSize(static_cast<int>(std::ceil(naturalSize().width() * smallest)),
                 static_cast<int>(std::ceil(naturalSize().height() * smallest)));
  refresh();
}

MatchWindow::~MatchWindow() {
  pump_.stop();
  // The model outlives this window; it must not call into it any more.
  f_.Sched.watch(nullptr);
  f_.platform.showMessage = nullptr;
  f_.platform.repaint = nullptr;
  f_.platform.quit = nullptr;
}

void MatchWindow::startClock() {
  clock_.start();
  pace_.start(clock_.elapsed());
  schedulePump();
}

void MatchWindow::tick() {
  const std::int64_t shownBefore = f_.Sched.shownTicksRun();
  pace_.wake(clock_.elapsed());
  announce();
  showTicks(shownBefore);
}

void MatchWindow::showTicks(std::int64_t shownBefore) {
  // Ticks that change nothing on show (the start-up count) need no look at the widgets.
  if (f_.Sched.shownTicksRun() == shownBefore)
    schedulePump();
  else if (view().looksAtAllNext())
    refresh();
  else {
    syncTicked();
    schedulePump();
  }
}

void MatchWindow::catchUp() {
  if (!clock_.isValid()) return;
  pace_.catchUp(clock_.elapsed());
  announce();  // before the input that follows, which may make news of its own
}

void MatchWindow::schedulePump() {
  const Millis in = clock_.isValid() ? pace_.nextWakeIn(clock_.elapsed()) : -1;
  if (in < 0) {
    pump_.stop();  // a message box, or the end, restarts it
    return;
  }
  pump_.start(static_cast<int>(in));
}

void MatchWindow::pump(Millis ms) {
  const std::int64_t shownBefore = f_.Sched.shownTicksRun();
  if (ms > 0) f_.Sched.advance(ms);
  showTicks(shownBefore);
}

void MatchWindow::refresh() {
  if (f_.Visible != shown_) {
    shown_ = f_.Visible;
    setVisible(shown_);
  }
  if (f_.LinksForm.Visible != linksShown_) {
    linksShown_ = f_.LinksForm.Visible;
    links_->setVisible(linksShown_);
    if (linksShown_) links_->activateWindow();
  }
  if (f_.BackColor != lastBack_) {
    lastBack_ = f_.BackColor;
    update();
    links_->update();
  }
  syncFromModel();
  links_->syncFromModel();
  applyFocus();
  announce();
  schedulePump();
}

void MatchWindow::orderTabs() {
  std::vector<QWidget*> chain;
  for (const std::string& name : tabOrder(f_))
    if (QWidget* w = widgetFor(name)) chain.push_back(w);
  for (std::size_t i = 1; i < chain.size(); ++i) setTabOrder(chain[i - 1], chain[i]);
}

void MatchWindow::applyFocus() {
  // The focus is always shown, not only once Tab has been pressed: a person who cannot see
  // where a key will land cannot use the keyboard.
  setAttribute(Qt::WA_KeyboardFocusChange);
  QWidget* w = widgetFor(f_.ActiveControl);
  const bool moved = f_.ActiveControl != lastActive_;
  lastActive_ = f_.ActiveControl;
  if (w == nullptr || !w->isEnabled() || w->focusPolicy() == Qt::NoFocus) return;
  // Also when Qt handed the focus on from a widget the model hid or disabled (a flag once
  // kicked): it goes back where the model has it.
  if (moved || (w->isVisible() && focusWidget() != w)) w->setFocus(Qt::OtherFocusReason);
}

void MatchWindow::announce() {
  const std::string said = announcer_.update(f_);
  if (said.empty()) return;
  // A new text of a label is a new name to assistive technology, which it is told of.
  news_->setText(QString::fromStdString(said));
  news_->show();  // hidden until the first news: an empty label tells nothing
}

void MatchWindow::placeNews() {
  const PixelRect r = view().newsRect();
  news_->setGeometry(static_cast<int>(r.x), static_cast<int>(r.y), static_cast<int>(r.width),
                     static_cast<int>(r.height));
  QFont font = news_->font();
  font.setItalic(kNewsStyle.italic);
  font.setBold(kNewsStyle.bold);
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(view().newsFontPx()))));
  news_->setFont(font);
}

void MatchWindow::resizeEvent(QResizeEvent* e) {
  FormWindow::resizeEvent(e);
  placeNews();
}

void MatchWindow::showMessage(const Message& m) {
  const QString text = QString::fromStdString(messageLines(m.Text));
  QWidget* owner = isVisible() ? static_cast<QWidget*>(this) : links_.get();
  QMessageBox box(m.critical ? QMessageBox::Critical : QMessageBox::NoIcon,
                  QString::fromStdString(m.Title), text, QMessageBox::Ok, owner);
  box.setTextFormat(Qt::PlainText);
  // Each line of the text stays one line: the box would otherwise wrap at about 500 pixels.
  if (auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
    int widest = 0;
    for (const QString& line : text.split(QLatin1Char('\n')))
      widest = std::max(widest, label->fontMetrics().horizontalAdvance(line));
    label->setMinimumWidth(widest + 2 * label->margin() + 2 * label->frameWidth() + 1);
  }
  pace_.hold();
  box.exec();
  pace_.release(clock_.isValid() ? clock_.elapsed() : 0);
  schedulePump();
}

bool MatchWindow::eventFilter(QObject* watched, QEvent* e) {
  if (watched == windowHandle() && e->type() == QEvent::Expose && !iconSet_ &&
      windowHandle()->isExposed()) {
    // The icon is drawn at every size a window manager may ask for: once the first frame is
    // up, not before it. Every window of the program shows it, the closing window too.
    iconSet_ = true;
    QMetaObject::invokeMethod(
        this, [] { QApplication::setWindowIcon(appIcon()); }, Qt::QueuedConnection);
  }
  if (watched == windowHandle() && e->type() == QEvent::KeyPress) {
    const QString typed = static_cast<QKeyEvent*>(e)->text();
    if (!typed.isEmpty()) catchUp();
    for (const QChar ch : typed)
      if (reachesGame(ch.unicode())) userKey(f_, ch.unicode());
    // The widget that had the focus gets the key too, even when the handler moved the focus:
    // the views catch up once the key has been delivered.
    if (!typed.isEmpty())
      QMetaObject::invokeMethod(this, &MatchWindow::refresh, Qt::QueuedConnection);
    return false;
  }
  return FormWindow::eventFilter(watched, e);
}

void MatchWindow::showEvent(QShowEvent* e) {
  FormWindow::showEvent(e);
  lastActive_.clear();  // the focus asked for before the window was shown takes effect now
  applyFocus();
}

void MatchWindow::closeEvent(QCloseEvent* e) {
  // Closed from the title bar, not with Exit: the program ends without the closing window.
  if (f_.Visible) QCoreApplication::quit();
  e->accept();
}

}  // namespace quorvel
