// The window over the model: the person's input reaches the handlers and the model's changes
// reach the widgets, drawn as described; the form keeps its proportions at any size; assistive
// technology finds a name and a role for every control; whole matches are played with the
// keyboard alone. Virtual time is driven by pump(), never the wall clock.
#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleValueInterface>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollBar>
#include <QTimer>
#include <QWindow>
#include <QtTest>
#include <cmath>
#include <functional>
#include <memory>

#include "events/events.h"
#include "links_window.h"
#include "match/match.h"
#include "match/pitch.h"
#include "match_window.h"
#include "pictures.h"
#include "ui/ui.h"

using namespace quorvel;

namespace {

// A fresh form and its window at the natural size (scale 1: 15 twips to the pixel), active.
struct Game {
  Game() : f(newMatchForm(3)), w(std::make_unique<MatchWindow>(*f)) {
    w->resize(w->naturalSize());
    w->show();
    w->activateWindow();
  }
  template <typename T = QWidget>
  T* widget(const std::string& name) {
    return qobject_cast<T*>(w->widgetFor(name));
  }
  // Where piece `c` (a player, the ball) is painted, and whether it is.
  QRect pieceRect(const Control& c) const {
    const PiecesView* layer = w->pieces();
    for (int i = 0; i < layer->count(); ++i)
      if (&layer->picture(i) == &c) return layer->shown(i) ? layer->rectOf(i) : QRect();
    return {};
  }
  QString focusName() const {
    return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
  }
  // Keys as a person types them: to the window, which hands them to the focused widget.
  void key(Qt::Key k, char typed = 0) {
    QTest::keyClick(w->windowHandle(), k, Qt::NoModifier, typed);
    QCoreApplication::processEvents();
  }
  void type(char c) { key(static_cast<Qt::Key>(c), c); }
  // Tab until `name` has the focus; false when the chain never reaches it.
  bool tabTo(const QString& name) {
    for (int n = 0; n < 60 && focusName() != name; ++n) key(Qt::Key_Tab);
    return focusName() == name;
  }
  // Lets the players walk to their places after Start.
  void walk() {
    for (int tick = 0; tick < 4000 && f->TimPlace.Enabled(); ++tick) w->pump(15);
  }
  std::unique_ptr<MatchForm> f;
  std::unique_ptr<MatchWindow> w;  // goes before the form it shows
};

// What window `w` presents, read from Qt as assistive technology and Tab meet it, in the lines
// of the view's presentation(): each control on show, the Tab stops, the focus.
QStringList presented(FormWindow& w, const FormView& view) {
  auto roleOf = [](QAccessibleInterface* a, const QWidget* widget) -> QString {
    static const QHash<QAccessible::Role, QString> kRoles = {
        {QAccessible::Button, "button"},     {QAccessible::CheckBox, "check box"},
        {QAccessible::RadioButton, "radio"}, {QAccessible::EditableText, "entry"},
        {QAccessible::ScrollBar, "slider"},  {QAccessible::Slider, "slider"},
        {QAccessible::Grouping, "group"},    {QAccessible::Graphic, "graphic"}};
    if (a->role() == QAccessible::StaticText)
      return qobject_cast<const QLabel*>(widget) != nullptr ? "label" : "text";
    return kRoles.value(a->role(), QString::number(a->role()));
  };
  QStringList lines;
  const PiecesView* layer = w.pieces();
  for (const ControlView& v : view.controls()) {
    QAccessibleInterface* a = nullptr;
    const QWidget* widget = w.widgetFor(v.control->name);
    if (widget != nullptr) a = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
    for (int i = 0; layer != nullptr && widget == nullptr && i < layer->count(); ++i)
      if (&layer->picture(i) == v.control)
        a = QAccessible::queryAccessibleInterface(const_cast<PiecesView*>(layer))->child(i);
    if (a == nullptr || a->state().invisible) continue;
    const int checked = a->state().checkable ? (a->state().checked ? 1 : 0) : -1;
    lines << QString::fromStdString(v.control->name) + "|" + roleOf(a, widget) + "|" +
                 a->text(QAccessible::Name) + "|" + (a->state().disabled ? "0" : "1") + "|" +
                 QString::number(checked);
  }
  // Tab's way through the focus chain, from the window.
  QString tab = "tab|";
  for (QWidget* k = w.nextInFocusChain(); k != &w; k = k->nextInFocusChain())
    if ((k->focusPolicy() & Qt::TabFocus) && k->isVisible() && k->isEnabled())
      tab += k->objectName() + " ";
  lines << tab;
  const QWidget* focus = QApplication::focusWidget();
  lines << "focus|" + (focus != nullptr ? focus->objectName() : QString());
  return lines;
}

// Every line where what the window presents differs from what the view says it should.
QString partedFromTheView(FormWindow& w, FormView& view) {
  QStringList expected;
  for (const std::string& line : presentation(view)) expected << QString::fromStdString(line);
  const QStringList got = presented(w, view);
  QString parted;
  for (const QString& line : expected)
    if (!got.contains(line)) parted += "\n  expected " + line;
  for (const QString& line : got)
    if (!expected.contains(line)) parted += "\n  got      " + line;
  return parted;
}

// Hands the next message box to `answer` once it is up.
void onNextBox(std::function<void(QMessageBox*)> answer) {
  QTimer::singleShot(0, [answer] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return onNextBox(answer);  // not up yet
    answer(box);
  });
}

