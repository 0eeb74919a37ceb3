// Team colours: the four swatches are the one source; Rainbow carries them onto everything
// that shows a team, and Docol draws a new colour for one swatch.
#include <algorithm>
#include <array>

#include "match/codes.h"
#include "match/match_form.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

void paint(Control& c, Colour back, Colour text) {
  c.BackColor = back;
  c.ForeColor = text;
}

}  // namespace

void Rainbow(MatchForm& f) {
  for (int i = 0; i < 4; ++i) f.RainB[i].BackColor = RGB(f.ColRed[i], f.ColGreen[i], f.ColBlue[i]);
  const Colour s0 = f.RainB[0].BackColor, s1 = f.RainB[1].BackColor;
  const Colour s2 = f.RainB[2].BackColor, s3 = f.RainB[3].BackColor;

  for (int i = 0; i <= 4; ++i) {
    paint(f.OPForm[i], s1, s0);
    if (f.OPForm[i].Value) paint(f.OPForm[i], s0, s1);
  }
  for (int i = 10; i <= 14; ++i) {
    paint(f.OPForm[i], s2, s3);
    if (f.OPForm[i].Value) paint(f.OPForm[i], s3, s2);
  }
  for (int i = 1; i <= 22; ++i) {
    if (i >= 2 && i <= 11) {
      f.Player[i].BackColor = s0;
      paint(f.Tnum[i], s0, s1);
    } else if (i >= 13) {
      f.Player[i].BackColor = s3;
      paint(f.Tnum[i], s3, s2);
    }
  }
  paint(f.Poses[1], s1, s0);
  paint(f.Poses[2], s2, s3);
  f.Player[1].BackColor = s1;
  paint(f.Tnum[1], s1, s0);
  paint(f.Team[1], s1, s0);
  paint(f.Goals[1], s0, s1);
  f.Player[12].BackColor = s2;
  paint(f.Tnum[12], s2, s3);
  paint(f.Team[2], s2, s3);
  paint(f.Goals[2], s3, s2);
  paint(f.CHsub[2], s3, s2);
  paint(f.CHsub[1], s0, s1);
  paint(f.CHsub[3], s3, s2);
  paint(f.CHsub[0], s0, s1);
}

void RainB_Click(MatchForm& f, int index) {
  if (f.EditLock == kNamesLocked) return;
  Docol(f, index);
  Rainbow(f);
  if (f.DiceReady == kDiceReady) setFocus(f, f.Cdice);
}

// ---- Docol -----------------------------------------------------------------------------------
//
// A colour is three levels 0..6, each component being level x 42. One draw gives three random
// levels 0..5; a second draw in 0..17 replaces them, for 0..9, by one of ten kit colours made
// of the levels 1, 3 and 6. The draw is repeated until the colour
//   - contrasts with its own team's other colour (shirt numbers stay readable),
//   - stands out from both pitch greens (pieces and keepers show on the grass), and
//   - for a main colour, stands out from the other team's main colour,
// each as the typical eye sees it and as each colour-blind eye sees it (see ColourRule).
// Lightness decides the first, so it is a contrast ratio; hue counts as much as lightness for
// the other two, so they are colour differences.
// After 1000 refused draws (possible only with a perverse forced sequence) the first kit
// colour, then the first of all colours, that passes is taken; some always does while the
// other swatches hold colours of random levels, kit colours or the start-up ones, and
// otherwise the one that fails by least. So a draw always ends.

namespace {

struct Levels {
  int r, g, b;
  Colour colour() const { return RGB(r * 42, g * 42, b * 42); }
};

constexpr std::array<Levels, 10> kKits = {{{6, 6, 6},
                                           {1, 1, 1},
                                           {6, 1, 1},
                                           {1, 1, 6},
                                           {6, 6, 1},
                                           {6, 3, 1},
                                           {3, 1, 6},
                                           {1, 6, 6},
                                           {6, 1, 6},
                                           {3, 1, 1}}};

Colour swatch(const MatchForm& f, int i) {
  return RGB(f.ColRed[i], f.ColGreen[i], f.ColBlue[i]);
}

// 0<->1 (left), 2<->3 (right).
int partnerOf(int i) {
  return i ^ 1;
}

// How far `c` is from failing as swatch `index`, each measure in units of its own threshold:
// 0 or more passes.
double margin(const MatchForm& f, int index, Colour c) {
  double m = 1e9;
  for (Vision v : kVisions) {
    const ColourRule& rule = colourRule(v);
    const Colour seen = simulate(c, v);
    const double contrast = contrastRatio(seen, simulate(swatch(f, partnerOf(index)), v));
    m = std::min(m, contrast / rule.shirtContrast - 1);
    for (Colour green : {kPitchLight, kPitchDark})
      m = std::min(m, deltaE(seen, simulate(green, v)) / rule.fromGrass - 1);
    if (index == 0 || index == 3)
      m = std::min(m, deltaE(seen, simulate(swatch(f, 3 - index), v)) / rule.betweenTeams - 1);
  }
  return m;
}

bool acceptable(const MatchForm& f, int index, Levels c) {
  return margin(f, index, c.colour()) >= 0;
}

Levels fallbackColour(const MatchForm& f, int index) {
  for (const Levels& k : kKits)
    if (acceptable(f, index, k)) return k;
  Levels best{6, 6, 6};
  double bestMargin = -1e9;
  for (int r = 0; r <= 6; ++r)
    for (int g = 0; g <= 6; ++g)
      for (int b = 0; b <= 6; ++b) {
        const Levels c{r, g, b};
        const double m = margin(f, index, c.colour());
        if (m >= 0) return c;
        if (m > bestMargin) best = c, bestMargin = m;
      }
  return best;
}

}  // namespace

int Docol(MatchForm& f, int index) {
  Levels c{};
  bool ok = false;
  for (int attempt = 0; attempt < 1000 && !ok; ++attempt) {
    c = {randomIn(f.Rnd, 0, 5), randomIn(f.Rnd, 0, 5), randomIn(f.Rnd, 0, 5)};
    const int pick = randomIn(f.Rnd, 0, 17);
    if (pick <= 9) c = kKits[static_cast<std::size_t>(pick)];
    ok = acceptable(f, index, c);
  }
  if (!ok) c = fallbackColour(f, index);
  f.RedStep[index] = static_cast<Integer>(c.r);
  f.GreenStep[index] = static_cast<Integer>(c.g);
  f.BlueStep[index] = static_cast<Integer>(c.b);
  f.ColRed[index] = static_cast<Integer>(c.r * 42);
  f.ColGreen[index] = static_cast<Integer>(c.g * 42);
  f.ColBlue[index] = static_cast<Integer>(c.b * 42);
  return index;
}

}  // namespace quorvel
