// What both fronts present, as the view of the form decides it: the Tab stops, what a screen
// reader hears, what the arrows do, and what a glance lists as changed.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support.h"
#include "ui/accessible_names.h"
#include "view/form_view.h"

namespace quorvel {
namespace {

bool has(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

TEST(View, TabStopsRunFromStartToExitPassingOverWhatCannotBeUsedNow) {
  auto f = newMatchForm(3);
  FormView view(*f, FormWindowId::Main);
  // The match's own controls, the two teams' panels (a group of option buttons is one stop, its
  // chosen button; no locked box, no hidden flag, no banner under the pitch), the settings.
  const auto joined = [&view] {
    std::string all;
    for (const std::string& stop : view.tabStops()) all += stop + " ";
    return all;
  };
  EXPECT_EQ(joined(),
            "CDgo CDhelp Cdice CDcontest(1) CDcontest(2) "
            "OPForm(0) Team(1) RainB(1) RainB(0) CHsub(1) CHsub(0) "
            "Team(2) OPForm(12) RainB(2) RainB(3) CHsub(2) CHsub(3) "
            "Ch50 ChAuto ChtenFIF Chq OpMode(0) Hai Vai OpName(1) cdr Command1 CDend ");

  // A locked box is no stop (the banners out of the pitch are: after Start, the parity tests).
  f->Team[1].Locked = true;
  view.glance();
  EXPECT_FALSE(has(view.tabStops(), "Team(1)"));
}

TEST(View, EveryControlSaysWhatItIsAndWhose) {
  auto f = test::matchReady(1, 5);
  f->Rnd.force({test::face(3)});
  userClick(*f, f->Cdice);
  FormView view(*f, FormWindowId::Main);
  auto at = [&](const char* name) { return *view.find(name); };
  EXPECT_EQ(at("Goals(1)").name, "Left team's goals: 0");
  EXPECT_EQ(at("Goals(1)").role, Role::Text);
  EXPECT_EQ(at("TXtim").name, "Match clock: " + f->TXtim.Text);
  EXPECT_EQ(at("Team(2)").role, Role::Entry);
  EXPECT_EQ(at("CHsub(2)").name, "Right team's substitute: bring on number 13");
  EXPECT_EQ(at("CHsub(2)").side, 2);
  EXPECT_EQ(at("OPForm(11)").side, 2);
  EXPECT_EQ(at("Fra1").name, "Left team's formation");
  EXPECT_EQ(at("RainB(0)").role, Role::Button);
  EXPECT_TRUE(at("RainB(0)").pressable);
  EXPECT_EQ(at("Player(14)").role, Role::Graphic);
  EXPECT_EQ(at("Player(14)").name.rfind(f->Team[2].Text + " number 3, column ", 0), 0u);
  EXPECT_EQ(at("Cdice").name, "Die, showing 3");  // the flags' names: in the announcements' test
  // Whatever can take the focus or be read on show has a name and a role; every control has
  // its place in the stored layout, which is written by hand beside the table of controls.
  for (const ControlView& v : view.controls()) {
    EXPECT_GT(v.control->Width * v.control->Height, 0) << v.control->name << " has no place";
    if (v.shown && (v.focusable || v.role == Role::Graphic || v.role == Role::Group)) {
      EXPECT_FALSE(v.name.empty()) << v.control->name;
    }
  }
}

TEST(View, ArrowsStayInTheirGroupAndOnButtonsAreTab) {
  auto f = test::matchReady(1, 7);
  f->Rnd.force({test::face(2)});
  userClick(*f, f->Cdice);
  FormView view(*f, FormWindowId::Main);
  // From the chosen option the arrows choose; past the group's edge they go nowhere.
  const ArrowMove left = view.arrow("OpName(1)", Arrow::Left);
  EXPECT_EQ(left.to, "OpName(0)");
  EXPECT_TRUE(left.press);
  EXPECT_EQ(view.arrow("OpName(1)", Arrow::Down).to, "");
  EXPECT_FALSE(view.arrow("OpName(1)", Arrow::Down).own);
  EXPECT_EQ(view.arrow("OpMode(2)", Arrow::Down).to, "");
  EXPECT_EQ(view.arrow("OpMode(0)", Arrow::Down).to, "OpMode(1)");
  // Among the flags on show only, pressing none.
  for (int d = 0; d < 8; ++d) {
    if (!f->CDdest[d].Visible) continue;
    for (Arrow a : {Arrow::Up, Arrow::Down, Arrow::Left, Arrow::Right}) {
      const ArrowMove move = view.arrow(f->CDdest[d].name, a);
      EXPECT_FALSE(move.press);
      if (!move.to.empty()) {
        EXPECT_TRUE(view.find(move.to)->shown && move.to.rfind("CDdest(", 0) == 0);
      }
    }
  }
  // On a button the arrows are Tab and Shift+Tab; in a text box and on a scroll bar their own.
  const std::vector<std::string> stops = view.tabStops();
  EXPECT_EQ(view.arrow(stops[0], Arrow::Right).to, stops[1]);
  EXPECT_EQ(view.arrow(stops[0], Arrow::Up).to, stops.back());
  EXPECT_TRUE(view.arrow("Team(1)", Arrow::Left).own);
  EXPECT_TRUE(view.arrow("Hai", Arrow::Left).own);
}

TEST(View, AGlanceListsWhatChangedAndHow) {
  auto f = newMatchForm(2);
  FormView view(*f, FormWindowId::Main);
  EXPECT_EQ(view.glance().size(), view.controls().size());
  EXPECT_TRUE(view.glance().empty());

  f->Ball.Left += 15;
  f->TXtim.Text = "12:00";
  std::vector<FormView::Change> changes = view.glance();
  ASSERT_EQ(changes.size(), 2u);
  for (const FormView::Change& c : changes) {
    const std::string& name = view.controls()[static_cast<std::size_t>(c.index)].control->name;
    if (name == "Ball")
      EXPECT_TRUE(c.moved && !c.redrawn && !c.restated);
    else
      EXPECT_TRUE(name == "TXtim" && !c.moved && !c.redrawn && c.restated) << name;
  }
}

// Between inputs, a glance at what the ticks may have changed lists what a glance at every
// control lists, through walks, rolls, kicks, 50/50s and a goal.
TEST(View, AGlanceAfterTicksAloneMissesNothing) {
  auto f = newMatchForm(4);
  FormView every(*f, FormWindowId::Main), ticked(*f, FormWindowId::Main);
  f->Sched.watch([&ticked](const Timer& t) { ticked.tickComing(t); });
  const auto listed = [&every](const std::vector<FormView::Change>& changes) {
    std::string all;
    for (const FormView::Change& c : changes)
      all += every.controls()[static_cast<std::size_t>(c.index)].control->name +
             (c.moved ? "m" : "") + (c.redrawn ? "r" : "") + (c.restated ? "s" : "") + " ";
    return all;
  };
  userClick(*f, f->CDgo);
  int contests = 0;
  const auto scored = [&f] { return f->Goals[1].Text != "0" || f->Goals[2].Text != "0"; };
  for (int step = 0; step < 30000 && (contests == 0 || !scored()); ++step) {
    bool input = step % 5 == 0;  // the ball idles at its owner's feet in between
    if (!input)
      f->Sched.advance(15);
    else if (f->DiceReady == kDiceReady && !f->TimPlace.Enabled())
      userClick(*f, f->Cdice);
    else if (const int d = test::firstFlag(*f); d >= 0 && f->KickFlag == -1)
      userClick(*f, f->CDdest[d]);
    else
      input = false, f->Sched.advance(15);
    const std::string all = listed(every.glance());
    ASSERT_EQ(listed(input ? ticked.glance() : ticked.glanceAfterTicks()), all)
        << "step " << step << " at " << f->TXtim.Text;
    contests += f->ContestWin != kNoContest && f->KickTicks == 1;
  }
  EXPECT_TRUE(contests > 0 && scored());  // the names and scores have slid, a goal flashed
}

TEST(View, AMovingControlKeepsItsSizeWhereverItStands) {
  auto f = newMatchForm(1);
  FormView view(*f, FormWindowId::Main);
  view.place(fitInto(view.client(), 1215.6, 748.2));
  view.glance();
  const PixelRect ball = view.find("Ball")->rect;
  f->Ball.Left += 7 * 15;
  view.glance();
  EXPECT_EQ(view.find("Ball")->rect.width, ball.width);
  EXPECT_NE(view.find("Ball")->rect.x, ball.x);
  // A new size moves what no tick touched: the next glance after ticks looks at everything.
  view.place(fitInto(view.client(), 900, 600));
  const std::vector<FormView::Change> moved = view.glanceAfterTicks();
  EXPECT_TRUE(std::any_of(moved.begin(), moved.end(), [&view](const FormView::Change& c) {
    return c.moved && view.controls()[static_cast<std::size_t>(c.index)].control->name == "Grass";
  }));
}

}  // namespace
}  // namespace quorvel
