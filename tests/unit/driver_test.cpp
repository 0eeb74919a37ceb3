// quorvel-drive's script language: values, bad input, reproducibility.
#include "driver.h"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

namespace quorvel {
namespace {

struct Outcome {
  int status;
  std::string out, err;
};

Outcome drive(const std::string& script) {
  std::ostringstream out, err;
  Driver d(out, err);
  std::istringstream in(script);
  const int status = d.run(in);
  return {status, out.str(), err.str()};
}

TEST(DriverWords, QuotesKeepBlanksAndHashesStartCommentsUnlessTheyAreColours) {
  std::vector<std::string> w;
  std::string why;
  ASSERT_TRUE(splitWords("set Poses(1).Text \" 100%\"  # possession", w, why));
  EXPECT_EQ(w, (std::vector<std::string>{"set", "Poses(1).Text", " 100%"}));
  ASSERT_TRUE(splitWords("expect Cdice.BackColor #ffffff # white", w, why));
  EXPECT_EQ(w, (std::vector<std::string>{"expect", "Cdice.BackColor", "#ffffff"}));
  ASSERT_TRUE(splitWords("set GameEnd \"\"", w, why));
  EXPECT_EQ(w.back(), "");
  EXPECT_FALSE(splitWords("set GameEnd \"open", w, why));
}

TEST(Driver, ReadsAndWritesValuesInTheirOwnForms) {
  const Outcome r = drive(
      "get ClockSec\n"
      "set ClockSec 0.15\n"
      "get ClockSec\n"
      "expect ClockSec 0.150\n"
      "set OnlyFlag 11\n"
      "set TeamTurn 0.1\n"
      "expect TeamTurn 0.1\n"  // a Single reads back in its own precision
      "get Cdice.BackColor\n"
      "get Hai.Value\n"
      "get ChAuto.Value\n"
      "get OpMode(0).Value\n"
      "get TimAuto.Enabled\n"
      "get Team(1).Text\n"
      "get SubMinute(2,6)\n"
      "get LinksForm.Picture1.Picture\n"
      "get ActiveControl\n");
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "0\n0.15\n#dfe6da\n2\n1\ntrue\nfalse\nTeam 1\n0\nadvert1\nCDgo\n");
}

TEST(Driver, BadInputStopsWithStatusTwoNamingTheLineAndTheProblem) {
  // clang-format off
  const std::pair<const char*, const char*> cases[] = {
      {"jump 3", "unknown command 'jump'"}, {"get Nonsense", "unknown name 'Nonsense'"},
      {"get PlayerCol(23)", "23 out of range 0..22"}, {"get PlayerCol", "needs 1 index"},
      {"get GameOn(1)", "takes no index"}, {"get SubMinute(1)", "needs 2 indices"},
      {"get PlayerCol(x)", "malformed index 'x'"}, {"get Cdice.Colour", "no property 'Colour'"},
      {"get Player.Left", "needs an index"}, {"get Player(23).Left", "no such index"},
      {"get Cdice", "is a control"}, {"set GameOn seven", "not a number"},
      {"set BallCol 2.5", "not a whole number"}, {"set BallCol 40000", "out of range"},
      {"set Chq.Value 2", "out of range 0..1"}, {"set BallOwner 300", "0..22 for 'BallOwner'"},
      {"set OnlyFlag 9", "out of range 0..7 or 11"}, {"set PlayerCol(3) 1e300", "range 0..17"},
      {"set Hai.Value 9", "out of range 1..6"}, {"set Cdice.Visible yes", "true or false"},
      {"set Cdice.BackColor red", "a colour #rrggbb"}, {"set TimB.Interval -1", "interval"},
      {"rnd 0.5 1", "out of range [0, 1)"}, {"advance soon", "whole number of ms"},
      {"until GameOn 7", "until PATH VALUE MS"}, {"expect Chq.Visible maybe", "true or false"},
      {"click Nobody", "unknown control 'Nobody'"}, {"key 55", "one typed character"},
      {"call Docol 4", "out of range 0..3"}, {"call Namer", "takes one whole number"},
      {"call Dance", "unknown procedure 'Dance'"}, {"get Team(1).Text \"", "unclosed quote"},
  };
  // clang-format on
  for (const auto& [line, reason] : cases) {
    const Outcome r = drive(std::string("seed 1\n") + line + "\nget GameOn\n");
    EXPECT_EQ(r.status, 2) << line;
    EXPECT_EQ(r.err.rfind("line 2: ", 0), 0u) << line << " -> " << r.err;
    EXPECT_NE(r.err.find(reason), std::string::npos) << line << " -> " << r.err;
    EXPECT_EQ(r.out, "") << "the run stops at the bad line";
  }
}

TEST(Driver, NothingIsHalfDone) {
  std::ostringstream out, err;
  Driver d(out, err);
  EXPECT_EQ(d.execute("rnd 0.25 0.5 2", 1), Driver::kError);
  EXPECT_EQ(d.form().Rnd.forcedPending(), 0u);
}

TEST(Driver, FailedExpectationsStopWithStatusOne) {
  const Outcome e = drive("expect GameOn 7\nget GameOn\n");
  EXPECT_EQ(e.status, 1);
  EXPECT_EQ(e.err, "line 1: GameOn reads '0', expected '7'\n");
  const Outcome u = drive("click CDgo\nuntil TimPlace.Enabled false 100\n");
  EXPECT_EQ(u.status, 1);
  EXPECT_NE(u.err.find("line 2: TimPlace.Enabled reads 'true'"), std::string::npos);
}

TEST(Driver, UntilStopsAtTheTickThatMakesItTrue) {
  const Outcome r = drive("until TimiCount 3 1000\nget TimiCount\n");
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, "3\n");
  std::ostringstream out, err;
  Driver d(out, err);
  std::istringstream in("until TimiCount 3 1000\n");
  d.run(in);
  EXPECT_EQ(d.form().Sched.now(), 45);
}

