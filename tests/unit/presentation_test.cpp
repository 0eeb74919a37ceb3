// Team colours and names, the team panel, Help, Exit and the closing window, banners, links.
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

#include "support.h"
#include "ui/ui.h"

namespace quorvel {
namespace {

using test::loadedForm;

constexpr Colour kRed = RGB(252, 0, 0), kWhite = RGB(252, 252, 252);
constexpr Colour kCyan = RGB(0, 252, 252), kBlue = RGB(0, 0, 252);

TEST(Rainbow, StartUpColoursDressBothTeams) {
  auto f = loadedForm();
  EXPECT_EQ(f->Player[5].BackColor, kRed);
  EXPECT_EQ(f->Tnum[5].ForeColor, kWhite);
  EXPECT_EQ(f->Player[1].BackColor, kWhite);
  EXPECT_EQ(f->Tnum[1].ForeColor, kRed);
  EXPECT_EQ(f->Player[20].BackColor, kBlue);
  EXPECT_EQ(f->Tnum[20].ForeColor, kCyan);
  EXPECT_EQ(f->Player[12].BackColor, kCyan);
  EXPECT_EQ(f->Tnum[12].ForeColor, kBlue);
  EXPECT_EQ(f->Goals[1].BackColor, kRed);
  EXPECT_EQ(f->Team[2].BackColor, kCyan);
  EXPECT_EQ(f->Poses[2].ForeColor, kBlue);
  EXPECT_EQ(f->CHsub[3].BackColor, kBlue);
  EXPECT_EQ(f->OPForm[12].BackColor, kBlue);  // right "Cup" selected: inverted
  EXPECT_EQ(f->OPForm[11].BackColor, kCyan);
}

TEST(Rainbow, TheSubstitutePieceKeepsItsOwnColours) {
  auto f = loadedForm();
  f->Player[0].BackColor = RGB(1, 2, 3);
  Rainbow(*f);
  EXPECT_EQ(f->Player[0].BackColor, RGB(1, 2, 3));
}

TEST(Swatches, AClickRecoloursUnlessLockedAndHandsTheFocusToTheDie) {
  auto f = test::matchReady(1);
  f->ActiveControl = "cdr";
  userClick(*f, f->RainB[0]);
  EXPECT_NE(f->RainB[0].BackColor, kRed);
  EXPECT_EQ(f->Player[4].BackColor, f->RainB[0].BackColor);
  EXPECT_EQ(f->ActiveControl, "Cdice");

  f->EditLock = 3;
  const Colour now = f->RainB[0].BackColor;
  f->ActiveControl = "cdr";
  userClick(*f, f->RainB[0]);
  EXPECT_EQ(f->RainB[0].BackColor, now);
  EXPECT_EQ(f->ActiveControl, "cdr");

  f->EditLock = 1;
  f->DiceReady = -1;  // rolled: repaint but leave the focus
  userClick(*f, f->RainB[3]);
  EXPECT_EQ(f->ActiveControl, "cdr");
}

// Many draws of every kind keep the colours readable: the randomised harness's promise
// (HarnessChecks.TeamColoursMustStayReadable).
TEST(Docol, EndsEvenWhenEveryDrawIsRefused) {
  auto f = loadedForm();
  // A thousand draws of pure green, none of them a kit colour: all refused.
  std::vector<double> green;
  for (int k = 0; k < 1000; ++k) {
    green.insert(green.end(), {0.0, 0.99, 0.0, 0.99});  // levels (0, 5, 0), pick 17: no kit
  }
  f->Rnd.force(green);
  Docol(*f, 0);
  EXPECT_EQ(f->Rnd.forcedPending(), 0u);
  Rainbow(*f);
  const Colour c = f->RainB[0].BackColor;
  EXPECT_GE(deltaE(c, kPitchLight), kStandOut);
  EXPECT_GE(contrastRatio(c, f->RainB[1].BackColor), kShirtContrast);
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

TEST(Namer, GluesTwoDifferentEntriesAndNeverSharesAFirstHalf) {
  auto f = loadedForm(3);
  for (int round = 0; round < 300; ++round) {
    useClubs(*f, round % 2 == 0);
    Namer(*f, 1 + round % 2);
    ASSERT_NE(f->HeadPick[1], f->TailPick[1]);
    ASSERT_NE(f->HeadPick[2], f->TailPick[2]);
    ASSERT_NE(f->HeadPick[1], f->HeadPick[2]);
    const int lo = round % 2 == 0 ? 1 : 61;
    ASSERT_GE(f->HeadPick[1], lo);
    ASSERT_LE(f->TailPick[2], lo + (lo == 1 ? 59 : 69));
  }
}

TEST(Namer, NationsShorterThanFourLettersBecomeStans) {
  auto f = loadedForm();
  useClubs(*f, false);
  forceNames(*f, 61, 130, {61, 68, 70, 71});  // left: I + ly
  Namer(*f, 1);
  EXPECT_EQ(f->Team[1].Text, "Ilystan");
  EXPECT_EQ(f->Team[2].Text, "Team 2");       // not named yet: left alone
  forceNames(*f, 61, 130, {61, 63, 73, 70});  // right: Den + n = "Denn", four letters, stays
  Namer(*f, 2);
  EXPECT_EQ(f->Team[2].Text, "Denn");
  EXPECT_EQ(f->Team[1].Text, "Ilystan");
}

TEST(Namer, ClubsTooLongGetATwoWordNameAndTooShortGetASecondWord) {
  auto f = loadedForm();
  useClubs(*f, true);
  forceNames(*f, 1, 60, {7, 42, 1, 2});  // left: Middles + chester, exactly 14: stays
  Namer(*f, 1);
  EXPECT_EQ(f->Team[1].Text, "Middleschester");
  EXPECT_EQ(f->Team[2].Text, "Team 2");

  forceNames(*f, 1, 60, {35, 13, 1, 2});  // left: Al + vo, four letters: a second word
  f->Rnd.force({(56 - 51 + 0.5) / 10});
  Namer(*f, 1);
  EXPECT_EQ(f->Team[1].Text, "Alvo City");

  forceNames(*f, 1, 60, {58, 57, 1, 2});  // left: Sporting + " Athletic", 17: replaced
  f->Rnd.force({(53 - 51 + 0.5) / 10, (60 - 51 + 0.5) / 10});
  Namer(*f, 1);
  EXPECT_EQ(f->Team[1].Text, "Ajax City");
  EXPECT_EQ(f->Rnd.forcedPending(), 0u);
}

TEST(Namer, RenamingOneSideAppliesTheLengthRulesToTheOther) {
  auto f = loadedForm();
  useClubs(*f, false);
  forceNames(*f, 61, 130, {61, 68, 70, 71});
  Namer(*f, 1);  // left: Ilystan
  useClubs(*f, true);
  f->TeamName[2] = "Ajax";  // the right side's last drawn name, now too short for a club
  forceNames(*f, 1, 60, {7, 42, 1, 2});
  f->Rnd.force({(59 - 51 + 0.5) / 10});
  Namer(*f, 1);
  EXPECT_EQ(f->Team[1].Text, "Middleschester");
  EXPECT_EQ(f->Team[2].Text, "Ajax United");
}

TEST(TeamButtons, ContestButtonsRedrawOneSideAndRandomTeamsBoth) {
  auto f = loadedForm(5);
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

  f->EditLock = 3;
  const std::string name = f->Team[1].Text;
  userClick(*f, f->CDcontest[1]);
  EXPECT_EQ(f->Team[1].Text, name);
}

TEST(TeamPanel, LocksNamesAndColoursAfterMinuteFourOnceBothSidesAreNamed) {
  auto f = test::matchReady(1);
  f->ClockMin = 5;
  f->Sched.advance(1000);
  EXPECT_EQ(f->EditLock, 1) << "names still the defaults";
  f->Team[1].Text = "Rovers";
  f->Team[2].Text = "United";
  f->ClockMin = 4;
  f->Sched.advance(1000);
  EXPECT_EQ(f->EditLock, 1);
  f->ClockMin = 5;
  f->Sched.advance(1000);
  EXPECT_EQ(f->EditLock, 3);
  EXPECT_TRUE(f->Team[1].Locked);
  EXPECT_FALSE(userEdit(*f, f->Team[1], "Changed"));
}

TEST(TeamPanel, HoldsOffWhileAGoalIsCelebrated) {
  auto f = test::matchReady(1);
  f->TimSc.setEnabled(true);
  f->GoalSide = 1;
  f->Player[4].BackColor = RGB(9, 9, 9);  // mid-flash
  TimTeam_Timer(*f);
  EXPECT_FALSE(f->TimTeam.Enabled());
  EXPECT_EQ(f->Player[4].BackColor, RGB(9, 9, 9));
}

TEST(Help, ShowsTheFullTextAndChangesNothing) {
  auto f = test::matchReady(2);
  const Millis now = f->Sched.now();
  userClick(*f, f->CDhelp);
  EXPECT_EQ(f->LastMessage.Title, "Free Quorvel");
  const std::string& t = f->LastMessage.Text;
  EXPECT_EQ(t.substr(0, t.find('\r')),
            "Keypad: Numlock the keypad to kick in 8 directions, 5=roll dice.");
  EXPECT_NE(t.find("(below the 'Start' button), \rthen click"), std::string::npos);
  EXPECT_NE(t.find("appear.\r\rWhen playing"), std::string::npos);
  EXPECT_EQ(t.substr(t.rfind('\r') + 1), "Click the Title-Banners for details of the game online.");
  int lines = 1;
  for (char ch : t) lines += ch == '\r';
  EXPECT_EQ(lines, 15);
  EXPECT_EQ(f->Sched.now(), now);
  EXPECT_EQ(f->TeamTurn, 2);
}

TEST(Banners, SlideIntoPlaceAfterStartAndJumpWithQuickplay) {
  auto f = test::loadedForm();
  test::startMatch(*f, 1);
  f->Sched.advance(15);
  EXPECT_EQ(f->Banner[0].Top, 5560 + 90);
  EXPECT_EQ(f->Banner[1].Top, 6700 + 45);
  f->Sched.advance(3000);
  EXPECT_EQ(f->Banner[0].Top, 9160);
  EXPECT_EQ(f->Banner[1].Top, 10300);

  auto g = test::loadedForm();
  g->Chq.Value = 1;
  test::startMatch(*g, 1);
  g->Sched.advance(15);
  EXPECT_EQ(g->Banner[0].Top, 9160);
  EXPECT_EQ(g->Banner[1].Top, 10300);

  auto h = test::loadedForm();  // a banner already at its place is not switched on
  h->Banner[0].Top = 9200;
  test::startMatch(*h, 1);
  EXPECT_FALSE(h->TimBan.Enabled());
}

TEST(Links, PagesOpenInTheBrowserOrExplainWhyNot) {
  auto f = loadedForm();
  std::string opened;
  f->platform.openUrl = [&opened](const std::string& url) {
    opened = url;
    return true;
  };
  userClick(*f, f->Banner[0]);
  EXPECT_EQ(opened.substr(opened.size() - 16), "/soccer/game.htm");
  userClick(*f, f->Command1);
  EXPECT_EQ(opened.back(), '/');
  EXPECT_TRUE(f->LastMessage.Title.empty());

  f->platform.openUrl = [](const std::string&) { return false; };
  userClick(*f, f->Banner[1]);
  EXPECT_EQ(f->LastMessage.Title, "Cannot find Browser:");
  EXPECT_EQ(f->LastMessage.Text,
            "This function requires internet explorer (iexplore.exe) to be in the directory "
            "c:\\Program Files\\  ");
  EXPECT_TRUE(f->LastMessage.critical);
}

TEST(Exit, TheClosingWindowAlternatesItsPicturesUntilItsOwnExit) {
  auto f = loadedForm();
  f->Rnd.force({0.7});  // Int(2 r) = 1: the second picture first
  userClick(*f, f->CDend);
  EXPECT_FALSE(f->Visible);
  EXPECT_TRUE(f->LinksForm.Visible);
  EXPECT_TRUE(f->LinksForm.Picture2.Visible);
  EXPECT_FALSE(f->LinksForm.Picture1.Visible);
  userClick(*f, f->CDgo);  // the main window is closed: no more input there
  EXPECT_EQ(f->GameOn, 0);
  f->Sched.advance(7000);
  EXPECT_TRUE(f->LinksForm.Picture1.Visible);
  userClickLinksForm(*f);
  EXPECT_TRUE(f->LinksForm.Picture2.Visible);
  userClick(*f, f->LinksForm.Picture2);
  EXPECT_NE(f->LastPage.find("/soccer/"), std::string::npos);
  EXPECT_FALSE(f->Ended);
  bool quit = false;
  f->platform.quit = [&quit] { quit = true; };
  userClick(*f, f->LinksForm.CDend);
  EXPECT_TRUE(f->Ended);
  EXPECT_TRUE(quit);
  userClickLinksForm(*f);  // the program has ended: no more input
  EXPECT_TRUE(f->LinksForm.Picture2.Visible);
}

}  // namespace
}  // namespace quorvel