// Shown as the model has it: visible itself and inside visible containers.
bool shownInModel(const Control& c) {
  for (const Control* k = &c; k != nullptr; k = k->parent)
    if (!k->Visible) return false;
  return true;
}

QRect atScaleOne(const Control& c) {
  return QRect(qRound(c.Left / 15), qRound(c.Top / 15), qRound(c.Width / 15),
               qRound(c.Height / 15));
}

int firstFlag(const MatchForm& f) {
  for (int d = 0; d < 8; ++d)
    if (f.CDdest[d].Visible) return d;
  return -1;
}

// Where the window as its partial repaints built it up (the offscreen screen's copy of it)
// differs from the window painted afresh: the first pixel and the rectangle round them all.
QString unlikeAFreshPaint(QWidget& w) {
  QCoreApplication::processEvents();
  const QImage shown = w.screen()->grabWindow(w.winId()).toImage();
  const QImage fresh = w.grab().toImage();
  if (shown == fresh) return {};
  QRect differs;
  QPoint first;
  for (int y = 0; y < std::max(shown.height(), fresh.height()); ++y)
    for (int x = 0; x < std::max(shown.width(), fresh.width()); ++x)
      if (shown.pixel(x, y) != fresh.pixel(x, y)) {
        if (differs.isNull()) first = QPoint(x, y);
        differs |= QRect(x, y, 1, 1);
      }
  return QString::asprintf(
      "shown %s, painted afresh %s at (%d, %d), the first pixel that "
      "differs; all within %d,%d %dx%d",
      qPrintable(QColor(shown.pixel(first)).name()), qPrintable(QColor(fresh.pixel(first)).name()),
      first.x(), first.y(), differs.x(), differs.y(), differs.width(), differs.height());
}

}  // namespace

class WindowTest : public QObject {
  Q_OBJECT

