// The match told in words: whole matches, announced at every moment as the window does, come out
// in order with one outcome a kick.
#include "ui/announcements.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "sim.h"
#include "support.h"
#include "ui/accessible_names.h"

namespace quorvel {
namespace {

bool has(const std::string& text, const char* words) {
  return text.find(words) != std::string::npos;
}

// How a kick ended: the new owner, a goal, or half time (whose kick-off takes the ball).
bool isOutcome(const std::string& text) {
  return has(text, " has the ball") || has(text, "Goal for") || has(text, "Half time: ");
}

// Plays a whole match through the simulator, listening at every moment it changed as the window
// listens after each input and tick, and returns every announcement made.
std::vector<std::string> playAndListen(sim::Mode mode) {
  Announcer told(*newMatchForm());  // what a form shows before Start
  std::vector<std::string> heard;
  auto listen = [&](MatchForm& f, std::string_view) {
    if (std::string text = told.update(f); !text.empty()) heard.push_back(text);
  };
  auto atEnd = [&heard](MatchForm& f) {
    EXPECT_FALSE(f.GameEnd.empty());
    // One outcome a kick, no more, no fewer.
    EXPECT_EQ(std::count_if(heard.begin(), heard.end(), isOutcome),
              f.KickCount[1] + f.KickCount[2]);
    // The last word is the final score as the boxes show it.
    EXPECT_EQ(heard.back().substr(heard.back().find("Full time: ")),
              "Full time: " + f.Team[1].Text + " " + f.Goals[1].Text + ", " + f.Team[2].Text + " " +
                  f.Goals[2].Text + ".");
  };
  sim::Settings settings;
  settings.mode = mode;
  settings.iq = 5;  // a computer that substitutes in this match
  sim::playMatch(settings, 11, atEnd, listen);
  return heard;
}

TEST(Announcements, AWholeMatchIsToldInOrderOneOutcomeAKick) {
  for (sim::Mode mode : {sim::Mode::Free, sim::Mode::AI}) {
    SCOPED_TRACE(static_cast<int>(mode));
    const std::vector<std::string> heard = playAndListen(mode);
    ASSERT_GT(heard.size(), 700U);
    EXPECT_EQ(heard.front().rfind("Kick-off: ", 0), 0U);
    // After a roll its kick's outcome (the computer first says which way it kicks); after a
    // goal the score; and a roll never twice in a row.
    std::string awaiting;
    std::map<std::string, int> told;
    for (std::size_t i = 1; i < heard.size(); ++i) {
      const std::string& text = heard[i];
      SCOPED_TRACE(text);
      const bool roll = has(text, " rolled "), kicks = has(text, " kicks "),
                 outcome = isOutcome(text);
      EXPECT_LE(int(roll) + int(outcome) + int(kicks), 1) << "one event a batch here";
      // What was awaited comes, and what comes next is awaited.
      auto comes = [&](bool it, const char* was, const char* next) {
        if (!it) return;
        EXPECT_EQ(awaiting, was);
        awaiting = next;
      };
      comes(roll, "", "outcome");
      comes(kicks, "outcome", "outcome");
      comes(outcome, "outcome", "");
      comes(has(text, "Score: "), "score", "");
      EXPECT_TRUE(!kicks || text.rfind("Team 2 kicks ", 0) == 0) << "only the computer's kick";
      if (has(text, "Goal for")) awaiting = "score";
      // Half time hands the ball to the side kicking off: the kick's receiver is not named.
      EXPECT_FALSE(has(text, "Half time: ") && has(text, " has the ball"));
      for (const char* kind : {"Half time: ", "Full time: ", "50/50: ", "Goal for", " kicks ",
                               ": number 12 on for number "})
        told[kind] += has(text, kind) ? 1 : 0;
    }
    EXPECT_EQ(told["Half time: "], 1);
    EXPECT_EQ(told["Full time: "], 1);
    EXPECT_EQ(told[": number 12 on for number "] > 0, mode == sim::Mode::AI);  // the computer's
    EXPECT_GT(told["Goal for"], 0);
    EXPECT_GT(told["50/50: "], 0);
    EXPECT_EQ(told[" kicks "] > 100, mode == sim::Mode::AI);
  }
}

TEST(Announcements, FlagsAndControlsAreNamedByWhatTheyDo) {
  auto f = test::matchReady(1);
  test::clearPitch(*f);
  test::putPlayer(*f, 9, 9, 3);
  f->BallOwner = 9, f->BallCol = 9, f->BallRow = 3;
  f->Rnd.force({test::face(2)});
  userKey(*f, kRollKey);
  EXPECT_EQ(flagName(*f, 1), "Up-right, to column 11 row 1");
  EXPECT_EQ(flagName(*f, 6), "Left, to column 7 row 3");
  EXPECT_EQ(accessibleName(*f, f->Cdice), "Die, showing 2");
  test::putPlayer(*f, 9, 15, 4);
  f->BallCol = 15, f->BallRow = 4;
  f->DiceReady = kDiceReady;
  f->Rnd.force({test::face(2)});
  userKey(*f, kRollKey);
  EXPECT_EQ(flagName(*f, 2), "Right, a shot at goal");
  EXPECT_EQ(accessibleName(*f, f->Player[9]), f->Team[1].Text + " number 9, column 15 row 4");
  EXPECT_EQ(accessibleName(*f, f->CHsub[3]), "Right team's substitute: bring on number 12");
  EXPECT_EQ(accessibleName(*f, f->Goals[2]), "Right team's goals");
}

}  // namespace
}  // namespace quorvel
