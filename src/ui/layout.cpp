// The stored layout of the main window and the closing window. The pitch geometry (grass,
// goals, squares, ball, flags, swatches, substitution boxes, the half-time board) is fixed by
// the rules; the panels around it are ours.
#include "ui/layout.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "match/pitch.h"
#include "ui/ui.h"

namespace quorvel {

namespace {

// Every control of match/match_controls.def has its place here; its name is the table's.
template <typename C>
C& place(C& c, double left, double top, double width, double height, Control* parent = nullptr) {
  c.parent = parent;
  c.Left = left;
  c.Top = top;
  c.Width = width;
  c.Height = height;
  return c;
}

// A button or box with its caption and tip.
template <typename C>
C& captioned(C& c, double left, double top, double width, double height, const char* caption,
             const char* tip) {
  place(c, left, top, width, height).Caption = caption;
  c.ToolTipText = tip;
  return c;
}

struct Spot {
  double left, top;
};

// Places the members of a control array, all of one size, at their spots.
template <typename C, std::size_t N>
void placeEach(std::array<C, N>& cs, const std::array<Spot, N>& spots, double width,
               double height) {
  for (std::size_t i = 0; i < N; ++i) place(cs[i], spots[i].left, spots[i].top, width, height);
}

constexpr Colour kWindow = RGB(223, 230, 218);
constexpr Colour kPanel = RGB(240, 244, 236);
constexpr Colour kInk = RGB(24, 36, 24);
constexpr Colour kGreyGreen = RGB(47, 79, 47);
constexpr Colour kAlert = RGB(208, 32, 32);

void label(TextBox& t, std::string text, Colour back = kWindow, Colour ink = kInk) {
  t.Text = std::move(text);
  t.BackColor = back;
  t.ForeColor = ink;
}

void pitch(MatchForm& f) {
  // The pitch picture's chalk frame lies just outside the grid.
  const double left = kGridLeft - kPitchFrameTwips, top = kGridTop - kPitchFrameTwips;
  place(f.Grass, left, top, kPitchWidth, kPitchHeight).Image = "pitch";
  place(f.Goal[1], kLeftGoalLeft, kGoalTop, kGoalWidth, kGoalHeight).Image = "goal";
  place(f.Goal[0], kRightGoalLeft, kGoalTop, kGoalWidth, kGoalHeight).Image = "goal";
  place(f.Ball, kKickOffBallLeft, kKickOffBallTop, kBallTwips, kBallTwips).Image = "ball";

  // Before the first Start the teams line up below the pitch, left side above right side.
  for (int i = 0; i <= 22; ++i) {
    Picture& p = f.Player[i];
    if (i == 0) {
      place(p, kBenchLeft, kBenchTop, kPlayerTwips, kPlayerTwips).Visible = false;
    } else {
      const int k = i <= 11 ? i - 1 : i - 12;
      place(p, playerLeft(1) + k * 1305, i <= 11 ? 9300 : 10320, kPlayerTwips, kPlayerTwips);
    }
    p.Image = "player";
    TextBox& t = f.Tnum[i];
    place(t, 135, 225, 600, 420, &p);
    t.Text = i == 0 ? "" : std::to_string(i <= 11 ? i : i - 11);
  }

  for (int d = 0; d < 10; ++d) {
    CommandButton& b = place(f.CDdest[d], 120, 120, kFlagTwips, kFlagTwips);
    b.Image = "flag";
    b.Visible = false;  // nothing is offered before the first roll
    b.ToolTipText = "Kick the ball here";
  }

  for (int k = 0; k < 8; ++k) {
    Picture& d = place(f.Di[k], 0, 0, 1440, 1440);
    d.Image = "die" + std::to_string(k);
    d.Visible = false;  // a store of faces, never shown itself
  }

  placeEach(f.RainB, {{{5640, 900}, {5640, 390}, {9120, 390}, {9120, 900}}}, 495, 495);
  for (auto& s : f.RainB) {
    s.Image = "swatch";
    s.ToolTipText = "Click to change this team colour";
  }

  Picture& board = place(f.PicGame, kBoardLeft, kBoardTop, 3780, 1040);
  board.Visible = false;  // no half or match has ended yet
  board.BackColor = RGB(16, 32, 16);
  place(f.TXgame[0], 60, 60, 1800, 920, &board);
  place(f.TXgame[1], 1920, 60, 1800, 920, &board);
  label(f.TXgame[0], "Game", RGB(16, 32, 16), kAlert);
  label(f.TXgame[1], "Over", RGB(16, 32, 16), RGB(255, 224, 64));

  // The banners wait under the pitch and slide out below it after Start.
  place(f.Banner[0], 2940, 5560, 9480, 1050).Image = "banner-title";
  place(f.Banner[1], 4440, 6700, 6480, 900).Image = "banner-site";
  f.Banner[0].ToolTipText = "Free Quorvel online";
  f.Banner[1].ToolTipText = "The maker's web site";
}

void teamPanels(MatchForm& f) {
  // Left side.
  Frame& fra1 = place(f.Fra1, 60, 60, 2940, 1380);
  place(f.Team[1], 3120, 60, 2400, 420);
  place(f.Poses[1], 3120, 540, 1560, 360);
  place(f.Goals[1], 4740, 540, 780, 840);
  // Right side.
  Frame& fra2 = place(f.Fra2, 12300, 60, 2880, 1380);
  place(f.Team[2], 9720, 60, 2400, 420);
  place(f.Poses[2], 10560, 540, 1560, 360);
  place(f.Goals[2], 9720, 540, 780, 840);

  for (int s = 1; s <= 2; ++s) {
    f.Team[s].Text = s == 1 ? "Team 1" : "Team 2";
    // The generator's memory of each side's name starts as the name on show, so that the
    // length rules never rewrite a side that has not been named yet.
    f.TeamName[s] = f.Team[s].Text;
    f.Team[s].Locked = false;  // names may be typed in until they are locked
    f.Team[s].ToolTipText = "Type a team name, or click the die beside the clock for a random one";
    f.Poses[s].Text = "Possession";
    f.Goals[s].Text = "0";
  }

  const char* caps[5] = {"Varied", "Norm", "Cup", "Defend", "Attack"};
  for (int k = 0; k < 5; ++k) {
    const double left = k % 2 == 0 ? 90 : 1470;
    const int row = k / 2;  // two buttons a row
    const double top = 360 + row * 300;
    OptionButton& l = place(f.OPForm[k], left, top, 1380, 285, &fra1);
    OptionButton& r = place(f.OPForm[10 + k], left, top, 1380, 285, &fra2);
    l.Caption = r.Caption = caps[k];
    l.group = 1;
    r.group = 2;
    l.ToolTipText = r.ToolTipText = std::string("Formation: ") + caps[k];
  }
  f.OPForm[0].Value = true;       // left: "Varied"
  f.OPForm[12].Value = true;      // right: "Cup"
  for (int k = 5; k < 10; ++k) {  // gaps of the array: no such buttons, never enumerated
    f.OPForm[k].Visible = false;
    f.OPForm[k].group = -1;
  }

  place(f.Text1[0], 90, 60, 1380, 285, &fra1);
  place(f.Text1[1], 90, 60, 1380, 285, &fra2);
  place(f.Text1[2], 1470, 60, 1380, 285, &fra1).Visible = false;
  for (auto& t : f.Text1) label(t, "Form:", kPanel);
  place(f.GreyGreen, 1470, 960, 1380, 285, &fra1);
  label(f.GreyGreen, "", kPanel, kGreyGreen);
  f.Fra1.BackColor = f.Fra2.BackColor = kPanel;
  f.Fra1.ToolTipText = f.Fra2.ToolTipText = "Formation";

  placeEach(f.CHsub, {{{3705, 1455}, {3120, 1455}, {10995, 1455}, {11580, 1455}}}, 580, 420);
  for (auto& c : f.CHsub) {
    c.Caption = "Sub";
    c.ToolTipText = "Use this as an opportunity to change Formation";
  }

  place(f.Text2, 6300, 90, 900, 345);
  label(f.Text2, "Time");
  place(f.TXtim, 7200, 90, 1260, 345);
  label(f.TXtim, "00:00", RGB(16, 24, 16), RGB(255, 208, 64));
  f.TXtim.ToolTipText = "Match clock";

  place(f.TXoner, 6180, 510, 2880, 345);
  label(f.TXoner, "Make Sub BEFORE rolling the dice", RGB(255, 240, 200), kAlert);
  f.TXoner.ToolTipText = "If the checquered flags appear you cannot sub.";
  f.TXoner.Visible = false;
}

void controlPanel(MatchForm& f) {
  captioned(f.CDgo, 15480, 120, 1440, 480, "Start", "Start a match");
  captioned(f.CDhelp, 17040, 120, 1440, 480, "Help", "How to play");

  place(f.Cdice, 15480, 720, 1440, 1440).Image = "die0";
  f.Cdice.BackColor = kWindow;  // neither awaiting nor rolled before the first match
  f.Cdice.ToolTipText = "Roll the dice";
  place(f.CDcontest[1], 17040, 720, 675, 675);
  place(f.CDcontest[2], 17805, 720, 675, 675);
  for (int s = 1; s <= 2; ++s) {
    f.CDcontest[s].Image = "die7";
    f.CDcontest[s].ToolTipText = "50/50 dice; click for new colours and name of this team";
  }
  f.CDcontest[0].Visible = false;  // a gap of the array: no such button, never enumerated

  place(f.CDhm, 17040, 1500, 900, 480).Visible = false;
  f.CDhm.ToolTipText = "Play the computer's chosen flag";
  place(f.Chp, 18000, 1560, 480, 345).Visible = false;
  f.Chp.ToolTipText = "Let the computer only show its choice";
  place(f.TXq, 18000, 1980, 480, 345).Visible = false;
  label(f.TXq, "", kPanel);

  place(f.TXstart, 15360, 2280, 3240, 345);
  label(f.TXstart, "Num-lock ON to use keypad", kWindow, kGreyGreen);

  captioned(f.Ch50, 15480, 2700, 3000, 300, "Dice 50/50 balls",
            "How a ball at equal distance from both sides is settled")
      .ForeColor = kGreyGreen;
  captioned(f.ChAuto, 15480, 3060, 3000, 300, "Automate option",
            "Speed it up by automating when there is only 1 option to choose");
  captioned(f.ChtenFIF, 15480, 3420, 1500, 300, "10/15 secs",
            "Friendly or Competition (360 or 540 moves)");
  captioned(f.Chq, 17040, 3420, 1440, 300, "Quickplay", "Quickplay");
  for (CheckBox* c : {&f.Ch50, &f.ChAuto, &f.ChtenFIF, &f.Chq}) c->BackColor = kWindow;
}

// The computer's settings.
void modeFrame(MatchForm& f) {
  Frame& mode = place(f.FrameMode, 15360, 3840, 3240, 2400);
  mode.BackColor = kPanel;
  mode.ToolTipText = "Sow down or speed up Computer's decision making process.";
  const char* modes[3] = {"Free Mode", "Mouse vs Keys", "Play Left vs AI"};
  const char* modeTips[3] = {"Both players use mouse or keys",
                             "Player on left uses mouse - right uses keys",
                             "Bar below is AI IQ - Bar at bottom is Speed of AI decision"};
  for (int k = 0; k < 3; ++k) {
    OptionButton& o = place(f.OpMode[k], 120, 240 + k * 300, 3000, 285, &mode);
    o.Caption = modes[k];
    o.ToolTipText = modeTips[k];
    o.group = 3;
  }
  f.OpMode[0].Value = true;
  ScrollBar& hai = place(f.Hai, 120, 1260, 2160, 255, &mode);
  hai.Min = 1, hai.Max = 6, hai.Value = 2, hai.SmallChange = 1, hai.LargeChange = 1;
  hai.ToolTipText = "AI IQ : 1=dumb : 6=smart";
  ScrollBar& vai = place(f.Vai, 120, 1800, 2160, 255, &mode);
  vai.Min = 250, vai.Max = 2000, vai.Value = 500, vai.SmallChange = 50, vai.LargeChange = 250;
  vai.ToolTipText = "Sow down or speed up Computer's decision making process.";
  place(f.Text3, 2340, 1245, 780, 285, &mode);
  label(f.Text3, "<IQ", kPanel);
  place(f.Text4, 2340, 1785, 780, 285, &mode);
  label(f.Text4, "<AI spd", kPanel);

  place(f.TXai, 15480, 6300, 3000, 345);
  label(f.TXai, "AI IQ : 1=dumb : 6=smart", kPanel);
  f.TXai.ToolTipText = "AI IQ : 1=dumb : 6=smart";
}

// Under the computer's settings: where names come from, the buttons to the web and out.
void lowerPanel(MatchForm& f) {
  Frame& names = place(f.Frame2, 15360, 6780, 3240, 660);
  names.BackColor = kPanel;
  names.ToolTipText = "Where new team names come from";
  place(f.OpName[0], 120, 240, 1440, 285, &names).Caption = "Clubs";
  place(f.OpName[1], 1620, 240, 1440, 285, &names).Caption = "Nations";
  for (auto& o : f.OpName) o.group = 4;
  f.OpName[1].Value = true;  // the source that an IQ of 2 picks

  captioned(f.cdr, 15480, 7560, 3000, 480, "Random Teams", "New colours and names for both teams")
      .BackColor = kWindow;
  place(f.Command1, 15480, 8160, 3000, 600).Image = "site";
  f.Command1.ToolTipText = "Visit the maker's web site";
  captioned(f.CDend, 15480, 8880, 1440, 480, "Exit", "Leave the game");
  place(f.TXver, 17040, 8940, 1440, 345);
  label(f.TXver, "ver 1.86");

  Label& blurb = place(f.Lablurb, 15360, 9480, 3240, 900);
  blurb.Caption = "Free Quorvel can be played with a coin, two chessboards and a dice.";
  blurb.BackColor = kWindow;

  place(f.Pip, 15360, 10500, 1560, 840).Visible = false;
  place(f.Pdat, 17040, 10500, 1560, 840).Visible = false;

  for (CommandButton* b : {&f.CDgo, &f.CDhelp, &f.CDhm, &f.CDend, &f.Command1})
    b->BackColor = RGB(236, 236, 230);
}

void linksForm(MatchForm& f) {
  auto& l = f.LinksForm;
  place(l.Picture1, 120, 120, 6000, 3600).Image = "advert1";
  place(l.Picture2, 120, 120, 6000, 3600).Image = "advert2";
  l.Picture2.Visible = false;
  l.Picture1.ToolTipText = l.Picture2.ToolTipText = "Click to visit";
  place(l.Command1, 120, 3840, 4200, 480).Caption = "Visit the Quorvel web site";
  place(l.CDend, 4440, 3840, 1680, 480).Caption = "Exit";
}

struct Styled {
  std::string_view name;  // ending in "(" or ".": every name that begins so
  TextStyle style;
};
constexpr TextStyle kLeftAligned{12, false, false, Align::Left};
constexpr Styled kTextStyles[] = {
    {"Goals(", {34, true}},
    {"TXgame(", {40, true}},
    {"TXtim", {20, true}},
    {"Text2", {17, true}},
    {"Team(", {16, true}},
    {"Poses(", {13, true}},
    {"CDgo", {14, true}},
    {"CDhelp", {14, true}},
    {"CDend", {14, true}},
    {"cdr", {14, true}},
    {"OPForm(", {12, true}},
    {"Text1(", {12, true, false, Align::Left}},
    {"CHsub(", {10, true}},  // four of them share a narrow strip
    {"TXstart", {12, false, true}},
    {"Lablurb", {12, false, true}},
    {"TXver", {11}},
    {"TXoner", {11, true}},
    {"Text3", kLeftAligned},
    {"Text4", kLeftAligned},
    {"GreyGreen", kLeftAligned},
    {"LinksForm.", {14, true}},
};
constexpr TextStyle kPlainText{12};

constexpr bool covers(std::string_view entry, std::string_view name) {
  const bool many = entry.ends_with('(') || entry.ends_with('.');
  return many ? name.starts_with(entry) : name == entry;
}

// The names match/match_controls.def gives: a control's, or a control array's stem.
struct TableName {
  std::string_view name;
  bool array;
};
constexpr TableName kControlNames[] = {
#define MATCH_CONTROL(kind, member) {#member, false},
#define MATCH_CONTROLS(kind, member, ...) {#member, true},
#define LINKS_CONTROL(kind, member) {"LinksForm." #member, false},
#include "match/match_controls.def"
#undef MATCH_CONTROL
#undef MATCH_CONTROLS
#undef LINKS_CONTROL
};

// Whether `entry`, a key of the lookups here, names a control of the table: a control, every
// control of an array ("Goals("), every control whose name begins so ("LinksForm."), or one
// control of an array ("Goal(0)").
constexpr bool inTable(std::string_view entry) {
  // std::any_of rather than std::ranges::any_of, which emscripten's C++ library lacks.
  return std::any_of(std::begin(kControlNames), std::end(kControlNames),
                     [entry](const TableName& t) {
                       const std::string_view stem = entry.substr(0, entry.find('('));
                       if (entry.ends_with('.')) return t.name.starts_with(entry);
                       if (stem.size() < entry.size()) return t.array && stem == t.name;
                       return !t.array && entry == t.name;
                     });
}

// A style or a goal for a control the table does not hold does not build.
static_assert(std::all_of(std::begin(kTextStyles), std::end(kTextStyles),
                          [](const Styled& s) { return inTable(s.name); }));

// The goal at the right-hand end opens towards the pitch on its left.
constexpr std::string_view kGoalOpeningLeft = "Goal(0)";
static_assert(inTable(kGoalOpeningLeft));

}  // namespace

Mouth goalMouth(std::string_view name) {
  return name == kGoalOpeningLeft ? Mouth::OpensLeft : Mouth::OpensRight;
}

TextStyle textStyleFor(std::string_view name) {
  for (const Styled& s : kTextStyles)
    if (covers(s.name, name)) return s.style;
  return kPlainText;
}

void applyLayout(MatchForm& f) {
  f.BackColor = kWindow;
  pitch(f);
  teamPanels(f);
  controlPanel(f);
  modeFrame(f);
  lowerPanel(f);
  linksForm(f);
  f.ActiveControl = f.CDgo.name;
}

}  // namespace quorvel
