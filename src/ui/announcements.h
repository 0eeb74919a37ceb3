// What a seeing player learns from a glance at the match, told in words as it happens: the
// roll and the flags it offers, who has the ball after a kick, a 50/50 contest, a goal and the
// score, half time and full time, a substitution, the computer's kick. A viewer takes a Glance
// after each batch of ticks and of input and announces what changed since the last one; at
// most one announcement a batch, a kick's flight announces nothing until it lands. Reading
// the form changes nothing in it.
#pragma once

#include <array>
#include <string>

#include "match/match_form.h"

namespace quorvel {

// The part of the state the announcements are made of.
struct Glance {
  Long matches = 0;                   // GameCount: a new match started when it changes
  bool rolled = false;                // the side to play has rolled and not kicked yet
  int die = 0;                        // the last roll
  std::array<bool, 8> offered{};      // the flags on show
  std::array<bool, 8> shot{};         // a flag that is a shot at goal
  int side = 0;                       // the side to play, 1 or 2
  bool computerPlays = false;         // "Play Left vs AI": the right side is the computer
  int kickFlag = -1;                  // the flag of the kick in flight, -1 none
  double kicks = 0;                   // kicks completed by both sides
  int owner = 0;                      // the player with the ball
  std::string ownerShirt;             // the number on his shirt
  double col = 0, row = 0;            // the square the ball is on
  int contest = 0;                    // ContestWin
  std::array<int, 3> contestFaces{};  // (1..2) the 50/50 dice
  int goalSide = 0;                   // a goal being celebrated: 1 the right-hand goal, 2 the left
  std::array<std::string, 3> team, score;  // (1..2) names and goals on show
  bool halfTime = false, fullTime = false;
  bool substituting = false;
  int subOff = 0, subOn = 0;  // player leaving, shirt coming on
  std::string subOffShirt;    // the number on the leaving player's shirt
};

Glance glance(const MatchForm& f);

// What to announce of the change from `before` to `after`; empty when nothing is worth it.
std::string announcement(const Glance& before, const Glance& after);

// Follows a form from glance to glance and keeps what it announced.
class Announcer {
 public:
  explicit Announcer(const MatchForm& f) : last_(glance(f)) {}
  // The announcement since the last call (empty when none); it is also kept as `latest()`.
  std::string update(const MatchForm& f);
  const std::string& latest() const { return latest_; }

 private:
  Glance last_;
  std::string latest_;
};

}  // namespace quorvel