 private slots:
  void showsEveryControlOfTheLayoutAndTheModelsChanges() {
    Game g;
    QVERIFY(QTest::qWaitForWindowActive(g.w.get()));
    int shown = 0;
    forEachControl(*g.f, [&](Control& c) {
      if (c.name.rfind("LinksForm.", 0) == 0 || c.name.rfind("Tnum(", 0) == 0 ||
          c.name.rfind("Di(", 0) == 0)
        return;
      if (indexIn(g.f->Player, c) >= 0 || &c == &g.f->Ball) {  // painted on the layer
        QCOMPARE(g.pieceRect(c).isValid(), shownInModel(c));
        return;
      }
      QWidget* w = g.w->widgetFor(c.name);
      QVERIFY2(w != nullptr, c.name.c_str());
      QCOMPARE(w->isVisible(), shownInModel(c));
      QCOMPARE(w->toolTip(), QString::fromStdString(c.ToolTipText));
      if (c.Visible) ++shown;
    });
    QVERIFY(shown > 50);
    // Pieces on the pitch stand exactly where their twips say; in a frame, at the frame's own.
    QCOMPARE(g.pieceRect(g.f->Player[5]), atScaleOne(g.f->Player[5]));
    QCOMPARE(g.widget("OPForm(0)")->parentWidget(), g.widget("Fra1"));

    // The model's changes show, once a tick that may change what is on show has run.
    g.f->CDgo.Caption = "Again";
    g.w->pump(15);  // only the start-up count ticks: nothing is looked at
    QCOMPARE(g.widget<QPushButton>("CDgo")->text(), QStringLiteral("Start"));
    g.w->pump(1000);  // the team panel's tick
    QCOMPARE(g.widget<QPushButton>("CDgo")->text(), QStringLiteral("Again"));
    g.f->TXoner.Visible = true;
    g.f->Goals[1].BackColor = RGB(10, 20, 30);
    g.f->Chq.Value = 1;
    g.f->Fra2.Visible = false;       // a hidden frame hides what it holds
    g.f->FrameMode.Enabled = false;  // a disabled one disables it
    g.f->Cdice.Enabled = false;
    g.f->Ball.Left += 900;
    g.f->ActiveControl = "CDhelp";
    g.f->BackColor = RGB(200, 10, 10);
    g.w->refresh();
    const QString parted = partedFromTheView(*g.w, g.w->view());  // shown, enabled, ticked, focus
    QVERIFY2(parted.isEmpty(), qPrintable(parted));
    QCOMPARE(g.widget("Goals(1)")->palette().color(QPalette::Base), QColor(10, 20, 30));
    QCOMPARE(g.pieceRect(g.f->Ball), atScaleOne(g.f->Ball));
    QCOMPARE(g.w->grab().toImage().pixelColor(2, g.w->height() - 2), QColor(200, 10, 10));

    // The die shows the face the model names; a swatch and its side's shirts their colour.
    const QImage blank = g.widget("Cdice")->grab().toImage();
    g.f->Cdice.Image = "die6";
    g.f->ColRed[0] = 0, g.f->ColGreen[0] = 126, g.f->ColBlue[0] = 0;
    Rainbow(*g.f);
    g.w->refresh();
    QVERIFY(g.widget("Cdice")->grab().toImage() != blank);
    QCOMPARE(g.widget("RainB(0)")->grab().toImage().pixelColor(4, 4), QColor(0, 126, 0));
    const QColor shirt = g.w->grab(g.pieceRect(g.f->Player[2])).toImage().pixelColor(14, 40);
    QVERIFY2(qAbs(shirt.green() - 126) < 30 && shirt.red() < 30 && shirt.blue() < 30,
             qPrintable(shirt.name()));
    // The icon is quorvel.svg, built into the program: a resource left out draws nothing.
    QCOMPARE(appIcon().pixmap(64, 64).toImage().pixelColor(32, 32).alpha(), 255);
  }

