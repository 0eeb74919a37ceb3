// Team colours and names, the team panel, Help, Exit and the closing window, banners, links.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <string>

#include "support.h"
#include "ui/ui.h"

namespace quorvel {
namespace {

constexpr Colour kRed = RGB(252, 0, 0);

TEST(Swatches, AClickRecoloursUnlessLockedAndHandsTheFocusToTheDie) {
  auto f = test::matchReady(1);
  f->ActiveControl = "cdr";
  userClick(*f, f->RainB[0]);
  EXPECT_NE(f->RainB[0].BackColor, kRed);
  EXPECT_EQ(f->Player[4].BackColor, f->RainB[0].BackColor);
  EXPECT_EQ(f->ActiveControl, "Cdice");

  f->EditLock = kNamesLocked;
  const Colour now = f->RainB[0].BackColor;
  f->ActiveControl = "cdr";
  userClick(*f, f->RainB[0]);
  EXPECT_EQ(f->RainB[0].BackColor, now);
  EXPECT_EQ(f->ActiveControl, "cdr");

  f->EditLock = kNamesOpen;
  f->DiceReady = kDiceRolled;  // rolled: repaint but leave the focus
  userClick(*f, f->RainB[3]);
  EXPECT_EQ(f->ActiveControl, "cdr");
}

// Forces Namer's four picks: tail 1, head 1, head 2, tail 2 (entries 1..130).
void forceNames(MatchForm& f, int lo, int hi, std::initializer_list<int> entries) {
  std::vector<double> draws;
  for (int e : entries) draws.push_back((e - lo + 0.5) / (hi - lo + 1));
  f.Rnd.force(draws);
}

void useClubs(MatchForm& f, bool clubs) {
  select(f, f.OpName[clubs ? 0 : 1]);
}

// The length rules: a nation shorter than four letters becomes a "stan"; a club longer than 14
// letters is replaced by a two-word club, and one shorter than five gets a second word.
TEST(Namer, TooShortAndTooLongNamesAreMended) {
  struct Case {
    bool clubs;
    std::initializer_list<int> picks;  // tail 1, head 1, head 2, tail 2
    std::vector<double> more;          // the length rules' own draws among clubs 51..60
    int side;
    const char *left, *right;
  };
  auto club = [](int k) { return (k - 51 + 0.5) / 10; };
  const Case cases[] = {
      {false, {61, 68, 70, 71}, {}, 1, "Ilystan", "Team 2"},     // I + ly; the right not named
      {false, {61, 63, 73, 70}, {}, 2, "Team 1", "Denn"},        // four letters stay
      {false, {61, 73, 73, 63, 70}, {}, 2, "Team 1", "Egyn"},    // not the left's first half
      {true, {7, 42, 1, 2}, {}, 1, "Middleschester", "Team 2"},  // exactly 14 stay
      {true, {35, 13, 1, 2}, {club(56)}, 1, "Alvo City", "Team 2"},
      {true, {58, 9, 1, 2}, {club(53), club(60)}, 1, "Ajax City", "Team 2"},  // 15 letters
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.left);
    auto f = newMatchForm();
    useClubs(*f, c.clubs);
    forceNames(*f, c.clubs ? 1 : 61, c.clubs ? 60 : 130, c.picks);
    f->Rnd.force(c.more);
    Namer(*f, c.side);
    EXPECT_EQ(f->Team[1].Text, c.left);
    EXPECT_EQ(f->Team[2].Text, c.right);
    EXPECT_EQ(f->Rnd.forcedPending(), 0u);
  }
}

TEST(Namer, RenamingOneSideAppliesTheLengthRulesToTheOther) {
  auto f = newMatchForm();
  useClubs(*f, true);
  f->TeamName[2] = "Ajax";  // the right side's last drawn name, now too short for a club
  forceNames(*f, 1, 60, {7, 42, 1, 2});
  f->Rnd.force({(59 - 51 + 0.5) / 10});
  Namer(*f, 1);
  EXPECT_EQ(f->Team[1].Text, "Middleschester");
  EXPECT_EQ(f->Team[2].Text, "Ajax United");
}

TEST(TeamButtons, ContestButtonsRedrawOneSideAndRandomTeamsBoth) {
  auto f = newMatchForm(5);
  userClick(*f, f->CDcontest[2]);
  EXPECT_NE(f->Team[2].Text, "Team 2");
  EXPECT_EQ(f->Team[1].Text, "Team 1");
  EXPECT_EQ(f->RainB[0].BackColor, kRed);
  EXPECT_TRUE(f->Timi.Enabled());

  userClick(*f, f->cdr);
  EXPECT_NE(f->Team[1].Text, "Team 1");
  EXPECT_FALSE(f->Timi.Enabled()) << "the wait is mixed into chance once";
  EXPECT_EQ(f->ActiveControl, "cdr");
  EXPECT_EQ(f->cdr.BackColor, f->BackColor);

  f->EditLock = kNamesLocked;
  const std::string name = f->Team[1].Text;
  userClick(*f, f->CDcontest[1]);
  EXPECT_EQ(f->Team[1].Text, name);
}

TEST(TeamPanel, LocksNamesAndColoursAfterMinuteFourOnceBothSidesAreNamed) {
  auto f = test::matchReady(1);
  f->ClockMin = 5;
  f->Sched.advance(1000);
  EXPECT_EQ(f->EditLock, kNamesOpen) << "names still the defaults";
  f->Team[1].Text = "Rovers";
  f->Sched.advance(1000);
  EXPECT_EQ(f->EditLock, kNamesOpen) << "only one side named";
  f->Team[2].Text = "United";
  f->ClockMin = 4;
  f->Sched.advance(1000);
  EXPECT_EQ(f->EditLock, kNamesOpen);
  f->ClockMin = 5;
  f->Sched.advance(1000);
  EXPECT_EQ(f->EditLock, kNamesLocked);
  EXPECT_TRUE(f->Team[1].Locked);
  EXPECT_FALSE(userEdit(*f, f->Team[1], "Changed"));
}

}  // namespace
}  // namespace quorvel
