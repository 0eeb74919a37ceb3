// What is heard is what happened. Whole seeded matches in every mode are listened to at every
// moment, as the window listens, and what is told must be, word for word, what a seeing player
// has on show at that moment: every event heard when it happens, the sides and the score by the
// names and the score boxes, the receiver by his shirt and the square his picture stands on,
// each flag by where its picture stands, a 50/50 by its dice, a substitution by the shirts of
// the two players.
#include "ui/announcements.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "match/codes.h"
#include "match/match.h"
#include "match/pitch.h"
#include "sim.h"
#include "support.h"
#include "ui/accessible_names.h"

namespace quorvel {
namespace {

struct Square {
  int col, row;
};

// The square a picture stands on, read from where it is drawn; a goal mouth is column 0 or 17.
Square squareOf(const Control& c) {
  return {static_cast<int>(std::floor((c.Left - kGridLeft) / kSquareTwips)) + 1,
          static_cast<int>(std::floor((c.Top - kGridTop) / kSquareTwips)) + 1};
}

// The way from one square to another as a compass says it: "up", "down-left", ...
std::string way(Square from, Square to) {
  const std::string up = to.row < from.row ? "up" : to.row > from.row ? "down" : "";
  const std::string across = to.col > from.col ? "right" : to.col < from.col ? "left" : "";
  return up.empty() || across.empty() ? up + across : up + "-" + across;
}

// The face of the die picture a button shows, 0 for none.
int faceOn(const MatchForm& f, const CommandButton& b) {
  for (int k = 1; k <= 6; ++k)
    if (f.Di[k].Image == b.Image) return k;
  return 0;
}

// What the form held at the last moment, to tell what has happened since.
struct Moment {
  Long matches;
  bool flags;
  Integer kickFlag;
  double kicks;
  bool halfTime, fullTime, substituting;
  std::string left, right;  // the scores
  bool operator==(const Moment&) const = default;
};
Moment momentOf(const MatchForm& f) {
  bool flags = false;
  for (int d = 0; d < 8; ++d) flags = flags || f.CDdest[d].Visible;
  return {f.GameCount,        flags,
          f.KickFlag,         f.KickCount[1] + f.KickCount[2],
          f.HalfHold != 0,    !f.GameEnd.empty(),
          f.TimSub.Enabled(), f.Goals[1].Text,
          f.Goals[2].Text};
}

// What must be heard of the change from `last` to the form now, each word read from what is on
// show: the names and score boxes, the shirts, where the pictures stand, the dice pictures.
std::string toldNow(const MatchForm& f, const Moment& last, std::vector<std::string>& wrongNames) {
  const Moment now = momentOf(f);
  const std::string& left = f.Team[1].Text;
  const std::string& right = f.Team[2].Text;
  const int owner = roundIndex(f.BallOwner);
  const std::string& toPlay = f.Team[owner <= 11 ? 1 : 2].Text;
  const Square ball = squareOf(f.Player[owner]);
  const std::string score =
      left + " " + f.Goals[1].Text + ", " + right + " " + f.Goals[2].Text + ".";
  const bool newMatch = now.matches != last.matches;
  const bool landed = !newMatch && now.kicks > last.kicks;
  const bool halfTime = now.halfTime && !last.halfTime;
  std::vector<std::string> said;
  if (newMatch)
    said.push_back("Kick-off: " + left + " against " + right + ". " + toPlay + " to kick off.");
  if (playLeftVsAI(f) && last.kickFlag == -1 && now.kickFlag >= 0 && f.TeamTurn == kRightSide)
    said.push_back(right + " kicks " +
                   way(ball, squareOf(f.CDdest[static_cast<std::size_t>(f.KickFlag)])) + ".");
  if (landed && f.ContestWin != kNoContest)
    said.push_back("50/50: " + left + " " + std::to_string(faceOn(f, f.CDcontest[1])) + ", " +
                   right + " " + std::to_string(faceOn(f, f.CDcontest[2])) + ".");
  if (landed && f.GoalSide != 0)  // a ball in the right-hand goal is the left side's goal
    said.push_back("Goal for " + (f.Ball.Left > kCentreLeft ? left : right) + "!");
  else if (landed && !halfTime)
    said.push_back(toPlay + " number " + f.Tnum[static_cast<std::size_t>(owner)].Text +
                   " has the ball, column " + std::to_string(ball.col) + " row " +
                   std::to_string(ball.row) + ".");
  if (halfTime) said.push_back("Half time: " + score);
  if (now.fullTime && !last.fullTime) said.push_back("Full time: " + score);
  if (!newMatch && (now.left != last.left || now.right != last.right))
    said.push_back("Score: " + score + " " + toPlay + " to kick off.");
  if (now.substituting && !last.substituting)
    said.push_back(f.Team[f.TeamTurn == kRightSide ? 2 : 1].Text + ": number " + f.Tnum[0].Text +
                   " on for number " + f.Tnum[static_cast<std::size_t>(roundIndex(f.SubOff))].Text +
                   ".");
  if (now.flags && (!last.flags || landed || newMatch)) {
    // Each flag by the way from the ball to where its picture stands; its own name too.
    std::string roll = toPlay + " rolled " + std::to_string(faceOn(f, f.Cdice)) + ":";
    const char* sep = " ";
    for (int d = 0; d < 8; ++d) {
      if (!f.CDdest[d].Visible) continue;
      const Square to = squareOf(f.CDdest[d]);
      const bool shot = to.col == kLeftMouthColumn || to.col == kRightMouthColumn;
      roll += sep + std::string(shot ? "shot " : "") + way(ball, to);
      sep = ", ";
      std::string name = flagName(f, d),
                  want = way(ball, to) + (shot ? ", a shot at goal"
                                               : ", to column " + std::to_string(to.col) + " row " +
                                                     std::to_string(to.row));
      std::transform(name.begin(), name.end(), name.begin(),
                     [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
      if (name != want)
        wrongNames.push_back("flag " + std::to_string(d) + " is named \"" + name + "\", not \"" +
                             want + "\"");
    }
    said.push_back(roll + ".");
  }
  std::string text;
  for (const std::string& s : said) text += (text.empty() ? "" : " ") + s;
  return text;
}

TEST(Announcements, WhatIsHeardIsWhatHappenedInWholeMatchesOfEveryMode) {
  struct Match {
    const char* name;
    sim::Settings settings;
    std::uint64_t seed;
  };
  auto with = [](sim::Mode mode, auto change) {
    sim::Settings s;
    s.mode = mode;
    s.iq = 5;  // a computer that substitutes
    change(s);
    return s;
  };
  const Match matches[] = {
      {"Free Mode",
       with(sim::Mode::Free, [](sim::Settings& s) { s.left = sim::LeftPlayer::Random; }), 11},
      {"Mouse vs Keys, random teams, 50/50 by rank",
       with(sim::Mode::Keys, [](sim::Settings& s) { s.randomTeams = s.rank = true; }), 12},
      {"Play Left vs AI", with(sim::Mode::AI, [](sim::Settings&) {}), 11},
      {"Play Left vs AI, random teams, 10-second moves",
       with(sim::Mode::AI, [](sim::Settings& s) { s.randomTeams = s.tenSeconds = true; }), 15},
  };
  const char* kinds[] = {"Kick-off",  "rolled",    "has the ball", "Goal for", "Score:",
                         "Half time", "Full time", "50/50",        " kicks ",  " on for number "};
  for (const Match& m : matches) {
    const std::string name = std::string(m.name) + ", seed " + std::to_string(m.seed);
    auto blank = newMatchForm();  // what a form shows before Start
    Announcer told(*blank);
    Moment last = momentOf(*blank);
    int failures = 0;
    std::map<std::string, int> heard;  // how often each kind of sentence was told
    auto listen = [&](MatchForm& f, std::string_view) {
      const std::string text = told.update(f);
      const Moment now = momentOf(f);
      if (text.empty() && now == last) return;  // most ticks: the ball at its owner's feet
      std::vector<std::string> wrong;
      const std::string want = toldNow(f, last, wrong);
      last = now;
      if (want != text) {  // a caret under the first word that differs
        const auto at = std::mismatch(text.begin(), text.end(), want.begin(), want.end());
        wrong.insert(wrong.begin(), "heard    \"" + text + "\"\n  expected \"" + want + "\"\n  " +
                                        std::string(10 + (at.first - text.begin()), ' ') + "^");
      }
      for (const char* kind : kinds) heard[kind] += text.find(kind) != std::string::npos;
      if (wrong.empty() || ++failures > 3) return;  // a few moments say enough
      std::string why;
      for (const std::string& w : wrong) why += "\n  " + w;
      ADD_FAILURE() << name << ", after " << f.KickCount[1] + f.KickCount[2] << " kicks, at "
                    << f.TXtim.Text << ":" << why;
    };
    sim::playMatch(m.settings, m.seed, nullptr, listen);
    // Every kind of sentence was put to the test.
    for (const char* kind : std::span(kinds).first(7))
      EXPECT_GT(heard[kind], 0) << name << ": " << kind;
    EXPECT_EQ(heard["50/50"] > 0, !m.settings.rank) << name;
    EXPECT_EQ(heard[" kicks "] > 0, m.settings.mode == sim::Mode::AI) << name;
    EXPECT_EQ(heard[" on for number "] > 0, m.settings.mode == sim::Mode::AI) << name;
  }
}

}  // namespace
}  // namespace quorvel
