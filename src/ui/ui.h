// Presentation rules without a toolkit: the window layout, team colours and names, the team
// panel, help, banners, web links and the closing window.
#pragma once

#include <string>

#include "match/match_form.h"

namespace quorvel {

// Names every control and gives it the position, size, texts and state of the stored layout.
void applyLayout(MatchForm& f);

void Rainbow(MatchForm& f);
void RainB_Click(MatchForm& f, int index);
int Docol(MatchForm& f, int index);
int Namer(MatchForm& f, int side);
void CDcontest_Click(MatchForm& f, int index);
void cdr_Click(MatchForm& f);
void TimTeam_Timer(MatchForm& f);

void CDhelp_Click(MatchForm& f);
void CDend_Click(MatchForm& f);
void TimBan_Timer(MatchForm& f);
void Timer1_Timer(MatchForm& f);
void Banner_Click(MatchForm& f, int index);
void Command1_Click(MatchForm& f);
void Quorvel(MatchForm& f);
void Webbit(MatchForm& f);

// The closing window.
void LinksForm_Activate(MatchForm& f);
void LinksForm_Click(MatchForm& f);
void LinksForm_Timer1_Timer(MatchForm& f);
void LinksForm_Picture1_Click(MatchForm& f);
void LinksForm_Picture2_Click(MatchForm& f);
void LinksForm_Command1_Click(MatchForm& f);
void LinksForm_CDend_Click(MatchForm& f);

// The pitch's two greens; team colours are drawn to stand out against both.
constexpr Colour kPitchLight = RGB(76, 160, 60);
constexpr Colour kPitchDark = RGB(52, 128, 44);

// What Docol keeps true of the four swatches, for the typical eye and, seen through
// `simulate`, for each colour-blind one. A team's two colours are each other's shirt and number
// (outfield players, and the keeper's swapped shirt): at least `shirtContrast`, a contrast ratio,
// whose 3 : 1 is the WCAG 2 minimum for large text. Every swatch colour (keepers wear the second
// one) differs at least `fromGrass` (CIEDE2000) from both greens, and the two teams' main colours
// at least `betweenTeams` from each other. A colour-blind eye has fewer colours to tell apart,
// so it is asked less.
struct ColourRule {
  double shirtContrast, fromGrass, betweenTeams;
};
constexpr ColourRule kTypicalEyeRule = {3, 25, 25};
constexpr ColourRule kColourBlindRule = {3, 15, 10};
constexpr const ColourRule& colourRule(Vision v) {
  return v == Vision::Typical ? kTypicalEyeRule : kColourBlindRule;
}

}  // namespace quorvel
