#include "ui/accessible_names.h"

#include <array>
#include <charconv>
#include <initializer_list>

#include "match/codes.h"
#include "match/match.h"
#include "ui/pictures.h"

namespace quorvel {

namespace {

constexpr std::array<std::string_view, 8> kDirections = {"Up",   "Up-right",  "Right", "Down-right",
                                                         "Down", "Down-left", "Left",  "Up-left"};

// The parts one after another, made at once: every control's name is made anew at each look
// at every control, so no part is a string of its own.
std::string joined(std::initializer_list<std::string_view> parts) {
  std::size_t length = 0;
  for (const std::string_view part : parts) length += part.size();
  std::string s;
  s.reserve(length);
  for (const std::string_view part : parts) s.append(part);
  return s;
}

// A whole number as digits, in a buffer of its own.
struct Digits {
  explicit Digits(long n)
      : end(std::to_chars(buffer.data(), buffer.data() + buffer.size(), n).ptr) {}
  std::string_view view() const {
    return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
  }
  std::array<char, 24> buffer{};
  char* end;
};

// "Rovers", " number ", "7": the number on the shirt, as a substitute keeps his own in the
// place of the player he replaced.
std::array<std::string_view, 3> playerWords(const MatchForm& f, int player) {
  return {f.Team[sideOf(player)].Text, " number ", f.Tnum[static_cast<std::size_t>(player)].Text};
}

std::string sideWords(int side, std::string_view what) {
  return joined({sideName(side), "'s ", what});
}

std::string dieName(const MatchForm& f) {
  if (f.GameOn != kNoMatchYet && f.DiceReady == kDiceRolled && dieFaceOf(f.Cdice.Image) > 0)
    return joined({"Die, showing ", Digits(dieFaceOf(f.Cdice.Image)).view()});
  return "Roll the die";
}

std::string contestDieName(const MatchForm& f, int side) {
  constexpr std::string_view kWhatItDoes = ": new colours and name for this team";
  if (const int face = dieFaceOf(f.CDcontest[side].Image); face > 0)
    return joined({sideName(side), "'s 50/50 die, showing ", Digits(face).view(), kWhatItDoes});
  return joined({sideName(side), "'s 50/50 die", kWhatItDoes});
}

std::string pictureName(const MatchForm& f, const Control& c) {
  if (const int i = indexIn(f.Player, c); i > 0) {
    // Before the first match the teams wait below the pitch, on no square.
    if (f.PlayerCol[i] < 1) return playerName(f, i);
    const auto [team, number, shirt] = playerWords(f, i);
    return joined({team, number, shirt, ", ", squareName(f.PlayerCol[i], f.PlayerRow[i])});
  }
  if (&c == &f.Player[0]) return "Substitute";
  if (&c == &f.Ball) return "Ball";
  if (&c == &f.Grass) return "Pitch";
  if (&c == &f.Goal[1]) return "Left goal";
  if (&c == &f.Goal[0]) return "Right goal";
  if (&c == &f.PicGame) return joined({f.TXgame[0].Text, " ", f.TXgame[1].Text});
  if (const int i = indexIn(f.RainB, c); i >= 0) {
    // 0 and 3 are the sides' main colours, 1 and 2 their second ones.
    const int side = i < 2 ? 1 : 2;
    const bool main = i == 0 || i == 3;
    return sideWords(side, main ? "main colour: change it" : "second colour: change it");
  }
  if (&c == &f.Banner[0] || &c == &f.Banner[1]) return c.ToolTipText;
  if (&c == &f.LinksForm.Picture1 || &c == &f.LinksForm.Picture2) return "Visit the maker's page";
  return {};
}

std::string buttonName(const MatchForm& f, const CommandButton& b) {
  if (&b == &f.Cdice) return dieName(f);
  // Flags 8 and 9 stand for no direction and are never shown.
  if (const int d = indexIn(f.CDdest, b); d >= 0 && !directionName(d).empty())
    return flagName(f, d);
  if (const int s = indexIn(f.CDcontest, b); s > 0) return contestDieName(f, s);
  if (&b == &f.Command1) return "Visit the maker's web site";
  if (&b == &f.CDhm) return "Play the computer's chosen flag";
  return b.Caption;
}

std::string textBoxName(const MatchForm& f, const TextBox& t) {
  for (int s = 1; s <= 2; ++s) {
    if (&t == &f.Team[s]) return sideWords(s, "name");
    if (&t == &f.Goals[s]) return sideWords(s, "goals");
    if (&t == &f.Poses[s]) return sideWords(s, "possession");
  }
  if (&t == &f.TXtim) return "Match clock";
  if (&t == &f.Text3) return "IQ";
  if (&t == &f.Text4) return "Computer's speed";
  return t.Text;
}

}  // namespace

std::string_view directionName(int d) {
  return d >= 0 && d < 8 ? kDirections[static_cast<std::size_t>(d)] : std::string_view{};
}

std::string squareName(double col, double row) {
  return joined(
      {"column ", Digits(roundIndex(col)).view(), " row ", Digits(roundIndex(row)).view()});
}

std::string_view sideName(int side) {
  return side == 1 ? "Left team" : "Right team";
}

std::string flagName(const MatchForm& f, int d) {
  if (f.FlagGoal[d] == 1) return joined({directionName(d), ", a shot at goal"});
  double col = 0, row = 0;
  flagTarget(f, d, col, row);
  return joined({directionName(d), ", to ", squareName(col, row)});
}

std::string playerName(const MatchForm& f, int player) {
  const auto [team, number, shirt] = playerWords(f, player);
  return joined({team, number, shirt});
}

std::string accessibleName(const MatchForm& f, const Control& c) {
  switch (c.kind) {
    case Kind::Picture:
      return pictureName(f, c);
    case Kind::CommandButton:
      return buttonName(f, static_cast<const CommandButton&>(c));
    case Kind::TextBox:
      return textBoxName(f, static_cast<const TextBox&>(c));
    case Kind::CheckBox: {
      if (const int i = indexIn(f.CHsub, c); i >= 0) {
        // Boxes 0 and 3 bring on number 12, 1 and 2 number 13.
        const int number = i == 0 || i == 3 ? 12 : 13;
        return joined(
            {sideName(i < 2 ? 1 : 2), "'s substitute: bring on number ", Digits(number).view()});
      }
      if (&c == &f.Chp) return "Let the computer only show its choice";
      return static_cast<const CheckBox&>(c).Caption;
    }
    case Kind::OptionButton:
      return static_cast<const OptionButton&>(c).Caption;
    case Kind::ScrollBar:
      if (&c == &f.Hai) return "Computer's IQ, 1 dumb to 6 smart";
      return "Computer's thinking time in milliseconds";
    case Kind::Frame:
      if (&c == &f.Fra1) return sideWords(1, "formation");
      if (&c == &f.Fra2) return sideWords(2, "formation");
      if (&c == &f.FrameMode) return "Who plays, and the computer's IQ and speed";
      return "New team names from";
    case Kind::Label:
      return static_cast<const Label&>(c).Caption;
  }
  return {};
}

}  // namespace quorvel
