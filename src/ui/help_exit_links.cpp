// Help, Exit and the closing window, the title banners and the maker's web pages.
#include <initializer_list>
#include <string>

#include "match/match_form.h"
#include "match/pitch.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

// The maker's site, in one place.
const std::string kSite = "https://quorvel.example.org";
const std::string kGamePage = kSite + "/soccer/game.htm";
const std::string kHomePage = kSite + "/";
const std::string kAdvertPage1 = kSite + "/soccer/chessboards.htm";
const std::string kAdvertPage2 = kSite + "/soccer/rules.htm";

void showMessage(MatchForm& f, Message m) {
  f.LastMessage = std::move(m);
  if (f.platform.showMessage) f.platform.showMessage(f.LastMessage);
}

void openPage(MatchForm& f, const std::string& url) {
  f.LastPage = url;
  const bool started = f.platform.openUrl ? f.platform.openUrl(url) : true;
  if (!started) {
    showMessage(f, Message{"Cannot find Browser:",
                           "This function requires internet explorer (iexplore.exe) to be in the "
                           "directory c:\\Program Files\\  ",
                           true});
  }
}

}  // namespace

void CDhelp_Click(MatchForm& f) {
  static const char* const kLines[] = {
      "Keypad: Numlock the keypad to kick in 8 directions, 5=roll dice.",
      "Or use the mouse to click the dice-roll button (below the 'Start' button), ",
      "then click the direction on the checked flags when they appear.",
      "",
      "When playing against AI, the IQ scroll-bar moves right to get smarter.",
      "There is no-offside-rule.",
      "",
      "Formation changes only effect at the start, half-time, after goals and substitutions.",
      "If all the players are already moving towards their new position then",
      "you can alter the formation during the moving process only once.",
      "Subs can be made only on your turn before you roll the dice.",
      "",
      "Change the team colors or names within 5 minutes of starting.",
      "The game works without the internet - feel free to give copies to your friends.",
      "Click the Title-Banners for details of the game online.",
  };
  std::string text = kLines[0];
  for (std::size_t i = 1; i < std::size(kLines); ++i) text += std::string("\r") + kLines[i];
  showMessage(f, Message{"Free Quorvel", text, false});
}

void CDend_Click(MatchForm& f) {
  // Exit unloads the main window, and its timers with it: a match in progress must not go on
  // walking and dribbling unseen behind the closing window.
  for (Timer* t : {&f.Timi, &f.TimPlace, &f.TimB, &f.TimSc, &f.TimSub, &f.TimAI, &f.TimAuto,
                   &f.TimTeam, &f.TimBan, &f.Timer1})
    t->setEnabled(false);
  f.Visible = false;
  f.LinksForm.Visible = true;
  f.LinksForm.Timer1.setEnabled(true);
  LinksForm_Activate(f);
}

void TimBan_Timer(MatchForm& f) {
  if (f.Chq.Value == 1) {
    f.Banner[0].Top = kBannerRestTop[0];
    f.Banner[1].Top = kBannerRestTop[1];
  }
  if (f.Banner[0].Top < kBannerRestTop[0]) f.Banner[0].Top += 90;
  if (f.Banner[1].Top < kBannerRestTop[1]) f.Banner[1].Top += 45;
}

void Timer1_Timer(MatchForm&) {}  // a spare timer of the layout; it is never switched on

void Banner_Click(MatchForm& f, int index) {
  if (index == 0)
    Quorvel(f);
  else
    Webbit(f);
}

void Command1_Click(MatchForm& f) {
  Webbit(f);
}
void Quorvel(MatchForm& f) {
  openPage(f, kGamePage);
}
void Webbit(MatchForm& f) {
  openPage(f, kHomePage);
}

void LinksForm_Activate(MatchForm& f) {
  const bool first = static_cast<int>(intPart(2 * f.Rnd.next())) == 0;
  f.LinksForm.Picture1.Visible = first;
  f.LinksForm.Picture2.Visible = !first;
}

void LinksForm_Click(MatchForm& f) {
  auto& l = f.LinksForm;
  const bool one = l.Picture1.Visible;
  l.Picture1.Visible = !one;
  l.Picture2.Visible = one;
}

void LinksForm_Timer1_Timer(MatchForm& f) {
  LinksForm_Click(f);
}
void LinksForm_Picture1_Click(MatchForm& f) {
  openPage(f, kAdvertPage1);
}
void LinksForm_Picture2_Click(MatchForm& f) {
  openPage(f, kAdvertPage2);
}
void LinksForm_Command1_Click(MatchForm& f) {
  openPage(f, kSite);
}

void LinksForm_CDend_Click(MatchForm& f) {
  f.Ended = true;
  f.LinksForm.Timer1.setEnabled(false);
  if (f.platform.quit) f.platform.quit();
}

}  // namespace quorvel