  void inputReachesTheHandlers() {
    Game g;
    std::string opened;
    g.f->platform.openUrl = [&opened](const std::string& url) {
      opened = url;
      return true;
    };
    QWidget* title = g.widget("Banner(0)");
    QCOMPARE(g.w->childAt(title->geometry().center()), g.widget("Grass"));  // under the pitch
    auto* bar = g.widget<QScrollBar>("Vai");
    bar->setValue(1000);  // as a drag of the thumb does
    QCOMPARE(g.f->Vai.Value, 1000);
    bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
    QCOMPARE(g.f->Vai.Value, 1250);
    // A box the game unticks at once (a substitute before any match) is not left ticked.
    QTest::mouseClick(g.widget("CHsub(0)"), Qt::LeftButton);
    QVERIFY(!g.widget<QCheckBox>("CHsub(0)")->isChecked());
    g.f->Rnd.force({0.0, 0.0});
    QTest::mouseClick(g.widget("CDgo"), Qt::LeftButton);
    g.walk();
    QVERIFY(!g.widget("CDgo")->isEnabled());
    QCOMPARE(g.w->focusWidget(), g.widget("cdr"));  // as the model says
    // The banner has come up beside the pitch and opens its page, but not through a player
    // standing on it.
    QCOMPARE(g.w->childAt(title->geometry().center()), title);
    Picture& keeper = g.f->Player[1];
    const double keeperLeft = keeper.Left, keeperTop = keeper.Top;
    keeper.Left = g.f->Banner[0].Left, keeper.Top = g.f->Banner[0].Top;
    g.w->refresh();
    QTest::mouseClick(title, Qt::LeftButton, {}, QPoint(5, 5));
    QVERIFY(opened.empty());
    keeper.Left = keeperLeft, keeper.Top = keeperTop;
    g.w->refresh();
    QTest::mouseClick(title, Qt::LeftButton, {}, QPoint(5, 5));
    QCOMPARE(opened, g.f->LastPage);
    QVERIFY(!opened.empty());

    // A typed 5 rolls the die whatever has the focus, and the box gets it too.
    auto* name = g.widget<QLineEdit>("Team(2)");
    name->setFocus();
    QTest::keyClick(g.w->windowHandle(), '5');
    QCOMPARE(g.f->DiceReady, Single(-1));
    QCOMPARE(g.f->Team[2].Text, std::string("Team 25"));
    QCoreApplication::processEvents();  // the views catch up
    QCOMPARE(g.w->focusWidget(), g.widget("Cdice"));
    // The flags the roll offers take a click.
    const int k = firstFlag(*g.f);
    QVERIFY(k >= 0);
    QTest::mouseClick(g.widget("CDdest(" + std::to_string(k) + ")"), Qt::LeftButton);
    QCOMPARE(g.f->KickFlag, Integer(k));  // the kick is in flight

    // Check boxes and option buttons change through the model, and take the model's focus.
    QTest::mouseClick(g.widget("Ch50"), Qt::LeftButton);
    QCOMPARE(g.f->Ch50.Value, 1);
    QVERIFY(g.widget<QCheckBox>("Ch50")->isChecked());
    QCOMPARE(g.f->ActiveControl, std::string("Ch50"));
    QTest::mouseClick(g.widget("OPForm(3)"), Qt::LeftButton);
    QVERIFY(g.f->OPForm[3].Value && !g.f->OPForm[0].Value);
    QVERIFY(!g.widget<QRadioButton>("OPForm(0)")->isChecked());
  }

  void typingIsNeverOverwrittenBySync() {
    Game g;
    auto* name = g.widget<QLineEdit>("Team(1)");
    name->selectAll();
    QTest::keyClicks(name, "Rovers");
    QCOMPARE(g.f->Team[1].Text, std::string("Rovers"));
    name->setCursorPosition(2);
    g.w->pump(2000);  // the team panel ticks twice meanwhile
    QCOMPARE(name->text(), QStringLiteral("Rovers"));
    QCOMPARE(name->cursorPosition(), 2);
    // The model's own change does show; a locked box cannot be typed in.
    g.f->Team[1].Text = "Ajax Town";
    g.f->Team[1].Locked = true;
    g.w->refresh();
    QVERIFY(name->isReadOnly());
    QTest::keyClicks(name, "X");
    QCOMPARE(g.f->Team[1].Text, std::string("Ajax Town"));
    // A long name is shown whole, in a smaller font.
    const int natural = name->font().pixelSize();
    g.f->Team[1].Text = "Middleschester Athletic";
    g.w->refresh();
    QVERIFY(name->font().pixelSize() < natural);
    QVERIFY(name->fontMetrics().horizontalAdvance(name->text()) < name->width());
  }

