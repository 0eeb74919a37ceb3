// Substitutions: the Sub boxes and their refusals, the choice of the leaving player, the
// exchange under TimSub and its end with the re-forming walk.
#include <gtest/gtest.h>

#include <set>

#include "shape/shape.h"
#include "turn_support.h"

namespace quorvel {
namespace {

using test::finishWalk;
using test::matchReady;
using test::onSquare;

// The draw that makes MakeSub pick `player` (2..11 or 13..22).
double drawOff(int player) {
  return test::drawFor(player <= 11 ? player : player - 11, 2, 11);
}

bool substituting(const MatchForm& f) {
  return f.TimSub.Enabled();
}

TEST(SubBox, OneClickMakesExactlyOneSubstitutionAndLeavesTheBoxClear) {
  auto m = matchReady(1);
  MatchForm& f = *m;
  setValue(f, f.Chq, 1);
  f.Rnd.force({drawOff(5), drawOff(6)});
  userClick(f, f.CHsub[0]);
  // The unticking raised the handler again inside the click; only one of the two made
  // the substitution, so only one leaving player was drawn.
  EXPECT_EQ(f.Rnd.forcedPending(), 1u);
  EXPECT_EQ(f.SubOff, 5);
  EXPECT_EQ(f.SubNumber, 12);
  EXPECT_EQ(f.CHsub[0].Value, 0);
  EXPECT_FALSE(f.CHsub[0].Visible);
  EXPECT_TRUE(f.CHsub[1].Visible);
  EXPECT_EQ(f.Chq.Value, 0);
  EXPECT_TRUE(substituting(f));

  // The other box at once, before the exchange's first tick: the first one stands.
  userClick(f, f.CHsub[1]);
  EXPECT_TRUE(f.CHsub[1].Visible);
  EXPECT_EQ(f.SubNumber, 12);
  EXPECT_EQ(f.Rnd.forcedPending(), 1u);
}

TEST(SubBox, AClickWhileAutomaticPlayRunsStopsItAndStillSubstitutes) {
  auto m = matchReady(2);
  MatchForm& f = *m;
  select(f, f.OpMode[2]);  // the computer's side; the mouse may still substitute for it
  setValue(f, f.ChAuto, 0);
  ASSERT_TRUE(f.TimAuto.Enabled());
  userClick(f, f.CHsub[2]);
  EXPECT_EQ(f.ChAuto.Value, 1);
  EXPECT_EQ(f.ChAuto.Caption, "Wait for player");
  EXPECT_FALSE(f.TimAuto.Enabled());
  EXPECT_TRUE(substituting(f));
  EXPECT_EQ(f.SubNumber, 13);
  EXPECT_GE(f.SubOff, 13);
}

// Every refusal still clears the box, "Quickplay" and automatic play and leaves the box on
// show for a later turn; only the rolled die says why.
TEST(SubBox, RefusedClicksStartNothing) {
  struct Case {
    const char* what;
    int box;
    void (*arrange)(MatchForm&);
    bool blanksContest, showsHint;
  };
  const Case cases[] = {
      {"before Start", 0, [](MatchForm& f) { f.GameOn = 0; }, false, false},
      {"while a substitution runs", 0, [](MatchForm& f) { f.SubTicks = 300; }, false, false},
      {"while walking", 0, [](MatchForm& f) { f.TimPlace.setEnabled(true); }, true, false},
      {"after the roll", 0, [](MatchForm& f) { test::roll(f, 3); }, true, true},
      {"after full time", 0, [](MatchForm& f) { f.GameEnd = "ended"; }, true, false},
      {"other side's box", 2, [](MatchForm&) {}, true, false},
      {"other side's box", 3, [](MatchForm&) {}, true, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    auto m = matchReady(1);
    MatchForm& f = *m;
    c.arrange(f);
    setValue(f, f.ChAuto, 0);
    setValue(f, f.Chq, 1);
    f.CDcontest[1].Image = f.CDcontest[2].Image = f.Di[4].Image;
    userClick(f, f.CHsub[c.box]);
    EXPECT_FALSE(substituting(f));
    EXPECT_FALSE(f.Player[0].Visible);
    EXPECT_TRUE(f.CHsub[c.box].Visible);
    EXPECT_EQ(f.CHsub[c.box].Value, 0);
    EXPECT_EQ(f.Chq.Value, 0);
    EXPECT_EQ(f.ChAuto.Value, 1);
    EXPECT_EQ(f.CDcontest[2].Image == f.Di[7].Image, c.blanksContest);
    EXPECT_EQ(f.TXoner.Visible, c.showsHint);
  }
}

TEST(MakeSub, TheKeeperAndTheBallOwnerNeverLeave) {
  for (int side : {1, 2}) {
    auto m = matchReady(side);
    MatchForm& f = *m;
    const int owner = side == 1 ? 5 : 18;
    f.BallOwner = owner;
    // A draw on the owner is drawn again.
    f.Rnd.force({drawOff(owner), drawOff(owner), drawOff(owner + 1)});
    MakeSub(f);
    EXPECT_EQ(f.SubOff, owner + 1);
    EXPECT_EQ(f.Rnd.forcedPending(), 0u);

    std::set<int> chosen;
    for (int k = 0; k < 400; ++k) {
      MakeSub(f);
      chosen.insert(roundIndex(f.SubOff));
    }
    std::set<int> others;
    for (int i = side == 1 ? 2 : 13; i <= (side == 1 ? 11 : 22); ++i)
      if (i != owner) others.insert(i);
    EXPECT_EQ(chosen, others);
  }
}

TEST(MakeSub, BeforeTheFirstStartThereIsNobodyToTakeOff) {
  auto f = test::loadedForm();
  MakeSub(*f);
  EXPECT_EQ(f->SubOff, 0);
  EXPECT_FALSE(f->Player[0].Visible);
}

TEST(MakeSub, PaintsNumbersAndPlacesTheSubstituteAboveTheHalfWayLine) {
  for (int side : {1, 2}) {
    auto m = matchReady(side);
    MatchForm& f = *m;
    f.SubNumber = 13;
    MakeSub(f);
    const int main = side == 1 ? 0 : 3, second = side == 1 ? 1 : 2;
    EXPECT_EQ(f.Player[0].BackColor, f.RainB[main].BackColor);
    EXPECT_EQ(f.Tnum[0].BackColor, f.RainB[main].BackColor);
    EXPECT_EQ(f.Tnum[0].ForeColor, f.RainB[second].BackColor);
    EXPECT_EQ(f.Tnum[0].Text, "13");
    EXPECT_EQ(f.PlaceMode, 23);
    EXPECT_EQ(f.Player[0].Left, 7200);
    EXPECT_EQ(f.Player[0].Top, 960);
    EXPECT_TRUE(f.Player[0].Visible);
  }
}

TEST(Exchange, TheComputerMayChooseItsFormationAsItBeginsAndAsItEnds) {
  auto m = matchReady(1);
  MatchForm& f = *m;
  select(f, f.OpMode[2]);
  ASSERT_TRUE(f.OPForm[12].Value);  // the right side starts in "Cup"
  userClick(f, f.CHsub[0]);
  EXPECT_TRUE(f.OPForm[10].Value);  // level score at IQ 2: "Varied"
  select(f, f.OPForm[14]);
  for (int t = 1; t <= 300; ++t) TimSub_Timer(f);
  EXPECT_TRUE(f.OPForm[10].Value);
}

// Lets the scheduler run the exchange; returns its length in virtual milliseconds.
Millis runExchange(MatchForm& f) {
  const Millis start = f.Sched.now();
  EXPECT_TRUE(test::runUntil(f, [&f] { return !f.TimSub.Enabled(); }));
  return f.Sched.now() - start;
}

TEST(Exchange, LastsExactly300TicksWhateverTheDistance) {
  // One leaving player far down the pitch, one almost at the bench point already.
  for (const auto& [col, row] : {std::pair{2, 8}, std::pair{8, 1}}) {
    auto m = matchReady(1);
    MatchForm& f = *m;
    f.Rnd.force({drawOff(4)});
    test::putPlayer(f, 4, col, row);
    userClick(f, f.CHsub[1]);
    const double left0 = f.Player[4].Left, top0 = f.Player[4].Top;

    for (int t = 1; t < 300; ++t) TimSub_Timer(f);
    EXPECT_TRUE(f.TimSub.Enabled());
    // Only upwards and sideways, towards (7200, 960).
    EXPECT_EQ(f.Player[4].Top, std::max(960.0, top0 - 299 * 15));
    EXPECT_EQ(f.Player[4].Left, left0 < 7200 ? std::min(7200.0, left0 + 299 * 15)
                                             : std::max(7200.0, left0 - 299 * 15));
    EXPECT_EQ(f.Player[0].Top, 960 + 299 * 15);

    TimSub_Timer(f);
    EXPECT_FALSE(f.TimSub.Enabled());
    EXPECT_EQ(f.SubTicks, 300);
    EXPECT_FALSE(f.Player[0].Visible);
    EXPECT_EQ(f.Player[4].Left, 7200);
    EXPECT_EQ(f.Player[4].Top, 5445);
    EXPECT_EQ(f.Tnum[4].Text, "13");
    EXPECT_TRUE(f.TimPlace.Enabled());

    // A count already past its end (only a script can leave one) still ends the exchange.
    f.SubTicks = 400;
    f.TimSub.setEnabled(true);
    TimSub_Timer(f);
    EXPECT_FALSE(f.TimSub.Enabled());
  }
}

TEST(Exchange, EndsWithTheReformingWalkAndTheBallAtItsOwnersFeet) {
  auto m = matchReady(2);
  MatchForm& f = *m;
  setValue(f, f.Chq, 1);  // kept ticked: the keyboard entry leaves "Quickplay" alone
  Form_KeyPress(f, '-');
  ASSERT_TRUE(substituting(f));
  const int off = roundIndex(f.SubOff);
  EXPECT_EQ(runExchange(f), 300 * 15);
  // Even with "Quickplay" the players walk after a substitution.
  EXPECT_FALSE(onSquare(f, off));
  ASSERT_TRUE(finishWalk(f));
  EXPECT_EQ(f.SubTicks, 0);
  EXPECT_EQ(f.BallOwner, 20);
  EXPECT_GE(f.Ball.Left - f.Player[20].Left, 300);
  EXPECT_LE(f.Ball.Left - f.Player[20].Left, 600);
  EXPECT_GE(f.Ball.Top - f.Player[20].Top, 300);
  EXPECT_LE(f.Ball.Top - f.Player[20].Top, 600);
  EXPECT_TRUE(onSquare(f, off));
}

TEST(Exchange, AFormationChosenDuringItIsTheOneTheTeamReformsInto) {
  auto m = matchReady(1);
  MatchForm& f = *m;
  userClick(f, f.CHsub[0]);
  userClick(f, f.OPForm[3]);  // "Defend"
  EXPECT_FALSE(f.TimPlace.Enabled());
  runExchange(f);
  EXPECT_EQ(std::pair(f.PlayerCol[2], f.PlayerRow[2]), std::pair(3.0, 6.0));
  EXPECT_EQ(std::pair(f.PlayerCol[3], f.PlayerRow[3]), std::pair(3.0, 3.0));
  EXPECT_EQ(std::pair(f.PlayerCol[5], f.PlayerRow[5]), std::pair(6.0, 4.0));
}

}  // namespace
}  // namespace quorvel
