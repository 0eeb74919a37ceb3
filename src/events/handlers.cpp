// The two tables that name every handler of the game: the timers, and the controls that
// raise a handler when clicked, pressed or changed.
#include <array>
#include <memory>

#include "ai/ai.h"
#include "events/events.h"
#include "match/match.h"
#include "shape/shape.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

// Ticks due at the same millisecond run in the order of the timers' table; the tick of each
// timer runs its handler of the same name.
void bindTimers(MatchForm& f) {
  Scheduler& s = f.Sched;
#define MATCH_TIMER(name, interval, enabled, onShow) \
  s.add(                                             \
      f.name, [&f] { name##_Timer(f); }, OnShow::onShow);
#include "match/match_timers.def"
#undef MATCH_TIMER
  s.add(f.LinksForm.Timer1, [&f] { LinksForm_Timer1_Timer(f); });
}

// A control array's handler takes the index of the control that raised it. It is bound to
// every control the controls' table lists in the array (the gaps between its ranges have no
// name), up to `count` of them where the handler knows fewer.
template <typename Arr, typename Handler>
void bindEach(MatchForm& f, Arr& arr, Handler handler, std::size_t count = std::tuple_size_v<Arr>) {
  for (std::size_t i = 0; i < count; ++i)
    if (!arr[i].name.empty()) arr[i].Click = [&f, handler, i] { handler(f, static_cast<int>(i)); };
}

// The flags of the eight directions; the two after them are never shown.
constexpr std::size_t kDirectionFlags = 8;

void bindControls(MatchForm& f) {
  f.CDgo.Click = [&f] { CDgo_Click(f); };
  f.Cdice.Click = [&f] { Cdice_Click(f); };
  f.Cdice.MouseDown = [&f] { Cdice_MouseDown(f); };
  bindEach(f, f.CDdest, CDdest_Click, kDirectionFlags);
  f.CDhm.Click = [&f] { CDhm_Click(f); };
  f.Ch50.Click = [&f] { Ch50_Click(f); };
  bindEach(f, f.OpMode, OpMode_Click);
  bindEach(f, f.OPForm, OPForm_Click);
  bindEach(f, f.CHsub, CHsub_Click);
  f.ChAuto.Click = [&f] { ChAuto_Click(f); };
  f.ChtenFIF.Click = [&f] { ChtenFIF_Click(f); };
  f.Chq.Click = [&f] { Chq_Click(f); };
  f.TXai.Click = [&f] { TXai_Click(f); };
  f.Hai.Change = [&f] { Hai_Change(f); };
  bindEach(f, f.RainB, RainB_Click);
  bindEach(f, f.CDcontest, CDcontest_Click);
  f.cdr.Click = [&f] { cdr_Click(f); };
  f.CDhelp.Click = [&f] { CDhelp_Click(f); };
  f.CDend.Click = [&f] { CDend_Click(f); };
  bindEach(f, f.Banner, Banner_Click);
  f.Command1.Click = [&f] { Command1_Click(f); };
  LinksFormState& l = f.LinksForm;
  l.Picture1.Click = [&f] { LinksForm_Picture1_Click(f); };
  l.Picture2.Click = [&f] { LinksForm_Picture2_Click(f); };
  l.Command1.Click = [&f] { LinksForm_Command1_Click(f); };
  l.CDend.Click = [&f] { LinksForm_CDend_Click(f); };
}

}  // namespace

std::unique_ptr<MatchForm> newMatchForm(std::uint64_t seed) {
  auto f = std::make_unique<MatchForm>();
  bindTimers(*f);
  bindControls(*f);
  applyLayout(*f);
  f->Rnd.seed(seed);
  Form_Load(*f);
  return f;
}

}  // namespace quorvel
