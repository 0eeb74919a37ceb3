// The page's layouts for small screens: every control placed, none over another, every target
// large enough for a finger and every text legible, the pitch turned only where that helps, and
// the panel that holds the rest.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support.h"
#include "view/form_view.h"

namespace quorvel {
namespace {

struct Screen {
  double width, height;
};
constexpr Screen kSmallScreens[] = {{390, 844}, {844, 390}, {360, 740}, {768, 1024}, {1024, 600}};

bool meet(const PixelRect& a, const PixelRect& b) {
  return a.x < b.right() && b.x < a.right() && a.y < b.bottom() && b.y < a.bottom();
}

// Each control's size, text, overlap and place on the screen are judged on the page as Chromium
// lays it out (tests/web/touch_test.py); here, where each belongs and what the pitch leaves.
TEST(CompactLayout, EveryControlHasAZoneAndThePitchItsRoom) {
  auto f = newMatchForm(7);
  FormView view(*f, FormWindowId::Main);
  for (const Screen& screen : kSmallScreens) {
    SCOPED_TRACE(std::to_string(screen.width) + " x " + std::to_string(screen.height));
    view.fit(screen.width, screen.height, 2);
    const CompactLayout* l = view.compact();
    ASSERT_NE(l, nullptr);
    view.glance();
    for (const ControlView& v : view.controls()) {
      const std::string& name = v.control->name;
      // What is neither in the bar nor in the panel is the pitch's own.
      if (l->zoneOf(v.parent.empty() ? name : v.parent) == Zone::Pitch) {
        const bool pitchOwn = name == "Grass" || name.starts_with("Goal(") ||
                              name.starts_with("Player(") || name == "Ball" ||
                              name.starts_with("CDdest(") || name == "PicGame" ||
                              name.starts_with("TXgame(");
        EXPECT_TRUE(pitchOwn) << name << " has no place off the pitch";
      }
    }
    // The bar, the pitch and the news line share the screen without meeting.
    const auto px = [](const CompactRect& c) { return PixelRect{c.x, c.y, c.width, c.height}; };
    EXPECT_FALSE(meet(px(l->bar), px(l->pitch)));
    EXPECT_FALSE(meet(px(l->news), px(l->pitch)));
    EXPECT_FALSE(meet(px(l->menu), px(l->pitch)));
    EXPECT_LE(l->pitch.right(), screen.width);
    EXPECT_LE(l->news.bottom(), screen.height);
    // A flag is a finger's size and smaller than a square, so that neighbours never meet.
    EXPECT_GE(l->flagPx, kLeastTargetPx);
    if (squarePx(*l) >= kLeastTargetPx + 2) {
      EXPECT_LT(l->flagPx, squarePx(*l));
    }
  }
}

TEST(CompactLayout, APhoneTurnsThePitchUprightOnlyWhereTheSquaresGrow) {
  auto f = newMatchForm(7);
  FormView view(*f, FormWindowId::Main);
  view.fit(844, 390, 1);
  ASSERT_NE(view.compact(), nullptr);
  EXPECT_FALSE(view.compact()->turned);
  EXPECT_GE(squarePx(*view.compact()), 40);
  const PixelRect flatLeftGoal = view.find("Goal(1)")->rect;
  EXPECT_LT(flatLeftGoal.x, view.find("Goal(0)")->rect.x);
  EXPECT_FALSE(view.find("Grass")->turned);

  view.fit(390, 844, 3);
  ASSERT_NE(view.compact(), nullptr);
  EXPECT_TRUE(view.compact()->turned);
  EXPECT_GE(squarePx(*view.compact()), 40);
  EXPECT_TRUE(view.find("Grass")->turned);
  // Turned clockwise: the left-hand goal on top, lying across; the first row on the right.
  const PixelRect top = view.find("Goal(1)")->rect, bottom = view.find("Goal(0)")->rect;
  EXPECT_LT(top.bottom(), bottom.y);
  EXPECT_GT(top.width, top.height);
  test::putPlayer(*f, 2, 3, 1);
  test::putPlayer(*f, 3, 3, 8);
  view.look();
  const PixelRect row1 = view.find("Player(2)")->rect, row8 = view.find("Player(3)")->rect;
  EXPECT_GT(row1.x, row8.x);
  EXPECT_EQ(row1.y, row8.y);
  EXPECT_EQ(row1.width, row1.height);  // the pieces stay upright
  view.fit(1248, 768, 1);              // the stored layout where it fits
  EXPECT_EQ(view.compact(), nullptr);
}

TEST(CompactLayout, ThePanelHidesAndShowsWhatItHoldsWhileTheBarStays) {
  auto f = newMatchForm(7);
  FormView view(*f, FormWindowId::Main);
  view.fit(390, 844, 1);
  view.glance();
  const auto shown = [&](const char* name) { return view.find(name)->shown; };
  const auto stopsAt = [&](const char* name) {
    const std::vector<std::string> stops = view.tabStops();
    return std::count(stops.begin(), stops.end(), name);
  };
  EXPECT_TRUE(shown("CDgo") && shown("Cdice") && shown("TXtim") && shown("Goals(2)"));
  EXPECT_FALSE(shown("CDhelp") || shown("OPForm(1)") || shown("Hai") || shown("Team(1)"));
  EXPECT_EQ(stopsAt("CDhelp"), 0);
  // Before the first Start the teams wait off the pitch, out of sight.
  EXPECT_FALSE(shown("Player(1)"));

  view.openPanel(true);
  int restated = 0;
  for (const FormView::Change& c : view.glance()) restated += c.restated ? 1 : 0;
  EXPECT_GT(restated, 40);
  EXPECT_TRUE(shown("CDhelp") && shown("OPForm(1)") && shown("Hai") && shown("Team(1)"));
  EXPECT_TRUE(view.find("CDhelp")->inPanel);
  EXPECT_FALSE(view.find("OPForm(1)")->inPanel);  // in its frame, which stands in the panel
  EXPECT_EQ(stopsAt("CDhelp"), 1);

  test::startMatch(*f, 1);
  ASSERT_TRUE(test::finishWalk(*f));
  view.look();
  EXPECT_TRUE(shown("Player(1)") && shown("Player(22)") && shown("Ball"));
}

}  // namespace
}  // namespace quorvel
