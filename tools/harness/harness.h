// The randomised harness: seeded sequences of every input a person or the timers can produce,
// with the game's promises checked after every input and every timer tick. The same seed
// gives the same run, so a broken promise is reported as (seed, step) and replays exactly.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "match/match_form.h"
#include "state_view.h"

namespace quorvel::harness {

struct Fault {
  std::uint64_t seed = 0;
  std::int64_t step = 0;  // 1-based step during (or after) which the promise broke
  std::string what;
};

class Harness {
 public:
  explicit Harness(std::uint64_t seed);

  // Runs `steps` more steps; stops early and returns false at the first broken promise.
  bool run(std::int64_t steps);

  const Fault& fault() const { return fault_; }
  bool failed() const { return !fault_.what.empty(); }
  // The latest steps, oldest first ("click Cdice", "key 5", "advance 1500").
  std::vector<std::string> recent() const { return {recent_.begin(), recent_.end()}; }
  // The whole report of a fault: seed, step, what broke and the steps before it.
  std::string report() const;

  // The form under test.
  MatchForm& form() { return *form_; }

  // Ticks one advance of `ms` may run: every timer at most once per interval of 15 ms or more,
  // twice allowing for the tick at each end. More means a handler keeps re-arming its timer.
  static std::int64_t tickBound(Millis ms) { return 11 * (ms / 15 + 2); }

 private:
  void takeStep();
  // Virtual time moves on `ms`, tick by tick, every promise checked after each tick.
  void advance(Millis ms);
  void newProgram();
  void act();
  void clickSomething();
  void clickForPlay();
  void pressKey();
  void scroll();
  void typeName();
  void inputBehindClosingWindow();
  void advanceAtOnce(Millis ms);
  void note(std::string what);
  bool breakPromise(std::string what);
  void baseline();
  bool check();
  // One function a promise, in the order they are judged; each returns false once it breaks.
  void noteNewMatch();
  bool checkSideToPlay();
  bool checkRoll();
  bool checkClock();
  bool checkScore();
  bool checkSubstitutions();
  bool checkBoxesAtRest();
  bool coloursChanged();
  bool checkTeamColours();
  bool checkGoesOn();

  int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng_); }
  bool chance(double p) { return std::uniform_real_distribution<double>(0, 1)(rng_) < p; }

  std::uint64_t seed_;
  std::mt19937_64 rng_;  // the person's hand; the game's dice are the form's own source
  std::unique_ptr<MatchForm> form_;
  std::unique_ptr<StateView> view_;  // the whole state as one number
  std::vector<Control*> controls_;
  std::int64_t steps_ = 0;  // inputs and advances taken
  Fault fault_;
  std::deque<std::string> recent_;

  // What the promises compare against: the state at the last check.
  struct Seen {
    Long gameCount = 0;
    int clock = 0;  // seconds of match time
    double score[3] = {0, 0, 0};
    int shotsPending[3] = {0, 0, 0};  // arrived shots whose goal is not yet on the board
    int subs[3] = {0, 0, 0};
    bool celebrating = false, exchanging = false;
    Single diceReady = 0;
  } seen_;
  std::array<std::array<Integer, 5>, 3> seenColours_{};  // red, green, blue of the swatches
  // What a 50/50 contest's flight moves and lights, as the window opened with them: the left
  // edges of both names and both scores, and the 50/50 box's colour.
  std::array<double, 4> boxLefts_{};
  Colour ch50Colour_{};
};

}  // namespace quorvel::harness
