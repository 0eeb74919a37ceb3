#include "ui/announcements.h"

#include <algorithm>
#include <cctype>

#include "match/codes.h"
#include "match/match.h"
#include "ui/accessible_names.h"

namespace quorvel {

namespace {

std::string lower(std::string_view s) {
  std::string out(s);
  std::transform(out.begin(), out.end(), out.begin(),
                 [](unsigned char ch) { return static_cast<char>(std::tolower(ch)); });
  return out;
}

int faceOf(const std::string& image) {
  const bool die = image.size() == 4 && image.rfind("die", 0) == 0;
  return die ? image[3] - '0' : 0;
}

std::string scoreLine(const Glance& g) {
  return g.team[1] + " " + g.score[1] + ", " + g.team[2] + " " + g.score[2] + ".";
}

std::string rollLine(const Glance& g) {
  std::string line =
      g.team[static_cast<std::size_t>(g.side)] + " rolled " + std::to_string(g.die) + ":";
  const char* sep = " ";
  for (int d = 0; d < 8; ++d) {
    if (!g.offered[static_cast<std::size_t>(d)]) continue;
    line += sep;
    if (g.shot[static_cast<std::size_t>(d)]) line += "shot ";
    line += lower(directionName(d));
    sep = ", ";
  }
  return line + ".";
}

void add(std::string& text, const std::string& sentence) {
  if (sentence.empty()) return;
  if (!text.empty()) text += ' ';
  text += sentence;
}

// A kick that landed: the contest, then the goal or the new owner (unless half time has
// already given the ball to the side kicking off).
std::string landingLine(const Glance& g, bool withOwner) {
  std::string line;
  if (g.contest != kNoContest)
    line = "50/50: " + g.team[1] + " " + std::to_string(g.contestFaces[1]) + ", " + g.team[2] +
           " " + std::to_string(g.contestFaces[2]) + ".";
  if (g.goalSide != 0)
    add(line, "Goal for " + g.team[g.goalSide == 1 ? 1 : 2] + "!");
  else if (withOwner)
    add(line, g.team[static_cast<std::size_t>(sideOf(g.owner))] + " number " + g.ownerShirt +
                  " has the ball, " + squareName(g.col, g.row) + ".");
  return line;
}

}  // namespace

Glance glance(const MatchForm& f) {
  Glance g;
  g.matches = f.GameCount;
  for (std::size_t d = 0; d < 8; ++d) {
    g.offered[d] = f.CDdest[d].Visible;
    g.shot[d] = f.FlagGoal[d] == 1;
    g.rolled = g.rolled || g.offered[d];
  }
  g.die = f.DiceValue;
  g.side = f.TeamTurn == kRightSide ? 2 : 1;
  g.computerPlays = playLeftVsAI(f);
  g.kickFlag = f.KickFlag;
  g.kicks = f.KickCount[1] + f.KickCount[2];
  g.owner = std::clamp(roundIndex(f.BallOwner), 1, 22);
  // A substitute plays on in the place of the player he replaced, wearing his own number.
  g.ownerShirt = f.Tnum[static_cast<std::size_t>(g.owner)].Text;
  g.col = f.BallCol;
  g.row = f.BallRow;
  g.contest = f.ContestWin;
  for (std::size_t s = 1; s <= 2; ++s) {
    g.contestFaces[s] = faceOf(f.CDcontest[s].Image);
    g.team[s] = f.Team[s].Text;
    g.score[s] = f.Goals[s].Text;
  }
  g.goalSide = f.GoalSide;
  g.halfTime = f.HalfHold != 0;
  g.fullTime = !f.GameEnd.empty();
  g.substituting = f.TimSub.Enabled();
  g.subOff = roundIndex(f.SubOff);
  g.subOn = roundIndex(f.SubNumber);
  if (g.substituting)
    g.subOffShirt = f.Tnum[static_cast<std::size_t>(std::clamp(g.subOff, 0, 22))].Text;
  return g;
}

std::string announcement(const Glance& before, const Glance& after) {
  std::string text;
  const bool newMatch = after.matches != before.matches;
  if (newMatch)
    add(text, "Kick-off: " + after.team[1] + " against " + after.team[2] + ". " +
                  after.team[static_cast<std::size_t>(after.side)] + " to kick off.");
  if (after.computerPlays && before.kickFlag == -1 && after.kickFlag >= 0 && after.side == 2)
    add(text, after.team[2] + " kicks " + lower(directionName(after.kickFlag)) + ".");
  const bool landed = !newMatch && after.kicks > before.kicks;
  const bool halfTime = after.halfTime && !before.halfTime;
  if (landed) add(text, landingLine(after, !halfTime));
  if (halfTime) add(text, "Half time: " + scoreLine(after));
  if (after.fullTime && !before.fullTime) add(text, "Full time: " + scoreLine(after));
  if (!newMatch && after.score != before.score)
    add(text, "Score: " + scoreLine(after) + " " +
                  after.team[static_cast<std::size_t>(after.side)] + " to kick off.");
  if (after.substituting && !before.substituting && after.subOff > 0)
    add(text, after.team[static_cast<std::size_t>(sideOf(after.subOff))] + ": number " +
                  std::to_string(after.subOn) + " on for number " + after.subOffShirt + ".");
  if (after.rolled && (!before.rolled || landed || newMatch)) add(text, rollLine(after));
  return text;
}

std::string Announcer::update(const MatchForm& f) {
  Glance now = glance(f);
  std::string text = announcement(last_, now);
  last_ = std::move(now);
  if (!text.empty()) latest_ = text;
  return text;
}

}  // namespace quorvel