  void messagesShowAsTheModelAsksWithNoLineWrapped() {
    Game g;
    QString text;
    QMessageBox::Icon icon = QMessageBox::Warning;
    int narrowest = 0;  // the room left beside the help's longest line
    auto inspect = [&](QMessageBox* box) {
      QCOMPARE(box->windowTitle(), QString::fromStdString(g.f->LastMessage.Title));
      text = box->text();
      icon = box->icon();
      auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
      narrowest = label->contentsRect().width();
      for (const QString& line : text.split(QLatin1Char('\n')))
        narrowest = std::min(narrowest, label->contentsRect().width() -
                                            label->fontMetrics().horizontalAdvance(line));
      box->button(QMessageBox::Ok)->click();
    };
    onNextBox(inspect);
    QTest::mouseClick(g.widget("CDhelp"), Qt::LeftButton);
    QCOMPARE(icon, QMessageBox::NoIcon);
    // the model's line breaks are real ones
    QCOMPARE(QString(text).replace(QLatin1Char('\n'), QLatin1Char('\r')),
             QString::fromStdString(g.f->LastMessage.Text));
    QVERIFY2(narrowest >= 0, "a line of the help wraps");
    // A browser that cannot start: the model's critical box.
    g.f->platform.openUrl = [](const std::string&) { return false; };
    onNextBox(inspect);
    QTest::mouseClick(g.widget("Command1"), Qt::LeftButton);
    QCOMPARE(icon, QMessageBox::Critical);
  }

  void timeStandsStillUnderAMessageBoxAndGoesOnFromWhereItWas() {
    // On the wall clock, as the game runs: the walk onto the pitch is under way when Help opens.
    Game g;
    g.w->startClock();
    QTest::mouseClick(g.widget("CDgo"), Qt::LeftButton);
    QTest::qWait(150);
    QVERIFY(g.f->TimPlace.Enabled());
    constexpr int kUpMs = 600;  // how long the box stays up
    Millis opened = -1, closing = -1;
    double walkerOpened = 0, walkerClosing = 0;
    onNextBox([&](QMessageBox* box) {
      opened = g.f->Sched.now();
      walkerOpened = g.f->Player[1].Left + g.f->Player[1].Top;
      QTimer::singleShot(kUpMs, box, [&, box] {
        closing = g.f->Sched.now();
        walkerClosing = g.f->Player[1].Left + g.f->Player[1].Top;
        box->button(QMessageBox::Ok)->click();
      });
    });
    QTest::mouseClick(g.widget("CDhelp"), Qt::LeftButton);
    QVERIFY(opened >= 0 && closing >= 0);
    QCOMPARE(closing, opened);  // no tick ran while the box was up
    QCOMPARE(walkerClosing, walkerOpened);
    QTest::qWait(60);
    const Millis on = g.f->Sched.now() - closing;
    // It goes on, by the time since the box closed, not by the time it was up as well.
    QVERIFY2(on > 0 && on < kUpMs / 2, qPrintable(QString("%1 ms on after the box").arg(on)));
  }

  void scalingKeepsProportionsDownToReadableTexts() {
    Game g;
    const QFont natural = g.widget("Team(1)")->font();
    g.w->resize(2496, 1536);
    QCoreApplication::processEvents();
    QCOMPARE(g.w->scale(), 2.0);
    QCOMPARE(g.widget("Grass")->geometry(), QRect(62, 254, 1924, 964));
    QCOMPARE(g.widget("Team(1)")->font().pixelSize(), natural.pixelSize() * 2);
    // A wide window: the form is as high as the window and centred across it.
    g.w->resize(2000, 768);
    QCoreApplication::processEvents();
    QCOMPARE(g.w->formArea(), QRectF((2000 - 1248) / 2.0, 0, 1248, 768));
    QCOMPARE(g.widget("Grass")->geometry(), QRect(31 + 376, 127, 962, 482));
    g.w->resize(200, 100);  // the window stops at its minimum
    QCoreApplication::processEvents();
    QVERIFY(g.w->width() > 200);
    for (QWidget* w : g.w->findChildren<QWidget*>()) {
      const bool text = qobject_cast<QAbstractButton*>(w) != nullptr ||
                        qobject_cast<QLineEdit*>(w) != nullptr ||
                        qobject_cast<QLabel*>(w) != nullptr;
      if (text && w->isVisible()) QVERIFY2(w->font().pixelSize() >= 9, qPrintable(w->objectName()));
    }
  }

