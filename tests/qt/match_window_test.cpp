// The window's binding to the model: the person's input reaches the handlers, the model's
// changes reach the widgets, and the form keeps its proportions at any size. Virtual time is
// driven by pump(); nothing here waits on the wall clock.
#include "match_window.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTimer>
#include <QWindow>
#include <QtTest>
#include <functional>
#include <memory>

#include "events/events.h"
#include "links_window.h"
#include "match/match.h"
#include "ui/ui.h"

using namespace quorvel;

namespace {

// A fresh form and its window at the natural size (scale 1: 15 twips to the pixel).
struct Game {
  Game() : f(newMatchForm(3)), w(std::make_unique<MatchWindow>(*f)) {
    w->resize(w->naturalSize());
    w->show();
  }
  template <typename T = QWidget>
  T* widget(const std::string& name) {
    return qobject_cast<T*>(w->widgetFor(name));
  }
  // Starts a match with the left side kicking off and lets the players walk to their places.
  bool startAndWalk() {
    f->Rnd.force({0.0, 0.0});
    QTest::mouseClick(widget(f->CDgo.name), Qt::LeftButton);
    for (int tick = 0; tick < 4000 && f->TimPlace.Enabled(); ++tick) w->pump(15);
    return f->GameOn == kGameOn && !f->TimPlace.Enabled();
  }
  std::unique_ptr<MatchForm> f;
  std::unique_ptr<MatchWindow> w;  // goes before the form it shows
};

// Answers the next message box with OK, after letting `inspect` look at it.
void answerNextMessage(std::function<void(QMessageBox*)> inspect) {
  QTimer::singleShot(0, [inspect] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return answerNextMessage(inspect);  // not up yet
    inspect(box);
    box->button(QMessageBox::Ok)->click();
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

}  // namespace

class MatchWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void showsEveryControlOfTheLayoutAndTheModelsChanges() {
    Game g;
    int shown = 0;
    forEachControl(*g.f, [&](Control& c) {
      if (c.name.rfind("LinksForm.", 0) == 0 || c.name.rfind("Tnum(", 0) == 0 ||
          c.name.rfind("Di(", 0) == 0)
        return;
      QWidget* w = g.w->widgetFor(c.name);
      QVERIFY2(w != nullptr, c.name.c_str());
      QCOMPARE(w->isVisible(), shownInModel(c));
      QCOMPARE(w->toolTip(), QString::fromStdString(c.ToolTipText));
      if (c.Visible) ++shown;
    });
    QVERIFY(shown > 50);
    // Pieces on the pitch stand exactly where their twips say; in a frame, at the frame's own.
    QCOMPARE(g.widget("Player(5)")->geometry(), atScaleOne(g.f->Player[5]));
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
    g.f->Fra2.Visible = false;
    g.f->FrameMode.Enabled = false;
    g.f->Cdice.Enabled = false;
    g.f->Ball.Left += 900;
    g.f->ActiveControl = "CDhelp";
    g.f->BackColor = RGB(200, 10, 10);
    g.w->refresh();
    QVERIFY(g.widget("TXoner")->isVisible());
    QCOMPARE(g.widget("Goals(1)")->palette().color(QPalette::Base), QColor(10, 20, 30));
    QVERIFY(g.widget<QCheckBox>("Chq")->isChecked());
    QVERIFY(!g.widget("OPForm(13)")->isVisible());  // a hidden frame hides what it holds
    QVERIFY(!g.widget("Vai")->isEnabled());         // a disabled one disables it
    QVERIFY(!g.widget("Cdice")->isEnabled());
    QCOMPARE(g.widget("Ball")->geometry(), atScaleOne(g.f->Ball));
    QCOMPARE(g.w->focusWidget(), g.widget("CDhelp"));
    QCOMPARE(g.w->grab().toImage().pixelColor(2, g.w->height() - 2), QColor(200, 10, 10));

    // The die shows the face the model names; a swatch and its side's shirts their colour.
    const QImage blank = g.widget("Cdice")->grab().toImage();
    g.f->Cdice.Image = "die6";
    g.f->ColRed[0] = 0, g.f->ColGreen[0] = 126, g.f->ColBlue[0] = 0;
    Rainbow(*g.f);
    g.w->refresh();
    QVERIFY(g.widget("Cdice")->grab().toImage() != blank);
    QCOMPARE(g.widget("RainB(0)")->grab().toImage().pixelColor(4, 4), QColor(0, 126, 0));
    const QColor shirt = g.widget("Player(2)")->grab().toImage().pixelColor(14, 40);
    QVERIFY2(qAbs(shirt.green() - 126) < 30 && shirt.red() < 30 && shirt.blue() < 30,
             qPrintable(shirt.name()));
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
    QVERIFY(g.startAndWalk());
    QVERIFY(!g.widget("CDgo")->isEnabled());
    QCOMPARE(g.w->focusWidget(), g.widget("cdr"));  // as the model says
    QCOMPARE(g.widget("Player(9)")->geometry(), atScaleOne(g.f->Player[9]));
    // The banner has come up beside the pitch and opens its page.
    QCOMPARE(g.w->childAt(title->geometry().center()), title);
    QTest::mouseClick(title, Qt::LeftButton);
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
    // The flags the roll offers appear where the model has them and take a click.
    int offered = 0;
    for (int k = 0; k < 8; ++k) {
      auto* flag = g.widget("CDdest(" + std::to_string(k) + ")");
      QCOMPARE(flag->isVisible(), g.f->CDdest[k].Visible);
      if (flag->isVisible()) {
        ++offered;
        QCOMPARE(flag->geometry().center(), atScaleOne(g.f->CDdest[k]).center());
      }
    }
    QVERIFY(offered > 0);
    const int k = g.f->CDdest[0].Visible ? 0 : 4;  // up or down: one of them is offered
    QTest::mouseClick(g.widget("CDdest(" + std::to_string(k) + ")"), Qt::LeftButton);
    QCOMPARE(g.f->KickFlag, Integer(k));  // the kick is in flight

    // Check boxes and option buttons change through the model.
    QTest::mouseClick(g.widget("Ch50"), Qt::LeftButton);
    QCOMPARE(g.f->Ch50.Value, 1);
    QVERIFY(g.widget<QCheckBox>("Ch50")->isChecked());
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
    QString title, text;
    QMessageBox::Icon icon = QMessageBox::Warning;
    int narrowest = 0;  // the room left beside the help's longest line
    auto inspect = [&](QMessageBox* box) {
      title = box->windowTitle();
      text = box->text();
      icon = box->icon();
      auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
      narrowest = label->contentsRect().width();
      for (const QString& line : text.split(QLatin1Char('\n')))
        narrowest = std::min(narrowest, label->contentsRect().width() -
                                            label->fontMetrics().horizontalAdvance(line));
    };
    answerNextMessage(inspect);
    QTest::mouseClick(g.widget("CDhelp"), Qt::LeftButton);
    QCOMPARE(title, QString::fromStdString(g.f->LastMessage.Title));
    QCOMPARE(icon, QMessageBox::NoIcon);
    // the model's line breaks are real ones
    QCOMPARE(QString(text).replace(QLatin1Char('\n'), QLatin1Char('\r')),
             QString::fromStdString(g.f->LastMessage.Text));
    QVERIFY2(narrowest >= 0, "a line of the help wraps");
    // A browser that cannot start: the model's critical box.
    g.f->platform.openUrl = [](const std::string&) { return false; };
    answerNextMessage(inspect);
    QTest::mouseClick(g.widget("Command1"), Qt::LeftButton);
    QCOMPARE(title, QString::fromStdString(g.f->LastMessage.Title));
    QCOMPARE(icon, QMessageBox::Critical);
  }

  void exitShowsTheClosingWindowWhoseCloseEndsTheProgram() {
    Game g;
    LinksWindow& links = g.w->links();
    QTest::mouseClick(g.widget("CDend"), Qt::LeftButton);
    QVERIFY(!g.w->isVisible());
    QVERIFY(links.isVisible());
    auto* one = links.widgetFor("LinksForm.Picture1");
    const bool firstShown = one->isVisible();
    QCOMPARE(firstShown, g.f->LinksForm.Picture1.Visible);
    QTest::mouseClick(&links, Qt::LeftButton, {}, QPoint(2, 2));  // its background
    QCOMPARE(one->isVisible(), !firstShown);
    links.close();  // from the title bar: its Exit
    QVERIFY(g.f->Ended);
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

  void aMovingPictureKeepsItsPixelSizeWhereverItStands() {
    Game g;
    g.w->resize(g.w->naturalSize() * 0.974);  // Xvfb's default screen
    QCoreApplication::processEvents();
    const double s = g.w->scale() / 15;
    QVERIFY(s < 1.0 / 15);
    const QSize player(qRound(g.f->Player[1].Width * s), qRound(g.f->Player[1].Height * s));
    const QSize ball(qRound(g.f->Ball.Width * s), qRound(g.f->Ball.Height * s));
    QWidget* owner = nullptr;
    int moves = 0;  // the ball's moves seen on screen
    QPoint last = g.widget("Ball")->pos();
    auto sizesHold = [&] {
      for (int i = 1; i <= 22; ++i)
        if (g.widget("Player(" + std::to_string(i) + ")")->size() != player) return false;
      moves += g.widget("Ball")->pos() != last;
      last = g.widget("Ball")->pos();
      return g.widget("Ball")->size() == ball;
    };
    g.f->Rnd.force({0.0, 0.0});
    QTest::mouseClick(g.widget(g.f->CDgo.name), Qt::LeftButton);
    for (int tick = 0; tick < 4000 && g.f->TimPlace.Enabled(); ++tick) {
      g.w->pump(15);  // the walk
      QVERIFY(sizesHold());
    }
    owner = g.widget("Player(" + std::to_string(roundIndex(g.f->BallOwner)) + ")");
    for (int tick = 0; tick < 100; ++tick) {
      g.w->pump(15);  // the ball idles at its owner's feet
      QVERIFY(sizesHold());
      QCOMPARE(owner->geometry(), g.w->pixelRect(g.f->Player[roundIndex(g.f->BallOwner)]));
    }
    QVERIFY(moves > 50);
    QCOMPARE(g.widget("Ball")->geometry(), g.w->pixelRect(g.f->Ball));
  }

  void aTickThatChangesNothingOnShowRepaintsNothing() {
    Game g;
    QVERIFY(QTest::qWaitForWindowExposed(g.w.get()));
    QCoreApplication::processEvents();
    struct PaintCount : QObject {
      QStringList painted;
      bool eventFilter(QObject* o, QEvent* e) override {
        if (e->type() == QEvent::Paint) painted << o->objectName();
        return false;
      }
    } count;
    qApp->installEventFilter(&count);
    // The team panel's tick writes the colours and the tips it already shows.
    g.w->pump(1000);
    QVERIFY(g.f->TimTeam.Enabled());
    QCoreApplication::processEvents();
    QCOMPARE(count.painted.join(' '), QString());
    // A tick that does change something repaints it.
    g.f->ColRed[0] = 1, g.f->ColGreen[0] = 2, g.f->ColBlue[0] = 3;
    g.w->pump(1000);
    QCoreApplication::processEvents();
    QVERIFY(count.painted.contains(QStringLiteral("RainB(0)")));
    qApp->removeEventFilter(&count);
  }

  void tabFollowsTheLayoutWithExitLast() {
    Game g;
    g.w->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(g.w.get()));
    g.widget("CDgo")->setFocus();
    QStringList order;
    for (int n = 0; n < 60 && (order.isEmpty() || order.last() != "CDgo"); ++n) {
      QTest::keyClick(g.w->focusWidget(), Qt::Key_Tab);
      order << g.w->focusWidget()->objectName();
    }
    const QString expected =
        "CDhelp Cdice CDcontest(1) CDcontest(2) Ch50 ChAuto ChtenFIF Chq OpMode(0) OpMode(1) "
        "OpMode(2) OpName(0) OpName(1) cdr Command1 CDend "
        "OPForm(0) OPForm(1) OPForm(2) OPForm(3) OPForm(4) Team(1) CHsub(1) CHsub(0) "
        "Team(2) OPForm(10) OPForm(11) OPForm(12) OPForm(13) OPForm(14) CHsub(2) CHsub(3) CDgo";
    QCOMPARE(order.join(' '), expected);
    // A person's click moves the model's focus.
    QTest::mouseClick(g.widget("Ch50"), Qt::LeftButton);
    QCOMPARE(g.f->ActiveControl, std::string("Ch50"));
    QTest::mouseClick(g.widget("Team(2)"), Qt::LeftButton);
    QCOMPARE(g.f->ActiveControl, std::string("Team(2)"));
  }
};

QTEST_MAIN(MatchWindowTest)
#include "match_window_test.moc"