TEST(Driver, ClicksOnHiddenOrDisabledControlsDoNothing) {
  const Outcome r = drive(
      "set CDgo.Enabled false\nclick CDgo\nexpect GameOn 0\n"
      "set CDgo.Enabled true\nset Fra1.Enabled false\nclick OPForm(3)\nexpect OPForm(3).Value "
      "false\n"
      "click CDdest(2)\nexpect KickFlag 0\n");
  EXPECT_EQ(r.status, 0) << r.err;
}

TEST(Driver, ASeedReproducesAWholeRunExactly) {
  const std::string run = "click cdr\nclick CDgo\nadvance 20000\nclick Cdice\nadvance 500\ndump\n";
  const Outcome a = drive("seed 99\n" + run), b = drive("seed 99\n" + run);
  ASSERT_EQ(a.status, 0) << a.err;
  EXPECT_EQ(a.out, b.out);
  EXPECT_NE(a.out, drive("seed 98\n" + run).out);
}

TEST(Driver, DumpIsOneLineOfJsonKeyedByPath) {
  const Outcome r = drive("dump\n");
  ASSERT_EQ(r.status, 0);
  const std::string& j = r.out;
  EXPECT_EQ(j.front(), '{');
  EXPECT_EQ(j.substr(j.size() - 2), "}\n");
  EXPECT_EQ(j.find('\n'), j.size() - 1);
  EXPECT_NE(j.find("\"Player(3).Left\":3105"), std::string::npos);
  EXPECT_NE(j.find("\"TXai.Text\":\"2\""), std::string::npos);
  EXPECT_EQ(j.find("OPForm(5)"), std::string::npos) << "gaps of arrays are no controls";

  // Every member that MatchForm declares is there for scripts, as NAME, NAME(..), NAME.PROP or
  // MatchForm.NAME: a variable added to the struct but not to the registry fails here.
  std::ifstream header(QUORVEL_SOURCE_DIR "/match/match_form.h");
  std::stringstream text;
  text << header.rdbuf();
  std::string body = text.str();
  body = body.substr(body.find("struct MatchForm {"));
  body = std::regex_replace(body.substr(0, body.find("\n};")), std::regex("//[^\n]*"), "");
  const std::set<std::string> internal = {"Sched", "Rnd", "platform", "Ended"};
  int members = 0;
  std::istringstream decls(body);
  for (std::string decl; std::getline(decls, decl, ';');) {
    if (decl.find('(') != std::string::npos) continue;  // the constructor and deleted copies
    // The names follow the type: past a template's last '>', or past the first word.
    std::istringstream names(decl.find('>') != std::string::npos
                                 ? decl.substr(decl.rfind('>') + 1)
                                 : std::regex_replace(decl, std::regex(R"(^\s*[\w:]+)"), ""));
    std::smatch m;
    for (std::string piece; std::getline(names, piece, ',');) {
      if (!std::regex_search(piece, m, std::regex(R"(\w+)"))) continue;
      const std::string n = m[0];
      ++members;
      if (internal.count(n)) continue;
      EXPECT_TRUE(j.find("\"" + n + "\"") != std::string::npos ||
                  j.find("\"" + n + "(") != std::string::npos ||
                  j.find("\"" + n + ".") != std::string::npos ||
                  j.find("\"MatchForm." + n + "\"") != std::string::npos)
          << n << " is not in the registry";
    }
  }
  EXPECT_GT(members, 100) << "the declaration was not read";
}

}  // namespace
}  // namespace quorvel
