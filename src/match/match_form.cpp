#include "match/match_form.h"

#include "ai/ai.h"
#include "match/match.h"
#include "shape/shape.h"
#include "ui/ui.h"

namespace quorvel {

MatchForm::MatchForm()
    : Timi(Sched, "Timi", 15, true),
      TimPlace(Sched, "TimPlace", 15, false),
      TimB(Sched, "TimB", 15, false),
      TimSc(Sched, "TimSc", 250, false),
      TimSub(Sched, "TimSub", 15, false),
      TimAI(Sched, "TimAI", 250, false),
      TimAuto(Sched, "TimAuto", 100, true),
      TimTeam(Sched, "TimTeam", 1000, true),
      TimBan(Sched, "TimBan", 15, false),
      Timer1(Sched, "Timer1", 15, false),
      LinksForm(Sched) {
  Sched.add(Timi, [this] { Timi_Timer(*this); });
  Sched.add(TimPlace, [this] { TimPlace_Timer(*this); });
  Sched.add(TimB, [this] { TimB_Timer(*this); });
  Sched.add(TimSc, [this] { TimSc_Timer(*this); });
  Sched.add(TimSub, [this] { TimSub_Timer(*this); });
  Sched.add(TimAI, [this] { TimAI_Timer(*this); });
  Sched.add(TimAuto, [this] { TimAuto_Timer(*this); });
  Sched.add(TimTeam, [this] { TimTeam_Timer(*this); });
  Sched.add(TimBan, [this] { TimBan_Timer(*this); });
  Sched.add(Timer1, [this] { Timer1_Timer(*this); });
  Sched.add(LinksForm.Timer1, [this] { LinksForm_Timer1_Timer(*this); });
  // The closing window's timer runs only while that window is open.
  LinksForm.Timer1.setEnabled(false);
  applyLayout(*this);
}

void forEachControl(MatchForm& f, const std::function<void(Control&)>& visit) {
  // Gaps of the control arrays (OPForm(5..9), CDcontest(0), Goals(0), ...) have no name.
  auto fn = [&visit](Control& c) {
    if (!c.name.empty()) visit(c);
  };
  auto all = [&fn](auto& arr) {
    for (auto& c : arr) fn(c);
  };
  fn(f.Grass);
  all(f.Goal);
  all(f.Player);
  all(f.Tnum);
  fn(f.Ball);
  all(f.CDdest);
  fn(f.Cdice);
  all(f.Di);
  all(f.CDcontest);
  for (Control* c :
       std::initializer_list<Control*>{&f.CDgo, &f.CDend, &f.CDhelp, &f.cdr, &f.CDhm, &f.Chp})
    fn(*c);
  all(f.Team);
  all(f.Goals);
  all(f.Poses);
  fn(f.TXtim);
  fn(f.Text2);
  fn(f.PicGame);
  all(f.TXgame);
  fn(f.TXstart);
  fn(f.TXver);
  all(f.OpMode);
  fn(f.FrameMode);
  for (Control* c :
       std::initializer_list<Control*>{&f.Hai, &f.Vai, &f.Text3, &f.Text4, &f.TXai, &f.TXq})
    fn(*c);
  all(f.OPForm);
  fn(f.Fra1);
  fn(f.Fra2);
  all(f.Text1);
  fn(f.GreyGreen);
  all(f.CHsub);
  fn(f.TXoner);
  all(f.OpName);
  fn(f.Frame2);
  for (Control* c : std::initializer_list<Control*>{&f.Ch50, &f.ChAuto, &f.Chq, &f.ChtenFIF})
    fn(*c);
  all(f.RainB);
  fn(f.Lablurb);
  all(f.Banner);
  fn(f.Command1);
  fn(f.Pip);
  fn(f.Pdat);
  fn(f.LinksForm.Picture1);
  fn(f.LinksForm.Picture2);
  fn(f.LinksForm.Command1);
  fn(f.LinksForm.CDend);
}

std::unique_ptr<MatchForm> newMatchForm(std::uint64_t seed) {
  auto f = std::make_unique<MatchForm>();
  f->Rnd.seed(seed);
  Form_Load(*f);
  return f;
}

}  // namespace quorvel
