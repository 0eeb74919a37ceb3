// quorvel-sim's engine: whole matches played headless, tick by tick, as fast as the scheduler
// runs. A match is a fresh form seeded from (seed, match index), so any number of threads give
// exactly the results of one.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "match/match_form.h"

namespace quorvel::sim {

enum class Mode { Free, Keys, AI };  // "Free Mode", "Mouse vs Keys", "Play Left vs AI"
enum class LeftPlayer { Random, Mirror };

struct Settings {
  Mode mode = Mode::AI;
  int iq = 6;  // the computer's IQ: its own timer in AI mode, its weighing of flags otherwise
  LeftPlayer left = LeftPlayer::Mirror;
  int leftIq = 6;            // the IQ of the mirrored computer on the left
  bool tenSeconds = false;   // "10/15 secs" ticked: 10-second moves, 540 a match
  bool rank = false;         // 50/50 balls settled by rank instead of the dice
  bool quickplay = true;     // players put on their squares at once instead of walking
  bool randomTeams = false;  // "Random Teams" pressed before Start: drawn colours and names
  bool autoPlay = false;     // automatic play on: it may roll and play only flags first
};

struct MatchResult {
  std::uint64_t seed = 0;
  int goals[3] = {0, 0, 0};  // [1] left, [2] right
  int subs[3] = {0, 0, 0};   // substitutions started, per side
  long kicks = 0;
  Millis virtualMs = 0;
  std::int64_t ticks = 0;
  bool finished = false;  // false: stopped at the safety limit, which is a fault
};

// The seed of match `index` of a run seeded with `seed`.
std::uint64_t matchSeed(std::uint64_t seed, std::uint64_t index);

// Sees the form after each input of the people at the controls ("click Cdice", "key 5") and
// after each timer's tick (the timer's name).
using MomentObserver = std::function<void(MatchForm&, std::string_view what)>;

// One whole match, from Start to the final whistle (and the last goal's celebration).
// `atEnd`, when given, sees the form as the match left it; `onMoment` sees every step on the way.
MatchResult playMatch(const Settings& setup, std::uint64_t seed,
                      const std::function<void(MatchForm&)>& atEnd = nullptr,
                      const MomentObserver& onMoment = nullptr);

// Matches first..first+count-1 of the run seeded with `seed`, spread over `jobs` threads;
// results in match order, the same for any number of jobs.
std::vector<MatchResult> playMatches(const Settings& setup, std::uint64_t seed, std::uint64_t first,
                                     std::uint64_t count, int jobs);

// Direction d seen in a mirror that swaps columns c and 17 - c: up and down stay, left and
// right change places.
int mirrorDirection(int d);

// The computer's flag choice made for the left side: the form is mirrored (columns, sides,
// directions, score), weighed by the computer's own rules at `iq`, and put back as it was.
// Uses the form's random source exactly as the computer's own choice does.
int mirroredFlag(MatchForm& f, int iq);

// The computer's formation choice made for the left side in the game against the computer, the
// same way; the index 0..4 of the left button it picks, or -1 when it picks none (another mode,
// or players walking). Selects nothing itself.
int mirroredFormation(MatchForm& f, int iq);

// The computer's choice for the right side, at `iq`, without its timer.
int computerFlag(MatchForm& f, int iq);

struct Tally {
  long matches = 0, unfinished = 0;
  long wins[3] = {0, 0, 0};  // per side
  long draws = 0;
  long goals[3] = {0, 0, 0};
  long subs[3] = {0, 0, 0};
  long kicks = 0;
  double virtualMinutes = 0;
  std::int64_t ticks = 0;
};
Tally tally(const std::vector<MatchResult>& results);

// "1-6", "2,4,6" or "3": the IQs named, each 1..6; false when malformed.
bool parseIqList(const std::string& text, std::vector<int>& iqs);

}  // namespace quorvel::sim
