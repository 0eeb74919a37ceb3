// The match told in words: whole scripted matches, announced after every 15 ms of ticks and
// after every input as the window does, come out in order with one outcome a kick.
#include "ui/announcements.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

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

// The flag a simple player picks: a shot when there is one, else the furthest towards the
// other goal.
int pick(const MatchForm& f) {
  const int leftward[8] = {6, 5, 7, 4, 0, 3, 1, 2}, rightward[8] = {2, 1, 3, 4, 0, 5, 7, 6};
  for (int d = 0; d < 8; ++d)
    if (f.CDdest[d].Visible && f.FlagGoal[d] == 1) return d;
  for (int d : f.TeamTurn == kLeftSide ? rightward : leftward)
    if (f.CDdest[d].Visible) return d;
  return -1;
}

// Plays a whole match in `mode` (0 Free, 2 Play Left vs AI), the left side substituting once,
// and returns every announcement made.
std::vector<std::string> playAndListen(int mode, std::uint64_t seed) {
  auto f = newMatchForm(seed);
  userClick(*f, f->OpMode[mode]);
  Announcer told(*f);
  std::vector<std::string> heard;
  auto listen = [&] {
    if (std::string text = told.update(*f); !text.empty()) heard.push_back(text);
  };
  userClick(*f, f->CDgo);
  listen();
  bool substituted = false;
  for (int step = 0; step < 400000 && f->GameEnd.empty(); ++step) {
    const bool mine = f->TeamTurn == kLeftSide || mode == 0;
    const bool ready = f->DiceReady == kDiceReady && !f->TimPlace.Enabled() &&
                       !f->TimSub.Enabled() && !f->TimSc.Enabled();
    if (mine && ready && !substituted && f->TeamTurn == kLeftSide && f->ClockMin >= 20) {
      substituted = true;
      userClick(*f, f->CHsub[0]);
    } else if (mine && ready) {
      userKey(*f, kRollKey);
    } else if (mine && f->KickFlag == -1 && pick(*f) >= 0) {
      userClick(*f, f->CDdest[pick(*f)]);
    } else {
      f->Sched.advance(15);
    }
    listen();
  }
  EXPECT_FALSE(f->GameEnd.empty());
  // One outcome a kick, no more, no fewer.
  int outcomes = 0;
  for (const std::string& text : heard) outcomes += isOutcome(text) ? 1 : 0;
  EXPECT_EQ(outcomes, f->KickCount[1] + f->KickCount[2]);
  // The last word is the final score as the boxes show it.
  EXPECT_EQ(heard.back().substr(heard.back().find("Full time: ")),
            "Full time: " + f->Team[1].Text + " " + f->Goals[1].Text + ", " + f->Team[2].Text +
                " " + f->Goals[2].Text + ".");
  return heard;
}

TEST(Announcements, AWholeMatchIsToldInOrderOneOutcomeAKick) {
  for (int mode : {0, 2}) {
    SCOPED_TRACE(mode);
    const std::vector<std::string> heard = playAndListen(mode, 11);
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
    EXPECT_GE(told[": number 12 on for number "], 1);  // the left side's, and the computer's own
    EXPECT_GT(told["Goal for"], 0);
    EXPECT_GT(told["50/50: "], 0);
    EXPECT_EQ(told[" kicks "] > 100, mode == 2);
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
