#include "match_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QKeyEvent>
#include <QMessageBox>
#include <QScreen>
#include <QUrl>
#include <QWindow>
#include <algorithm>

#include "events/events.h"
#include "pictures.h"

namespace quorvel {

namespace {

constexpr double kClientWidth = 18720;
constexpr double kClientHeight = 11520;
constexpr int kPumpMs = 4;
// After a long stall (a suspended laptop) the game resumes instead of replaying hours of ticks.
constexpr qint64 kLongestCatchUp = 5000;

bool onLinksForm(const MatchForm& f, const Control& c) {
  const auto& l = f.LinksForm;
  return &c == &l.Picture1 || &c == &l.Picture2 || &c == &l.Command1 || &c == &l.CDend;
}

}  // namespace

MatchWindow::MatchWindow(MatchForm& f)
    : FormWindow(f, kClientWidth, kClientHeight),
      shown_(f.Visible),
      linksShown_(f.LinksForm.Visible),
      lastBack_(f.BackColor) {
  setWindowTitle(QStringLiteral("Free Quorvel"));
  setWindowIcon(appIcon());

  // Containers first, so that what they hold can be placed inside them.
  forEachControl(f, [this](Control& c) {
    if (c.kind == Kind::Frame && !onLinksForm(f_, c)) bind(c);
  });
  forEachControl(f, [this](Control& c) {
    if (c.kind == Kind::Frame || onLinksForm(f_, c)) return;
    if (indexIn(f_.Tnum, c) >= 0) return;  // painted as part of its player
    if (indexIn(f_.Di, c) >= 0) return;    // a store of faces, never shown
    const int player = indexIn(f_.Player, c);
    QWidget* w = bind(c, player >= 0 ? &f_.Tnum[player] : nullptr);
    if (indexIn(f_.Banner, c) >= 0 || indexIn(f_.RainB, c) >= 0)
      w->setCursor(Qt::PointingHandCursor);
  });
  // The banners wait under the pitch until they slide out below it.
  for (auto& banner : f.Banner)
    if (QWidget* w = widgetFor(banner.name)) w->lower();

  links_ = std::make_unique<LinksWindow>(f);
  links_->setWindowIcon(appIcon());
  connect(this, &FormWindow::handled, this, &MatchWindow::refresh);
  connect(links_.get(), &FormWindow::handled, this, &MatchWindow::refresh);

  f.platform.openUrl = [](const std::string& url) {
    return QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
  };
  f.platform.showMessage = [this](const Message& m) { showMessage(m); };
  f.platform.repaint = [this] {
    syncFromModel();
    if (isVisible()) repaint();
  };
  f.platform.quit = [] { QCoreApplication::quit(); };

  // Every typed character reaches the model whichever widget has the focus: watch the
  // window's keyboard input before Qt hands it to the focused widget.
  winId();
  windowHandle()->installEventFilter(this);

  pump_.setTimerType(Qt::PreciseTimer);
  connect(&pump_, &QTimer::timeout, this, &MatchWindow::tick);

  // Start at the natural size, or as large as fits on the screen, keeping proportions.
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    const QSize room = screen->availableGeometry().size() * 0.95;
    resize(naturalSize().scaled(naturalSize().boundedTo(room), Qt::KeepAspectRatio));
  }
  refresh();
}

MatchWindow::~MatchWindow() {
  pump_.stop();
  // The model outlives this window; it must not call into it any more.
  f_.platform.showMessage = nullptr;
  f_.platform.repaint = nullptr;
  f_.platform.quit = nullptr;
}

void MatchWindow::startClock() {
  clock_.start();
  lastWall_ = 0;
  pump_.start(kPumpMs);
}

void MatchWindow::tick() {
  const qint64 now = clock_.elapsed();
  const qint64 ms = std::min(now - lastWall_, kLongestCatchUp);
  lastWall_ = now;
  if (modal_ > 0 || f_.Ended) return;
  pump(ms);
}

void MatchWindow::pump(Millis ms) {
  if (ms > 0) f_.Sched.advance(ms);
  refresh();
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
}

void MatchWindow::applyFocus() {
  if (f_.ActiveControl == lastActive_) return;
  lastActive_ = f_.ActiveControl;
  QWidget* w = widgetFor(lastActive_);
  if (w != nullptr && w->isEnabled() && w->focusPolicy() != Qt::NoFocus)
    w->setFocus(Qt::OtherFocusReason);
}

void MatchWindow::showMessage(const Message& m) {
  QString text = QString::fromStdString(m.Text);
  text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  QWidget* owner = isVisible() ? static_cast<QWidget*>(this) : links_.get();
  QMessageBox box(m.critical ? QMessageBox::Critical : QMessageBox::NoIcon,
                  QString::fromStdString(m.Title), text, QMessageBox::Ok, owner);
  box.setTextFormat(Qt::PlainText);
  ++modal_;
  box.exec();
  --modal_;
  // The game stood still while the box was up; it goes on from where it was.
  if (clock_.isValid()) lastWall_ = clock_.elapsed();
}

bool MatchWindow::eventFilter(QObject* watched, QEvent* e) {
  if (watched == windowHandle() && e->type() == QEvent::KeyPress) {
    const QString typed = static_cast<QKeyEvent*>(e)->text();
    for (const QChar ch : typed)
      if (ch.unicode() > 0 && ch.unicode() < 256) userKey(f_, ch.unicode());
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