  // A moving picture's pixel size comes from its own size, never from where it stands, so that
  // its cached picture lives the whole match: checked on a screen where the scale is not round.
  void whatIsPaintedIsWhatIsThere() {
    Game g;
    g.w->resize(g.w->naturalSize() * 0.974);  // on a scale that is not round
    QVERIFY(QTest::qWaitForWindowExposed(g.w.get()));
    MatchForm& f = *g.f;
    QString unlike;  // the first moment that was not painted as afresh
    auto check = [&](const char* what) {
      if (!unlike.isEmpty()) return;
      const QString d = unlikeAFreshPaint(*g.w);
      if (!d.isEmpty())
        unlike = QString::asprintf("%s, after %g kicks, at %s, tick %lld:\n  ", what,
                                   f.KickCount[1] + f.KickCount[2], f.TXtim.Text.c_str(),
                                   static_cast<long long>(f.Sched.now() / 15)) +
                 d;
    };
    check("the teams waiting below the pitch");
    f.Rnd.force({0.0, 0.0});
    QTest::mouseClick(g.widget("CDgo"), Qt::LeftButton);
    bool substituted = false, slid = false;
    auto scored = [&f] { return f.Goals[1].Text != "0" || f.Goals[2].Text != "0"; };
    // Towards the right-hand goal, to see a shot into it soon.
    auto toward = [&f](int d) { return f.CDdest[d].Left - std::abs(f.CDdest[d].Top - kCentreTop); };
    // Until the first goal is counted and the walk back to kick off is over.
    for (int tick = 0; tick < 20000 && unlike.isEmpty() && !(scored() && !f.TimPlace.Enabled());
         ++tick) {
      const bool still =
          f.KickFlag == -1 && !f.TimPlace.Enabled() && !f.TimSub.Enabled() && !f.TimSc.Enabled();
      if (still && f.DiceReady == kDiceReady && f.KickCount[1] + f.KickCount[2] >= 4 &&
          !substituted && f.TeamTurn == kLeftSide) {
        QTest::mouseClick(g.widget("CHsub(0)"), Qt::LeftButton);
        QVERIFY(f.TimSub.Enabled());
        substituted = true;
        check("a substitute coming on");
      } else if (still && f.DiceReady == kDiceReady) {
        g.type(static_cast<char>(kRollKey));
      } else if (still && firstFlag(f) >= 0) {
        int best = firstFlag(f);
        for (int d = 0; d < 8; ++d)
          if (f.CDdest[d].Visible && toward(d) > toward(best)) best = d;
        g.type(static_cast<char>(kFlagKeys[best]));
      }
      g.w->pump(15);
      QCoreApplication::processEvents();
      // Often while a substitute crosses the pitch's edge or a shot flies in, else now and then.
      const bool crossing = f.TimSub.Enabled() && f.SubTicks < 80;
      const bool shot = f.GoalFlag > -1 && f.KickFlag != -1;
      const bool sliding = f.ContestWin != kNoContest && f.KickFlag != -1;
      // Where the name has slid from, only the window's ground: its widget there paints nothing.
      const QWidget* name = g.widget("Team(1)");
      if (sliding && !slid && g.w->pixelRect(f.Team[1]).left() >= name->x() + 2) {
        QCOMPARE(g.w->grab().toImage().pixelColor(name->x(), name->y() + name->height() / 2),
                 toQColor(f.BackColor));
        slid = true;
      }
      if (tick % (crossing || shot || sliding ? 6 : 100) == 0)
        check(crossing               ? "a substitute walking on"
              : shot                 ? "a shot into a goal"
              : sliding              ? "the names and scores sliding after a 50/50"
              : f.TimSc.Enabled()    ? "a goal's celebration"
              : f.TimPlace.Enabled() ? "a walk"
                                     : "a kick or the ball at its owner's feet");
    }
    QVERIFY2(unlike.isEmpty(), qPrintable(unlike));
    QVERIFY(substituted && scored() && slid);
  }

