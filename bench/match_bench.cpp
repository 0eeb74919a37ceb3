// The cost of a whole match and of the procedures a match runs most: placement, the roll, the
// computer's flag choice, and the ticks of a second in which nothing happens.
#include <benchmark/benchmark.h>

#include <memory>

#include "ai/ai.h"
#include "events/events.h"
#include "match/codes.h"
#include "match/match.h"
#include "sim.h"
#include "view/form_view.h"

namespace quorvel {
namespace {

// A match started by the left side, its walk over: the ball idles at player 9's feet.
std::unique_ptr<MatchForm> readyMatch(std::uint64_t seed = 1) {
  auto f = newMatchForm(seed);
  f->Rnd.force({0.0, 0.0});  // the first match's kick-off: the left side
  userClick(*f, f->CDgo);
  while (f->TimPlace.Enabled()) f->Sched.step(f->Sched.now() + 60000);
  return f;
}

// The computer (IQ 6) against its own choices mirrored, in the game against the computer.
void WholeMatch(benchmark::State& state) {
  sim::Settings s;
  std::uint64_t k = 0;
  std::int64_t ticks = 0;
  for (auto _ : state) {
    const sim::MatchResult r = sim::playMatch(s, sim::matchSeed(1, k++));
    ticks += r.ticks;
    benchmark::DoNotOptimize(r.goals[1]);
  }
  state.counters["ticks/match"] =
      benchmark::Counter(static_cast<double>(ticks), benchmark::Counter::kAvgIterations);
  state.counters["matches/s"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(WholeMatch)->Unit(benchmark::kMillisecond);

void SetPlayBench(benchmark::State& state) {
  auto f = readyMatch();
  for (auto _ : state) {
    SetPlay(*f);
    benchmark::DoNotOptimize(f->PlayerCol[5]);
  }
}
BENCHMARK(SetPlayBench)->Name("SetPlay");

void ClickDiBench(benchmark::State& state) {
  auto f = readyMatch();
  for (auto _ : state) {
    f->DiceReady = kDiceReady;  // a new turn each time, from the same square
    ClickDi(*f);
    benchmark::DoNotOptimize(f->FlagCount);
  }
}
BENCHMARK(ClickDiBench)->Name("ClickDi");

// The computer's weighing of the flags of a roll of 3 from the centre, at IQ 6.
void ComputerFlagChoice(benchmark::State& state) {
  auto f = readyMatch();
  f->Rnd.force({0.4});
  ClickDi(*f);
  f->AIIQ = 6;
  for (auto _ : state) {
    const FlagChoice c = weighFlags(*f);
    benchmark::DoNotOptimize(c.best);
  }
}
BENCHMARK(ComputerFlagChoice);

// One second of virtual time with the ball idling at its owner's feet: 66 ticks each of the
// ball timer and the banner timer, and the team panel's one.
void IdleSecond(benchmark::State& state) {
  auto f = readyMatch();
  const std::int64_t before = f->Sched.ticksRun();
  for (auto _ : state) f->Sched.advance(1000);
  state.counters["ticks"] = benchmark::Counter(static_cast<double>(f->Sched.ticksRun() - before),
                                               benchmark::Counter::kAvgIterations);
}
BENCHMARK(IdleSecond)->Unit(benchmark::kMicrosecond);

// What the view does at each wake-up of a front while the ball idles: a tick of the ball timer,
// then a glance at what changed on screen, at every control or at what the ticks may change.
void IdleGlance(benchmark::State& state) {
  auto f = readyMatch();
  FormView view(*f, FormWindowId::Main);
  const bool afterTicks = state.range(0) != 0;
  if (afterTicks) f->Sched.watch([&view](const Timer& t) { view.tickComing(t); });
  view.place(fitInto(view.client(), 1200, 900));
  view.glance();
  for (auto _ : state) {
    f->Sched.advance(15);
    benchmark::DoNotOptimize((afterTicks ? view.glanceAfterTicks() : view.glance()).size());
  }
}
BENCHMARK(IdleGlance)->ArgName("afterTicks")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quorvel
