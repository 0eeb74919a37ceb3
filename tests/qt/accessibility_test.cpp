// The window as assistive technology and the keyboard meet it: every control in the
// accessibility tree says what it is, every picture that can be clicked is a button that takes
// the focus and can be pressed, the match is told as it happens, and whole matches are played
// from Start to full time with the keyboard alone, in each mode.
#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleValueInterface>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>
#include <QWindow>
#include <QtTest>
#include <memory>

#include "events/events.h"
#include "links_window.h"
#include "match/match.h"
#include "match_window.h"
#include "ui/accessible_names.h"

using namespace quorvel;

namespace {

struct Game {
  Game() : f(newMatchForm(5)), w(std::make_unique<MatchWindow>(*f)) {
    w->resize(w->naturalSize());
    w->show();
    w->activateWindow();
  }
  QWidget* focus() const { return QApplication::focusWidget(); }
  QString focusName() const { return focus() != nullptr ? focus()->objectName() : QString(); }
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
  std::unique_ptr<MatchForm> f;
  std::unique_ptr<MatchWindow> w;
};

// Presses `k` in the next message box, once it is up.
void pressInNextBox(Qt::Key k) {
  QTimer::singleShot(0, [k] {
    QWidget* box = QApplication::activeModalWidget();
    if (box == nullptr) return pressInNextBox(k);
    QTest::keyClick(box, k);
  });
}

// Every interface of the tree under `root`, depth first.
void collect(QAccessibleInterface* root, QList<QAccessibleInterface*>& all) {
  for (int i = 0; i < root->childCount(); ++i) {
    QAccessibleInterface* child = root->child(i);
    all << child;
    collect(child, all);
  }
}

bool shows(const Control& c) {
  for (const Control* k = &c; k != nullptr; k = k->parent)
    if (!k->Visible || !k->Enabled) return false;
  return true;
}

}  // namespace

class AccessibilityTest : public QObject {
  Q_OBJECT

 private slots:
  void everyControlHasANameARoleAndClickablePicturesArePressableButtons() {
    Game g;
    QVERIFY(QTest::qWaitForWindowActive(g.w.get()));
    QCOMPARE(g.focusName(), QStringLiteral("CDgo"));  // where the window opens
    g.f->Rnd.force({0.0, 0.0});
    g.key(Qt::Key_Space);  // Start
    QCOMPARE(g.focusName(), QStringLiteral("cdr"));
    for (int tick = 0; tick < 4000 && g.f->TimPlace.Enabled(); ++tick) g.w->pump(15);
    g.type('5');  // the flags are out: they are in the tree too

    QList<QAccessibleInterface*> all;
    collect(QAccessible::queryAccessibleInterface(g.w.get()), all);
    int named = 0;
    for (QAccessibleInterface* a : all) {
      const QAccessible::State state = a->state();
      const QString what = a->object()->objectName() + " " + a->text(QAccessible::Name);
      if (state.invisible || state.disabled) continue;
      // A read-only box that shows nothing is no control (it holds a colour the panel uses).
      if (state.readOnly && a->role() == QAccessible::EditableText &&
          a->text(QAccessible::Value).isEmpty())
        continue;
      QVERIFY2(!a->text(QAccessible::Name).trimmed().isEmpty(), qPrintable(what));
      QVERIFY2(a->role() != QAccessible::NoRole && a->role() != QAccessible::Client,
               qPrintable(what));
      ++named;
    }
    QVERIFY2(named > 80, qPrintable(QString::number(named) + " of " + QString::number(all.size())));

    // Every picture a person can click: a focusable button that can be pressed, named by the
    // game's words.
    int pictures = 0;
    forEachControl(*g.f, [&](Control& c) {
      QWidget* w = g.w->widgetFor(c.name);
      const bool picture =
          c.kind == Kind::Picture ||
          (c.kind == Kind::CommandButton && !static_cast<CommandButton&>(c).Image.empty());
      if (w == nullptr || !picture || !c.Click || !shows(c)) return;
      QAccessibleInterface* a = QAccessible::queryAccessibleInterface(w);
      QVERIFY2(a->role() == QAccessible::Button, c.name.c_str());
      QVERIFY2(a->state().focusable, c.name.c_str());
      QVERIFY2(
          a->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()),
          c.name.c_str());
      QCOMPARE(a->text(QAccessible::Name), QString::fromStdString(accessibleName(*g.f, c)));
      ++pictures;
    });
    QVERIFY(pictures >= 10);  // the die, the 50/50 dice, the swatches, the banners, the flags
    auto* flag = QAccessible::queryAccessibleInterface(g.w->widgetFor("CDdest(2)"));
    QVERIFY(flag->text(QAccessible::Name).startsWith(QStringLiteral("Right")));

    // The press action is a click: a swatch changes its colour in the model.
    const Colour before = g.f->RainB[3].BackColor;
    QAccessible::queryAccessibleInterface(g.w->widgetFor("RainB(3)"))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(g.f->RainB[3].BackColor != before);
    // The scroll bars say what they set and its value; the option buttons their state.
    auto* iq = QAccessible::queryAccessibleInterface(g.w->widgetFor("Hai"));
    QVERIFY(iq->text(QAccessible::Name).contains(QStringLiteral("IQ")));
    QCOMPARE(iq->valueInterface()->currentValue().toInt(), g.f->Hai.Value);
    auto* free = QAccessible::queryAccessibleInterface(g.w->widgetFor("OpMode(0)"));
    QCOMPARE(free->role(), QAccessible::RadioButton);
    QVERIFY(free->state().checked);
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
        pressInNextBox(Qt::Key_Escape);
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
        QTest::keyClick(&g.w->links(), Qt::Key_Escape);
        QVERIFY(g.f->Ended);
      }
    }
  }

 private:
  static int firstFlag(const MatchForm& f) {
    for (int d = 0; d < 8; ++d)
      if (f.CDdest[d].Visible) return d;
    return -1;
  }
};

QTEST_MAIN(AccessibilityTest)
#include "accessibility_test.moc"