  // The page is checked against the same view, so that both fronts present one thing.
  void presentsWhatTheViewSaysAtEveryMoment() {
    Game g;
    QVERIFY(QTest::qWaitForWindowActive(g.w.get()));
    auto check = [&](const char* moment) {
      const QString parted = partedFromTheView(*g.w, g.w->view());
      QVERIFY2(parted.isEmpty(), qPrintable(QString(moment) + ":" + parted));
    };
    check("at load");
    g.key(Qt::Key_Space);  // Start
    g.walk();
    check("after Start");
    g.f->Rnd.force({(4 - 0.5) / 6});
    g.type('5');
    check("after a roll");
    g.type(static_cast<char>('0' + 8));
    for (int tick = 0; tick < 4000 && g.f->KickFlag != -1; ++tick) g.w->pump(15);
    check("after a kick");
    QVERIFY(g.tabTo(QStringLiteral("CDend")));
    g.key(Qt::Key_Space);  // Exit: the closing window
    QVERIFY(g.w->links().isVisible());
    const QString parted = partedFromTheView(g.w->links(), g.w->links().view());
    QVERIFY2(parted.isEmpty(), qPrintable("after Exit:" + parted));
  }

  // Each control's name, role and Tab stop against the view: presentsWhatTheViewSaysAtEveryMoment.
  void thePiecesAndActionsAreInTheTree() {
    Game g;
    QVERIFY(QTest::qWaitForWindowActive(g.w.get()));
    g.f->Rnd.force({0.0, 0.0});
    g.key(Qt::Key_Space);  // Start: where the window opens, its focus
    g.walk();
    g.type('5');  // the flags are out: they are in the tree too

    // The pieces painted on one layer are in the tree too, each where it is painted.
    const PiecesView& layer = *g.w->pieces();
    auto* pieces = QAccessible::queryAccessibleInterface(const_cast<PiecesView*>(&layer));
    QCOMPARE(pieces->childCount(), 24);  // the players 0..22 and the ball
    QAccessibleInterface* ball = pieces->child(23);
    QCOMPARE(ball->text(QAccessible::Name), QStringLiteral("Ball"));
    QCOMPARE(ball->rect(),
             QRect(layer.mapToGlobal(layer.rectOf(23).topLeft()), layer.rectOf(23).size()));
    QCOMPARE(pieces->childAt(ball->rect().center().x(), ball->rect().center().y()), ball);

    // The press action is a click: a swatch changes its colour in the model.
    const Colour before = g.f->RainB[3].BackColor;
    QAccessible::queryAccessibleInterface(g.widget("RainB(3)"))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(g.f->RainB[3].BackColor != before);
    // The scroll bars say their value (their names, roles and the rest: the parity test).
    auto* iq = QAccessible::queryAccessibleInterface(g.widget("Hai"));
    QCOMPARE(iq->valueInterface()->currentValue().toInt(), g.f->Hai.Value);
    // The roll was told on the news line, whose name is what a screen reader hears.
    auto* news = QAccessible::queryAccessibleInterface(const_cast<QLabel*>(&g.w->news()));
    QVERIFY2(news->text(QAccessible::Name).contains(QStringLiteral(" rolled ")),
             qPrintable(news->text(QAccessible::Name)));
  }

