// Generated team names: the first half of one real club or country glued to the second half
// of another, and the buttons that redraw a side's colours and name.
#include <array>
#include <string>

#include "match/codes.h"
#include "match/match.h"
#include "match/match_form.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

struct Halves {
  const char* head;
  const char* tail;
};

// 1..60 clubs (51..60 two-word clubs), 61..130 nations. Index 0 is unused.
constexpr std::array<Halves, 131> kNames = {{
    {"", ""},
    {"Lei", "cester"},
    {"Tote", "nham"},
    {"Liver", "pool"},
    {"Burn", "ley"},
    {"West", "ham"},
    {"Aston", "villa"},
    {"Man", "chester"},
    {"Chel", "sea"},
    {"Wolver", "hampton"},
    {"Crystal", "palace"},
    {"Hudders", "field"},
    {"Bris", "tol"},
    {"Al", "bion"},
    {"Black", "burn"},
    {"Ever", "ton"},
    {"Wat", "ford"},
    {"Rov", "ers"},
    {"New", "castle"},
    {"South", "hamton"},
    {"Kaiser", "chiefs"},
    {"Sun", "downs"},
    {"Barce", "lona"},
    {"Mad", "rid"},
    {"Nap", "oli"},
    {"Juven", "tus"},
    {"Mos", "cow"},
    {"Mun", "ich"},
    {"Dub", "lin"},
    {"Cel", "tic"},
    {"Ran", "gers"},
    {"Ar", "senal"},
    {"Valen", "cia"},
    {"Villa", "real"},
    {"Espan", "yol"},
    {"Deporti", "vo"},
    {"Ama", "zulu"},
    {"Notting", "hill"},
    {"Port", "bay"},
    {"Coven", "try"},
    {"Wimble", "don"},
    {"Charl", "ton"},
    {"Middles", "borough"},
    {"Cam", "bridge"},
    {"Don", "caster"},
    {"Scun", "thorpe"},
    {"Carl", "isle"},
    {"Ply", "mouth"},
    {"Fleet", "wood"},
    {"Shrews", "bury"},
    {"Der", "by"},
    {"Orlando", " Pirates"},
    {"Icenian", " Rangers"},
    {"Ajax", " Town"},
    {"Real", " Celtic"},
    {"Gilling", " United"},
    {"Irish", " City"},
    {"Sporting", " FC"},
    {"Tokyo", " Athletic"},
    {"Bright", " United"},
    {"Spartak", " City"},
    {"Ita", "ly"},
    {"Nether", "lands"},
    {"Egy", "pt"},
    {"Rus", "sia"},
    {"Saudi", " Arabia"},
    {"Uru", "guay"},
    {"Portu", "gal"},
    {"I", "ran"},
    {"Mo", "rocco"},
    {"Spai", "n"},
    {"Fra", "nce"},
    {"Aust", "ralia"},
    {"Den", "mark"},
    {"Pe", "ru"},
    {"Argen", "tina"},
    {"Croa", "tia"},
    {"Scot", "land"},
    {"Ice", "landic"},
    {"I", "reland"},
    {"Nige", "ria"},
    {"Bra", "zil"},
    {"Costa", "rica"},
    {"Ser", "bia"},
    {"Swit", "zerland"},
    {"Germ", "any"},
    {"Ko", "rea"},
    {"Me", "xico"},
    {"Swe", "den"},
    {"Bel", "gium"},
    {"E", "ngland"},
    {"Pa", "nama"},
    {"Tuni", "sia"},
    {"Colom", "bia"},
    {"Ja", "pan"},
    {"Pola", "nd"},
    {"Sene", "gal"},
    {"Is", "rael"},
    {"Uk", "raine"},
    {"Chi", "le"},
    {"Nor", "way"},
    {"Fi", "nland"},
    {"Chi", "na"},
    {"Aus", "tria"},
    {"Czecho", "slovakia"},
    {"Yugo", "slavia"},
    {"Mace", "donia"},
    {"Gree", "ce"},
    {"Ca", "nada"},
    {"Cam", "bodia"},
    {"Viet", "nam"},
    {"Paki", "stan"},
    {"Ka", "zakstan"},
    {"Roma", "nia"},
    {"Hun", "gary"},
    {"Boli", "via"},
    {"Madagas", "car"},
    {"Tan", "zania"},
    {"Le", "sotho"},
    {"Na", "mibia"},
    {"Mozam", "bique"},
    {"Swa", "ziland"},
    {"An", "gola"},
    {"Bo", "tswana"},
    {"Mauri", "tania"},
    {"Zim", "babwe"},
    {"Li", "beria"},
    {"Sey", "chelles"},
    {"Al", "geria"},
    {"Came", "roon"},
    {"Burun", "di"},
}};

Integer drawOther(Random& rnd, int lo, int hi, int avoid) {
  int k;
  do k = randomIn(rnd, lo, hi);
  while (k == avoid);
  return static_cast<Integer>(k);
}

void applyLengthRules(MatchForm& f, int side, bool clubs) {
  std::string name = f.TeamName[side];
  if (!clubs) {
    if (name.size() < 4) name += "stan";
  } else {
    if (name.size() > 14) {
      const int a = randomIn(f.Rnd, 51, 60);
      const int b = randomIn(f.Rnd, 51, 60);
      name = f.NameHead[a] + f.NameTail[b];
    }
    if (name.size() < 5) name += f.NameTail[randomIn(f.Rnd, 51, 60)];
  }
  if (name != f.TeamName[side]) {
    f.TeamName[side] = name;
    f.Team[side].Text = name;
  }
}

}  // namespace

int Namer(MatchForm& f, int side) {
  for (int k = 1; k <= 130; ++k) {
    f.NameHead[k] = kNames[k].head;
    f.NameTail[k] = kNames[k].tail;
  }
  const bool clubs = f.OpName[0].Value;
  const int lo = clubs ? 1 : 61, hi = clubs ? 60 : 130;

  f.TailPick[1] = static_cast<Integer>(randomIn(f.Rnd, lo, hi));
  f.HeadPick[1] = drawOther(f.Rnd, lo, hi, f.TailPick[1]);
  f.HeadPick[2] = drawOther(f.Rnd, lo, hi, f.HeadPick[1]);
  f.TailPick[2] = drawOther(f.Rnd, lo, hi, f.HeadPick[2]);

  if (side == 1 || side == 2) {
    f.TeamName[side] = f.NameHead[f.HeadPick[side]] + f.NameTail[f.TailPick[side]];
    f.Team[side].Text = f.TeamName[side];
  }
  applyLengthRules(f, 1, clubs);
  applyLengthRules(f, 2, clubs);
  return side;
}

void CDcontest_Click(MatchForm& f, int index) {
  if (f.EditLock == kNamesLocked) return;
  if (index == 1) {
    Docol(f, 0);
    Docol(f, 1);
    Namer(f, 1);
  } else {
    Docol(f, 2);
    Docol(f, 3);
    Namer(f, 2);
  }
  Rainbow(f);
}

void cdr_Click(MatchForm& f) {
  mixStartUpCount(f);
  for (int i = 0; i < 4; ++i) Docol(f, i);
  Rainbow(f);
  Namer(f, 1);
  Namer(f, 2);
  f.cdr.BackColor = f.BackColor;
  f.cdr.Enabled = true;
  setFocus(f, f.cdr);
}

}  // namespace quorvel
