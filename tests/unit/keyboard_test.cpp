// Keyboard play: kick keys, the roll key, the minus key, and who may use the keys in each mode.
#include <gtest/gtest.h>

#include "shape/shape.h"
#include "turn_support.h"

namespace quorvel {
namespace {

using test::finishWalk;
using test::loadedForm;
using test::startMatch;

constexpr char kFlagKey[8] = {'8', '9', '6', '3', '2', '1', '4', '7'};

// A match in `mode` (0 Free, 1 Mouse vs Keys, 2 Play Left vs AI) whose side `side` may roll.
std::unique_ptr<MatchForm> ready(int mode, int side) {
  auto f = loadedForm();
  select(*f, f->OpMode[mode]);
  startMatch(*f, side);
  EXPECT_TRUE(finishWalk(*f));
  return f;
}

TEST(Keys, EachDigitKicksAlongItsKeypadDirection) {
  for (int d = 0; d < 8; ++d) {
    auto m = ready(0, 1);
    MatchForm& f = *m;
    test::giveBall(f, 9, 8, 4);
    f.Rnd.force({test::face(1)});
    userKey(f, '5');
    ASSERT_EQ(test::visibleFlags(f).size(), 8u);
    userKey(f, kFlagKey[d]);
    EXPECT_EQ(f.KickFlag, d) << "key " << kFlagKey[d];
  }
}

TEST(Keys, AKeyWhoseFlagIsHiddenOrNoKeyAtAllDoesNothing) {
  auto m = ready(0, 1);
  MatchForm& f = *m;
  test::giveBall(f, 9, 8, 1);  // top row: nothing upwards
  test::roll(f, 1);
  ASSERT_FALSE(f.CDdest[0].Visible);
  for (char key : {'8', '9', '7', '0', 'a', '5'}) userKey(f, key);
  EXPECT_EQ(f.KickFlag, -1);
  EXPECT_EQ(test::visibleFlags(f), (std::vector<int>{2, 3, 4, 5, 6}));
}

TEST(Keys, EveryKeyIsIgnoredWhilePlayersWalkDuringASubstitutionAndAfterFullTime) {
  void (*const arrange[])(MatchForm&) = {
      [](MatchForm& f) { f.TimPlace.setEnabled(true); },
      [](MatchForm& f) { f.SubTicks = 300; },
      [](MatchForm& f) { f.GameEnd = "ended"; },
  };
  for (auto* a : arrange) {
    auto m = ready(1, 2);  // the keys' own side, so only the state can refuse
    MatchForm& f = *m;
    a(f);
    for (char key : {'5', '-', '0'}) userKey(f, key);
    EXPECT_EQ(f.DiceReady, 1);
    EXPECT_EQ(f.ClickFrom, 0);
    EXPECT_FALSE(f.TimSub.Enabled());
  }
}

TEST(PlayLeftVsAI, KeysPlayTheLeftSideOnlyAndNeverTheComputersTurn) {
  for (int side : {1, 2}) {
    auto m = ready(2, side);
    MatchForm& f = *m;
    userKey(f, '-');
    EXPECT_EQ(f.CHsub[side == 1 ? 0 : 2].Visible, side == 2);
    ASSERT_TRUE(test::runUntil(f, [&f] { return !substitutionUnderWay(f); }));
    userKey(f, '5');
    EXPECT_EQ(f.DiceReady, side == 1 ? -1 : 1);
  }
}

TEST(MinusKey, StopsAutomaticPlayFirstThenUsesTheSidesBoxesInTurn) {
  struct Box {
    int index, number;
  };
  for (int side : {1, 2}) {
    SCOPED_TRACE(side);
    auto m = ready(0, side);
    MatchForm& f = *m;
    const Box first = side == 1 ? Box{0, 12} : Box{2, 13};
    const Box second = side == 1 ? Box{1, 13} : Box{3, 12};
    setValue(f, f.ChAuto, 0);

    userKey(f, '-');
    EXPECT_EQ(f.ChAuto.Caption, "Wait for player");
    EXPECT_FALSE(f.TimSub.Enabled());

    for (const Box& b : {first, second}) {
      userKey(f, '-');
      EXPECT_TRUE(f.TimSub.Enabled());
      EXPECT_FALSE(f.CHsub[b.index].Visible);
      EXPECT_EQ(f.SubNumber, b.number);
      userKey(f, '-');  // ignored: under way even before its first tick
      ASSERT_TRUE(test::runUntil(f, [&f] { return !substitutionUnderWay(f); }));
    }
    userKey(f, '-');  // both boxes used
    EXPECT_FALSE(f.TimSub.Enabled());
    EXPECT_EQ(f.SubOff, 0);
  }
}

}  // namespace
}  // namespace quorvel