  void aWholeMatchIsPlayedWithTheKeyboardAloneInEachMode() {
    for (int mode = 0; mode < 3; ++mode) {
      Game g;
      QVERIFY(QTest::qWaitForWindowActive(g.w.get()));
      // Settings: the mode with the arrow keys inside its group, a formation, Quickplay.
      QVERIFY(g.tabTo(QStringLiteral("OpMode(0)")));
      for (int k = 0; k < mode; ++k) g.key(Qt::Key_Down);
      QVERIFY(g.f->OpMode[mode].Value);
      QVERIFY(g.tabTo(QStringLiteral("OPForm(0)")));
      g.key(Qt::Key_Right);  // to "Norm", and selects it
      QVERIFY(g.f->OPForm[1].Value);
      QVERIFY(g.tabTo(QStringLiteral("Chq")));
      g.key(Qt::Key_Space);
      QCOMPARE(g.f->Chq.Value, 1);
      if (mode == 0) {  // Help opens, and Escape closes it
        QVERIFY(g.tabTo(QStringLiteral("CDhelp")));
        onNextBox([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Escape); });
        g.key(Qt::Key_Space);
        QVERIFY(!g.f->LastMessage.Text.empty());
        g.w->activateWindow();  // as the window manager does once the box has gone
        QVERIFY(QTest::qWaitForWindowActive(g.w.get()));
        QCOMPARE(g.focusName(), QStringLiteral("CDhelp"));
      }
      QVERIFY(g.tabTo(QStringLiteral("CDgo")));
      g.key(Qt::Key_Space);
      QCOMPARE(g.f->GameOn, kGameOn);

      bool substituted = false;
      int kicks = 0;
      for (int step = 0; step < 200000 && g.f->GameEnd.empty(); ++step) {
        MatchForm& f = *g.f;
        const bool left = f.TeamTurn == kLeftSide;
        const bool computer = mode == 2 && !left;
        const bool ready = f.DiceReady == kDiceReady && !f.TimPlace.Enabled() &&
                           !f.TimSub.Enabled() && !f.TimSc.Enabled();
        // The left side uses the mouse in "Mouse vs Keys": the keyboard stands in for it
        // through the focus, the die and the flags pressed with Space.
        const bool byFocus = (mode == 1 && left) || (mode == 2 && kicks % 2 == 0);
        if (!computer && ready && left && !substituted && f.ClockMin >= 30) {
          substituted = true;
          QVERIFY(g.tabTo(QStringLiteral("CHsub(0)")));
          g.key(Qt::Key_Space);
          QVERIFY(f.TimSub.Enabled());
        } else if (!computer && ready) {
          if (byFocus) {
            QVERIFY(g.tabTo(QStringLiteral("Cdice")));
            g.key(Qt::Key_Space);
          } else {
            g.type(static_cast<char>(kRollKey));
          }
          QCOMPARE(f.DiceReady, kDiceRolled);
        } else if (!computer && f.KickFlag == -1 && firstFlag(f) >= 0) {
          if (byFocus) {
            g.key(Qt::Key_Tab);  // from the die to the first flag, clockwise from up
            QVERIFY(g.focusName().startsWith(QStringLiteral("CDdest(")));
            g.key(kicks % 4 == 0 ? Qt::Key_Right : Qt::Key_Left);
            g.key(Qt::Key_Space);
          } else {
            g.type(static_cast<char>(kFlagKeys[firstFlag(f)]));
          }
          QVERIFY2(f.KickFlag != -1,
                   qPrintable(QStringLiteral("mode %1, kick %2").arg(mode).arg(kicks)));
          ++kicks;
        } else {
          g.w->pump(250);
        }
      }
      QCOMPARE(g.f->GameEnd, std::string("ended"));
      QCOMPARE(g.f->ClockMin, 90.0);
      QVERIFY(substituted);
      if (mode == 2) {  // Exit, and Escape closes the closing window: the program ends
        QVERIFY(g.tabTo(QStringLiteral("CDend")));
        g.key(Qt::Key_Space);
        QVERIFY(g.w->links().isVisible());
        QCOMPARE(g.w->links().widgetFor("LinksForm.Picture1")->isVisible(),
                 g.f->LinksForm.Picture1.Visible);
        QTest::keyClick(&g.w->links(), Qt::Key_Escape);
        QVERIFY(g.f->Ended);
      }
    }
  }
};

QTEST_MAIN(WindowTest)
#include "window_test.moc"
