// The match told in words: whole scripted matches, announced after every 15 ms of ticks and
// after every input as the window does, come out in order with one outcome a kick.
#include "ui/announcements.h"

#include <gtest/gtest.h>

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
    int halves = 0, ends = 0, contests = 0, goals = 0, subs = 0, computerKicks = 0;
    // What may come next: after a roll its kick's outcome (the computer first says which way
    // it kicks); after a goal the score; and a roll never twice in a row.
    bool awaitingOutcome = false, awaitingScore = false;
    for (std::size_t i = 1; i < heard.size(); ++i) {
      const std::string& text = heard[i];
      SCOPED_TRACE(text);
      const bool roll = has(text, " rolled "), kicks = has(text, " kicks ");
      const bool outcome = isOutcome(text);
      EXPECT_LE(int(roll) + int(outcome) + int(kicks), 1) << "one event a batch here";
      if (roll) {
        EXPECT_FALSE(awaitingOutcome || awaitingScore);
        awaitingOutcome = true;
      }
      if (outcome) {
        EXPECT_TRUE(awaitingOutcome);
        awaitingOutcome = false;
      }
      if (kicks) {
        EXPECT_EQ(text.rfind("Team 2 kicks ", 0), 0U) << "only the computer's kick is told";
        EXPECT_TRUE(awaitingOutcome);
        EXPECT_EQ(mode, 2);
        ++computerKicks;
      }
      if (has(text, "Score: ")) {
        EXPECT_TRUE(awaitingScore);
        awaitingScore = false;
      }
      if (has(text, "Goal for")) awaitingScore = true, ++goals;
      // Half time hands the ball to the side kicking off: the kick's receiver is not named.
      if (has(text, "Half time: ")) {
        EXPECT_FALSE(has(text, " has the ball"));
      }
      halves += has(text, "Half time: ") ? 1 : 0;
      ends += has(text, "Full time: ") ? 1 : 0;
      contests += has(text, "50/50: ") ? 1 : 0;
      subs += has(text, ": number 12 on for number ") ? 1 : 0;
    }
    EXPECT_EQ(halves, 1);
    EXPECT_EQ(ends, 1);
    EXPECT_GE(subs, 1);  // the left side's, and the computer's own
    EXPECT_GT(goals, 0);
    EXPECT_GT(contests, 0);
    EXPECT_EQ(computerKicks > 100, mode == 2);
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
