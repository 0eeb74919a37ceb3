// MatchForm: the whole state of the game in one structure. The form variables are named and
// typed as the rules name them; the controls are plain data. Every procedure of the game is a
// free function over this structure.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>

#include "form/basic.h"
#include "form/controls.h"
#include "form/random.h"
#include "form/scheduler.h"

namespace quorvel {

struct Message {
  std::string Title;
  std::string Text;  // lines joined by '\r'
  bool critical = false;
};

// What the model asks of the platform. Headless it only records; the window plugs in the
// real browser and message box.
struct Platform {
  std::function<bool(const std::string& url)> openUrl;  // false: no browser could be started
  std::function<void(const Message&)> showMessage;
  std::function<void()> repaint;  // the goal celebration's per-flash window refresh
  std::function<void()> quit;     // the closing window's Exit
};

// The small second window shown after Exit.
struct LinksFormState {
  explicit LinksFormState(Scheduler& s) : Timer1(s, "LinksForm.Timer1", 7000, true) {}
  bool Visible = false;
  Picture Picture1, Picture2;
  CommandButton Command1, CDend;
  Timer Timer1;
};

struct MatchForm {
  MatchForm();
  MatchForm(const MatchForm&) = delete;
  MatchForm& operator=(const MatchForm&) = delete;

  // ---- time, chance, platform ------------------------------------------------------------
  Scheduler Sched;
  Random Rnd;
  Platform platform;

  // ---- match flow, die and clock ---------------------------------------------------------
  Single GameOn = 0;
  std::string GameEnd;
  Long GameCount = 0;
  Integer KickOffSide = 0;
  Integer TimiCount = 0;
  Single DiceReady = 0;
  Integer DiceValue = 0;
  double ClockMin = 0;
  double ClockSec = 0;
  Single HalfHold = 0;

  // ---- possession and the kick -----------------------------------------------------------
  Single TeamTurn = 0;
  Single BallOwner = 0;
  Integer BallCol = 0, BallRow = 0;
  std::array<Integer, 9> FlagDx{}, FlagDy{}, FlagGoal{};
  Single FlagCount = 0;
  Single OnlyFlag = 0;
  Integer KickFlag = 0;
  Single ClickFrom = 0;
  double TargetCol = 0, TargetRow = 0;
  Integer Receiver = 0;
  double ReceiverDist = 0;
  Integer ContestWin = 0;
  double KickTicks = 0;
  double BallStepX = 0, BallStepY = 0;
  double RunStepX = 0, RunStepY = 0;
  std::array<double, 3> KickCount{};
  Integer DribbleDx = 0, DribbleDy = 0;

  // ---- goals -----------------------------------------------------------------------------
  Integer GoalFlag = 0;
  Integer GoalSide = 0;
  Integer CheerTicks = 0;
  Single CheerFlip = 0;
  Single GoalHold = 0;

  // ---- team shape ------------------------------------------------------------------------
  std::array<double, 23> PlayerCol{}, PlayerRow{};
  Single PlaceMode = 0;
  Integer PlaceTicks = 0;
  std::array<Single, 3> FormChanged{};
  Integer SubTicks = 0;
  Single SubOff = 0;
  Single SubNumber = 0;
  Integer GoalDiff = 0;

  // ---- computer opponent and automatic play ----------------------------------------------
  Single AIGo = 0;
  double AIIQ = 0;
  Single AIFlag = 0;
  std::array<std::array<Integer, 7>, 3> SubMinute{};  // (1..2, 1..6)
  Integer ThreatCount = 0, ThreatAICount = 0, ThreatDiff = 0;
  Integer TerrorCount = 0, TerrorAICount = 0, TerrorDiff = 0;
  Single AutoHold = 0;

  // ---- presentation ----------------------------------------------------------------------
  std::array<Integer, 5> ColRed{}, ColGreen{}, ColBlue{};
  std::array<Integer, 5> RedStep{}, GreenStep{}, BlueStep{};  // colour steps set at load
  std::array<std::string, 3> TeamName{};
  std::array<Integer, 3> HeadPick{}, TailPick{};
  std::array<std::string, 151> NameHead{}, NameTail{};
  Integer EditLock = 0;

  // ---- the window itself -----------------------------------------------------------------
  Colour BackColor;           // the main window's background
  bool Visible = true;        // false once Exit has closed it
  bool Ended = false;         // the program has been told to end
  std::string ActiveControl;  // name of the control with the keyboard focus
  Message LastMessage;
  std::string LastPage;

  // ---- controls --------------------------------------------------------------------------
  Picture Grass;
  std::array<Picture, 2> Goal;
  std::array<Picture, 23> Player;
  std::array<TextBox, 23> Tnum;
  Picture Ball;
  std::array<CommandButton, 10> CDdest;
  CommandButton Cdice;
  std::array<Picture, 8> Di;
  std::array<CommandButton, 3> CDcontest;  // 1 and 2
  CommandButton CDgo, CDend, CDhelp, cdr, CDhm;
  CheckBox Chp;
  std::array<TextBox, 3> Team, Goals, Poses;  // 1 and 2
  TextBox TXtim, Text2;
  Picture PicGame;
  std::array<TextBox, 2> TXgame;
  TextBox TXstart, TXver;
  std::array<OptionButton, 3> OpMode;
  Frame FrameMode;
  ScrollBar Hai, Vai;
  TextBox Text3, Text4, TXai, TXq;
  std::array<OptionButton, 15> OPForm;  // 0..4 left, 10..14 right
  Frame Fra1, Fra2;
  std::array<TextBox, 3> Text1;
  TextBox GreyGreen;
  std::array<CheckBox, 4> CHsub;
  TextBox TXoner;
  std::array<OptionButton, 2> OpName;
  Frame Frame2;
  CheckBox Ch50, ChAuto, Chq, ChtenFIF;
  std::array<Picture, 4> RainB;
  Label Lablurb;
  std::array<Picture, 2> Banner;
  CommandButton Command1;
  Picture Pip, Pdat;

  // ---- timers, in the order their ticks run when due together ----------------------------
  Timer Timi, TimPlace, TimB, TimSc, TimSub, TimAI, TimAuto, TimTeam, TimBan, Timer1;

  LinksFormState LinksForm;
};

// Every control of both windows, main window first, in layout order.
void forEachControl(MatchForm& f, const std::function<void(Control&)>& visit);

// A new form with its layout applied and the window-load procedure run (virtual time 0).
std::unique_ptr<MatchForm> newMatchForm(std::uint64_t seed = 1);

// The four centre squares and the kick-off squares.
inline bool isCentreSquare(double col, double row) {
  return (col == 8 || col == 9) && (row == 4 || row == 5);
}

// Twips of the corner of a player picture standing on square (col, row).
inline double playerLeft(double col) {
  return (col - 1) * 900 + 495;
}
inline double playerTop(double row) {
  return (row - 1) * 900 + 1935;
}

}  // namespace quorvel
