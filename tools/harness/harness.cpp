#include "harness.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "events/events.h"
#include "match/codes.h"
#include "match/match.h"
#include "state_view.h"
#include "ui/ui.h"

namespace quorvel::harness {

namespace {

constexpr std::size_t kRecentSteps = 40;
constexpr int kFullTime = 90 * 60;

int clockSeconds(const MatchForm& f) {
  return static_cast<int>(f.ClockMin) * 60 + static_cast<int>(std::lround(f.ClockSec * 100));
}

}  // namespace

Harness::Harness(std::uint64_t seed) : seed_(seed), rng_(seed) {
  newProgram();
}

void Harness::newProgram() {
  form_ = newMatchForm(rng_());
  view_ = std::make_unique<StateView>(*form_);
  controls_.clear();
  forEachControl(*form_, [this](Control& c) {
    if (!form_->LinksForm.holds(c)) controls_.push_back(&c);
  });
  seen_ = Seen{};
  const MatchForm& f = *form_;
  boxLefts_ = {f.Team[1].Left, f.Team[2].Left, f.Goals[1].Left, f.Goals[2].Left};
  ch50Colour_ = f.Ch50.ForeColor;
  baseline();
}

void Harness::note(std::string what) {
  if (recent_.size() == kRecentSteps) recent_.pop_front();
  recent_.push_back(std::move(what));
}

bool Harness::breakPromise(std::string what) {
  if (!failed()) fault_ = Fault{seed_, steps_, std::move(what)};
  return false;
}

std::string Harness::report() const {
  std::ostringstream s;
  s << "seed " << fault_.seed << ", step " << fault_.step << ": " << fault_.what
    << "\nthe steps before it, oldest first:\n";
  for (const auto& r : recent_) s << "  " << r << "\n";
  return s.str();
}

bool Harness::run(std::int64_t steps) {
  for (std::int64_t n = 0; n < steps && !failed(); ++n) takeStep();
  return !failed();
}

void Harness::takeStep() {
  ++steps_;
  act();
  if (!failed()) check();
}

// ---- inputs ----------------------------------------------------------------------------------

void Harness::act() {
  MatchForm& f = *form_;
  if (f.Ended) {
    note("the program is started afresh");
    newProgram();
    return;
  }
  if (!f.Visible) {  // only the closing window is left
    const int k = below(10);
    if (k < 1) {
      note("click LinksForm.CDend");
      userClick(f, f.LinksForm.CDend);
    } else if (k < 5) {
      Control* c[] = {&f.LinksForm.Picture1, &f.LinksForm.Picture2, &f.LinksForm.Command1};
      Control& pick = *c[below(3)];
      note("click " + pick.name);
      userClick(f, pick);
    } else if (k < 6) {
      note("click LinksForm");
      userClickLinksForm(f);
    } else if (k < 9) {
      inputBehindClosingWindow();
    } else {
      advance(1 + below(20000));
    }
    return;
  }

  if (chance(0.002)) {  // now and then the closing window, to try the main window behind it
    note("click CDend");
    userClick(f, f.CDend);
    return;
  }
  const int k = below(100);
  if (k < 30) {
    clickForPlay();
  } else if (k < 40) {
    clickSomething();
  } else if (k < 55) {
    pressKey();
  } else if (k < 57) {
    scroll();
  } else if (k < 59) {
    typeName();
  } else if (k < 60) {
    note("one tick");
    f.Sched.step(f.Sched.now() + 1000000);
  } else if (k < 62) {
    advanceAtOnce(1 + below(100));
  } else {
    const int d = below(10);
    advance(d < 6 ? 1 + below(60) : d < 9 ? 60 + below(3000) : 3000 + below(120000));
  }
}

// The controls that move a match on, most often the die and the flags.
void Harness::clickForPlay() {
  MatchForm& f = *form_;
  std::vector<Control*> flags;
  for (int d = 0; d < 8; ++d)
    if (f.CDdest[d].Visible) flags.push_back(&f.CDdest[d]);
  Control* c;
  const int k = below(100);
  if (k < 8 && f.CDgo.Enabled)
    c = &f.CDgo;
  else if (k < 45)
    c = &f.Cdice;
  else if (k < 85 && !flags.empty())
    c = flags[static_cast<std::size_t>(below(static_cast<int>(flags.size())))];
  else if (k < 90)
    c = &f.CHsub[static_cast<std::size_t>(below(4))];
  else if (k < 95)
    c = &f.OPForm[static_cast<std::size_t>(below(5) + (chance(0.5) ? 0 : 10))];
  else {
    Control* others[] = {&f.OpMode[0], &f.OpMode[1], &f.OpMode[2], &f.Ch50,
                         &f.ChAuto,    &f.Chq,       &f.ChtenFIF,  &f.CDhm};
    c = others[below(8)];
  }
  note("click " + c->name);
  userClick(f, *c);
}

// Any control at all. Exit is rare, so that matches get played to the end between restarts.
void Harness::clickSomething() {
  MatchForm& f = *form_;
  Control* c = controls_[static_cast<std::size_t>(below(static_cast<int>(controls_.size())))];
  if (c == &f.CDend && !chance(0.1)) return clickForPlay();
  note("click " + c->name);
  userClick(f, *c);
}

void Harness::scroll() {
  MatchForm& f = *form_;
  ScrollBar& bar = chance(0.5) ? f.Hai : f.Vai;
  const int value = bar.Min - 3 + below(bar.Max - bar.Min + 7);
  note("scroll " + bar.name + " to " + std::to_string(value));
  userScroll(f, bar, value);
}

void Harness::typeName() {
  static constexpr char kChars[] = "abcdefghijklmnopqrstuvwxyz ABCXYZ 0123456789-'.%\"#\t";
  std::string text;
  const int n = chance(0.1) ? 0 : below(chance(0.1) ? 200 : 20);
  for (int i = 0; i < n; ++i)
    text += chance(0.05) ? static_cast<char>(128 + below(128)) : kChars[below(sizeof kChars - 1)];
  TextBox& box = form_->Team[1 + below(2)];
  note("edit " + box.name + " to \"" + text + "\"");
  userEdit(*form_, box, text);
}

// Behind the closing window the main window takes no input: whatever a person does to it
// changes nothing at all.
void Harness::inputBehindClosingWindow() {
  const std::uint64_t before = view_->hash();
  const int k = below(4);
  if (k == 0)
    pressKey();
  else if (k == 1)
    clickSomething();
  else if (k == 2)
    typeName();
  else
    scroll();
  if (view_->hash() != before)
    breakPromise("behind the closing window, " + recent_.back() + " changed the game");
}

void Harness::pressKey() {
  const int k = below(100);
  const int key = k < 60 ? '1' + below(9) : k < 75 ? '-' : below(256);
  note("key " + std::to_string(key));
  userKey(*form_, key);
}

// Virtual time moves on tick by tick, with every promise checked after each tick.
void Harness::advance(Millis ms) {
  note("advance " + std::to_string(ms));
  MatchForm& f = *form_;
  const Millis target = f.Sched.now() + ms;
  const std::int64_t bound = tickBound(ms);
  std::int64_t n = 0;
  for (;;) {
    if (!f.Sched.step(target)) break;
    if (++n > bound) {
      breakPromise("timer ticks kept coming: more than " + std::to_string(bound) + " in " +
                   std::to_string(ms) + " ms");
      break;
    }
    if (!check()) break;
  }
  if (!failed()) f.Sched.setNow(target);
}

// The scheduler's own advance, in one go. It is kept short (at most 100 ms): a roll, a kick's
// arrival, a goal's restart or a substitution each take far longer than that to follow one
// another, so every promise can still be judged afterwards.
void Harness::advanceAtOnce(Millis ms) {
  note("advance " + std::to_string(ms) + " at once");
  MatchForm& f = *form_;
  if (!f.Sched.advance(ms, tickBound(ms)))
    breakPromise("the scheduler's advance of " + std::to_string(ms) + " ms did not complete");
}

// ---- promises --------------------------------------------------------------------------------

void Harness::baseline() {
  const MatchForm& f = *form_;
  seen_.gameCount = f.GameCount;
  seen_.clock = clockSeconds(f);
  for (int s = 1; s <= 2; ++s) {
    seen_.score[s] = textValue(f.Goals[s].Text);
    seen_.shotsPending[s] = f.TimSc.Enabled() && f.GoalSide == s ? 1 : 0;
  }
  seen_.celebrating = f.TimSc.Enabled();
  seen_.exchanging = f.TimSub.Enabled();
  seen_.diceReady = f.DiceReady;
}

bool Harness::check() {
  const MatchForm& f = *form_;
  if (failed() || (coloursChanged() && !checkTeamColours())) return false;
  if (f.GameOn == kNoMatchYet) {
    baseline();
    return true;
  }
  if (!checkGoesOn()) return false;
  noteNewMatch();
  return checkSideToPlay() && checkRoll() && checkClock() && checkScore() && checkSubstitutions() &&
         checkBoxesAtRest();
}

// A new match: everything it counts starts again.
void Harness::noteNewMatch() {
  const MatchForm& f = *form_;
  if (f.GameCount == seen_.gameCount) return;
  seen_ = Seen{};
  seen_.gameCount = f.GameCount;
  seen_.diceReady = f.DiceReady;
  seen_.celebrating = f.TimSc.Enabled();
  seen_.exchanging = f.TimSub.Enabled();
}

// The side to play is the ball owner's side, at every moment of a match.
bool Harness::checkSideToPlay() {
  const MatchForm& f = *form_;
  const double owner = f.BallOwner;
  if (owner != std::floor(owner) || owner < 1 || owner > 22)
    return breakPromise("the ball owner is " + std::to_string(owner));
  const int side = sideOf(static_cast<int>(owner));
  if (f.TeamTurn != side)
    return breakPromise("side to play " + std::to_string(f.TeamTurn) + " but the ball is with " +
                        std::to_string(static_cast<int>(owner)));
  return true;
}

// A roll accepted: from the owner's square, during a match, while nobody walks.
bool Harness::checkRoll() {
  const MatchForm& f = *form_;
  if (seen_.diceReady == kDiceReady && f.DiceReady == kDiceRolled) {
    const int p = static_cast<int>(f.BallOwner);
    if (f.BallCol != f.PlayerCol[p] || f.BallRow != f.PlayerRow[p])
      return breakPromise("a roll was accepted with the ball on (" + std::to_string(f.BallCol) +
                          ", " + std::to_string(f.BallRow) + ") and its owner " +
                          std::to_string(p) + " on (" + std::to_string(f.PlayerCol[p]) + ", " +
                          std::to_string(f.PlayerRow[p]) + ")");
    if (!f.GameEnd.empty()) return breakPromise("a roll was accepted after full time");
    if (f.TimPlace.Enabled()) return breakPromise("a roll was accepted while players walk");
    if (f.TimSub.Enabled() || f.SubTicks > 0)
      return breakPromise("a roll was accepted while a substitute walks on");
    if (f.DiceValue < 1 || f.DiceValue > 6)
      return breakPromise("the die shows " + std::to_string(f.DiceValue));
    // Automatic play may have played an only flag at once, or tried to and set the count to 0
    // although the flag click refused it: the flags themselves tell.
    bool offered = f.KickFlag != -1;
    for (int d = 0; d < 8; ++d) offered = offered || f.CDdest[d].Visible;
    if (!offered) return breakPromise("a roll offered no flag");
  }
  seen_.diceReady = f.DiceReady;
  return true;
}

// The clock never goes back and stops at 90:00, which is full time.
bool Harness::checkClock() {
  const MatchForm& f = *form_;
  const int clock = clockSeconds(f);
  if (clock < seen_.clock || clock > kFullTime)
    return breakPromise("the clock went from " + std::to_string(seen_.clock) + " s to " +
                        std::to_string(clock) + " s");
  if (clock == kFullTime && f.GameEnd.empty())
    return breakPromise("the clock reads 90:00 and the match goes on");
  seen_.clock = clock;
  return true;
}

// The score grows only by the goal of a shot that has arrived, one at a time.
bool Harness::checkScore() {
  const MatchForm& f = *form_;
  if (f.TimSc.Enabled() && !seen_.celebrating) {
    if (f.GoalSide != 1 && f.GoalSide != 2)
      return breakPromise("a goal is celebrated without a goal side");
    ++seen_.shotsPending[f.GoalSide];
  }
  seen_.celebrating = f.TimSc.Enabled();
  for (int s = 1; s <= 2; ++s) {
    const double score = textValue(f.Goals[s].Text);
    if (score < seen_.score[s])
      return breakPromise("side " + std::to_string(s) + "'s score went down from " +
                          std::to_string(seen_.score[s]) + " to " + std::to_string(score));
    if (score > seen_.score[s]) {
      if (score != seen_.score[s] + 1 || seen_.shotsPending[s] < 1)
        return breakPromise("side " + std::to_string(s) + "'s score went from " +
                            std::to_string(static_cast<int>(seen_.score[s])) + " to " +
                            std::to_string(static_cast<int>(score)) + " with " +
                            std::to_string(seen_.shotsPending[s]) +
                            " shot(s) of this match waiting to count");
      --seen_.shotsPending[s];
    }
    seen_.score[s] = score;
  }
  return true;
}

// At most two substitutions a side in a match; never the keeper or the ball owner.
bool Harness::checkSubstitutions() {
  const MatchForm& f = *form_;
  if (f.TimSub.Enabled() && !seen_.exchanging) {
    const int off = static_cast<int>(f.SubOff);
    if (off == 1 || off == 12 || off < 1 || off > 22 || off == static_cast<int>(f.BallOwner))
      return breakPromise("player " + std::to_string(off) + " was sent off for a substitute");
    if (++seen_.subs[sideOf(off)] > 2)
      return breakPromise("side " + std::to_string(sideOf(off)) +
                          " started a third substitution in one match");
  }
  seen_.exchanging = f.TimSub.Enabled();
  return true;
}

// A 50/50 contest's flight slides the names and scores inwards and back and lights the 50/50
// box; whenever no kick is in flight they stand where the window opened with them, unlit.
bool Harness::checkBoxesAtRest() {
  const MatchForm& f = *form_;
  if (f.KickFlag != -1) return true;
  const Control* boxes[] = {&f.Team[1], &f.Team[2], &f.Goals[1], &f.Goals[2]};
  for (std::size_t i = 0; i < boxLefts_.size(); ++i)
    if (boxes[i]->Left != boxLefts_[i])
      return breakPromise("with no kick in flight " + boxes[i]->name + " stands at " +
                          std::to_string(std::lround(boxes[i]->Left)) + ", not " +
                          std::to_string(std::lround(boxLefts_[i])));
  if (f.Ch50.ForeColor != ch50Colour_)
    return breakPromise("with no kick in flight the 50/50 box is lit " + toHex(f.Ch50.ForeColor));
  return true;
}

// The colour promise is judged when the colours change, which only a click does.
bool Harness::coloursChanged() {
  const MatchForm& f = *form_;
  const std::array<std::array<Integer, 5>, 3> now{f.ColRed, f.ColGreen, f.ColBlue};
  if (now == seenColours_) return false;
  seenColours_ = now;
  return true;
}

// Whatever drew them (start-up, a swatch, a team's die, "Random Teams"): each team's number
// colour reads on its shirt, every colour shows on both greens, and the two teams' main
// colours tell them apart, for the typical eye and for each colour-blind one. The start-up
// red is as light as the grass and melts into it for red- and green-blind eyes; it is the
// game's kit, not a draw, so a swatch that still holds its start-up colour answers to the
// typical eye alone on the grass.
bool Harness::checkTeamColours() {
  const MatchForm& f = *form_;
  const Colour startUp[4] = {RGB(252, 0, 0), RGB(252, 252, 252), RGB(0, 252, 252), RGB(0, 0, 252)};
  Colour c[4];
  for (int i = 0; i < 4; ++i) c[i] = RGB(f.ColRed[i], f.ColGreen[i], f.ColBlue[i]);
  auto pair = [&](int i, int j) { return toHex(c[i]) + " and " + toHex(c[j]); };
  for (Vision v : kVisions) {
    const ColourRule& rule = colourRule(v);
    const std::string seenBy = std::string(" (") + visionName(v) + ")";
    Colour s[4];
    Lab lab[4];
    for (int i = 0; i < 4; ++i) s[i] = simulate(c[i], v), lab[i] = toLab(s[i]);
    for (int side = 0; side < 2; ++side) {
      const int main = side * 3, second = 1 + side;
      const double ratio = contrastRatio(s[main], s[second]);
      if (ratio < rule.shirtContrast)
        return breakPromise("side " + std::to_string(side + 1) + "'s colours " +
                            pair(main, second) + " contrast only " + std::to_string(ratio) +
                            " : 1" + seenBy);
    }
    for (Colour green : {kPitchLight, kPitchDark}) {
      const Lab grass = toLab(simulate(green, v));
      for (int i = 0; i < 4; ++i)
        if (deltaE(lab[i], grass) < rule.fromGrass && (v == Vision::Typical || c[i] != startUp[i]))
          return breakPromise("swatch " + std::to_string(i) + " " + toHex(c[i]) +
                              " melts into the grass " + toHex(green) + seenBy);
    }
    if (deltaE(lab[0], lab[3]) < rule.betweenTeams)
      return breakPromise("the main colours " + pair(0, 3) + " are too alike" + seenBy);
  }
  return true;
}

// The match never waits for a move nobody may make: something moves (a walk, an exchange, a
// kick in flight, a goal's celebration), or the side to play may roll or pick a flag on show,
// by hand or, on the computer's side, on its timer at the step the die has reached. The
// computer's timer runs in its own mode alone.
bool Harness::checkGoesOn() {
  const MatchForm& f = *form_;
  const int mode = playLeftVsAI(f) ? 2 : mouseVsKeys(f) ? 1 : 0;
  if (f.TimAI.Enabled() && mode != 2)
    return breakPromise("the computer's timer runs in mode " + std::to_string(mode));
  // Exit unloads the window, and the match with it.
  if (!f.Visible || !f.GameEnd.empty() || f.TimPlace.Enabled() || f.TimSub.Enabled() ||
      f.TimSc.Enabled() || (f.TimB.Enabled() && f.KickFlag != -1))
    return true;
  bool offered = false;
  for (int d = 0; d < 8; ++d) offered = offered || f.CDdest[d].Visible;
  const bool ready = f.DiceReady == kDiceReady;
  if (mode == 2 && f.TeamTurn == kRightSide) {
    if (f.TimAI.Enabled() && (ready ? f.AIGo == 1 : f.AIGo == 2 && offered)) return true;
    return breakPromise("the computer's turn stands still: AIGo " +
                        std::to_string(static_cast<int>(f.AIGo)) + ", its timer " +
                        (f.TimAI.Enabled() ? "on" : "off"));
  }
  if (ready || offered) return true;
  return breakPromise("nobody can move the match on: the die is rolled and no flag is shown");
}

}  // namespace quorvel::harness
